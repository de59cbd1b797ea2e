#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QStringList>

namespace zephrin {

/// The dialect that a connection string names by the words in it, or "" for none.
QString DetectDialect(const QString& connectionString);

/// True for "SQL Server" and "Oracle", the dialects of database servers.
bool IsServerDialect(const QString& databaseType);
/// True for "MS Access" and "MS Excel".
bool IsFileDialect(const QString& databaseType);

/// The aggregates and the grouping that the dialect offers in Group mode; empty for an unknown one.
QStringList GroupOperators(const QString& databaseType);

/// What went wrong with a connection attempt; empty after a success.
struct ConnectionErrors {
    /// In this order: description, number, source.
    QStringList Items;
    bool IsEmpty() const { return Items.isEmpty(); }
    QString Description() const { return Items.value(0); }
    int Number() const { return Items.value(1).toInt(); }
    QString Source() const { return Items.value(2); }
};

/// Recognises the dialect, opens the shared connection and reads the tables. Nothing is thrown: failures are returned.
ConnectionErrors OpenDatabaseConnection(ZPGGlobalDeclarations& state, const QString& connectionString,
                                        int connectTimeout, int commandTimeout, const QString& userName,
                                        const QString& password);

}  // namespace zephrin
