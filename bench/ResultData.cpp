#include "bench/ResultData.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sqlite3.h>

namespace zephrin::bench {

namespace {

void Check(int code, sqlite3* database) {
    if (code == SQLITE_OK || code == SQLITE_DONE) return;
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
    std::exit(1);
}

void BindText(sqlite3_stmt* statement, int parameter, const char* format, unsigned a, unsigned b = 0,
              unsigned c = 0) {
    std::array<char, 80> text;
    const int size = std::snprintf(text.data(), text.size(), format, a, b, c);
    sqlite3_bind_text(statement, parameter, text.data(), size, SQLITE_TRANSIENT);
}

void BindRow(sqlite3_stmt* statement, int row, std::mt19937& generator) {
    const auto random = [&] { return static_cast<unsigned>(generator()); };
    static constexpr std::array cities = {"Berlin",   "M\xC3\xA9xico D.F.", "London",       "Lule\xC3\xA5",
                                          "Mannheim", "Strasbourg",         "Buenos Aires", "Bern"};
    sqlite3_bind_int(statement, 1, row + 1);
    sqlite3_bind_int(statement, 2, static_cast<int>(random() % 1000));
    sqlite3_bind_double(statement, 3, static_cast<double>(random() % 100'000) / 100);
    BindText(statement, 4, "Customer %07u", random() % 1'000'000);
    sqlite3_bind_text(statement, 5, cities[random() % cities.size()], -1, SQLITE_STATIC);
    BindText(statement, 6, "%c%c-%03u", 'A' + random() % 26, 'A' + random() % 26, random() % 1000);
    BindText(statement, 7, "Street %u, No. %u", random() % 100'000, random() % 200);
    BindText(statement, 8, "%04u-%02u-%02u", 1996 + random() % 25, 1 + random() % 12, 1 + random() % 28);
}

}  // namespace

void MakeSales(const QString& path, int rows) {
    sqlite3* database = nullptr;
    Check(sqlite3_open(path.toUtf8().constData(), &database), database);
    Check(
        sqlite3_exec(
            database,
            "CREATE TABLE Sales (ID int, Quantity int, Price float, Customer nvarchar(40), City nvarchar(30),"
            " Code nvarchar(10), Street nvarchar(60), Sold datetime); BEGIN",
            nullptr, nullptr, nullptr),
        database);
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database, "INSERT INTO Sales VALUES (?,?,?,?,?,?,?,?)", -1, &statement, nullptr),
          database);
    std::mt19937 random(1996);
    for (int row = 0; row < rows; ++row) {
        BindRow(statement, row, random);
        Check(sqlite3_step(statement), database);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    Check(sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr), database);
    sqlite3_close(database);
}

}  // namespace zephrin::bench
