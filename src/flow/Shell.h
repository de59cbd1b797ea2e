#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Form load: makes the working recordsets, applies options and dialect, and fills the first lists. False
/// when the load failed and the wizard must unload without ever being seen; the user was told already.
/// Handlers of the lists are connected by it (ConnectHandlers).
bool LoadForm(ZPGGlobalDeclarations& state);

/// What the form offers by the dialect of the connection: the join types, the button for views, the width of
/// the run button. Part of form load; done anew when a query brought a connection of its own.
void ArrangeForDialect(ZPGGlobalDeclarations& state);

/// Leaves nothing of the query in hand: recordsets, options, lists, results and tabs are as form load makes
/// them, on a FormState of their own. For an operation that waits for an answer meanwhile, the showing is
/// over.
void StartNewQuery(ZPGGlobalDeclarations& state);

/// What follows the opening of a query file, at the start and behind the open button: it can be run, the join
/// tab is open and unlocked where there is something to join, and the first tab that is open is shown.
void FinishOpening(ZPGGlobalDeclarations& state);

/// Switches to `tab` and runs what the tab left behind requires. Does nothing when it is the present one.
void SelectTab(ZPGGlobalDeclarations& state, WizardTab tab);

enum class CloseAnswer { Close, SaveThenClose, Stay };
/// Whether the wizard may close; asks where saving is allowed and the close is not a silent one.
CloseAnswer QueryUnload(ZPGGlobalDeclarations& state);

/// Releases everything of the showing and puts a fresh form and the offered tables in its place; what the
/// host hears of it is the caller's business, afterwards. Returns the load error that goes with ZPBUnloaded.
QString UnloadForm(ZPGGlobalDeclarations& state);

}  // namespace zephrin
