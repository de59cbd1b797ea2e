#pragma once

#include <sqlite3.h>

namespace zephrin::ado::providers::sqlite {

/// The aggregates that the engine doesn't have: STDEV, STDEVP, VAR, VARP, FIRST, LAST.
void RegisterAggregates(sqlite3* database);

}  // namespace zephrin::ado::providers::sqlite
