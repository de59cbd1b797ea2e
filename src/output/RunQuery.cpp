#include "output/RunQuery.h"

#include "flow/Shell.h"
#include "platform/ado/ConnectionText.h"
#include "runstate/clsBridge.h"

namespace zephrin {

namespace {

constexpr quint32 black = 0xff000000;
constexpr quint32 darkGreen = 0xff004000;
constexpr quint32 red = 0xffff0000;

QString Lines(const QString& first, const QString& second) {
    return first + QStringLiteral("\r\n") + second;
}

/// Shows a text whose first `headLength` characters stand out.
void ShowOutcome(FormState& form, const QString& text, int headLength, quint32 headColour) {
    form.txtSQLErrors.Text = text;
    form.txtSQLErrors.Bold = true;
    form.txtSQLErrors.Colours = {{0, static_cast<int>(text.size()), black}, {0, headLength, headColour}};
    form.txtSQLErrors.ToolTipText.clear();
}

/// A statement that brings no columns has nothing to export; to export it would run it again.
void EnableResultButtons(ZPGGlobalDeclarations& state, bool enabled) {
    state.Form->cmdAsc.Enabled = enabled;
    state.Form->cmdDesc.Enabled = enabled;
    state.Form->cmdExcel.Enabled =
        enabled && state.Options.gAllowExcelExport && state.rsQueryResult->FieldCount() > 0;
}

void FetchRows(ZPGGlobalDeclarations& state) {
    // Held: whoever is let in meanwhile may end the showing, and the result with it.
    const ado::RecordsetPtr result = state.rsQueryResult;
    if (state.gMaxRecords > 0) result->SetMaxRecords(state.gMaxRecords);
    result->SetCursorLocation(ado::CursorLocation::Client);
    const Work work(state, state.Form->StatusText);
    result->Open(state.CurrentSQL, state.SharedConnection(), ado::CursorType::Static, ado::LockType::ReadOnly,
                 -1);
}

void ShowRows(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const ado::RecordsetPtr& result = state.rsQueryResult;
    form.dgrQueryResults.DataSource = result;
    EnableResultButtons(state, true);
    form.Pointer = MousePointer::Default;
    const QString head = QStringLiteral("Query Successful");
    ShowOutcome(form,
                Lines(head + QStringLiteral(" ... "),
                      QString::number(result->RecordCount()) + QStringLiteral(" Records Returned")),
                static_cast<int>(head.size()), darkGreen);
    // The text is fixed, but nobody must take a cut result for a whole one.
    if (result->Truncated())
        form.txtSQLErrors.ToolTipText =
            QStringLiteral("The query has more records: only the first %1 were fetched.")
                .arg(state.gMaxRecords);
}

void TellHost(ZPGGlobalDeclarations& state, int number, const QString& description) {
    for (ado::RecordsetPtr* criteria : {&state.rsWhere, &state.rsHaving})
        if (!*criteria) *criteria = std::make_shared<ado::Recordset>();
    // The host may look at the form, or stop the user with a box of its own.
    ShowFormNow(state);
    state.Bridge().PassSQLandResultRecordset(number, description, state.CurrentSQL, state.rsQueryResult,
                                             state.rsWhere, state.rsHaving);
}

bool IsConnectionFault(const ado::Error& error) {
    using namespace ado::ErrorNumber;
    return error.Number() == ObjectClosed || error.Number() == ObjectOpen ||
           error.Number() == InvalidConnection;
}

/// All that a lost connection leads to: the pointer, the status and the old rows stay, and the host hears
/// nothing.
void TellConnectionFault(ZPGGlobalDeclarations& state) {
    const QString& connectionString = state.SharedConnection().ConnectionString();
    const QString shown = ado::WithoutPasswords(connectionString, connectionString, state.gPassword);
    state.UserPrompts->MsgBox(Lines(ResString(state, 208), ResString(state, 209) + u' ' + shown),
                              BoxStyle::Critical, state.Options.gRunTimeCaption);
}

void ShowStatementFault(ZPGGlobalDeclarations& state, const ado::Error& error) {
    FormState& form = *state.Form;
    const QString head = QStringLiteral("SQL Syntax Error :");
    ShowOutcome(form, Lines(head, error.Description()), static_cast<int>(head.size()), red);
    form.Pointer = MousePointer::Default;
    form.dgrQueryResults.DataSource.reset();
    EnableResultButtons(state, false);
    // Where nobody sees the results tab, the status bar is all that tells of it.
    SetStatusText(state, state.Options.gAllowShowResults ? QStringLiteral("Ready ..")
                                                         : (head + u' ' + error.Description()).simplified());
}

void ShowAndTell(ZPGGlobalDeclarations& state) {
    state.Form->Minimised = !state.Options.gAllowShowResults && !state.Options.gModalForm;
    SetStatusText(state, QStringLiteral("Ready .."));
    TellHost(state, 0, {});
}

}  // namespace

void RunQuery(ZPGGlobalDeclarations& state) {
    if (state.SelectClause == QLatin1StringView("SELECT ")) {
        state.UserPrompts->MsgBox(Lines(ResString(state, 205), ResString(state, 206)), BoxStyle::Critical,
                                  state.Options.gRunTimeCaption);
        return;
    }
    const int showing = state.Showing;
    FormState& form = *state.Form;
    form.txtSQLErrors.Colours = {{0, static_cast<int>(form.txtSQLErrors.Text.size()), black}};
    SetStatusText(state, QStringLiteral("Running Query .."));
    if (state.Options.gAllowShowResults) SelectTab(state, WizardTab::Results);
    if (state.Showing != showing) return;
    state.CurrentSQL = form.txtSQL.Text;
    state.rsQueryResult = std::make_shared<ado::Recordset>();
    if (state.Options.gAllowCreateRecordset) {
        form.Pointer = MousePointer::Hourglass;
        ShowFormNow(state);
        try {
            FetchRows(state);
        } catch (const ado::Error& error) {
            if (state.Showing != showing) return;
            if (IsConnectionFault(error)) return TellConnectionFault(state);
            ShowStatementFault(state, error);
            return TellHost(state, error.Number(), error.Description());
        }
        if (state.Showing != showing) return;
        ShowRows(state);
    }
    ShowAndTell(state);
}

bool RefuseRun(ZPGGlobalDeclarations& state) {
    if (!IsBusy(state)) return false;
    const ado::Error busy = BusyError(state);
    state.Bridge().PassSQLandResultRecordset(busy.Number(), busy.Description(), state.Form->txtSQL.Text,
                                             nullptr, state.rsWhere, state.rsHaving);
    return true;
}

void SortResults(ZPGGlobalDeclarations& state, bool descending) {
    const int column = state.Form->SortColumn;
    const ado::RecordsetPtr& result = state.rsQueryResult;
    if (column < 0 || !result || !result->IsOpen()) return;
    try {
        result->SetSort(result->FieldAt(column).Name +
                        (descending ? QStringLiteral(" DESC") : QStringLiteral(" ASC")));
    } catch (const ado::Error&) {
        // A name that can't be written without brackets sorts nothing, and nobody is told.
    }
}

}  // namespace zephrin
