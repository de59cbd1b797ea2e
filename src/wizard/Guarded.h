#pragma once

#include <functional>

namespace zephrin {

struct ZPGGlobalDeclarations;

/// Runs what a user's act leads to. Every handler of the wizard and its dialogs goes through here, since an
/// error that got into the event loop would end the host.
///
/// An error that nobody took on its way is told in a box, with the pointer back and the status at rest; false
/// then, and where a work is under way already: nothing is run then. Nothing is told where no form is loaded
/// any more. The form may be gone when this returns.
bool RunGuarded(ZPGGlobalDeclarations& state, const std::function<void()>& act);

}  // namespace zephrin
