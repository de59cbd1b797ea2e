#pragma once

#include "wizard/WizardPage.h"

namespace zephrin {

class MovePanel;

/// "Select Tables": the tables on offer, and the chosen ones in the order of their choice.
class TableTabPage : public WizardPage {
    Q_OBJECT
 public:
    explicit TableTabPage(WizardHost& wizardHost);
    void ShowState(FormState& form) override;

 private:
    MovePanel* fraTables;
};

}  // namespace zephrin
