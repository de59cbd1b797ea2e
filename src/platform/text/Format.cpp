#include "platform/text/Text.h"

#include <array>
#include <utility>

namespace zephrin::text {

namespace {

/// The forms of the United States are also those of the C locale, which has none of its own.
bool IsPlainLocale(const QLocale& locale) {
    return locale.language() == QLocale::C || locale == QLocale(QLocale::English, QLocale::UnitedStates);
}

const QLocale& English() {
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return english;
}

QString Digits(int value, qsizetype width) {
    return QString::number(value).rightJustified(width, u'0');
}

/// One Format call: walks the format and appends what each token stands for.
class Writer {
 public:
    Writer(const QDateTime& dateTime, QStringView format, const QLocale& users)
        : value(dateTime),
          rest(format),
          locale(IsPlainLocale(users) ? English() : users),
          plain(IsPlainLocale(users)) {
        halfDays = HoldsHalfDay(format);
    }

    QString Write() {
        while (!rest.isEmpty()) WriteNext();
        return out;
    }

 private:
    struct HalfDayToken {
        QLatin1StringView Text;
        qsizetype Letters;  ///< how many letters of "AM" are written
    };
    static constexpr std::array<HalfDayToken, 3> halfDayTokens{
        {{QLatin1StringView("am/pm"), 2}, {QLatin1StringView("ampm"), 2}, {QLatin1StringView("a/p"), 1}}};

    static const HalfDayToken* HalfDayAt(QStringView text) {
        for (const HalfDayToken& token : halfDayTokens)
            if (text.startsWith(token.Text, Qt::CaseInsensitive)) return &token;
        return nullptr;
    }

    /// A format with AM or PM anywhere writes its hours from 1 to 12.
    static bool HoldsHalfDay(QStringView format) {
        bool quoted = false;
        for (qsizetype at = 0; at < format.size(); ++at) {
            if (format.at(at) == u'"') quoted = !quoted;
            if (format.at(at) == u'\\')
                ++at;
            else if (!quoted && HalfDayAt(format.sliced(at)))
                return true;
        }
        return false;
    }

    QString Nested(const QString& format) const { return Format(value, format, locale); }
    QString ShortDate() const {
        return plain ? Nested(QStringLiteral("m/d/yyyy"))
                     : locale.toString(value.date(), QLocale::ShortFormat);
    }
    QString LongDate() const {
        return plain ? Nested(QStringLiteral("dddd, mmmm d, yyyy"))
                     : locale.toString(value.date(), QLocale::LongFormat);
    }
    QString LongTime() const {
        return plain ? Nested(QStringLiteral("h:nn:ss AM/PM"))
                     : locale.toString(value.time(), QStringLiteral("HH:mm:ss"));
    }
    /// The date, the time, or both: a day of none and midnight are left out, but never both.
    QString General() const {
        const bool hasDate = value.date() != QDate(1899, 12, 30);
        const bool hasTime = value.time() != QTime(0, 0);
        if (hasDate && hasTime) return ShortDate() + u' ' + LongTime();
        return hasDate ? ShortDate() : LongTime();
    }

    int Hour() const {
        const int hour = value.time().hour();
        return halfDays ? (hour + 11) % 12 + 1 : hour;
    }
    int WeekDay() const { return value.date().dayOfWeek() % 7 + 1; }
    int Week() const {
        const int before = QDate(value.date().year(), 1, 1).dayOfWeek() % 7;
        return (value.date().dayOfYear() - 1 + before) / 7 + 1;
    }

    QString Day(qsizetype count) const {
        switch (count) {
            case 1:
            case 2:
                return Digits(value.date().day(), count);
            case 3:
                return locale.dayName(value.date().dayOfWeek(), QLocale::ShortFormat);
            case 4:
                return locale.dayName(value.date().dayOfWeek(), QLocale::LongFormat);
            case 5:
                return ShortDate();
            default:
                return LongDate();
        }
    }
    QString Month(qsizetype count) const {
        if (count <= 2) return Digits(value.date().month(), count);
        return locale.monthName(value.date().month(),
                                count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
    }
    QString Year(qsizetype count) const {
        if (count == 1) return QString::number(value.date().dayOfYear());
        return count == 2 ? Digits(value.date().year() % 100, 2) : Digits(value.date().year(), 4);
    }

    /// How many times the first letter of the rest repeats, but no more than `limit`.
    qsizetype Repeats(qsizetype limit) const {
        qsizetype count = 1;
        while (count < limit && count < rest.size() && rest.at(count).toLower() == rest.front().toLower())
            ++count;
        return count;
    }

    void Literal(qsizetype skip, QStringView text) {
        out += text;
        rest = rest.sliced(skip);
    }

    void WriteNext() {
        const QChar c = rest.front().toLower();
        if (c == u'"') {
            const qsizetype close = rest.indexOf(u'"', 1);
            const QStringView text = close < 0 ? rest.sliced(1) : rest.sliced(1, close - 1);
            return Literal(close < 0 ? rest.size() : close + 1, text);
        }
        if (c == u'\\')
            return Literal(qMin<qsizetype>(2, rest.size()),
                           rest.sliced(1, qMin<qsizetype>(1, rest.size() - 1)));
        if (const HalfDayToken* token = HalfDayAt(rest)) return WriteHalfDay(*token);
        if (!WriteToken(c)) Literal(1, rest.left(1));
    }

    void WriteHalfDay(const HalfDayToken& token) {
        const QString half = value.time().hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
        const bool lower = rest.front().isLower();
        Literal(token.Text.size(), (lower ? half.toLower() : half).left(token.Letters));
    }

    /// Writes the token that begins with the letter `c`; false when none does.
    bool WriteToken(QChar c) {
        const bool wasHour = std::exchange(afterHour, false);
        const auto put = [this](qsizetype count, const QString& text) {
            Literal(count, text);
            return true;
        };
        switch (c.unicode()) {
            case u'd':
                return put(Repeats(6), Day(Repeats(6)));
            case u'm': {
                if (wasHour) return put(Repeats(2), Digits(value.time().minute(), Repeats(2)));
                return put(Repeats(4), Month(Repeats(4)));
            }
            case u'y': {
                const qsizetype count = Repeats(4) == 3 ? 2 : Repeats(4);
                return put(count, Year(count));
            }
            case u'w':
                return put(Repeats(2), QString::number(Repeats(2) == 1 ? WeekDay() : Week()));
            case u'q':
                return put(1, QString::number((value.date().month() + 2) / 3));
            case u'h': {
                afterHour = true;
                return put(Repeats(2), Digits(Hour(), Repeats(2)));
            }
            case u'n':
                return put(Repeats(2), Digits(value.time().minute(), Repeats(2)));
            case u's':
                return put(Repeats(2), Digits(value.time().second(), Repeats(2)));
            case u'c':
                return put(1, General());
            case u't':
                return Repeats(5) == 5 && put(5, LongTime());
            default: {
                // What stands between an hour and its minutes does not part them.
                afterHour = wasHour;
                return false;
            }
        }
    }

    QDateTime value;
    QStringView rest;
    QLocale locale;
    bool plain;
    bool halfDays = false;
    /// The last token written was an hour, so that "m" means minutes.
    bool afterHour = false;
    QString out;
};

/// The format that a name stands for, or the text itself.
QString Resolve(QStringView format) {
    static constexpr std::array<std::pair<QLatin1StringView, QLatin1StringView>, 7> named{
        {{QLatin1StringView("general date"), QLatin1StringView("c")},
         {QLatin1StringView("long date"), QLatin1StringView("dddddd")},
         {QLatin1StringView("medium date"), QLatin1StringView("dd-mmm-yy")},
         {QLatin1StringView("short date"), QLatin1StringView("ddddd")},
         {QLatin1StringView("long time"), QLatin1StringView("ttttt")},
         {QLatin1StringView("medium time"), QLatin1StringView("hh:nn AM/PM")},
         {QLatin1StringView("short time"), QLatin1StringView("hh:nn")}}};
    for (const auto& [name, meaning] : named)
        if (format.compare(name, Qt::CaseInsensitive) == 0) return meaning;
    return format.isEmpty() ? QStringLiteral("c") : format.toString();
}

}  // namespace

QString Format(const QDateTime& value, QStringView format, const QLocale& locale) {
    if (!value.isValid()) return {};
    const QString resolved = Resolve(format);
    return Writer(value, resolved, locale).Write();
}

}  // namespace zephrin::text
