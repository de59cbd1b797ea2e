#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Rewrites WhereClause from the criteria columns that are no aggregates.
void BuildWhereClause(ZPGGlobalDeclarations& state);

/// Rewrites HavingClause from the criteria columns that are.
void BuildHavingClause(ZPGGlobalDeclarations& state);

/// Gives rsWhere one column for each field of the chosen tables, then for each alias of rsGroupBy, then of
/// rsCalcFields, and carries its rows over by column name.
void SyncCriteriaColumns(ZPGGlobalDeclarations& state);

/// Deletes the rows of rsWhere, then of rsHaving, in which no cell holds text.
void PurgeEmptyCriteria(ZPGGlobalDeclarations& state);

}  // namespace zephrin
