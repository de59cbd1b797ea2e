#include "flow/FieldTab.h"

#include "flow/BuildTab.h"
#include "flow/JoinTab.h"
#include "flow/MoveLists.h"
#include "flow/Shell.h"
#include "flow/TableTab.h"
#include "runstate/Retrieval.h"
#include "sqlgen/Aliases.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <QSet>

#include <algorithm>

namespace zephrin {

namespace {

MoveDirection ToTheRight(FormState& form) {
    return {form.lstZPQFieldFrom, form.lstZPQFieldTo, form.cmdZPQFieldRight, form.cmdZPQFieldRightAll,
            form.cmdZPQFieldLeftAll};
}

MoveDirection ToTheLeft(FormState& form) {
    return {form.lstZPQFieldTo, form.lstZPQFieldFrom, form.cmdZPQFieldLeft, form.cmdZPQFieldLeftAll,
            form.cmdZPQFieldRightAll};
}

/// Output fields stay, in their order, as far as their table is still chosen; each takes its place in
/// colSelFields away.
void DropStaleOutputFields(ZPGGlobalDeclarations& state) {
    ListState& output = state.Form->lstZPQFieldTo.Items;
    QSet<QString> chosen;
    for (int index = 0; index < output.ListCount();) {
        const QString key = output.List(index).toCaseFolded();
        if (state.colSelFields.Contains(key) && !chosen.contains(key)) {
            chosen.insert(key);
            ++index;
        } else {
            output.RemoveItem(index);
        }
    }
    Collection remaining;
    for (const QString& field : state.colSelFields)
        if (!chosen.contains(field.toCaseFolded())) remaining.Add(field);
    state.colSelFields = remaining;
}

void RefreshFieldLists(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstZPQFieldFrom.Items.Clear();
    if (form.lstZPQFieldTo.Items.ListCount() > 0) DropStaleOutputFields(state);
    const bool nothingLeft = state.colSelFields.IsEmpty();
    if (nothingLeft && form.lstZPQTableTo.Items.ListCount() == 0) form.lstZPQFieldTo.Items.Clear();
    form.lstZPQFieldFrom.Items.AddItems(state.colSelFields.Items());
    // Taking all fields back stays off even where there are some, until one of them is clicked.
    form.cmdZPQFieldRightAll.Enabled = !nothingLeft;
    for (ButtonState* button : {&form.cmdZPQFieldLeft, &form.cmdZPQFieldRight, &form.cmdZPQFieldLeftAll})
        button->Enabled = false;
}

/// A calculated field stays while it mentions one chosen table at least.
void DropStaleCalculations(ZPGGlobalDeclarations& state) {
    QSet<QString> tables;
    for (const QString& field : state.colFields)
        tables.insert(field.left(field.indexOf(state.gDelimClose) + 1));
    DeleteAliasedRows(state, state.rsCalcFields, [&](const ado::Recordset& calculations, qint64 row) {
        const QString expression = calculations.TextAt(row, 0);
        return std::none_of(tables.begin(), tables.end(),
                            [&](const QString& table) { return expression.contains(table); });
    });
}

/// A group stays with its field, be it a plain or a calculated one.
void DropStaleGroups(ZPGGlobalDeclarations& state) {
    QSet<QString> fields(state.colFields.begin(), state.colFields.end());
    for (const CalcRow& calculation : CalcRows(state)) fields.insert(calculation.CalcField);
    DeleteAliasedRows(state, state.rsGroupBy, [&](const ado::Recordset& groups, qint64 row) {
        return !fields.contains(groups.TextAt(row, 0));
    });
}

/// An ordering row stays while its text mentions a field, be it as a part of another text, or while it orders
/// by a calculated field or a group that stayed.
void DropStaleOrders(ZPGGlobalDeclarations& state) {
    QSet<QString> expressions;
    for (const CalcRow& calculation : CalcRows(state)) expressions.insert(calculation.CalcField);
    for (const GroupRow& group : GroupRows(state)) expressions.insert(group.GroupBy);
    DeleteRows(state.rsOrderBy, [&](const ado::Recordset& orders, qint64 row) {
        const QString text = orders.TextAt(row, 0);
        return !expressions.contains(text) &&
               std::none_of(state.colFields.begin(), state.colFields.end(),
                            [&](const QString& field) { return text.contains(field); });
    });
}

/// Without any criterion there is nothing to pick an operator for.
void EnableQueryOptions(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const bool hasCriteria = HasRows(state.rsWhere) || !state.WhereClause.isEmpty();
    form.fraQueryOptions.Enabled = hasCriteria;
    if (hasCriteria) return;
    form.lstOperands.Enabled = false;
    form.cmbAvailableValues1.Enabled = false;
    form.cmbAvailableValues2.Enabled = false;
    if (state.Options.gAllowValueSearch) form.cmdFieldValues.Enabled = false;
}

}  // namespace

void MoveFieldRight(ZPGGlobalDeclarations& state) {
    const MoveDirection move = ToTheRight(*state.Form);
    SelectAfterMove(move, MoveSelected(move));
}

void MoveAllFieldsRight(ZPGGlobalDeclarations& state) {
    MoveAll(ToTheRight(*state.Form));
}

void MoveFieldLeft(ZPGGlobalDeclarations& state) {
    const MoveDirection move = ToTheLeft(*state.Form);
    if (move.From.Items.ListCount() > 0) SelectAfterMove(move, MoveSelected(move));
}

void MoveAllFieldsLeft(ZPGGlobalDeclarations& state) {
    MoveAll(ToTheLeft(*state.Form));
}

void FieldFromClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    if (form.TablesChanged) return;
    form.lstZPQFieldFrom.ToolTipText = form.lstZPQFieldFrom.Items.Text();
    form.cmdZPQFieldRight.Enabled = true;
    form.cmdZPQFieldRightAll.Enabled = true;
}

void FieldToClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    if (form.TablesChanged) return;
    form.lstZPQFieldTo.ToolTipText = form.lstZPQFieldTo.Items.Text();
    form.cmdZPQFieldLeft.Enabled = true;
    form.cmdZPQFieldLeftAll.Enabled = true;
}

bool LoadFieldCollections(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    const Collection tablesBefore = state.colTables;
    const Collection fieldsBefore = state.colFields;
    clsFieldRetrieval retrieval(state);
    retrieval.FieldCollectionError = [&state](const QString& text) { FieldLookupFailed(state, text); };
    if (state.Options.gAllowTableSelection)
        state.colTables = Collection(state.Form->lstZPQTableTo.Items.Items());
    // Empty while the look-up runs: whoever is reached by its failure must not see the fields of other
    // tables.
    state.colFields.Clear();
    const Collection fields = retrieval.FieldCollection(state.colTables);
    if (state.Showing != showing) return true;
    if (retrieval.WasStopped()) {
        state.colTables = tablesBefore;
        state.colFields = fieldsBefore;
        return false;
    }
    if (fields.IsEmpty()) return true;
    state.colFields = fields;
    state.colSelFields = fields;
    RefreshFieldLists(state);
    RefreshJoinTables(state);
    return true;
}

void FieldLookupFailed(ZPGGlobalDeclarations& state, const QString& description) {
    if (!state.Options.gAllowTableSelection) return;
    const int showing = state.Showing;
    state.UserPrompts->MsgBox(description, BoxStyle::Critical, state.Options.gRunTimeCaption);
    if (state.Showing != showing) return;
    SelectTab(state, WizardTab::Tables);
    if (state.Showing != showing) return;
    state.FromClause.clear();
    MoveAllTablesLeft(state);
}

void BuildSelFields(ZPGGlobalDeclarations& state) {
    state.colSelFields = Collection(state.Form->lstZPQFieldTo.Items.Items());
}

void ReconcileQueryLists(ZPGGlobalDeclarations& state) {
    if (!state.colFields.IsEmpty()) {
        DropStaleCalculations(state);
        DropStaleGroups(state);
        DropStaleOrders(state);
    }
    SyncCriteriaColumns(state);
    FillQueryFieldList(state);
    EnableQueryOptions(state);
    ChooseQueryMode(state, 0);
}

}  // namespace zephrin
