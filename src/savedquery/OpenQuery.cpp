#include "savedquery/OpenQuery.h"

#include "flow/BuildTab.h"
#include "flow/FieldTab.h"
#include "flow/Shell.h"
#include "flow/TableTab.h"
#include "runstate/Dialect.h"
#include "savedquery/QueryMaster.h"
#include "savedquery/QueryValues.h"
#include "savedquery/RestoreRows.h"
#include "sqlgen/FromClause.h"

#include <zephrin/ado/Error.h>

namespace zephrin {

namespace {

QString AskForFile(ZPGGlobalDeclarations& state) {
    Prompts::FileChoice choice;
    choice.Title = QStringLiteral("Open Saved Query");
    choice.Filter = QueryFilter();
    return state.UserPrompts->ShowOpen(choice);
}

std::optional<QueryMaster> ReadMaster(QueryFiles& files, const QString& path) {
    ado::Recordset rows;
    try {
        files.Open(rows, path);
    } catch (const ado::Error&) {
        return std::nullopt;
    }
    return RowsToMaster(rows);
}

/// The box speaks the language of the run, the text for the host is always English.
void TellUnreadable(ZPGGlobalDeclarations& state, const QString& path) {
    const int showing = state.Showing;
    const QString text = ResString(state, 199) + u' ' + path + QStringLiteral("  ") + ResString(state, 200) +
                         QStringLiteral("\r\n") + ResString(state, 201);
    state.UserPrompts->MsgBox(text, BoxStyle::Critical, ResString(state, 202) + u' ' + path);
    if (state.Showing != showing) return;
    state.gClosingSilently = true;
    state.gLoadError =
        QStringLiteral("Query ") + path +
        QStringLiteral(" can not be found at the specified location.The file may be missing or corrupt.");
    state.Form->QueryPath.clear();
}

/// Connects as the file says. A failure stands in the status bar, and the query opens all the same.
void Connect(ZPGGlobalDeclarations& state, const QueryMaster& master) {
    // A server that is away takes its time.
    state.Form->Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    const ConnectionErrors errors = OpenDatabaseConnection(
        state, master.ConnectionString, master.ConnectionTimeout.value_or(state.gConnectionTimeout),
        master.CommandTimeout.value_or(state.gCommandTimeout), master.UserId, master.Password);
    state.Form->Pointer = MousePointer::Default;
    SetStatusText(state, errors.IsEmpty() ? QStringLiteral("Ready ..") : errors.Description());
    ArrangeForDialect(state);
}

/// The order in which recordsets come back; the aliases come before what is named by them.
constexpr ado::RecordsetPtr ZPGGlobalDeclarations::*restoreOrder[] = {
    &ZPGGlobalDeclarations::rsAlias,      &ZPGGlobalDeclarations::rsWhere,
    &ZPGGlobalDeclarations::rsGroupBy,    &ZPGGlobalDeclarations::rsOrderBy,
    &ZPGGlobalDeclarations::rsCalcFields, &ZPGGlobalDeclarations::rsJoins,
    &ZPGGlobalDeclarations::rsJoinTable,  &ZPGGlobalDeclarations::rsJoinTablesUsed,
};

void RestoreRecordsets(ZPGGlobalDeclarations& state, QueryFiles& files, const QueryMaster& master) {
    for (const auto rows : restoreOrder) {
        for (size_t each = 0; each < CompanionCount; ++each) {
            if (Companions()[each].Rows != rows || master.Paths[each].isEmpty()) continue;
            state.*rows = rows == &ZPGGlobalDeclarations::rsWhere
                              ? RestoreCriteria(files, master.Paths[each])
                              : RestoreRows(files, master.Paths[each], state.*rows);
            // Joins that stay from before leave the button as it stands.
            if (rows == &ZPGGlobalDeclarations::rsJoins && HasRows(state.rsJoins))
                state.Form->cmdResetJoins.Enabled = true;
        }
    }
    state.Form->dgrJoins.DataSource = state.rsJoins;
}

QueryValues ReadValues(QueryFiles& files, const QueryMaster& master, bool& read) {
    ado::Recordset rows;
    read = false;
    for (size_t each = 0; each < CompanionCount; ++each) {
        if (Companions()[each].Rows || master.Paths[each].isEmpty()) continue;
        try {
            files.Open(rows, master.Paths[each]);
            read = rows.RecordCount() > 0;
        } catch (const ado::Error&) {
            return {};
        }
    }
    return RowsToValues(rows);
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

void RestoreLists(ZPGGlobalDeclarations& state, const QueryValues& values) {
    FormState& form = *state.Form;
    state.colTables = Collection(values.Tables);
    Refill(form.lstZPQTableTo.Items, values.Tables);
    form.RemoveTables = Collection(values.RemoveTables);
    state.colFields = Collection(values.Fields);
    state.colSelFields = Collection(values.SelFields);
    Refill(form.lstZPQFieldTo.Items, values.SelFields);
    Refill(form.lstZPQFieldFrom.Items, values.UnselFields);
    Refill(form.lstZPQTableSelection.Items, values.UnselTables);
    // The connection is the file's from now on, and so are the tables on offer.
    state.OfferedTables = Collection(values.Tables + values.UnselTables);
    EnableMoves(form);
    ApplySingleTableMode(state);
}

}  // namespace

OpenOutcome OpenSavedQuery(ZPGGlobalDeclarations& state, QueryFiles& files, const QString& given) {
    FormState& form = *state.Form;
    const int showing = state.Showing;
    const QString path = given.isEmpty() ? AskForFile(state) : given;
    if (state.Showing != showing || path.isEmpty()) return OpenOutcome::Cancelled;
    const std::optional<QueryMaster> master = ReadMaster(files, path);
    if (!master) {
        TellUnreadable(state, path);
        return OpenOutcome::Failed;
    }
    form.QueryPath = path;
    Connect(state, *master);
    if (state.Showing != showing) return OpenOutcome::Cancelled;
    RestoreRecordsets(state, files, *master);
    RebuildJoinText(state);
    bool read = false;
    const QueryValues values = ReadValues(files, *master, read);
    // A file without rows says nothing of the options.
    if (read) RestoreOptions(state, values);
    RestoreLists(state, values);
    form.TablesChanged = state.Options.gAllowTableSelection;
    SetTabsForTables(state, true, QStringLiteral("OpenQuery"));
    ShowSqlView(state);
    BuildSelFields(state);
    ChooseQueryMode(state, 0);
    return OpenOutcome::Opened;
}

OpenOutcome OpenFromButton(ZPGGlobalDeclarations& state, QueryFiles& files) {
    const OpenOutcome outcome = OpenSavedQuery(state, files, {});
    if (outcome == OpenOutcome::Opened) FinishOpening(state);
    return outcome;
}

}  // namespace zephrin
