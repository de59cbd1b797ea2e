#pragma once

#include "Driver.h"

namespace demo {

/// Takes the pictures of the guides in docs/: one query after another, shown where it is worth a picture. On
/// the same machine the same build gives the same pixels.
class Guide : public Driver {
 public:
    using Driver::Driver;

    /// The exit code of the program.
    int Run();

 private:
    void ShowStepByStep();
    void ShowGroups();
    void ShowDialogs();
    void ShowWaiting();
    /// Presses `button`, and takes a picture of the dialog that opens once `act` has filled it. The dialog is
    /// cancelled.
    void TakeDialog(const QString& button, const QString& dialog, const QString& picture,
                    const std::function<void(QDialog&)>& act);
};

}  // namespace demo
