#pragma once

#include <memory>
#include <sqlite3.h>

namespace zephrin::ado::providers::sqlite {

struct CloseDatabase {
    // The lenient form of closing: a cursor that outlives its session keeps the file open until it ends.
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

}  // namespace zephrin::ado::providers::sqlite
