#pragma once

#include "platform/ado/providers/files/protocol/Records.h"
#include "platform/ado/providers/sqlite/Handles.h"

namespace zephrin::ado::files {

/// Puts rows of the reader into a table of the engine.
class RowBinder {
 public:
    RowBinder(sqlite3* database, const QByteArray& insertion, qsizetype columns);

    /// What Insert() answers for a record that isn't rows.
    static constexpr int NotRows = -1;
    /// Adds all rows of a record; SQLITE_OK, the engine's code, or NotRows.
    int Insert(RecordReader rows);

 private:
    bool Bind(int parameter, RecordReader& row) const;

    sqlite3* database;
    providers::sqlite::StatementHandle statement;
    int count;
};

}  // namespace zephrin::ado::files
