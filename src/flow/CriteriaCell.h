#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// The text of a criteria cell after a key of its keypad was pressed: `key` is put in at `selectionStart`
/// (from 0). What is selected stays; only the start of the selection counts.
QString InsertKey(const QString& text, int selectionStart, const QString& key);

/// Takes the edited text of the cell over, unless it is what the dialog opened with.
void AcceptCriteria(ZPGGlobalDeclarations& state, const QString& opening, const QString& edited);

}  // namespace zephrin
