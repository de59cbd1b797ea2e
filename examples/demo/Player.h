#pragma once

#include "DemoWindow.h"

#include <QMessageBox>
#include <QString>

#include <stdexcept>

class QWidget;

namespace demo {

/// Plays a query by itself: it clicks and types into the wizard's real controls, which it finds by their
/// names, and takes pictures on the way. What it can't do as a user could is an error and ends it.
class Player {
 public:
    /// Pictures go to `folder`; none are taken when it is empty.
    Player(DemoWindow& window, QString folder);

    /// Plays to the end and prints statement, rows and events; the exit code of the program.
    int Run();

 private:
    struct Failure : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    void Connect();
    void PlayOneTable();
    void PlayJoin();

    void ShowWizard();
    void ChooseTables(const QStringList& tables);
    void JoinTables();
    void ChooseFields(const QStringList& fields);
    void LimitRows();
    void AddCriterion(const QString& field, const QString& comparison, const QString& value);
    void OrderBy(const QString& field);
    void RunQuery();
    void SortRows();
    void CloseWizard();
    void ReportQuery();

    /// The control `name` of the wizard. It must be there, visible and enabled.
    template <typename Widget>
    Widget* Find(const QString& name);
    void Press(const QString& button);
    void Pick(const QString& list, const QString& item);
    void PickFromDropDown(const QString& box, const QString& item);
    void OpenTab(int index);
    void AnswerNextBox(QMessageBox::StandardButton button);
    void TakePicture(const QString& name, QWidget* of = nullptr);
    /// Lets events pass until `condition` holds.
    template <typename Condition>
    void WaitFor(const char* what, Condition condition);

    DemoWindow& window;
    QString folder;
    QWidget* wizard = nullptr;
    bool unloaded = false;
    int connectionError = -1;
    int queryError = -1;
    QString statement;
    zephrin::ado::RecordsetPtr rows;
};

}  // namespace demo
