#include "platform/ado/providers/sqlite/values/DateText.h"

#include <array>
#include <cstdio>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Reads up to `width` digits at `at`, exactly `width` where `exact`; -1 when they are not there.
int Digits(const char* text, qsizetype bytes, qsizetype at, int width) {
    if (at + width > bytes) return -1;
    int value = 0;
    for (int i = 0; i < width; ++i) {
        const unsigned digit = unsigned(text[at + i]) - '0';
        if (digit > 9) return -1;
        value = value * 10 + int(digit);
    }
    return value;
}

/// HH:MM[:SS[.fffffff]] from `at` to the end; -1 when it isn't one.
qint64 ReadTime(const char* text, qsizetype bytes, qsizetype at) {
    const int hour = Digits(text, bytes, at, 2);
    const int minute = Digits(text, bytes, at + 3, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || text[at + 2] != ':') return -1;
    qint64 ticks = (hour * 3600LL + minute * 60LL) * TicksPerSecond;
    at += 5;
    if (at == bytes) return ticks;
    const int second = Digits(text, bytes, at + 1, 2);
    if (text[at] != ':' || second < 0 || second > 59) return -1;
    ticks += second * TicksPerSecond;
    at += 3;
    if (at == bytes) return ticks;
    if (text[at] != '.') return -1;
    qint64 unit = TicksPerSecond / 10;
    for (++at; at < bytes; ++at, unit /= 10) {
        const unsigned digit = unsigned(text[at]) - '0';
        if (digit > 9) return -1;
        ticks += digit * unit;
    }
    return ticks;
}

int DaysIn(int year, int month) {
    static constexpr std::array days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[size_t(month - 1)];
}

}  // namespace

qint64 DaysOf(int year, int month, int day) {
    // March is the first month here, so that the leap day comes last.
    const int y = month <= 2 ? year - 1 : year;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146'097LL + dayOfEra - 719'468;
}

CivilDate CivilOf(qint64 days) {
    const qint64 shifted = days + 719'468;
    const qint64 era = (shifted >= 0 ? shifted : shifted - 146'096) / 146'097;
    const int dayOfEra = int(shifted - era * 146'097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int month = (5 * dayOfYear + 2) / 153;
    CivilDate result;
    result.Day = dayOfYear - (153 * month + 2) / 5 + 1;
    result.Month = month < 10 ? month + 3 : month - 9;
    result.Year = int(era * 400) + yearOfEra + (result.Month <= 2 ? 1 : 0);
    return result;
}

std::optional<qint64> ReadIsoDate(const char* text, qsizetype bytes) {
    if (bytes < 5) return std::nullopt;
    if (text[2] == ':') {
        const qint64 time = ReadTime(text, bytes, 0);
        if (time < 0) return std::nullopt;
        return DaysOf(1900, 1, 1) * TicksPerDay + time;
    }
    const int year = Digits(text, bytes, 0, 4);
    const int month = Digits(text, bytes, 5, 2);
    const int day = Digits(text, bytes, 8, 2);
    if (year < 1 || month < 1 || month > 12 || day < 1 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    if (day > 28 && day > DaysIn(year, month)) return std::nullopt;
    const qint64 ticks = DaysOf(year, month, day) * TicksPerDay;
    if (bytes == 10) return ticks;
    if (text[10] != ' ' && text[10] != 'T') return std::nullopt;
    const bool zulu = text[bytes - 1] == 'Z';
    const qint64 time = ReadTime(text, zulu ? bytes - 1 : bytes, 11);
    if (time < 0) return std::nullopt;
    return ticks + time;
}

QByteArray WriteIsoDate(qint64 ticks) {
    const CivilDate date = CivilOf(DayPart(ticks));
    const qint64 time = TimePart(ticks);
    const int seconds = int(time / TicksPerSecond);
    std::array<char, 64> text;
    int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", date.Year, date.Month, date.Day);
    if (time != 0) {
        length += std::snprintf(text.data() + length, text.size() - size_t(length), " %02d:%02d:%02d",
                                seconds / 3600, seconds / 60 % 60, seconds % 60);
        if (const int fraction = int(time % TicksPerSecond); fraction != 0) {
            length += std::snprintf(text.data() + length, text.size() - size_t(length), ".%07d", fraction);
            while (text[size_t(length - 1)] == '0') --length;
        }
    }
    return QByteArray(text.data(), length);
}

}  // namespace zephrin::ado::providers::sqlite
