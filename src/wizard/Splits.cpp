#include "wizard/Splits.h"

#include "platform/controls/DataGrid.h"

namespace zephrin {

void AddSplit(ZPGGlobalDeclarations& state, controls::DataGrid* grid, ButtonState& remove) {
    if (!grid->AddSplit()) SetStatusText(state, QStringLiteral("There is no room for another split .."));
    remove.Enabled = grid->SplitCount() > 1;
}

void RemoveSplit(controls::DataGrid* grid, ButtonState& remove) {
    grid->RemoveSplit();
    remove.Enabled = grid->SplitCount() > 1;
}

}  // namespace zephrin
