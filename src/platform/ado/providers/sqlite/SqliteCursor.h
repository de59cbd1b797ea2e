#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/sqlite/Deadline.h"
#include "platform/ado/providers/sqlite/Handles.h"

#include <zephrin/ado/Error.h>

#include <functional>

namespace zephrin::ado::providers::sqlite {

/// Makes the error of the engine's last failure, in the words of the dialect.
using FailureWriter = std::function<Error(int resultCode, const Deadline& deadline)>;

/// The rows of one SQLite statement, moved into columns without a stop in between.
///
/// The first row is fetched ahead: a statement that fails at once fails where it is executed, and a column of
/// which nothing else is known gets its type from there.
class SqliteCursor final : public Cursor {
 public:
    /// `fields` are the columns as far as they are known; a type of Empty is filled in from the first row.
    SqliteCursor(sqlite3* database, StatementHandle statement, QList<Field> fields, Deadline deadline,
                 FailureWriter failure);

    /// The columns whose values the statement makes; a debug build holds each against the type of its column.
    void ExpectTypes(QList<bool> columns) { made = std::move(columns); }

    const QList<Field>& Fields() const override { return fields; }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override;

 private:
    /// What a column's values become.
    enum class Shape : quint8 { Plain, Boolean, Currency, Exact, DateTime, Date, Time, Guid };

    bool Step();
    void AppendRow(ColumnStore& into) const;
    void AppendShaped(ColumnStore& into, int column) const;
    void GuessTypes();
    static Shape ShapeOf(const Field& field);
    void CheckRow() const;

    sqlite3* database;
    StatementHandle statement;
    QList<Field> fields;
    std::vector<Shape> shapes;
    QList<bool> made;
    Deadline deadline;
    FailureWriter failure;
    bool rowWaits = false;
};

}  // namespace zephrin::ado::providers::sqlite
