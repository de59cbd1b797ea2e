#include "runstate/FormState.h"

namespace zephrin {

FormState::FormState() {
    cmbJoinTables[1].Enabled = false;
    cmbJoinType.Enabled = false;
    lstJoinCompare.Visible = false;

    for (ControlState* control :
         {static_cast<ControlState*>(&lstOperands), static_cast<ControlState*>(&cmbAvailableValues1),
          static_cast<ControlState*>(&cmbAvailableValues2), &optAndOr.Options[0], &optAndOr.Options[1]})
        control->Enabled = false;

    cmdDeleteSplit.Enabled = false;
    for (ControlState* gridPart :
         {static_cast<ControlState*>(&dgrSQL), static_cast<ControlState*>(&cmdSplit),
          static_cast<ControlState*>(&cmdDeleteSplit), static_cast<ControlState*>(&cmdSQLView),
          static_cast<ControlState*>(&lblSQLLabel[0]), &fraTxt, &txtField, &txtOr, &txtValue})
        gridPart->Visible = false;
}

}  // namespace zephrin
