#include "platform/ado/Provider.h"
#include "platform/ado/providers/AllProviders.h"
#include "runstate/Dialect.h"
#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

struct Shop {
    test::ScratchDatabase database{test::SmallShopScript()};
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), std::make_shared<test::ScriptedPrompts>()};

    ConnectionErrors Open(const QString& connectionString, int connectTimeout = 5, int commandTimeout = 5) {
        return OpenDatabaseConnection(state, connectionString, connectTimeout, commandTimeout,
                                      QStringLiteral("ann"), QStringLiteral("pw"));
    }
};

/// A database that opens and then can't be asked for its tables.
class MuteProvider : public ado::Provider {
 public:
    bool Accepts(const QString&) const override { return true; }
    std::unique_ptr<ado::Session> Open(const ado::OpenRequest&) const override {
        return std::make_unique<MuteSession>();
    }

 private:
    struct MuteSession : ado::Session {
        [[noreturn]] static void Refuse() {
            throw ado::Error(7, QStringLiteral("no"), QStringLiteral("mute"));
        }
        std::unique_ptr<ado::Cursor> Execute(const QString&, const ado::ExecuteOptions&) override {
            Refuse();
        }
        std::unique_ptr<ado::Cursor> Tables() override { Refuse(); }
        std::unique_ptr<ado::Cursor> Columns(const QString&) override { Refuse(); }
    };
};

}  // namespace

TEST(Dialect, IsReadFromTheWordsOfTheString) {
    struct Row {
        const char* ConnectionString;
        const char* Dialect;
    };
    const Row rows[] = {
        {"Driver={SQL Server};Server=x", "SQL Server"},
        {"Provider=SQLOLEDB;Data Source=x", "SQL Server"},
        {"provider=microsoft.jet.oledb.4.0;Data Source=x.mdb", "MS Access"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=x.xls;Extended Properties=Excel 8.0", "MS Access"},
        {"DSN=ms access database", "MS Access"},
        {"Driver={Microsoft Excel Driver (*.xls)};DBQ=x.xls", "MS Excel"},
        {"Driver={Microsoft Excel Driver (*.xls)};Description=sql server export", "SQL Server"},
        {"Provider=MSDAORA;Data Source=oracle", ""},
        {"", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DetectDialect(QString::fromLatin1(row.ConnectionString)), QString::fromLatin1(row.Dialect))
            << row.ConnectionString;
}

TEST(Dialect, OffersTheAggregatesOfItsDatabases) {
    EXPECT_EQ(GroupOperators(QStringLiteral("MS Access")).mid(6).join(u' '),
              QStringLiteral("STDEV VAR FIRST LAST"));
    EXPECT_EQ(GroupOperators(QStringLiteral("MS Excel")), GroupOperators(QStringLiteral("MS Access")));
    EXPECT_EQ(GroupOperators(QStringLiteral("SQL Server")).mid(7).join(u','),
              QStringLiteral("VAR,SUM DISTINCT,COUNT DISTINCT,AVG DISTINCT,MIN DISTINCT,MAX DISTINCT"));
    EXPECT_EQ(GroupOperators(QStringLiteral("Oracle")), GroupOperators(QStringLiteral("SQL Server")));
    EXPECT_TRUE(GroupOperators(QStringLiteral("sql server")).isEmpty());
}

TEST(OpenDatabaseConnection, StoresWhatItWasGivenAndReadsTheTables) {
    Shop run;
    const QString text = run.database.ConnectionString(QStringLiteral("MS Access"));
    const ConnectionErrors errors = run.Open(text, 7, 8);
    ASSERT_TRUE(errors.IsEmpty()) << qPrintable(errors.Description());
    EXPECT_EQ(run.state.gConnectionString, text);
    EXPECT_EQ(run.state.gDatabaseType, QStringLiteral("MS Access"));
    EXPECT_EQ(run.state.gDelimOpen + run.state.gDelimClose, QStringLiteral("[]"));
    EXPECT_EQ(run.state.gUserId + run.state.gPassword, QStringLiteral("annpw"));
    EXPECT_EQ(run.state.gConnectionTimeout * 10 + run.state.gCommandTimeout, 78);
    EXPECT_EQ(run.state.SharedConnection().CommandTimeout(), 8);
    EXPECT_GE(run.state.rsSchemaTables->RecordCount(), 5);
}

TEST(OpenDatabaseConnection, OpensAnewWhatIsOpen) {
    Shop run;
    test::ScratchDatabase other(QStringLiteral("CREATE TABLE Only (Id int);"));
    ASSERT_TRUE(run.Open(run.database.ConnectionString()).IsEmpty());
    const ConnectionErrors errors = run.Open(other.ConnectionString());
    ASSERT_TRUE(errors.IsEmpty()) << qPrintable(errors.Description());
    EXPECT_EQ(run.state.SharedConnection().ConnectionString(), other.ConnectionString());
    EXPECT_EQ(
        run.state.rsSchemaTables->ValueAt(0, run.state.rsSchemaTables->FieldIndex(u"TABLE_NAME")).toString(),
        QStringLiteral("Only"));
}

TEST(OpenDatabaseConnection, TellsFailuresAndKeepsWhatWasRead) {
    struct Row {
        const char* What;
        const char* ConnectionString;
        int CommandTimeout;
        bool ConnectedBefore;
        int Number;  ///< 0: any
        bool StaysOpen;
    };
    const Row rows[] = {
        {"unknown provider, first time", "Provider=MSDAORA", 5, false, -2147221491, false},
        {"empty string", "", 5, false, -2147221491, false},
        {"no such file", "Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/x.db", 5, true, 0, false},
        {"no provider takes it, the dialect of before goes on", "Provider=MSDAORA", 5, true, 3706, false},
        {"negative time-out", "Provider=SQLite;Dialect=SQL Server;Data Source=x.db", -1, true, 3001, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        Shop run;
        if (row.ConnectedBefore) {
            ASSERT_TRUE(run.Open(run.database.ConnectionString()).IsEmpty());
        }
        const ado::RecordsetPtr before = run.state.rsSchemaTables;
        const ConnectionErrors errors =
            run.Open(QString::fromLatin1(row.ConnectionString), 5, row.CommandTimeout);
        ASSERT_EQ(errors.Items.size(), 3);
        if (row.Number != 0) {
            EXPECT_EQ(errors.Number(), row.Number);
        }
        EXPECT_NE(errors.Number(), 0);
        EXPECT_FALSE(errors.Description().isEmpty());
        EXPECT_FALSE(errors.Source().isEmpty());
        EXPECT_EQ(run.state.gConnectionString, QString::fromLatin1(row.ConnectionString));
        EXPECT_EQ(run.state.rsSchemaTables, before);
        EXPECT_EQ(run.state.gDatabaseType, row.ConnectedBefore ? QStringLiteral("SQL Server") : QString());
        if (!row.StaysOpen) {
            EXPECT_EQ(run.state.SharedConnection().State(), ado::ObjectState::Closed);
        }
    }
    Shop run;
    const ConnectionErrors errors = run.Open(QStringLiteral("Provider=MSDAORA"));
    EXPECT_EQ(errors.Items,
              QStringList({QStringLiteral("Database Provider not supported"), QStringLiteral("-2147221491"),
                           QStringLiteral("Provider Property")}));
}

TEST(OpenDatabaseConnection, StaysOpenWhereOnlyTheTablesCannotBeRead) {
    ZPGGlobalDeclarations state({std::make_shared<MuteProvider>()}, std::make_shared<test::ScriptedPrompts>());
    state.rsSchemaTables = std::make_shared<ado::Recordset>();
    const ado::RecordsetPtr before = state.rsSchemaTables;
    const ConnectionErrors errors =
        OpenDatabaseConnection(state, QStringLiteral("Driver={SQL Server}"), 5, 5, {}, {});
    EXPECT_EQ(errors.Items, QStringList({QStringLiteral("no"), QStringLiteral("7"), QStringLiteral("mute")}));
    EXPECT_EQ(state.SharedConnection().State(), ado::ObjectState::Open);
    EXPECT_EQ(state.rsSchemaTables, before);
}

}  // namespace zephrin
