#pragma once

#include "platform/ado/Provider.h"

#include <zephrin/ado/Error.h>

namespace zephrin::ado {

/// A connection to one database, through whichever provider takes its string.
///
/// The providers are given by who makes the connection: this room knows none of them.
class Connection {
 public:
    explicit Connection(ProviderSet providers);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The string as it was set; Open doesn't add to it. Setting it (or a time-out that is negative: 3001) on
    /// an open connection throws 3705.
    void SetConnectionString(const QString& connectionString);
    const QString& ConnectionString() const { return request.ConnectionString; }
    /// Seconds; 0 waits for ever, a negative number throws 3001.
    void SetConnectionTimeout(int seconds);
    int ConnectionTimeout() const { return request.ConnectionTimeout; }
    /// Seconds, and allowed on an open connection too; counts from the next statement on.
    void SetCommandTimeout(int seconds);
    int CommandTimeout() const { return request.CommandTimeout; }

    /// Bytes that the rows of one recordset may take; 0 is no limit. A quarter of the machine's memory at
    /// first. What needs more fails with ErrorNumber::OutOfMemory.
    void SetMemoryLimit(qint64 bytes) { memoryLimit = bytes; }
    qint64 MemoryLimit() const { return memoryLimit; }
    /// Who is asked whether to go on while this connection waits, see Watcher; nobody at first.
    void SetWatcher(Watcher watcher) { request.Waiting->SetWatcher(std::move(watcher)); }

    /// Opens with ConnectionString(), or with `connectionString` where that is not empty. 3705 when open,
    /// 3706 when no provider takes the string, else the provider's error.
    void Open(const QString& connectionString = {}, const QString& userId = {}, const QString& password = {},
              int options = -1);
    /// 3704 when closed. While something is waited for it ends that as a stop would, and the connection
    /// behind it.
    void Close();
    ObjectState State() const { return session ? ObjectState::Open : ObjectState::Closed; }

    /// Runs a statement and fetches its rows. 3709 when closed.
    RecordsetPtr Execute(const QString& statement);
    /// The tables, or with Schema::Columns the columns of `table`. 3709 when closed.
    RecordsetPtr OpenSchema(Schema schema, const QString& table = {});

    /// Runs a statement and hands out its rows as they come, for who wants them once and does not keep them.
    std::unique_ptr<Cursor> Stream(const QString& statement, qint64 maxRecords = 0);

    const ProviderSet& Providers() const { return providers; }

 private:
    const std::shared_ptr<Session>& Live();

    ProviderSet providers;
    OpenRequest request;
    qint64 memoryLimit;
    /// Shared with the cursors that are still read.
    std::shared_ptr<Session> session;
};

}  // namespace zephrin::ado
