#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

// The join tab: pick a pair of tables, lock it, pair their fields, add. Side 0 is the left table, side 1 the
// right one. The clicks of lists and of the items of drop-downs come through ConnectHandlers.

/// Refills the join lists and rsJoinTable from colTables; existing joins stay untouched.
void RefreshJoinTables(ZPGGlobalDeclarations& state);

/// Takes the lock off, whatever stood locked. `takeFocus` where the join tab is shown.
void UnlockJoinTables(ZPGGlobalDeclarations& state, bool takeFocus);

/// Drops every join and makes every table joinable again.
void ClearJoins(ZPGGlobalDeclarations& state);

/// A table was picked from a drop-down.
void JoinTablePicked(ZPGGlobalDeclarations& state, int side);
/// It was picked for good: the user is taken on to what comes next.
void JoinTableChosen(ZPGGlobalDeclarations& state, int side);
/// Typing picks nothing: the text goes away again.
void JoinTableTyped(ZPGGlobalDeclarations& state, int side);

/// A join type was picked from its drop-down.
void JoinTypePicked(ZPGGlobalDeclarations& state);
/// Typing picks nothing: the plain join is back.
void JoinTypeTyped(ZPGGlobalDeclarations& state);

/// The padlock: locks the pair that is picked, or takes the lock off. A failed look-up of fields may end the
/// wizard.
void LockClicked(ZPGGlobalDeclarations& state);

/// A field was selected on one side, or none is any more.
void JoinFieldClicked(ZPGGlobalDeclarations& state, int side);
/// It was selected for good: the user is taken on to the button, or to the type of the join.
void JoinFieldChosen(ZPGGlobalDeclarations& state);

/// Joins the selected fields: the locked pair's first ones make a join, further ones go on with it.
void AddJoin(ZPGGlobalDeclarations& state);

/// Asks, then removes all joins.
void ResetJoins(ZPGGlobalDeclarations& state);

/// The button of a cell in the grid's `Compare` column: shows the comparisons to choose from, or hides them.
void CompareButtonClicked(ZPGGlobalDeclarations& state);
/// Another notice of the grid hides them.
void HideCompareList(ZPGGlobalDeclarations& state);
/// A comparison was chosen: it goes into the current row of rsJoins.
void ComparePicked(ZPGGlobalDeclarations& state);

}  // namespace zephrin
