#pragma once

#include "Database.h"

namespace shop {

/// Fills every table of the schema, the same rows each time.
void Fill(Database& database);

}  // namespace shop
