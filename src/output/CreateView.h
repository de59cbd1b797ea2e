#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Asks for a name and stores the statement of txtSQL as a view of that name; where the database says that
/// the name is taken, asks whether to alter that view. The user is told how it ended, the host hears of a
/// success, and a new view is on offer at once.
void CreateView(ZPGGlobalDeclarations& state);

/// Runs the dialect's statement that alters the view `name`. Returns the error's description, or "" after a
/// success, and for dialects that have no such statement, where nothing runs.
QString AlterView(ZPGGlobalDeclarations& state, const QString& name);

/// True when `name` is on offer or chosen.
bool IsKnownTable(const ZPGGlobalDeclarations& state, const QString& name);

}  // namespace zephrin
