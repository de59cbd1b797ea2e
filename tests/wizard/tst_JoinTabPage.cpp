#include "platform/controls/DataGrid.h"
#include "wizard/FormTest.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace zephrin;

namespace {

const QString customers = QStringLiteral("[Customers]");
const QString orders = QStringLiteral("[Orders]");

class JoinTabPage : public test::FormTest {
 protected:
    void ChooseTables(const QStringList& tables) {
        Connect();
        Show();
        for (const QString& table : tables) DoubleClick("lstZPQTableSelection", table);
        ChooseTab(1);
    }
    void Lock(const QString& from, const QString& to) {
        Choose("cmbJoinTables_0", from);
        Choose("cmbJoinTables_1", to);
        Click("cmdlockTables");
    }
    QString Text(const char* combo) const { return Find<QComboBox>(combo)->currentText(); }
    QString Selected(const char* list) const {
        return Find<QListView>(list)->currentIndex().data().toString();
    }
};

TEST_F(JoinTabPage, JoinsTwoTablesAndRuns) {
    ChooseTables({customers, orders});
    EXPECT_EQ(Tabs(), QStringLiteral("11000"));
    EXPECT_FALSE(Enabled("cmbJoinTables_1"));
    Lock(customers, orders);
    EXPECT_EQ(Find("cmdlockTables")->property("Tag").toString(), QStringLiteral("1"));
    EXPECT_EQ(Find("cmdlockTables")->toolTip(), QStringLiteral("Unlock Tables"));
    EXPECT_FALSE(Enabled("cmbJoinTables_0"));
    // Columns of the same name are offered at once.
    EXPECT_EQ(Selected("lstJoinFields_0"), QStringLiteral("[Customers].[CustomerID]"));
    EXPECT_EQ(Selected("lstJoinFields_1"), QStringLiteral("[Orders].[CustomerID]"));
    Click("cmdAddJoin");
    EXPECT_EQ(Tabs(), QStringLiteral("11111"));
    EXPECT_EQ(Find<controls::DataGrid>("dgrJoins")->DataSource()->RecordCount(), 1);

    ChooseTab(2);
    DoubleClick("lstZPQFieldFrom", QStringLiteral("[Orders].[OrderID]"));
    ChooseTab(3);
    EXPECT_TRUE(Statement().contains(QStringLiteral("INNER JOIN [Orders] ON"))) << qPrintable(Statement());
    Click("cmdRunQuery");
    const auto& rows = Find<controls::DataGrid>("dgrQueryResults")->DataSource();
    ASSERT_TRUE(rows) << "the statement failed";
    EXPECT_GT(rows->RecordCount(), 1000);
}

TEST_F(JoinTabPage, TypingPicksNothing) {
    ChooseTables({customers, orders});
    Choose("cmbJoinTables_0", customers);
    Type("cmbJoinTables_0", QStringLiteral("x"));
    EXPECT_EQ(Text("cmbJoinTables_0"), QString());
    EXPECT_FALSE(Enabled("cmdlockTables"));
    Lock(customers, orders);
    Type("cmbJoinType", QStringLiteral("<"));
    EXPECT_EQ(Text("cmbJoinType"), QStringLiteral("="));
}

/// Two joined tables, and the list of comparisons of the one join.
class Comparison : public JoinTabPage {
 protected:
    void Join() {
        ChooseTables({customers, orders});
        Lock(customers, orders);
        Click("cmdAddJoin");
    }
    controls::DataGrid* Grid() const { return Find<controls::DataGrid>("dgrJoins"); }
    QListView* List() const { return Find<QListView>("lstJoinCompare"); }
    QString Compare() const { return Grid()->DataSource()->TextAt(0, 4); }
    void GoToCell() const {
        Grid()->SetCurrentCell(0, 4);
        Grid()->Pane(0)->setFocus();
    }
    void OpenByKey() const {
        GoToCell();
        QTest::keyClick(Grid()->Pane(0), Qt::Key_F4);
        ASSERT_TRUE(List()->isVisible() && List()->hasFocus());
    }
    void PressButton() const {
        QTableView* pane = Grid()->Pane(0);
        const QRect button = Grid()->ButtonRect(0, 4);
        ASSERT_FALSE(button.isEmpty()) << "no button";
        QTest::mouseClick(pane->viewport(), Qt::LeftButton, {},
                          pane->viewport()->mapFrom(Grid(), button.center()));
    }
    void ExpectClosed() const {
        EXPECT_TRUE(List()->isHidden());
        EXPECT_TRUE(Grid()->Pane(0)->hasFocus()) << "back on the cell";
        EXPECT_TRUE(form->isVisible());
    }
};

TEST_F(Comparison, IsChosenByKeys) {
    Join();
    const struct {
        QList<Qt::Key> Keys;
        const char* Outcome;
    } rows[] = {
        {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, ">"},
        {{Qt::Key_Down, Qt::Key_Escape}, ">"},
        {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space}, "<"},
        {{Qt::Key_Down, Qt::Key_F4}, "<"},
        {{Qt::Key_Return, Qt::Key_Escape}, "<"},
        {{Qt::Key_Down, Qt::Key_Enter}, "="},
    };
    for (const auto& row : rows) {
        OpenByKey();
        for (const Qt::Key key : row.Keys) {
            ASSERT_TRUE(List()->isVisible()) << "a key too early chose";
            QTest::keyClick(List(), key);
        }
        ExpectClosed();
        EXPECT_EQ(Compare(), QLatin1StringView(row.Outcome));
    }
}

TEST_F(Comparison, IsChosenByTheMouseAndGivenUpByASecondPress) {
    Join();
    GoToCell();
    PressButton();
    ASSERT_TRUE(List()->isVisible());
    EXPECT_TRUE(List()->geometry().isValid());
    PressButton();
    ExpectClosed();
    PressButton();
    Pick("lstJoinCompare", QStringLiteral("<>"));
    ExpectClosed();
    EXPECT_EQ(Compare(), QStringLiteral("<>"));
    EXPECT_TRUE(State().JoinText.contains(QStringLiteral("<>"))) << qPrintable(State().JoinText);
    // A press that ends beside the button leaves the list open while the keyboard is in the grid.
    PressButton();
    Grid()->Pane(0)->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(Grid()->Pane(0), Qt::Key_Escape);
    ExpectClosed();
    PressButton();
    Find("cmdResetJoins")->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(List()->isHidden());
    PressButton();
    ChooseTab(0);
    ChooseTab(1);
    EXPECT_TRUE(List()->isHidden());
}

TEST_F(Comparison, IsThereWheneverThereAreJoins) {
    Join();
    ChooseTab(0);
    ChooseTab(1);
    GoToCell();
    PressButton();
    Pick("lstJoinCompare", QStringLiteral(">="));
    EXPECT_EQ(Compare(), QStringLiteral(">="));
    QTemporaryDir folder;
    prompts->Paths = {folder.filePath(QStringLiteral("Mine.zpb")),
                      folder.filePath(QStringLiteral("Mine.zpb"))};
    Click("cmdSaveQuery");
    Click("cmdOpenQuery");
    ChooseTab(1);
    GoToCell();
    PressButton();
    Pick("lstJoinCompare", QStringLiteral("<"));
    EXPECT_EQ(Compare(), QStringLiteral("<"));
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdResetJoins");
    EXPECT_TRUE(Grid()->ButtonRect(0, 4).isEmpty());
}

TEST_F(Comparison, MayBeOpenWhenTheFormGoes) {
    Join();
    OpenByKey();
    form.reset();
}

TEST_F(JoinTabPage, BoxesShowWhatWasPickedAtOnce) {
    ChooseTables({customers, orders});
    Choose("cmbJoinTables_0", customers);
    EXPECT_EQ(Text("cmbJoinTables_0"), customers);
    Choose("cmbJoinTables_1", orders);
    EXPECT_EQ(Text("cmbJoinTables_0"), customers);
    EXPECT_EQ(Text("cmbJoinTables_1"), orders);
    EXPECT_EQ(Find<QComboBox>("cmbJoinTables_0")->itemText(0), customers) << "as tools read it";
    EXPECT_EQ(QApplication::focusWidget(), Find("cmdlockTables"));
}

TEST_F(JoinTabPage, KeysGoThroughTheItemsAndStayWhereTheyAre) {
    ChooseTables({customers, orders, QStringLiteral("[Order Details]")});
    auto* from = Find<QComboBox>("cmbJoinTables_0");
    from->setFocus();
    for (int row = 0; row < 2; ++row) {
        QTest::keyClick(from, Qt::Key_Down);
        EXPECT_EQ(from->currentText(), from->itemText(row));
        EXPECT_TRUE(from->hasFocus());
    }
    QTest::keyClick(from, Qt::Key_Return);
    auto* to = Find<QComboBox>("cmbJoinTables_1");
    EXPECT_TRUE(to->hasFocus());
    QTest::keyClick(to, Qt::Key_Down);
    QTest::keyClick(to, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), Find("cmdlockTables"));
    Click("cmdlockTables");
    auto* fields = Find<QListView>("lstJoinFields_1");
    fields->setFocus();
    for (int step = 0; step < 3; ++step) QTest::keyClick(fields, Qt::Key_Down);
    EXPECT_TRUE(fields->hasFocus());
    EXPECT_EQ(Text("cmbJoinType"), QStringLiteral("="));
    EXPECT_EQ(fields->currentIndex().row(), 3);
    QTest::keyClick(fields, Qt::Key_Return);
    EXPECT_NE(QApplication::focusWidget(), fields);
}

TEST_F(JoinTabPage, TheWheelChangesNoBoxThatTheUserIsNotIn) {
    ChooseTables({customers, orders});
    Lock(customers, orders);
    auto* type = Find<QComboBox>("cmbJoinType");
    EXPECT_EQ(type->focusPolicy(), Qt::StrongFocus) << "the wheel takes it no focus either";
    const auto roll = [type] {
        const QPointF place = type->rect().center();
        QWheelEvent notch(place, type->mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(type, &notch);
    };
    roll();
    EXPECT_EQ(type->currentText(), QStringLiteral("="));
    type->setFocus();
    roll();
    roll();
    EXPECT_EQ(type->currentText(), QStringLiteral(">=")) << "who is in it may roll";
}

TEST_F(JoinTabPage, RemovesJoinsOnlyWhenAsked) {
    ChooseTables({customers, orders});
    Lock(customers, orders);
    Click("cmdAddJoin");
    prompts->Answers = {BoxAnswer::No, BoxAnswer::Yes};
    Click("cmdResetJoins");
    EXPECT_EQ(Tabs(), QStringLiteral("11111"));
    Click("cmdResetJoins");
    EXPECT_EQ(Tabs(), QStringLiteral("11000"));
    EXPECT_FALSE(Find("cmbJoinType")->toolTip().contains(customers)) << "no pair, no word of it";
    EXPECT_EQ(prompts->Boxes.first().Style, BoxStyle::YesNo + BoxStyle::Question + BoxStyle::DefaultSecond);
    EXPECT_FALSE(Enabled("cmdResetJoins"));
}

}  // namespace
