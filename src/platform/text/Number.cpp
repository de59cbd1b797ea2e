#include "platform/text/Text.h"

#include <cmath>
#include <limits>

namespace zephrin::text {

namespace {

constexpr char16_t currencySign = u'$';

bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Reads a text from left to right; AtEnd() holds behind its last character.
class Reader {
 public:
    explicit Reader(QStringView text) : rest(text) {}

    bool AtEnd() const { return rest.isEmpty(); }
    QChar Peek() const { return rest.isEmpty() ? QChar() : rest.front(); }
    QChar Take() {
        const QChar c = rest.front();
        rest = rest.sliced(1);
        return c;
    }
    bool TakeIf(char16_t c) {
        if (Peek() != c) return false;
        Take();
        return true;
    }
    void SkipBlanks() {
        while (!AtEnd() && rest.front().isSpace()) Take();
    }
    QStringView Rest() const { return rest; }

 private:
    QStringView rest;
};

/// Sign, currency sign and bracket stand before or behind the digits, each at most once.
struct Decorations {
    bool Signed = false;
    bool Negative = false;
    bool Currency = false;
    bool Bracket = false;

    bool TakeSign(Reader& in) {
        if (Signed || Bracket || (in.Peek() != u'-' && in.Peek() != u'+')) return false;
        Signed = true;
        Negative = in.Take() == u'-';
        return true;
    }
    bool TakeCurrency(Reader& in) {
        if (Currency || !in.TakeIf(currencySign)) return false;
        Currency = true;
        return true;
    }
};

void ReadPrefix(Reader& in, Decorations& found) {
    for (;;) {
        in.SkipBlanks();
        if (found.TakeSign(in) || found.TakeCurrency(in)) continue;
        if (!found.Signed && !found.Bracket && in.TakeIf(u'(')) {
            found.Bracket = found.Negative = true;
            continue;
        }
        return;
    }
}

bool ReadSuffix(Reader& in, Decorations& found) {
    bool closed = !found.Bracket;
    for (;;) {
        in.SkipBlanks();
        if (in.AtEnd()) return closed;
        if (found.TakeSign(in) || found.TakeCurrency(in)) continue;
        if (closed || !in.TakeIf(u')')) return false;
        closed = true;
    }
}

/// The digits with their point, without group separators; false when there is no digit.
bool ReadDigits(Reader& in, QByteArray& digits) {
    bool any = false;
    bool point = false;
    while (!in.AtEnd()) {
        const QChar c = in.Peek();
        if (IsDigit(c)) {
            any = true;
            digits += c.toLatin1();
        } else if (c == u'.' && !point) {
            point = true;
            digits += '.';
        } else if (c != u',' || point) {
            break;
        }
        in.Take();
    }
    return any;
}

/// An exponent, if one begins here; false when it has no digits.
bool ReadExponent(Reader& in, QByteArray& digits) {
    const QChar mark = in.Peek().toLower();
    if (mark != u'e' && mark != u'd') return true;
    in.Take();
    digits += 'e';
    if (in.Peek() == u'-' || in.Peek() == u'+') digits += in.Take().toLatin1();
    if (!IsDigit(in.Peek())) return false;
    while (IsDigit(in.Peek())) digits += in.Take().toLatin1();
    return true;
}

/// "&H1F" and "&O17"; eight hexadecimal digits make a signed number of 32 bits.
std::optional<double> ReadRadix(QStringView text) {
    if (text.size() < 3 || text.front() != u'&') return {};
    const QChar mark = text.at(1).toLower();
    if (mark != u'h' && mark != u'o') return {};
    const QStringView digits = text.sliced(2);
    for (const QChar c : digits)
        if (!c.isLetterOrNumber()) return {};
    bool valid = false;
    const qulonglong value = digits.toULongLong(&valid, mark == u'h' ? 16 : 8);
    if (!valid) return {};
    if (value > std::numeric_limits<qint32>::max() && value <= std::numeric_limits<quint32>::max())
        return static_cast<qint32>(static_cast<quint32>(value));
    return static_cast<double>(value);
}

}  // namespace

std::optional<double> ToNumber(QStringView text) {
    Reader in(text);
    in.SkipBlanks();
    if (in.Peek() == u'&') return ReadRadix(in.Rest().trimmed());

    Decorations found;
    QByteArray digits;
    ReadPrefix(in, found);
    if (!ReadDigits(in, digits) || !ReadExponent(in, digits) || !ReadSuffix(in, found)) return {};
    bool valid = false;
    const double value = QLocale::c().toDouble(QString::fromLatin1(digits), &valid);
    if (!valid || !std::isfinite(value)) return {};
    return found.Negative ? -value : value;
}

bool IsNumeric(QStringView text) {
    return ToNumber(text).has_value();
}

}  // namespace zephrin::text
