#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/text/Text.h"

#include <array>
#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

QDateTime MomentOf(qint64 ticks) {
    const CivilDate date = CivilOf(DayPart(ticks));
    return QDateTime(QDate(date.Year, date.Month, date.Day),
                     QTime::fromMSecsSinceStartOfDay(int(TimePart(ticks) / (TicksPerSecond / 1000))),
                     Qt::UTC);
}

// --- Files: the classic Format
// ------------------------------------------------------------------------------

/// A text is taken as a number or a date where the format asks for one; @ & < and > place and fold its
/// characters.
QString TextInFormat(const QString& text, QStringView format) {
    if (text::IsNumberFormat(format)) {
        const std::optional<double> number = text::ToNumber(text);
        return number ? text::FormatNumber(*number, format) : text;
    }
    const bool places = format.contains(u'@') || format.contains(u'&');
    if (!places && !format.contains(u'<') && !format.contains(u'>')) {
        const std::optional<qint64> ticks = ReadDate(text, true);
        return ticks && !format.isEmpty() ? text::Format(MomentOf(*ticks), format, QLocale::c()) : text;
    }
    const bool leftFirst = format.contains(u'!');
    const qsizetype count = format.count(u'@') + format.count(u'&');
    // Places are filled from the right, unless ! says otherwise; what is left over stands in front or behind.
    qsizetype at = leftFirst ? 0 : text.size() - count;
    QString out = !leftFirst && at > 0 ? text.left(at) : QString();
    for (const QChar next : format) {
        if (next == u'@' || next == u'&') {
            const bool there = at >= 0 && at < text.size();
            if (there || next == u'@') out += there ? text[at] : u' ';
            ++at;
        } else if (next != u'!' && next != u'<' && next != u'>') {
            out += next;
        }
    }
    if (at >= 0 && at < text.size()) out += text.sliced(at);
    return format.contains(u'<') ? out.toLower() : format.contains(u'>') ? out.toUpper() : out;
}

QString NumberInFormat(double value, const QString& format) {
    if (format.isEmpty() || text::IsNumberFormat(format)) return text::FormatNumber(value, format);
    if (format.contains(u'@') || format.contains(u'<') || format.contains(u'>') || format.contains(u'&'))
        return TextInFormat(NumberText(value), format);
    // Anything else is a format of dates, to which a number is so many days.
    if (std::fabs(value) > 2'900'000) return NumberText(value);
    const double days = std::trunc(value);
    const qint64 ticks = (DayZero(true) + qint64(days)) * TicksPerDay +
                         std::llround(std::fabs(value - days) * 86'400.0) * TicksPerSecond;
    return text::Format(MomentOf(ticks), format, QLocale::c());
}

// --- Servers
// ------------------------------------------------------------------------------------------------

/// The picture that a letter and perhaps a number of places stand for; nothing where it stands for none.
std::optional<QString> StandardPicture(QChar letter, int places, double value) {
    const auto fraction = [&](int usual) {
        const int count = places < 0 ? usual : places;
        return count > 0 ? u'.' + QString(count, u'0') : QString();
    };
    switch (letter.toUpper().unicode()) {
        case u'N':
            return QStringLiteral("#,##0") + fraction(2);
        case u'F':
            return u'0' + fraction(2);
        case u'P':
            return QStringLiteral("#,##0") + fraction(2) + QStringLiteral(" %");
        case u'C':
            return QStringLiteral("$#,##0%1;($#,##0%1)").arg(fraction(2));
        case u'E':
            return u'0' + fraction(6) + letter + QStringLiteral("+000");
        case u'D':
            if (value != std::trunc(value)) return std::nullopt;
            return QString(std::max(places, 1), u'0');
        default:
            return std::nullopt;
    }
}

std::optional<QString> ServerNumber(double value, const QString& format, const QLocale& locale) {
    bool isPlaces = true;
    const int places = format.size() > 1 ? QStringView(format).sliced(1).toInt(&isPlaces) : -1;
    if (format.isEmpty() || !format.front().isLetter() || !isPlaces || format.size() > 3)
        return text::FormatNumber(value, format, text::PictureStyle::Server, locale);
    const char16_t letter = format.front().toUpper().unicode();
    if (letter == u'G' || letter == u'R')
        return locale.toString(value, 'g', letter == u'G' && places > 0 ? places : 15);
    if (letter == u'X') {
        if (value != std::trunc(value) || std::fabs(value) > 9e15) return std::nullopt;
        const QString digits =
            QString::number(quint64(qint64(value)), 16).rightJustified(std::max(places, 1), u'0');
        return format.front().isUpper() ? digits.toUpper() : digits;
    }
    const std::optional<QString> picture = StandardPicture(format.front(), places, value);
    if (!picture) return std::nullopt;
    return text::FormatNumber(value, *picture, text::PictureStyle::Server, locale);
}

struct StandardDate {
    char Letter;
    const char* Picture;
};

constexpr std::array standardDates{
    StandardDate{'d', "M/d/yyyy"},
    StandardDate{'D', "dddd, MMMM d, yyyy"},
    StandardDate{'t', "h:mm tt"},
    StandardDate{'T', "h:mm:ss tt"},
    StandardDate{'f', "dddd, MMMM d, yyyy h:mm tt"},
    StandardDate{'F', "dddd, MMMM d, yyyy h:mm:ss tt"},
    StandardDate{'g', "M/d/yyyy h:mm tt"},
    StandardDate{'G', "M/d/yyyy h:mm:ss tt"},
    StandardDate{'m', "MMMM d"},
    StandardDate{'M', "MMMM d"},
    StandardDate{'y', "MMMM yyyy"},
    StandardDate{'Y', "MMMM yyyy"},
    StandardDate{'s', "yyyy-MM-ddTHH:mm:ss"},
    StandardDate{'u', "yyyy-MM-dd HH:mm:ssZ"},
    StandardDate{'o', "yyyy-MM-ddTHH:mm:ss.fffffff"},
    StandardDate{'O', "yyyy-MM-ddTHH:mm:ss.fffffff"},
    StandardDate{'r', "ddd, dd MMM yyyy HH:mm:ss GMT"},
    StandardDate{'R', "ddd, dd MMM yyyy HH:mm:ss GMT"},
};

QString Padded(int value, qsizetype width) {
    return QString::number(value).rightJustified(width, u'0');
}

/// What a letter that is repeated so many times says of a date; nothing where it says nothing.
std::optional<QString> DatePiece(QChar letter, qsizetype count, qint64 ticks, const QLocale& locale) {
    const CivilDate date = CivilOf(DayPart(ticks));
    const int weekday = int(((DayPart(ticks) + 3) % 7 + 7) % 7) + 1;
    const int seconds = int(TimePart(ticks) / TicksPerSecond);
    const int hour = seconds / 3600;
    const qsizetype two = std::min<qsizetype>(count, 2);
    switch (letter.unicode()) {
        case u'd':
            if (count < 3) return Padded(date.Day, count);
            return locale.dayName(weekday, count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        case u'M':
            if (count < 3) return Padded(date.Month, count);
            return locale.monthName(date.Month, count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        case u'y':
            return count < 3 ? Padded(date.Year % 100, count) : Padded(date.Year, count);
        case u'H':
            return Padded(hour, two);
        case u'h':
            return Padded((hour + 11) % 12 + 1, two);
        case u'm':
            return Padded(seconds / 60 % 60, two);
        case u's':
            return Padded(seconds % 60, two);
        case u't':
            return (hour < 12 ? locale.amText() : locale.pmText()).left(count == 1 ? 1 : -1);
        case u'f':
        case u'F': {
            if (count > 7) return std::nullopt;
            QString fraction = Padded(int(TimePart(ticks) % TicksPerSecond), 7).left(count);
            while (letter == u'F' && fraction.endsWith(u'0')) fraction.chop(1);
            return fraction;
        }
        default:
            return std::nullopt;
    }
}

std::optional<QString> ServerDate(qint64 ticks, QString format, const QLocale& locale) {
    if (format.isEmpty()) format = QStringLiteral("G");
    if (format.size() == 1) {
        const auto found = std::find_if(
            standardDates.begin(), standardDates.end(),
            [&](const StandardDate& known) { return format.front() == QLatin1Char(known.Letter); });
        if (found == standardDates.end()) return std::nullopt;
        format = QString::fromLatin1(found->Picture);
    }
    QString out;
    for (qsizetype at = 0; at < format.size();) {
        const QChar next = format[at];
        if (next == u'\'' || next == u'"') {
            const qsizetype close = format.indexOf(next, at + 1);
            if (close < 0) return std::nullopt;
            out += QStringView(format).sliced(at + 1, close - at - 1);
            at = close + 1;
        } else if (next == u'\\' || next == u'%') {
            if (++at >= format.size()) return std::nullopt;
            if (next == u'\\') out += format[at++];
        } else {
            qsizetype end = at;
            while (end < format.size() && format[end] == next) ++end;
            const std::optional<QString> piece = DatePiece(next, end - at, ticks, locale);
            out += piece ? *piece : QString(end - at, next);
            at = end;
        }
    }
    return out;
}

/// The culture of the third argument. Only that of the United States has all the standard forms here:
/// `standard` says that the format is one of those whose look depends on the culture.
std::optional<QLocale> CultureOf(Call& call, const QString& format, bool standard) {
    const QString name = call.Count() > 2 ? call.Text(2) : QStringLiteral("en-US");
    if (name.compare(QLatin1StringView("en-us"), Qt::CaseInsensitive) == 0) return QLocale::c();
    const QLocale locale(QString(name).replace(u'-', u'_'));
    const bool known = locale.language() != QLocale::C;
    if (known && !standard) return locale;
    call.Fail(QStringLiteral("The culture parameter '%1' provided in the function call is not supported%2.")
                  .arg(name, known ? QStringLiteral(" with the format '%1'").arg(format) : QString()),
              QString());
    return std::nullopt;
}

void ReturnText(Call& call, const std::optional<QString>& text) {
    // A server gives Null for a format that it can't read.
    text ? call.Return(*text) : call.ReturnNull();
}

void FormatDate(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const QString format = call.Count() > 1 ? call.Text(1) : QString();
    const std::optional<qint64> ticks = call.Date(0);
    if (!ticks) return;
    if (call.IsFile()) {
        // A format of digits writes the days that the date is counted by.
        if (!format.isEmpty() && text::IsNumberFormat(format)) {
            const double days = double(*ticks - DayZero(true) * TicksPerDay) / double(TicksPerDay);
            return call.Return(text::FormatNumber(days, format));
        }
        return call.Return(text::Format(MomentOf(*ticks), format, QLocale::c()));
    }
    if (call.IsNull(1)) return call.ReturnNull();
    if (const std::optional<QLocale> culture = CultureOf(call, format, format.size() < 2))
        ReturnText(call, ServerDate(*ticks, format, *culture));
}

void FormatValue(Call& call) {
    // The classic Format writes nothing for Null.
    if (call.IsNull(0)) return call.IsFile() ? call.Return(QString()) : call.ReturnNull();
    const QString format = call.Count() > 1 ? call.Text(1) : QString();
    if (call.IsFile() && call.Storage(0) == SQLITE_TEXT)
        return call.Return(TextInFormat(call.Text(0), format));
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    if (call.IsFile()) return call.Return(NumberInFormat(*number, format));
    if (call.IsNull(1)) return call.ReturnNull();
    if (const std::optional<QLocale> culture =
            CultureOf(call, format, format.startsWith(u'C', Qt::CaseInsensitive)))
        ReturnText(call, ServerNumber(*number, format, *culture));
}

}  // namespace

QList<FunctionEntry> FormatFunctions() {
    return {
        {"zx_format_date", 1, 3, FormatDate},
        {"zx_format_value", 1, 3, FormatValue},
    };
}

}  // namespace zephrin::ado::providers::sqlite
