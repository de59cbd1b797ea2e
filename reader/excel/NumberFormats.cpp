#include "reader/excel/NumberFormats.h"

namespace zephrin::reader::excel {

namespace {

constexpr QStringView CurrencySigns =
    u"$\u00a2\u00a3\u00a4\u00a5\u20a9\u20aa\u20ab\u20ac\u20b9\u20bd\u20ba\u20b4\u0e3f";

/// What stands in square brackets: a colour, a condition, a language, a currency, or hours beyond a day.
CellKind KindOfBrackets(QStringView inside) {
    if (inside.startsWith(u'$')) return inside.startsWith(u"$-") ? CellKind::Empty : CellKind::Money;
    for (const QChar letter : inside)
        if (!QStringView(u"hmsHMS").contains(letter)) return CellKind::Empty;
    return inside.isEmpty() ? CellKind::Empty : CellKind::Date;
}

}  // namespace

CellKind KindOfFormat(QStringView code) {
    CellKind kind = CellKind::Number;
    if (code.compare(u"General", Qt::CaseInsensitive) == 0) return kind;
    for (qsizetype at = 0; at < code.size(); ++at) {
        const QChar letter = code[at];
        if (letter == u'\\' || letter == u'_' || letter == u'*') {
            ++at;
            if (letter == u'\\' && at < code.size() && CurrencySigns.contains(code[at]))
                kind = CellKind::Money;
        } else if (letter == u'"') {
            const qsizetype close = code.indexOf(u'"', at + 1);
            const QStringView words = code.mid(at + 1, close < 0 ? -1 : close - at - 1);
            for (const QChar sign : words)
                if (CurrencySigns.contains(sign)) kind = CellKind::Money;
            if (close < 0) break;
            at = close;
        } else if (letter == u'[') {
            const qsizetype close = code.indexOf(u']', at);
            if (close < 0) break;
            const CellKind inside = KindOfBrackets(code.mid(at + 1, close - at - 1));
            if (inside == CellKind::Date) return CellKind::Date;
            if (inside == CellKind::Money) kind = CellKind::Money;
            at = close;
        } else if (QStringView(u"dDmMyYhHsS").contains(letter)) {
            return CellKind::Date;
        } else if (CurrencySigns.contains(letter)) {
            kind = CellKind::Money;
        } else if (letter == u'@') {
            return CellKind::Number;
        } else if (code.mid(at, 7).compare(u"General", Qt::CaseInsensitive) == 0) {
            at += 6;
        }
    }
    return kind;
}

CellKind KindOfFormat(int number) {
    const auto within = [number](int first, int last) { return number >= first && number <= last; };
    if (within(14, 22) || within(27, 36) || within(45, 47) || within(50, 58)) return CellKind::Date;
    if (within(5, 8) || number == 42 || number == 44) return CellKind::Money;
    return CellKind::Number;
}

}  // namespace zephrin::reader::excel
