#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

namespace {

struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};

/// The first value of the first row, or -1 for a statement that fails.
int Ask(const char* sql) {
    sqlite3* opened = nullptr;
    sqlite3_open_v2(ZEPHRIN_SHOP_DB, &opened, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, Closer> handle(opened);
    int answer = -1;
    const auto first = [](void* target, int, char** values, char**) {
        *static_cast<int*>(target) = values[0] ? std::atoi(values[0]) : 0;
        return 1;
    };
    sqlite3_exec(opened, sql, first, &answer, nullptr);
    return answer;
}

// Demo and tests lean on what occurs in the shop: every kind of text, value and gap at least somewhere.
TEST(ShopDatabase, HoldsWhatItIsMadeFor) {
    struct Row {
        const char* What;
        const char* Sql;
        int AtLeast;
    };
    const Row table[] = {
        {"tables", "SELECT count(*) FROM sqlite_master WHERE type = 'table'", 12},
        {"views", "SELECT count(*) FROM sqlite_master WHERE type = 'view'", 3},
        {"orders", "SELECT count(*) FROM Orders", 3000},
        {"lines", "SELECT count(*) FROM [Order Details] WHERE [Unit Price] > 0", 8000},
        {"not yet shipped", "SELECT count(*) FROM [Open Orders]", 20},
        {"totals", "SELECT count(*) FROM [Order Totals] WHERE Total > 0 AND Lines > 1", 1000},
        {"products on sale", "SELECT count(*) FROM [Product List]", 100},
        {"apostrophes", "SELECT count(*) FROM Customers WHERE [Customer Name] LIKE '%''%'", 2},
        {"quotes", "SELECT count(*) FROM Customers WHERE [Customer Name] LIKE '%\"%'", 1},
        {"Japanese", "SELECT count(*) FROM Customers WHERE [Customer Name] GLOB '*株式会社*'", 1},
        {"Arabic", "SELECT count(*) FROM Customers WHERE [Customer Name] GLOB '*النور*'", 1},
        {"line breaks", "SELECT count(*) FROM Customers WHERE Notes LIKE '%' || char(13, 10) || '%'", 5},
        {"Null money", "SELECT count(*) FROM Customers WHERE [Credit Limit] IS NULL", 10},
        {"false and true", "SELECT count(DISTINCT Paid) FROM Orders", 2},
        {"times of day", "SELECT count(*) FROM Orders WHERE length([Shipped Date]) = 19", 1000},
        {"midnights", "SELECT count(*) FROM Orders WHERE length([Order Date]) = 10", 3000},
        {"pictures", "SELECT count(*) FROM Employees WHERE length(Photo) > 800", 5},
        {"a chief", "SELECT count(*) FROM Employees WHERE ReportsTo IS NULL", 1},
    };
    for (const Row& row : table) EXPECT_GE(Ask(row.Sql), row.AtLeast) << row.What;
}

TEST(ShopDatabase, KeysLeadSomewhere) {
    EXPECT_GE(Ask("SELECT count(*) FROM pragma_foreign_key_list('Orders')"), 3);
    EXPECT_EQ(Ask("SELECT count(*) FROM pragma_foreign_key_check"), 0);
}

// Expected rows may stand in tests only because every build makes the same file.
TEST(ShopDatabase, IsTheSameEveryTime) {
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("again.db"));
    ASSERT_EQ(QProcess::execute(QStringLiteral(ZEPHRIN_SHOP_GENERATOR),
                                {QStringLiteral(ZEPHRIN_SHOP_SCHEMA), copy}),
              0);
    QFile first(QStringLiteral(ZEPHRIN_SHOP_DB));
    QFile second(copy);
    ASSERT_TRUE(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
    EXPECT_TRUE(first.readAll() == second.readAll());
}

}  // namespace
