#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Runs what stands in txtSQL, shows the outcome and tells the host.
void RunQuery(ZPGGlobalDeclarations& state);

/// Tells the host, as of a failed run, that a run was asked for in the middle of another work. False where
/// there is none.
bool RefuseRun(ZPGGlobalDeclarations& state);

/// Orders the rows of the last run by the column whose head was clicked last. A name with a blank sorts
/// nothing.
void SortResults(ZPGGlobalDeclarations& state, bool descending);

}  // namespace zephrin
