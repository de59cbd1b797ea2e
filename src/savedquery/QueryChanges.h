#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QStringList>

namespace zephrin {

/// What a user made of the query, so far as a file would keep it; empty for a query that nobody has begun.
/// Lists of what else there would be to choose are no part of it: they change with the database.
QStringList DescribeQuery(const ZPGGlobalDeclarations& state);

/// Remembers the query as one that can be had from its file.
void KeepQuery(ZPGGlobalDeclarations& state);

/// Whether another query may take the place of the one in hand: asks where that was changed since it was
/// opened or saved, and saves it if the user says so.
bool MayLeaveQuery(ZPGGlobalDeclarations& state);

}  // namespace zephrin
