#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

// The sentence builder of the build-query tab: a field, an operator, up to two values, commit. Value boxes
// are numbered 0 and 1. The clicks of the lists and of the boxes' items come through ConnectHandlers.

/// A row of lstSelectedFields was selected, or none is any more.
void SelectedFieldClicked(ZPGGlobalDeclarations& state);

/// An operator was selected, or none is any more.
void OperatorClicked(ZPGGlobalDeclarations& state);

/// The user typed into a value box.
void ValueTyped(ZPGGlobalDeclarations& state, int box, const QString& text);
/// An item of a value box's list was selected: it becomes the box's text.
void ValuePicked(ZPGGlobalDeclarations& state, int box);
/// Writes the text of a value box from code; a change counts as if it was typed.
void SetValueText(ZPGGlobalDeclarations& state, int box, const QString& text);

/// Offers the distinct values of the field in hand, of its expression where it is no plain field, in both
/// value boxes, Nulls left out. The status bar says why there are none.
void LookUpFieldValues(ZPGGlobalDeclarations& state);

/// Writes the entry in the mode of the tab. Asks in Group mode: the wizard may be over afterwards. What can't
/// be written leaves query and entry as they were, and the status bar says so.
void CommitEntry(ZPGGlobalDeclarations& state);

/// Fills lstSelectedFields for the mode of the tab. No field is in hand then, and nothing tells of one.
void RefillFieldList(ZPGGlobalDeclarations& state);

/// Shows the sentence under construction as the caption of its frame.
void RefreshSentence(ZPGGlobalDeclarations& state);

/// Counts anew whether `column` of rsWhere holds a criterion, and lets the operator in hand choose between
/// AND and OR.
void RecountCriteria(ZPGGlobalDeclarations& state, const QString& column);

}  // namespace zephrin
