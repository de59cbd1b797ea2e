#include "platform/ado/TextOrder.h"
#include "platform/ado/providers/sqlite/functions/Functions.h"

namespace zephrin::ado::providers::sqlite {

namespace {

char16_t Folded(QChar character) {
    return character.toCaseFolded().unicode();
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

}  // namespace

bool IsLike(QStringView text, QStringView pattern, QChar escape, bool padded) {
    qsizetype content = text.size();
    while (padded && content > 0 && text[content - 1] == u' ') --content;
    qsizetype inText = 0;
    qsizetype inPattern = 0;
    // Where to go on after the last % took one character more.
    qsizetype retryPattern = -1;
    qsizetype retryText = 0;
    while (inText < text.size()) {
        if (inPattern == pattern.size() && inText >= content) return true;
        bool fits = false;
        if (inPattern < pattern.size()) {
            const QChar next = pattern[inPattern];
            if (!escape.isNull() && next == escape && inPattern + 1 < pattern.size()) {
                fits = Folded(pattern[inPattern + 1]) == Folded(text[inText]);
                if (fits) inPattern += 2;
            } else if (next == u'%') {
                retryPattern = ++inPattern;
                retryText = inText;
                continue;
            } else if (next == u'_') {
                fits = true;
                ++inPattern;
            } else if (qsizetype behind = inPattern;
                       next != u'[' || !InSet(pattern, behind, text[inText], fits)) {
                fits = Folded(next) == Folded(text[inText]);
                ++inPattern;
            } else {
                inPattern = behind;
            }
        }
        if (fits) {
            ++inText;
            continue;
        }
        if (retryPattern < 0) return false;
        inPattern = retryPattern;
        inText = ++retryText;
    }
    while (inPattern < pattern.size() && pattern[inPattern] == u'%') ++inPattern;
    return inPattern == pattern.size();
}

}  // namespace zephrin::ado::providers::sqlite
