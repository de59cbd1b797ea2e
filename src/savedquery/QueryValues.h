#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QStringList>

namespace zephrin {

/// What a query file keeps of the form's lists and options.
struct QueryValues {
    QString TopX;
    bool Percent = false;
    bool Distinct = false;
    QStringList Tables, UnselTables, RemoveTables, Fields, SelFields, UnselFields;

    bool operator==(const QueryValues&) const = default;
};

QueryValues ReadForm(const ZPGGlobalDeclarations& state);

/// The values as the rows of a file: the options first, then one row an entry that fills only the column of
/// its list. An entry that its column can't hold leaves its row empty and is named in `leftOut`.
ado::RecordsetPtr ValuesToRows(const QueryValues& values, QStringList& leftOut);

/// The values of such rows. Columns that are not there count as empty.
QueryValues RowsToValues(ado::Recordset& rows);

}  // namespace zephrin
