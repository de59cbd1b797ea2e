#pragma once

#include <QString>
#include <QTextDocument>

namespace zephrin::controls {

// The text of an editor outside of it: CR LF for its line breaks, everything else character for character.
// The editor's own plain text makes a common blank of one that does not break, and names of columns hold such
// blanks.

inline QString DocumentText(const QTextDocument& document) {
    QString text = document.toRawText();
    for (const QChar separator : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(separator, QLatin1StringView("\r\n"));
    return text;
}

/// Where a place of the document, which counts a line break as one, is in that text.
inline int TextPosition(const QTextDocument& document, int place) {
    const QString before = document.toRawText().left(place);
    return place +
           static_cast<int>(before.count(QChar::ParagraphSeparator) + before.count(QChar::LineSeparator));
}

}  // namespace zephrin::controls
