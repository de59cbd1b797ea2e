#include "platform/ado/providers/odbc/CellText.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>

namespace zephrin::ado::odbc {

namespace {

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads `digits` digits from the front; -1 where there are others.
int TakeNumber(std::string_view& text, size_t digits) {
    if (text.size() < digits || !std::all_of(text.begin(), text.begin() + std::ptrdiff_t(digits), IsDigit))
        return -1;
    int value = 0;
    std::from_chars(text.data(), text.data() + digits, value);
    text.remove_prefix(digits);
    return value;
}

bool Take(std::string_view& text, char c) {
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
}

/// The digits behind the point of the seconds, in ticks.
std::int64_t TakeFraction(std::string_view& text) {
    std::int64_t ticks = 0;
    std::int64_t unit = 1'000'000;
    for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1), unit /= 10)
        ticks += (text.front() - '0') * unit;
    return ticks;
}

}  // namespace

void ToUtf8(const char16_t* text, size_t units, std::string& into) {
    into.resize(units * 3);
    char* out = into.data();
    size_t i = 0;
    for (; i < units && text[i] < 0x80; ++i) *out++ = char(text[i]);
    for (; i < units; ++i) {
        char32_t code = text[i];
        if (code < 0x80) {
            *out++ = char(code);
            continue;
        }
        if (code < 0x800) {
            *out++ = char(0xC0 | (code >> 6));
            *out++ = char(0x80 | (code & 0x3F));
            continue;
        }
        if (code >= 0xD800 && code < 0xE000) {
            const bool paired =
                code < 0xDC00 && i + 1 < units && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
            if (paired) {
                code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00u);
                *out++ = char(0xF0 | (code >> 18));
                *out++ = char(0x80 | ((code >> 12) & 0x3F));
                *out++ = char(0x80 | ((code >> 6) & 0x3F));
                *out++ = char(0x80 | (code & 0x3F));
                continue;
            }
            code = 0xFFFD;
        }
        *out++ = char(0xE0 | (code >> 12));
        *out++ = char(0x80 | ((code >> 6) & 0x3F));
        *out++ = char(0x80 | (code & 0x3F));
    }
    into.resize(size_t(out - into.data()));
}

std::int64_t DaysOf(int year, int month, int day) {
    using namespace std::chrono;
    return sys_days(std::chrono::year(year) / std::chrono::month(unsigned(month)) /
                    std::chrono::day(unsigned(day)))
        .time_since_epoch()
        .count();
}

std::optional<std::int64_t> ParseTime(std::string_view text) {
    text = Trimmed(text);
    const int hour = TakeNumber(text, 2);
    if (hour < 0 || hour > 23 || !Take(text, ':')) return std::nullopt;
    const int minute = TakeNumber(text, 2);
    if (minute < 0 || minute > 59) return std::nullopt;
    int second = 0;
    std::int64_t fraction = 0;
    if (Take(text, ':')) {
        second = TakeNumber(text, 2);
        if (second < 0 || second > 60) return std::nullopt;
        if (Take(text, '.')) fraction = TakeFraction(text);
    }
    if (!text.empty()) return std::nullopt;
    return ((hour * 60LL + minute) * 60 + second) * 10'000'000 + fraction;
}

std::optional<Moment> ParseMoment(std::string_view text) {
    text = Trimmed(text);
    const int year = TakeNumber(text, 4);
    if (year < 0 || !Take(text, '-')) return std::nullopt;
    const int month = TakeNumber(text, 2);
    if (month < 0 || !Take(text, '-')) return std::nullopt;
    const int day = TakeNumber(text, 2);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(unsigned(month)),
                                           std::chrono::day(unsigned(day))};
    if (day < 0 || !date.ok()) return std::nullopt;
    Moment moment{DaysOf(year, month, day)};
    if (text.empty()) return moment;
    if (!Take(text, ' ') && !Take(text, 'T')) return std::nullopt;
    const auto ticks = ParseTime(text);
    if (!ticks) return std::nullopt;
    moment.Ticks = *ticks;
    moment.HasTime = true;
    return moment;
}

std::string NormaliseDecimal(std::string_view text) {
    text = Trimmed(text);
    std::string result;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        if (text.front() == '-') result = "-";
        text.remove_prefix(1);
    }
    const size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::string_view part =
        point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    if (whole.empty() && part.empty()) return {};
    if (!std::all_of(whole.begin(), whole.end(), IsDigit) || !std::all_of(part.begin(), part.end(), IsDigit))
        return {};
    result += whole.empty() ? std::string_view("0") : whole;
    if (!part.empty()) (result += '.') += part;
    return result;
}

std::optional<std::int64_t> ParseCurrency(std::string_view text) {
    std::string digits = NormaliseDecimal(text);
    if (digits.empty()) return std::nullopt;
    const size_t point = std::min(digits.find('.'), digits.size());
    std::string part = point < digits.size() ? digits.substr(point + 1) : std::string();
    while (part.size() > 4 && part.back() == '0') part.pop_back();
    if (part.size() > 4) return std::nullopt;
    part.resize(4, '0');
    const std::string whole = digits.substr(0, point) + part;
    std::int64_t amount = 0;
    const auto [end, failure] = std::from_chars(whole.data(), whole.data() + whole.size(), amount);
    if (failure != std::errc() || end != whole.data() + whole.size()) return std::nullopt;
    return amount;
}

bool ReadsAsTrue(std::string_view text) {
    text = Trimmed(text);
    if (text.empty()) return false;
    double number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure == std::errc() && end == text.data() + text.size()) return number != 0;
    return std::string_view("TtYy").find(text.front()) != std::string_view::npos;
}

}  // namespace zephrin::ado::odbc
