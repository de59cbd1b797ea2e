#pragma once

#include <QString>

namespace zephrin::ado {

/// Value of the first `key` in a string of the form "Key=Value;Key={V;alue};Key="Val""ue"", without its
/// quotes; keys are compared without regard to case. Empty when the key is not there.
QString ConnectionValue(const QString& connectionString, QStringView key);

/// `text` without the password that `connectionString` carries or that was given beside it. For texts that
/// are shown: a driver may well quote the string that it was asked to open.
QString WithoutPasswords(QString text, const QString& connectionString, const QString& password);

}  // namespace zephrin::ado
