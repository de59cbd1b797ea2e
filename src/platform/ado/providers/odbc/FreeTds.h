#pragma once

#include <QString>

namespace zephrin::ado::odbc {

class ConnectionString;

/// Puts what stands there for the vendor's drivers into the words of FreeTDS, which knows few of theirs and
/// says nothing of those that it doesn't know:
/// - the server without its protocol and with its port apart, 1433 where neither port nor instance is named,
/// - encryption under its own keyword, so that a password never goes in clear where the string demands
/// encryption,
/// - texts in UTF-8.
///
/// Throws ado::Error where the string asks for a check of the server's certificate, which FreeTDS can't be
/// told to make, and doesn't say that it does without (`TrustServerCertificate=yes`); or for encryption in a
/// version of the protocol that has none.
void SuitFreeTds(ConnectionString& keywords, const QString& driverName);

}  // namespace zephrin::ado::odbc
