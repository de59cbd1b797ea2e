#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// Chooses the mode of the build-query tab: 0 Where, 1 Group, 2 Order. Always runs in full, also for the
/// present mode.
void ChooseQueryMode(ZPGGlobalDeclarations& state, int index);

void DistinctClicked(ZPGGlobalDeclarations& state);
void PercentClicked(ZPGGlobalDeclarations& state);
void TopXChanged(ZPGGlobalDeclarations& state);
void StatementTyped(ZPGGlobalDeclarations& state, const QString& text);

/// Enables what grouping, ordering, calculated fields and saving allow; `count` is the number of chosen
/// tables.
void SetOptionControls(ZPGGlobalDeclarations& state, int count);

/// Ends any criteria entry and shows the statement, written anew.
void ShowSqlView(ZPGGlobalDeclarations& state);

/// What the option of the present mode is called: "Where", "Group" or "Order".
QString QueryModeCaption(const ZPGGlobalDeclarations& state);

/// Switches the choice between AND and OR; the frame around it comes back with its options.
void EnableAndOr(FormState& form, bool enabled);

/// Asks, then removes criteria, grouping, ordering, calculated fields and the options of SELECT.
void ResetSql(ZPGGlobalDeclarations& state);

}  // namespace zephrin
