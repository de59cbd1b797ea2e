#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

enum class DatePart {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond
};

std::optional<DatePart> PartOf(const QString& name) {
    struct Spelling {
        const char* Words;
        DatePart Part;
    };
    // Both families of dialects, which agree where they share a word.
    static constexpr std::array spellings{
        Spelling{" year yy yyyy ", DatePart::Year},
        Spelling{" quarter qq q ", DatePart::Quarter},
        Spelling{" month mm m ", DatePart::Month},
        Spelling{" dayofyear dy y ", DatePart::DayOfYear},
        Spelling{" day dd d ", DatePart::Day},
        Spelling{" week wk ww ", DatePart::Week},
        Spelling{" weekday dw w ", DatePart::Weekday},
        Spelling{" hour hh h ", DatePart::Hour},
        Spelling{" minute mi n ", DatePart::Minute},
        Spelling{" second ss s ", DatePart::Second},
        Spelling{" millisecond ms ", DatePart::Millisecond},
    };
    const QString word = u' ' + name.trimmed().toLower() + u' ';
    for (const Spelling& spelling : spellings)
        if (QLatin1StringView(spelling.Words).contains(word)) return spelling.Part;
    return std::nullopt;
}

std::optional<DatePart> PartArgument(Call& call) {
    const std::optional<DatePart> part = PartOf(call.Text(0));
    if (!part)
        call.Fail(QStringLiteral("'%1' is not a recognized datepart option.").arg(call.Text(0)),
                  QStringLiteral("Invalid procedure call: '%1' is no interval of a date.").arg(call.Text(0)));
    return part;
}

constexpr qint64 TicksPerHour = 3600 * TicksPerSecond;
constexpr qint64 TicksPerMinute = 60 * TicksPerSecond;
constexpr qint64 TicksPerMillisecond = TicksPerSecond / 1000;

/// From Sunday, 1.
int WeekdayOf(qint64 days) {
    return int(((days + 4) % 7 + 7) % 7) + 1;
}

qint64 FirstOfYear(qint64 ticks) {
    return DaysOf(CivilOf(DayPart(ticks)).Year, 1, 1);
}

qint64 PartValue(qint64 ticks, DatePart part) {
    const qint64 days = DayPart(ticks);
    const CivilDate date = CivilOf(days);
    const qint64 time = TimePart(ticks);
    switch (part) {
        case DatePart::Year:
            return date.Year;
        case DatePart::Quarter:
            return (date.Month + 2) / 3;
        case DatePart::Month:
            return date.Month;
        case DatePart::DayOfYear:
            return days - FirstOfYear(ticks) + 1;
        case DatePart::Day:
            return date.Day;
        // The week of January 1 is the first one, Sunday its first day.
        case DatePart::Week:
            return (days - FirstOfYear(ticks) + WeekdayOf(FirstOfYear(ticks)) - 1) / 7 + 1;
        case DatePart::Weekday:
            return WeekdayOf(days);
        case DatePart::Hour:
            return time / TicksPerHour;
        case DatePart::Minute:
            return time / TicksPerMinute % 60;
        case DatePart::Second:
            return time / TicksPerSecond % 60;
        case DatePart::Millisecond:
            return time / TicksPerMillisecond % 1000;
    }
    return 0;
}

template <DatePart Part>
void Extract(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<qint64> ticks = call.Date(0)) call.Return(PartValue(*ticks, Part));
}

void Weekday(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> ticks = call.Date(0);
    const std::optional<qint64> first = call.Count() > 1 ? call.Whole(1) : std::optional<qint64>(1);
    if (!ticks || !first) return;
    if (*first < 0 || *first > 7) return call.FailArgument(QStringLiteral("Weekday"));
    call.Return((WeekdayOf(DayPart(*ticks)) - std::max<qint64>(*first, 1) + 7) % 7 + 1);
}

void DatePartOf(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<DatePart> part = PartArgument(call);
    const std::optional<qint64> ticks = part ? call.Date(1) : std::nullopt;
    if (ticks) call.Return(PartValue(*ticks, *part));
}

void DateName(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<DatePart> part = PartArgument(call);
    const std::optional<qint64> ticks = part ? call.Date(1) : std::nullopt;
    if (!ticks) return;
    const qint64 value = PartValue(*ticks, *part);
    if (*part == DatePart::Month) return call.Return(QLocale::c().monthName(int(value)));
    if (*part == DatePart::Weekday) return call.Return(QLocale::c().dayName(value == 1 ? 7 : int(value) - 1));
    call.Return(QString::number(value));
}

/// The last day of a shorter month stands for a day that it doesn't have.
std::optional<qint64> AddMonths(qint64 ticks, qint64 months) {
    const CivilDate date = CivilOf(DayPart(ticks));
    const qint64 all = qint64(date.Year) * 12 + date.Month - 1 + months;
    const qint64 year = all / 12;
    if (all < 0 || year < 1 || year > 9999) return std::nullopt;
    const int month = int(all % 12) + 1;
    const qint64 first = DaysOf(int(year), month, 1);
    const qint64 next = month == 12 ? DaysOf(int(year) + 1, 1, 1) : DaysOf(int(year), month + 1, 1);
    return std::min(first + date.Day - 1, next - 1) * TicksPerDay + TimePart(ticks);
}

qint64 UnitOf(DatePart part) {
    switch (part) {
        case DatePart::Week:
            return 7 * TicksPerDay;
        case DatePart::Hour:
            return TicksPerHour;
        case DatePart::Minute:
            return TicksPerMinute;
        case DatePart::Second:
            return TicksPerSecond;
        case DatePart::Millisecond:
            return TicksPerMillisecond;
        default:
            return TicksPerDay;
    }
}

/// `early`: the date comes from before the calendar of datetime, so it is a plain day, which reaches back to
/// the year 1.
void ReturnInCalendar(Call& call, std::optional<qint64> ticks, bool early = false) {
    const bool inside =
        ticks && (IsInCalendar(*ticks, call.IsFile()) || (early && *ticks >= DaysOf(1, 1, 1) * TicksPerDay &&
                                                          *ticks < DaysOf(1753, 1, 1) * TicksPerDay));
    if (inside) return call.ReturnDate(*ticks);
    call.Fail(QStringLiteral("Adding a value to a date caused an overflow."),
              QStringLiteral("Invalid procedure call: the date is out of range."));
}

/// The sum, unless it leaves what can be counted in ticks.
std::optional<qint64> Moved(qint64 ticks, double units, qint64 unit) {
    const double distance = units * double(unit);
    if (!(std::fabs(distance) < 4e18)) return std::nullopt;
    return ticks + qint64(units) * unit;
}

void DateAdd(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<DatePart> part = PartArgument(call);
    const std::optional<double> number = part ? call.Number(1) : std::nullopt;
    const std::optional<qint64> ticks = number ? call.Date(2) : std::nullopt;
    if (!ticks) return;
    const double units = call.IsFile() ? std::nearbyint(*number) : std::trunc(*number);
    const int months = *part == DatePart::Year      ? 12
                       : *part == DatePart::Quarter ? 3
                       : *part == DatePart::Month   ? 1
                                                    : 0;
    const bool early = !call.IsFile() && !IsInCalendar(*ticks, false);
    if (months == 0) return ReturnInCalendar(call, Moved(*ticks, units, UnitOf(*part)), early);
    ReturnInCalendar(call, std::fabs(units) < 1e6 ? AddMonths(*ticks, qint64(units) * months) : std::nullopt,
                     early);
}

qint64 FloorDivided(qint64 value, qint64 by) {
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

/// Counts the boundaries between two dates, not whole units: December 31 and January 1 are a year apart.
void DateDiff(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<DatePart> part = PartArgument(call);
    const std::optional<qint64> from = part ? call.Date(1) : std::nullopt;
    const std::optional<qint64> to = from ? call.Date(2) : std::nullopt;
    if (!to) return;
    const CivilDate first = CivilOf(DayPart(*from));
    const CivilDate last = CivilOf(DayPart(*to));
    const auto boundaries = [&](qint64 unit) { return FloorDivided(*to, unit) - FloorDivided(*from, unit); };
    switch (*part) {
        case DatePart::Year:
            return call.Return(qint64(last.Year - first.Year));
        case DatePart::Quarter:
            return call.Return(
                qint64((last.Year - first.Year) * 4 + (last.Month + 2) / 3 - (first.Month + 2) / 3));
        case DatePart::Month:
            return call.Return(qint64((last.Year - first.Year) * 12 + last.Month - first.Month));
        // Weeks begin on Sunday, which 1970-01-04 was.
        case DatePart::Week:
            return call.Return(FloorDivided(DayPart(*to) - 3, 7) - FloorDivided(DayPart(*from) - 3, 7));
        default:
            return call.Return(boundaries(UnitOf(*part)));
    }
}

qint64 LocalNow() {
    const QDateTime now = QDateTime::currentDateTime();
    const QDate day = now.date();
    return DaysOf(day.year(), day.month(), day.day()) * TicksPerDay +
           now.time().msecsSinceStartOfDay() * TicksPerMillisecond;
}

void Now(Call& call) {
    const qint64 now = LocalNow();
    // The clock of a file dialect goes by seconds.
    call.ReturnDate(call.IsFile() ? now - now % TicksPerSecond : now);
}

void Today(Call& call) {
    call.ReturnDate(DayPart(LocalNow()) * TicksPerDay);
}

void Time(Call& call) {
    const qint64 time = TimePart(LocalNow());
    call.ReturnDate(DayZero(true) * TicksPerDay + time - time % TicksPerSecond);
}

/// Months and days out of range carry over: the day 0 is the last of the month before.
void DateSerial(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> year = call.Whole(0);
    const std::optional<qint64> month = year ? call.Whole(1) : year;
    const std::optional<qint64> day = month ? call.Whole(2) : month;
    if (!day) return;
    if (*year < 0 || *year > 9999 || std::abs(double(*month)) > 120'000 || std::abs(double(*day)) > 4'000'000)
        return call.FailArgument(QStringLiteral("DateSerial"));
    const int full = int(*year < 30 ? *year + 2000 : *year < 100 ? *year + 1900 : *year);
    const std::optional<qint64> first = AddMonths(DaysOf(full, 1, 1) * TicksPerDay, *month - 1);
    ReturnInCalendar(call, first ? Moved(*first, double(*day - 1), TicksPerDay) : first);
}

void DateValue(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<qint64> ticks = call.Date(0)) call.ReturnDate(DayPart(*ticks) * TicksPerDay);
}

/// The stored form of whatever is a date.
void AsDate(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<qint64> ticks = call.Date(0)) call.ReturnDate(*ticks);
}

/// The same for what a column holds: once for every row, and what is no date stays as it is.
void AsStoredDate(Call& call) {
    if (call.Storage(0) != SQLITE_TEXT) return call.ReturnArgument(0);
    const char* const text =
        static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(call.Raw(0))));
    const int bytes = sqlite3_value_bytes(call.Raw(0));
    const std::optional<qint64> ticks = ReadIsoDate(text, bytes);
    // A plain day, the usual case, is in its form already.
    if (bytes == 10 || !ticks) return call.ReturnArgument(0);
    call.ReturnDate(*ticks);
}

void IsDate(Call& call) {
    const bool date = call.Storage(0) == SQLITE_TEXT && ReadDate(call.Text(0), call.IsFile());
    call.Return(qint64(!date ? 0 : call.IsFile() ? -1 : 1));
}

/// A date moved by days. Either side may be a date: it counts as the days since the first of the calendar.
template <int Direction>
void DateMoved(Call& call) {
    if (call.IsNull(0) || call.IsNull(1)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(2);
    const std::optional<qint64> left = call.Date(0);
    const std::optional<qint64> right = left ? call.Date(1) : left;
    if (!left || !right) return;
    const qint64 zero = DayZero(call.IsFile()) * TicksPerDay;
    const qint64 ticks = *left + Direction * (*right - zero);
    if (IsInCalendar(ticks, call.IsFile())) return call.ReturnDate(ticks);
    call.FailAt(spec.Position, FailureNumber::Overflow,
                call.IsFile() ? QStringLiteral("Invalid procedure call: the date is out of range.")
                              : QStringLiteral("Adding a value to a 'datetime' column caused an overflow."));
}

void DaysBetween(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> last = call.Date(0);
    const std::optional<qint64> first = last ? call.Date(1) : last;
    if (first) call.Return(double(*last - *first) / double(TicksPerDay));
}

}  // namespace

QString GeneralDate(qint64 ticks) {
    const CivilDate date = CivilOf(DayPart(ticks));
    const int seconds = int(TimePart(ticks) / TicksPerSecond);
    QString text;
    if (DayPart(ticks) != DayZero(true))
        text = QStringLiteral("%1/%2/%3").arg(date.Month).arg(date.Day).arg(date.Year);
    if (seconds != 0 || text.isEmpty())
        text += QStringLiteral("%1%2:%3:%4 %5")
                    .arg(text.isEmpty() ? QString() : QStringLiteral(" "))
                    .arg((seconds / 3600 + 11) % 12 + 1)
                    .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                    .arg(seconds % 60, 2, 10, QLatin1Char('0'))
                    .arg(seconds < 43'200 ? QStringLiteral("AM") : QStringLiteral("PM"));
    return text;
}

QList<FunctionEntry> DateFunctions() {
    return {
        {"zx_day", 1, 1, Extract<DatePart::Day>},
        {"zx_month", 1, 1, Extract<DatePart::Month>},
        {"zx_year", 1, 1, Extract<DatePart::Year>},
        {"zx_hour", 1, 1, Extract<DatePart::Hour>},
        {"zx_minute", 1, 1, Extract<DatePart::Minute>},
        {"zx_second", 1, 1, Extract<DatePart::Second>},
        {"zx_weekday", 1, 2, Weekday},
        {"zx_datepart", 2, 2, DatePartOf},
        {"zx_datename", 2, 2, DateName},
        {"zx_dateadd", 3, 3, DateAdd},
        {"zx_datediff", 3, 3, DateDiff},
        {"zx_dateserial", 3, 3, DateSerial},
        {"zx_datevalue", 1, 1, DateValue},
        {"zx_now", 0, 0, Now, false},
        {"zx_today", 0, 0, Today, false},
        {"zx_time", 0, 0, Time, false},
        {"zx_date", 1, 1, AsDate},
        {"zx_stored_date", 1, 1, AsStoredDate},
        {"zx_isdate", 1, 1, IsDate},
        {"zx_date_plus", 3, 3, DateMoved<1>},
        {"zx_date_minus", 3, 3, DateMoved<-1>},
        {"zx_days_between", 2, 2, DaysBetween},
    };
}

}  // namespace zephrin::ado::providers::sqlite
