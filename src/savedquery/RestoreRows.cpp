#include "savedquery/RestoreRows.h"

#include <zephrin/ado/Error.h>

namespace zephrin {

namespace {

constexpr int criteriaSize = 550;
constexpr int criteriaAttributes = ado::FieldMayBeNull | ado::FieldUpdatable;

std::shared_ptr<ado::Recordset> WithColumnsOf(const ado::Recordset& rows) {
    auto copy = std::make_shared<ado::Recordset>();
    for (int field = 0; field < rows.FieldCount(); ++field) copy->Append(rows.FieldAt(field));
    return copy;
}

/// Copies every row by the names of `to`'s columns; throws what refuses.
void CopyRows(ado::Recordset& from, ado::Recordset& to) {
    // Found once: a row may have very many columns.
    QList<int> places;
    for (int field = 0; field < to.FieldCount(); ++field) places << from.FieldIndex(to.FieldAt(field).Name);
    for (from.MoveFirst(); !from.Eof(); from.MoveNext()) {
        to.AddNew();
        for (int field = 0; field < to.FieldCount(); ++field) {
            const QVariant value = from.Value(places.at(field));
            if (value.isValid()) to.SetValue(field, value);
        }
        to.Update();
    }
    to.MoveFirst();
}

}  // namespace

std::shared_ptr<ado::Recordset> RestoreRows(ado::Recordset* saved, const ado::Recordset& present) {
    if (!saved) return WithColumnsOf(present);
    for (int field = 0; field < present.FieldCount(); ++field)
        if (saved->FieldIndex(present.FieldAt(field).Name) < 0) return WithColumnsOf(present);
    try {
        auto rows = WithColumnsOf(present);
        rows->Open();
        CopyRows(*saved, *rows);
        return rows;
    } catch (const ado::Error&) {
        // Only the companion is lost, not the query.
        return WithColumnsOf(present);
    }
}

std::shared_ptr<ado::Recordset> RestoreCriteria(ado::Recordset* saved) {
    auto rows = std::make_shared<ado::Recordset>();
    if (!saved) return rows;
    try {
        for (int field = 0; field < saved->FieldCount(); ++field)
            rows->Append(saved->FieldAt(field).Name, ado::DataType::VarChar, criteriaSize,
                         criteriaAttributes);
        rows->Open();
        CopyRows(*saved, *rows);
        return rows;
    } catch (const ado::Error&) {
        return std::make_shared<ado::Recordset>();
    }
}

}  // namespace zephrin
