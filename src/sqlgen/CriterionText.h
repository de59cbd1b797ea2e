#pragma once

#include "runstate/ZPGGlobalDeclarations.h"
#include "sqlgen/CriteriaOperators.h"

namespace zephrin {

/// The fragment that the entry on the build-query tab stands for, such as "= 'O''Brien'" or "BETWEEN 1 AND
/// 5", without a joining word. May ask the database for the type of the field, and keeps the delimiter for
/// the next commit.
QString CriterionText(ZPGGlobalDeclarations& state, const CriteriaOperator& entry);

/// A date as it goes into a criterion: written in the host's format, without delimiters.
QString CriterionDate(const ZPGGlobalDeclarations& state, const QString& text);

/// The character around dates: "'" on servers, "#" in files, nothing in an unknown dialect.
QString DateDelimiter(const ZPGGlobalDeclarations& state);

}  // namespace zephrin
