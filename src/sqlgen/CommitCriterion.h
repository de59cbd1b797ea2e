#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

enum class CommitOutcome {
    Written,
    TooLong,  ///< a cell can't hold its text
    Failed    ///< the sheet can't be written, or has no column for the field
};

/// Writes the criterion that stands on the build-query tab into rsWhere, then rebuilds both clauses.
///
/// With AND it joins the last row and, where it has to hold in every alternative, the other rows; with OR it
/// makes a new one, or, where the field has a criterion already, one for each row that is there. What can't
/// be written whole leaves everything as it was. Throws ado::Error where the look-up of the field's type was
/// stopped; nothing is written then, and the showing may be over.
CommitOutcome CommitCriterion(ZPGGlobalDeclarations& state);

/// A field's text taken apart: its table and its bare name, both in the delimiters of the dialect. Without a
/// "." the whole text is the field, and the table is empty.
struct FieldParts {
    QString Table, Field;
};
FieldParts SplitField(const ZPGGlobalDeclarations& state, const QString& field);

}  // namespace zephrin
