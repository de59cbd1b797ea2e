#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Makes TopClause from txtTopX and chkPercent. A text that is no number empties the box.
void RebuildTopClause(ZPGGlobalDeclarations& state);

/// Rewrites SelectClause from the groups, the output fields, the calculated fields and the options, then
/// GroupByClause.
void BuildSelectClause(ZPGGlobalDeclarations& state);

/// True when the text holds a call of an aggregate, the DISTINCT forms included: tells HAVING from WHERE.
bool IsAggregateExpression(const QString& text);

/// The shorter test of the field lists and of GROUP BY: SUM( COUNT( AVG( MIN( MAX( STDEV( VAR( FIRST( LAST(.
/// `cs` says whether the case of letters counts.
bool HoldsAggregateCall(const QString& text, Qt::CaseSensitivity cs);

/// Fills lstSelectedFields with every field and with the calculated fields that are no aggregates (Group
/// mode).
void RefreshSelectedFieldList(ZPGGlobalDeclarations& state);

/// Fills lstSelectedFields with every field, the aliases of the groups and the calculated fields (Where and
/// Order mode; in Group mode it does nothing).
void FillQueryFieldList(ZPGGlobalDeclarations& state);

}  // namespace zephrin
