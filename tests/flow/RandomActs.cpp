#include "RandomActs.h"

#include "flow/BuildTab.h"
#include "flow/CalcFields.h"
#include "flow/Criteria.h"
#include "flow/CriteriaCell.h"
#include "flow/CriteriaGrid.h"
#include "flow/FieldOrder.h"
#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "support/Invariants.h"

#include <functional>
#include <random>

namespace zephrin::test {

namespace {

/// Values that any field takes, and behind them such as break the statement by design.
const char* const values[] = {"1",         "5",         "7",   "O'Brien", "a%", "[x]", "LIKE",
                              "BETWEEN 1", "1/31/2003", "a=b", "''",      " ",  "Oslo"};
constexpr int plainValueCount = 3;
const char* const tops[] = {"5", "", "abc", "150", "1.5"};
const char* const expressions[] = {"[Orders].[Total]*2", "SUM([Orders].[Total])", "[Orders].[Id]\n+1",
                                   "[Customers].[Id]-1", "1"};
const char* const aliases[] = {"Calc0", "Calc1", "calc1", "SumOfTotal", "Calc2", "Calc3"};

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
    return IsOnStatement(run.state);
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
    AcceptCriteria(run.state, run.state.CurrentCellText,
                   act.First % 5 ? ValueOf(act, act.Second) : QString());
    EndCellDialog(run.state, column, onNewRow);
    return QStringLiteral("edit a cell");
}

QString AddCalculatedField(WizardRun& run, const Act& act) {
    if (!OnStatement(run) || act.Kind % 3) return {};
    BeginCalcField(run.state);
    CalcFieldForm form = LoadCalcField(run.state);
    InsertIntoExpression(form, QString::fromLatin1(expressions[act.First % std::size(expressions)]));
    form.Alias = QString::fromLatin1(aliases[act.Second % std::size(aliases)]);
    form.ShowField = act.First % 2;
    if (AcceptCalcField(run.state, form) != CalcOutcome::Stored) CancelCalcField(run.state);
    EndCalcField(run.state);
    return QStringLiteral("calculate %1 as %2").arg(form.Criteria, form.Alias);
}

void EditExpression(WizardRun& run, FieldOrderForm& list) {
    BeginCalcEdit(run.state, list);
    const QString before = run.state.EditCalcField;
    CalcFieldForm form = LoadCalcField(run.state);
    ExpressionTyped(form, form.Criteria + QStringLiteral("+1"));
    if (AcceptCalcField(run.state, form) != CalcOutcome::Stored) CancelCalcField(run.state);
    EndCalcEdit(run.state, list, before);
}

/// One visit to the dialog behind the edit buttons: a row is moved and then deleted, switched or edited.
QString EditRows(WizardRun& run, const Act& act) {
    static const char* const modes[] = {"Group", "Order", "Calc"};
    if (!OnStatement(run) || act.Kind % 3 != 1) return {};
    BeginFieldOrder(run.state, QString::fromLatin1(modes[act.First % 3]));
    FieldOrderForm form = LoadFieldOrder(run.state);
    const int rows = static_cast<int>(form.Rows.size());
    if (rows > 0) {
        OrderRowClicked(run.state, form, act.Second % rows);
        MoveOrderRow(run.state, form, act.Second % 2);
        const int deed = act.First / 3 % 3;
        if (deed == 0) DeleteOrderRow(run.state, form);
        if (deed == 1) OutputClicked(run.state, form, !form.Output);
        if (deed == 2 && form.EditEnabled) EditExpression(run, form);
        if (act.First % 4) AcceptFieldOrder(run.state, form);
    }
    ShowSqlView(run.state);
    return QStringLiteral("edit %1, deed %2").arg(run.state.EditMode).arg(act.First / 3 % 3);
}

/// The tab is left while one of the tables is not to be found.
QString LoseTable(WizardRun& run, const Act& act) {
    if (!OnTab(run, WizardTab::Tables) || !run.Form().TablesChanged || act.Second % 4) return {};
    const auto rename = [&](const char* from, const char* to) {
        run.database.Run(
            QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(QLatin1String(from), QLatin1String(to)));
    };
    const auto tab = run.Form().TabZPG.TabEnabled[2] ? WizardTab::Fields : WizardTab::Joins;
    if (!run.Form().TabZPG.TabEnabled[static_cast<std::size_t>(tab)]) return {};
    rename("Customers", "Away");
    SelectTab(run.state, tab);
    rename("Away", "Customers");
    return QStringLiteral("leave the tables while Customers is away");
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
    EditRows,
    EditRows,
    LoseTable,
    Reset,
    LookUp,
};

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
    const QString broken = BrokenInvariant(run.state);
    return broken.isEmpty() && plainValues && IsOnStatement(run.state) ? SyntaxError(run.state) : broken;
}

}  // namespace zephrin::test
