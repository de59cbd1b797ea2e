#pragma once

#include "platform/ado/Provider.h"

#include <QStringList>

#include <memory>
#include <optional>

struct sqlite3;

namespace zephrin::fuzz {

/// A small database in a file of its own, made once; no statement changes it.
class Engine {
 public:
    /// For the dialect of that number: SQL Server, MS Access, MS Excel.
    static Engine& For(int dialect);

    /// Runs a statement; its first rows as texts. Throws ado::Error, and nothing else, for what it refuses.
    QStringList Rows(const QString& statement);
    /// What SQLite itself says to a statement of its own; none where it refuses it.
    std::optional<QStringList> PlainRows(const QString& statement);

 private:
    explicit Engine(int dialect);

    std::unique_ptr<ado::Session> session;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> plain;
};

}  // namespace zephrin::fuzz
