#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Rewrites OrderByClause from the rows of rsOrderBy that grouping and calculated fields let stand.
void BuildOrderByClause(ZPGGlobalDeclarations& state);

}  // namespace zephrin
