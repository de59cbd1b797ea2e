#pragma once

#include "platform/ado/providers/sqlite/Deadline.h"
#include "platform/ado/providers/sqlite/dialect/Tree.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado::providers::sqlite {

/// What the engine was busy with.
struct EngineTask {
    Dialect Speaks;
    StatementKind Kind = StatementKind::Other;
    QString Name = {};
    qsizetype Position = -1;
    /// Where the statement is deepest.
    qsizetype Deepest = -1;
};

/// The error for what the engine has just refused, in the words of the dialect.
Error EngineFailure(sqlite3* database, int resultCode, const Deadline& deadline, const EngineTask& task);

/// The error for a statement whose time is over.
Error TimeOver(const Deadline& deadline);

/// What the engine itself says of the columns of a statement. A type that nothing declares stays Empty.
QList<Field> EngineFields(sqlite3_stmt* statement, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
