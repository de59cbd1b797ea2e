#pragma once

#include "platform/ado/providers/sqlite/Deadline.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado::providers::sqlite {

/// The error for what the engine has just refused.
Error EngineFailure(sqlite3* database, int resultCode, const Deadline& deadline);

/// What the engine itself says of the columns of a statement. A type that nothing declares stays Empty.
QList<Field> EngineFields(sqlite3_stmt* statement, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
