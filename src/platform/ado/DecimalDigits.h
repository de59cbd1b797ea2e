#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zephrin::ado {

/// An exact decimal number: 0.DIGITS times ten to the power of Point, with its sign. Zero has no digits.
struct DecimalDigits {
    bool Negative = false;
    std::string Digits;  ///< without zeros at either end
    std::int64_t Point = 0;

    /// `value` divided by ten to the power of `decimals`.
    static DecimalDigits OfInteger(std::int64_t value, int decimals);
    /// The shortest decimal that reads as this double.
    static DecimalDigits OfDouble(double value);
    /// Digits with an optional sign, point and exponent. What is no number reads as zero.
    static DecimalDigits OfText(std::string_view text);

    /// Whether `text` is a number that OfText reads whole.
    static bool IsNumber(std::string_view text);

    double ToDouble() const;
    /// In plain digits, e.g. "-12.5"; 0 is "0".
    std::string ToText() const;
};

/// Below, at or above 0 as `a` is below, equal to or above `b`.
int Compare(const DecimalDigits& a, const DecimalDigits& b);

}  // namespace zephrin::ado
