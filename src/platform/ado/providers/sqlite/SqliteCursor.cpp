#include "platform/ado/providers/sqlite/SqliteCursor.h"

#include "platform/ado/ColumnStore.h"
#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/Exact.h"
#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Beyond this a double has lost the ten-thousandths anyway, and the count would leave 64 bits.
constexpr double LargestMoney = 922'337'203'685'477.0;

const char* TextOf(sqlite3_stmt* statement, int column) {
    const void* text = sqlite3_column_text(statement, column);
    return text ? static_cast<const char*>(text) : "";
}

void AppendPlain(ColumnStore& into, sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            into.AppendInt(column, sqlite3_column_int64(statement, column));
            break;
        case SQLITE_FLOAT:
            into.AppendDouble(column, sqlite3_column_double(statement, column));
            break;
        case SQLITE_TEXT: {
            // The text first: asking for the bytes first could convert it away.
            const char* text = TextOf(statement, column);
            into.AppendText(column, text, sqlite3_column_bytes(statement, column));
            break;
        }
        case SQLITE_BLOB: {
            const void* bytes = sqlite3_column_blob(statement, column);
            into.AppendBytes(column, static_cast<const char*>(bytes),
                             sqlite3_column_bytes(statement, column));
            break;
        }
        default:
            into.AppendNull(column);
    }
}

std::optional<Exact> WideAt(sqlite3_stmt* statement, int column) {
    const void* const bytes = sqlite3_column_blob(statement, column);
    return OfWide(bytes, sqlite3_column_bytes(statement, column));
}

bool AppendCurrency(ColumnStore& into, sqlite3_stmt* statement, int column) {
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_BLOB) {
        const std::optional<Exact> wide = WideAt(statement, column);
        const std::optional<Exact> money = wide ? Rescaled(*wide, MoneyScale) : wide;
        if (!money || money->Units != std::int64_t(money->Units)) return false;
        into.AppendCurrency(column, std::int64_t(money->Units));
        return true;
    }
    if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) return false;
    const double value = sqlite3_column_double(statement, column);
    if (!(std::fabs(value) < LargestMoney)) return false;
    into.AppendCurrency(column, std::llround(value * 10'000.0));
    return true;
}

/// Exact decimals come out with the digits that their column declares.
bool AppendExact(ColumnStore& into, sqlite3_stmt* statement, int column, int scale) {
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_BLOB) {
        const std::optional<Exact> wide = WideAt(statement, column);
        if (!wide) return false;
        const QByteArray text = ToDigits(*wide);
        into.AppendDecimal(column, text.constData(), text.size());
        return true;
    }
    if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) return false;
    std::array<char, 400> digits;
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), sqlite3_column_double(statement, column),
                      std::chars_format::fixed, std::min(scale, 38));
    if (written.ec != std::errc()) return false;
    into.AppendDecimal(column, digits.data(), written.ptr - digits.data());
    return true;
}

bool LooksLikeGuid(const char* text, int bytes) {
    return bytes == 36 && text[8] == '-' && text[13] == '-' && text[18] == '-' && text[23] == '-';
}

}  // namespace

SqliteCursor::SqliteCursor(sqlite3* connection, StatementHandle prepared, QList<Field> columns,
                           Deadline limit, FailureWriter writer)
    : database(connection),
      statement(std::move(prepared)),
      fields(std::move(columns)),
      deadline(limit),
      failure(std::move(writer)) {
    const Deadline::Scope scope(database, deadline);
    rowWaits = Step();
    if (fields.isEmpty()) {
        // A statement without columns is done when it has run.
        while (rowWaits) rowWaits = Step();
        statement.reset();
        return;
    }
    GuessTypes();
    for (const Field& field : std::as_const(fields)) shapes.push_back(ShapeOf(field));
}

bool SqliteCursor::Step() {
    const int code = sqlite3_step(statement.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    const Error error = failure(code, deadline);
    statement.reset();
    throw error;
}

qint64 SqliteCursor::Fetch(ColumnStore& into, qint64 maxRows) {
    if (!statement || maxRows <= 0) return 0;
    const Deadline::Scope scope(database, deadline);
    qint64 rows = 0;
    while (rowWaits && rows < maxRows) {
        AppendRow(into);
        ++rows;
        rowWaits = Step();
    }
    into.EndRows(rows);
    // At the end the statement goes, and with it the lock on the file.
    if (!rowWaits) statement.reset();
    return rows;
}

/// What the engine gives for a value of a type that the statement has made.
void SqliteCursor::CheckRow() const {
    for (qsizetype column = 0; column < made.size(); ++column) {
        const int storage = sqlite3_column_type(statement.get(), int(column));
        if (!made[column] || storage == SQLITE_NULL) continue;
        const Field& field = fields[column];
        const bool wide = IsWide({field.Type, 0, field.Precision, field.NumericScale});
        bool fits = storage == SQLITE_TEXT;
        if (wide || IsBinaryType(field.Type))
            fits = storage == SQLITE_BLOB;
        else if (field.Type == DataType::Boolean || IsIntegerType(field.Type))
            fits = storage == SQLITE_INTEGER;
        else if (field.Type == DataType::Numeric || field.Type == DataType::Decimal)
            fits = storage == SQLITE_FLOAT || storage == SQLITE_INTEGER;
        else if (IsNumberType(field.Type))
            fits = storage == SQLITE_FLOAT;
        Q_ASSERT_X(fits, sqlite3_sql(statement.get()), "a value of another type than its column");
    }
}

void SqliteCursor::AppendRow(ColumnStore& into) const {
#ifndef NDEBUG
    CheckRow();
#endif
    const int count = int(shapes.size());
    for (int column = 0; column < count; ++column) {
        if (shapes[size_t(column)] == Shape::Plain)
            AppendPlain(into, statement.get(), column);
        else
            AppendShaped(into, column);
    }
}

/// A value that doesn't have the shape of its column stands as it is stored: nothing is invented, nothing
/// lost.
void SqliteCursor::AppendShaped(ColumnStore& into, int column) const {
    sqlite3_stmt* row = statement.get();
    const int type = sqlite3_column_type(row, column);
    switch (shapes[size_t(column)]) {
        case Shape::Boolean:
            if (type == SQLITE_INTEGER || type == SQLITE_FLOAT)
                return into.AppendInt(column, sqlite3_column_double(row, column) != 0 ? -1 : 0);
            break;
        case Shape::Currency:
            if (AppendCurrency(into, row, column)) return;
            break;
        case Shape::Exact:
            if (AppendExact(into, row, column, fields[column].NumericScale)) return;
            break;
        case Shape::DateTime:
        case Shape::Date:
        case Shape::Time: {
            if (type != SQLITE_TEXT) break;
            const char* text = TextOf(row, column);
            const std::optional<qint64> ticks = ReadIsoDate(text, sqlite3_column_bytes(row, column));
            if (!ticks) break;
            if (shapes[size_t(column)] == Shape::DateTime) return into.AppendDateTime(column, *ticks);
            if (shapes[size_t(column)] == Shape::Time) return into.AppendTime(column, TimePart(*ticks));
            if (TimePart(*ticks) != 0) return into.AppendDateTime(column, *ticks);
            return into.AppendDate(column, DayPart(*ticks));
        }
        case Shape::Guid: {
            if (type != SQLITE_TEXT) break;
            const char* text = TextOf(row, column);
            const int bytes = sqlite3_column_bytes(row, column);
            if (LooksLikeGuid(text, bytes)) return into.AppendGuid(column, text, bytes);
            break;
        }
        case Shape::Plain:
            break;
    }
    AppendPlain(into, row, column);
}

void SqliteCursor::GuessTypes() {
    for (int column = 0; column < fields.size(); ++column) {
        Field& field = fields[column];
        if (field.Type != DataType::Empty) continue;
        switch (rowWaits ? sqlite3_column_type(statement.get(), column) : SQLITE_NULL) {
            case SQLITE_INTEGER: {
                const qint64 value = sqlite3_column_int64(statement.get(), column);
                field.Type = value == qint32(value) ? DataType::Integer : DataType::BigInt;
                break;
            }
            case SQLITE_FLOAT:
                field.Type = DataType::Double;
                break;
            case SQLITE_BLOB:
                field.Type = DataType::LongVarBinary;
                break;
            default:
                field.Type = DataType::VarWChar;
                break;
        }
    }
}

SqliteCursor::Shape SqliteCursor::ShapeOf(const Field& field) {
    switch (field.Type) {
        case DataType::Boolean:
            return Shape::Boolean;
        case DataType::Currency:
            return Shape::Currency;
        case DataType::Numeric:
        case DataType::Decimal:
            return field.Precision > 0 ? Shape::Exact : Shape::Plain;
        case DataType::Date:
        case DataType::DBTimeStamp:
            return Shape::DateTime;
        case DataType::DBDate:
            return Shape::Date;
        case DataType::DBTime:
            return Shape::Time;
        case DataType::Guid:
            return Shape::Guid;
        default:
            return Shape::Plain;
    }
}

}  // namespace zephrin::ado::providers::sqlite
