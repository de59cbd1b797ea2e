#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

// The second way to criteria: the sheet itself, edited in a grid instead of the statement. Columns count from
// 0.

/// Shows rsWhere for editing in place of the statement. Running waits until the statement is back.
void EditCriteria(ZPGGlobalDeclarations& state);

enum class QueryView { Grid = 0, Statement = 1 };
/// Switches the right side of the tab and nothing else.
void ShowStatementOrGrid(ZPGGlobalDeclarations& state, QueryView view);

/// What a cell will hold of what was typed: a bare value becomes an equality, a text that holds an operator
/// stays.
QString NormaliseCriterion(const ZPGGlobalDeclarations& state, const QString& typed);

/// A cell of `column` was edited and its text stands in the recordset.
void CriterionEdited(ZPGGlobalDeclarations& state, int column);

/// The button of a cell of `column` was pressed: hands its text to the criteria dialog. `onNewRow` where the
/// grid stands on the row that is not there yet.
void BeginCellDialog(ZPGGlobalDeclarations& state, int column, bool onNewRow);
/// The criteria dialog closed: takes over what it changed. False where the cell can't hold the text; it then
/// stays as it was, and the text is kept in CurrentCellText.
bool EndCellDialog(ZPGGlobalDeclarations& state, int column, bool onNewRow);

}  // namespace zephrin
