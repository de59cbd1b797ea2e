#include "Database.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <sqlite3.h>

namespace shop {

void Database::Closer::operator()(sqlite3* open) const {
    sqlite3_close(open);
}
void Insert::Finalizer::operator()(sqlite3_stmt* prepared) const {
    sqlite3_finalize(prepared);
}

Database::Database(const std::string& path) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(path.c_str(), &opened);
    handle.reset(opened);
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(opened));
}

void Database::Run(const std::string& sql) {
    if (sqlite3_exec(handle.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(handle.get()));
}

std::string DateText(int daysSince2020, int minutes) {
    using namespace std::chrono;
    const year_month_day day{sys_days{year{2020} / January / 1} + days{daysSince2020}};
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(day.year()),
                                     static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    std::string result(text.data(), static_cast<std::size_t>(length));
    if (minutes == 0) return result;
    std::snprintf(text.data(), text.size(), " %02d:%02d:00", minutes / 60, minutes % 60);
    return result + text.data();
}

Insert::Insert(Database& into, const std::string& table, int columns) : database(into.handle.get()) {
    std::string sql = "INSERT INTO [" + table + "] VALUES (?";
    for (int column = 1; column < columns; ++column) sql += ", ?";
    sql += ")";
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(database, sql.c_str(), -1, &prepared, nullptr));
    statement.reset(prepared);
}

void Insert::Row(std::initializer_list<Value> values) {
    int column = 0;
    for (const Value& value : values) Check(Bind(++column, value));
    if (sqlite3_step(statement.get()) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database));
    Check(sqlite3_reset(statement.get()));
}

int Insert::Bind(int column, const Value& value) {
    if (const auto* number = std::get_if<int>(&value.data))
        return sqlite3_bind_int(statement.get(), column, *number);
    if (const auto* real = std::get_if<double>(&value.data))
        return sqlite3_bind_double(statement.get(), column, *real);
    // The values outlive the step, so neither text nor bytes are copied.
    if (const auto* text = std::get_if<std::string>(&value.data))
        return sqlite3_bind_text(statement.get(), column, text->data(), static_cast<int>(text->size()),
                                 SQLITE_STATIC);
    if (const auto* bytes = std::get_if<std::vector<unsigned char>>(&value.data))
        return sqlite3_bind_blob(statement.get(), column, bytes->data(), static_cast<int>(bytes->size()),
                                 SQLITE_STATIC);
    return sqlite3_bind_null(statement.get(), column);
}

void Insert::Check(int result) const {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database));
}

}  // namespace shop
