#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

enum class SaveOutcome {
    Saved,
    Cancelled,  ///< nothing was written, nothing is said
    Failed,     ///< nothing was written, the status bar says why; what stood there stands whole
};

/// Asks for a name and saves the query under it: the master and a companion for each working recordset. The
/// host hears of it when the family stands.
SaveOutcome SaveQuery(ZPGGlobalDeclarations& state);

/// Asks for a query file, asks again, and deletes it with its companions. The host hears of it when they are
/// gone.
void DeleteQuery(ZPGGlobalDeclarations& state);

}  // namespace zephrin
