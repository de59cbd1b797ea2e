#include "sqlgen/Statement.h"

namespace zephrin {

namespace {

constexpr quint32 Black = 0xff000000;
constexpr quint32 Blue = 0xff0000ff;
constexpr quint32 Grey = 0xff808080;
constexpr quint32 Purple = 0xff800080;
constexpr quint32 Orange = 0xffc04000;
constexpr quint32 Red = 0xffc00000;

struct Keyword {
    const char* Search;
    /// What is painted of it, from its start; shorter where the search text holds more than the word.
    int Length;
    quint32 Colour;
    bool AnyCase;
};

/// Painted where they occur first, wherever that is.
constexpr Keyword FirstOnly[] = {
    {"SELECT", 6, Blue, false},   {"FROM", 4, Blue, false},     {"WHERE", 5, Blue, false},
    {"GROUP BY", 8, Blue, false}, {"ORDER BY", 8, Blue, false}, {"HAVING", 6, Blue, false},
};

/// Painted wherever they occur. Blanks in front and behind are painted along.
constexpr Keyword Everywhere[] = {
    {" AND ", 5, Blue, true},
    {" OR ", 4, Blue, true},
    {" AS ", 4, Blue, false},
    {" ON ", 4, Blue, false},
    {"LIKE", 4, Grey, true},
    {"NOT LIKE", 8, Grey, true},
    {"BETWEEN", 7, Grey, true},
    {"INNER JOIN", 10, Purple, false},
    {"LEFT OUTER JOIN", 15, Purple, false},
    {"RIGHT OUTER JOIN", 16, Purple, false},
    {" SUM(", 4, Orange, false},
    {" AVG(", 4, Orange, false},
    {" MIN(", 4, Orange, false},
    {" MAX(", 4, Orange, false},
    {" COUNT(", 6, Orange, false},
    {" STDEV(", 6, Orange, false},
    {" VAR(", 4, Orange, false},
    {" FIRST(", 6, Orange, false},
    {" LAST(", 5, Orange, false},
    {" DESC", 5, Red, false},
    {" ASC", 4, Red, false},
};

/// A copy in capitals of the same length, so that positions in it hold for the text.
QString Capitals(const QString& text) {
    QString capitals = text;
    for (QChar& c : capitals) c = c.toUpper();
    return capitals;
}

ColourSpan Span(qsizetype start, qsizetype length, quint32 colour) {
    return {static_cast<int>(start), static_cast<int>(length), colour};
}

void PaintEverywhere(const QString& text, const Keyword& word, std::vector<ColourSpan>& spans) {
    const QLatin1String search(word.Search);
    // Counted from 1 the scan goes on while its position is below the length: it never starts on the last
    // character.
    for (qsizetype at = 0; at + 1 < text.size(); ++at) {
        at = text.indexOf(search, at);
        if (at < 0) return;
        spans.push_back(Span(at, word.Length, word.Colour));
    }
}

}  // namespace

std::vector<ColourSpan> ColourStatement(const QString& statement) {
    std::vector<ColourSpan> spans{Span(0, statement.size(), Black)};
    for (const Keyword& word : FirstOnly) {
        const qsizetype at = statement.indexOf(QLatin1String(word.Search));
        if (at >= 0) spans.push_back(Span(at, word.Length, word.Colour));
    }
    const QString capitals = Capitals(statement);
    for (const Keyword& word : Everywhere) PaintEverywhere(word.AnyCase ? capitals : statement, word, spans);
    return spans;
}

}  // namespace zephrin
