#include "sqlgen/Statement.h"

#include "sqlgen/FromClause.h"
#include "sqlgen/OrderByClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/WhereClause.h"

#include <algorithm>

namespace zephrin {

void AssembleStatement(ZPGGlobalDeclarations& state) {
    if (state.WhereClause == QLatin1String(" ")) state.WhereClause.clear();
    const QString lineBreak = QStringLiteral("\r\n");
    QString text = state.SelectClause + lineBreak + state.FromClause + lineBreak;
    for (const QString& clause : {state.WhereClause, state.GroupByClause, state.HavingClause})
        if (!clause.isEmpty()) text += clause + lineBreak;
    RichTextState& box = state.Form->txtSQL;
    box.Text = text + state.OrderByClause;
    box.Colours = ColourStatement(box.Text);
    EnableRunQuery(state);
}

void EnableRunQuery(ZPGGlobalDeclarations& state) {
    const QString& text = state.Form->txtSQL.Text;
    const bool hasText =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c != u'\r' && c != u'\n'; });
    // While the criteria grid hides the statement it may lack what was typed there.
    state.Form->cmdRunQuery.Enabled = hasText && !state.Form->dgrSQL.Visible;
    state.Form->cmdCreateView.Enabled = state.Form->cmdRunQuery.Enabled;
}

void RegenerateStatement(ZPGGlobalDeclarations& state) {
    SyncCriteriaColumns(state);
    if (HasRows(state.rsWhere)) {
        BuildWhereClause(state);
    } else {
        state.WhereClause.clear();
    }
    // The groups decide, not the criteria: without groups there is no HAVING, whatever stands in the grid.
    if (HasRows(state.rsGroupBy)) {
        BuildHavingClause(state);
    } else {
        state.GroupByClause.clear();
        state.HavingClause.clear();
    }
    BuildSelectClause(state);
    BuildFromClause(state);
    BuildOrderByClause(state);
    AssembleStatement(state);
}

}  // namespace zephrin
