#include "platform/ado/DecimalDigits.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace zephrin::ado {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The parts of a number as it is written; Whole is false where the text is none.
struct Parts {
    bool Negative = false;
    std::string_view Whole;
    std::string_view Fraction;
    std::int64_t Exponent = 0;
    bool Valid = false;
};

std::string_view TakeDigits(std::string_view& rest) {
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsDigit);
    const auto digits = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(digits.size());
    return digits;
}

bool TakeExponent(std::string_view& rest, std::int64_t& exponent) {
    if (rest.empty() || (rest.front() != 'e' && rest.front() != 'E')) return true;
    rest.remove_prefix(1);
    if (!rest.empty() && rest.front() == '+') {
        rest.remove_prefix(1);
        if (rest.empty() || !IsDigit(rest.front())) return false;
    }
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), exponent);
    // Far more than any number needs, and far from where sums of exponents overflow.
    constexpr std::int64_t most = 1'000'000'000;
    if (error != std::errc() || exponent > most || exponent < -most) return false;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return true;
}

Parts Split(std::string_view rest) {
    Parts parts;
    if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
        parts.Negative = rest.front() == '-';
        rest.remove_prefix(1);
    }
    parts.Whole = TakeDigits(rest);
    if (!rest.empty() && rest.front() == '.') {
        rest.remove_prefix(1);
        parts.Fraction = TakeDigits(rest);
    }
    const bool digits = !parts.Whole.empty() || !parts.Fraction.empty();
    parts.Valid = digits && TakeExponent(rest, parts.Exponent) && rest.empty();
    return parts;
}

DecimalDigits Normal(bool negative, std::string digits, std::int64_t point) {
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) return {};
    digits.erase(0, first);
    digits.erase(digits.find_last_not_of('0') + 1);
    return {negative, std::move(digits), point - static_cast<std::int64_t>(first)};
}

}  // namespace

DecimalDigits DecimalDigits::OfInteger(std::int64_t value, int decimals) {
    std::string digits = std::to_string(value);
    const bool negative = digits.front() == '-';
    if (negative) digits.erase(0, 1);
    const auto point = static_cast<std::int64_t>(digits.size()) - decimals;
    return Normal(negative, std::move(digits), point);
}

DecimalDigits DecimalDigits::OfDouble(double value) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific).ptr;
    return OfText({buffer, static_cast<std::size_t>(end - buffer)});
}

DecimalDigits DecimalDigits::OfText(std::string_view text) {
    const Parts parts = Split(text);
    if (!parts.Valid) return {};
    std::string digits(parts.Whole);
    digits += parts.Fraction;
    return Normal(parts.Negative, std::move(digits),
                  static_cast<std::int64_t>(parts.Whole.size()) + parts.Exponent);
}

bool DecimalDigits::IsNumber(std::string_view text) {
    return Split(text).Valid;
}

double DecimalDigits::ToDouble() const {
    const std::string text =
        (Negative ? "-0." : "0.") + (Digits.empty() ? "0" : Digits) + 'e' + std::to_string(Point);
    double value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc::result_out_of_range)
        return value;
    if (Point < 0) return 0;
    const double infinite = std::numeric_limits<double>::infinity();
    return Negative ? -infinite : infinite;
}

std::string DecimalDigits::ToText() const {
    if (Digits.empty()) return "0";
    const auto size = static_cast<std::int64_t>(Digits.size());
    std::string text = Negative ? "-" : "";
    if (Point <= 0) return text + "0." + std::string(static_cast<std::size_t>(-Point), '0') + Digits;
    if (Point >= size) return text + Digits + std::string(static_cast<std::size_t>(Point - size), '0');
    const auto whole = static_cast<std::size_t>(Point);
    return text + Digits.substr(0, whole) + '.' + Digits.substr(whole);
}

int Compare(const DecimalDigits& a, const DecimalDigits& b) {
    const auto signOf = [](const DecimalDigits& number) {
        return number.Digits.empty() ? 0 : number.Negative ? -1 : 1;
    };
    const int sign = signOf(a);
    if (sign != signOf(b)) return sign < signOf(b) ? -1 : 1;
    if (sign == 0) return 0;
    if (a.Point != b.Point) return a.Point < b.Point ? -sign : sign;
    const int digits = a.Digits.compare(b.Digits);
    return digits < 0 ? -sign : digits > 0 ? sign : 0;
}

}  // namespace zephrin::ado
