#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin::test {

/// True while the build-query tab shows the statement.
bool IsOnStatement(const ZPGGlobalDeclarations& state);

/// What is wrong with a wizard between two acts, or "": clauses that differ from a rebuild, aliases of
/// nothing, what tells of a field that isn't selected.
QString BrokenInvariant(const ZPGGlobalDeclarations& state);

/// What the database says of the statement when it can't read it, unless its shape is odd by design.
QString SyntaxError(ZPGGlobalDeclarations& state);

}  // namespace zephrin::test
