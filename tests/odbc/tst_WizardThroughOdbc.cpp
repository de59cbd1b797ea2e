#include "PostgresServer.h"
#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "runstate/Dialect.h"
#include "wizard/FormTest.h"

#include <QCheckBox>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace zephrin {
namespace {

/// The wizard as its user sees it, on databases behind ODBC drivers.
class WizardThroughOdbc : public test::FormTest {
 protected:
    ConnectionErrors Open(const QString& connectionString) {
        return OpenDatabaseConnection(*state, connectionString, 20, 20, {}, {});
    }
    void Offer(const QStringList& tables) {
        for (const QString& table : tables) state->OfferedTables.Add(table, table);
    }
    void TypeStatement(const char* statement) {
        auto* box = Find<controls::ColouredText>("txtSQL");
        box->selectAll();
        QTest::keyClicks(box, QString::fromUtf8(statement));
    }
    QString Outcome() const { return Find<controls::ColouredText>("txtSQLErrors")->Text(); }
    ado::RecordsetPtr Rows() const { return Find<controls::DataGrid>("dgrQueryResults")->DataSource(); }
};

TEST_F(WizardThroughOdbc, JoinsRunsAndSaysWhatFailed) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("shop.db"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEPHRIN_SHOP_DB), path));
    const ConnectionErrors errors = Open(
        QStringLiteral("Driver=libsqlite3odbc.so;Database=%1;NoCreat=1;Description=SQL Server").arg(path));
    if (errors.Description().contains(QStringLiteral("Can't open lib")))
        GTEST_SKIP() << qPrintable(errors.Description());
    ASSERT_TRUE(errors.IsEmpty()) << qPrintable(errors.Description());
    EXPECT_EQ(state->gDatabaseType, QStringLiteral("SQL Server"));
    EXPECT_GT(state->rsSchemaTables->RecordCount(), 12);

    const QString orders = QStringLiteral("[Orders]");
    const QString details = QStringLiteral("[Order Details]");
    Offer({orders, details});
    Show();
    DoubleClick("lstZPQTableSelection", orders);
    DoubleClick("lstZPQTableSelection", details);
    ChooseTab(1);
    Choose("cmbJoinTables_0", orders);
    Choose("cmbJoinTables_1", details);
    Click("cmdlockTables");
    Click("cmdAddJoin");
    ChooseTab(2);
    DoubleClick("lstZPQFieldFrom", QStringLiteral("[Orders].[OrderID]"));
    DoubleClick("lstZPQFieldFrom", QStringLiteral("[Order Details].[Unit Price]"));
    ChooseTab(3);
    Click("chkDistinct");
    Click("cmdRunQuery");
    ASSERT_TRUE(Rows()) << qPrintable(Outcome());
    EXPECT_GT(Rows()->RecordCount(), 1000);
    EXPECT_EQ(Rows()->FieldAt(1).Type, ado::DataType::Currency);
    EXPECT_EQ(Outcome(),
              QStringLiteral("Query Successful ... \r\n%1 Records Returned").arg(Rows()->RecordCount()));

    ChooseTab(3);
    TypeStatement("SELECT [no such] FROM [Orders]");
    Click("cmdRunQuery");
    EXPECT_EQ(Outcome(), QStringLiteral("SQL Syntax Error :\r\n[SQLite]no such column: no such (1)"));
}

TEST_F(WizardThroughOdbc, TakesTheConnectionsWayWhenTheServerDies) {
    QString whyNot;
    test::PostgresServer* server = test::PostgresServer::Shared(whyNot);
    if (!server) GTEST_SKIP() << qPrintable(whyNot);
    ASSERT_TRUE(Open(server->ConnectionString()).IsEmpty());
    state->adoConnection->Execute(
        QStringLiteral("drop table if exists fruit; create table fruit (name text)"));
    Offer({QStringLiteral("[fruit]")});
    Show();
    ChooseOneTable(QStringLiteral("[fruit]"), {QStringLiteral("[fruit].[name]")});
    TypeStatement("select name from fruit");
    Click("cmdRunQuery");
    EXPECT_TRUE(Outcome().endsWith(QStringLiteral("0 Records Returned"))) << qPrintable(Outcome());

    server->Kill();
    ChooseTab(3);
    TypeStatement("select name from fruit");
    Click("cmdRunQuery");
    ASSERT_EQ(prompts->Boxes.size(), 1);
    EXPECT_TRUE(prompts->Boxes.front().Text.startsWith(
        QStringLiteral("Unable to make a connection to the database.")));
    ASSERT_TRUE(server->Start());
    ASSERT_TRUE(Open(server->ConnectionString()).IsEmpty()) << "the same connection object connects again";
    ChooseTab(3);
    TypeStatement("select name, 1 as one from fruit");
    Click("cmdRunQuery");
    EXPECT_TRUE(Outcome().startsWith(QStringLiteral("Query Successful"))) << qPrintable(Outcome());
}

}  // namespace
}  // namespace zephrin
