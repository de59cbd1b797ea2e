#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace zephrin {

/// Texts in their order of arrival, each found by a key. Keys are compared without regard to case and are unique.
class Collection {
 public:
    Collection() = default;
    /// Items that are their own keys; one that stands already is passed over.
    explicit Collection(const QStringList& items);

    int Count() const { return static_cast<int>(items.size()); }
    bool IsEmpty() const { return items.isEmpty(); }
    /// The item at `position`, from 1; "" outside.
    QString Item(int position) const;
    bool Contains(const QString& key) const;
    /// False, with nothing added, when the key stands already.
    bool Add(const QString& item, const QString& key);
    bool Add(const QString& item) { return Add(item, item); }
    /// False when there is no such key.
    bool Remove(const QString& key);
    /// Removes the item at `position`, from 1. False when there is none.
    bool RemoveAt(int position);
    void Clear();

    const QStringList& Items() const { return items; }
    auto begin() const { return items.cbegin(); }
    auto end() const { return items.cend(); }

    bool operator==(const Collection& other) const { return items == other.items; }

 private:
    QStringList items;
    QStringList keys;  // folded, parallel to items
    QHash<QString, int> places;
};

}  // namespace zephrin
