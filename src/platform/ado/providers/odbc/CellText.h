#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zephrin::ado::odbc {

/// UTF-16 to UTF-8, a unit without its partner as U+FFFD. `into` is replaced.
void ToUtf8(const char16_t* text, size_t units, std::string& into);

/// Days from 1970-01-01 to a day of the Gregorian calendar.
std::int64_t DaysOf(int year, int month, int day);

/// A day, with a time of day where the text had one.
struct Moment {
    std::int64_t Days = 0;
    std::int64_t Ticks = 0;  ///< 100 ns since midnight
    bool HasTime = false;
};

/// "YYYY-MM-DD", with " HH:MM[:SS[.fffffff]]" behind it or not. Nothing for any other text.
std::optional<Moment> ParseMoment(std::string_view text);

/// "HH:MM[:SS[.fffffff]]" in ticks of 100 ns; more digits are cut.
std::optional<std::int64_t> ParseTime(std::string_view text);

/// "1.5", ".5" and "-.5" as digits with a leading zero; "" for what is no plain decimal number.
std::string NormaliseDecimal(std::string_view text);

/// An amount in ten-thousandths; nothing where it has more digits than these hold.
std::optional<std::int64_t> ParseCurrency(std::string_view text);

/// A number other than 0, or a word that begins as true or yes do.
bool ReadsAsTrue(std::string_view text);

}  // namespace zephrin::ado::odbc
