#include "platform/ado/providers/odbc/KeywordTranslation.h"

#include "platform/ado/providers/odbc/ConnectionString.h"

#include <zephrin/ado/Error.h>

#include <QFileInfo>
#include <QRegularExpression>

namespace zephrin::ado::odbc {

namespace {

[[noreturn]] void RefuseDriver(const QString& missing, const Installation& installation) {
    throw Error(
        ErrorNumber::ProviderFailed,
        QStringLiteral("The ODBC driver '%1' is not installed. %2").arg(missing, installation.Listing()),
        QStringLiteral("ODBC"));
}

bool IsYes(const QString& value) {
    for (const char* word : {"yes", "true", "sspi", "1", "-1", "mandatory"})
        if (value.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

/// Moves a keyword's value under its ODBC name. The caller's name wins where both stand.
void Rename(ConnectionString& keywords, std::initializer_list<QStringView> from, const QString& to) {
    for (const QStringView name : from) {
        const std::optional<QString> value = keywords.Take(name);
        if (value && !keywords.Has(to)) keywords.Set(to, *value);
    }
}

/// Drops what only OLE DB's own services read.
void DropOleDbServices(ConnectionString& keywords) {
    for (const QStringView name :
         {u"Provider", u"Persist Security Info", u"PersistSecurityInfo", u"OLE DB Services", u"Prompt",
          u"Mode", u"Locale Identifier", u"Window Handle", u"Location", u"Network Library", u"Network",
          u"Packet Size", u"Auto Translate", u"Use Procedure for Prepare",
          u"Tag with column collation when possible", u"Initial File Name", u"DataTypeCompatibility"})
        keywords.Remove(name);
}

void RenameLogin(ConnectionString& keywords) {
    Rename(keywords, {u"User ID", u"UserID", u"User", u"Uid"}, QStringLiteral("UID"));
    Rename(keywords, {u"Password", u"Pwd"}, QStringLiteral("PWD"));
}

/// A server as people write it, in the parts that FreeTDS wants: no protocol in front, the port apart.
void SplitServer(ConnectionString& keywords) {
    QString server = keywords.FirstOf({u"Server", u"Address", u"Addr"});
    if (server.isEmpty()) return;
    const QString asWritten = server;
    if (server.startsWith(QLatin1StringView("tcp:"), Qt::CaseInsensitive)) server.remove(0, 4);
    static const QRegularExpression port(QStringLiteral("\\s*,\\s*(\\d+)\\s*$"));
    if (const auto match = port.match(server); match.hasMatch()) {
        server.truncate(match.capturedStart());
        // A port leads straight to the instance, so that its name is not looked up.
        if (const qsizetype instance = server.indexOf(u'\\'); instance >= 0) server.truncate(instance);
        if (!keywords.Has(u"Port")) keywords.Set(QStringLiteral("Port"), match.captured(1));
    }
    if (server == u"." || server.compare(QLatin1StringView("(local)"), Qt::CaseInsensitive) == 0)
        server = QStringLiteral("localhost");
    if (server != asWritten) keywords.Set(QStringLiteral("Server"), server);
}

/// What FreeTDS needs over what the vendor's drivers do by themselves.
void SuitFreeTds(ConnectionString& keywords) {
    Rename(keywords, {u"Address", u"Addr", u"Network Address"}, QStringLiteral("Server"));
    SplitServer(keywords);
    // Without it, whatever Latin-1 can't hold would come as question marks.
    if (!keywords.Has(u"ClientCharset"))
        keywords.Set(QStringLiteral("ClientCharset"), QStringLiteral("UTF-8"));
}

Target ForSqlServer(ConnectionString keywords, const Installation& installation) {
    const Driver* driver = installation.ForSqlServer();
    if (!driver) RefuseDriver(QStringLiteral("ODBC Driver 18 for SQL Server"), installation);
    DropOleDbServices(keywords);
    Rename(keywords, {u"Data Source", u"Address", u"Addr", u"Network Address"}, QStringLiteral("Server"));
    Rename(keywords, {u"Initial Catalog"}, QStringLiteral("Database"));
    Rename(keywords, {u"Application Name"}, QStringLiteral("APP"));
    Rename(keywords, {u"Workstation ID"}, QStringLiteral("WSID"));
    Rename(keywords, {u"Failover Partner"}, QStringLiteral("Failover_Partner"));
    Rename(keywords, {u"MARS Connection", u"MultipleActiveResultSets"}, QStringLiteral("MARS_Connection"));
    Rename(keywords, {u"Trust Server Certificate"}, QStringLiteral("TrustServerCertificate"));
    RenameLogin(keywords);
    if (const auto encrypt = keywords.Take(u"Use Encryption for Data"); encrypt && !keywords.Has(u"Encrypt"))
        keywords.Set(QStringLiteral("Encrypt"),
                     IsYes(*encrypt) ? QStringLiteral("yes") : QStringLiteral("no"));
    for (const QStringView name : {u"Integrated Security", u"Trusted_Connection"}) {
        const auto trusted = keywords.Take(name);
        if (trusted && IsYes(*trusted))
            keywords.Set(QStringLiteral("Trusted_Connection"), QStringLiteral("Yes"));
    }
    if (FamilyOf(*driver) == Family::FreeTds) SuitFreeTds(keywords);
    keywords.Remove(u"Driver");
    return {QStringLiteral("Driver={%1};").arg(driver->Name) + keywords.Text(), driver->Name};
}

Target ForJet(ConnectionString keywords, const Installation& installation) {
    const bool workbook =
        keywords.Value(u"Extended Properties").contains(QLatin1StringView("Excel"), Qt::CaseInsensitive);
    const QString wanted =
        workbook ? QStringLiteral("Microsoft Excel Driver") : QStringLiteral("Microsoft Access Driver");
    const Driver* driver = installation.WithPrefix(wanted);
    if (!driver) RefuseDriver(wanted, installation);
    DropOleDbServices(keywords);
    keywords.Remove(u"Extended Properties");
    Rename(keywords, {u"Data Source"}, QStringLiteral("DBQ"));
    Rename(keywords, {u"Jet OLEDB:System Database"}, QStringLiteral("SystemDB"));
    Rename(keywords, {u"Jet OLEDB:Database Password"}, QStringLiteral("PWD"));
    RenameLogin(keywords);
    for (const QString& name : keywords.Names())
        if (name.startsWith(QLatin1StringView("Jet OLEDB:"), Qt::CaseInsensitive)) keywords.Remove(name);
    return {QStringLiteral("Driver={%1};").arg(driver->Name) + keywords.Text(), driver->Name};
}

/// The ODBC string that the bridge's own string holds: in its keywords, and whole in "Extended Properties".
ConnectionString Unbridged(ConnectionString keywords) {
    DropOleDbServices(keywords);
    Rename(keywords, {u"Data Source"}, QStringLiteral("DSN"));
    Rename(keywords, {u"Initial Catalog"}, QStringLiteral("Database"));
    RenameLogin(keywords);
    const std::optional<QString> inner = keywords.Take(u"Extended Properties");
    if (!inner) return keywords;
    ConnectionString result = ConnectionString::Parse(*inner);
    for (const QString& name : keywords.Names())
        if (!result.Has(name)) result.Set(name, keywords.Value(name));
    return result;
}

bool IsFile(const QString& driver) {
    return driver.contains(u'/') || driver.endsWith(QLatin1StringView(".so"), Qt::CaseInsensitive) ||
           driver.contains(QLatin1StringView(".so.")) || driver.endsWith(QLatin1StringView(".dylib"));
}

QString DriverOfSource(const QString& name, const Installation& installation) {
    for (const InstalledSources::DataSource& source : installation.DataSources)
        if (source.Name.compare(name, Qt::CaseInsensitive) == 0) return source.Driver;
    return {};
}

Target ForOdbc(ConnectionString keywords, const Installation& installation) {
    // Ours, and read before the string came here.
    keywords.Remove(u"Dialect");
    const QString name = keywords.Value(u"Driver");
    if (name.isEmpty()) return {keywords.Text(), DriverOfSource(keywords.Value(u"DSN"), installation)};
    Driver driver{IsFile(name) ? QFileInfo(name).fileName() : name, IsFile(name) ? name : QString()};
    if (!IsFile(name)) {
        const Driver* installed = installation.Find(name);
        if (!installed && FamilyOf(driver) == Family::SqlServer) installed = installation.ForSqlServer();
        if (!installed) RefuseDriver(name, installation);
        if (installed->Name.compare(name, Qt::CaseInsensitive) != 0)
            keywords.Set(QStringLiteral("Driver"), installed->Name);
        driver = *installed;
    }
    if (FamilyOf(driver) == Family::FreeTds) SuitFreeTds(keywords);
    return {keywords.Text(), driver.Name};
}

void PutLogin(ConnectionString& keywords, const OpenRequest& request) {
    const auto put = [&keywords](std::initializer_list<QStringView> others, const QString& name,
                                 const QString& value) {
        if (value.isEmpty()) return;
        for (const QStringView other : others) keywords.Remove(other);
        keywords.Set(name, value);
    };
    put({u"User ID", u"UserID", u"User", u"Username"}, QStringLiteral("UID"), request.UserId);
    put({u"Password"}, QStringLiteral("PWD"), request.Password);
}

bool StartsWithAny(const QString& text, std::initializer_list<const char*> prefixes) {
    for (const char* prefix : prefixes)
        if (text.startsWith(QLatin1StringView(prefix), Qt::CaseInsensitive)) return true;
    return false;
}

}  // namespace

Target Translate(const OpenRequest& request, const Installation& installation) {
    ConnectionString keywords = ConnectionString::Parse(request.ConnectionString);
    PutLogin(keywords, request);
    if (!keywords.IsOleDb()) return ForOdbc(std::move(keywords), installation);
    const QString provider = keywords.Value(u"Provider");
    if (provider.isEmpty() || StartsWithAny(provider, {"MSDASQL"}))
        return ForOdbc(Unbridged(std::move(keywords)), installation);
    if (StartsWithAny(provider, {"SQLOLEDB", "SQLNCLI", "MSOLEDBSQL"}))
        return ForSqlServer(std::move(keywords), installation);
    if (StartsWithAny(provider, {"Microsoft.Jet", "Microsoft.ACE"}))
        return ForJet(std::move(keywords), installation);
    throw Error(
        ErrorNumber::ProviderNotFound,
        QStringLiteral("The provider '%1' is not known, and no ODBC driver stands for it.").arg(provider),
        QStringLiteral("ODBC"));
}

}  // namespace zephrin::ado::odbc
