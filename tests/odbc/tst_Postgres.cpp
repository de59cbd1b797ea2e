#include "PostgresServer.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <zephrin/ado/Error.h>

#include <QElapsedTimer>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {
namespace {

using ado::Connection;
using ado::Error;
using ado::RecordsetPtr;

/// A connection to the shared server; tests are skipped where there is none.
class Postgres : public testing::Test {
 protected:
    void SetUp() override {
        QString whyNot;
        server = test::PostgresServer::Shared(whyNot);
        if (!server) GTEST_SKIP() << qPrintable(whyNot);
        connection.SetConnectionTimeout(20);
        connection.SetCommandTimeout(20);
        connection.SetConnectionString(server->ConnectionString());
        connection.Open();
    }
    RecordsetPtr Run(const char* sql) { return connection.Execute(QString::fromUtf8(sql)); }

    test::PostgresServer* server = nullptr;
    Connection connection{ado::providers::AllProviders()};
};

Error FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "nothing failed";
    return Error(0, {});
}

/// Texts joined the way a person reads a row.
QString RowOf(const ado::Recordset& rows, qint64 row) {
    QStringList cells;
    for (int i = 0; i < rows.FieldCount(); ++i)
        cells << (rows.IsNullAt(row, i) ? QStringLiteral("NULL") : rows.TextAt(row, i));
    return cells.join(u'|');
}

TEST_F(Postgres, BringsEveryTypeExactly) {
    using ado::DataType;
    const struct {
        const char* Expression;
        DataType Type;
        const char* Text;
        QMetaType::Type Value;
    } rows[] = {
        {"1::smallint", DataType::SmallInt, "1", QMetaType::Int},
        {"-2147483647::int", DataType::Integer, "-2147483647", QMetaType::Int},
        {"9223372036854775807::bigint", DataType::BigInt, "9223372036854775807", QMetaType::LongLong},
        {"1.5::real", DataType::Single, "1.5", QMetaType::Double},
        {"1e300::float8", DataType::Double, "1E+300", QMetaType::Double},
        {"-0.50::numeric(10,2)", DataType::Numeric, "-0.50", QMetaType::QString},
        {"12345678901234567890.123456789::numeric(30,9)", DataType::Numeric, "12345678901234567890.123456789",
         QMetaType::QString},
        {"'NaN'::numeric", DataType::Numeric, "NAN", QMetaType::Double},
        {"'\u00e4\U0001F600'::varchar(10)", DataType::VarWChar, "\u00e4\U0001F600", QMetaType::QString},
        {"'a'::char(3)", DataType::WChar, "a  ", QMetaType::QString},
        {"''::text", DataType::LongVarWChar, "", QMetaType::QString},
        {"'\\x00ff02'::bytea", DataType::LongVarBinary, "0x00FF02", QMetaType::QByteArray},
        {"date '0001-02-03'", DataType::DBDate, "0001-02-03", QMetaType::QDate},
        {"time '10:11:12.345678'", DataType::DBTime, "10:11:12.345678", QMetaType::QTime},
        {"timestamp '1969-12-31 23:59:59.123456'", DataType::DBTimeStamp, "1969-12-31 23:59:59.123456",
         QMetaType::QDateTime},
        {"'6f9619ff-8b86-d011-b42d-00c04fc964ff'::uuid", DataType::Guid,
         "6F9619FF-8B86-D011-B42D-00C04FC964FF", QMetaType::QString},
        {"interval '1 day'", DataType::VarWChar, "1 day", QMetaType::QString},
        {"array[1,2]", DataType::VarWChar, "{1,2}", QMetaType::QString},
        {"null::int", DataType::Integer, "", QMetaType::UnknownType},
    };
    for (const auto& row : rows) {
        const RecordsetPtr result =
            connection.Execute(QStringLiteral("select %1 as v").arg(QString::fromUtf8(row.Expression)));
        EXPECT_EQ(result->FieldAt(0).Type, row.Type) << row.Expression;
        EXPECT_EQ(result->TextAt(0, 0).toStdString(), row.Text) << row.Expression;
        EXPECT_EQ(result->ValueAt(0, 0).typeId(), row.Value) << row.Expression;
    }
}

TEST_F(Postgres, FetchesALongResultWithLongAndNullCells) {
    const RecordsetPtr rows =
        Run("select i, case when i % 7 = 0 then null else i::text end, case when i % 20000 = 0 then "
            "repeat('\u00e4', 300000) "
            "else 'x' || i end, repeat('y', i % 700), repeat('z', i % 3000)::varchar(3000) "
            "from generate_series(1, 50000) i order by 1");
    ASSERT_EQ(rows->RecordCount(), 50000);
    for (qint64 i : {1LL, 64LL, 65LL, 699LL, 1023LL, 20000LL, 40000LL, 49999LL, 50000LL}) {
        EXPECT_EQ(rows->ValueAt(i - 1, 0), QVariant(int(i)));
        EXPECT_EQ(rows->IsNullAt(i - 1, 1), i % 7 == 0);
        EXPECT_EQ(rows->ValueAt(i - 1, 2).toString(),
                  i % 20000 == 0 ? QString(300000, QChar(0xE4)) : QStringLiteral("x%1").arg(i));
        EXPECT_EQ(rows->ValueAt(i - 1, 3).toString(), QString(i % 700, u'y'));
        EXPECT_EQ(rows->ValueAt(i - 1, 4).toString(), QString(i % 3000, u'z'));
    }
}

TEST_F(Postgres, HoldsTheRowLimitAndSaysSo) {
    const struct {
        int Limit;
        int Rows;
        bool Truncated;
    } rows[] = {{0, 3000, false}, {1, 1, true}, {1500, 1500, true}, {3000, 3000, false}, {5000, 3000, false}};
    for (const auto& row : rows) {
        ado::Recordset result;
        result.SetMaxRecords(row.Limit);
        result.Open(QStringLiteral("select i, i::text from generate_series(1, 3000) i"), connection);
        EXPECT_EQ(result.RecordCount(), row.Rows) << row.Limit;
        EXPECT_EQ(result.Truncated(), row.Truncated) << row.Limit;
    }
}

TEST_F(Postgres, TakesTheFirstResultThatHasColumns) {
    const struct {
        const char* Statement;
        int Columns;
        qint64 Rows;
    } rows[] = {
        {"create temp table t(i int); insert into t values (1), (2); select * from t; select 1, 2, 3", 1, 2},
        {"update pg_temp.t set i = 9 where i = 7", 0, 0},
        {"select 1 as x where false", 1, 0},
        {"select", 0, 0},
        {"do $$ begin raise notice 'beware'; end $$", 0, 0},
        {"create function pg_temp.warned() returns int language plpgsql as $$ begin raise warning 'w'; "
         "return 7; end $$; "
         "select pg_temp.warned()",
         1, 1},
    };
    for (const auto& row : rows) {
        const RecordsetPtr result = Run(row.Statement);
        EXPECT_EQ(result->FieldCount(), row.Columns) << row.Statement;
        EXPECT_EQ(result->RecordCount(), row.Rows) << row.Statement;
    }
}

TEST_F(Postgres, DescribesTablesWithAwkwardNames) {
    Run("drop schema if exists odd cascade; create schema odd; "
        "create table odd.\"a_b\" (z int, \"Unit Price\" numeric(9,2) not null, m varchar(7)); "
        "create table odd.\"axb\" (wrong int); create table odd.\"50%'s \\ \"\"x\"\"\" (one int); "
        "create view odd.seen as select 1 as v; create materialized view odd.kept as select 1 as v");
    QStringList tables;
    const RecordsetPtr all = connection.OpenSchema(ado::Schema::Tables);
    QStringList systemViews;
    for (qint64 row = 0; row < all->RecordCount(); ++row) {
        if (all->TextAt(row, 1) == QStringLiteral("odd"))
            tables << all->TextAt(row, 2) + u':' + all->TextAt(row, 3);
        if (all->TextAt(row, 1) == QStringLiteral("information_schema")) systemViews << all->TextAt(row, 3);
    }
    tables.sort();
    EXPECT_EQ(tables.join(u'|').toStdString(),
              "50%'s \\ \"x\":TABLE|a_b:TABLE|axb:TABLE|kept:VIEW|seen:VIEW");
    for (const QString& type : std::as_const(systemViews))
        EXPECT_TRUE(type.startsWith(QStringLiteral("SYSTEM")));
    const struct {
        const char* Table;
        const char* Columns;
    } rows[] = {
        {"a_b", "a_b|z|1|3|NULL|True,a_b|Unit Price|2|131|NULL|False,a_b|m|3|202|7|True"},
        {"50%'s \\ \"x\"", "50%'s \\ \"x\"|one|1|3|NULL|True"},
        {"seen", "seen|v|1|3|NULL|True"},
        {"gone", ""},
        {"%", ""},
    };
    for (const auto& row : rows) {
        const RecordsetPtr columns =
            connection.OpenSchema(ado::Schema::Columns, QString::fromUtf8(row.Table));
        QStringList read;
        for (qint64 i = 0; i < columns->RecordCount(); ++i) read << RowOf(*columns, i);
        EXPECT_EQ(read.join(u',').toStdString(), row.Columns);
    }
}

TEST_F(Postgres, SaysWhyAStatementFailed) {
    for (const char* sql : {"selec 1", "select 1/0", "select * from nosuch",
                            "select 1 from generate_series(1,5000) i "
                            "where 1/(i-4000) < 2"}) {
        const Error error = FailureOf([&] { Run(sql); });
        EXPECT_TRUE(error.Description().startsWith(QStringLiteral("ERROR: "))) << error.what();
        EXPECT_EQ(error.Source(), QStringLiteral("PostgreSQL Unicode"));
        EXPECT_EQ(error.Number(), 1);
    }
    EXPECT_EQ(RowOf(*Run("select 1, 'still here'"), 0), QStringLiteral("1|still here"));
}

TEST_F(Postgres, StopsASleepingStatement) {
    connection.SetCommandTimeout(1);
    QElapsedTimer taken;
    taken.start();
    const Error error = FailureOf([&] { Run("select pg_sleep(60)"); });
    EXPECT_LT(taken.elapsed(), 30'000);
    EXPECT_TRUE(error.Description().contains(QStringLiteral("cancel"))) << error.what();
    EXPECT_EQ(RowOf(*Run("select 1"), 0), QStringLiteral("1")) << "the connection goes on";
}

TEST_F(Postgres, StopsForAWatcherAndLeavesNothingRunning) {
    Connection other(ado::providers::AllProviders());
    other.Open(server->ConnectionString());
    const auto running = [&] {
        return other
            .Execute(QStringLiteral("select count(*) from pg_stat_activity where state = 'active' "
                                    "and pid <> pg_backend_pid() and query like '%stopme%'"))
            ->TextAt(0, 0);
    };
    for (const char* sql :
         {"select pg_sleep(60) /* stopme */",
          "select count(*) from generate_series(1, 1000000) a, generate_series(1, 1000000) b /* stopme */",
          "create table stopme as select i from generate_series(1, 100000000) i"}) {
        QString seen;
        connection.SetWatcher([&](const ado::Progress& progress) {
            if (progress.Elapsed >= 300 && seen.isEmpty()) seen = running();
            return progress.Elapsed < 300;
        });
        const Error error = FailureOf([&] { Run(sql); });
        EXPECT_EQ(error.Number(), ado::ErrorNumber::OperationCancelled) << sql;
        EXPECT_EQ(error.Description(), QStringLiteral("Operation has been cancelled by the user.")) << sql;
        EXPECT_EQ(seen, QStringLiteral("1")) << sql;
        EXPECT_EQ(running(), QStringLiteral("0")) << sql;
        connection.SetWatcher({});
        EXPECT_EQ(RowOf(*Run("select 1"), 0), QStringLiteral("1")) << "usable at once";
    }
    EXPECT_EQ(FailureOf([&] { Run("select * from stopme"); }).Number(), 1) << "nothing stays behind";
}

TEST_F(Postgres, ReportsAStopOfAServerThatDiedMeanwhile) {
    connection.SetWatcher([&](const ado::Progress& progress) {
        if (progress.Elapsed >= 200) server->Kill();
        return progress.Elapsed < 200;
    });
    EXPECT_EQ(FailureOf([&] { Run("select pg_sleep(60)"); }).Number(), ado::ErrorNumber::OperationCancelled);
    connection.SetWatcher({});
    EXPECT_EQ(FailureOf([&] { Run("select 1"); }).Number(), ado::ErrorNumber::InvalidConnection);
    ASSERT_TRUE(server->Start());
}

TEST_F(Postgres, TellsWhyItCannotConnect) {
    const struct {
        QString String;
        int Number;
        const char* Words;
    } rows[] = {
        {server->Address() + QStringLiteral("UID=zephrin;PWD=geheim"), 101, "password authentication failed"},
        {server->Address(QStringLiteral("nodb")) + QStringLiteral("UID=zephrin;PWD={se;cret}}}"), 101,
         "database \"nodb\" does not exist"},
        {QStringLiteral("Driver={PostgreSQL Unicode};Server=nohost.invalid;Database=x"), 101,
         "nohost.invalid"},
        {QStringLiteral("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=%1;Database=x")
             .arg(test::FreePort()),
         101, "Connection refused"},
    };
    for (const auto& row : rows) {
        Connection other(ado::providers::AllProviders());
        other.SetConnectionTimeout(20);
        const Error error = FailureOf([&] { other.Open(row.String); });
        EXPECT_EQ(error.Number(), row.Number);
        EXPECT_TRUE(error.Description().contains(QString::fromUtf8(row.Words))) << error.what();
        EXPECT_FALSE(error.Description().contains(QStringLiteral("geheim"))) << error.what();
        EXPECT_EQ(error.Source(), QStringLiteral("PostgreSQL Unicode"));
    }
    // Given apart, the login comes before the string's.
    Connection other(ado::providers::AllProviders());
    other.Open(server->Address() + QStringLiteral("UID=nobody;PWD=x"), QStringLiteral("zephrin"),
               QStringLiteral("se;cret}"));
    EXPECT_EQ(other.State(), ado::ObjectState::Open);
}

TEST_F(Postgres, ComesBackAfterTheServerDied) {
    const auto half = connection.Stream(QStringLiteral("select i from generate_series(1, 10) i"));
    server->Kill();
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(FailureOf([&] { Run("select 1"); }).Number(), ado::ErrorNumber::InvalidConnection);
    EXPECT_EQ(connection.State(), ado::ObjectState::Open);
    connection.Close();
    EXPECT_EQ(FailureOf([&] { connection.Open(); }).Number(), 101)
        << "a failure to open keeps the driver's number";
    ASSERT_TRUE(server->Start());
    connection.Open();
    EXPECT_EQ(RowOf(*Run("select 'again'"), 0), QStringLiteral("again"));
}

}  // namespace
}  // namespace zephrin
