#include "platform/ado/providers/sqlite/functions/Call.h"

#include "platform/ado/providers/sqlite/values/Failures.h"

#include <cmath>

namespace zephrin::ado::providers::sqlite {

QString NumberText(double value) {
    // Fifteen digits hide what binary fractions add at the end.
    return QString::number(value, 'g', 15);
}

std::optional<double> NumberIn(const QString& text) {
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value)) return std::nullopt;
    return value;
}

QString TextOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_FLOAT:
            return NumberText(sqlite3_value_double(value));
        default: {
            const void* const text = sqlite3_value_text(value);
            return QString::fromUtf8(static_cast<const char*>(text), sqlite3_value_bytes(value));
        }
    }
}

bool Call::AnyNull() const {
    for (int index = 0; index < count; ++index)
        if (IsNull(index)) return true;
    return false;
}

QString Call::Text(int index) const {
    return TextOf(values[index]);
}

std::string_view Call::Bytes(int index) const {
    const void* const text = sqlite3_value_text(values[index]);
    return {static_cast<const char*>(text), text ? size_t(sqlite3_value_bytes(values[index])) : 0};
}

std::optional<double> Call::Number(int index) {
    const int storage = Storage(index);
    if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) return sqlite3_value_double(values[index]);
    const QString text = Text(index);
    if (const std::optional<double> number = NumberIn(text)) return number;
    // The server takes an empty text for 0.
    if (!IsFile() && text.trimmed().isEmpty()) return 0.0;
    Fail(QStringLiteral("Conversion failed when converting the varchar value '%1' to data type float.")
             .arg(text),
         QStringLiteral("Data type mismatch in criteria expression: '%1' is not a number.").arg(text));
    return std::nullopt;
}

std::optional<qint64> Call::Whole(int index) {
    if (Storage(index) == SQLITE_INTEGER) return sqlite3_value_int64(values[index]);
    const std::optional<double> number = Number(index);
    if (!number) return std::nullopt;
    if (std::fabs(*number) >= 9.2e18) {
        Fail(QStringLiteral("Arithmetic overflow error converting expression to data type int."),
             QStringLiteral("Overflow."));
        return std::nullopt;
    }
    return qint64(std::nearbyint(*number));
}

std::optional<qint64> Call::Date(int index) {
    const int storage = Storage(index);
    if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) {
        const double days = sqlite3_value_double(values[index]);
        if (std::fabs(days) < 3'000'000) {
            // Before day zero the fraction still counts forward from midnight in a file.
            const double whole = IsFile() ? std::trunc(days) : std::floor(days);
            // To the millisecond: a double of this size holds no more.
            const qint64 milliseconds = std::llround(std::fabs(days - whole) * 86'400'000.0);
            return (DayZero(IsFile()) + qint64(whole)) * TicksPerDay + milliseconds * (TicksPerSecond / 1000);
        }
    } else if (storage == SQLITE_TEXT) {
        const char* const text =
            static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(values[index])));
        const int bytes = sqlite3_value_bytes(values[index]);
        if (bytes >= 10)
            if (const std::optional<qint64> ticks = ReadIsoDate(text, bytes)) return ticks;
        if (const std::optional<qint64> ticks = ReadDate(QString::fromUtf8(text, bytes), IsFile()))
            return ticks;
    }
    const QString shown = Text(index);
    Fail(QStringLiteral("Conversion failed when converting date and/or time from character string '%1'.")
             .arg(shown),
         QStringLiteral("Data type mismatch in expression: '%1' is not a date.").arg(shown));
    return std::nullopt;
}

void Call::Return(double value) {
    if (std::isfinite(value)) return sqlite3_result_double(context, value);
    Fail(QStringLiteral("Arithmetic overflow error: the result is out of range."),
         QStringLiteral("Overflow."));
}

void Call::Return(const QString& value) {
    const QByteArray utf8 = value.toUtf8();
    sqlite3_result_text64(context, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

void Call::ReturnDate(qint64 ticks) {
    const QByteArray text = WriteIsoDate(ticks);
    sqlite3_result_text(context, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}

void Call::Fail(const QString& onServer, const QString& onFile) {
    FailAt(position, FailureNumber::Conversion, IsFile() ? onFile : onServer);
}

void Call::FailDivision() {
    Fail(QStringLiteral("Divide by zero error encountered."), QStringLiteral("Division by zero."));
}

void Call::FailArgument(const QString& function) {
    Fail(QStringLiteral("An invalid argument was passed to the function %1.").arg(function),
         QStringLiteral("Invalid procedure call: the argument of %1 is out of range.").arg(function));
}

}  // namespace zephrin::ado::providers::sqlite
