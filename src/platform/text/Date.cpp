#include "platform/text/Text.h"

#include <array>
#include <vector>

namespace zephrin::text {

namespace {

/// The day that stands for "no date" in a time of day.
const QDate& NoDate() {
    static const QDate day(1899, 12, 30);
    return day;
}

/// A piece of the text: a number, a word, or one separator. Blanks are no pieces; what follows one remembers
/// it.
struct Token {
    enum class Kind { Number, Word, Separator };
    Kind What;
    QStringView Text;
    bool BlankBefore = false;

    bool IsNumber() const { return What == Kind::Number; }
    bool Is(char16_t separator) const { return What == Kind::Separator && Text.front() == separator; }
    int Value() const { return Text.size() > 9 ? -1 : Text.toInt(); }
};

using Tokens = std::vector<Token>;

/// No date with a time has as many pieces; a long text need not be looked at to its end.
constexpr std::size_t tooManyTokens = 20;

/// The position behind the run of characters of one kind that begins at `from`.
template <typename Test>
qsizetype RunEnd(QStringView text, qsizetype from, Test belongs) {
    while (from < text.size() && belongs(text.at(from))) ++from;
    return from;
}

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

Tokens Split(QStringView text) {
    Tokens tokens;
    bool blank = false;
    for (qsizetype at = 0; at < text.size() && tokens.size() < tooManyTokens;) {
        const QChar c = text.at(at);
        if (c.isSpace()) {
            blank = true;
            ++at;
            continue;
        }
        Token token{Token::Kind::Separator, text.sliced(at, 1), std::exchange(blank, false)};
        if (IsAsciiDigit(c)) {
            token = {Token::Kind::Number, text.sliced(at, RunEnd(text, at, IsAsciiDigit) - at),
                     token.BlankBefore};
        } else if (c.isLetter()) {
            const auto letter = [](QChar each) { return each.isLetter() || each.isMark(); };
            token = {Token::Kind::Word, text.sliced(at, RunEnd(text, at, letter) - at), token.BlankBefore};
        }
        at += token.Text.size();
        tokens.push_back(token);
    }
    return tokens;
}

enum class HalfDay { None, Am, Pm };

HalfDay HalfDayOf(const Token& token) {
    if (token.What != Token::Kind::Word) return HalfDay::None;
    const auto is = [&](QLatin1StringView word) {
        return token.Text.compare(word, Qt::CaseInsensitive) == 0;
    };
    if (is(QLatin1StringView("am")) || is(QLatin1StringView("a"))) return HalfDay::Am;
    if (is(QLatin1StringView("pm")) || is(QLatin1StringView("p"))) return HalfDay::Pm;
    return HalfDay::None;
}

/// A time within the tokens: its first token, the one behind it, and its value where it is a possible one.
struct TimeSpan {
    std::size_t First = 0;
    std::size_t End = 0;
    QTime Time;
};

/// Hours of 13 and more may carry "pm" but not "am".
QTime TimeOf(int hour, int minute, int second, int millisecond, HalfDay half) {
    if (half == HalfDay::Am && hour > 12) return {};
    if (half == HalfDay::Am && hour == 12) hour = 0;
    if (half == HalfDay::Pm && hour < 12) hour += 12;
    return QTime(hour, minute, second, millisecond);
}

/// Thousandths of a second of the digits behind a point.
int Milliseconds(QStringView digits) {
    return digits.left(3).toString().leftJustified(3, u'0').toInt();
}

/// The time whose hour is token `at`: "h:m", "h:m:s", "h:m:s.f", "h.m", "h.m.s" or "h pm"; nothing when none
/// is there.
std::optional<TimeSpan> TimeAt(const Tokens& tokens, std::size_t at) {
    std::array<int, 3> parts{};
    int count = 0;
    std::size_t end = at;
    char16_t separator = u':';
    if (!tokens[at].IsNumber()) return {};
    parts[count++] = tokens[end++].Value();
    if (end < tokens.size() && tokens[end].Is(u'.')) separator = u'.';
    while (count < 3 && end + 1 < tokens.size() && tokens[end].Is(separator) && tokens[end + 1].IsNumber()) {
        parts[count++] = tokens[end + 1].Value();
        end += 2;
    }
    int fraction = 0;
    if (count == 3 && separator == u':' && end + 1 < tokens.size() && tokens[end].Is(u'.') &&
        tokens[end + 1].IsNumber()) {
        fraction = Milliseconds(tokens[end + 1].Text);
        end += 2;
    }
    HalfDay half = HalfDay::None;
    if (end < tokens.size()) half = HalfDayOf(tokens[end]);
    if (half != HalfDay::None) ++end;
    if (count == 1 && half == HalfDay::None) return {};
    return TimeSpan{at, end, TimeOf(parts[0], parts[1], parts[2], fraction, half)};
}

/// The month, 1 to 12, that a word names in full or in short, in English or in the locale's language; 0 for
/// none.
int MonthOf(QStringView word, const QLocale& locale) {
    const std::array locales{QLocale::c(), locale};
    for (const QLocale& each : locales)
        for (int month = 1; month <= 12; ++month)
            for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
                for (QString name :
                     {each.monthName(month, format), each.standaloneMonthName(month, format)}) {
                    if (name.endsWith(u'.')) name.chop(1);
                    if (word.compare(name, Qt::CaseInsensitive) == 0) return month;
                }
    return 0;
}

struct LocaleOrder {
    QString Order;  ///< "mdy", "dmy" or "ymd"
    bool Dotted = false;
};

LocaleOrder OrderOf(const QLocale& locale) {
    if (locale.language() == QLocale::C) return {QStringLiteral("mdy"), false};
    const QString format = locale.dateFormat(QLocale::ShortFormat).toLower();
    QString order;
    for (const QChar c : format)
        if ((c == u'd' || c == u'm' || c == u'y') && !order.contains(c)) order += c;
    return {order.size() == 3 ? order : QStringLiteral("mdy"), format.contains(u'.')};
}

/// Two digits mean 2000 to 2029 and 1930 to 1999.
int FullYear(const Token& token) {
    const int value = token.Value();
    if (token.Text.size() > 2) return value >= 100 && value <= 9999 ? value : 0;
    return value < 30 ? 2000 + value : 1900 + value;
}

QDate DateOf(int year, int month, int day) {
    return year > 0 ? QDate(year, month, day) : QDate();
}

/// Three numbers read in `order`.
QDate ThreeNumbers(const std::vector<Token>& numbers, const QString& order) {
    const auto at = [&](char16_t part) { return numbers[static_cast<std::size_t>(order.indexOf(part))]; };
    // A day or a month of more than two digits would take a year for one.
    if (at(u'd').Text.size() > 2 || at(u'm').Text.size() > 2) return {};
    return DateOf(FullYear(at(u'y')), at(u'm').Value(), at(u'd').Value());
}

/// Month and day of this year, or a month of a year.
QDate TwoNumbers(const std::vector<Token>& numbers, const QString& order) {
    const int first = numbers[0].Value();
    const int second = numbers[1].Value();
    const int year = QDate::currentDate().year();
    const bool dayFirst = order.indexOf(u'd') < order.indexOf(u'm');
    for (const bool swapped : {dayFirst, !dayFirst}) {
        const QDate date = swapped ? DateOf(year, second, first) : DateOf(year, first, second);
        if (date.isValid()) return date;
    }
    if (const QDate date = DateOf(FullYear(numbers[1]), first, 1); date.isValid()) return date;
    return DateOf(FullYear(numbers[0]), second, 1);
}

/// A month by its name, with one number (a day of this year, else a year) or two (a day and a year).
QDate NamedMonth(int month, const std::vector<Token>& numbers) {
    if (numbers.size() == 1) {
        const QDate date = DateOf(QDate::currentDate().year(), month, numbers[0].Value());
        return date.isValid() ? date : DateOf(FullYear(numbers[0]), month, 1);
    }
    const auto dated = [month](const Token& day, const Token& year) {
        return day.Text.size() > 2 ? QDate() : DateOf(FullYear(year), month, day.Value());
    };
    const QDate date = dated(numbers[0], numbers[1]);
    return date.isValid() ? date : dated(numbers[1], numbers[0]);
}

/// What a date consists of once its separators are found to be in order.
struct DateParts {
    std::vector<Token> Numbers;
    int Month = 0;  ///< by name; 0 without one
    bool OnlyBlanks = true;
};

/// Parts with one separator, or blanks alone, between each two of them.
std::optional<DateParts> PartsOf(const Tokens& tokens, const LocaleOrder& order, const QLocale& locale) {
    DateParts parts;
    bool separated = true;
    for (const Token& token : tokens) {
        if (token.What == Token::Kind::Separator) {
            const bool known =
                token.Is(u'/') || token.Is(u'-') || token.Is(u',') || (token.Is(u'.') && order.Dotted);
            if (separated || !known) return {};
            // A list of numbers is no date.
            if (!token.Is(u',')) parts.OnlyBlanks = false;
            separated = true;
            continue;
        }
        if (token.IsNumber()) {
            parts.Numbers.push_back(token);
        } else {
            if (parts.Month != 0) return {};
            parts.Month = MonthOf(token.Text, locale);
            if (parts.Month == 0) return {};
        }
        separated = false;
    }
    if (separated) return {};
    return parts;
}

QDate ReadDate(const Tokens& tokens, const QLocale& locale) {
    const LocaleOrder order = OrderOf(locale);
    const std::optional<DateParts> parts = PartsOf(tokens, order, locale);
    if (!parts) return {};
    const std::vector<Token>& numbers = parts->Numbers;
    if (parts->Month != 0)
        return numbers.size() == 1 || numbers.size() == 2 ? NamedMonth(parts->Month, numbers) : QDate();
    if (numbers.size() == 2) return parts->OnlyBlanks ? QDate() : TwoNumbers(numbers, order.Order);
    if (numbers.size() != 3) return {};
    const bool hasLongYear = numbers.front().Text.size() == 4 || numbers.back().Text.size() == 4;
    if (parts->OnlyBlanks && !hasLongYear) return {};
    for (const QString& each : {order.Order, QStringLiteral("mdy"), QStringLiteral("dmy"),
                                QStringLiteral("ymd"), QStringLiteral("ydm")})
        if (const QDate date = ThreeNumbers(numbers, each); date.isValid()) return date;
    return {};
}

/// Takes out the "T" that joins date and time in the international form.
void DropJoiner(Tokens& tokens) {
    for (std::size_t at = 1; at + 1 < tokens.size(); ++at) {
        const bool joiner = tokens[at].Text.compare(QLatin1StringView("t"), Qt::CaseInsensitive) == 0 &&
                            tokens[at - 1].IsNumber() && tokens[at + 1].IsNumber();
        if (!joiner) continue;
        tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(at));
        return;
    }
}

std::optional<QDateTime> Joined(const QDate& date, const QTime& time) {
    if (!date.isValid() || !time.isValid()) return {};
    return QDateTime(date, time, Qt::UTC);
}

}  // namespace

std::optional<QDateTime> ToDate(QStringView text, const QLocale& locale) {
    Tokens tokens = Split(text);
    if (tokens.empty() || tokens.size() >= tooManyTokens) return {};
    DropJoiner(tokens);
    // In a language that writes dates with points they come before times with points.
    if (const QDate date = ReadDate(tokens, locale); date.isValid()) return Joined(date, QTime(0, 0));
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const std::optional<TimeSpan> span = TimeAt(tokens, at);
        if (!span || !span->Time.isValid()) continue;
        const auto first = tokens.begin() + static_cast<std::ptrdiff_t>(span->First);
        const auto end = tokens.begin() + static_cast<std::ptrdiff_t>(span->End);
        if (first == tokens.begin() && end == tokens.end()) return Joined(NoDate(), span->Time);
        // The date stands wholly before the time or wholly behind it.
        if (first != tokens.begin() && end != tokens.end()) continue;
        const Tokens rest =
            first == tokens.begin() ? Tokens(end, tokens.end()) : Tokens(tokens.begin(), first);
        if (const auto whole = Joined(ReadDate(rest, locale), span->Time)) return whole;
    }
    return {};
}

bool IsDate(QStringView text, const QLocale& locale) {
    return ToDate(text, locale).has_value();
}

}  // namespace zephrin::text
