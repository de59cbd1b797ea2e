#pragma once

#include "flow/FieldOrder.h"
#include "wizard/WizardDialog.h"

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace zephrin {

class ListBox;

/// Orders, edits and deletes the rows of the working recordset that EditMode names.
class frmFieldOrder : public WizardDialog {
    Q_OBJECT
 public:
    frmFieldOrder(ZPGGlobalDeclarations& run, QWidget* over);

    void accept() override;

 private:
    QWidget* MakeLists();
    QWidget* MakeOptions();
    QWidget* MakeFoot();
    void ConnectControls();
    void EditCalc();
    void Delete();
    void Change(const std::function<void()>& operation);
    void Show();

    FieldOrderForm form;
    ListState fields, aliases;

    ListBox* lstFields = nullptr;
    ListBox* lstAlias = nullptr;
    QLineEdit* txtAlias = nullptr;
    QGroupBox* Frame1 = nullptr;
    QCheckBox* chkOutput = nullptr;
    QPushButton* cmdEdit = nullptr;
    QPushButton* cmdDelete = nullptr;
    QPushButton* cmdUpDown[2]{};
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
};

}  // namespace zephrin
