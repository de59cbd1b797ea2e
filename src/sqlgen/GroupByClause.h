#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Rewrites GroupByClause from the rows of rsGroupBy that are no aggregates.
void BuildGroupByClause(ZPGGlobalDeclarations& state);

}  // namespace zephrin
