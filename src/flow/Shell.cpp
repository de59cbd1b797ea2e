#include "flow/Shell.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/FieldTab.h"
#include "flow/Handlers.h"
#include "flow/JoinTab.h"
#include "flow/TableTab.h"
#include "runstate/Dialect.h"
#include "sqlgen/Aliases.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/OrderByClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"

#include <utility>

namespace zephrin {

namespace {

constexpr int runButtonBesideView = 855;
constexpr int runButtonAlone = 1245;

/// What a query must not find of the one before.
void ClearExchange(ZPGGlobalDeclarations& state) {
    state.CurrentSQL.clear();
    state.CurrentCellText.clear();
    state.CriteriaChanged = false;
    state.EditCalcField.clear();
    state.EditCalcAlias.clear();
    state.EditCalcNew.clear();
    state.EditCalcShow = 0;
    state.CalcFieldCreated = false;
    state.EditMode.clear();
    state.ViewName.clear();
}

void ApplyOptions(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const RunOptions& options = state.Options;
    form.cmdSaveQuery.Enabled = options.gAllowSaveDelete;
    form.cmdDeleteQuery.Enabled = options.gAllowSaveDelete;
    form.cmdResetSQL.Enabled = options.gAllowSQLReset;
    form.fraExcel.Visible = options.gAllowExcelExport;
    form.Caption = options.gRunTimeCaption;
}

void FillOperatorTokens(FormState& form) {
    form.OperatorTokens = {
        QStringLiteral("="),           QStringLiteral(">"),        QStringLiteral("<"),
        QStringLiteral(">="),          QStringLiteral("<="),       QStringLiteral("<>"),
        QStringLiteral("LIKE"),        QStringLiteral("NOT LIKE"), QStringLiteral("IS NULL"),
        QStringLiteral("IS NOT NULL"), QStringLiteral("BETWEEN")};
}

/// The build-query tab is always there.
void OfferTabs(ZPGGlobalDeclarations& state) {
    const RunOptions& options = state.Options;
    state.Form->TabZPG.TabVisible = {options.gAllowTableSelection, options.gAllowJoinCreation,
                                     options.gAllowFieldSelection, true, options.gAllowShowResults};
}

/// Every query is begun where there is something to do: on the first tab that is there and open.
void ShowFirstTab(TabState& tabs) {
    const auto isOpen = [&tabs](std::size_t tab) { return tabs.TabVisible[tab] && tabs.TabEnabled[tab]; };
    std::size_t tab = 0;
    while (tab + 1 < tabs.TabVisible.size() && !isOpen(tab)) ++tab;
    tabs.Tab = static_cast<int>(tab);
}

void OfferTables(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstZPQTableSelection.Items.AddItems(state.colTables.Items());
    if (!state.colTables.IsEmpty()) form.cmdZPQTableRightAll.Enabled = true;
}

/// The host fixed the tables: their fields are loaded at once, and the statement is there from the beginning.
void StartOnFixedTables(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    LoadFieldCollections(state);
    if (state.Showing != showing) return;
    ReconcileQueryLists(state);
    BuildFromClause(state);
    BuildSelectClause(state);
    BuildOrderByClause(state);
    AssembleStatement(state);
    SetOptionControls(state, state.colTables.Count());
    ApplySingleTableMode(state);
}

/// Everything that form load makes before it looks for a query: the form of a query that nobody has begun.
void PrepareForm(ZPGGlobalDeclarations& state) {
    ClearExchange(state);
    state.colTables = state.OfferedTables;
    ConnectHandlers(state);
    ArrangeForDialect(state);
    ApplyOptions(state);
    SetStatusText(state, QStringLiteral("Ready .."));
    FillOperatorTokens(*state.Form);
    OfferTabs(state);
    ShowFirstTab(state.Form->TabZPG);
    OfferTables(state);
    CreateWorkingRecordsets(state);
}

void StartOnTableTab(ZPGGlobalDeclarations& state) {
    SetTabsForTables(state, false, {});
    ApplySingleTableMode(state);
}

void StartOnTables(ZPGGlobalDeclarations& state) {
    if (state.Options.gAllowTableSelection) {
        StartOnTableTab(state);
    } else {
        StartOnFixedTables(state);
    }
}

/// False when the wizard must close over it. A file dialog that was cancelled leaves an ordinary wizard.
bool StartOnSavedQuery(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    if (state.OpenSavedQuery && !state.OpenSavedQuery(state)) return false;
    if (state.Showing != showing) return false;
    if (state.Form->QueryPath.isEmpty()) {
        StartOnTables(state);
    } else {
        FinishOpening(state);
    }
    return true;
}

bool Start(ZPGGlobalDeclarations& state) {
    if (state.gOpenQuery) return StartOnSavedQuery(state);
    StartOnTables(state);
    return true;
}

void TellLoadFailure(ZPGGlobalDeclarations& state, const QString& description) {
    state.UserPrompts->MsgBox(QStringLiteral("Internal Error unable to load frmZPG\r\n") + description,
                              BoxStyle::Critical, QStringLiteral("Internal Control Error"));
}

/// Rows of an earlier run say nothing about the query as it will be.
void ClearResults(FormState& form) {
    form.dgrQueryResults.DataSource.reset();
    form.SortColumn = 0;
    form.cmdAsc.Enabled = false;
    form.cmdDesc.Enabled = false;
    form.cmdExcel.Enabled = false;
    form.txtSQLErrors.Text.clear();
    form.txtSQLErrors.Colours.clear();
    form.txtSQLErrors.ToolTipText.clear();
}

void DeleteAllRows(const ado::RecordsetPtr& rows) {
    if (HasRows(rows)) rows->DeleteAll();
}

/// A look-up that was stopped: the next leave of the tab makes it anew.
void StayOnTables(FormState& form) {
    form.TablesChanged = true;
    form.TabZPG.Tab = static_cast<int>(WizardTab::Tables);
}

/// Conditions, groups with their aliases, and orders.
void DeleteAllCriteria(ZPGGlobalDeclarations& state) {
    for (const ado::RecordsetPtr& rows : {state.rsWhere, state.rsOrderBy}) DeleteAllRows(rows);
    DeleteAliasedRows(state, state.rsGroupBy, [](const ado::Recordset&, qint64) { return true; });
}

/// Brings everything that speaks of tables and fields in line with the tables that are chosen now.
void TakeOverTables(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    FormState& form = *state.Form;
    form.TablesChanged = false;
    // The one step of a tab change that asks the database, and may take its time.
    form.Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    const bool stopped = !LoadFieldCollections(state);
    if (state.Showing == showing && stopped) return StayOnTables(form);
    if (state.Showing != showing || state.colFields.IsEmpty()) return;
    if (state.colTables.IsEmpty()) {
        state.FromClause.clear();
    } else {
        BuildFromClause(state);
    }
    if (form.lstZPQTableTo.Items.ListCount() == 0) DeleteAllCriteria(state);
    ReconcileQueryLists(state);
    BuildSelFields(state);
    BuildSelectClause(state);
    BuildOrderByClause(state);
    AssembleStatement(state);
    EnableAndOr(form, !state.WhereClause.isEmpty());
}

void LeaveTableTab(ZPGGlobalDeclarations& state) {
    ShowSqlView(state);
    ClearResults(*state.Form);
    if (state.Form->TablesChanged) TakeOverTables(state);
}

void LeaveJoinTab(ZPGGlobalDeclarations& state) {
    HideCompareList(state);
    ClearResults(*state.Form);
    BuildSelFields(state);
    BuildFromClause(state);
    AssembleStatement(state);
}

void LeaveFieldTab(ZPGGlobalDeclarations& state) {
    ClearResults(*state.Form);
    BuildSelFields(state);
    BuildFromClause(state);
    BuildSelectClause(state);
    BuildOrderByClause(state);
    AssembleStatement(state);
}

void LeaveBuildTab(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstSelectedFields.Items.SetText({});
    form.lstOperands.Items.SetText({});
    form.cmbAvailableValues1.Items.Clear();
    form.cmbAvailableValues2.Items.Clear();
    for (const int box : {0, 1}) SetValueText(state, box, {});
    // The handlers of what was emptied have run by now and must not have the last word.
    for (ControlState* control :
         {static_cast<ControlState*>(&form.lstOperands),
          static_cast<ControlState*>(&form.cmbAvailableValues1),
          static_cast<ControlState*>(&form.cmbAvailableValues2),
          static_cast<ControlState*>(&form.cmdFieldValues), static_cast<ControlState*>(&form.cmdCommit)})
        control->Enabled = false;
}

void LeaveTab(ZPGGlobalDeclarations& state, WizardTab tab) {
    switch (tab) {
        case WizardTab::Tables:
            return LeaveTableTab(state);
        case WizardTab::Joins:
            return LeaveJoinTab(state);
        case WizardTab::Fields:
            return LeaveFieldTab(state);
        case WizardTab::Build:
            return LeaveBuildTab(state);
        case WizardTab::Results:
            return;
    }
}

bool IsShown(const FormState& form, WizardTab tab) {
    return form.TabZPG.Tab == static_cast<int>(tab);
}

}  // namespace

bool LoadForm(ZPGGlobalDeclarations& state) {
    const int showing = ++state.Showing;
    try {
        PrepareForm(state);
        if (Start(state)) return true;
    } catch (const ado::Error& error) {
        if (state.Showing == showing) TellLoadFailure(state, error.Description());
    }
    if (state.Showing == showing) state.gClosingSilently = true;
    return false;
}

void StartNewQuery(ZPGGlobalDeclarations& state) {
    ++state.Showing;
    ReleaseWorkingRecordsets(state);
    state.Form = std::make_shared<FormState>();
    PrepareForm(state);
}

void FinishOpening(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.QueryPath.clear();
    SetOptionControls(state, state.colTables.Count());
    form.cmdRunQuery.Enabled = true;
    if (form.lstZPQTableTo.Items.ListCount() > 1)
        form.TabZPG.TabEnabled[static_cast<int>(WizardTab::Joins)] = true;
    UnlockJoinTables(state, false);
    ShowFirstTab(form.TabZPG);
}

void ArrangeForDialect(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const bool server = IsServerDialect(state.gDatabaseType);
    const bool offersViews = server && state.Options.gAllowCreateView;
    form.cmdCreateView.Visible = offersViews;
    form.cmdRunQueryWidth = offersViews ? runButtonBesideView : runButtonAlone;
    form.cmbJoinType.Items.Clear();
    form.cmbJoinType.Items.AddItems({QStringLiteral("="), QStringLiteral(">=")});
    if (server) form.cmbJoinType.Items.AddItem(QStringLiteral("<>"));
    form.cmbJoinType.Text = QStringLiteral("=");
}

void SelectTab(ZPGGlobalDeclarations& state, WizardTab tab) {
    const int showing = state.Showing;
    TabState& tabs = state.Form->TabZPG;
    if (tabs.Tab == static_cast<int>(tab)) return;
    const auto left = static_cast<WizardTab>(tabs.Tab);
    tabs.Tab = static_cast<int>(tab);
    state.Form->Pointer = MousePointer::Hourglass;
    LeaveTab(state, left);
    if (state.Showing != showing) return;
    // A lock never survives a change of tab.
    UnlockJoinTables(state, IsShown(*state.Form, WizardTab::Joins));
    if (state.Options.gAllowTableSelection)
        SetOptionControls(state, state.Form->lstZPQTableTo.Items.ListCount());
    state.Form->Pointer = MousePointer::Default;
}

CloseAnswer QueryUnload(ZPGGlobalDeclarations& state) {
    if (state.gClosingSilently || !state.Options.gAllowSaveDelete) {
        state.gClosingSilently = false;
        return CloseAnswer::Close;
    }
    const int showing = state.Showing;
    const QString caption = state.Form->Caption;
    const BoxAnswer answer = state.UserPrompts->MsgBox(
        ResString(state, 211) + u' ' + caption + QStringLiteral(".\r\n") + ResString(state, 212),
        BoxStyle::YesNoCancel + BoxStyle::Information, caption);
    if (state.Showing != showing || answer == BoxAnswer::Cancel) return CloseAnswer::Stay;
    return answer == BoxAnswer::Yes ? CloseAnswer::SaveThenClose : CloseAnswer::Close;
}

QString UnloadForm(ZPGGlobalDeclarations& state) {
    ++state.Showing;
    StopWork(state);
    ReleaseWorkingRecordsets(state);
    state.Form = std::make_shared<FormState>();
    state.colTables = state.OfferedTables;
    state.gClosingSilently = false;
    return std::exchange(state.gLoadError, {});
}

}  // namespace zephrin
