#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

enum class RowOutcome {
    Added,
    Standing,    ///< the same stands there already, or there was nothing to add
    TakenAlias,  ///< something else is called so; the user was told
    TooLong      ///< a column can't hold its text: no row is left behind
};

/// Adds the field and the operator that are selected to rsGroupBy, and the alias of an aggregate to rsAlias.
/// Asks whether it is put out; the wizard may be over when a box closes.
RowOutcome AddGroupRow(ZPGGlobalDeclarations& state);

/// Adds the field and the direction that are selected to rsOrderBy, also a second time.
RowOutcome AddOrderRow(ZPGGlobalDeclarations& state);

/// What the selected row of lstSelectedFields stands for; empty without a selection.
FormState::FieldKey SelectedFieldKey(const FormState& form);

}  // namespace zephrin
