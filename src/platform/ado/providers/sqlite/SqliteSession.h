#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/sqlite/ConnectionStringReader.h"
#include "platform/ado/providers/sqlite/Handles.h"
#include "platform/ado/providers/sqlite/SchemaCatalog.h"

namespace zephrin::ado::providers::sqlite {

/// One open file.
class SqliteSession final : public Session {
 public:
    /// Opens the file or throws; `timeout` bounds the wait for a file that is locked (0 waits for ever).
    SqliteSession(const OpenOptions& options, int timeout);

    std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) override;
    std::unique_ptr<Cursor> Tables() override;
    std::unique_ptr<Cursor> Columns(const QString& table) override;

 private:
    void CheckDatabase(const QString& path, int timeout);
    std::unique_ptr<Cursor> RunSchemaQuery(const char* sql, const QString& argument, QList<Field> fields);

    Dialect dialect;
    DatabaseHandle database;
    SchemaCatalog catalog;
};

}  // namespace zephrin::ado::providers::sqlite
