#pragma once

#include "platform/ado/providers/odbc/Handles.h"

#include <zephrin/ado/Error.h>

#include <QList>
#include <QString>

namespace zephrin::ado::odbc {

/// One of the records in which ODBC tells what happened to a call.
struct Diagnostic {
    QString State;
    int Native = 0;
    QString Message;
};

QList<Diagnostic> ReadDiagnostics(SQLSMALLINT kind, SQLHANDLE handle);

/// The record that a person should see: the first with a number of the server's own, else the first, and no
/// warning where there is more. Managers and drivers put records of their own around it, often the same one
/// twice.
Diagnostic Leading(const QList<Diagnostic>& diagnostics);

/// Whether one of the records says that the connection itself is gone.
bool MeansLostConnection(const QList<Diagnostic>& diagnostics);

/// Whether the last call on `statement` failed because the driver doesn't have that function.
bool LacksFunction(const Statement& statement);

/// The error of a failed attempt to connect, in the driver's own words.
Error ToError(const QList<Diagnostic>& diagnostics, const QString& driverName);

/// The error of a call on an open connection. One that lost it is ErrorNumber::InvalidConnection, but for a
/// time-out, which stays what it is.
class DriverFailure : public Error {
 public:
    DriverFailure(const QList<Diagnostic>& diagnostics, const QString& driverName, bool foundDead = false);
    bool LosesConnection() const { return lost; }

 private:
    DriverFailure(const Error& error, bool lostConnection, bool timeout);

    bool lost;
};

/// Throws the DriverFailure of a call that failed on `statement`.
[[noreturn]] void FailStatement(const Statement& statement, const QString& driverName);

/// Throws the error of a call on `statement` where `outcome` isn't a success, or a success that tells of an
/// error: a statement that fails in the middle of its rows delivers the rows before as a success "with info",
/// and the next fetch is just the end.
void CheckStatement(SQLRETURN outcome, const Statement& statement, const QString& driverName);

}  // namespace zephrin::ado::odbc
