#pragma once

#include "DemoWindow.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QString>

#include <functional>
#include <stdexcept>

class QDialog;
class QWidget;

namespace demo {

/// Clicks and types into the wizard's real controls, which it finds by their names, and takes pictures. What
/// it can't do as a user could is a Failure.
class Driver {
 public:
    struct Failure : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    /// Pictures go to `folder`; none are taken when it is empty.
    Driver(DemoWindow& window, QString folder);

 protected:
    void Connect();
    void ShowWizard();
    void ChooseTables(const QStringList& tables);
    /// Joins customers and orders, which are chosen.
    void JoinTables();
    void ChooseFields(const QStringList& fields);
    void AddCriterion(const QString& field, const QString& comparison, const QString& value);
    void OrderBy(const QString& field);
    void RunQuery();
    void CloseWizard();

    /// The control `name` of the wizard. It must be there, visible and enabled.
    template <typename Widget>
    Widget* Find(const QString& name) {
        return FindIn<Widget>(*wizard, name);
    }
    /// The same in a dialog.
    template <typename Widget>
    static Widget* FindIn(const QWidget& window, const QString& name);
    void Press(const QString& button);
    void Pick(const QString& list, const QString& item);
    void PickFromDropDown(const QString& box, const QString& item);
    void OpenTab(int index);
    void AnswerNextBox(QMessageBox::StandardButton button);
    /// Runs `act` in the dialog that the next click opens; `act` has to end it.
    void OnNextDialog(const QString& name, const std::function<void(QDialog&)>& act);
    void TakePicture(const QString& name, QWidget* of = nullptr);

    DemoWindow& window;
    QString folder;
    QWidget* wizard = nullptr;
    QString statement;
    zephrin::ado::RecordsetPtr rows;

 private:
    bool unloaded = false;
    int connectionError = -1;
    int queryError = -1;
    std::string trouble;
};

template <typename Widget>
Widget* Driver::FindIn(const QWidget& window, const QString& name) {
    auto* widget = window.findChild<Widget*>(name);
    if (!widget) throw Failure("there is no " + name.toStdString());
    if (!widget->isVisible()) throw Failure(name.toStdString() + " is not visible");
    if (!widget->isEnabled()) throw Failure(name.toStdString() + " is disabled");
    return widget;
}

}  // namespace demo
