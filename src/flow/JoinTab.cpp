#include "flow/JoinTab.h"

#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

constexpr int UnlockedColour = 0xFFFFFF;

void ClearCombo(ComboState& combo) {
    combo.Items.Clear();
    combo.Text.clear();
}

void ClearJoinFields(FormState& form) {
    for (ListBoxState& list : form.lstJoinFields) list.Items.Clear();
}

/// Puts a table on offer on both sides.
void OfferForJoin(ZPGGlobalDeclarations& state, const QString& table) {
    state.rsJoinTable->AddNew();
    state.rsJoinTable->SetValue(u"TableName", table);
    state.rsJoinTable->SetValue(u"Visable", true);
    state.rsJoinTable->Update();
    for (ComboState& combo : state.Form->cmbJoinTables) combo.Items.AddItem(table);
}

/// The first join starts at any table, each further one at a table that is joined already: so the joins stay
/// one tree.
void FillJoinFromTables(ZPGGlobalDeclarations& state) {
    ComboState& from = state.Form->cmbJoinTables[0];
    ClearCombo(from);
    const ado::RecordsetPtr& tables =
        HasRows(state.rsJoinTablesUsed) ? state.rsJoinTablesUsed : state.rsJoinTable;
    from.Items.AddItems(ColumnTexts(tables, QLatin1String("TableName")));
}

}  // namespace

void RefreshJoinTables(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    ClearJoinFields(form);
    for (ComboState& combo : form.cmbJoinTables) ClearCombo(combo);
    if (HasRows(state.rsJoins)) {
        // A table that was removed took all joins along, so whatever is more than before stands at the end.
        const qint64 known = RowCount(state.rsJoinTable);
        for (int position = state.colTables.Count(); position > known; --position)
            OfferForJoin(state, state.colTables.Item(position));
    } else {
        DeleteAllRows(state.rsJoinTable);
        for (const QString& table : state.colTables) OfferForJoin(state, table);
    }
    form.dgrJoins.DataSource = state.rsJoins;
}

void UnlockJoinTables(ZPGGlobalDeclarations& state, bool takeFocus) {
    FormState& form = *state.Form;
    form.cmdlockTables.Tag = QStringLiteral("0");
    form.cmdlockTables.ToolTipText = QStringLiteral("Lock Tables");
    // The pair that the lock needs goes with the texts below.
    form.cmdlockTables.Enabled = false;
    ClearJoinFields(form);
    for (ListBoxState& list : form.lstJoinFields) list.ToolTipText.clear();
    form.cmdAddJoin.Enabled = false;
    form.cmbJoinType.Enabled = false;
    for (ComboState& combo : form.cmbJoinTables) {
        combo.Items.SetListIndex(-1);
        combo.Text.clear();
    }
    form.cmbJoinTables[0].Enabled = true;
    form.cmbJoinTables[1].Enabled = false;
    form.lblJoinTableFrom.ForeColor = UnlockedColour;
    form.lblJoinTableTo.ForeColor = UnlockedColour;
    FillJoinFromTables(state);
    if (takeFocus) form.FocusRequest = QStringLiteral("cmbJoinTables_0");
    DeleteAllRows(state.rsJoinFieldsUsed);
}

void ClearJoins(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.JoinText.clear();
    DeleteAllRows(state.rsJoins);
    const int visable = HasRows(state.rsJoinTable) ? state.rsJoinTable->FieldIndex(u"Visable") : -1;
    for (qint64 row = 0; row < RowCount(state.rsJoinTable); ++row)
        state.rsJoinTable->SetValueAt(row, visable, true);
    DeleteAllRows(state.rsJoinTablesUsed);
    form.cmdResetJoins.Enabled = false;
    form.cmbJoinType.Text = QStringLiteral("=");
    form.dgrJoins.DataSource = state.rsJoins;
}

}  // namespace zephrin
