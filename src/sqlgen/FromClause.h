#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Rewrites JoinText from rsJoins, and opens or closes the tabs behind the join tab by whether every table is
/// joined.
void RebuildJoinText(ZPGGlobalDeclarations& state);

/// Rewrites FromClause from JoinText and the chosen tables. Left as it was where no table is chosen and
/// tables may be selected.
void BuildFromClause(ZPGGlobalDeclarations& state);

}  // namespace zephrin
