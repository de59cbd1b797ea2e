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

/// In which order three numbers without a month's name are read, unless the first is a year of four digits.
enum class DateOrder { MonthFirst, DayFirst, YearFirst };

/// Reads what people and statements write: the stored forms, three numbers with "/", "-" or "." between them,
/// YYYYMMDD, names of months, times with am and pm. `file` reads as the file dialects do: two digits up to 29
/// are a year after 2000 (49 on a server), a day that can't be a month changes places with it, and a time
/// alone is on 1899-12-30.
std::optional<qint64> ReadDate(QStringView text, bool file, DateOrder order = DateOrder::MonthFirst);

/// The day zero of a dialect's calendar, for dates that are reckoned with as numbers.
inline qint64 DayZero(bool file) {
    return file ? -25569 : -25567;
}

/// Whether a date and time is one of the dialect's calendar, which begins in 1753 on a server.
inline bool IsInCalendar(qint64 ticks, bool file) {
    return ticks >= DaysOf(file ? 100 : 1753, 1, 1) * TicksPerDay &&
           ticks < DaysOf(10000, 1, 1) * TicksPerDay;
}

}  // namespace zephrin::ado::providers::sqlite
