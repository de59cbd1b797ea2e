#include "wizard/Splits.h"

#include "platform/controls/DataGrid.h"

namespace zephrin {

void AddSplit(ZPGGlobalDeclarations& state, controls::DataGrid* grid, ButtonState& remove) {
    SetStatusText(state, grid->AddSplit() ? QStringLiteral("Ready ..")
                                          : QStringLiteral("There is no room for another split .."));
    remove.Enabled = grid->SplitCount() > 1;
}

void RemoveSplit(ZPGGlobalDeclarations& state, controls::DataGrid* grid, ButtonState& remove) {
    grid->RemoveSplit();
    SetStatusText(state, QStringLiteral("Ready .."));
    remove.Enabled = grid->SplitCount() > 1;
}

}  // namespace zephrin
