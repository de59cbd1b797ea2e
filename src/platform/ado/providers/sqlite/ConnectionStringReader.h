#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <QList>
#include <QString>

namespace zephrin::ado::providers::sqlite {

/// What the connection string asks for.
struct OpenOptions {
    QString Path;
    Dialect Speaks = Dialect::SqlServer;
    bool ReadOnly = false;
};

struct Keyword {
    QString Name;
    QString Value;
};

/// Takes `name=value;name=value` apart. A value in quotes may hold anything, its quote doubled.
QList<Keyword> SplitConnectionString(QStringView connectionString);

/// Value of the last keyword of that name (case ignored), or a null string.
QString KeywordValue(const QList<Keyword>& keywords, QLatin1StringView name);

/// Reads and checks a whole string; throws ado::Error that names what is wrong with it.
OpenOptions ReadConnectionString(const QString& connectionString);

}  // namespace zephrin::ado::providers::sqlite
