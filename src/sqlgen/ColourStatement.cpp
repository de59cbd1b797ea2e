#include "sqlgen/Statement.h"

#include <array>
#include <bit>
#include <iterator>

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

constexpr std::size_t WordCount = std::size(FirstOnly) + std::size(Everywhere);

/// The words of both tables in the order in which they are painted.
constexpr const Keyword& Word(std::size_t index) {
    return index < std::size(FirstOnly) ? FirstOnly[index] : Everywhere[index - std::size(FirstOnly)];
}

/// Sets of words, one bit each.
using WordSet = quint32;
static_assert(WordCount <= 32);
using SetsByCharacter = std::array<WordSet, 128>;

/// The words that can stand where a character stands. The many that begin with a blank go by the character
/// behind it.
constexpr SetsByCharacter CandidateSets(bool behindBlank) {
    SetsByCharacter sets{};
    for (std::size_t i = 0; i < WordCount; ++i) {
        const char* const search = Word(i).Search;
        if ((search[0] == ' ') != behindBlank) continue;
        const auto first = static_cast<std::size_t>(search[behindBlank ? 1 : 0]);
        sets[first] |= WordSet{1} << i;
        if (Word(i).AnyCase) sets[first + ('a' - 'A')] |= WordSet{1} << i;
    }
    return sets;
}
constexpr SetsByCharacter Plain = CandidateSets(false);
constexpr SetsByCharacter BehindBlank = CandidateSets(true);

WordSet Candidates(QStringView text, qsizetype at) {
    const bool blank = text[at] == u' ';
    if (blank && ++at == text.size()) return 0;
    const char16_t c = text[at].unicode();
    if (c >= Plain.size()) return 0;
    return (blank ? BehindBlank : Plain)[c];
}

/// A capital of the same length, so that a search in capitals shifts nothing.
QChar Capital(QChar c) {
    if (c.unicode() < 128) return c >= u'a' && c <= u'z' ? QChar(char16_t(c.unicode() - (u'a' - u'A'))) : c;
    return c.toUpper();
}

bool StandsAt(QStringView text, qsizetype at, const Keyword& word) {
    for (const char* search = word.Search; *search; ++search, ++at) {
        if (at >= text.size()) return false;
        if ((word.AnyCase ? Capital(text[at]) : text[at]) != QLatin1Char(*search)) return false;
    }
    return true;
}

using SpansByWord = std::array<std::vector<ColourSpan>, WordCount>;

void CollectAt(QStringView text, qsizetype at, WordSet candidates, SpansByWord& spans) {
    for (; candidates; candidates &= candidates - 1) {
        const auto i = static_cast<std::size_t>(std::countr_zero(candidates));
        if (i < std::size(FirstOnly) && !spans[i].empty()) continue;
        const Keyword& word = Word(i);
        if (StandsAt(text, at, word)) spans[i].push_back({static_cast<int>(at), word.Length, word.Colour});
    }
}

}  // namespace

std::vector<ColourSpan> ColourStatement(const QString& statement) {
    const QStringView text(statement);
    // One walk over the text instead of one for each word; the order of painting is made up for afterwards.
    SpansByWord byWord;
    for (qsizetype at = 0; at < text.size(); ++at)
        if (const WordSet candidates = Candidates(text, at)) CollectAt(text, at, candidates, byWord);
    std::vector<ColourSpan> spans{{0, static_cast<int>(text.size()), Black}};
    for (const std::vector<ColourSpan>& ofWord : byWord)
        spans.insert(spans.end(), ofWord.begin(), ofWord.end());
    return spans;
}

}  // namespace zephrin
