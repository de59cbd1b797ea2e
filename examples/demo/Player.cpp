#include "Player.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace demo {

namespace {

constexpr int shownRows = 8;

}  // namespace

Player::Player(DemoWindow& demoWindow, QString picturesFolder)
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

int Player::Run() {
    try {
        Connect();
        PlayOneTable();
        // The connection outlives the wizard: the second showing needs none of its own.
        PlayJoin();
        TakePicture(QStringLiteral("0-host"), &window);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "The demo could not go on: %s\n%s", failure.what(),
                     qPrintable(window.Log()->Text()));
        return 1;
    }
    QTextStream out(stdout);
    out << "Events:\n" << window.Log()->Text();
    if (!folder.isEmpty()) out << "\nPictures of the wizard: " << QDir(folder).path() << "/*.png\n";
    return 0;
}

void Player::PlayOneTable() {
    ShowWizard();
    ChooseTables({QStringLiteral("[Orders]")});
    ChooseFields({QStringLiteral("[Orders].[OrderID]"), QStringLiteral("[Orders].[Order Date]"),
                  QStringLiteral("[Orders].[Freight]"), QStringLiteral("[Orders].[Paid]"),
                  QStringLiteral("[Orders].[Comment]")});
    LimitRows();
    RunQuery();
    SortRows();
    TakePicture(QStringLiteral("6-sorted"));
    CloseWizard();
    ReportQuery();
}

void Player::PlayJoin() {
    ShowWizard();
    ChooseTables({QStringLiteral("[Customers]"), QStringLiteral("[Orders]")});
    TakePicture(QStringLiteral("1-select-tables"));
    JoinTables();
    TakePicture(QStringLiteral("2-build-joins"));
    ChooseFields({QStringLiteral("[Customers].[Customer Name]"), QStringLiteral("[Customers].[City]"),
                  QStringLiteral("[Orders].[Order Date]"), QStringLiteral("[Orders].[Freight]")});
    TakePicture(QStringLiteral("3-select-fields"));
    OpenTab(3);
    AddCriterion(QStringLiteral("[Freight]"), QStringLiteral(">="), QStringLiteral("25"));
    AddCriterion(QStringLiteral("[Customer Name]"), QStringLiteral("contains"), QStringLiteral("o"));
    OrderBy(QStringLiteral("[Customer Name]"));
    TakePicture(QStringLiteral("4-build-query"));
    RunQuery();
    TakePicture(QStringLiteral("5-query-results"));
    CloseWizard();
    ReportQuery();
}

void Player::Connect() {
    const auto* button = window.findChild<QAbstractButton*>(QStringLiteral("makeConnection"));
    QTest::mouseClick(const_cast<QAbstractButton*>(button), Qt::LeftButton);
    if (connectionError != 0) throw Failure("the sample database does not connect");
}

void Player::ShowWizard() {
    unloaded = false;
    auto* button = window.findChild<QAbstractButton*>(QStringLiteral("showZephrin"));
    QTest::mouseClick(button, Qt::LeftButton);
    wizard = nullptr;
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets)
        if (widget->objectName() == QLatin1StringView("frmZPG") && widget->isVisible()) wizard = widget;
    if (!wizard) throw Failure("the wizard does not open");
    WaitFor("the wizard on the screen", [this] { return QTest::qWaitForWindowExposed(wizard); });
}

void Player::ChooseTables(const QStringList& tables) {
    for (const QString& table : tables) {
        Pick(QStringLiteral("lstZPQTableSelection"), table);
        Press(QStringLiteral("cmdZPQTableRight"));
    }
}

void Player::JoinTables() {
    OpenTab(1);
    PickFromDropDown(QStringLiteral("cmbJoinTables_0"), QStringLiteral("[Customers]"));
    PickFromDropDown(QStringLiteral("cmbJoinTables_1"), QStringLiteral("[Orders]"));
    // The lock reads the fields of both and offers the pair that has one name.
    Press(QStringLiteral("cmdlockTables"));
    Press(QStringLiteral("cmdAddJoin"));
}

void Player::ChooseFields(const QStringList& fields) {
    OpenTab(2);
    for (const QString& field : fields) {
        Pick(QStringLiteral("lstZPQFieldFrom"), field);
        Press(QStringLiteral("cmdZPQFieldRight"));
    }
}

void Player::LimitRows() {
    OpenTab(3);
    Press(QStringLiteral("chkDistinct"));
    auto* top = Find<QLineEdit>(QStringLiteral("txtTopX"));
    QTest::mouseClick(top, Qt::LeftButton);
    QTest::keyClicks(top, QStringLiteral("250"));
}

void Player::AddCriterion(const QString& field, const QString& comparison, const QString& value) {
    Press(QStringLiteral("optQuery_0"));
    Pick(QStringLiteral("lstSelectedFields"), field);
    Pick(QStringLiteral("lstOperands"), comparison);
    QTest::keyClicks(Find<QComboBox>(QStringLiteral("cmbAvailableValues1")), value);
    Press(QStringLiteral("cmdCommit"));
}

void Player::OrderBy(const QString& field) {
    Press(QStringLiteral("optQuery_2"));
    Pick(QStringLiteral("lstSelectedFields"), field);
    Pick(QStringLiteral("lstOperands"), QStringLiteral("ASC"));
    Press(QStringLiteral("cmdCommit"));
}

void Player::RunQuery() {
    queryError = -1;
    Press(QStringLiteral("cmdRunQuery"));
    if (queryError != 0) throw Failure("the query does not run");
}

void Player::SortRows() {
    auto* grid = Find<QWidget>(QStringLiteral("dgrQueryResults"))->findChild<QTableView*>();
    auto* head = grid->horizontalHeader();
    const QPoint middle(head->sectionViewportPosition(2) + head->sectionSize(2) / 2, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, middle);
    Press(QStringLiteral("cmdDesc"));
}

void Player::CloseWizard() {
    AnswerNextBox(QMessageBox::No);
    Press(QStringLiteral("cmdExit"));
    WaitFor("ZPBUnloaded", [this] { return unloaded; });
    wizard = nullptr;
}

void Player::ReportQuery() {
    QTextStream out(stdout);
    out << "Statement:\n" << statement.trimmed() << "\n\n";
    out << "The first of " << rows->RecordCount() << " rows:\n" << RowsAsText(rows, shownRows) << "\n\n";
}

template <typename Widget>
Widget* Player::Find(const QString& name) {
    auto* widget = wizard->findChild<Widget*>(name);
    if (!widget) throw Failure("there is no " + name.toStdString());
    if (!widget->isVisible()) throw Failure(name.toStdString() + " is not visible");
    if (!widget->isEnabled()) throw Failure(name.toStdString() + " is disabled");
    return widget;
}

void Player::Press(const QString& name) {
    auto* button = Find<QAbstractButton>(name);
    // A check box takes a click on its mark, not anywhere in its width.
    const QPoint where = button->isCheckable() ? QPoint(8, button->height() / 2) : button->rect().center();
    QTest::mouseClick(button, Qt::LeftButton, {}, where);
}

void Player::Pick(const QString& list, const QString& item) {
    auto* view = Find<QAbstractItemView>(list);
    const QModelIndexList found =
        view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, item, 1, Qt::MatchExactly);
    if (found.isEmpty()) throw Failure(list.toStdString() + " has no " + item.toStdString());
    view->scrollTo(found.first());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(found.first()).center());
}

void Player::PickFromDropDown(const QString& name, const QString& item) {
    auto* box = Find<QComboBox>(name);
    const int wanted = box->findText(item);
    if (wanted < 0) throw Failure(name.toStdString() + " has no " + item.toStdString());
    box->setFocus();
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(wanted, box->modelColumn()));
    QTest::keyClick(box->view(), Qt::Key_Return);
}

void Player::OpenTab(int index) {
    auto* tabs = Find<QTabWidget>(QStringLiteral("TabZPG"));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    if (tabs->currentIndex() != index) throw Failure("tab " + std::to_string(index) + " does not open");
}

void Player::AnswerNextBox(QMessageBox::StandardButton button) {
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

void Player::TakePicture(const QString& name, QWidget* of) {
    if (folder.isEmpty()) return;
    QWidget* shown = of ? of : wizard;
    QApplication::processEvents();
    const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
    if (!QDir().mkpath(folder) || !shown->grab().save(path))
        throw Failure("cannot write " + path.toStdString());
}

template <typename Condition>
void Player::WaitFor(const char* what, Condition condition) {
    if (!QTest::qWaitFor(condition, 10'000)) throw Failure(std::string("waited in vain for ") + what);
}

}  // namespace demo
