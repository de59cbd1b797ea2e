#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Adds the field and the operator that are selected to rsGroupBy, and the alias of an aggregate to rsAlias.
/// Asks whether it is put out; the wizard may be over when that box closes. What stands there already is
/// passed over.
void AddGroupRow(ZPGGlobalDeclarations& state);

/// Adds the field and the direction that are selected to rsOrderBy, also a second time.
void AddOrderRow(ZPGGlobalDeclarations& state);

/// What the selected row of lstSelectedFields stands for; empty without a selection.
FormState::FieldKey SelectedFieldKey(const FormState& form);

}  // namespace zephrin
