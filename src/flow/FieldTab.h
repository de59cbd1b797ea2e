#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

void MoveFieldRight(ZPGGlobalDeclarations& state);
void MoveAllFieldsRight(ZPGGlobalDeclarations& state);
void MoveFieldLeft(ZPGGlobalDeclarations& state);
void MoveAllFieldsLeft(ZPGGlobalDeclarations& state);
void FieldFromClicked(ZPGGlobalDeclarations& state);
void FieldToClicked(ZPGGlobalDeclarations& state);
// Double-clicks move like the buttons, but are dead while the selection of tables is ahead of the fields.
inline void FieldFromDoubleClicked(ZPGGlobalDeclarations& state) {
    if (!state.Form->TablesChanged) MoveFieldRight(state);
}
inline void FieldToDoubleClicked(ZPGGlobalDeclarations& state) {
    if (!state.Form->TablesChanged) MoveFieldLeft(state);
}

/// Rebuilds colTables (where tables may be selected), colFields, colSelFields and every list made of them. A
/// failed look-up is shown to the user and takes the wizard back to the table tab.
bool LoadFieldCollections(ZPGGlobalDeclarations& state);

/// What a failed look-up of fields leads to: `description` in a box, back to the table tab, nothing chosen
/// and no FROM. Nothing at all where tables can't be selected. The wizard may be over afterwards.
void FieldLookupFailed(ZPGGlobalDeclarations& state, const QString& description);

/// colSelFields becomes the items of lstZPQFieldTo.
void BuildSelFields(ZPGGlobalDeclarations& state);

/// Drops grouping, ordering and calculated rows whose tables are gone, gives rsWhere its columns, and refills
/// the list of the build-query tab.
void ReconcileQueryLists(ZPGGlobalDeclarations& state);

}  // namespace zephrin
