#pragma once

#include <QString>

namespace zephrin {

/// `text` without the blanks in front. Only the blank itself counts: tabs and line breaks stay, as in every
/// trim of the query's own texts.
inline QString LeftTrimmed(const QString& text) {
    qsizetype at = 0;
    while (at < text.size() && text[at] == u' ') ++at;
    return text.mid(at);
}

/// `text` without the blanks at both ends.
inline QString BlankTrimmed(const QString& text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ') --end;
    return LeftTrimmed(text.left(end));
}

/// `text` with CR LF for each of its line breaks, as statements have them; a lone CR or LF is one too.
inline QString WithCrLf(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text.replace(QLatin1String("\n"), QLatin1String("\r\n"));
}

}  // namespace zephrin
