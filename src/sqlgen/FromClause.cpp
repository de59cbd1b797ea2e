#include "sqlgen/FromClause.h"

#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

/// One row of a join as it is written: a continuation leaves out the table and the kind of join, and the last
/// pair of a join closes its parenthesis.
QString JoinPiece(const JoinRow& row, bool closes) {
    QStringList words{row.TableTo, row.FieldFrom, row.Compare, row.FieldTo};
    if (!row.IsContinuation()) words = QStringList{row.TableFrom, row.Join} + words;
    return words.join(u' ') + (closes ? QStringLiteral(")") : QString());
}

void EnableTabsBehindJoins(ZPGGlobalDeclarations& state) {
    const bool allJoined = RowCount(state.rsJoinTable) == RowCount(state.rsJoinTablesUsed);
    for (const WizardTab tab : {WizardTab::Fields, WizardTab::Build, WizardTab::Results})
        state.Form->TabZPG.TabEnabled[static_cast<std::size_t>(tab)] = allJoined;
}

}  // namespace

void RebuildJoinText(ZPGGlobalDeclarations& state) {
    const std::vector<JoinRow> rows = JoinRows(state);
    const auto joins =
        std::count_if(rows.begin(), rows.end(), [](const JoinRow& row) { return !row.IsContinuation(); });
    const QString parens(joins, u'(');
    QString text = parens;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool nextContinues = i + 1 < rows.size() && rows[i + 1].IsContinuation();
        // Only the first row has a left table: the others so begin with two blanks.
        if (text != parens) text += u' ';
        text += JoinPiece(rows[i], !nextContinues);
    }
    state.Form->JoinText = text;
    ReturnToFirst(state.rsJoins);
    EnableTabsBehindJoins(state);
}

void BuildFromClause(ZPGGlobalDeclarations& state) {
    if (state.Form->lstZPQTableTo.Items.ListCount() == 0 && state.Options.gAllowTableSelection) return;
    if (!HasRows(state.rsJoins)) {
        state.FromClause = QStringLiteral("FROM ") + state.colTables.Items().join(QStringLiteral(", "));
        return;
    }
    state.FromClause = QStringLiteral("FROM ") + state.Form->JoinText;
    const QStringList joined = ColumnTexts(state.rsJoinTablesUsed, QLatin1String("TableName"));
    for (const QString& table : state.colTables)
        if (!joined.contains(table)) state.FromClause += QStringLiteral(", ") + table;
}

}  // namespace zephrin
