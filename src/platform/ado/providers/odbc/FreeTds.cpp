#include "platform/ado/providers/odbc/FreeTds.h"

#include "platform/ado/providers/odbc/ConnectionString.h"

#include <zephrin/ado/Error.h>

#include <QRegularExpression>

namespace zephrin::ado::odbc {

namespace {

bool Is(const QString& text, QLatin1StringView word) {
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

// --- Server ---

/// The parts of a server as people write it.
struct ServerName {
    QString Host;
    QString Instance;
    QString Port;
};

/// The host of `\\host\pipe\MSSQL$instance\sql\query`, and its instance. FreeTDS speaks TCP alone, so that a
/// pipe tells no more than where to go.
ServerName ReadPipe(const QString& path) {
    const QStringList parts = path.split(u'\\', Qt::SkipEmptyParts);
    ServerName server;
    if (!parts.isEmpty()) server.Host = parts.front();
    for (const QString& part : parts)
        if (part.startsWith(QLatin1StringView("MSSQL$"), Qt::CaseInsensitive)) server.Instance = part.mid(6);
    return server;
}

ServerName ReadServer(QString text) {
    for (const char* protocol : {"tcp:", "np:", "lpc:"}) {
        const QLatin1StringView prefix(protocol);
        if (!text.startsWith(prefix, Qt::CaseInsensitive)) continue;
        text = text.mid(prefix.size()).trimmed();
        break;
    }
    ServerName server;
    if (text.startsWith(QLatin1StringView("\\\\"))) {
        server = ReadPipe(text);
    } else {
        static const QRegularExpression port(QStringLiteral("\\s*,\\s*([0-9]+)\\s*\\z"));
        if (const auto match = port.match(text); match.hasMatch()) {
            server.Port = match.captured(1);
            text.truncate(match.capturedStart());
        }
        server.Host = text.section(u'\\', 0, 0).trimmed();
        server.Instance = text.section(u'\\', 1).trimmed();
    }
    if (server.Host == u"." || Is(server.Host, QLatin1StringView("(local)")))
        server.Host = QStringLiteral("localhost");
    // The name of the instance that has no name.
    if (Is(server.Instance, QLatin1StringView("MSSQLSERVER"))) server.Instance.clear();
    return server;
}

void SuitServer(ConnectionString& keywords) {
    for (const QStringView other : {u"Address", u"Addr", u"Network Address"}) {
        const std::optional<QString> value = keywords.Take(other);
        if (value && !keywords.Has(u"Server")) keywords.Set(QStringLiteral("Server"), *value);
    }
    if (keywords.Value(u"Server").isEmpty()) return;
    const ServerName server = ReadServer(keywords.Value(u"Server"));
    const bool portStands = !keywords.Value(u"Port").isEmpty();
    if (!portStands && !server.Port.isEmpty()) keywords.Set(QStringLiteral("Port"), server.Port);
    // A port leads straight to the instance, so that its name is not looked up.
    const bool byName = server.Port.isEmpty() && !server.Instance.isEmpty();
    keywords.Set(QStringLiteral("Server"), byName ? server.Host + u'\\' + server.Instance : server.Host);
    // Without one it makes no connection at all.
    if (!portStands && server.Port.isEmpty() && !byName)
        keywords.Set(QStringLiteral("Port"), QStringLiteral("1433"));
}

// --- Encryption ---

[[noreturn]] void Refuse(const QString& text, const QString& driverName) {
    throw Error(ErrorNumber::ProviderFailed, text.arg(driverName), QStringLiteral("ODBC"));
}

/// What the string says of encryption in the words of the vendor's drivers.
struct EncryptionWish {
    bool Wanted = false;
    bool Strict = false;
    /// Whether the certificate or the name in it has to be looked at.
    bool Checked = false;
};

EncryptionWish TakeWish(ConnectionString& keywords) {
    EncryptionWish wish;
    for (const QStringView name : {u"Encrypt", u"Use Encryption for Data"}) {
        const QString value = keywords.Take(name).value_or(QString());
        // A word that nobody knows is no reason to go on in clear.
        wish.Wanted |= !IsNo(value);
        wish.Strict |= Is(value, QLatin1StringView("strict"));
    }
    for (const QStringView name :
         {u"HostNameInCertificate", u"Host Name In Certificate", u"ServerCertificate", u"Server Certificate"})
        wish.Wanted |= !keywords.Take(name).value_or(QString()).isEmpty();
    bool trusted = false;
    for (const QStringView name : {u"TrustServerCertificate", u"Trust Server Certificate"})
        trusted |= IsYes(keywords.Take(name).value_or(QString()));
    wish.Checked = wish.Wanted && !trusted;
    return wish;
}

/// Holds the driver to a version of the protocol in which encryption comes before the login. Left to itself
/// it takes the one that its own configuration names.
void RequireEncryptingVersion(ConnectionString& keywords, const QString& driverName) {
    const QString version = keywords.Value(u"TDS_Version");
    if (version.isEmpty()) return keywords.Set(QStringLiteral("TDS_Version"), QStringLiteral("7.4"));
    for (const char* clear : {"4.2", "5.0", "7.0", "0x402", "0x500", "0x700"})
        if (Is(version, QLatin1StringView(clear)))
            Refuse(QStringLiteral(
                       "The connection string asks for encryption, which '%1' has from TDS_Version=7.1 on "
                       "alone. Take TDS_Version out of the string."),
                   driverName);
}

void SuitEncryption(ConnectionString& keywords, const QString& driverName) {
    const EncryptionWish wish = TakeWish(keywords);
    if (wish.Checked)
        Refuse(QStringLiteral(
                   "The connection string asks for an encrypted connection to a server whose certificate is "
                   "checked, and the driver '%1' can't be told to check it. Install the server's own driver "
                   "(ODBC "
                   "Driver 18 for SQL Server), or add TrustServerCertificate=yes to connect encrypted but "
                   "unchecked."),
               driverName);
    // Whoever wrote the driver's own word knows it.
    if (wish.Wanted && keywords.Value(u"Encryption").isEmpty())
        keywords.Set(QStringLiteral("Encryption"),
                     wish.Strict ? QStringLiteral("strict") : QStringLiteral("require"));
    if (Is(keywords.Value(u"Encryption"), QLatin1StringView("require")))
        RequireEncryptingVersion(keywords, driverName);
}

}  // namespace

void SuitFreeTds(ConnectionString& keywords, const QString& driverName) {
    SuitEncryption(keywords, driverName);
    // A source of the driver manager's names server and characters itself.
    if (keywords.Has(u"DSN")) return;
    SuitServer(keywords);
    // Without it, whatever Latin-1 can't hold would come as question marks.
    if (!keywords.Has(u"ClientCharset"))
        keywords.Set(QStringLiteral("ClientCharset"), QStringLiteral("UTF-8"));
}

}  // namespace zephrin::ado::odbc
