#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Refills the join lists and rsJoinTable from colTables; existing joins stay untouched.
void RefreshJoinTables(ZPGGlobalDeclarations& state);

/// Takes the lock off, whatever stood locked. `takeFocus` where the join tab is shown.
void UnlockJoinTables(ZPGGlobalDeclarations& state, bool takeFocus);

/// Drops every join and makes every table joinable again.
void ClearJoins(ZPGGlobalDeclarations& state);

}  // namespace zephrin
