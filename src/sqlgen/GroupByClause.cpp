#include "sqlgen/GroupByClause.h"

#include "sqlgen/SelectClause.h"
#include "sqlgen/WorkingRows.h"

namespace zephrin {

void BuildGroupByClause(ZPGGlobalDeclarations& state) {
    const QString groupBy = QStringLiteral("GROUP BY ");
    QString clause = groupBy;
    for (const GroupRow& row : GroupRows(state)) {
        // An alias marks an aggregate; a calculated field may be one without having an alias here.
        if (!row.FieldAlias.isEmpty() || HoldsAggregateCall(row.FieldName, Qt::CaseSensitive)) continue;
        clause += clause == groupBy ? row.FieldName : QStringLiteral(", ") + row.FieldName;
    }
    MovePastEnd(state.rsGroupBy);
    state.GroupByClause = clause == groupBy ? QString() : clause;
}

}  // namespace zephrin
