#pragma once

#include <QAbstractListModel>
#include <QStringList>

namespace zephrin {

/// The items of one list or drop-down and which of them is selected: what the generators read of the form,
/// and the model that its view shows.
///
/// Changing the items never runs a click handler and never selects a neighbour; setting ListIndex or Text
/// announces a click when it changes the selection, also to nothing, as a user's click does.
class ListState : public QAbstractListModel {
    Q_OBJECT
 public:
    enum class Order { Arrival, Sorted };
    explicit ListState(Order order = Order::Arrival, QObject* parent = nullptr);

    int ListCount() const { return static_cast<int>(items.size()); }
    /// The item at `index`, from 0; "" outside.
    QString List(int index) const;
    const QStringList& Items() const { return items; }
    /// -1 when nothing is selected.
    int ListIndex() const { return listIndex; }
    /// The selected item, or "".
    QString Text() const { return List(listIndex); }

    void SetListIndex(int index);
    /// Selects the first item equal to `text`; "" (or a text that is not there) selects nothing.
    void SetText(const QString& text);

    /// At the end, at `index`, or where the order puts it in a sorted list.
    void AddItem(const QString& text, int index = -1);
    /// `meanings`, where given, are what the items stand for, one each: their tool tips, read by screen readers too.
    /// Only for a list in the order of arrival that gets all of its items at once.
    void AddItems(const QStringList& texts, const QStringList& meanings = {});
    void RemoveItem(int index);
    void Clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
    /// The selection was set, by code or by the user.
    void Click();
    /// The selection moved for whatever reason, also because its item went; views follow this one.
    void ListIndexChanged(int index);

 private:
    Order order;
    QStringList items;
    QStringList meanings;  // parallel to items, or empty
    int listIndex = -1;
};

}  // namespace zephrin
