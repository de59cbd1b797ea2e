#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <zephrin/ado/Error.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zephrin {
namespace {

using ado::Connection;
using ado::DataType;
using ado::Error;
using ado::RecordsetPtr;
using ado::Schema;

/// A database file behind SQLite's ODBC driver, given by its file: nothing of this machine is set up for it.
class SqliteDriver : public testing::TestWithParam<const char*> {
 protected:
    void SetUp() override {
        connection.SetConnectionTimeout(20);
        connection.SetCommandTimeout(20);
        connection.SetConnectionString(
            QStringLiteral("Driver=libsqlite3odbc.so;Database=%1;Description=SQL Server;%2")
                .arg(folder.filePath(QStringLiteral("shop's db.db")), QString::fromUtf8(GetParam())));
        try {
            connection.Open();
        } catch (const Error& error) {
            GTEST_SKIP() << "SQLite's ODBC driver is not installed: " << error.what();
        }
    }
    RecordsetPtr Run(const char* sql) { return connection.Execute(QString::fromUtf8(sql)); }
    QString FailureOf(const char* sql) {
        try {
            Run(sql);
        } catch (const Error& error) {
            return QStringLiteral("%1 %2").arg(error.Number()).arg(error.Description());
        }
        return QStringLiteral("none");
    }

    QTemporaryDir folder;
    Connection connection{ado::providers::AllProviders()};
};

TEST_P(SqliteDriver, MapsDeclaredTypesAndKeepsWhatCellsHold) {
    const struct {
        const char* Declared;
        const char* Value;
        DataType Type;
        int Size;
        const char* Text;
    } rows[] = {
        {"int", "-7", DataType::Integer, 0, "-7"},
        {"bigint", "9223372036854775807", DataType::BigInt, 0, "9223372036854775807"},
        {"bit", "-1", DataType::Boolean, 0, "True"},
        {"boolean", "0", DataType::Boolean, 0, "False"},
        {"float", "2.5", DataType::Double, 0, "2.5"},
        {"money", "19.9900", DataType::Currency, 0, "19.99"},
        {"decimal(10,2)", "'-.50'", DataType::Numeric, 0, "-0.5"},
        {"varchar(5)", "'longer than five'", DataType::VarChar, 5, "longer than five"},
        {"nvarchar(5)", "'\u00e4\u4e2d'", DataType::VarWChar, 5, "\u00e4\u4e2d"},
        {"nvarchar(5)", "''", DataType::VarWChar, 5, ""},
        {"datetime", "'2020-02-29 03:04:05.678'", DataType::DBTimeStamp, 0, "2020-02-29 03:04:05.678"},
        {"datetime", "'sometime'", DataType::DBTimeStamp, 0, "sometime"},
        {"date", "'1899-12-30'", DataType::DBDate, 0, "1899-12-30"},
        {"time", "'23:59:59'", DataType::DBTime, 0, "23:59:59"},
        {"image", "x'00ff'", DataType::LongVarBinary, 255, "0x00FF"},
        {"varbinary(2)", "x'00010203'", DataType::VarBinary, 2, "0x00010203"},
        {"uniqueidentifier", "'6F9619FF-8B86-D011-B42D-00C04FC964FF'", DataType::Guid, 0,
         "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
    };
    for (const auto& row : rows) {
        Run("drop table if exists [a table]");
        connection.Execute(
            QStringLiteral("create table [a table] ([the column] %1)").arg(QString::fromUtf8(row.Declared)));
        connection.Execute(
            QStringLiteral("insert into [a table] values (%1), (null)").arg(QString::fromUtf8(row.Value)));
        const RecordsetPtr result = Run("select [the column] from [a table]");
        const std::string what = std::string(row.Declared) + " " + row.Value;
        EXPECT_EQ(result->FieldAt(0).Type, row.Type) << what;
        EXPECT_EQ(result->FieldAt(0).DefinedSize, row.Size) << what;
        EXPECT_EQ(result->TextAt(0, 0).toStdString(), row.Text) << what;
        EXPECT_FALSE(result->IsNullAt(0, 0)) << what;
        EXPECT_TRUE(result->IsNullAt(1, 0)) << what;
    }
}

TEST_P(SqliteDriver, RunsBracketsJoinsAndViews) {
    Run("create table [Order Details] ([Order ID] int, [Unit Price] money, [50%_x] varchar(9))");
    Run("create table [Orders] ([Order ID] int, [Customer's] nvarchar(20))");
    Run("create view [All Orders] as select * from [Orders]");
    Run("insert into [Orders] values (1, 'A'), (2, 'B'), (3, null)");
    Run("insert into [Order Details] values (1, 5, 'x'), (1, 6, 'y'), (2, 7, 'z')");
    const RecordsetPtr rows = Run(
        "SELECT [Orders].[Customer's], SUM([Order Details].[Unit Price]) AS [Sum of it], [Orders].[Order "
        "ID]+1 "
        "FROM ([Orders] LEFT OUTER JOIN [Order Details] ON [Orders].[Order ID] = [Order Details].[Order ID]) "
        "GROUP BY [Orders].[Order ID] ORDER BY [Orders].[Order ID]\r\n");
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->FieldAt(1).Name, QStringLiteral("Sum of it"));
    EXPECT_EQ(rows->FieldAt(2).Name, QStringLiteral("[Orders].[Order ID]+1"));
    EXPECT_EQ(rows->TextAt(0, 1).toDouble(), 11.0);
    EXPECT_TRUE(rows->IsNullAt(2, 0));

    const RecordsetPtr tables = connection.OpenSchema(Schema::Tables);
    QStringList names;
    for (qint64 row = 0; row < tables->RecordCount(); ++row)
        names << tables->TextAt(row, tables->FieldIndex(u"TABLE_NAME")) + u':' +
                     tables->TextAt(row, tables->FieldIndex(u"Table_Type"));
    names.sort();
    EXPECT_EQ(names.join(u'|').toStdString(), "All Orders:VIEW|Order Details:TABLE|Orders:TABLE");
    const RecordsetPtr columns = connection.OpenSchema(Schema::Columns, QStringLiteral("Order Details"));
    ASSERT_EQ(columns->RecordCount(), 3);
    EXPECT_EQ(columns->TextAt(2, columns->FieldIndex(u"COLUMN_NAME")), QStringLiteral("50%_x"));
    EXPECT_EQ(connection.OpenSchema(Schema::Columns, QStringLiteral("Order_Details"))->RecordCount(), 0);
}

TEST_P(SqliteDriver, BringsTenMegabytesInACell) {
    Run("create table t (a varchar(10), b blob, c int)");
    Run("insert into t values (replace(hex(zeroblob(5000000)), '00', '\u00e4b'), zeroblob(10000000), 7)");
    const RecordsetPtr rows = Run("select * from t");
    const QString text = rows->ValueAt(0, 0).toString();
    EXPECT_EQ(text.size(), 10'000'000);
    EXPECT_EQ(text.right(2), QStringLiteral("\u00e4b"));
    EXPECT_EQ(rows->ValueAt(0, 1).toByteArray(), QByteArray(10'000'000, '\0'));
    EXPECT_EQ(rows->ValueAt(0, 2), QVariant(7));
}

TEST_P(SqliteDriver, HoldsRowLimitAndFailuresInTheMiddle) {
    const char* numbers =
        "with recursive c(x) as (select 1 union all select x + 1 from c limit 3000) select x, x || '' from c";
    ado::Recordset limited;
    limited.SetMaxRecords(1025);
    limited.Open(QString::fromUtf8(numbers), connection);
    EXPECT_EQ(limited.RecordCount(), 1025);
    EXPECT_TRUE(limited.Truncated());
    EXPECT_EQ(limited.ValueAt(1024, 1), QVariant(QStringLiteral("1025")));
    EXPECT_EQ(Run(numbers)->RecordCount(), 3000);
    EXPECT_EQ(FailureOf("selec").toStdString(), "1 [SQLite]near \"selec\": syntax error (1)");
    EXPECT_EQ(FailureOf("select * from [not there]").toStdString(), "1 [SQLite]no such table: not there (1)");
    EXPECT_NE(FailureOf(""), QStringLiteral("none"));
    EXPECT_NE(FailureOf("with recursive c(x) as (select 1 union all select x + 1 from c limit 3000) "
                        "select abs(case when x = 2500 then -9223372036854775808 else x end) from c"),
              QStringLiteral("none"));
}

TEST_P(SqliteDriver, CancelsAnEndlessStatementAndGoesOn) {
    connection.SetCommandTimeout(1);
    QElapsedTimer taken;
    taken.start();
    const QString failure =
        FailureOf("with recursive c(x) as (select 1 union all select x + 1 from c) select count(*) from c");
    EXPECT_TRUE(failure.startsWith(QString::number(ado::ErrorNumber::TimeoutExpired))) << qPrintable(failure);
    EXPECT_TRUE(failure.contains(QStringLiteral("interrupted"))) << qPrintable(failure);
    EXPECT_LT(taken.elapsed(), 30'000);
    EXPECT_EQ(Run("select 5")->TextAt(0, 0), QStringLiteral("5"));
}

INSTANTIATE_TEST_SUITE_P(Modes, SqliteDriver, testing::Values("", "StepAPI=1"),
                         [](const auto& mode) { return std::string(*mode.param ? "Step" : "Whole"); });

TEST(OdbcCursor, LetsACursorOutliveItsConnection) {
    QTemporaryDir folder;
    std::unique_ptr<ado::Cursor> rows;
    {
        Connection connection(ado::providers::AllProviders());
        try {
            connection.Open(QStringLiteral("Driver=libsqlite3odbc.so;Database=%1")
                                .arg(folder.filePath(QStringLiteral("a"))));
        } catch (const Error& error) {
            GTEST_SKIP() << error.what();
        }
        rows = connection.Stream(QStringLiteral("select 1 as a"));
        connection.Close();
    }
    EXPECT_EQ(rows->Fields().front().Name, QStringLiteral("a"));
}

}  // namespace
}  // namespace zephrin
