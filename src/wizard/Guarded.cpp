#include "wizard/Guarded.h"

#include "flow/Shell.h"
#include "runstate/ZPGGlobalDeclarations.h"

#include <zephrin/ado/Error.h>

#include <new>

namespace zephrin {

namespace {

void Tell(ZPGGlobalDeclarations& state, const QString& text) {
    // No form is loaded any more, and nobody waits for what was asked of it.
    if (!state.ShowForm) return;
    state.Form->Pointer = MousePointer::Default;
    SetStatusText(state, QStringLiteral("Ready .."));
    // The box may outlive what it is asked of.
    const std::shared_ptr<Prompts> prompts = state.UserPrompts;
    prompts->MsgBox(QStringLiteral("That could not be done.\r\n") + text, BoxStyle::Critical,
                    state.Options.gRunTimeCaption);
}

}  // namespace

bool RunGuarded(ZPGGlobalDeclarations& state, const std::function<void()>& act) {
    // Whatever a program does to the widgets in the middle of a work.
    if (IsBusy(state)) return false;
    QString failure;
    try {
        act();
        return true;
    } catch (const ado::Error& error) {
        failure = error.Description();
    } catch (const std::bad_alloc&) {
        failure = QStringLiteral("There is not enough memory.");
    } catch (const std::exception& error) {
        // From a handler of the host's, as often as not.
        failure = QString::fromUtf8(error.what());
    }
    Tell(state, failure);
    return false;
}

}  // namespace zephrin
