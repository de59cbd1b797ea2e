#include "platform/ado/providers/odbc/DriverList.h"

#include "platform/ado/providers/odbc/Handles.h"

#include <QRegularExpression>

#include <array>
#include <vector>

namespace zephrin::ado::odbc {

namespace {

/// How well a driver suits SQL Server; 0 for a driver of something else.
int SqlServerRank(const Driver& driver) {
    static const QRegularExpression newest(QStringLiteral("^ODBC Driver (\\d+) for SQL Server\\z"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression native(QStringLiteral("^SQL (?:Server )?Native Client ?(\\d*)"),
                                           QRegularExpression::CaseInsensitiveOption);
    const Family family = FamilyOf(driver);
    if (family == Family::FreeTds) return 1;
    if (family != Family::SqlServer) return 0;
    if (const auto match = newest.match(driver.Name); match.hasMatch())
        return 1000 + match.captured(1).toInt();
    if (const auto match = native.match(driver.Name); match.hasMatch())
        return 500 + match.captured(1).toInt();
    return 400;
}

/// The value of `Driver` in attributes that stand as `name=value`, each ended by a NUL.
QString LibraryOf(const SQLWCHAR* attributes, qsizetype units) {
    const QString all = QString::fromUtf16(reinterpret_cast<const char16_t*>(attributes), units);
    for (const QString& attribute : all.split(QChar(0), Qt::SkipEmptyParts))
        if (attribute.startsWith(QLatin1StringView("Driver="), Qt::CaseInsensitive)) return attribute.mid(7);
    return {};
}

QList<Driver> ReadDrivers(SQLHENV environment) {
    QList<Driver> drivers;
    std::array<SQLWCHAR, 512> name{};
    std::array<SQLWCHAR, 4096> attributes{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributeLength = 0;
    for (SQLUSMALLINT way = SQL_FETCH_FIRST;; way = SQL_FETCH_NEXT) {
        attributes.fill(0);
        if (!SQL_SUCCEEDED(SQLDriversW(environment, way, name.data(), SQLSMALLINT(name.size()), &nameLength,
                                       attributes.data(), SQLSMALLINT(attributes.size()), &attributeLength)))
            break;
        // The whole buffer is read: some versions of the manager tell the length of the first attribute only.
        drivers.append({FromWide(name.data()), LibraryOf(attributes.data(), qsizetype(attributes.size()))});
    }
    return drivers;
}

QList<InstalledSources::DataSource> ReadDataSources(SQLHENV environment) {
    QList<InstalledSources::DataSource> sources;
    std::array<SQLWCHAR, 512> name{};
    std::array<SQLWCHAR, 512> driver{};
    SQLSMALLINT length = 0;
    for (SQLUSMALLINT way = SQL_FETCH_FIRST;; way = SQL_FETCH_NEXT) {
        if (!SQL_SUCCEEDED(SQLDataSourcesW(environment, way, name.data(), SQLSMALLINT(name.size()), &length,
                                           driver.data(), SQLSMALLINT(driver.size()), &length)))
            break;
        sources.append({FromWide(name.data()), FromWide(driver.data())});
    }
    return sources;
}

}  // namespace

Family FamilyOf(const Driver& driver) {
    const auto has = [](const QString& text, const char* part) {
        return text.contains(QLatin1StringView(part), Qt::CaseInsensitive);
    };
    // The file counts before the name: FreeTDS is often registered under the vendor's name.
    if (has(driver.Library, "tdsodbc") || has(driver.Name, "freetds") || has(driver.Name, "tdsodbc"))
        return Family::FreeTds;
    if (has(driver.Name, "SQL Server") || has(driver.Name, "SQL Native Client") ||
        has(driver.Name, "msodbcsql"))
        return Family::SqlServer;
    if (has(driver.Name, "Microsoft Access Driver")) return Family::Access;
    if (has(driver.Name, "Microsoft Excel Driver")) return Family::Excel;
    return Family::Other;
}

Installation Installation::Read() {
    Installation found;
    const Environment environment;
    if (!environment.Handle()) return found;
    found.Drivers = ReadDrivers(environment.Handle());
    found.DataSources = ReadDataSources(environment.Handle());
    return found;
}

const Driver* Installation::Find(const QString& name) const {
    for (const Driver& driver : Drivers)
        if (driver.Name.compare(name, Qt::CaseInsensitive) == 0) return &driver;
    return nullptr;
}

const Driver* Installation::ForSqlServer() const {
    const Driver* best = nullptr;
    int rank = 0;
    for (const Driver& driver : Drivers) {
        if (const int its = SqlServerRank(driver); its > rank) {
            rank = its;
            best = &driver;
        }
    }
    return best;
}

const Driver* Installation::WithPrefix(const QString& prefix) const {
    for (const Driver& driver : Drivers)
        if (driver.Name.startsWith(prefix, Qt::CaseInsensitive)) return &driver;
    return nullptr;
}

QString Installation::Listing() const {
    if (Drivers.isEmpty()) return QStringLiteral("No ODBC driver is installed.");
    QStringList names;
    for (const Driver& driver : Drivers) names << driver.Name;
    return QStringLiteral("Installed drivers: %1.").arg(names.join(QStringLiteral(", ")));
}

}  // namespace zephrin::ado::odbc
