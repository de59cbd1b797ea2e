#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace shop {

/// The file being written. Every failure is a std::runtime_error with the database's own text.
class Database {
 public:
    explicit Database(const std::string& path);
    void Run(const std::string& sql);

 private:
    friend class Insert;
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> handle;
};

/// A day or a moment as the text that the database stores; without a time where it is midnight.
std::string DateText(int daysSince2020, int minutes = 0);

/// One value of a row; a std::optional without a value is Null.
class Value {
 public:
    Value(int number) : data(number) {}
    Value(double number) : data(number) {}
    Value(const char* text) : data(std::string(text)) {}
    Value(std::string text) : data(std::move(text)) {}
    Value(std::vector<unsigned char> bytes) : data(std::move(bytes)) {}
    template <typename Kind>
    Value(const std::optional<Kind>& value) {
        if (value) data = Value(*value).data;
    }

 private:
    friend class Insert;
    std::variant<std::monostate, int, double, std::string, std::vector<unsigned char>> data;
};

/// Rows into one table, with the columns in their order.
class Insert {
 public:
    Insert(Database& into, const std::string& table, int columns);

    /// The braces of the call matter: only in them are the values computed from left to right with every
    /// compiler, and random numbers thus drawn in the same order.
    void Row(std::initializer_list<Value> values);

 private:
    int Bind(int column, const Value& value);
    void Check(int result) const;

    struct Finalizer {
        void operator()(sqlite3_stmt* prepared) const;
    };
    sqlite3* database;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement;
};

}  // namespace shop
