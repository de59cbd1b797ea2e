#include "sqlgen/OrderByClause.h"

#include "sqlgen/SelectClause.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

const QString OrderBy = QStringLiteral("ORDER BY ");

void AddPlain(QString& clause, const QString& item) {
    clause += clause == OrderBy ? item : QStringLiteral(", ") + item;
}

/// Passes over what occurs in the clause already, be it only as a part of a longer item.
void AddWithTest(QString& clause, const QString& item) {
    if (clause == OrderBy || !clause.contains(item)) AddPlain(clause, item);
}

bool IsGroupExpression(const std::vector<GroupRow>& groups, const QString& name) {
    return std::any_of(groups.begin(), groups.end(), [&](const GroupRow& row) {
        return row.GroupBy == name || (row.GroupBy.isEmpty() && row.FieldName == name);
    });
}

bool IsGroupField(const std::vector<GroupRow>& groups, const QString& name) {
    return std::any_of(groups.begin(), groups.end(),
                       [&](const GroupRow& row) { return row.FieldName == name; });
}

bool IsCalculatedAggregate(const std::vector<CalcRow>& calcs, const QString& name) {
    return std::any_of(calcs.begin(), calcs.end(), [&](const CalcRow& row) {
        return row.CalcField == name && HoldsAggregateCall(row.CalcField, Qt::CaseSensitive);
    });
}

}  // namespace

void BuildOrderByClause(ZPGGlobalDeclarations& state) {
    const std::vector<GroupRow> groups = GroupRows(state);
    const std::vector<CalcRow> calcs = CalcRows(state);
    QString clause = OrderBy;
    for (const OrderRow& row : OrderRows(state)) {
        if (groups.empty() && calcs.empty()) {
            AddWithTest(clause, row.OrderBy);
        } else if (groups.empty()) {
            // With calculated fields and no groups everything goes in, repeated rows too.
            AddPlain(clause, row.OrderBy);
        } else if (IsGroupExpression(groups, row.FieldName) ||
                   // The field of an aggregate alone is enough only where there are calculated fields.
                   (!calcs.empty() &&
                    (IsGroupField(groups, row.FieldName) || IsCalculatedAggregate(calcs, row.FieldName)))) {
            AddWithTest(clause, row.OrderBy);
        }
    }
    state.OrderByClause = clause == OrderBy ? QString() : clause;
    if (!HasRows(state.rsOrderBy)) return;
    MovePastEnd(state.rsOrderBy);
    ReturnToFirst(state.rsGroupBy);
    ReturnToFirst(state.rsCalcFields);
}

}  // namespace zephrin
