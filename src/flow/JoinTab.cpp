#include "flow/JoinTab.h"

#include "flow/FieldTab.h"
#include "flow/JoinRecords.h"
#include "runstate/Retrieval.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/WorkingRows.h"

#include <QHash>

namespace zephrin {

namespace {

constexpr int LockedColour = 0xE0E0E0;
constexpr int UnlockedColour = 0xFFFFFF;

QString TypeEqual() {
    return QStringLiteral("=");
}

bool IsLocked(const FormState& form) {
    return form.cmdlockTables.Tag == QLatin1String("1");
}

/// Empties a drop-down, list and text.
void ClearCombo(ComboState& combo) {
    combo.Items.Clear();
    combo.Text.clear();
}

void ClearJoinFields(FormState& form) {
    for (ListBoxState& list : form.lstJoinFields) list.Items.Clear();
}

/// Puts a table on offer on both sides.
void OfferForJoin(ZPGGlobalDeclarations& state, const QString& table) {
    OfferJoinTable(*state.rsJoinTable, table);
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

/// What may stand on the right: every table that is in no join. Before the first join the left table is in
/// none either, and is left out.
void FillJoinToTables(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    QStringList tables = FreeJoinTables(state);
    if (!HasRows(state.rsJoinTablesUsed)) tables.removeOne(form.cmbJoinTables[0].Text);
    form.cmbJoinTables[1].Items.AddItems(tables);
}

void FillJoinFieldList(ZPGGlobalDeclarations& state, int side) {
    const int showing = state.Showing;
    clsFieldRetrieval retrieval(state);
    retrieval.FieldCollectionError = [&state](const QString& text) { FieldLookupFailed(state, text); };
    const auto index = static_cast<std::size_t>(side);
    const QString table = state.Form->cmbJoinTables[index].Text;
    const Collection fields = retrieval.FieldCollection(Collection(QStringList{table}));
    if (state.Showing != showing) return;
    if (retrieval.WasStopped()) return UnlockJoinTables(state, true);
    state.Form->lstJoinFields[index].Items.AddItems(fields.Items());
}

/// Nobody reads of a pair that isn't there.
void DescribeJoinType(FormState& form) {
    if (!IsLocked(form)) return form.cmbJoinType.ToolTipText.clear();
    const QString left = u'\'' + form.cmbJoinTables[0].Text + u'\'';
    const QString right = u'\'' + form.cmbJoinTables[1].Text + u'\'';
    const QString& type = form.cmbJoinType.Text;
    QString& tip = form.cmbJoinType.ToolTipText;
    if (type == TypeEqual()) {
        tip = QStringLiteral("[ONLY INCLUDE ROWS] where the Joined Fields from ") + left +
              QStringLiteral(" are [EQUAL] to the Fields from ") + right;
    } else if (type == QLatin1String(">=")) {
        tip = QStringLiteral("Include [ALL RECORDS] from ") + left +
              QStringLiteral(" and [ONLY THOSE RECORDS] from ") + right +
              QStringLiteral(" where the Joined Fields are [EQUAL].");
    } else {
        tip = QStringLiteral("Include [ALL RECORDS] from ") + left +
              QStringLiteral(" and [ALL RECORDS] from ") + right;
    }
}

/// Sets the join type from code, which counts as a choice when it changes.
void SetJoinType(FormState& form, const QString& type) {
    if (form.cmbJoinType.Text == type) return;
    form.cmbJoinType.Items.SetText(type);
    form.cmbJoinType.Text = type;
    DescribeJoinType(form);
}

/// Selects the first pair of fields with the same name in both tables.
void PreselectSameField(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    ListState& left = form.lstJoinFields[0].Items;
    ListState& right = form.lstJoinFields[1].Items;
    QHash<QString, int> places;
    for (int i = right.ListCount() - 1; i >= 0; --i) places.insert(right.List(i), i);
    for (int i = 0; i < left.ListCount(); ++i) {
        const QString& field = left.List(i);
        const auto found = places.constFind(form.cmbJoinTables[1].Text + field.mid(field.indexOf(u'.')));
        if (found == places.cend()) continue;
        left.SetListIndex(i);
        right.SetListIndex(*found);
        JoinFieldChosen(state);
        return;
    }
}

void LockJoinTables(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    FormState& form = *state.Form;
    form.cmdlockTables.Tag = QStringLiteral("1");
    form.cmdlockTables.ToolTipText = QStringLiteral("Unlock Tables");
    for (ComboState& combo : form.cmbJoinTables) combo.Enabled = false;
    form.cmbJoinType.Enabled = true;
    for (const int side : {0, 1}) {
        FillJoinFieldList(state, side);
        // A table that is gone takes the lock off again.
        if (state.Showing != showing || !IsLocked(form)) return;
    }
    form.lblJoinTableFrom.ForeColor = LockedColour;
    form.lblJoinTableTo.ForeColor = LockedColour;
    DescribeJoinType(form);
    form.FocusRequest = QStringLiteral("lstJoinFields_0");
    PreselectSameField(state);
}

/// A field can be used once under one lock.
void TakeSelectedFields(FormState& form) {
    for (ListBoxState& list : form.lstJoinFields) {
        list.Items.RemoveItem(list.Items.ListIndex());
        list.ToolTipText.clear();
    }
    form.cmdAddJoin.Enabled = false;
}

void TellJoinFailure(const ZPGGlobalDeclarations& state, const QString& description) {
    state.UserPrompts->MsgBox(QStringLiteral("Error : ") + description, BoxStyle::Critical,
                              state.Options.gRunTimeCaption);
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
    // The pair that a lock needs goes with the texts below.
    form.cmdlockTables.Enabled = false;
    ClearJoinFields(form);
    for (ListBoxState& list : form.lstJoinFields) list.ToolTipText.clear();
    form.cmdAddJoin.Enabled = false;
    form.cmbJoinType.Enabled = false;
    form.cmbJoinType.ToolTipText.clear();
    ClearCombo(form.cmbJoinTables[1]);
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
    FreeAllJoinTables(state);
    form.cmdResetJoins.Enabled = false;
    SetJoinType(form, TypeEqual());
    form.dgrJoins.DataSource = state.rsJoins;
}

void JoinTablePicked(ZPGGlobalDeclarations& state, int side) {
    FormState& form = *state.Form;
    auto& [from, to] = form.cmbJoinTables;
    ComboState& picked = side == 0 ? from : to;
    // Emptying a list selects nothing either, but nobody picked that.
    if (picked.Items.ListIndex() < 0) return;
    picked.Text = picked.Items.Text();
    if (side == 0) {
        ClearCombo(to);
        form.cmdlockTables.Enabled = false;
    }
    ClearJoinFields(form);
    if (!from.Text.isEmpty() && !to.Text.isEmpty()) {
        form.cmdlockTables.Enabled = true;
    } else if (!from.Text.isEmpty()) {
        to.Enabled = true;
        ClearCombo(to);
        FillJoinToTables(state);
    } else {
        form.cmdlockTables.Enabled = false;
        to.Enabled = false;
    }
}

void JoinTableChosen(ZPGGlobalDeclarations& state, int side) {
    FormState& form = *state.Form;
    if (form.cmbJoinTables[static_cast<std::size_t>(side)].Text.isEmpty()) return;
    form.FocusRequest = side == 0 ? QStringLiteral("cmbJoinTables_1") : QStringLiteral("cmdlockTables");
}

void JoinTableTyped(ZPGGlobalDeclarations& state, int side) {
    ComboState& combo = state.Form->cmbJoinTables[static_cast<std::size_t>(side)];
    combo.Items.SetListIndex(-1);
    combo.Text.clear();
    state.Form->cmdlockTables.Enabled = false;
}

void JoinTypePicked(ZPGGlobalDeclarations& state) {
    ComboState& type = state.Form->cmbJoinType;
    if (type.Items.ListIndex() >= 0) type.Text = type.Items.Text();
    DescribeJoinType(*state.Form);
}

void JoinTypeTyped(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.cmbJoinType.Items.SetListIndex(form.cmbJoinType.Items.ListCount() > 0 ? 0 : -1);
    form.cmbJoinType.Text = TypeEqual();
    DescribeJoinType(form);
}

void LockClicked(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    state.Form->Pointer = MousePointer::Hourglass;
    if (IsLocked(*state.Form)) {
        UnlockJoinTables(state, true);
    } else {
        ShowFormNow(state);
        LockJoinTables(state);
    }
    if (state.Showing == showing) state.Form->Pointer = MousePointer::Default;
}

void JoinFieldClicked(ZPGGlobalDeclarations& state, int side) {
    FormState& form = *state.Form;
    const bool pair =
        !form.lstJoinFields[0].Items.Text().isEmpty() && !form.lstJoinFields[1].Items.Text().isEmpty();
    form.cmdAddJoin.Enabled = pair;
    ListBoxState& clicked = form.lstJoinFields[static_cast<std::size_t>(side)];
    clicked.ToolTipText = clicked.Items.Text();
}

void JoinFieldChosen(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    if (form.cmdAddJoin.Enabled) {
        form.FocusRequest = QStringLiteral("cmdAddJoin");
    } else if (form.cmbJoinType.Enabled) {
        form.FocusRequest = QStringLiteral("cmbJoinType");
    }
}

void AddJoin(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    try {
        AddJoinRow(state);
        form.cmdResetJoins.Enabled = true;
        form.dgrJoins.DataSource = state.rsJoins;
        RecordJoinUse(state);
    } catch (const ado::Error& error) {
        TellJoinFailure(state, error.Description());
        return;
    }
    TakeSelectedFields(form);
    RebuildJoinText(state);
    form.cmbJoinType.Enabled = false;
    form.cmbJoinType.ToolTipText.clear();
    form.FocusRequest = QStringLiteral("cmdlockTables");
}

void ResetJoins(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    const BoxAnswer answer = state.UserPrompts->MsgBox(
        QStringLiteral("Are you sure that you want to remove all Joins ?"),
        BoxStyle::YesNo + BoxStyle::Question + BoxStyle::DefaultSecond, QStringLiteral("Remove Table Joins"));
    if (state.Showing != showing || answer != BoxAnswer::Yes) return;
    ClearJoins(state);
    UnlockJoinTables(state, true);
    RebuildJoinText(state);
}

void CompareButtonClicked(ZPGGlobalDeclarations& state) {
    ListBoxState& list = state.Form->lstJoinCompare;
    list.Visible = !list.Visible;
    // Nothing is selected in it, so that choosing what stands there already is a choice too.
    list.Items.Clear();
    list.Items.AddItems({QStringLiteral("="), QStringLiteral(">"), QStringLiteral("<"), QStringLiteral("<>"),
                         QStringLiteral(">="), QStringLiteral("<=")});
}

void HideCompareList(ZPGGlobalDeclarations& state) {
    state.Form->lstJoinCompare.Visible = false;
}

void ComparePicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const QString compare = form.lstJoinCompare.Items.Text();
    if (compare.isEmpty()) return;
    form.lstJoinCompare.Visible = false;
    if (!HasRows(state.rsJoins) || state.rsJoins->Bof() || state.rsJoins->Eof()) return;
    state.rsJoins->SetValue(u"Compare", compare);
    state.rsJoins->Update();
    RebuildJoinText(state);
}

}  // namespace zephrin
