#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/ado/Connection.h"

#include <QThread>

#include <algorithm>
#include <functional>

namespace zephrin::ado::test {

/// A statement's rows, made up while they are fetched: cell (row, column) is what `Cell` says.
struct FakeRows {
    QList<Field> Fields;
    qint64 Count = 0;
    std::function<QVariant(qint64 row, int column)> Cell = [](qint64 row, int) { return QVariant(row); };
    /// The fetch that reaches this row fails; -1 is never.
    qint64 FailsAt = -1;
};

class FakeCursor : public Cursor {
 public:
    explicit FakeCursor(FakeRows given) : rows(std::move(given)) {}

    const QList<Field>& Fields() const override { return rows.Fields; }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override {
        const qint64 end = std::min(rows.Count, next + maxRows);
        const qint64 begin = next;
        for (; next < end; ++next) {
            if (next == rows.FailsAt)
                throw Error(42, QStringLiteral("The line went dead"), QStringLiteral("Fake"));
            for (int column = 0; column < rows.Fields.size(); ++column)
                into.AppendValue(column, rows.Cell(next, column), rows.Fields.at(column).Type);
            into.EndRows();
        }
        return end - begin;
    }

 private:
    FakeRows rows;
    qint64 next = 0;
};

/// What a test looks at and decides; outlives the sessions.
struct FakeServer {
    FakeRows Rows;
    bool Alive = true;
    QString OpenFailure;
    QStringList Statements;
    OpenRequest LastOpening;
    ExecuteOptions LastOptions;
    int Sessions = 0;
};

/// What only a watcher ends.
[[noreturn]] inline void WaitUntilStopped(Watch& watch) {
    while (watch.GoOn()) QThread::msleep(1);
    throw Cancelled();
}

class FakeSession : public Session {
 public:
    explicit FakeSession(FakeServer& used) : server(used) { ++server.Sessions; }
    ~FakeSession() override { --server.Sessions; }

    std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) override {
        server.Statements << statement;
        server.LastOptions = options;
        if (statement == QStringLiteral("nonsense"))
            throw Error(170, QStringLiteral("Incorrect syntax"), QStringLiteral("Fake"));
        if (statement == QStringLiteral("wait")) WaitUntilStopped(*server.LastOpening.Waiting);
        return std::make_unique<FakeCursor>(server.Rows);
    }
    std::unique_ptr<Cursor> Tables() override {
        return Named(QStringLiteral("TABLE_NAME"), QStringLiteral("Shops"));
    }
    std::unique_ptr<Cursor> Columns(const QString& table) override {
        return Named(QStringLiteral("COLUMN_NAME"), table);
    }
    bool IsAlive() const override { return server.Alive; }

 private:
    static std::unique_ptr<Cursor> Named(const QString& column, const QString& value) {
        FakeRows rows;
        rows.Fields = {Field{column, DataType::VarWChar, 128}};
        rows.Count = 1;
        rows.Cell = [value](qint64, int) { return QVariant(value); };
        return std::make_unique<FakeCursor>(rows);
    }

    FakeServer& server;
};

class FakeProvider : public Provider {
 public:
    explicit FakeProvider(FakeServer& used) : server(used) {}

    bool Accepts(const QString& connectionString) const override {
        return connectionString.contains(QStringLiteral("Provider=Fake"));
    }
    std::unique_ptr<Session> Open(const OpenRequest& request) const override {
        server.LastOpening = request;
        if (request.ConnectionString.contains(QStringLiteral("Mute"))) WaitUntilStopped(*request.Waiting);
        if (!server.OpenFailure.isEmpty()) throw Error(18456, server.OpenFailure, QStringLiteral("Fake"));
        return std::make_unique<FakeSession>(server);
    }

 private:
    FakeServer& server;
};

inline ProviderSet FakeProviders(FakeServer& server) {
    return {std::make_shared<FakeProvider>(server)};
}

}  // namespace zephrin::ado::test
