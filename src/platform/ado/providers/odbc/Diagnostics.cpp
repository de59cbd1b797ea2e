#include "platform/ado/providers/odbc/Diagnostics.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace zephrin::ado::odbc {

namespace {

/// Records of one call that are kept. Of what comes behind them only errors are, so that a warning for each
/// row doesn't hide them.
constexpr qsizetype MostRecords = 50;

/// The classes "success" and "warning" of the standard. Some drivers tell of a server's notice with the
/// first.
bool IsHarmless(QStringView state) {
    return state.startsWith(u"00") || state.startsWith(u"01");
}

/// A message may be longer than the buffer; then it is read again whole.
QString ReadMessage(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record, SQLSMALLINT units) {
    QString text(units, QChar(0));
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRecW(kind, handle, record, state.data(), &native, reinterpret_cast<SQLWCHAR*>(text.data()),
                   SQLSMALLINT(units), &length);
    const qsizetype end = text.indexOf(QChar(0));
    return end < 0 ? text : text.left(end);
}

int NumberOf(const Diagnostic& diagnostic) {
    switch (diagnostic.Native) {
        case 0:
            return diagnostic.State.startsWith(QLatin1StringView("HYT")) ? ErrorNumber::TimeoutExpired
                                                                         : ErrorNumber::ProviderFailed;
        // A server's own number that happens to be one by which the caller knows the state of the connection
        // object.
        case ErrorNumber::ObjectClosed:
        case ErrorNumber::ObjectOpen:
        case ErrorNumber::InvalidConnection:
            return ErrorNumber::ProviderFailed;
        default:
            return diagnostic.Native;
    }
}

/// The time-out of a statement; that of a connection, HYT01, is a lost one.
bool MeansTimeout(const QList<Diagnostic>& diagnostics) {
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const Diagnostic& record) { return record.State == QLatin1StringView("HYT00"); });
}

}  // namespace

QList<Diagnostic> ReadDiagnostics(SQLSMALLINT kind, SQLHANDLE handle) {
    QList<Diagnostic> found;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 1024> message{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    // A driver that repeats itself for ever is stopped.
    for (SQLSMALLINT record = 1; record < std::numeric_limits<SQLSMALLINT>::max(); ++record) {
        if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, state.data(), &native, message.data(),
                                          SQLSMALLINT(message.size()), &length)))
            break;
        const QString stateText = FromWide(state.data(), 5);
        if (found.size() >= MostRecords) {
            if (IsHarmless(stateText)) continue;
            found.removeLast();
        }
        QString text = FromWide(message.data());
        if (length >= SQLSMALLINT(message.size()) && length < 32000)
            text = ReadMessage(kind, handle, record, SQLSMALLINT(length + 1));
        found.append({stateText, int(native), text.trimmed()});
    }
    return found;
}

Diagnostic Leading(const QList<Diagnostic>& diagnostics) {
    const auto rank = [](const Diagnostic& record) {
        return std::pair(IsHarmless(record.State), record.Native == 0);
    };
    const auto shown = std::min_element(
        diagnostics.begin(), diagnostics.end(),
        [&](const Diagnostic& left, const Diagnostic& right) { return rank(left) < rank(right); });
    if (shown != diagnostics.end()) return *shown;
    return {QStringLiteral("HY000"), 0, QStringLiteral("The driver failed without saying why.")};
}

bool MeansLostConnection(const QList<Diagnostic>& diagnostics) {
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic& record) {
        // The standard's class, its time-out of a connection, and PostgreSQL's states of a server that went
        // down.
        return record.State.startsWith(QLatin1StringView("08")) ||
               record.State == QLatin1StringView("HYT01") ||
               record.State.startsWith(QLatin1StringView("57P0"));
    });
}

bool LacksFunction(const Statement& statement) {
    return Leading(ReadDiagnostics(SQL_HANDLE_STMT, statement.Handle())).State == QLatin1StringView("IM001");
}

Error ToError(const QList<Diagnostic>& diagnostics, const QString& driverName) {
    const Diagnostic shown = Leading(diagnostics);
    return Error(NumberOf(shown), shown.Message, driverName.isEmpty() ? QStringLiteral("ODBC") : driverName);
}

DriverFailure::DriverFailure(const QList<Diagnostic>& diagnostics, const QString& driverName, bool foundDead)
    : DriverFailure(ToError(diagnostics, driverName), foundDead || MeansLostConnection(diagnostics),
                    MeansTimeout(diagnostics)) {}

DriverFailure::DriverFailure(const Error& error, bool lostConnection, bool timeout)
    : Error(timeout          ? ErrorNumber::TimeoutExpired
            : lostConnection ? ErrorNumber::InvalidConnection
                             : error.Number(),
            error.Description(), error.Source()),
      lost(lostConnection) {}

void FailStatement(const Statement& statement, const QString& driverName) {
    const QList<Diagnostic> diagnostics = ReadDiagnostics(SQL_HANDLE_STMT, statement.Handle());
    // Some drivers tell of a dead connection only when asked.
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttr(statement.Connection().Handle(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER,
                      nullptr);
    throw DriverFailure(diagnostics, driverName, dead == SQL_CD_TRUE);
}

void CheckStatement(SQLRETURN outcome, const Statement& statement, const QString& driverName) {
    if (outcome == SQL_SUCCESS) return;
    if (SQL_SUCCEEDED(outcome)) {
        const QList<Diagnostic> told = ReadDiagnostics(SQL_HANDLE_STMT, statement.Handle());
        if (std::all_of(told.begin(), told.end(),
                        [](const Diagnostic& each) { return IsHarmless(each.State); }))
            return;
    }
    FailStatement(statement, driverName);
}

}  // namespace zephrin::ado::odbc
