#include "RandomActs.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/CriteriaGrid.h"
#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"

#include <QRegularExpression>

#include <functional>
#include <random>

namespace zephrin::test {

namespace {

/// Values that any field takes, and behind them such as break the statement by design.
const char* const values[] = {"1",         "5",         "7",   "O'Brien", "a%", "[x]", "LIKE",
                              "BETWEEN 1", "1/31/2003", "a=b", "''",      " ",  "Oslo"};
constexpr int plainValueCount = 3;
const char* const tops[] = {"5", "", "abc", "150", "1.5"};
const char* const expressions[] = {"[Orders].[Total]*2", "SUM([Orders].[Total])", "[Customers].[Id]>1", "1"};

QString ValueOf(const Act& act, int number) {
    if (act.PlainValues) return QString::fromLatin1(values[number % plainValueCount]);
    const auto index = static_cast<std::size_t>(number) % (std::size(values) + 1);
    // Two of these don't fit into one cell.
    return index == std::size(values) ? QString(300, u'x') : QString::fromLatin1(values[index]);
}

bool OnTab(const WizardRun& run, WizardTab tab) {
    return run.state.Form->TabZPG.Tab == static_cast<int>(tab);
}

QString PickAt(ListState& list, int number) {
    if (list.ListCount() == 0) return {};
    list.SetListIndex(number % list.ListCount());
    return QStringLiteral("pick ") + list.Text();
}

/// The build-query tab is where most is to be done: it is reached often and left seldom.
QString ChangeTab(WizardRun& run, const Act& act) {
    static constexpr int order[] = {3, 3, 3, 2, 2, 2, 1, 1, 0};
    const int tab = order[static_cast<std::size_t>(act.First) % std::size(order)];
    if (OnTab(run, WizardTab::Build) && act.Second % 8 > 0) return {};
    if (tab == run.Form().TabZPG.Tab || !run.Form().TabZPG.TabEnabled[static_cast<std::size_t>(tab)])
        return {};
    SelectTab(run.state, static_cast<WizardTab>(tab));
    return QStringLiteral("tab %1").arg(tab);
}

QString MoveTable(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Tables)) return {};
    const bool right = act.Second % 8 > 0;
    ListState& list = (right ? run.Form().lstZPQTableSelection : run.Form().lstZPQTableTo).Items;
    const QString done = PickAt(list, act.First);
    if (!done.isEmpty()) (right ? MoveTableRight : MoveTableLeft)(run.state);
    return done;
}

QString MoveField(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Fields)) return {};
    if (act.Second % 7 == 0) {
        (act.First % 2 ? MoveAllFieldsRight : MoveAllFieldsLeft)(run.state);
        return QStringLiteral("move all fields");
    }
    const bool right = act.Second % 3 > 0;
    const QString done =
        PickAt((right ? run.Form().lstZPQFieldFrom : run.Form().lstZPQFieldTo).Items, act.First);
    if (!done.isEmpty()) (right ? MoveFieldRight : MoveFieldLeft)(run.state);
    return done;
}

QString JoinTables(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Joins)) return {};
    FormState& form = run.Form();
    if (form.cmdlockTables.Tag == QLatin1String("0")) {
        if (PickAt(form.cmbJoinTables[0].Items, act.First).isEmpty()) return {};
        if (PickAt(form.cmbJoinTables[1].Items, act.Second).isEmpty())
            return QStringLiteral("pick a left table");
        LockClicked(run.state);
        return QStringLiteral("lock");
    }
    if (act.Second % 6 == 0) {
        LockClicked(run.state);
        return QStringLiteral("unlock");
    }
    if (form.cmbJoinType.Enabled) PickAt(form.cmbJoinType.Items, act.First);
    PickAt(form.lstJoinFields[0].Items, act.First);
    PickAt(form.lstJoinFields[1].Items, act.Second);
    if (!form.cmdAddJoin.Enabled) return QStringLiteral("pick join fields");
    AddJoin(run.state);
    return QStringLiteral("add join");
}

QString ChangeJoins(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Joins)) return {};
    if (act.First % 8 == 0 && run.Form().cmdResetJoins.Enabled) {
        ResetJoins(run.state);
        return QStringLiteral("remove joins");
    }
    if (!HasRows(run.state.rsJoins)) return {};
    if (!run.Form().lstJoinCompare.Visible) CompareButtonClicked(run.state);
    return PickAt(run.Form().lstJoinCompare.Items, act.Second);
}

bool OnStatement(const WizardRun& run) {
    return OnTab(run, WizardTab::Build) && !run.state.Form->dgrSQL.Visible;
}

QString ChooseMode(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Build) || act.Second % 3 > 0) return {};
    ChooseQueryMode(run.state, act.First % 3);
    return QStringLiteral("mode %1").arg(act.First % 3);
}

QString PickFieldAndOperator(WizardRun& run, const Act& act) {
    if (!OnStatement(run)) return {};
    FormState& form = run.Form();
    const QString field = PickAt(form.lstSelectedFields.Items, act.First);
    return form.lstOperands.Enabled ? field + u' ' + PickAt(form.lstOperands.Items, act.Second) : field;
}

QString EnterAndCommit(WizardRun& run, const Act& act) {
    if (!OnStatement(run)) return {};
    FormState& form = run.Form();
    if (act.First % 4 > 0) PickFieldAndOperator(run, act);
    if (form.cmbAvailableValues1.Enabled) ValueTyped(run.state, 0, ValueOf(act, act.First));
    if (form.cmbAvailableValues2.Enabled) ValueTyped(run.state, 1, ValueOf(act, act.Second));
    if (form.optAndOr.Options[1].Enabled && act.Second % 3 == 0) form.optAndOr.Selected = act.First % 2;
    if (!form.cmdCommit.Enabled) return {};
    const QString sentence = form.fraBuildQuery.Caption;
    CommitEntry(run.state);
    return QStringLiteral("commit ") + sentence;
}

QString ChangeOptions(WizardRun& run, const Act& act) {
    if (!OnStatement(run) || act.Kind % 2) return {};
    FormState& form = run.Form();
    switch (act.First % 3) {
        case 0:
            form.chkDistinct.Value = act.Second % 2;
            DistinctClicked(run.state);
            return QStringLiteral("distinct");
        case 1:
            form.chkPercent.Value = act.Second % 2;
            PercentClicked(run.state);
            return QStringLiteral("percent");
        default:
            form.txtTopX.Text = QString::fromLatin1(tops[act.Second % std::size(tops)]);
            TopXChanged(run.state);
            return QStringLiteral("top");
    }
}

QString EditInGrid(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Build)) return {};
    if (!run.Form().dgrSQL.Visible) {
        EditCriteria(run.state);
        return QStringLiteral("show the grid");
    }
    const ado::RecordsetPtr& sheet = run.state.rsWhere;
    if (act.Second % 2 == 0 || sheet->FieldCount() == 0) {
        ShowSqlView(run.state);
        return QStringLiteral("show the statement");
    }
    const bool onNewRow = !HasRows(sheet) || act.Second % 3 == 1;
    const int column = act.First % sheet->FieldCount();
    BeginCellDialog(run.state, column, onNewRow);
    run.state.CurrentCellText = ValueOf(act, act.Second);
    run.state.CriteriaChanged = true;
    EndCellDialog(run.state, column, onNewRow);
    return QStringLiteral("edit a cell");
}

/// What the dialog of calculated fields leaves behind.
QString AddCalculatedField(WizardRun& run, const Act& act) {
    if (!OnStatement(run) || act.Kind % 3) return {};
    ShowSqlView(run.state);
    const QString expression = QString::fromLatin1(expressions[act.First % std::size(expressions)]);
    const QString alias = QStringLiteral("Calc%1").arg(run.state.rsCalcFields->RecordCount());
    for (const auto& [rows, owner] : {std::pair{run.state.rsCalcFields, act.Second % 2 ? "YES" : "No"},
                                      std::pair{run.state.rsAlias, "rsCalcFields"}}) {
        rows->AddNew();
        rows->SetValue(0, expression);
        rows->SetValue(1, alias);
        rows->SetValue(2, QString::fromLatin1(owner));
        rows->Update();
    }
    ShowSqlView(run.state);
    return QStringLiteral("calculate ") + expression;
}

QString Reset(WizardRun& run, const Act& act) {
    if (!OnStatement(run) || act.First % 5 > 0) return {};
    ResetSql(run.state);
    return QStringLiteral("reset");
}

QString LookUp(WizardRun& run, const Act&) {
    if (!OnStatement(run) || !run.Form().cmdFieldValues.Enabled) return {};
    LookUpFieldValues(run.state);
    return QStringLiteral("look values up");
}

/// Acts that matter more stand more than once.
const std::function<QString(WizardRun&, const Act&)> performers[] = {
    ChangeTab,
    ChangeTab,
    ChangeTab,
    MoveTable,
    MoveTable,
    MoveField,
    MoveField,
    JoinTables,
    JoinTables,
    JoinTables,
    ChangeJoins,
    ChooseMode,
    PickFieldAndOperator,
    PickFieldAndOperator,
    PickFieldAndOperator,
    EnterAndCommit,
    EnterAndCommit,
    EnterAndCommit,
    EnterAndCommit,
    ChangeOptions,
    EditInGrid,
    AddCalculatedField,
    Reset,
    LookUp,
};

QString Assembled(const ZPGGlobalDeclarations& state) {
    QStringList lines{state.SelectClause, state.FromClause};
    for (const QString& clause : {state.WhereClause, state.GroupByClause, state.HavingClause})
        if (!clause.isEmpty()) lines << clause;
    lines << state.OrderByClause;
    return lines.join(QStringLiteral("\r\n"));
}

/// Shapes that the builders write although no database takes them: nothing to put out, a comma behind TOP, a
/// fraction of a row, and a pattern on a number, which stays without its quotes.
bool IsOddShape(const ZPGGlobalDeclarations& state) {
    static const QRegularExpression oddSelect(
        QStringLiteral("^SELECT (DISTINCT )?(TOP \\S+ (PERCENT )?)?($|,)|TOP \\S*\\."));
    static const QRegularExpression barePattern(QStringLiteral("LIKE [^']"));
    return oddSelect.match(state.SelectClause).hasMatch() ||
           barePattern.match(state.WhereClause + state.HavingClause).hasMatch();
}

/// What the database says of the statement when it can't read it.
QString SyntaxError(WizardRun& run) {
    if (IsOddShape(run.state)) return {};
    try {
        run.state.SharedConnection().Execute(run.state.Form->txtSQL.Text);
    } catch (const ado::Error& error) {
        if (error.Description().contains(QLatin1String("syntax"), Qt::CaseInsensitive))
            return error.Description() + u'\n' + run.state.Form->txtSQL.Text;
    }
    return {};
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

}  // namespace

Acts RandomActs(unsigned seed, int count, bool plainValues) {
    std::mt19937 numbers(seed);
    Acts acts;
    for (int i = 0; i < count; ++i) {
        const auto next = [&] { return static_cast<int>(numbers() % 1000); };
        Act act;
        act.PlainValues = plainValues;
        act.Kind = next();
        act.First = next();
        act.Second = next();
        acts.push_back(act);
    }
    return acts;
}

QString Perform(WizardRun& run, const Act& act) {
    const BoxAnswer answer = act.Second % 4 ? BoxAnswer::Yes : BoxAnswer::No;
    run.prompts->Answers = {answer, answer};
    // What is not possible now passes its turn on.
    for (std::size_t turn = 0; turn < std::size(performers); ++turn) {
        const QString done =
            performers[(static_cast<std::size_t>(act.Kind) + turn) % std::size(performers)](run, act);
        if (!done.isEmpty()) return done;
    }
    return {};
}

QString BrokenInvariant(WizardRun& run, bool plainValues) {
    const ZPGGlobalDeclarations& state = run.state;
    const FormState& form = *state.Form;
    if (static_cast<std::size_t>(form.lstSelectedFields.Items.ListCount()) != form.SelectedFieldKeys.size())
        return QStringLiteral("rows of the field list without a meaning");
    if (form.Pointer != MousePointer::Default) return QStringLiteral("the hourglass was left behind");
    const QString joins = BrokenJoins(state);
    if (!joins.isEmpty()) return joins;
    // On the first tabs the statement waits until the tab is left; the grid holds it back too.
    if (!OnStatement(run)) return {};
    const QString text = Assembled(state);
    if (form.txtSQL.Text != text)
        return QStringLiteral("the text is not what the clauses are: ") + form.txtSQL.Text;
    if (form.cmdRunQuery.Enabled != !text.trimmed().isEmpty()) return QStringLiteral("cmdRunQuery");
    const QString difference = DiffersFromRebuild(state);
    return difference.isEmpty() && plainValues ? SyntaxError(run) : difference;
}

}  // namespace zephrin::test
