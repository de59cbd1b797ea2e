// What the embedded engine takes for statements of the dialect, as ratios to the same question put to SQLite
// in its own words on the same file: twelve statements such as the wizard writes, a text that is looked up by
// an index among ten million rows, and a full join of texts.

#include "bench/Measure.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdlib>
#include <sqlite3.h>

namespace zephrin::bench {
namespace {

constexpr int Runs = 5;
// Twenty look-ups take less time than another program gets when it comes between.
constexpr int LookUpRuns = 101;

void Run(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return;
    std::fprintf(stderr, "%s\n%s\n", sql, sqlite3_errmsg(database));
    std::exit(1);
}

sqlite3* Open(const QString& path) {
    sqlite3* database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    return database;
}

/// Half a million order lines with their orders and customers, as an index on every key would have them.
constexpr const char* ShopScript = R"sql(
PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN;
CREATE TABLE Customers (CustomerID int PRIMARY KEY, Company nvarchar(40), City nvarchar(30), Country nvarchar(20));
CREATE TABLE Orders (OrderID int PRIMARY KEY, CustomerID int, Sold datetime, Freight float, Ship nvarchar(20));
CREATE TABLE Lines (OrderID int, Product nvarchar(30), Price float, Quantity int);
WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 20000)
 INSERT INTO Customers SELECT n, 'Company ' || (n * 7919 % 20011), substr('Berlin    London    Paris     Lund      Graz      ', n % 5 * 10 + 1, 10),
 substr('Germany   UK        France    Sweden    Austria   ', n % 5 * 10 + 1, 10) FROM c;
WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 200000)
 INSERT INTO Orders SELECT n, n * 31 % 20000 + 1, date('1996-01-01', '+' || (n % 9000) || ' days'), n % 997 / 10.0, 'Speedy ' || (n % 40) FROM c;
WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 500000)
 INSERT INTO Lines SELECT n % 200000 + 1, 'Product ' || (n * 17 % 77), n % 1999 / 20.0, n % 50 FROM c;
CREATE INDEX LinesByOrder ON Lines (OrderID); CREATE INDEX OrdersByCustomer ON Orders (CustomerID); COMMIT; ANALYZE;
)sql";

struct Question {
    const char* What;
    const char* Dialect;
    const char* Plain;
};

// Each asks SQLite for the same rows: its own way of saying it, with the rules of the dialect that change
// what is found.
constexpr Question questions[] = {
    {"all columns of a table", "SELECT * FROM [Orders]", "SELECT * FROM Orders"},
    {"join of three tables, sums",
     "SELECT [Customers].[Country], SUM([Lines].[Quantity]) AS SUMOFQuantity FROM (([Customers] INNER JOIN "
     "[Orders] ON "
     "[Customers].[CustomerID] = [Orders].[CustomerID]) INNER JOIN [Lines] ON [Orders].[OrderID] = "
     "[Lines].[OrderID]) GROUP "
     "BY [Customers].[Country]",
     "SELECT Country, SUM(Quantity) FROM Customers JOIN Orders USING (CustomerID) JOIN Lines USING (OrderID) "
     "GROUP BY Country "
     "COLLATE NOCASE"},
    {"join with a condition on each table",
     "SELECT [Company], [Sold], [Product] FROM (([Customers] INNER JOIN [Orders] ON [Customers].[CustomerID] "
     "= "
     "[Orders].[CustomerID]) INNER JOIN [Lines] ON [Orders].[OrderID] = [Lines].[OrderID]) WHERE ([Country] "
     "= 'uk       ') AND "
     "([Sold] >= '2010-01-01') AND ([Quantity] > 40)",
     "SELECT Company, Sold, Product FROM Customers JOIN Orders USING (CustomerID) JOIN Lines USING (OrderID) "
     "WHERE "
     "rtrim(Country) = 'uk' COLLATE NOCASE AND Sold >= '2010-01-01' AND Quantity > 40"},
    {"groups by a text", "SELECT [Product], COUNT(*) AS N, AVG([Price]) AS A FROM [Lines] GROUP BY [Product]",
     "SELECT Product, COUNT(*), AVG(Price) FROM Lines GROUP BY Product COLLATE NOCASE"},
    {"groups with HAVING",
     "SELECT [Ship], SUM([Freight]) AS S FROM [Orders] GROUP BY [Ship] HAVING (SUM([Freight]) > 1000)",
     "SELECT Ship, SUM(Freight) FROM Orders GROUP BY Ship COLLATE NOCASE HAVING SUM(Freight) > 1000"},
    {"calculated field", "SELECT [OrderID], [Price] * [Quantity] * 0.9 AS Total FROM [Lines]",
     "SELECT OrderID, Price * Quantity * 0.9 FROM Lines"},
    {"texts put together", "SELECT [Company] + ', ' + [City] AS Address FROM [Customers]",
     "SELECT Company || ', ' || City FROM Customers"},
    {"a year out of a date", "SELECT YEAR([Sold]) AS Y, COUNT(*) AS N FROM [Orders] GROUP BY YEAR([Sold])",
     "SELECT CAST(strftime('%Y', Sold) AS int), COUNT(*) FROM Orders GROUP BY 1"},
    {"dates between two", "SELECT * FROM [Orders] WHERE ([Sold] BETWEEN '2001-01-01' AND '2008-12-31')",
     "SELECT * FROM Orders WHERE Sold BETWEEN '2001-01-01' AND '2008-12-31'"},
    {"LIKE", "SELECT * FROM [Lines] WHERE ([Product] LIKE '%t 7%')",
     "SELECT * FROM Lines WHERE Product LIKE '%t 7%'"},
    {"rows of OR",
     "SELECT * FROM [Orders] WHERE ([Ship] = 'speedy 7') OR ([Ship] = 'speedy 8' AND [Freight] > 50) OR "
     "([Freight] < 1) OR "
     "([OrderID] IN (1, 2, 3))",
     "SELECT * FROM Orders WHERE Ship = 'speedy 7' COLLATE NOCASE OR (Ship = 'speedy 8' COLLATE NOCASE AND "
     "Freight > 50) OR "
     "Freight < 1 OR OrderID IN (1, 2, 3)"},
    {"sorted by a text, the first 1000",
     "SELECT TOP 1000 [Company], [City] FROM [Customers] ORDER BY [City], [Company] DESC",
     "SELECT Company, City FROM Customers ORDER BY City COLLATE NOCASE, Company COLLATE NOCASE DESC LIMIT "
     "1000"},
};

/// Takes every cell of every row, as whoever asks does.
qint64 AskPlain(sqlite3* database, const char* sql, qint64& cells) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) != SQLITE_OK) Run(database, sql);
    const int columns = sqlite3_column_count(statement);
    qint64 rows = 0;
    std::vector<char> texts;
    std::vector<double> numbers;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++rows;
        for (int column = 0; column < columns; ++column, ++cells) {
            if (sqlite3_column_type(statement, column) == SQLITE_TEXT) {
                const auto* const text =
                    reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
                texts.insert(texts.end(), text, text + sqlite3_column_bytes(statement, column));
            } else {
                numbers.push_back(sqlite3_column_double(statement, column));
            }
        }
    }
    sqlite3_finalize(statement);
    return rows;
}

struct Pair {
    double Ours;
    double Plain;
};

/// In turns, so that a busy moment of the machine falls on both.
Pair Compare(ado::Connection& connection, sqlite3* database, const char* ours, const char* plain,
             int runs = Runs, int times = 1) {
    std::vector<double> own, raw;
    qint64 cells = 0;
    for (int run = 0; run < runs; ++run) {
        qint64 found = 0, wanted = 0;
        raw.push_back(Seconds([&] {
            for (int again = 0; again < times; ++again) wanted = AskPlain(database, plain, cells);
        }));
        own.push_back(Seconds([&] {
            for (int again = 0; again < times; ++again)
                found = connection.Execute(QString::fromUtf8(ours))->RecordCount();
        }));
        if (found != wanted) std::printf("  %lld rows instead of %lld: %s\n", found, wanted, ours);
    }
    return {Median(own) / times, Median(raw) / times};
}

void Connect(ado::Connection& connection, const QString& path) {
    connection.Open(QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=%1;Mode=Read").arg(path));
}

void MeasureQuestions(const QString& path) {
    sqlite3* const database = Open(path);
    Run(database, ShopScript);
    ado::Connection connection(ado::providers::AllProviders());
    Connect(connection, path);
    std::printf("Statements of the wizard (ratio to plain SQLite)\n");
    for (const Question& question : questions) {
        const Pair pair = Compare(connection, database, question.Dialect, question.Plain);
        PrintRow(question.What, pair.Ours, pair.Plain, "wanted: at most 2.00");
    }
    sqlite3_close(database);
}

void MeasureLookUp(const QString& path) {
    sqlite3* const database = Open(path);
    Run(database,
        "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN; CREATE TABLE Many (Id int, Name "
        "nvarchar(40));"
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 10000000) INSERT INTO Many "
        "SELECT n, "
        "substr('AnnaBobbCarlDoraEmilFridGretHansIdaaJohn', n % 10 * 4 + 1, 4) || ' ' || (n * 7919 % "
        "10000019) FROM c;"
        "CREATE INDEX ByName ON Many (Name); COMMIT");
    ado::Connection connection(ado::providers::AllProviders());
    Connect(connection, path);
    std::printf(
        "Looking a text up by an index among 10,000,000 rows (ratio to plain SQLite, which finds one "
        "spelling)\n");
    struct LookUp {
        const char* What;
        const char* Ours;
        const char* Plain;
    };
    for (const auto& [what, asked, stored] :
         {LookUp{"as it is stored", "[Name] = 'Anna 79190'", "Name = 'Anna 79190'"},
          LookUp{"spelled otherwise", "[Name] = 'aNNA 79190 '", "Name = 'Anna 79190'"},
          LookUp{"not there, but its like is", "[Name] = 'Hans 7919007'", "Name = 'Hans 7919007'"},
          LookUp{"nothing like it", "[Name] = 'Nobody'", "Name = 'Nobody'"},
          LookUp{"one or the other", "([Name] = 'Anna 79190') OR ([Name] = 'Nobody')",
                 "Name = 'Anna 79190' OR Name = 'Nobody'"}}) {
        const QByteArray ours = QByteArray("SELECT [Id] FROM [Many] WHERE (") + asked + ")";
        const QByteArray plain = QByteArray("SELECT Id FROM Many WHERE ") + stored;
        const Pair pair = Compare(connection, database, ours.constData(), plain.constData(), LookUpRuns, 20);
        std::printf("  %-26s %9.1f us against %9.1f us   %6.2f   wanted: at most 20\n", what, pair.Ours * 1e6,
                    pair.Plain * 1e6, pair.Ours / pair.Plain);
    }
    sqlite3_close(database);
}

void MeasureFullJoin(const QString& path) {
    sqlite3* const database = Open(path);
    Run(database,
        "CREATE TABLE A (Name nvarchar(20), X int); CREATE TABLE B (Name nvarchar(20), Y int);"
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 100000) INSERT INTO A "
        "SELECT 'Name ' || n, n "
        "FROM c; INSERT INTO B SELECT 'NAME ' || (X + 20000), X FROM A;");
    ado::Connection connection(ado::providers::AllProviders());
    Connect(connection, path);
    const auto seconds = [&](const char* how) {
        std::vector<double> runs;
        for (int run = 0; run < Runs; ++run)
            runs.push_back(Seconds([&] {
                connection.Execute(
                    QStringLiteral(
                        "SELECT [A].[Name], [B].[Y] FROM ([A] %1 JOIN [B] ON [A].[Name] = [B].[Name])")
                        .arg(QLatin1StringView(how)));
            }));
        return Median(runs);
    };
    const double inner = seconds("INNER");
    std::printf("Joining 100,000 by 100,000 rows on texts (ratio to the inner join)\n");
    PrintRow("inner join", inner, inner);
    PrintRow("full outer join", seconds("FULL OUTER"), inner, "wanted: at most 3.00");
    sqlite3_close(database);
}

int Main(const QStringList& parts) {
    const QTemporaryDir folder;
    const auto wants = [&](const char* part) {
        return parts.size() < 2 || parts.contains(QLatin1StringView(part));
    };
    if (wants("statements")) MeasureQuestions(folder.filePath(QStringLiteral("shop.db")));
    if (wants("join")) MeasureFullJoin(folder.filePath(QStringLiteral("join.db")));
    if (wants("lookup")) MeasureLookUp(folder.filePath(QStringLiteral("many.db")));
    return 0;
}

}  // namespace
}  // namespace zephrin::bench

/// bench_engine [statements] [join] [lookup]
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return zephrin::bench::Main(application.arguments());
}
