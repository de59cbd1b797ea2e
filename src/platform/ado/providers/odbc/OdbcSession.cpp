#include "platform/ado/providers/odbc/OdbcSession.h"

#include "platform/ado/providers/odbc/Diagnostics.h"
#include "platform/ado/providers/odbc/OdbcCursor.h"
#include "platform/ado/providers/odbc/SchemaReader.h"

#include <array>
#include <limits>

namespace zephrin::ado::odbc {

namespace {

/// Something that the driver says of itself; empty where it doesn't.
QString Information(SQLHDBC connection, SQLUSMALLINT what) {
    std::array<SQLWCHAR, 256> text{};
    SQLSMALLINT bytes = 0;
    if (!SQL_SUCCEEDED(SQLGetInfoW(connection, what, text.data(), SQLSMALLINT(sizeof text), &bytes)))
        return {};
    return FromWide(text.data());
}

DriverTraits ReadTraits(SQLHDBC connection, const QString& driverName) {
    DriverTraits traits;
    traits.DriverName = driverName.isEmpty() ? Information(connection, SQL_DRIVER_NAME) : driverName;
    traits.PatternEscape = Information(connection, SQL_SEARCH_PATTERN_ESCAPE);
    traits.LooseTypes =
        Information(connection, SQL_DBMS_NAME).startsWith(QLatin1StringView("SQLite"), Qt::CaseInsensitive);
    SQLGetInfo(connection, SQL_GETDATA_EXTENSIONS, &traits.GetDataExtensions, sizeof traits.GetDataExtensions,
               nullptr);
    return traits;
}

struct Connected {
    std::shared_ptr<Link> Handle;
    DriverTraits Traits;
};

/// Runs on the worker's thread.
Connected Connect(const Target& target, int timeout) {
    // The driver manager takes the length as a short number.
    if (target.ConnectionString.size() > std::numeric_limits<SQLSMALLINT>::max())
        throw Error(ErrorNumber::InvalidArgument, QStringLiteral("The connection string is too long."),
                    QStringLiteral("ODBC"));
    auto link = std::make_shared<Link>();
    if (!link->Handle())
        throw Error(ErrorNumber::ProviderFailed,
                    QStringLiteral("The ODBC driver manager gives no connection."), QStringLiteral("ODBC"));
    if (timeout > 0)
        SQLSetConnectAttr(link->Handle(), SQL_ATTR_LOGIN_TIMEOUT, AsPointer(SQLULEN(timeout)), 0);
    // The completed string is not asked for: where a driver leaves it unwritten, the driver manager reads
    // beyond it.
    SQLSMALLINT length = 0;
    const SQLRETURN outcome = SQLDriverConnectW(link->Handle(), nullptr, ToWide(target.ConnectionString),
                                                SQLSMALLINT(target.ConnectionString.size()), nullptr, 0,
                                                &length, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(outcome))
        throw ToError(ReadDiagnostics(SQL_HANDLE_DBC, link->Handle()), target.DriverName);
    link->SetConnected();
    DriverTraits traits = ReadTraits(link->Handle(), target.DriverName);
    return {std::move(link), std::move(traits)};
}

std::shared_ptr<Channel> OpenChannel(const Target& target, int timeout, const std::shared_ptr<Watch>& watch) {
    auto worker = std::make_unique<Worker>();
    auto outcome = worker->Start([target, timeout] { return Connect(target, timeout); });
    const WaitEnd end = WaitFor(outcome, DeadlineAfter(timeout), *watch);
    if (end != WaitEnd::Ready) {
        // No driver can be asked to stop connecting.
        worker->Abandon();
        if (end == WaitEnd::Stopped) throw Cancelled();
        throw Error(ErrorNumber::TimeoutExpired,
                    QStringLiteral("The server did not answer within %1 seconds.").arg(timeout),
                    target.DriverName.isEmpty() ? QStringLiteral("ODBC") : target.DriverName);
    }
    Connected connected = outcome.get();
    return std::make_shared<Channel>(std::move(worker), std::move(connected.Handle),
                                     std::move(connected.Traits), watch);
}

}  // namespace

OdbcSession::OdbcSession(const Target& target, const OpenRequest& request)
    : channel(OpenChannel(target, request.ConnectionTimeout, request.Waiting)),
      schemaTimeout(request.CommandTimeout) {}

std::unique_ptr<Cursor> OdbcSession::Execute(const QString& statement, const ExecuteOptions& options) {
    auto cursor = std::make_unique<OdbcCursor>(channel);
    cursor->Execute(statement, options);
    return cursor;
}

std::unique_ptr<Cursor> OdbcSession::Tables() {
    return ReadTables(*channel, schemaTimeout);
}

std::unique_ptr<Cursor> OdbcSession::Columns(const QString& table) {
    return ReadColumns(*channel, table, schemaTimeout);
}

}  // namespace zephrin::ado::odbc
