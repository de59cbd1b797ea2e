#pragma once

#include "platform/ado/ColumnStore.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace zephrin::ado::providers::sqlite {

/// Dates are stored as text, "YYYY-MM-DD" or "YYYY-MM-DD HH:MM:SS", and counted in ticks of 100 ns since 1970
/// as soon as one reckons with them. A date at midnight is written without its time, which makes the order of
/// the texts the order of the dates.

inline qint64 DayPart(qint64 ticks) {
    return ticks >= 0 ? ticks / TicksPerDay : -((-ticks + TicksPerDay - 1) / TicksPerDay);
}
inline qint64 TimePart(qint64 ticks) {
    return ticks - DayPart(ticks) * TicksPerDay;
}

/// Days since 1970-01-01 of a day of the Gregorian calendar.
qint64 DaysOf(int year, int month, int day);

struct CivilDate {
    int Year = 0;
    int Month = 0;
    int Day = 0;
};
CivilDate CivilOf(qint64 days);

/// Reads the stored forms: a date, a date and a time behind a blank or a T, or a time alone (on the day that
/// servers count from, 1900-01-01). For one call a cell: no allocation, nothing lenient.
std::optional<qint64> ReadIsoDate(const char* text, qsizetype bytes);

/// Writes the stored form.
QByteArray WriteIsoDate(qint64 ticks);

/// Reads what people and statements write: the stored forms, month/day/year with "/", "-" or ".", YYYYMMDD,
/// two-digit years (0 to 29 are 2000 to 2029), names of months, times with am and pm. A time alone is on the
/// day zero of a file dialect's calendar (1899-12-30) when `timeOnFileDay` says so, else on 1900-01-01.
std::optional<qint64> ReadDate(QStringView text, bool timeOnFileDay = false);

}  // namespace zephrin::ado::providers::sqlite
