#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QString>

#include <vector>

namespace zephrin {

// The rows of the working recordsets as plain values. Reading them moves no cursor, and Null, never written
// and empty all come as empty text.

struct GroupRow {
    QString FieldName, GroupBy, FieldAlias, Output;
};
std::vector<GroupRow> GroupRows(const ZPGGlobalDeclarations& state);

struct CalcRow {
    QString CalcField, Alias, Output;
};
std::vector<CalcRow> CalcRows(const ZPGGlobalDeclarations& state);

struct OrderRow {
    QString FieldName, OrderBy;
};
std::vector<OrderRow> OrderRows(const ZPGGlobalDeclarations& state);

struct AliasRow {
    QString FieldName, Alias;
};
std::vector<AliasRow> AliasRows(const ZPGGlobalDeclarations& state);

struct JoinRow {
    QString TableFrom, Join, TableTo, FieldFrom, Compare, FieldTo;
    /// A further pair of fields of the join above.
    bool IsContinuation() const { return TableTo == QLatin1String("AND"); }
};
std::vector<JoinRow> JoinRows(const ZPGGlobalDeclarations& state);

/// The texts of one column, row by row; empty where there is no such recordset.
QStringList ColumnTexts(const ado::RecordsetPtr& recordset, QLatin1String column);

/// Rows in all; 0 for a recordset that is absent or closed.
qint64 RowCount(const ado::RecordsetPtr& recordset);

/// Puts the cursor on the first row, or behind the last one. Nothing moves without rows.
void ReturnToFirst(const ado::RecordsetPtr& recordset);
void MovePastEnd(const ado::RecordsetPtr& recordset);

/// Begins a new row. A recordset that is closed, since its file could not be read, is opened for it.
void BeginRow(ado::Recordset& recordset);

/// Removes all rows; one that is absent or closed stays as it is.
void DeleteAllRows(const ado::RecordsetPtr& recordset);

}  // namespace zephrin
