#pragma once

#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"
#include "platform/ado/providers/sqlite/values/TypeSpec.h"

#include <QString>

#include <optional>
#include <sqlite3.h>
#include <string_view>

namespace zephrin::ado::providers::sqlite {

/// One call of a function out of a statement: its arguments and its result.
///
/// A conversion that fails has already reported the error; the function then only returns.
class Call {
 public:
    Call(sqlite3_context* running, Dialect speaks, int arguments, sqlite3_value** given, qsizetype at = -1)
        : context(running), dialect(speaks), count(arguments), values(given), position(at) {}

    int Count() const { return count; }
    bool IsFile() const { return IsFileDialect(dialect); }
    Dialect Speaks() const { return dialect; }
    /// SQLITE_INTEGER, SQLITE_TEXT, ...
    int Storage(int index) const { return sqlite3_value_type(values[index]); }
    bool IsNull(int index) const { return Storage(index) == SQLITE_NULL; }
    /// Most functions of Null are Null.
    bool AnyNull() const;
    sqlite3_value* Raw(int index) const { return values[index]; }

    /// A number becomes text as it is displayed.
    QString Text(int index) const;
    /// A text as the engine has it, in UTF-8.
    std::string_view Bytes(int index) const;
    std::optional<double> Number(int index);
    /// A number, rounded to the even neighbour where it lies between two.
    std::optional<qint64> Whole(int index);
    /// Ticks since 1970, of a text that is a date or a number of days.
    std::optional<qint64> Date(int index);

    // --- Numbers of a type that the statement tells (TypedCall.cpp)
    /// The type and place that a statement hands over as a number.
    TypeSpec SpecAt(int index) {
        const TypeSpec spec = Unpack(sqlite3_value_int64(values[index]));
        position = spec.Position;
        return spec;
    }
    /// A whole number; a text or a broken number, which only a column can hold against its declaration, is
    /// refused.
    std::optional<qint64> WholeOf(int index, const TypeSpec& spec);
    std::optional<double> FloatOf(int index, const TypeSpec& spec);
    /// A broken number is read with so many places.
    std::optional<Exact> ExactOf(int index, int scale, const TypeSpec& spec);
    /// Refuses what the type doesn't hold.
    void ReturnWhole(Exact::Integer value, const TypeSpec& spec);
    void ReturnFloat(double value, const TypeSpec& spec);
    void ReturnExact(const std::optional<Exact>& value, const TypeSpec& spec);
    void FailOverflow(const TypeSpec& spec);
    void FailReading(int index, const TypeSpec& spec);
    void FailDivision(const TypeSpec& spec);
    /// Ends the statement with an error of this number at this place of it.
    void FailAt(qsizetype at, int number, const QString& words);

    void ReturnNull() { sqlite3_result_null(context); }
    void Return(qint64 value) { sqlite3_result_int64(context, value); }
    /// Refuses what is not a number any more.
    void Return(double value);
    void Return(const QString& value);
    void ReturnDate(qint64 ticks);
    void ReturnArgument(int index) { sqlite3_result_value(context, values[index]); }
    /// Ends the statement with this error.
    void Fail(const QString& onServer, const QString& onFile);
    void FailDivision();
    void FailArgument(const QString& function);

 private:
    sqlite3_context* context;
    Dialect dialect;
    int count;
    sqlite3_value** values;
    qsizetype position;
};

/// A number as it is displayed: fifteen digits, no more than needed.
QString NumberText(double value);
/// The number that a text holds from its first to its last character but for blanks.
std::optional<double> NumberIn(const QString& text);
QString TextOf(sqlite3_value* value);

/// Where a function may be called from. A file's own views and triggers call what the views that are made
/// here are written with; what the program asks for itself is for its own statements alone.
enum class CalledFrom : quint8 { Anywhere, OwnStatements };

/// A function, the name by which statements call it, and how many arguments it takes. The engine hands over
/// whatever a statement or a view in a file has written, so a function relies on the count and on nothing
/// else.
struct FunctionEntry {
    const char* Name;
    int Least;
    int Most;
    void (*Run)(Call& call);
    bool Deterministic = true;
    CalledFrom From = CalledFrom::Anywhere;
};

}  // namespace zephrin::ado::providers::sqlite
