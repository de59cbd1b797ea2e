#pragma once

#include "runstate/FormState.h"

namespace zephrin {

/// Two lists of which one feeds the other, and the buttons of that direction. The button that moves one entry
/// back is left out: no move in this direction touches it.
struct MoveDirection {
    ListBoxState& From;
    ListBoxState& To;
    ButtonState& One;      ///< moves the selected entry
    ButtonState& All;      ///< moves every entry
    ButtonState& AllBack;  ///< moves every entry the other way
};

/// Takes the selected entry over, if there is one. Returns the index at which it stood, or -1.
int MoveSelected(const MoveDirection& move);

/// Selects what now stands at `oldIndex` and enables the buttons by what is left. Past the end nothing is
/// selected: the selection does not step back to the new last entry.
void SelectAfterMove(const MoveDirection& move, int oldIndex);

/// Takes every entry over, in their order, and leaves the buttons as they are after that.
void MoveAll(const MoveDirection& move);

}  // namespace zephrin
