#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Form load: makes the working recordsets, applies options and dialect, and fills the first lists. False when the
/// load failed; `error` then says why, and the caller unloads.
bool LoadForm(ZPGGlobalDeclarations& state, QString& error);

/// Switches to `tab` and runs what the tab left behind requires. Does nothing when it is the present one.
void SelectTab(ZPGGlobalDeclarations& state, WizardTab tab);

enum class CloseAnswer { Close, SaveThenClose, Stay };
/// Whether the wizard may close; asks where saving is allowed and the close is not a silent one.
CloseAnswer QueryUnload(ZPGGlobalDeclarations& state);

/// Releases everything of the showing; what the host hears of it is the caller's business, afterwards.
/// Returns the load error that goes with ZPBUnloaded.
QString UnloadForm(ZPGGlobalDeclarations& state);

}  // namespace zephrin
