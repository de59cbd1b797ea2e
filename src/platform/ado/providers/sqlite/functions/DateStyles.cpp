#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

/// A style of CONVERT as a picture: Y four and y two digits of the year, M and D the month and day, b the
/// month's name, d the day filled up with a blank, H the hour of 24, h of 12 filled up with a blank, m s f
/// minutes, seconds, milliseconds, p the half of the day; anything else stands for itself.
struct Style {
    int Number;
    const char* Picture;
};

constexpr std::array styles{
    Style{0, "b d Y h:mp"},
    Style{1, "M/D/y"},
    Style{2, "y.M.D"},
    Style{3, "D/M/y"},
    Style{4, "D.M.y"},
    Style{5, "D-M-y"},
    Style{6, "D b y"},
    Style{7, "b D, y"},
    Style{8, "H:m:s"},
    Style{9, "b d Y h:m:s:fp"},
    Style{10, "M-D-y"},
    Style{11, "y/M/D"},
    Style{12, "yMD"},
    Style{13, "D b Y H:m:s:f"},
    Style{14, "H:m:s:f"},
    Style{20, "Y-M-D H:m:s"},
    Style{21, "Y-M-D H:m:s.f"},
    Style{22, "M/D/y h:m:s \1"},
    Style{23, "Y-M-D"},
    Style{24, "H:m:s"},
    Style{25, "Y-M-D H:m:s.f"},
    Style{100, "b d Y h:mp"},
    Style{101, "M/D/Y"},
    Style{102, "Y.M.D"},
    Style{103, "D/M/Y"},
    Style{104, "D.M.Y"},
    Style{105, "D-M-Y"},
    Style{106, "D b Y"},
    Style{107, "b D, Y"},
    Style{108, "H:m:s"},
    Style{109, "b d Y h:m:s:fp"},
    Style{110, "M-D-Y"},
    Style{111, "Y/M/D"},
    Style{112, "YMD"},
    Style{113, "D b Y H:m:s:f"},
    Style{114, "H:m:s:f"},
    Style{120, "Y-M-D H:m:s"},
    Style{121, "Y-M-D H:m:s.f"},
    Style{126, "Y-M-DTH:m:s\2"},
    Style{127, "Y-M-DTH:m:s\2"},
};

QString Two(int value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}
QString Three(int value) {
    return QStringLiteral("%1").arg(value, 3, 10, QLatin1Char('0'));
}
QString Filled(int value) {
    return QStringLiteral("%1").arg(value, 2);
}

QString Piece(char symbol, const CivilDate& date, qint64 time) {
    static constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const int seconds = int(time / TicksPerSecond);
    const int milliseconds = int(time % TicksPerSecond / (TicksPerSecond / 1000));
    const int hour = seconds / 3600;
    const QString half = hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
    switch (symbol) {
        case 'Y':
            return QStringLiteral("%1").arg(date.Year, 4, 10, QLatin1Char('0'));
        case 'y':
            return Two(date.Year % 100);
        case 'M':
            return Two(date.Month);
        case 'b':
            return QString::fromLatin1(months[size_t(date.Month - 1)]);
        case 'D':
            return Two(date.Day);
        case 'd':
            return Filled(date.Day);
        case 'H':
            return Two(hour);
        case 'h':
            return Filled((hour + 11) % 12 + 1);
        case 'm':
            return Two(seconds / 60 % 60);
        case 's':
            return Two(seconds % 60);
        case 'f':
            return Three(milliseconds);
        case 'p':
        case '\1':
            return half;
        // A fraction only where there is one.
        case '\2':
            return milliseconds == 0 ? QString() : u'.' + Three(milliseconds);
        default:
            return QString(QLatin1Char(symbol));
    }
}

}  // namespace

std::optional<QString> DateInStyle(qint64 ticks, int number) {
    for (const Style& style : styles) {
        if (style.Number != number) continue;
        const CivilDate date = CivilOf(DayPart(ticks));
        QString text;
        for (const char* symbol = style.Picture; *symbol != 0; ++symbol)
            text += Piece(*symbol, date, TimePart(ticks));
        return text;
    }
    return std::nullopt;
}

DateOrder OrderOfStyle(int style) {
    switch (style % 100) {
        case 3:
        case 4:
        case 5:
        case 6:
        case 13:
            return DateOrder::DayFirst;
        case 2:
        case 11:
        case 12:
            return DateOrder::YearFirst;
        default:
            return DateOrder::MonthFirst;
    }
}

}  // namespace zephrin::ado::providers::sqlite
