#pragma once

#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace zephrin::ado::providers::sqlite {

/// An exact number: Units divided by ten to the power of Scale. What the dialects call decimal, numeric and
/// money.
///
/// Inside the engine a value of a type with up to fifteen digits is the double that reads as it, which no two
/// of them share; so stored columns need no conversion, and the engine compares, sorts and groups them by
/// itself. A value of a wider type is a blob of seventeen bytes (see ToWide) whose order is the order of the
/// numbers, as long as the scales are the same, which the type sees to.
struct Exact {
    __extension__ typedef __int128 Integer;

    Integer Units = 0;
    int Scale = 0;

    bool operator==(const Exact&) const = default;
};

/// The digits that a dialect's numbers may have at most.
inline constexpr int MostDigits = 38;
/// The digits that a double keeps.
inline constexpr int NarrowDigits = 15;
inline constexpr int MoneyScale = 4;
inline constexpr int MoneyPrecision = 19;
inline constexpr int WideBytes = 17;

/// Whether values of the type are blobs, but for what a column of money holds.
inline bool IsWide(const ColumnType& type) {
    const bool exact = type.Type == DataType::Numeric || type.Type == DataType::Decimal;
    return type.Type == DataType::Currency || (exact && type.Precision > NarrowDigits);
}

/// Ten to the power of 0 to 38.
Exact::Integer PowerOfTen(int exponent);
/// Whether the number has no more than so many digits.
bool FitsDigits(const Exact& value, int precision);

enum class Rounding : quint8 { HalfAway, HalfEven, Cut, Down, Up };

/// The value with another number of places; nothing where it leaves 38 digits.
std::optional<Exact> Rescaled(const Exact& value, int scale, Rounding how = Rounding::HalfAway);
std::optional<Exact> Sum(const Exact& a, const Exact& b, int scale);
std::optional<Exact> Product(const Exact& a, const Exact& b, int scale, Rounding how = Rounding::HalfAway);
/// Cut, not rounded, as the servers divide. `b` is not 0.
std::optional<Exact> Quotient(const Exact& a, const Exact& b, int scale);
/// What is left of `a`, with its sign. `b` is not 0.
std::optional<Exact> Remainder(const Exact& a, const Exact& b, int scale);
/// Below, at or above 0.
int Compare(const Exact& a, const Exact& b);

/// Digits with an optional sign and point and blanks around, and nothing else; nothing where there is no
/// digit or more than 38 of them. A surplus of places is rounded.
std::optional<Exact> ExactOfText(QStringView text);
/// The shortest decimal that reads as this double, rounded to so many places.
std::optional<Exact> ExactOfDouble(double value, int scale);
double ToDouble(const Exact& value);
/// All places that the scale has: 2.50.
QByteArray ToDigits(const Exact& value);

QByteArray ToWide(const Exact& value);
std::optional<Exact> OfWide(const void* bytes, int count);

}  // namespace zephrin::ado::providers::sqlite
