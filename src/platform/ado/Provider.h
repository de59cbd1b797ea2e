#pragma once

#include "platform/ado/Watch.h"

#include <zephrin/ado/Recordset.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace zephrin::ado {

class ColumnStore;

/// What a connection hands to the provider that opens it.
struct OpenRequest {
    QString ConnectionString;
    QString UserId;  ///< empty where the string carries it, or none is needed
    QString Password;
    int ConnectionTimeout = 0;  ///< seconds, 0 waits for ever
    int CommandTimeout = 0;     ///< seconds, 0 waits for ever
    /// Asked in every wait, here and for as long as the session lives; never null.
    std::shared_ptr<Watch> Waiting = std::make_shared<Watch>();
};

struct ExecuteOptions {
    int CommandTimeout = 0;  ///< seconds, 0 waits for ever
    qint64 MaxRecords =
        0;  ///< 0 means no limit; a provider may stop there, the caller stops there in any case
};

/// The rows of one running statement, forward only.
class Cursor {
 public:
    virtual ~Cursor() = default;
    /// Columns in order, duplicates allowed; empty for a statement without rows of its own.
    virtual const QList<Field>& Fields() const = 0;
    /// Appends at most `maxRows` rows to `into`, whose columns are Fields(). Returns how many; 0 at the end.
    virtual qint64 Fetch(ColumnStore& into, qint64 maxRows) = 0;
};

/// One open connection of a provider. It is closed by its destruction. Used from one thread.
class Session {
 public:
    virtual ~Session() = default;
    /// Runs `statement`, byte for byte as the user sees it, in the session's dialect.
    virtual std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) = 0;
    /// Columns TABLE_CATALOG, TABLE_SCHEMA, TABLE_NAME, Table_Type ("TABLE", "VIEW", "SYSTEM TABLE", ...).
    virtual std::unique_ptr<Cursor> Tables() = 0;
    /// Columns TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE,
    /// in column order. No rows for a table that is not there.
    virtual std::unique_ptr<Cursor> Columns(const QString& table) = 0;
    /// False once the connection is known to be lost.
    virtual bool IsAlive() const { return true; }
};

/// What this machine has to connect through, for a person who has to choose.
struct InstalledSources {
    struct DataSource {
        QString Name;
        QString Driver;
    };
    QStringList Drivers;
    QList<DataSource> DataSources;
};

/// A way to reach databases. Stateless: sessions hold everything.
class Provider {
 public:
    virtual ~Provider() = default;
    /// Whether this provider takes the string. The first of a ProviderSet that does is asked to open it.
    virtual bool Accepts(const QString& connectionString) const = 0;
    /// Opens a session or throws ado::Error.
    virtual std::unique_ptr<Session> Open(const OpenRequest& request) const = 0;
    /// The drivers and data sources that this provider could open now; none where it needs neither.
    virtual InstalledSources Installed() const { return {}; }
};

using ProviderSet = std::vector<std::shared_ptr<const Provider>>;

}  // namespace zephrin::ado
