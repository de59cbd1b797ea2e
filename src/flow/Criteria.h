#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Writes the text of a value box (0 or 1) from code; a change runs ValueChanged once, as a user's typing
/// does.
void SetValueText(ZPGGlobalDeclarations& state, int box, const QString& text);

/// The text of a value box (0 or 1) changed.
void ValueChanged(ZPGGlobalDeclarations& state, int box);

/// Shows the sentence under construction as the caption of its frame.
void RefreshSentence(ZPGGlobalDeclarations& state);

}  // namespace zephrin
