#pragma once

#include "wizard/WizardPage.h"

namespace zephrin {

class MovePanel;

/// "Select Fields": the fields of the chosen tables, and the ones that are put out.
class FieldTabPage : public WizardPage {
    Q_OBJECT
 public:
    explicit FieldTabPage(WizardHost& wizardHost);
    void ShowState(FormState& form) override;

 private:
    MovePanel* fraFields;
};

}  // namespace zephrin
