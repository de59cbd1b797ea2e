#include "support/Invariants.h"

#include "flow/BuildTab.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <zephrin/ado/Error.h>

#include <QRegularExpression>

namespace zephrin::test {

namespace {

QString Assembled(const ZPGGlobalDeclarations& state) {
    QStringList lines{state.SelectClause, state.FromClause};
    for (const QString& clause : {state.WhereClause, state.GroupByClause, state.HavingClause})
        if (!clause.isEmpty()) lines << clause;
    lines << state.OrderByClause;
    return lines.join(QStringLiteral("\r\n"));
}

/// Shapes that the builders write although no database takes them: nothing to put out, a comma behind TOP, a
/// fraction of a row, a pattern on a number, which stays without its quotes, and a comparison behind one that
/// begins with its sign, which stays without its name.
bool IsOddShape(const ZPGGlobalDeclarations& state) {
    static const QRegularExpression oddSelect(
        QStringLiteral("^SELECT (DISTINCT )?(TOP \\S+ (PERCENT )?)?($|,)|TOP \\S*\\."));
    static const QRegularExpression barePattern(
        QStringLiteral("LIKE [^']|(<>|<=|>=|NOT LIKE)[^()]* AND (<|>|=|LIKE)"));
    return oddSelect.match(state.SelectClause).hasMatch() ||
           barePattern.match(state.WhereClause + state.HavingClause).hasMatch();
}

/// Takes over what a statement is made of, but none of the texts that are made of it.
void CopySources(const ZPGGlobalDeclarations& from, ZPGGlobalDeclarations& to) {
    to.Options = from.Options;
    to.gDatabaseType = from.gDatabaseType;
    to.gDelimOpen = from.gDelimOpen;
    to.gDelimClose = from.gDelimClose;
    to.colTables = from.colTables;
    to.colFields = from.colFields;
    to.colSelFields = from.colSelFields;
    for (const auto recordset :
         {&ZPGGlobalDeclarations::rsWhere, &ZPGGlobalDeclarations::rsGroupBy,
          &ZPGGlobalDeclarations::rsOrderBy, &ZPGGlobalDeclarations::rsCalcFields,
          &ZPGGlobalDeclarations::rsAlias, &ZPGGlobalDeclarations::rsJoins,
          &ZPGGlobalDeclarations::rsJoinTable, &ZPGGlobalDeclarations::rsJoinTablesUsed})
        if (from.*recordset) to.*recordset = (from.*recordset)->Clone();
    for (const auto list :
         {&FormState::lstZPQTableTo, &FormState::lstZPQFieldFrom, &FormState::lstZPQFieldTo})
        (to.Form.get()->*list).Items.AddItems((from.Form.get()->*list).Items.Items());
    to.Form->chkDistinct.Value = from.Form->chkDistinct.Value;
    to.Form->chkPercent.Value = from.Form->chkPercent.Value;
    to.Form->txtTopX.Text = from.Form->txtTopX.Text;
    to.Form->OperatorTokens = from.Form->OperatorTokens;
}

/// The statement made anew from the same sources, or what differs.
QString DiffersFromRebuild(const ZPGGlobalDeclarations& state) {
    ZPGGlobalDeclarations fresh{{}, nullptr};
    CopySources(state, fresh);
    RebuildTopClause(fresh);
    RebuildJoinText(fresh);
    RegenerateStatement(fresh);
    // Without groups a commit still writes criteria on calculated aggregates into HAVING, and only that.
    const bool commitHaving = fresh.HavingClause.isEmpty() && !HasRows(state.rsGroupBy);
    if (commitHaving) {
        BuildHavingClause(fresh);
        if (state.HavingClause.isEmpty()) fresh.HavingClause.clear();
    }
    for (const auto clause : {&ZPGGlobalDeclarations::SelectClause, &ZPGGlobalDeclarations::FromClause,
                              &ZPGGlobalDeclarations::WhereClause, &ZPGGlobalDeclarations::GroupByClause,
                              &ZPGGlobalDeclarations::HavingClause, &ZPGGlobalDeclarations::OrderByClause})
        if (state.*clause != fresh.*clause)
            return QStringLiteral("\"%1\" is anew \"%2\"").arg(state.*clause, fresh.*clause);
    return {};
}

QString BrokenJoins(const ZPGGlobalDeclarations& state) {
    QStringList used, hidden;
    for (qint64 row = 0; row < state.rsJoinTablesUsed->RecordCount(); ++row)
        used << state.rsJoinTablesUsed->TextAt(row, 0);
    for (qint64 row = 0; row < state.rsJoinTable->RecordCount(); ++row)
        if (!state.rsJoinTable->ValueAt(row, 1).toBool()) hidden << state.rsJoinTable->TextAt(row, 0);
    used.sort();
    hidden.sort();
    if (used != hidden)
        return QStringLiteral("joined: %1, not on offer: %2").arg(used.join(u','), hidden.join(u','));
    if (state.Form->JoinText.count(u'(') != state.Form->JoinText.count(u')')) return state.Form->JoinText;
    return {};
}

/// Groups and calculated fields have names of their own, and the alias rows say the same.
QString BrokenAliases(const ZPGGlobalDeclarations& state) {
    QStringList named, written, folded;
    for (const GroupRow& row : GroupRows(state))
        if (!row.FieldAlias.isEmpty()) named << row.GroupBy + QStringLiteral(" AS ") + row.FieldAlias;
    for (const CalcRow& row : CalcRows(state)) named << row.CalcField + QStringLiteral(" AS ") + row.Alias;
    for (const AliasRow& row : AliasRows(state)) {
        written << row.FieldName + QStringLiteral(" AS ") + row.Alias;
        folded << row.Alias.toCaseFolded();
    }
    named.sort();
    written.sort();
    if (named != written)
        return QStringLiteral("named: %1, in rsAlias: %2").arg(named.join(u','), written.join(u','));
    return folded.removeDuplicates() ? QStringLiteral("an alias stands twice: ") + written.join(u',')
                                     : QString();
}

/// What tells of the field in hand, and what may be done now.
QString BrokenEntry(const ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    if (form.lstSelectedFields.Items.ListIndex() < 0 &&
        (form.fraBuildQuery.Caption != QueryModeCaption(state) ||
         !form.lstSelectedFields.ToolTipText.isEmpty() || form.FieldHasCriteria > 0))
        return QStringLiteral("no field is selected: ") + form.fraBuildQuery.Caption + u' ' +
               form.lstSelectedFields.ToolTipText;
    if (form.cmdCommit.Enabled && form.lstOperands.Items.ListIndex() < 0)
        return QStringLiteral("a commit without an operator");
    if (form.cmdCreateView.Enabled && !form.cmdRunQuery.Enabled) return QStringLiteral("cmdCreateView");
    return {};
}

}  // namespace

bool IsOnStatement(const ZPGGlobalDeclarations& state) {
    return state.Form->TabZPG.Tab == static_cast<int>(WizardTab::Build) && !state.Form->dgrSQL.Visible;
}

QString BrokenInvariant(const ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    if (static_cast<std::size_t>(form.lstSelectedFields.Items.ListCount()) != form.SelectedFieldKeys.size())
        return QStringLiteral("rows of the field list without a meaning");
    if (form.Pointer != MousePointer::Default) return QStringLiteral("the hourglass was left behind");
    for (const QString& broken : {BrokenJoins(state), BrokenAliases(state)})
        if (!broken.isEmpty()) return broken;
    if (form.TabZPG.Tab != static_cast<int>(WizardTab::Build)) return {};
    if (const QString entry = BrokenEntry(state); !entry.isEmpty()) return entry;
    // On the first tabs the statement waits until the tab is left; the grid holds it back too.
    if (!IsOnStatement(state)) return {};
    const QString text = Assembled(state);
    if (form.txtSQL.Text != text)
        return QStringLiteral("the text is not what the clauses are: ") + form.txtSQL.Text;
    if (!text.trimmed().isEmpty() && !form.cmdRunQuery.Enabled) return QStringLiteral("cmdRunQuery");
    return DiffersFromRebuild(state);
}

QString SyntaxError(ZPGGlobalDeclarations& state) {
    if (IsOddShape(state)) return {};
    try {
        state.SharedConnection().Execute(state.Form->txtSQL.Text);
    } catch (const ado::Error& error) {
        if (error.Description().contains(QLatin1String("syntax"), Qt::CaseInsensitive))
            return error.Description() + u'\n' + state.Form->txtSQL.Text;
    }
    return {};
}

}  // namespace zephrin::test
