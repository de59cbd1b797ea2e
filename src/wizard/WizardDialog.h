#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QDialog>
#include <QPointer>

#include <functional>

namespace zephrin {

/// A dialog over the wizard: modal for the application, named by its class. Its window button and Escape are
/// its Cancel (QDialog::rejected). A dialog reads and writes the state while it is open; when the wizard
/// goes, it goes.
class WizardDialog : public QDialog {
    Q_OBJECT
 public:
    WizardDialog(ZPGGlobalDeclarations& run, const QString& name, QWidget* over);

    /// Shows the dialog and waits until it is closed; deletes it. False when the showing of the wizard is
    /// over by then: the caller must not touch the form any more.
    static bool Run(WizardDialog* dialog);

 protected:
    ZPGGlobalDeclarations& State() const { return state; }
    /// Runs what a handler calls, see RunGuarded. False where it failed or the dialog is gone by now.
    bool Act(const std::function<void()>& operation);
    /// Gives the controls their captions by Tag (ids up to 231) and their accessible names by their labels.
    /// Call it at the end of the constructor.
    void FinishControls();

 private:
    ZPGGlobalDeclarations& state;
};

/// Names each control that has none by the label whose buddy it is.
void NameByLabels(QWidget* form);

}  // namespace zephrin
