// Fetching a million rows through ODBC drivers, as ratios to a bare loop over the driver's own block fetch,
// and to Qt's query class on the same driver.

#include "bench/Measure.h"
#include "bench/ResultData.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"
#include "tests/odbc/PostgresServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <array>
#include <cstdint>
#include <memory>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <thread>
#include <vector>

namespace zephrin::bench {
namespace {

constexpr int Rows = 1'000'000;
constexpr int Runs = 3;
constexpr std::size_t BlockRows = 1000;
constexpr std::size_t LongestText = 64;
constexpr const char* Statement = "SELECT * FROM Sales";

/// What the bare loop keeps of a column: eight bytes a cell, and the texts as the driver gave them.
struct FlatColumn {
    std::vector<std::uint8_t> Nulls;
    std::vector<std::uint64_t> Values;
    std::u16string Texts;
};

/// A column of one block.
struct Block {
    SQLSMALLINT CType = SQL_C_WCHAR;
    std::array<SQLLEN, BlockRows> Lengths{};
    std::array<std::uint64_t, BlockRows> Numbers{};
    std::array<char16_t, BlockRows * LongestText> Texts{};

    void Bind(SQLHSTMT statement, SQLUSMALLINT number) {
        const bool text = CType == SQL_C_WCHAR;
        SQLBindCol(statement, number, CType, text ? static_cast<SQLPOINTER>(Texts.data()) : Numbers.data(),
                   text ? LongestText * sizeof(char16_t) : sizeof(std::uint64_t), Lengths.data());
    }
    void Keep(FlatColumn& column, std::size_t rows) const {
        for (std::size_t row = 0; row < rows; ++row) {
            const SQLLEN length = Lengths[row];
            column.Nulls.push_back(length == SQL_NULL_DATA);
            if (CType != SQL_C_WCHAR) {
                column.Values.push_back(Numbers[row]);
                continue;
            }
            column.Values.push_back(column.Texts.size());
            if (length > 0)
                column.Texts.append(Texts.data() + row * LongestText, std::size_t(length) / sizeof(char16_t));
        }
    }
};

std::vector<FlatColumn> BareLoop(const QString& connectionString) {
    SQLHENV environment = nullptr;
    SQLHDBC connection = nullptr;
    SQLHSTMT statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
    QByteArray text = connectionString.toUtf8();
    SQLDriverConnect(connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS, nullptr, 0,
                     nullptr, SQL_DRIVER_NOPROMPT);
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    QByteArray sql(Statement);
    SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(sql.data()), SQL_NTS);
    SQLULEN fetched = 0;
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(BlockRows), 0);
    SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    const auto blocks = std::make_unique<std::array<Block, ResultColumns>>();
    for (std::size_t i = 0; i < ResultColumns; ++i) {
        (*blocks)[i].CType = i < 2 ? SQL_C_SBIGINT : i == 2 ? SQL_C_DOUBLE : SQL_C_WCHAR;
        (*blocks)[i].Bind(statement, SQLUSMALLINT(i + 1));
    }
    std::vector<FlatColumn> columns(ResultColumns);
    while (SQL_SUCCEEDED(SQLFetch(statement)))
        for (std::size_t i = 0; i < ResultColumns; ++i) (*blocks)[i].Keep(columns[i], fetched);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(connection);
    SQLFreeHandle(SQL_HANDLE_DBC, connection);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return columns;
}

qint64 Recordset(const QString& connectionString) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.Open(connectionString);
    return connection.Execute(QString::fromLatin1(Statement))->RecordCount();
}

/// Forward only and each value taken once: the least that a program on Qt's own classes would do.
qint64 QtQuery(const QString& connectionString) {
    qint64 rows = 0;
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), QStringLiteral("bench"));
        database.setDatabaseName(connectionString);
        if (!database.open()) return 0;
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.exec(QString::fromLatin1(Statement));
        for (; query.next(); ++rows)
            for (int i = 0; i < ResultColumns; ++i) [[maybe_unused]] const QVariant value = query.value(i);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("bench"));
    return rows;
}

void Measure(const char* what, const QString& connectionString) {
    std::vector<double> bare, ours, qt;
    std::size_t bareRows = 0;
    qint64 ourRows = 0, qtRows = 0;
    // In turns, so that a busy moment of the machine falls on all.
    for (int run = 0; run < Runs; ++run) {
        bare.push_back(Seconds([&] { bareRows = BareLoop(connectionString).front().Values.size(); }));
        ours.push_back(Seconds([&] { ourRows = Recordset(connectionString); }));
        qt.push_back(Seconds([&] { qtRows = QtQuery(connectionString); }));
    }
    const double base = Median(bare);
    std::printf("%s: %zu, %lld and %lld rows by %d columns (ratio to the bare loop)\n", what, bareRows,
                ourRows, qtRows, ResultColumns);
    PrintRow("bare loop, blocks of 1000, into flat arrays", base, base);
    PrintRow("recordset", Median(ours), base, "wanted: at most 1.30");
    PrintRow("QSqlQuery on QODBC, forward only", Median(qt), base);
    std::printf("\n");
}

void MakeSalesOn(const QString& connectionString) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.Open(connectionString);
    connection.Execute(
        QStringLiteral(
            "create table Sales as select i as ID, (i % 1009)::int as Quantity, "
            "(i * 104729::bigint % 100000)::float8 / 100 as Price, "
            "('Customer ' || i % 999983)::varchar(40) as Customer, "
            "(array['Berlin', 'M\u00e9xico D.F.', 'London', 'Lule\u00e5'])[1 + i % 4]::varchar(30) as City, "
            "('AB-' || i % 1000)::varchar(10) as Code, "
            "('Street ' || i % 100000 || ', No. ' || i % 200)::varchar(60) as Street, "
            "to_char(date '1996-01-01' + i % 9000, 'YYYY-MM-DD')::varchar(10) as Sold "
            "from generate_series(1, %1) i")
            .arg(Rows));
}

/// Milliseconds that SQLCancel alone needs to end a sleeping statement.
double BareCancel(const QString& connectionString) {
    SQLHENV environment = SQL_NULL_HENV;
    SQLHDBC link = SQL_NULL_HDBC;
    SQLHSTMT statement = SQL_NULL_HSTMT;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &link);
    QByteArray text = connectionString.toUtf8();
    SQLDriverConnect(link, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS, nullptr, 0, nullptr,
                     SQL_DRIVER_NOPROMPT);
    SQLAllocHandle(SQL_HANDLE_STMT, link, &statement);
    QByteArray sleeping = "select pg_sleep(60)";
    std::thread runner(
        [&] { SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(sleeping.data()), SQL_NTS); });
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const double seconds = Seconds([&] {
        SQLCancel(statement);
        runner.join();
    });
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(link);
    SQLFreeHandle(SQL_HANDLE_DBC, link);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return seconds;
}

/// The same through a connection whose watcher wants to stop.
double WatchedStop(const QString& connectionString) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.Open(connectionString);
    QElapsedTimer since;
    connection.SetWatcher([&](const ado::Progress& progress) {
        if (progress.Elapsed >= 500 && !since.isValid()) since.start();
        return progress.Elapsed < 500;
    });
    try {
        connection.Execute(QStringLiteral("select pg_sleep(60)"));
    } catch (const ado::Error&) {
        return double(since.nsecsElapsed()) / 1e9;
    }
    return 0;
}

void MeasureStop(const char* what, const QString& connectionString) {
    std::vector<double> bare, ours;
    for (int run = 0; run < Runs; ++run) {
        bare.push_back(BareCancel(connectionString));
        ours.push_back(WatchedStop(connectionString));
    }
    std::printf("%s: a sleeping statement is stopped\n", what);
    PrintRow("SQLCancel alone", Median(bare), Median(bare));
    PrintRow("a connection's watcher", Median(ours), Median(bare), "wanted: at most 0.5 s more");
    std::printf("\n");
}

void MeasureSqlite() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sales.db"));
    MakeSales(path, Rows);
    Measure("SQLite's driver", QStringLiteral("Driver=libsqlite3odbc.so;StepAPI=1;Database=%1").arg(path));
}

void MeasurePostgres() {
    QString whyNot;
    const test::PostgresServer* server = test::PostgresServer::Shared(whyNot);
    if (!server) {
        std::printf("PostgreSQL's driver: not measured, %s\n", qPrintable(whyNot));
        return;
    }
    MeasureStop("PostgreSQL's driver", server->ConnectionString());
    MakeSalesOn(server->ConnectionString());
    Measure("PostgreSQL's driver", server->ConnectionString());
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    // "sqlite" or "postgres" measures that one alone.
    const QString only = application.arguments().value(1);
    if (only != QLatin1StringView("postgres")) zephrin::bench::MeasureSqlite();
    if (only != QLatin1StringView("sqlite")) zephrin::bench::MeasurePostgres();
    return 0;
}
