#include "flow/TableTab.h"

#include "flow/JoinTab.h"
#include "flow/MoveLists.h"
#include "flow/Shell.h"

namespace zephrin {

namespace {

MoveDirection ToTheRight(FormState& form) {
    return {form.lstZPQTableSelection, form.lstZPQTableTo, form.cmdZPQTableRight, form.cmdZPQTableRightAll,
            form.cmdZPQTableLeftAll};
}

MoveDirection ToTheLeft(FormState& form) {
    return {form.lstZPQTableTo, form.lstZPQTableSelection, form.cmdZPQTableLeft, form.cmdZPQTableLeftAll,
            form.cmdZPQTableRightAll};
}

bool HasChosenTables(const ZPGGlobalDeclarations& state) {
    return state.Form->lstZPQTableTo.Items.ListCount() > 0;
}

void SetTabsForSelection(ZPGGlobalDeclarations& state) {
    SetTabsForTables(state, HasChosenTables(state), {});
}

void ResetJoinsIfAny(ZPGGlobalDeclarations& state) {
    if (HasRows(state.rsJoins)) ClearJoins(state);
}

/// A table that is chosen again is no longer one that was taken back.
void ForgetTakenBack(FormState& form, const QStringList& tables) {
    const Collection chosen(tables);
    Collection rest;
    for (const QString& table : form.RemoveTables)
        if (!chosen.Contains(table)) rest.Add(table);
    form.RemoveTables = rest;
}

void RefuseSecondTable(const ZPGGlobalDeclarations& state) {
    state.UserPrompts->MsgBox(ResString(state, 193) + QStringLiteral("\r\n") + ResString(state, 194),
                              BoxStyle::Information, state.Options.gRunTimeCaption);
}

/// With joins forbidden one table is all there can be, so its choice takes the user on at once.
void JumpAfterSingleTable(ZPGGlobalDeclarations& state) {
    if (state.Options.gAllowJoinCreation) return;
    SelectTab(state, state.Options.gAllowFieldSelection ? WizardTab::Fields : WizardTab::Build);
}

}  // namespace

void MoveTableRight(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    FormState& form = *state.Form;
    form.TablesChanged = true;
    if (!state.Options.gAllowJoinCreation && HasChosenTables(state)) {
        RefuseSecondTable(state);
        if (state.Showing == showing) SetTabsForSelection(state);
        return;
    }
    const MoveDirection move = ToTheRight(form);
    form.RemoveTables.Remove(move.From.Items.Text());
    SelectAfterMove(move, MoveSelected(move));
    // Leaving this tab may find that the table is gone, and the user may close the wizard over that.
    JumpAfterSingleTable(state);
    if (state.Showing != showing) return;
    ApplySingleTableMode(state);
    SetTabsForSelection(state);
}

void MoveAllTablesRight(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.TablesChanged = true;
    ForgetTakenBack(form, form.lstZPQTableSelection.Items.Items());
    MoveAll(ToTheRight(form));
    ApplySingleTableMode(state);
    SetTabsForSelection(state);
}

void MoveTableLeft(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.TablesChanged = true;
    if (HasChosenTables(state)) {
        const MoveDirection move = ToTheLeft(form);
        if (move.From.Items.ListIndex() >= 0) form.RemoveTables.Add(move.From.Items.Text());
        SelectAfterMove(move, MoveSelected(move));
    }
    SetTabsForSelection(state);
    ApplySingleTableMode(state);
    ResetJoinsIfAny(state);
}

void MoveAllTablesLeft(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.TablesChanged = true;
    for (const QString& table : form.lstZPQTableTo.Items.Items()) form.RemoveTables.Add(table);
    MoveAll(ToTheLeft(form));
    SetTabsForTables(state, false, {});
    ApplySingleTableMode(state);
    ResetJoinsIfAny(state);
}

void TableSelectionClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstZPQTableSelection.ToolTipText = form.lstZPQTableSelection.Items.Text();
    form.cmdZPQTableRight.Enabled = true;
    form.cmdZPQTableRightAll.Enabled = true;
    ApplySingleTableMode(state);
}

void TableToClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstZPQTableTo.ToolTipText = form.lstZPQTableTo.Items.Text();
    form.cmdZPQTableLeft.Enabled = true;
    form.cmdZPQTableLeftAll.Enabled = true;
    ApplySingleTableMode(state);
}

void ApplySingleTableMode(ZPGGlobalDeclarations& state) {
    if (state.Options.gAllowJoinCreation) return;
    FormState& form = *state.Form;
    if (HasChosenTables(state)) form.cmdZPQTableRight.Enabled = false;
    form.cmdZPQTableRightAll.Enabled = false;
    form.cmdZPQTableLeftAll.Enabled = false;
}

void SetTabsForTables(ZPGGlobalDeclarations& state, bool enabled, const QString& mode) {
    const bool joinsFirst = state.Form->lstZPQTableTo.Items.ListCount() > 1 && mode.isEmpty();
    auto& open = state.Form->TabZPG.TabEnabled;
    open[static_cast<int>(WizardTab::Joins)] = joinsFirst && enabled;
    for (const WizardTab tab : {WizardTab::Fields, WizardTab::Build, WizardTab::Results})
        open[static_cast<int>(tab)] = !joinsFirst && enabled;
}

}  // namespace zephrin
