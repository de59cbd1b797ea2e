#include "platform/ado/providers/odbc/KeywordTranslation.h"

#include "platform/ado/providers/odbc/ConnectionString.h"
#include "platform/ado/providers/odbc/FreeTds.h"

#include <zephrin/ado/Error.h>

#include <QFileInfo>

namespace zephrin::ado::odbc {

namespace {

[[noreturn]] void RefuseDriver(const QString& missing, const Installation& installation) {
    throw Error(
        ErrorNumber::ProviderFailed,
        QStringLiteral("The ODBC driver '%1' is not installed. %2").arg(missing, installation.Listing()),
        QStringLiteral("ODBC"));
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

/// The value of OLE DB's keyword of encryption as ODBC's has it.
QString OdbcEncrypt(const QString& value) {
    if (value.compare(QLatin1StringView("strict"), Qt::CaseInsensitive) == 0) return QStringLiteral("strict");
    return IsNo(value) ? QStringLiteral("no") : QStringLiteral("yes");
}

void RenameLogin(ConnectionString& keywords) {
    Rename(keywords, {u"User ID", u"UserID", u"User", u"Uid"}, QStringLiteral("UID"));
    Rename(keywords, {u"Password", u"Pwd"}, QStringLiteral("PWD"));
}

/// The string in the form that the driver reads, for a driver that is known.
QString TextFor(ConnectionString& keywords, const Driver& driver) {
    if (FamilyOf(driver) != Family::FreeTds) return keywords.Text();
    SuitFreeTds(keywords, driver.Name);
    return keywords.TextWithRawBraces();
}

QString TextFor(ConnectionString& keywords, const Driver& driver, const QString& name) {
    keywords.Remove(u"Driver");
    return QStringLiteral("Driver={%1};").arg(name) + TextFor(keywords, driver);
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
        keywords.Set(QStringLiteral("Encrypt"), OdbcEncrypt(*encrypt));
    for (const QStringView name : {u"Integrated Security", u"Trusted_Connection"}) {
        const auto trusted = keywords.Take(name);
        if (trusted && IsYes(*trusted))
            keywords.Set(QStringLiteral("Trusted_Connection"), QStringLiteral("Yes"));
    }
    return {TextFor(keywords, *driver, driver->Name), driver->Name};
}

/// Whether `Mode=` asks for no more than reading, among others behind a bar.
bool IsReadOnly(const QString& mode) {
    for (const QString& part : mode.split(u'|'))
        if (part.trimmed().compare(QLatin1StringView("Read"), Qt::CaseInsensitive) == 0) return true;
    return false;
}

Target ForJet(ConnectionString keywords, const Installation& installation) {
    const bool workbook =
        keywords.Value(u"Extended Properties").contains(QLatin1StringView("Excel"), Qt::CaseInsensitive);
    const QString wanted =
        workbook ? QStringLiteral("Microsoft Excel Driver") : QStringLiteral("Microsoft Access Driver");
    const Driver* driver = installation.WithPrefix(wanted);
    if (!driver) RefuseDriver(wanted, installation);
    const bool readOnly = IsReadOnly(keywords.Value(u"Mode"));
    DropOleDbServices(keywords);
    keywords.Remove(u"Extended Properties");
    Rename(keywords, {u"Data Source"}, QStringLiteral("DBQ"));
    Rename(keywords, {u"Jet OLEDB:System Database"}, QStringLiteral("SystemDB"));
    Rename(keywords, {u"Jet OLEDB:Database Password"}, QStringLiteral("PWD"));
    RenameLogin(keywords);
    for (const QString& name : keywords.Names())
        if (name.startsWith(QLatin1StringView("Jet OLEDB:"), Qt::CaseInsensitive)) keywords.Remove(name);
    if (readOnly) keywords.Set(QStringLiteral("ReadOnly"), QStringLiteral("1"));
    return {TextFor(keywords, *driver, driver->Name), driver->Name};
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

/// The driver behind a data source: by its name, or as the file that stands there in its place.
Driver DriverOfSource(const QString& name, const Installation& installation) {
    for (const InstalledSources::DataSource& source : installation.DataSources) {
        if (source.Name.compare(name, Qt::CaseInsensitive) != 0) continue;
        const Driver* installed = installation.Find(source.Driver);
        return installed ? *installed : Driver{source.Driver, source.Driver};
    }
    return {};
}

/// The driver that `Driver=` names, by its file or by a name that is installed here.
Driver NamedDriver(ConnectionString& keywords, const QString& name, const Installation& installation) {
    if (IsFile(name)) return {QFileInfo(name).fileName(), name};
    const Driver* installed = installation.Find(name);
    if (!installed && FamilyOf({name, {}}) == Family::SqlServer) installed = installation.ForSqlServer();
    if (!installed) RefuseDriver(name, installation);
    if (installed->Name.compare(name, Qt::CaseInsensitive) != 0)
        keywords.Set(QStringLiteral("Driver"), installed->Name);
    return *installed;
}

Target ForOdbc(ConnectionString keywords, const Installation& installation) {
    const QString name = keywords.Value(u"Driver");
    const Driver driver = name.isEmpty() ? DriverOfSource(keywords.Value(u"DSN"), installation)
                                         : NamedDriver(keywords, name, installation);
    return {TextFor(keywords, driver), driver.Name};
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
    // Ours, and read before the string came here.
    keywords.Remove(u"Dialect");
    PutLogin(keywords, request);
    if (!keywords.IsOleDb()) return ForOdbc(std::move(keywords), installation);
    const QString provider = keywords.Value(u"Provider");
    if (provider.isEmpty() || StartsWithAny(provider, {"MSDASQL"})) {
        ConnectionString inner = Unbridged(std::move(keywords));
        inner.Remove(u"Dialect");
        // What the string in the string says of the login comes behind, too.
        PutLogin(inner, request);
        return ForOdbc(std::move(inner), installation);
    }
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
