#pragma once

#include "flow/CalcFields.h"
#include "wizard/WizardDialog.h"

#include <functional>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace zephrin {

class ListBox;

/// Writes one expression: lists insert what the dialect knows at the caret, the rest is typed. Everything
/// that the dialog decides is an operation of flow/; it shows what came of it.
class frmCalcFields : public WizardDialog {
    Q_OBJECT
 public:
    frmCalcFields(ZPGGlobalDeclarations& run, QWidget* over);

    void accept() override;
    void reject() override;

 private:
    QGroupBox* MakeFunctions();
    QGroupBox* MakeList(const QString& frame, int tag, ListBox*& list, const QString& name);
    QWidget* MakeExpression();
    QWidget* MakeFoot();
    void ConnectLists();
    void ConnectTexts();
    void Change(const std::function<void()>& operation);
    void Insert(const QString& text);
    void Show();

    CalcFieldForm form;
    ListState functions, operators, fields;
    bool showing = false;

    QRadioButton* optFunctionType[4]{};
    ListBox* lstFunctions = nullptr;
    ListBox* lstOperators = nullptr;
    ListBox* lstCalcFields = nullptr;
    QPlainTextEdit* txtCriteria = nullptr;
    QLineEdit* txtAlias = nullptr;
    QCheckBox* chkShowField = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdClear = nullptr;
};

}  // namespace zephrin
