#pragma once

#include "wizard/WizardDialog.h"

namespace zephrin {

/// Asks whether the older Excel route makes a data sheet or a pivot table. Escape and the window's own button
/// are Cancel.
class frmExcelDataChoice : public WizardDialog {
    Q_OBJECT
 public:
    /// OK writes "Data" or "Pivot" into `answer`; Cancel leaves it as it is.
    frmExcelDataChoice(ZPGGlobalDeclarations& run, QString& answer, QWidget* over);

    void accept() override;

 private:
    QString& answer;
    QString DataChoice = QStringLiteral("Data");
};

}  // namespace zephrin
