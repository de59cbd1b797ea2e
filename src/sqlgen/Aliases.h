#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <functional>

namespace zephrin {

// The names of groups and calculated fields. A name belongs to one of them in the whole query, and its row in
// rsAlias lives as long as the row that it names.

/// True where a group or a calculated field is called `alias`. Capitals make no other name of it, nor do
/// blanks and delimiters around it: the database would not tell them apart.
bool AliasIsTaken(const ZPGGlobalDeclarations& state, const QString& alias);

/// Tells the user that the alias exists. The wizard may be over when the box closes.
void TellTakenAlias(ZPGGlobalDeclarations& state);

/// Removes the alias row of a group or a calculated field that is gone. Where something else in an old query
/// has the alias too, its row stays.
void DeleteAlias(ZPGGlobalDeclarations& state, const QString& alias, const QString& expression);

/// Removes the rows of rsGroupBy or of rsCalcFields that `goes` is true for, with their aliases.
using RowTest = std::function<bool(const ado::Recordset& rows, qint64 row)>;
void DeleteAliasedRows(ZPGGlobalDeclarations& state, const ado::RecordsetPtr& rows, const RowTest& goes);

/// Removes the rows that `goes` is true for, and nothing else.
void DeleteRows(const ado::RecordsetPtr& rows, const RowTest& goes);

}  // namespace zephrin
