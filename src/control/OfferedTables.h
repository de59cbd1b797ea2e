#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// The offer becomes the names of a text with ";" between them, as they stand. A last name of one character
/// is lost.
void LoadTableString(ZPGGlobalDeclarations& state, const QString& tableString);

/// The offer becomes the names of the schema in delimiters: every one, or without system tables those of
/// tables and views. Throws ado::Error when the schema has no such columns.
void LoadSchemaTables(ZPGGlobalDeclarations& state, bool removeSystemTables);

}  // namespace zephrin
