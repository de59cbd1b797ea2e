#include "platform/ado/TextOrder.h"
#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <algorithm>
#include <string_view>

namespace zephrin::ado::providers::sqlite {

namespace {

char16_t Folded(QChar character) {
    return character.toCaseFolded().unicode();
}

char16_t Folded(char16_t character) {
    return Folded(QChar(character));
}

char Folded(char character) {
    return character >= 'A' && character <= 'Z' ? char(character + 32) : character;
}

bool IsPlain(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) != 0; });
}

/// Reads the set that opens at `at`; leaves `at` behind its end. False where it has none, and then it is no
/// set.
bool InSet(QStringView pattern, qsizetype& at, QChar character, bool& matches) {
    const qsizetype close = pattern.indexOf(u']', at + 1);
    if (close < 0) return false;
    QStringView set = pattern.sliced(at + 1, close - at - 1);
    const bool excludes = set.size() > 1 && (set.front() == u'^' || set.front() == u'!');
    if (excludes) set = set.sliced(1);
    const char16_t wanted = Folded(character);
    const QByteArray text = QStringView(&character, 1).toUtf8();
    const auto comesBehind = [](const QByteArray& one, const QByteArray& other) {
        return CompareTexts({one.constData(), size_t(one.size())},
                            {other.constData(), size_t(other.size())}) >= 0;
    };
    matches = false;
    for (qsizetype index = 0; index < set.size(); ++index) {
        if (index + 2 < set.size() && set[index + 1] == u'-') {
            // A range goes by the order of texts: letters with accents are in it, other case is too.
            matches = matches || (comesBehind(text, set.sliced(index, 1).toUtf8()) &&
                                  comesBehind(set.sliced(index + 2, 1).toUtf8(), text));
            index += 2;
        } else {
            matches = matches || wanted == Folded(set[index]);
        }
    }
    matches = matches != excludes;
    at = close + 1;
    return true;
}

/// Where in the text, from `from` on, the rest of the pattern behind a % may begin to fit: most characters
/// are not the one that it begins with.
template <class Character>
size_t NextBegin(std::basic_string_view<Character> text, size_t from, std::basic_string_view<Character> rest,
                 Character escape) {
    const Character first = rest.front();
    if (first == '%' || first == '_' || first == '[' || (escape != 0 && first == escape)) return from;
    const Character wanted = Folded(first);
    while (from < text.size() && Folded(text[from]) != wanted) ++from;
    return from;
}

/// The walk through text and pattern, on UTF-16 or on plain bytes; the latter has no sets. `content`: where
/// blanks at the end begin that don't count, or the end.
template <class Character>
bool Fits(std::basic_string_view<Character> text, std::basic_string_view<Character> pattern, Character escape,
          size_t content) {
    constexpr size_t none = std::basic_string_view<Character>::npos;
    size_t inText = 0;
    size_t inPattern = 0;
    // Where to go on after the last % took one character more.
    size_t retryPattern = none;
    size_t retryText = 0;
    while (inText < text.size()) {
        if (inPattern == pattern.size() && inText >= content) return true;
        bool fits = false;
        if (inPattern < pattern.size()) {
            const Character next = pattern[inPattern];
            bool isSet = false;
            if (escape != 0 && next == escape && inPattern + 1 < pattern.size()) {
                fits = Folded(pattern[inPattern + 1]) == Folded(text[inText]);
                if (fits) inPattern += 2;
            } else if (next == '%') {
                retryPattern = ++inPattern;
                if (inPattern == pattern.size()) return true;
                inText = retryText = NextBegin(text, inText, pattern.substr(inPattern), escape);
                continue;
            } else if (next == '_') {
                fits = true;
                ++inPattern;
            } else {
                if constexpr (sizeof(Character) > 1) {
                    qsizetype behind = qsizetype(inPattern);
                    isSet = next == '[' && InSet(QStringView(pattern.data(), qsizetype(pattern.size())),
                                                 behind, QChar(text[inText]), fits);
                    if (isSet) inPattern = size_t(behind);
                }
                if (!isSet) {
                    fits = Folded(next) == Folded(text[inText]);
                    ++inPattern;
                }
            }
        }
        if (fits) {
            ++inText;
            continue;
        }
        if (retryPattern == none) return false;
        inPattern = retryPattern;
        inText = retryText = NextBegin(text, retryText + 1, pattern.substr(inPattern), escape);
    }
    while (inPattern < pattern.size() && pattern[inPattern] == '%') ++inPattern;
    return inPattern == pattern.size();
}

template <class Character>
size_t ContentOf(std::basic_string_view<Character> text, bool padded) {
    size_t content = text.size();
    while (padded && content > 0 && text[content - 1] == ' ') --content;
    return content;
}

std::u16string_view Wide(QStringView text) {
    return {text.utf16(), size_t(text.size())};
}

}  // namespace

bool IsLike(QStringView text, QStringView pattern, QChar escape, bool padded) {
    return Fits(Wide(text), Wide(pattern), escape.unicode(), ContentOf(Wide(text), padded));
}

bool IsLike(std::string_view text, std::string_view pattern, bool padded) {
    // Bytes are characters where both are of ASCII, as most are.
    if (IsPlain(text) && IsPlain(pattern) && pattern.find('[') == std::string_view::npos)
        return Fits(text, pattern, '\0', ContentOf(text, padded));
    return IsLike(QString::fromUtf8(text.data(), qsizetype(text.size())),
                  QString::fromUtf8(pattern.data(), qsizetype(pattern.size())), QChar(), padded);
}

}  // namespace zephrin::ado::providers::sqlite
