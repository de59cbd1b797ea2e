#pragma once

#include "wizard/FormTest.h"

#include <functional>

namespace zephrin::test {

/// Goes through every window that the wizard can show, in the middle of a query: the form on each of its
/// tabs, and each dialog.
class EveryWindow : public FormTest {
 protected:
    /// What is shown: "frmZPG tab 3", "frmCalcFields".
    using Visit = std::function<void(QWidget& window, const QString& what)>;

    /// Connects, and shows the form with everything that an option can show. Settings that count from the
    /// load on (language, direction, font) are made before.
    void Begin();
    /// Shows one window after the other; `visit` may resize them.
    void ForEach(const Visit& visit);
    /// Closes the form, for a test that begins anew.
    void End();

 private:
    void VisitTabs(const Visit& visit);
    void VisitDialog(QDialog* dialog, const QString& what, const Visit& visit);
    void VisitDataLink(const Visit& visit);
};

}  // namespace zephrin::test
