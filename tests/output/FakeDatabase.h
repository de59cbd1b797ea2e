#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/ado/Provider.h"

#include <zephrin/ado/Error.h>

#include <QMap>
#include <QStringList>

namespace zephrin::test {

/// A database that remembers what it was asked, answers one row of one column, and refuses what it was told
/// to.
struct FakeDatabase {
    QStringList Statements;
    /// Begin of a statement, and the words with which it is refused.
    QMap<QString, QString> Refusals;
};

class FakeProvider : public ado::Provider {
 public:
    explicit FakeProvider(std::shared_ptr<FakeDatabase> fake) : database(std::move(fake)) {}
    bool Accepts(const QString&) const override { return true; }
    std::unique_ptr<ado::Session> Open(const ado::OpenRequest&) const override {
        return std::make_unique<FakeSession>(database);
    }

 private:
    class OneRow : public ado::Cursor {
     public:
        const QList<ado::Field>& Fields() const override { return fields; }
        qint64 Fetch(ado::ColumnStore& into, qint64) override {
            if (done) return 0;
            done = true;
            into.AppendInt(0, 1);
            into.EndRows();
            return 1;
        }

     private:
        QList<ado::Field> fields{ado::Field{QStringLiteral("One"), ado::DataType::Integer}};
        bool done = false;
    };
    class FakeSession : public ado::Session {
     public:
        explicit FakeSession(std::shared_ptr<FakeDatabase> fake) : database(std::move(fake)) {}
        std::unique_ptr<ado::Cursor> Execute(const QString& statement, const ado::ExecuteOptions&) override {
            database->Statements << statement;
            for (auto refusal = database->Refusals.cbegin(); refusal != database->Refusals.cend(); ++refusal)
                if (statement.startsWith(refusal.key()))
                    throw ado::Error(2714, refusal.value(), QStringLiteral("server"));
            return std::make_unique<OneRow>();
        }
        std::unique_ptr<ado::Cursor> Tables() override { return std::make_unique<OneRow>(); }
        std::unique_ptr<ado::Cursor> Columns(const QString&) override { return std::make_unique<OneRow>(); }

     private:
        std::shared_ptr<FakeDatabase> database;
    };

    std::shared_ptr<FakeDatabase> database;
};

}  // namespace zephrin::test
