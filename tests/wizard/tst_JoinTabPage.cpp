#include "platform/controls/DataGrid.h"
#include "wizard/FormTest.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>

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

TEST_F(JoinTabPage, ChangesAComparisonThroughTheCellsButton) {
    ChooseTables({customers, orders});
    Lock(customers, orders);
    Click("cmdAddJoin");
    auto* grid = Find<controls::DataGrid>("dgrJoins");
    grid->SetCurrentCell(0, 4);
    auto* list = Find<QListView>("lstJoinCompare");
    EXPECT_TRUE(list->isHidden());
    QTest::keyClick(grid->focusWidget() ? grid->focusWidget() : grid->focusProxy(), Qt::Key_F4);
    ASSERT_TRUE(list->isVisible());
    EXPECT_TRUE(list->geometry().isValid());
    Pick("lstJoinCompare", QStringLiteral("<>"));
    EXPECT_TRUE(list->isHidden());
    EXPECT_EQ(grid->DataSource()->TextAt(0, 4), QStringLiteral("<>"));
    EXPECT_TRUE(State().JoinText.contains(QStringLiteral("<>"))) << qPrintable(State().JoinText);
    QTest::keyClick(grid->focusWidget(), Qt::Key_F4);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_TRUE(list->isHidden());
    EXPECT_TRUE(form->isVisible()) << "Escape closed the list only";
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
    EXPECT_EQ(prompts->Boxes.first().Style, BoxStyle::YesNo + BoxStyle::Question + BoxStyle::DefaultSecond);
    EXPECT_FALSE(Enabled("cmdResetJoins"));
}

}  // namespace
