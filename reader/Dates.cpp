#include "reader/Dates.h"

#include <cmath>
#include <cstdio>

namespace zephrin::reader {

namespace {

constexpr qint64 SecondsPerDay = 86'400;
// 0100-01-01 and the day behind 9999-12-31.
constexpr double FirstDay = -657'434;
constexpr double DayBehindLast = 2'958'466;
/// Days from 0000-03-01 to 1899-12-30.
constexpr qint64 DayZero = 693'899;

struct Day {
    int Year;
    int Month;
    int Number;
};

/// The day of the Gregorian calendar, which is reckoned as if years began in March.
Day DayOf(qint64 sinceMarch0) {
    const qint64 era = (sinceMarch0 >= 0 ? sinceMarch0 : sinceMarch0 - 146'096) / 146'097;
    const int dayOfEra = int(sinceMarch0 - era * 146'097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int month = (5 * dayOfYear + 2) / 153;
    Day day;
    day.Number = dayOfYear - (153 * month + 2) / 5 + 1;
    day.Month = month < 10 ? month + 3 : month - 9;
    day.Year = int(era * 400) + yearOfEra + (day.Month <= 2 ? 1 : 0);
    return day;
}

char* PutTwo(char* at, int number) {
    *at++ = char('0' + number / 10);
    *at++ = char('0' + number % 10);
    return at;
}

}  // namespace

ShortText WriteDate(qint64 sinceMarch0, qint64 secondOfDay, qint64 ticks) {
    const Day day = DayOf(sinceMarch0);
    ShortText text;
    char* at = PutTwo(PutTwo(text.Bytes.data(), day.Year / 100), day.Year % 100);
    *at++ = '-';
    at = PutTwo(at, day.Month);
    *at++ = '-';
    at = PutTwo(at, day.Number);
    if (secondOfDay != 0 || ticks != 0) {
        *at++ = ' ';
        at = PutTwo(at, int(secondOfDay / 3600));
        *at++ = ':';
        at = PutTwo(at, int(secondOfDay / 60 % 60));
        *at++ = ':';
        at = PutTwo(at, int(secondOfDay % 60));
    }
    if (ticks != 0) {
        at += std::snprintf(at, 16, ".%07lld", static_cast<long long>(ticks));
        while (at[-1] == '0') --at;
    }
    text.Size = int(at - text.Bytes.data());
    return text;
}

std::optional<ShortText> DateOf(double days) {
    // The comparison refuses what is no number, too.
    if (!(days > FirstDay - 1 && days < DayBehindLast)) return std::nullopt;
    const double whole = std::trunc(days);
    qint64 day = qint64(whole) + DayZero;
    qint64 second = std::llround(std::fabs(days - whole) * double(SecondsPerDay));
    if (second >= SecondsPerDay) {
        second -= SecondsPerDay;
        ++day;
    }
    return WriteDate(day, second, 0);
}

}  // namespace zephrin::reader
