#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Connects the clicks of the form's lists and drop-downs, whether by the user or by code, with the operations that
/// they run. LoadForm does it once a showing; the widgets only set the selection.
void ConnectHandlers(ZPGGlobalDeclarations& state);

}  // namespace zephrin
