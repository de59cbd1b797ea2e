#pragma once

#include "wizard/WizardDialog.h"

class QGridLayout;
class QPushButton;

namespace zephrin {

namespace controls {
class ColouredText;
}

/// A keypad for the text of one criteria cell. The text comes from and goes to CurrentCellText;
/// CriteriaChanged tells whether it is another one. Enter is OK; Shift+Enter begins a new line.
class frmCriteriaBuilder : public WizardDialog {
    Q_OBJECT
 public:
    /// `cell` is what the cell holds: CurrentCellText, or another text where that one was refused before.
    frmCriteriaBuilder(ZPGGlobalDeclarations& run, const QString& cell, QWidget* over);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QWidget* MakeKeys();
    QWidget* MakeFoot();
    QPushButton* MakeKey(const QString& name, const QString& caption, const QString& inserted);
    void Insert(const QString& key);
    void cmdCriteriaOK_Click();

    controls::ColouredText* txtCriteria;
    QString cellText;
};

}  // namespace zephrin
