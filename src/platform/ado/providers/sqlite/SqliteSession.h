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
    /// `tables` makes and fills tables when statements ask for them; such a session is for reading alone.
    SqliteSession(const OpenOptions& options, int timeout, std::shared_ptr<Watch> watch,
                  TableSource* tables = nullptr);
    /// Who is asked from the next call on, where several connections share this session one after the other.
    void SetWatch(std::shared_ptr<Watch> watch) { waiting = std::move(watch); }

    std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) override;
    std::unique_ptr<Cursor> Tables() override;
    std::unique_ptr<Cursor> Columns(const QString& table) override;

    /// For the source of the tables: the engine itself, and a view whose statement is in the session's
    /// dialect.
    sqlite3* Engine() const { return database.get(); }
    /// Who is asked from now on while the session waits: its user may be another one each time.
    void WaitWith(std::shared_ptr<Watch> watch) { waiting = std::move(watch); }
    void DefineView(const QString& name, const QString& statement);

 private:
    void CheckDatabase(const QString& path, int timeout);
    void TryView(const Translation& translation, Deadline& deadline);
    void Run(const char* sql);
    StatementHandle Prepare(const QByteArray& sql, const char** tail, int& code, Deadline& deadline);
    std::unique_ptr<Cursor> RunStep(const Translation& translation, size_t step, Deadline& deadline);
    QList<Field> FieldsOf(sqlite3_stmt* statement, const Translation& translation) const;
    std::unique_ptr<Cursor> RunSchemaQuery(const char* sql, const QString& argument, QList<Field> fields);

    Dialect dialect;
    TableSource* source;
    std::shared_ptr<Watch> waiting;
    DatabaseHandle database;
    SchemaCatalog catalog;
};

}  // namespace zephrin::ado::providers::sqlite
