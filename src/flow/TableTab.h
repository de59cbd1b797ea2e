#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

// What the user does on the table tab. Moves mark the selection as changed; the generators look at it when the tab is
// left.
void MoveTableRight(ZPGGlobalDeclarations& state);
void MoveAllTablesRight(ZPGGlobalDeclarations& state);
void MoveTableLeft(ZPGGlobalDeclarations& state);
void MoveAllTablesLeft(ZPGGlobalDeclarations& state);
void TableSelectionClicked(ZPGGlobalDeclarations& state);
void TableToClicked(ZPGGlobalDeclarations& state);

/// With joins forbidden one table at most is chosen: the buttons that would choose another are off.
void ApplySingleTableMode(ZPGGlobalDeclarations& state);

/// Opens and closes tabs by the number of chosen tables; `mode` is "" or "OpenQuery".
void SetTabsForTables(ZPGGlobalDeclarations& state, bool enabled, const QString& mode);

}  // namespace zephrin
