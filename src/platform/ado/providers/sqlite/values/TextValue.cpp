#include "platform/ado/providers/sqlite/values/TextValue.h"

#include <QString>

#include <cmath>
#include <limits>

namespace zephrin::ado::providers::sqlite {

namespace {

std::optional<double> FloatOf(QStringView text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    // Words such as "inf" are none.
    if (!isNumber || !std::isfinite(value)) return std::nullopt;
    return value;
}

TextValue WholeOf(QStringView text, DataType type, bool file) {
    const std::optional<Exact> exact = ExactOfText(text);
    if (file) {
        const std::optional<double> number = FloatOf(text);
        if (!number) return Unreadable::Wrong;
        if (std::fabs(*number) > 9.2e18) return Unreadable::TooLarge;
        const qint64 rounded = qint64(std::nearbyint(*number));
        if (HoldsWhole(type, rounded)) return rounded;
        return Unreadable::TooLarge;
    }
    if (!exact || text.contains(u'.')) return Unreadable::Wrong;
    if (!HoldsWhole(type, exact->Units)) return Unreadable::TooLarge;
    return qint64(exact->Units);
}

/// Money may be written as it is printed: with its sign and commas.
std::optional<Exact> MoneyOf(QStringView text) {
    QString digits = text.toString();
    const bool negative = digits.startsWith(u'-');
    if (negative || digits.startsWith(u'+')) digits.remove(0, 1);
    digits = digits.trimmed();
    if (digits.startsWith(u'$')) digits.remove(0, 1);
    digits.remove(u',');
    std::optional<Exact> value = ExactOfText(digits);
    if (value && negative) value->Units = -value->Units;
    return value;
}

}  // namespace

bool HoldsWhole(DataType type, Exact::Integer value) {
    switch (type) {
        case DataType::UnsignedTinyInt:
            return value >= 0 && value <= 255;
        case DataType::TinyInt:
            return value >= -128 && value <= 127;
        case DataType::SmallInt:
            return value == qint16(value);
        case DataType::BigInt:
            return value == qint64(value);
        default:
            return value == qint32(value);
    }
}

TextValue NumberOfText(QStringView text, const ColumnType& type, bool file) {
    const QStringView trimmed = text.trimmed();
    const bool exact = type.Type == DataType::Numeric || type.Type == DataType::Decimal;
    if (trimmed.isEmpty() && !file) {
        if (exact) return Unreadable::Wrong;
        if (IsIntegerType(type.Type)) return qint64(0);
        if (type.Type == DataType::Currency) return Exact{0, MoneyScale};
        return 0.0;
    }
    if (IsIntegerType(type.Type)) return WholeOf(trimmed, type.Type, file);
    if (exact || type.Type == DataType::Currency) {
        const std::optional<Exact> value = exact ? ExactOfText(trimmed) : MoneyOf(trimmed);
        const bool isMoney = type.Type == DataType::Currency;
        if (!value) return Unreadable::Wrong;
        const std::optional<Exact> placed = Rescaled(*value, isMoney ? MoneyScale : type.NumericScale);
        if (!placed ||
            !(isMoney ? HoldsWhole(DataType::BigInt, placed->Units) : FitsDigits(*placed, type.Precision)))
            return Unreadable::TooLarge;
        return *placed;
    }
    if (const std::optional<double> number = FloatOf(trimmed)) return *number;
    return Unreadable::Wrong;
}

}  // namespace zephrin::ado::providers::sqlite
