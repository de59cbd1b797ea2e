#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/odbc/DriverList.h"

namespace zephrin::ado::odbc {

/// What the driver manager is given for a connection string, and who will answer.
struct Target {
    QString ConnectionString;
    /// Name of the driver, or of its file; empty where only the driver manager knows.
    QString DriverName;
};

/// Turns the host's string into ODBC's own:
/// - `Provider=SQLOLEDB` and its successors into the keywords of the best driver installed for that server,
/// - `Provider=Microsoft.Jet...` into those of the Access or Excel driver,
/// - `Provider=MSDASQL` into the ODBC string that it holds,
/// - a driver for SQL Server that is not installed here into one that is,
/// - a server's port into a keyword of its own for the driver that wants it so.
/// User and password of the request come before those of the string. A string that is ODBC's already stays as
/// written.
///
/// Throws ado::Error where the string is malformed, or names a provider or a driver that is not there.
Target Translate(const OpenRequest& request, const Installation& installation);

}  // namespace zephrin::ado::odbc
