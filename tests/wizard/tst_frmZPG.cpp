#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "runstate/clsBridge.h"
#include "wizard/FormTest.h"
#include "wizard/frmZPG.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace zephrin;

namespace {

const QString customers = QStringLiteral("[Customers]");
const QString customerName = QStringLiteral("[Customers].[Customer Name]");
const QString city = QStringLiteral("[Customers].[City]");

using FrmZPG = test::FormTest;

TEST_F(FrmZPG, RunsAWholeQuery) {
    Connect();
    Show();
    ChooseOneTable(customers, {customerName, city});
    EXPECT_EQ(
        Statement(),
        QStringLiteral("SELECT [Customers].[Customer Name], [Customers].[City]\r\nFROM [Customers]\r\n"));
    Click("chkDistinct");
    QTest::keyClicks(Find<QLineEdit>("txtTopX"), QStringLiteral("5"));
    EXPECT_TRUE(Statement().contains(QStringLiteral("DISTINCT TOP 5"))) << qPrintable(Statement());

    QStringList ran;
    QObject::connect(&state->Bridge(), &clsBridge::QueryComplete, form.get(),
                     [&ran](int& number, QString&, QString& sql) { ran << QString::number(number) << sql; });
    Click("cmdRunQuery");
    EXPECT_EQ(ran, (QStringList{QStringLiteral("0"), Statement()}));
    EXPECT_EQ(CurrentTab(), 4);
    const auto& rows = Find<controls::DataGrid>("dgrQueryResults")->DataSource();
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->RecordCount(), 5);
    EXPECT_EQ(Find<controls::ColouredText>("txtSQLErrors")->Text(),
              QStringLiteral("Query Successful ... \r\n%1 Records Returned").arg(rows->RecordCount()));
    EXPECT_TRUE(Enabled("cmdAsc"));
}

TEST_F(FrmZPG, RunsWhatIsTyped) {
    Connect();
    Show();
    ChooseOneTable(customers, {city});
    auto* box = Find<controls::ColouredText>("txtSQL");
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("SELECT nonsense"));
    EXPECT_TRUE(Enabled("cmdRunQuery"));
    Click("cmdRunQuery");
    EXPECT_TRUE(Find<controls::ColouredText>("txtSQLErrors")
                    ->Text()
                    .startsWith(QStringLiteral("SQL Syntax Error :\r\n")));
    EXPECT_FALSE(Enabled("cmdAsc"));
    ChooseTab(3);
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    EXPECT_FALSE(Enabled("cmdRunQuery")) << "nothing stands there to run";
}

TEST_F(FrmZPG, OpensTabsByTheNumberOfTables) {
    Connect();
    Show();
    EXPECT_EQ(Tabs(), QStringLiteral("10000"));
    EXPECT_FALSE(Enabled("cmdZPQTableRight"));
    EXPECT_TRUE(Enabled("cmdZPQTableRightAll"));
    Pick("lstZPQTableSelection", customers);
    Click("cmdZPQTableRight");
    EXPECT_EQ(Tabs(), QStringLiteral("10111"));
    DoubleClick("lstZPQTableSelection", QStringLiteral("[Orders]"));
    EXPECT_EQ(Tabs(), QStringLiteral("11000"));
    EXPECT_EQ(Items("lstZPQTableTo"), (QStringList{customers, QStringLiteral("[Orders]")}));
    EXPECT_FALSE(Enabled("cmdZPQTableLeftAll")) << "a click in its list is what enables it";
    Pick("lstZPQTableTo", customers);
    Click("cmdZPQTableLeftAll");
    EXPECT_EQ(Tabs(), QStringLiteral("10000"));
}

TEST_F(FrmZPG, MovesOnAtOnceWhereJoinsAreForbidden) {
    Connect();
    state->Options.gAllowJoinCreation = false;
    Show();
    DoubleClick("lstZPQTableSelection", customers);
    EXPECT_EQ(CurrentTab(), 2);
    EXPECT_EQ(Tabs(), QStringLiteral("1-111"));
    ChooseTab(0);
    EXPECT_FALSE(Enabled("cmdZPQTableRight"));
    DoubleClick("lstZPQTableSelection", QStringLiteral("[Orders]"));
    ASSERT_EQ(prompts->Boxes.size(), 1);
    EXPECT_EQ(prompts->Boxes.first().Style, BoxStyle::Information);
    EXPECT_EQ(Items("lstZPQTableTo"), QStringList{customers});
}

TEST_F(FrmZPG, HidesWhatTheHostSwitchedOff) {
    Connect();
    state->Options.gAllowTableSelection = false;
    state->Options.gAllowJoinCreation = false;
    state->Options.gAllowShowResults = false;
    state->Options.gAllowExcelExport = false;
    state->Options.gAllowSQLReset = false;
    state->OfferedTables.Clear();
    state->OfferedTables.Add(customers, customers);
    Show();
    EXPECT_EQ(Tabs(), QStringLiteral("--11-"));
    EXPECT_EQ(CurrentTab(), 2);
    EXPECT_TRUE(Find("fraExcel")->isHidden());
    ChooseTab(3);
    EXPECT_FALSE(Enabled("cmdResetSQL"));
}

TEST_F(FrmZPG, KeysPassOverHiddenTabs) {
    Connect();
    state->Options.gAllowFieldSelection = false;
    Show();
    DoubleClick("lstZPQTableSelection", customers);
    EXPECT_EQ(Tabs(), QStringLiteral("10-11"));
    QTabBar* bar = Find<QTabWidget>("TabZPG")->tabBar();
    struct Row {
        Qt::Key Key;
        Qt::KeyboardModifiers Modifiers;
        int Tab;
    };
    const Row keys[] = {{Qt::Key_Tab, Qt::ControlModifier, 3},
                        {Qt::Key_Left, Qt::NoModifier, 0},
                        {Qt::Key_Right, Qt::NoModifier, 3},
                        {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, 0},
                        {Qt::Key_3, Qt::AltModifier, 0},
                        {Qt::Key_4, Qt::AltModifier, 3}};
    for (const Row& row : keys) {
        bar->setFocus();
        QTest::keyClick(bar, row.Key, row.Modifiers);
        EXPECT_EQ(CurrentTab(), row.Tab) << row.Key;
    }
}

TEST_F(FrmZPG, ALookUpThatFailsAsksWithoutTheHourglass) {
    Connect();
    Show();
    DoubleClick("lstZPQTableSelection", customers);
    state->SharedConnection().Close();
    state->SharedConnection().SetConnectionString(
        QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/none.db"));
    bool waits = true;
    prompts->Answers = {BoxAnswer::Ok};
    prompts->WhileOpen = [&waits](const auto&) { waits = QGuiApplication::overrideCursor() != nullptr; };
    ChooseTab(2);
    EXPECT_FALSE(waits);
    EXPECT_EQ(CurrentTab(), 0);
    EXPECT_EQ(Tabs(), QStringLiteral("10000"));
    EXPECT_EQ(Items("lstZPQTableTo"), QStringList());
}

TEST_F(FrmZPG, TwoKeysAreEnoughToMoveATable) {
    Connect();
    Show();
    ASSERT_EQ(QApplication::focusWidget(), Find("lstZPQTableSelection"));
    const QString first = Items("lstZPQTableSelection").first();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Items("lstZPQTableTo"), QStringList{first});
}

TEST_F(FrmZPG, AKeyTooManyOnAMoveButtonMovesNothing) {
    Connect();
    Show();
    DoubleClick("lstZPQTableSelection", customers);
    struct Row {
        const char* Button;
        const char* From;
    };
    for (const Row& row :
         {Row{"cmdZPQTableRight", "lstZPQTableSelection"}, Row{"cmdZPQTableLeft", "lstZPQTableTo"}}) {
        // Moving the last row leaves nothing selected, and the button goes off.
        const QStringList before = Items(row.From);
        Pick(row.From, before.last());
        Find(row.Button)->setFocus();
        for (int i = 0; i < 3; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_EQ(Items(row.From), before.mid(0, before.size() - 1)) << row.Button;
        EXPECT_EQ(QApplication::focusWidget(), Find(row.From)) << row.Button;
    }
}

TEST_F(FrmZPG, ShowsCaptionsAndToolTipsOfTheResources) {
    Connect();
    Show();
    struct Row {
        const char* Name;
        const char* Text;
    };
    const Row captions[] = {{"lblZPQTableSelection", "Available Tables"},
                            {"lblZPQTableTo", "Selected Tables"},
                            {"cmdRunQuery", "Execute"},
                            {"cmdAddJoin", "Add Join"},
                            {"cmdResAddSplit", "+ Split"}};
    for (const Row& row : captions) {
        const QWidget* widget = Find(row.Name);
        const QString text = widget->property("text").toString();
        EXPECT_EQ(text, QString::fromLatin1(row.Text)) << row.Name;
    }
    const Row toolTips[] = {{"cmdEditWhere", "Edit Where / Having values"},
                            {"cmdFieldValues", "Search for Field Values"},
                            {"cmdCommit", "Add Criteria"},
                            {"cmdCalcField", "Create a Calculated Field"}};
    for (const Row& row : toolTips)
        EXPECT_EQ(Find(row.Name)->toolTip(), QString::fromLatin1(row.Text)) << row.Name;
    EXPECT_EQ(Find<QLabel>("stbZPB_1")->text(), QStringLiteral("Ready .."));
    EXPECT_EQ(form->windowTitle(), state->Options.gRunTimeCaption);
}

TEST_F(FrmZPG, AsksBeforeItCloses) {
    Connect();
    Show();
    prompts->Answers = {BoxAnswer::Cancel, BoxAnswer::No};
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible()) << "Cancel keeps the wizard";
    EXPECT_EQ(unloads.size(), 0);
    Click("cmdExit");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(unloads, QStringList{QString()});
    EXPECT_EQ(frmZPG::OpenForm(), nullptr);
    EXPECT_EQ(prompts->Boxes.size(), 2);
    form->close();
    EXPECT_EQ(unloads.size(), 1) << "once a showing";
}

TEST_F(FrmZPG, ClosesWithoutAWordWhereNothingCanBeSaved) {
    Connect();
    state->Options.gAllowSaveDelete = false;
    Show();
    EXPECT_EQ(frmZPG::OpenForm(), form.get());
    form->close();
    EXPECT_EQ(prompts->Boxes.size(), 0);
    EXPECT_EQ(unloads.size(), 1);
}

TEST_F(FrmZPG, UnloadsSilentlyAndTellsNobody) {
    Connect();
    Show();
    form->UnloadSilently();
    EXPECT_EQ(prompts->Boxes.size(), 0);
    EXPECT_EQ(unloads.size(), 0);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state->UserPrompts, prompts) << "the host's prompts are back";
}

TEST_F(FrmZPG, StaysModalUntilItCloses) {
    Connect();
    state->Options.gAllowSaveDelete = false;
    form = std::make_unique<frmZPG>(state, QIcon(), QApplication::font());
    ASSERT_TRUE(form->Load());
    bool seen = false;
    QTimer::singleShot(0, form.get(), [&] {
        seen = form->isVisible() && form->windowModality() == Qt::ApplicationModal;
        form->close();
    });
    form->ShowModal();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FrmZPG, MayBeDeletedFromInsideItsOwnHandler) {
    Connect();
    Show();
    frmZPG* raw = form.release();
    const QPointer<frmZPG> alive(raw);
    // The answer is Cancel, but by then the form's owner has let go of it.
    prompts->Answers = {BoxAnswer::Cancel};
    prompts->WhileOpen = [raw](const auto&) {
        raw->UnloadSilently();
        raw->DeleteWhenIdle();
    };
    raw->close();
    EXPECT_TRUE(alive) << "its handler was still running";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(alive);
}

TEST_F(FrmZPG, MayBeDeletedByItsParentWhileABoxIsOpen) {
    Connect();
    Show();
    frmZPG* raw = form.release();
    prompts->Answers = {BoxAnswer::Yes};
    prompts->WhileOpen = [raw](const auto&) { delete raw; };
    QTimer::singleShot(0, raw, [raw] { raw->close(); });
    QCoreApplication::processEvents();
    EXPECT_EQ(frmZPG::OpenForm(), nullptr);
    EXPECT_EQ(unloads.size(), 0);
    EXPECT_EQ(state->UserPrompts, prompts);
}

TEST_F(FrmZPG, TellsOfAnErrorThatNobodyTookAndGoesOn) {
    Connect();
    Show();
    ChooseOneTable(customers, {city});
    state->Form->Pointer = MousePointer::Hourglass;
    const std::function<void()> throws[] = {[] { throw ado::Error(1, QStringLiteral("Told by the data.")); },
                                            [] { throw std::runtime_error("Told by the host."); }};
    for (const auto& raise : throws) {
        prompts->Boxes.clear();
        prompts->WhileOpen = [&](const auto&) {
            prompts->WhileOpen = nullptr;
            raise();
        };
        Click("cmdResetSQL");
        ASSERT_EQ(prompts->Boxes.size(), 2);
        EXPECT_TRUE(prompts->Boxes[1].Text.contains(QStringLiteral("Told by the")));
        EXPECT_EQ(state->Form->Pointer, MousePointer::Default);
    }
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdResetSQL");
    EXPECT_EQ(Statement(), QStringLiteral("SELECT [Customers].[City]\r\nFROM [Customers]\r\n"));
}

TEST_F(FrmZPG, ShowsAgainAfterClosing) {
    Connect();
    state->Options.gAllowSaveDelete = false;
    Show();
    ChooseOneTable(customers, {city});
    form->close();
    Show();
    EXPECT_EQ(Tabs(), QStringLiteral("10000"));
    EXPECT_TRUE(Items("lstZPQTableSelection").contains(customers));
    EXPECT_EQ(Items("lstZPQTableTo"), QStringList());
    EXPECT_EQ(Statement(), QString());
}

}  // namespace
