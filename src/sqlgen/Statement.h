#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <vector>

namespace zephrin {

/// Joins the clauses into txtSQL, colours it, and says whether it can be run.
void AssembleStatement(ZPGGlobalDeclarations& state);

/// The colours of a statement, in the order in which they are painted; later spans paint over earlier ones.
/// Positions count in `statement`, with CR LF as two characters.
std::vector<ColourSpan> ColourStatement(const QString& statement);

/// cmdRunQuery and cmdCreateView are enabled exactly when txtSQL shows text; line breaks alone are none.
void EnableRunQuery(ZPGGlobalDeclarations& state);

/// Rebuilds every clause from the state, then assembles.
void RegenerateStatement(ZPGGlobalDeclarations& state);

}  // namespace zephrin
