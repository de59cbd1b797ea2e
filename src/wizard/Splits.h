#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

namespace controls {
class DataGrid;
}

// The two buttons under a grid that split it and take the split away again. `remove` is the second one.

void AddSplit(ZPGGlobalDeclarations& state, controls::DataGrid* grid, ButtonState& remove);
void RemoveSplit(ZPGGlobalDeclarations& state, controls::DataGrid* grid, ButtonState& remove);

}  // namespace zephrin
