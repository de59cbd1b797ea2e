#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QDialog>

class QRadioButton;

namespace zephrin {

/// Asks whether the older Excel route makes a data sheet or a pivot table. Escape and the window's own button
/// are Cancel.
class frmExcelDataChoice : public QDialog {
    Q_OBJECT
 public:
    frmExcelDataChoice(const ZPGGlobalDeclarations& state, QWidget* parent);

    /// "Data" or "Pivot".
    const QString& DataChoice() const { return dataChoice; }

 private:
    QString dataChoice = QStringLiteral("Data");
};

}  // namespace zephrin
