#include "output/CreateView.h"

#include "runstate/clsBridge.h"

#include <zephrin/ado/Error.h>

using namespace Qt::StringLiterals;

namespace zephrin {

namespace {

const auto Title = QStringLiteral("Create View");
const auto ErrorTitle = QStringLiteral("Create View Error");

/// The words with which the servers say that a name is taken; any other wording is an error like all others.
bool SaysNameIsTaken(const QString& description) {
    return description.contains(u"name is already used") ||
           description.contains(u"There is already an object named");
}

QString AlterQuestion(const QString& name) {
    return u"View '"_s + name +
           u"' already exists.\r\nDo you wish to Alter the View ?\r\n\r\nWarning:\r\nAltering a View could cause other "_s
           u"Views that rely on it to stop functioning correctly. Only Alter the View if you are fully aware "
           u"of all "
           u"implications that altering the View may cause.";
}

/// Runs a statement that brings no rows; the error's description, or "".
QString Run(ZPGGlobalDeclarations& state, const QString& statement) {
    try {
        const Work work(state, QStringLiteral("Creating View .."));
        state.SharedConnection().Execute(statement);
        return {};
    } catch (const ado::Error& error) {
        return error.Description().isEmpty() ? QStringLiteral("Error %1").arg(error.Number())
                                             : error.Description();
    }
}

/// Where the host fixes the tables, those on offer are those of the query: one more would be crossed with
/// them at the next showing.
void PutOnOffer(ZPGGlobalDeclarations& state) {
    if (IsKnownTable(state, state.ViewName)) return;
    state.Form->lstZPQTableSelection.Items.AddItem(state.ViewName);
    if (state.Options.gAllowTableSelection) state.OfferedTables.Add(state.ViewName);
}

/// What follows on either success. The host may end the showing in its handler; the list is gone then.
void Announce(ZPGGlobalDeclarations& state, const QString& name, const QString& action) {
    const int showing = state.Showing;
    state.Bridge().PassViewName(name, action);
    if (state.Showing == showing) PutOnOffer(state);
}

void OfferToAlter(ZPGGlobalDeclarations& state, const QString& name) {
    const int showing = state.Showing;
    const int style = BoxStyle::YesNo + BoxStyle::Critical + BoxStyle::DefaultSecond;
    const BoxAnswer answer = state.UserPrompts->MsgBox(AlterQuestion(name), style, Title);
    if (state.Showing != showing || answer != BoxAnswer::Yes) return;
    const QString error = AlterView(state, state.ViewName);
    if (state.Showing != showing) return;
    if (!error.isEmpty()) {
        state.UserPrompts->MsgBox(error, BoxStyle::Critical, ErrorTitle);
        return;
    }
    state.UserPrompts->MsgBox(u"View '"_s + name + u"' Successfully Altered"_s, BoxStyle::Information, Title);
    if (state.Showing == showing) Announce(state, name, QStringLiteral("AlterView"));
}

}  // namespace

bool IsKnownTable(const ZPGGlobalDeclarations& state, const QString& name) {
    const auto holds = [&](const ListState& list) {
        return list.Items().contains(name, Qt::CaseInsensitive);
    };
    return holds(state.Form->lstZPQTableSelection.Items) || holds(state.Form->lstZPQTableTo.Items) ||
           state.OfferedTables.Contains(name);
}

QString AlterView(ZPGGlobalDeclarations& state, const QString& name) {
    const QString statement = u"ALTER VIEW "_s + name + u" AS "_s + state.Form->txtSQL.Text;
    if (state.gDatabaseType == u"SQL Server") return Run(state, statement);
    if (state.gDatabaseType == u"Oracle") return Run(state, statement + u" COMPILE;"_s);
    return {};
}

void CreateView(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    const QString name =
        state.UserPrompts->InputBox(QStringLiteral("Please give your view a name"), Title, {});
    if (state.Showing != showing) return;
    if (name.isEmpty()) {
        state.UserPrompts->MsgBox(QStringLiteral("No Title entered, Create View cancelled"),
                                  BoxStyle::Critical, Title);
        return;
    }
    state.ViewName = state.gDelimOpen + name + state.gDelimClose;
    const QString error =
        Run(state, u"CREATE VIEW "_s + state.ViewName + u" AS "_s + state.Form->txtSQL.Text);
    if (state.Showing != showing) return;
    if (SaysNameIsTaken(error)) {
        OfferToAlter(state, name);
    } else if (!error.isEmpty()) {
        state.UserPrompts->MsgBox(error, BoxStyle::Critical, ErrorTitle);
    } else {
        state.UserPrompts->MsgBox(u"View '"_s + name + u"' Successfully Created"_s, BoxStyle::Information,
                                  Title);
        if (state.Showing == showing) Announce(state, name, QStringLiteral("NewViewCreated"));
    }
}

}  // namespace zephrin
