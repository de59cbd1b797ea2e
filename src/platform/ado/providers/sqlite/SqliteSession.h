#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/sqlite/ConnectionStringReader.h"
#include "platform/ado/providers/sqlite/Deadline.h"
#include "platform/ado/providers/sqlite/Handles.h"
#include "platform/ado/providers/sqlite/SchemaCatalog.h"
#include "platform/ado/providers/sqlite/dialect/Translation.h"

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
    void Run(const char* sql);
    std::unique_ptr<Cursor> RunStep(const Translation& translation, size_t step, Deadline& deadline);
    QList<Field> FieldsOf(sqlite3_stmt* statement, const Translation& translation) const;
    std::unique_ptr<Cursor> RunSchemaQuery(const char* sql, const QString& argument, QList<Field> fields);

    Dialect dialect;
    DatabaseHandle database;
    SchemaCatalog catalog;
};

}  // namespace zephrin::ado::providers::sqlite
