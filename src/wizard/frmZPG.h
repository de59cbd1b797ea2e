#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QWidget>

#include <memory>

namespace zephrin {

/// The wizard's form: widgets that show the state and report what the user does. It decides nothing: a
/// handler reads its controls, calls an operation of flow/ or output/, and shows the state.
///
/// At most one is open in an application, whichever control showed it; it is found among the top-level
/// widgets by its object name "frmZPG" while it is loaded.
class frmZPG : public QWidget {
    Q_OBJECT
 public:
    explicit frmZPG(std::shared_ptr<ZPGGlobalDeclarations> state, const QIcon& icon, const QFont& labelFont);
    ~frmZPG() override;

    /// The form that is loaded in this application, or null.
    static frmZPG* OpenForm();

    /// Form load. False when the load ended in an unload: the form was never seen and may be deleted.
    bool Load();
    /// Makes the form a window of `owner`'s: it stays in front of it, and takes input while that is modal.
    void BelongTo(const QWidget* owner);
    /// Brings the form back from the icon and in front of all others. Does nothing on one that was not shown
    /// yet.
    void BringForward();
    /// Shows the form until it is closed, modal for the application.
    void ShowModal();
    /// Closes without a question, as the end of the control does. Unloaded is not emitted.
    void UnloadSilently();
    /// Deletes the form as soon as none of its handlers is on the stack: at once, or by the event loop when
    /// the outermost one has returned. What the owner of a form calls, whether it was unloaded or not.
    void DeleteWhenIdle();

 Q_SIGNALS:
    /// The form was unloaded, whichever way: everything is released and it counts as an open form no longer.
    /// Emitted exactly once a showing, with the text of a failed query load or "". The receiver deletes the
    /// form with DeleteWhenIdle.
    void Unloaded(const QString& loadError);

 protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace zephrin
