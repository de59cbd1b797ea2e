#include "platform/ado/ConnectionText.h"

#include <QRegularExpression>

namespace zephrin::ado {

namespace {

/// Takes a value up to its semicolon, or between its quotes or braces, in which the closing mark is written
/// twice.
QString TakeValue(QStringView& rest) {
    rest = rest.trimmed();
    const QChar opening = rest.isEmpty() ? QChar() : rest.front();
    const bool quoted = opening == u'"' || opening == u'\'' || opening == u'{';
    const QChar closing = opening == u'{' ? QChar(u'}') : opening;
    QString value;
    qsizetype at = quoted ? 1 : 0;
    for (; at < rest.size(); ++at) {
        if (!quoted && rest.at(at) == u';') break;
        if (quoted && rest.at(at) == closing) {
            if (at + 1 == rest.size() || rest.at(at + 1) != closing) break;
            ++at;
        }
        value += rest.at(at);
    }
    const qsizetype end = rest.indexOf(u';', at);
    rest = end < 0 ? QStringView() : rest.mid(end + 1);
    return quoted ? value : value.trimmed();
}

void Blank(QString& text, const QString& secret) {
    // A shorter one would stand in any text by chance, and blanking it would tell it.
    if (secret.size() >= 3) text.replace(secret, QStringLiteral("***"));
}

}  // namespace

QString ConnectionValue(const QString& connectionString, QStringView key) {
    QStringView rest = connectionString;
    while (!rest.isEmpty()) {
        const qsizetype equals = rest.indexOf(u'=');
        if (equals < 0) break;
        // A piece without a value of its own before this one is passed over.
        const QStringView name = rest.first(equals).split(u';').last().trimmed();
        const bool found = name.compare(key, Qt::CaseInsensitive) == 0;
        rest = rest.mid(equals + 1);
        const QString value = TakeValue(rest);
        if (found) return value;
    }
    return {};
}

QString WithoutPasswords(QString text, const QString& connectionString, const QString& password) {
    static const QRegularExpression pair(
        QStringLiteral(R"(\b(password|pwd)(\s*=\s*)("[^"]*"|'[^']*'|\{[^}]*\}|[^;"'\s]+))"),
        QRegularExpression::CaseInsensitiveOption);
    text.replace(pair, QStringLiteral("\\1\\2***"));
    Blank(text, password);
    Blank(text, ConnectionValue(connectionString, u"Password"));
    Blank(text, ConnectionValue(connectionString, u"PWD"));
    return text;
}

}  // namespace zephrin::ado
