#include "Driver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <utility>

namespace demo {

Driver::Driver(DemoWindow& demoWindow, QString picturesFolder)
    : window(demoWindow), folder(std::move(picturesFolder)) {
    using zephrin::Zephrin;
    QObject::connect(window.Control(), &Zephrin::ConnectionComplete, window.Control(),
                     [this](int& number, QString&, QString&) { connectionError = number; });
    QObject::connect(window.Control(), &Zephrin::QueryExecuted, window.Control(),
                     [this](int& number, QString&, QString& sql, zephrin::ado::RecordsetPtr& results) {
                         queryError = number;
                         statement = sql;
                         rows = results;
                     });
    QObject::connect(window.Control(), &Zephrin::ZPBUnloaded, window.Control(),
                     [this](QString&) { unloaded = true; });
}

void Driver::Connect() {
    const auto* button = window.findChild<QAbstractButton*>(QStringLiteral("makeConnection"));
    QTest::mouseClick(const_cast<QAbstractButton*>(button), Qt::LeftButton);
    if (connectionError != 0) throw Failure("the sample database does not connect");
}

void Driver::ShowWizard() {
    unloaded = false;
    auto* button = window.findChild<QAbstractButton*>(QStringLiteral("showZephrin"));
    QTest::mouseClick(button, Qt::LeftButton);
    wizard = nullptr;
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets)
        if (widget->objectName() == QLatin1StringView("frmZPG") && widget->isVisible()) wizard = widget;
    if (!wizard) throw Failure("the wizard does not open");
    if (!QTest::qWaitForWindowExposed(wizard)) throw Failure("the wizard does not show");
}

void Driver::ChooseTables(const QStringList& tables) {
    for (const QString& table : tables) {
        Pick(QStringLiteral("lstZPQTableSelection"), table);
        Press(QStringLiteral("cmdZPQTableRight"));
    }
}

void Driver::JoinTables() {
    OpenTab(1);
    PickFromDropDown(QStringLiteral("cmbJoinTables_0"), QStringLiteral("[Customers]"));
    PickFromDropDown(QStringLiteral("cmbJoinTables_1"), QStringLiteral("[Orders]"));
    // The lock reads the fields of both and offers the pair that has one name.
    Press(QStringLiteral("cmdlockTables"));
    Press(QStringLiteral("cmdAddJoin"));
}

void Driver::ChooseFields(const QStringList& fields) {
    OpenTab(2);
    for (const QString& field : fields) {
        Pick(QStringLiteral("lstZPQFieldFrom"), field);
        Press(QStringLiteral("cmdZPQFieldRight"));
    }
}

void Driver::AddCriterion(const QString& field, const QString& comparison, const QString& value) {
    Press(QStringLiteral("optQuery_0"));
    Pick(QStringLiteral("lstSelectedFields"), field);
    Pick(QStringLiteral("lstOperands"), comparison);
    QTest::keyClicks(Find<QComboBox>(QStringLiteral("cmbAvailableValues1")), value);
    Press(QStringLiteral("cmdCommit"));
}

void Driver::OrderBy(const QString& field) {
    Press(QStringLiteral("optQuery_2"));
    Pick(QStringLiteral("lstSelectedFields"), field);
    Pick(QStringLiteral("lstOperands"), QStringLiteral("ASC"));
    Press(QStringLiteral("cmdCommit"));
}

void Driver::RunQuery() {
    queryError = -1;
    Press(QStringLiteral("cmdRunQuery"));
    if (queryError != 0) throw Failure("the query does not run");
}

void Driver::CloseWizard() {
    AnswerNextBox(QMessageBox::No);
    Press(QStringLiteral("cmdExit"));
    if (!QTest::qWaitFor([this] { return unloaded; }, 10'000)) throw Failure("the wizard does not close");
    wizard = nullptr;
}

void Driver::Press(const QString& name) {
    auto* button = Find<QAbstractButton>(name);
    // A check box takes a click on its mark, not anywhere in its width.
    const QPoint where = button->isCheckable() ? QPoint(8, button->height() / 2) : button->rect().center();
    QTest::mouseClick(button, Qt::LeftButton, {}, where);
    if (!trouble.empty()) throw Failure(std::exchange(trouble, {}));
}

void Driver::Pick(const QString& list, const QString& item) {
    auto* view = Find<QAbstractItemView>(list);
    const QModelIndexList found =
        view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, item, 1, Qt::MatchExactly);
    if (found.isEmpty()) throw Failure(list.toStdString() + " has no " + item.toStdString());
    view->scrollTo(found.first());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(found.first()).center());
}

void Driver::PickFromDropDown(const QString& name, const QString& item) {
    auto* box = Find<QComboBox>(name);
    const int wanted = box->findText(item);
    if (wanted < 0) throw Failure(name.toStdString() + " has no " + item.toStdString());
    box->setFocus();
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(wanted, box->modelColumn()));
    QTest::keyClick(box->view(), Qt::Key_Return);
}

void Driver::OpenTab(int index) {
    auto* tabs = Find<QTabWidget>(QStringLiteral("TabZPG"));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    if (tabs->currentIndex() != index) throw Failure("tab " + std::to_string(index) + " does not open");
}

void Driver::AnswerNextBox(QMessageBox::StandardButton button) {
    // The box runs an event loop of its own inside the click to come; this is answered from there.
    auto* timer = new QTimer(&window);
    timer->start(5);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->button(button)) return;
        timer->deleteLater();
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
}

void Driver::OnNextDialog(const QString& name, const std::function<void(QDialog&)>& act) {
    auto* timer = new QTimer(&window);
    timer->start(5);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, name, act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog->objectName() != name) return;
        timer->stop();
        timer->deleteLater();
        try {
            act(*dialog);
        } catch (const Failure& failure) {
            // Nothing may be thrown through the event loop of the dialog.
            trouble = failure.what();
            dialog->reject();
        }
    });
}

void Driver::TakePicture(const QString& name, QWidget* of) {
    if (folder.isEmpty()) return;
    QWidget* shown = of ? of : wizard;
    QApplication::processEvents();
    const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
    // The smallest file for the same pixels.
    if (!QDir().mkpath(folder) || !shown->grab().save(path, "PNG", 0))
        throw Failure("cannot write " + path.toStdString());
}

}  // namespace demo
