#pragma once

#include <QString>

namespace zephrin::ado {

/// No connection needs more; what is longer is refused before anybody takes it apart.
inline constexpr qsizetype MostConnectionCharacters = 16'384;

/// Value of the first `key` in a string of the form "Key=Value;Key={V;alue};Key="Val""ue"", without its
/// quotes; keys are compared without regard to case. Empty when the key is not there.
QString ConnectionValue(const QString& connectionString, QStringView key);

/// Whether the keyword holds a password: "PWD", "Password", "Jet OLEDB:Database Password".
bool IsSecretName(QStringView key);

/// `text` without the passwords that `connectionString` carries, however they are written there, and without
/// the one that was given beside it. For texts that are shown: a driver may well quote the string that it was
/// asked to open.
QString WithoutPasswords(QString text, const QString& connectionString, const QString& password);

}  // namespace zephrin::ado
