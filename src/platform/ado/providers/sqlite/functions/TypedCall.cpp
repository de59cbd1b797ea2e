#include "platform/ado/providers/sqlite/functions/Call.h"
#include "platform/ado/providers/sqlite/values/Failures.h"
#include "platform/ado/providers/sqlite/values/TextValue.h"

#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// A type's name in an error.
QString NameOf(DataType type) {
    switch (type) {
        case DataType::UnsignedTinyInt:
            return QStringLiteral("tinyint");
        case DataType::SmallInt:
            return QStringLiteral("smallint");
        case DataType::BigInt:
            return QStringLiteral("bigint");
        case DataType::Currency:
            return QStringLiteral("money");
        case DataType::Numeric:
        case DataType::Decimal:
            return QStringLiteral("numeric");
        case DataType::Single:
            return QStringLiteral("real");
        case DataType::Double:
            return QStringLiteral("float");
        case DataType::Boolean:
            return QStringLiteral("bit");
        case DataType::DBDate:
            return QStringLiteral("date");
        case DataType::Date:
        case DataType::DBTimeStamp:
            return QStringLiteral("datetime");
        default:
            return QStringLiteral("int");
    }
}

}  // namespace

std::optional<qint64> Call::WholeOf(int index, const TypeSpec& spec) {
    if (Storage(index) == SQLITE_INTEGER) return sqlite3_value_int64(values[index]);
    if (Storage(index) == SQLITE_FLOAT) {
        const double value = sqlite3_value_double(values[index]);
        if (value == std::trunc(value) && std::fabs(value) < 9.2e18) return qint64(value);
    }
    FailReading(index, spec);
    return std::nullopt;
}

std::optional<double> Call::FloatOf(int index, const TypeSpec& spec) {
    switch (Storage(index)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_value_double(values[index]);
        case SQLITE_BLOB:
            if (const auto exact =
                    OfWide(sqlite3_value_blob(values[index]), sqlite3_value_bytes(values[index])))
                return ToDouble(*exact);
            break;
        default:
            if (const std::optional<double> number = NumberIn(Text(index))) return number;
            break;
    }
    FailReading(index, spec);
    return std::nullopt;
}

std::optional<Exact> Call::ExactOf(int index, int scale, const TypeSpec& spec) {
    std::optional<Exact> exact;
    switch (Storage(index)) {
        case SQLITE_INTEGER:
            return Exact{sqlite3_value_int64(values[index]), 0};
        case SQLITE_FLOAT:
            exact = ExactOfDouble(sqlite3_value_double(values[index]), scale);
            break;
        case SQLITE_BLOB:
            exact = OfWide(sqlite3_value_blob(values[index]), sqlite3_value_bytes(values[index]));
            break;
        default:
            exact = ExactOfText(Text(index));
            break;
    }
    if (!exact) FailReading(index, spec);
    return exact;
}

void Call::ReturnWhole(Exact::Integer value, const TypeSpec& spec) {
    if (!HoldsWhole(spec.Type.Type, value)) return FailOverflow(spec);
    sqlite3_result_int64(context, qint64(value));
}

void Call::ReturnFloat(double value, const TypeSpec& spec) {
    if (!std::isfinite(value)) return FailOverflow(spec);
    sqlite3_result_double(context, spec.Type.Type == DataType::Single ? double(float(value)) : value);
}

void Call::ReturnExact(const std::optional<Exact>& value, const TypeSpec& spec) {
    const bool money = spec.Type.Type == DataType::Currency;
    const int scale = money ? MoneyScale : spec.Type.NumericScale;
    const std::optional<Exact> placed =
        value ? Rescaled(*value, scale, money ? Rounding::Cut : Rounding::HalfAway) : value;
    if (!placed ||
        !(money ? HoldsWhole(DataType::BigInt, placed->Units) : FitsDigits(*placed, spec.Type.Precision)))
        return FailOverflow(spec);
    if (IsWide(spec.Type)) {
        const QByteArray wide = ToWide(*placed);
        return sqlite3_result_blob(context, wide.constData(), int(wide.size()), SQLITE_TRANSIENT);
    }
    sqlite3_result_double(context, ToDouble(*placed));
}

void Call::FailAt(qsizetype at, int number, const QString& words) {
    const QByteArray packed = PackedFailure(number, at < 0 ? position : at, words);
    sqlite3_result_error(context, packed.constData(), int(packed.size()));
    sqlite3_result_error_code(context, SQLITE_MISMATCH);
}

void Call::FailOverflow(const TypeSpec& spec) {
    FailAt(spec.Position, FailureNumber::Overflow,
           IsFile() ? QStringLiteral("Overflow.")
                    : QStringLiteral("Arithmetic overflow error converting expression to data type %1.")
                          .arg(NameOf(spec.Type.Type)));
}

void Call::FailReading(int index, const TypeSpec& spec) {
    const QString shown = Storage(index) == SQLITE_BLOB ? QStringLiteral("...") : Text(index);
    FailAt(spec.Position, FailureNumber::Conversion,
           IsFile()
               ? QStringLiteral("Data type mismatch in criteria expression: '%1' is not a number.").arg(shown)
               : QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.")
                     .arg(shown, NameOf(spec.Type.Type)));
}

void Call::FailDivision(const TypeSpec& spec) {
    FailAt(
        spec.Position, FailureNumber::Overflow,
        IsFile() ? QStringLiteral("Division by zero.") : QStringLiteral("Divide by zero error encountered."));
}

}  // namespace zephrin::ado::providers::sqlite
