#include "support/ScratchDatabase.h"

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

namespace zephrin::test {

ScratchDatabase::ScratchDatabase(const QString& script) {
    Run(script);
}

QString ScratchDatabase::Path() const {
    return folder.filePath(QStringLiteral("scratch.db"));
}

QString ScratchDatabase::ConnectionString(const QString& dialect) const {
    return QStringLiteral("Provider=SQLite;Dialect=%1;Data Source=%2").arg(dialect, Path());
}

void ScratchDatabase::Run(const QString& script) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open(Path().toUtf8().constData(), &raw);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(raw, sqlite3_close);
    ASSERT_EQ(opened, SQLITE_OK);
    // A scratch file need not survive a crash of the machine.
    const QByteArray statements = "PRAGMA synchronous=OFF; BEGIN;" + script.toUtf8() + "; COMMIT;";
    ASSERT_EQ(sqlite3_exec(raw, statements.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(raw);
}

QString SmallShopScript() {
    return QStringLiteral(
        "CREATE TABLE Customers (Id int, Name nvarchar(40), City nvarchar(30));"
        "CREATE TABLE Orders (Id int, CustomerId int, Total money);"
        "CREATE TABLE [Order Details] (OrderId int, [Unit Price] money, Discount float);"
        "CREATE TABLE [Odd'Name] (Id int);"
        "CREATE VIEW BigOrders AS SELECT Id, Total FROM Orders WHERE Total > 100;"
        "INSERT INTO Customers VALUES (1, 'Ann', 'Oslo'), (2, 'Bob', NULL), (3, 'Çem', 'Ankara');"
        "INSERT INTO Orders VALUES (10, 1, 50), (11, 1, 250.5), (12, 2, 120), (13, 3, 75);"
        "INSERT INTO [Order Details] VALUES (10, 5, 0), (11, 25, 0.1);");
}

}  // namespace zephrin::test
