#include "platform/ado/providers/sqlite/values/DateText.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

struct Part {
    int Value = 0;
    int Digits = 0;
};

/// Digits of other scripts are no part of a date: a statement or a file that has them is refused, not guessed
/// at.
bool IsDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// Reads one date, piece by piece, in whatever order its pieces come.
class DateReader {
 public:
    DateReader(QStringView source, bool asFile, DateOrder expected)
        : text(source), file(asFile), order(expected) {}

    std::optional<qint64> Read() {
        while (at < text.size()) {
            const QChar next = text[at];
            bool understood = true;
            if (IsDigit(next))
                understood = ReadNumber();
            else if (next.isLetter())
                understood = ReadWord();
            else if (QStringView(u" /-.,\t").contains(next))
                ++at;
            else
                understood = false;
            if (!understood) return std::nullopt;
        }
        return Assemble();
    }

 private:
    Part TakeDigits() {
        Part part;
        while (at < text.size() && IsDigit(text[at]) && part.Digits < 9) {
            part.Value = part.Value * 10 + text[at].digitValue();
            ++part.Digits;
            ++at;
        }
        return part;
    }

    QString TakeLetters() {
        const qsizetype from = at;
        while (at < text.size() && text[at].isLetter()) ++at;
        return text.sliced(from, at - from).toString().toLower();
    }

    bool ReadNumber() {
        const Part part = TakeDigits();
        if (at < text.size() && text[at] == u':') return ReadTime(part.Value);
        if (AtHalfOfDay()) {
            hours = part.Value;
            return !std::exchange(hasTime, true);
        }
        if (count == numbers.size()) return false;
        numbers[count++] = part;
        return true;
    }

    /// True where only am or pm follows, which makes the number in front an hour.
    bool AtHalfOfDay() const {
        const QString rest = text.sliced(at).trimmed().toString().toLower();
        return rest.startsWith(u"am") || rest.startsWith(u"pm");
    }

    bool ReadTime(int hour) {
        if (std::exchange(hasTime, true)) return false;
        hours = hour;
        ++at;
        const Part minute = TakeDigits();
        minutes = minute.Value;
        if (minute.Digits == 0) return false;
        if (at >= text.size() || text[at] != u':') return true;
        ++at;
        const Part second = TakeDigits();
        seconds = second.Value;
        if (second.Digits == 0) return false;
        if (at + 1 < text.size() && (text[at] == u'.' || text[at] == u':') && IsDigit(text[at + 1])) {
            ++at;
            const Part part = TakeDigits();
            fraction = part.Value;
            for (int digits = part.Digits; digits < 7; ++digits) fraction *= 10;
            for (int digits = part.Digits; digits > 7; --digits) fraction /= 10;
        }
        return true;
    }

    bool ReadWord() {
        static constexpr std::array months{"january",   "february", "march",    "april",
                                           "may",       "june",     "july",     "august",
                                           "september", "october",  "november", "december"};
        const QString word = TakeLetters();
        // Midnight is also written as 0:00 am.
        if ((word == u"am" || word == u"pm") && hasTime && hours >= (word == u"am" ? 0 : 1) && hours <= 12) {
            hours = hours % 12 + (word == u"pm" ? 12 : 0);
            return true;
        }
        // What joins the date and the time of the standard form.
        if (word == u"t" && count == numbers.size() && !hasTime) return true;
        for (int index = 0; index < 12; ++index) {
            if (word.size() < 3 || !QLatin1StringView(months[size_t(index)]).startsWith(word)) continue;
            return std::exchange(month, index + 1) == 0;
        }
        return false;
    }

    int FullYear(const Part& part) const {
        if (part.Digits > 2) return part.Value;
        return part.Value + (part.Value < (file ? 30 : 50) ? 2000 : 1900);
    }

    std::optional<qint64> Assemble() const {
        if (hours > 23 || minutes > 59 || seconds > 59) return std::nullopt;
        const qint64 time = ((hours * 60LL + minutes) * 60 + seconds) * TicksPerSecond + fraction;
        if (count == 0 && month == 0) {
            if (!hasTime) return std::nullopt;
            return DayZero(file) * TicksPerDay + time;
        }
        const std::optional<qint64> day = AssembleDay();
        if (!day) return std::nullopt;
        return *day * TicksPerDay + time;
    }

    std::optional<qint64> AssembleDay() const {
        const Part& first = numbers[0];
        const Part& second = numbers[1];
        const Part& third = numbers[2];
        if (month > 0) {
            // The year is what has four digits, else what comes last; a month and a year alone mean its first
            // day.
            if (count == 1 && first.Digits == 4) return Day(first.Value, month, 1);
            if (count != 2) return std::nullopt;
            return first.Digits > 2 ? Day(first.Value, month, second.Value)
                                    : Day(FullYear(second), month, first.Value);
        }
        if (count == 1 && first.Digits == 8)
            return Day(first.Value / 10'000, first.Value / 100 % 100, first.Value % 100);
        if (count == 1 && first.Digits == 6)
            return Day(FullYear({first.Value / 10'000, 2}), first.Value / 100 % 100, first.Value % 100);
        if (count != 3) return std::nullopt;
        if (first.Digits > 2) return Day(first.Value, second.Value, third.Value);
        if (order == DateOrder::YearFirst) return Day(FullYear(first), second.Value, third.Value);
        const bool dayFirst = order == DateOrder::DayFirst;
        const int ofMonth = dayFirst ? second.Value : first.Value;
        const int ofDay = dayFirst ? first.Value : second.Value;
        if (file && ofMonth > 12) return Day(FullYear(third), ofDay, ofMonth);
        return Day(FullYear(third), ofMonth, ofDay);
    }

    static std::optional<qint64> Day(int year, int month, int day) {
        if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
        const qint64 days = DaysOf(year, month, day);
        const CivilDate back = CivilOf(days);
        if (back.Day != day || back.Month != month) return std::nullopt;
        return days;
    }

    QStringView text;
    bool file;
    DateOrder order;
    qsizetype at = 0;
    std::array<Part, 3> numbers{};
    size_t count = 0;
    int month = 0;
    bool hasTime = false;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    qint64 fraction = 0;
};

}  // namespace

std::optional<qint64> ReadDate(QStringView text, bool file, DateOrder order) {
    const QByteArray plain = text.trimmed().toUtf8();
    // A time alone stands on the dialect's own day zero, so it is not read as a stored form.
    if (plain.size() >= 10 && plain[2] != ':')
        if (const std::optional<qint64> stored = ReadIsoDate(plain.constData(), plain.size())) return stored;
    return DateReader(text.trimmed(), file, order).Read();
}

}  // namespace zephrin::ado::providers::sqlite
