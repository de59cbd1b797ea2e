// A question of a person who knows no SQL, entered act by act in each dialect: customers in three cities with
// more than five orders over 100 since last year, with their totals, biggest first.

#include "BuildRun.h"
#include "flow/JoinTab.h"

namespace zephrin {

namespace {

/// Nine customers in four cities. Customer n has n + 2 orders this year, of 90, 101, 102 ..., and three old
/// ones of 1000.
const char* const script =
    "CREATE TABLE Buyers (Id int, Name nvarchar(40), City nvarchar(30));"
    "CREATE TABLE Sales (Id int, BuyerId int, Amount money, Day datetime);"
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 9)"
    " INSERT INTO Buyers SELECT i, 'Buyer ' || i, CASE i % 4 WHEN 0 THEN 'Rome' WHEN 1 THEN 'Oslo' WHEN 2 "
    "THEN 'Bonn'"
    " ELSE 'Graz' END FROM n;"
    "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 10)"
    " INSERT INTO Sales SELECT Buyers.Id * 100 + i, Buyers.Id, CASE i WHEN 0 THEN 90 ELSE 100 + i END, "
    "'2025-03-01'"
    " FROM Buyers, n WHERE i < Buyers.Id + 2;"
    "INSERT INTO Sales SELECT Id * 100 + 50 + City, Id, 1000, '2019-05-05' FROM"
    " (SELECT Id, 1 AS City FROM Buyers UNION ALL SELECT Id, 2 FROM Buyers UNION ALL SELECT Id, 3 FROM "
    "Buyers)";

struct SalesRun : test::WizardRun {
    explicit SalesRun(const QString& dialect) : WizardRun(dialect) {
        database.Run(QString::fromLatin1(script));
        state.OfferedTables = Collection({QStringLiteral("[Buyers]"), QStringLiteral("[Sales]")});
        Load();
    }
    void Entry(const char* field, const char* listed, const char* value = "") {
        Pick(Form().lstSelectedFields.Items, QString::fromLatin1(field));
        Pick(Form().lstOperands.Items, QString::fromLatin1(listed));
        if (*value) ValueTyped(state, 0, QString::fromLatin1(value));
        EXPECT_TRUE(Form().cmdCommit.Enabled) << field;
        prompts->Answers = {BoxAnswer::Yes};
        CommitEntry(state);
    }
    void JoinTables() {
        ChooseTable(QStringLiteral("[Buyers]"));
        ChooseTable(QStringLiteral("[Sales]"));
        SelectTab(state, WizardTab::Joins);
        Pick(Form().cmbJoinTables[0].Items, QStringLiteral("[Buyers]"));
        Pick(Form().cmbJoinTables[1].Items, QStringLiteral("[Sales]"));
        LockClicked(state);
        Pick(Form().lstJoinFields[0].Items, QStringLiteral("[Buyers].[Id]"));
        Pick(Form().lstJoinFields[1].Items, QStringLiteral("[Sales].[BuyerId]"));
        zephrin::AddJoin(state);
        SelectTab(state, WizardTab::Build);
    }
};

}  // namespace

TEST(WholeQuery, BigBuyersOfThreeCities) {
    for (const char* dialect : {"SQL Server", "MS Access"}) {
        SalesRun run(QString::fromLatin1(dialect));
        run.JoinTables();
        run.Entry("[Amount]", ">", "100");
        run.Entry("[Day]", ">=", "1/1/2024");
        for (const char* city : {"Oslo", "Bonn", "Graz"}) run.Entry("[City]", "=", city);
        ChooseQueryMode(run.state, 1);
        run.Entry("[Name]", "GROUP BY");
        run.Entry("[Amount]", "SUM");
        run.Entry("[BuyerId]", "COUNT");
        ChooseQueryMode(run.state, 0);
        run.Entry("COUNTOFBuyerId", ">", "5");
        ChooseQueryMode(run.state, 2);
        run.Entry("SUMOFAmount", "DESC");

        const ado::RecordsetPtr rows = run.state.SharedConnection().Execute(run.Form().txtSQL.Text);
        QStringList found;
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            found << rows->TextAt(row, 0) + u' ' + rows->TextAt(row, 2) + u' ' +
                         rows->TextAt(row, 1).section(u'.', 0, 0);
        // Buyer n has n + 1 such orders; 4 and 8 live in Rome.
        EXPECT_EQ(found.join(QStringLiteral(", ")).toStdString(),
                  "Buyer 9 10 1055, Buyer 7 8 836, Buyer 6 7 728, Buyer 5 6 621")
            << dialect << '\n'
            << qPrintable(run.Form().txtSQL.Text);
    }
}

}  // namespace zephrin
