#pragma once

#include <zephrin/ado/Recordset.h>

#include <QHash>
#include <QList>

namespace zephrin::ado {

/// The columns of a recordset, found by number or by name without regard to case. Copies share.
class FieldList {
 public:
    FieldList() = default;
    /// Names may repeat, as they do in the result of a query.
    explicit FieldList(QList<Field> fields);

    int Count() const { return static_cast<int>(fields.size()); }
    bool Contains(int index) const { return index >= 0 && index < Count(); }
    /// Throws 3265 for an index outside.
    const Field& At(int index) const;
    /// The first column of that name, or -1.
    int Find(QStringView name) const;
    /// The same, but throws 3265 when there is none.
    int Require(QStringView name) const;
    /// Throws 3001 for a name that stands already.
    void Append(const Field& field);

 private:
    static QString KeyOf(QStringView name);

    QList<Field> fields;
    QHash<QString, int> firstOf;
};

}  // namespace zephrin::ado
