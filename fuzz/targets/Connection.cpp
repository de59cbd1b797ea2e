#include "fuzz/Targets.h"
#include "platform/ado/ConnectionText.h"
#include "platform/ado/providers/odbc/KeywordTranslation.h"
#include "platform/ado/providers/sqlite/ConnectionStringReader.h"
#include "platform/dialogs/DataLinkText.h"

#include <zephrin/ado/Error.h>

namespace zephrin::fuzz {

namespace {

using namespace ado::odbc;

const QString user = QStringLiteral("the user"), password = QStringLiteral("a}b;{c=\"");

const Installation& Machine(int which) {
    static const Driver vendor{QStringLiteral("ODBC Driver 18 for SQL Server"),
                               QStringLiteral("libmsodbcsql.so")};
    static const Driver freeTds{QStringLiteral("FreeTDS"), QStringLiteral("libtdsodbc.so")};
    static const Driver access{QStringLiteral("Microsoft Access Driver (*.mdb)"),
                               QStringLiteral("libaccess.so")};
    static const Driver sqlite{QStringLiteral("SQLite3"), QStringLiteral("libsqlite3odbc.so")};
    static const Installation machines[] = {
        {{vendor, access, sqlite}, {{QStringLiteral("shop"), QStringLiteral("SQLite3")}}},
        {{freeTds, access}, {{QStringLiteral("shop"), QStringLiteral("FreeTDS")}}},
    };
    return machines[which];
}

/// How a driver takes a string apart: its values of one keyword, in order. Braces raw, up to `};`, or as ODBC
/// has them.
QStringList ValuesOf(const QString& text, const QString& keyword, bool raw) {
    QStringList values;
    for (qsizetype at = 0; at < text.size();) {
        while (at < text.size() && (text[at] == u';' || text[at].isSpace())) ++at;
        const qsizetype equals = text.indexOf(u'=', at);
        if (equals < 0) break;
        const QString name = text.mid(at, equals - at).trimmed();
        at = equals + 1;
        QString value;
        if (at < text.size() && text[at] == u'{' && raw) {
            const qsizetype end = text.indexOf(QLatin1StringView("};"), at);
            value = text.mid(at + 1, (end < 0 ? text.size() : end) - at - 1);
            at = end < 0 ? text.size() : end + 2;
        } else if (at < text.size() && text[at] == u'{') {
            for (++at; at < text.size(); ++at) {
                if (text[at] == u'}' && (at + 1 == text.size() || text[at + 1] != u'}')) break;
                if (text[at] == u'}') ++at;
                value += text[at];
            }
            at = text.indexOf(u';', at);
            if (at < 0) at = text.size();
        } else {
            const qsizetype end = text.indexOf(u';', at);
            value = text.mid(at, end < 0 ? -1 : end - at);
            at = end < 0 ? text.size() : end;
        }
        if (name.compare(keyword, Qt::CaseInsensitive) == 0) values << value;
    }
    return values;
}

void RequireLogin(const ado::odbc::Target& target) {
    const bool raw = FamilyOf({target.DriverName, {}}) == Family::FreeTds;
    for (const auto& [keyword, value] :
         {std::pair(QStringLiteral("UID"), user), {QStringLiteral("PWD"), password}})
        for (const QString& sent : ValuesOf(target.ConnectionString, keyword, raw))
            Require(sent == value, keyword + QStringLiteral(" is another's in ") + target.ConnectionString);
}

}  // namespace

void FeedConnection(const QByteArray& input) {
    const QString text = QString::fromUtf8(input);
    // The parsers are asked behind the limit of a connection.
    if (text.size() > ado::MostConnectionCharacters) return;
    for (int machine = 0; machine < 2; ++machine) {
        try {
            RequireLogin(Translate({text, user, password, 0, 0}, Machine(machine)));
        } catch (const ado::Error& error) {
            Require(!error.Description().contains(password), "an error tells no password");
        }
    }
    try {
        ado::providers::sqlite::ReadConnectionString(text);
    } catch (const ado::Error& error) {
        Require(!error.Description().isEmpty(), "an error says what is wrong");
    }
    const QString secret = ado::ConnectionValue(text, u"PWD");
    const QString shown = ado::WithoutPasswords(text + u'\n' + password, text, password);
    Require(!shown.contains(password), "the password that was given beside is shown");
    // Blanks leave marks, of which a secret of marks can't be told.
    if (secret.size() >= 3 && !QStringLiteral("***").contains(secret) &&
        !secret.contains(QLatin1StringView("**")))
        Require(!shown.contains(secret), QStringLiteral("the password is shown: ") + shown);
    (void)datalink::Masked(text);
}

}  // namespace zephrin::fuzz
