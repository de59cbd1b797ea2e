#include "savedquery/OpenQuery.h"

#include "flow/BuildTab.h"
#include "flow/FieldTab.h"
#include "flow/Shell.h"
#include "flow/TableTab.h"
#include "runstate/Dialect.h"
#include "savedquery/QueryChanges.h"
#include "savedquery/QueryValues.h"
#include "savedquery/ReadFamily.h"
#include "savedquery/RestoreRows.h"
#include "sqlgen/FromClause.h"

#include <QFileInfo>

namespace zephrin {

namespace {

QString AskForFile(ZPGGlobalDeclarations& state) {
    Prompts::FileChoice choice;
    choice.Title = QStringLiteral("Open Saved Query");
    choice.Filter = QueryFilter();
    choice.MustExist = true;
    return state.UserPrompts->ShowOpen(choice);
}

void TellUnreadable(const ZPGGlobalDeclarations& state, const QString& path) {
    const QString text = ResString(state, 199) + u' ' + path + QStringLiteral("  ") + ResString(state, 200) +
                         QStringLiteral("\r\n") + ResString(state, 201);
    state.UserPrompts->MsgBox(text, BoxStyle::Critical, ResString(state, 202) + u' ' + path);
}

/// A query that should have been there from the beginning is told to the host as well: the box speaks the
/// language of the run, the text for the host is always English.
void FailLoad(ZPGGlobalDeclarations& state, const QString& path) {
    const int showing = state.Showing;
    TellUnreadable(state, path);
    if (state.Showing != showing) return;
    state.gClosingSilently = true;
    state.gLoadError =
        QStringLiteral("Query ") + path +
        QStringLiteral(" can not be found at the specified location.The file may be missing or corrupt.");
    state.Form->QueryPath.clear();
}

/// Reads all files of the query; nothing where there is no query. Throws ado::Cancelled() where the user
/// doesn't want it any more, or the showing is over.
std::optional<SavedFamily> ReadFiles(ZPGGlobalDeclarations& state, const QString& path) {
    const int showing = state.Showing;
    std::optional<SavedFamily> family;
    {
        Work work(state, QStringLiteral("Opening Query .."));
        work.Expect(CompanionCount + 1);
        family = ReadFamily(path, [&work](size_t done) {
            if (!work.Step(static_cast<qint64>(done))) throw ado::Cancelled();
        });
    }
    if (state.Showing != showing) throw ado::Cancelled();
    return family;
}

/// Connects as the file says; what went wrong. The query opens all the same.
QString Connect(ZPGGlobalDeclarations& state, const QueryMaster& master) {
    // A server that is away takes its time.
    state.Form->Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    const int showing = state.Showing;
    const ConnectionErrors errors = OpenDatabaseConnection(
        state, master.ConnectionString, master.ConnectionTimeout.value_or(state.gConnectionTimeout),
        master.CommandTimeout.value_or(state.gCommandTimeout), master.UserId, master.Password);
    if (state.Showing != showing) return {};
    state.Form->Pointer = MousePointer::Default;
    ArrangeForDialect(state);
    return errors.IsEmpty() ? QString() : errors.Description();
}

/// The order in which recordsets come back; the aliases come before what is named by them.
constexpr ado::RecordsetPtr ZPGGlobalDeclarations::*restoreOrder[] = {
    &ZPGGlobalDeclarations::rsAlias,      &ZPGGlobalDeclarations::rsWhere,
    &ZPGGlobalDeclarations::rsGroupBy,    &ZPGGlobalDeclarations::rsOrderBy,
    &ZPGGlobalDeclarations::rsCalcFields, &ZPGGlobalDeclarations::rsJoins,
    &ZPGGlobalDeclarations::rsJoinTable,  &ZPGGlobalDeclarations::rsJoinTablesUsed,
};

/// A companion whose rows are not of the kind that belongs there counts as lost.
void RestoreRecordsets(ZPGGlobalDeclarations& state, SavedFamily& family) {
    for (const auto rows : restoreOrder) {
        for (size_t each = 0; each < CompanionCount; ++each) {
            if (Companions()[each].Rows != rows || family.Master.Paths[each].isEmpty()) continue;
            ado::Recordset* const saved = family.Rows[each].get();
            state.*rows = rows == &ZPGGlobalDeclarations::rsWhere ? RestoreCriteria(saved)
                                                                  : RestoreRows(saved, *(state.*rows));
            if (saved && !(state.*rows)->IsOpen())
                family.Lost << QFileInfo(family.Master.Paths[each]).fileName();
            // Joins that stay from before leave the button as it stands.
            if (rows == &ZPGGlobalDeclarations::rsJoins && HasRows(state.rsJoins))
                state.Form->cmdResetJoins.Enabled = true;
        }
    }
    state.Form->dgrJoins.DataSource = state.rsJoins;
}

/// The values of the lists and options; nothing where their file is lost.
std::optional<QueryValues> ValuesOf(const SavedFamily& family, bool& hasOptions) {
    for (size_t each = 0; each < CompanionCount; ++each) {
        if (Companions()[each].Rows || !family.Rows[each]) continue;
        // A file without rows says nothing of the options.
        hasOptions = family.Rows[each]->RecordCount() > 0;
        return RowsToValues(*family.Rows[each]);
    }
    return std::nullopt;
}

/// What the user has to know of a query that is open: of its connection, and of files that it should have.
QString OpenedText(const QString& connectionError, const SavedFamily& family) {
    QStringList told;
    if (!connectionError.isEmpty()) told << connectionError;
    if (!family.Lost.isEmpty())
        told << QStringLiteral("Missing or damaged: ") + family.Lost.join(QStringLiteral(", "));
    if (!family.Foreign.isEmpty())
        told << QStringLiteral("Saved at another time than the query: ") +
                    family.Foreign.join(QStringLiteral(", "));
    return told.isEmpty() ? QStringLiteral("Ready ..") : told.join(QStringLiteral(". "));
}

/// The options of SELECT, each followed by what a user's change of it runs.
void RestoreOptions(ZPGGlobalDeclarations& state, const QueryValues& values) {
    FormState& form = *state.Form;
    const auto change = [&](auto& value, const auto& to, void (*handler)(ZPGGlobalDeclarations&)) {
        if (value == to) return;
        value = to;
        handler(state);
    };
    change(form.chkDistinct.Value, values.Distinct ? 1 : 0, DistinctClicked);
    change(form.chkPercent.Value, values.Percent ? 1 : 0, PercentClicked);
    change(form.txtTopX.Text, values.TopX, TopXChanged);
}

void Refill(ListState& list, const QStringList& items) {
    list.Clear();
    list.AddItems(items);
}

/// The buttons of both pairs of lists, as they stand behind moves that leave nothing selected.
void EnableMoves(FormState& form) {
    const auto holds = [](const ListBoxState& list) { return list.Items.ListCount() > 0; };
    form.cmdZPQTableRightAll.Enabled = holds(form.lstZPQTableSelection);
    form.cmdZPQTableLeftAll.Enabled = holds(form.lstZPQTableTo);
    form.cmdZPQFieldRightAll.Enabled = holds(form.lstZPQFieldFrom);
    form.cmdZPQFieldLeftAll.Enabled = holds(form.lstZPQFieldTo);
    for (ButtonState* single :
         {&form.cmdZPQTableRight, &form.cmdZPQTableLeft, &form.cmdZPQFieldRight, &form.cmdZPQFieldLeft})
        single->Enabled = false;
}

/// `unchosen`: the tables that may still be chosen.
void RestoreLists(ZPGGlobalDeclarations& state, const QueryValues& values, const QStringList& unchosen) {
    FormState& form = *state.Form;
    state.colTables = Collection(values.Tables);
    Refill(form.lstZPQTableTo.Items, values.Tables);
    form.RemoveTables = Collection(values.RemoveTables);
    state.colFields = Collection(values.Fields);
    state.colSelFields = Collection(values.SelFields);
    Refill(form.lstZPQFieldTo.Items, values.SelFields);
    Refill(form.lstZPQFieldFrom.Items, values.UnselFields);
    Refill(form.lstZPQTableSelection.Items, unchosen);
    EnableMoves(form);
    ApplySingleTableMode(state);
}

/// The connection is the file's from now on, and so are the tables on offer; where the file of the lists is
/// lost, the offer stays. Where the host fixes the tables they are all in the query, so no other one may be
/// on offer.
void RestoreForm(ZPGGlobalDeclarations& state, const SavedFamily& family) {
    bool hasOptions = false;
    const std::optional<QueryValues> values = ValuesOf(family, hasOptions);
    if (!values) return RestoreLists(state, {}, state.OfferedTables.Items());
    if (hasOptions) RestoreOptions(state, *values);
    QStringList unchosen = values->UnselTables;
    unchosen.removeIf(
        [&](const QString& table) { return values->Tables.contains(table, Qt::CaseInsensitive); });
    RestoreLists(state, *values, unchosen);
    state.OfferedTables =
        Collection(state.Options.gAllowTableSelection ? values->Tables + unchosen : values->Tables);
}

OpenOutcome Restore(ZPGGlobalDeclarations& state, const QString& path, SavedFamily& family) {
    const int showing = state.Showing;
    state.Form->QueryPath = path;
    const QString connectionError = Connect(state, family.Master);
    if (state.Showing != showing) return OpenOutcome::Cancelled;
    RestoreRecordsets(state, family);
    RebuildJoinText(state);
    RestoreForm(state, family);
    state.Form->TablesChanged = state.Options.gAllowTableSelection;
    SetTabsForTables(state, true, QStringLiteral("OpenQuery"));
    ShowSqlView(state);
    BuildSelFields(state);
    ChooseQueryMode(state, 0);
    KeepQuery(state);
    SetStatusText(state, OpenedText(connectionError, family));
    return OpenOutcome::Opened;
}

}  // namespace

OpenOutcome OpenSavedQuery(ZPGGlobalDeclarations& state, const QString& given) {
    const int showing = state.Showing;
    const QString path = given.isEmpty() ? AskForFile(state) : given;
    if (state.Showing != showing || path.isEmpty()) return OpenOutcome::Cancelled;
    std::optional<SavedFamily> family;
    try {
        family = ReadFiles(state, path);
    } catch (const ado::Error&) {
        return OpenOutcome::Cancelled;
    }
    if (family) return Restore(state, path, *family);
    FailLoad(state, path);
    return OpenOutcome::Failed;
}

OpenOutcome OpenFromButton(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    if (!MayLeaveQuery(state)) return OpenOutcome::Cancelled;
    const QString path = AskForFile(state);
    if (state.Showing != showing || path.isEmpty()) return OpenOutcome::Cancelled;
    std::optional<SavedFamily> family;
    try {
        family = ReadFiles(state, path);
    } catch (const ado::Error&) {
        return OpenOutcome::Cancelled;
    }
    if (!family) {
        TellUnreadable(state, path);
        return OpenOutcome::Failed;
    }
    StartNewQuery(state);
    const OpenOutcome outcome = Restore(state, path, *family);
    if (outcome == OpenOutcome::Opened) FinishOpening(state);
    return outcome;
}

}  // namespace zephrin
