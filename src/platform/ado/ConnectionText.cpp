#include "platform/ado/ConnectionText.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace zephrin::ado {

namespace {

struct Part {
    QStringView Name;
    /// Without quotes or braces.
    QString Value;
    /// With them.
    QStringView Written;
};

/// Takes a connection string apart, forgivingly: nothing in it is refused.
class PartReader {
 public:
    explicit PartReader(QStringView connectionString) : rest(connectionString) {}

    bool Next(Part& part) {
        const qsizetype equals = rest.indexOf(u'=');
        if (equals < 0) return false;
        // A piece without a value of its own before this one is passed over.
        const QStringView front = rest.first(equals);
        part.Name = front.mid(front.lastIndexOf(u';') + 1).trimmed();
        rest = rest.mid(equals + 1).trimmed();
        TakeValue(part);
        return true;
    }

 private:
    /// Takes a value up to its semicolon, or between its quotes or braces, in which the closing mark is
    /// written twice.
    void TakeValue(Part& part) {
        const QChar opening = rest.isEmpty() ? QChar() : rest.front();
        const bool quoted = opening == u'"' || opening == u'\'' || opening == u'{';
        const QChar closing = opening == u'{' ? QChar(u'}') : opening;
        part.Value.clear();
        qsizetype at = quoted ? 1 : 0;
        for (; at < rest.size(); ++at) {
            if (!quoted && rest.at(at) == u';') break;
            if (quoted && rest.at(at) == closing) {
                if (at + 1 == rest.size() || rest.at(at + 1) != closing) break;
                ++at;
            }
            part.Value += rest.at(at);
        }
        if (!quoted) part.Value = part.Value.trimmed();
        const qsizetype end = rest.indexOf(u';', at);
        part.Written = (end < 0 ? rest : rest.first(end)).trimmed();
        rest = end < 0 ? QStringView() : rest.mid(end + 1);
    }

    QStringView rest;
};

/// Every way in which the passwords of the string may stand in a text, or in a string inside the string.
void CollectSecrets(QStringView connectionString, QStringList& secrets) {
    PartReader reader(connectionString);
    for (Part part; reader.Next(part);) {
        if (IsSecretName(part.Name)) {
            secrets << part.Value << part.Written.toString();
            // A driver that takes what is in braces as it stands, or knows no quotes.
            if (part.Written.size() > 2) secrets << part.Written.mid(1, part.Written.size() - 2).toString();
            secrets << QString(part.Value).replace(u'}', QStringLiteral("}}"));
        } else if (part.Name.compare(u"Extended Properties", Qt::CaseInsensitive) == 0) {
            CollectSecrets(part.Value, secrets);
        }
    }
}

/// Takes out what reads as a password in a text that nobody wrote to be taken apart: rather too much than the
/// tail of one, unless one that was known stood there.
void BlankPairs(QString& text) {
    static const QRegularExpression pair(
        QStringLiteral(
            R"((password|pwd)(\s*=[^\S\r\n]*))"
            R"((\*\*\*(?=["';,.)\s]|\z)|"(?:[^"]++|"")*+"?|'(?:[^']++|'')*+'?|\{(?:[^}]++|\}(?!\s*(?:;|\z|["'.,)])))*+\}?|[^;\r\n]+))"),
        QRegularExpression::CaseInsensitiveOption);
    text.replace(pair, QStringLiteral("\\1\\2***"));
}

}  // namespace

QString ConnectionValue(const QString& connectionString, QStringView key) {
    PartReader reader(connectionString);
    for (Part part; reader.Next(part);)
        if (part.Name.compare(key, Qt::CaseInsensitive) == 0) return part.Value;
    return {};
}

bool IsSecretName(QStringView key) {
    return key.contains(u"password", Qt::CaseInsensitive) || key.contains(u"pwd", Qt::CaseInsensitive);
}

QString WithoutPasswords(QString text, const QString& connectionString, const QString& password) {
    QStringList secrets{password};
    CollectSecrets(connectionString, secrets);
    // The longest first, or what a shorter one leaves of it would stay. And before anything is guessed: a
    // password that is written oddly ends elsewhere than it seems to.
    std::sort(secrets.begin(), secrets.end(),
              [](const QString& one, const QString& other) { return one.size() > other.size(); });
    secrets.removeDuplicates();
    for (const QString& secret : std::as_const(secrets)) {
        // A shorter one would stand in any text by chance, and blanking it would tell it.
        if (secret.size() >= 3) text.replace(secret, QStringLiteral("***"));
    }
    BlankPairs(text);
    return text;
}

}  // namespace zephrin::ado
