#pragma once

#include "wizard/WizardDialog.h"

#include <array>

class QRadioButton;

namespace zephrin {

/// Explains the types of a join and lets the user choose one. The choice goes to the text that it was opened
/// with:
/// "=", "=>", "<=" or "<>".
class frmTableJoinTypes : public WizardDialog {
    Q_OBJECT
 public:
    frmTableJoinTypes(ZPGGlobalDeclarations& run, QString& compareText, QWidget* over);

 private:
    QWidget* MakeOptions();
    QWidget* MakeFoot();
    void cmdOK_Click();

    QString& compare;
    QString chosen;
    std::array<QRadioButton*, 4> optJoinType{};
};

}  // namespace zephrin
