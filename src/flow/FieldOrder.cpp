#include "flow/FieldOrder.h"

#include "flow/BuildTab.h"
#include "sqlgen/Aliases.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

bool IsGroup(const ZPGGlobalDeclarations& state) {
    return state.EditMode == u"Group";
}
bool IsCalc(const ZPGGlobalDeclarations& state) {
    return state.EditMode == u"Calc";
}

/// The recordset that the mode works on, in a state that may be const or not.
template <class State>
auto& Target(State& state) {
    return IsGroup(state) ? state.rsGroupBy : IsCalc(state) ? state.rsCalcFields : state.rsOrderBy;
}

/// What the lists show of the row on which `rows` stands.
FieldOrderForm::Row Shown(const ZPGGlobalDeclarations& state, const ado::Recordset& rows) {
    if (IsCalc(state)) return {rows.Text(u"CalcField"), rows.Text(u"Alias")};
    if (!IsGroup(state)) return {rows.Text(u"OrderBy"), {}};
    const QString expression = rows.Text(u"GroupBy");
    return {expression.isEmpty() ? rows.Text(u"FieldName") : expression, rows.Text(u"FieldAlias")};
}

const FieldOrderForm::Row* InHand(const FieldOrderForm& form) {
    const bool there = form.ListIndex >= 0 && form.ListIndex < static_cast<int>(form.Rows.size());
    return there ? &form.Rows[static_cast<size_t>(form.ListIndex)] : nullptr;
}

/// Moves to the row of the recordset that the list row stands for; false when there is none.
bool MoveToRow(const ZPGGlobalDeclarations& state, const FieldOrderForm::Row& row) {
    const ado::RecordsetPtr& rows = Target(state);
    if (!HasRows(rows)) return false;
    for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext())
        if (Shown(state, *rows) == row) return true;
    return false;
}

void SelectNothing(FieldOrderForm& form) {
    form.ListIndex = -1;
    form.Alias.clear();
    form.Output = false;
    form.DeleteEnabled = form.EditEnabled = form.UpEnabled = form.DownEnabled = false;
}

/// Takes a row out of the list: the one in hand where it is that one, for rows may be equal.
void TakeOut(FieldOrderForm& form, const FieldOrderForm::Row& row) {
    const FieldOrderForm::Row* inHand = InHand(form);
    const auto place = inHand && *inHand == row ? form.Rows.begin() + form.ListIndex
                                                : std::find(form.Rows.begin(), form.Rows.end(), row);
    if (place != form.Rows.end()) form.Rows.erase(place);
    SelectNothing(form);
}

void EnableMoves(FieldOrderForm& form) {
    const int last = static_cast<int>(form.Rows.size()) - 1;
    form.UpEnabled = last > 0 && form.ListIndex > 0;
    form.DownEnabled = last > 0 && form.ListIndex >= 0 && form.ListIndex < last;
}

/// Writes the text made of an edited expression and then the expression itself into the row. False when the
/// first does not fit into its column: the row stays as it is, for its old text still runs.
bool Follow(ado::Recordset& rows, QStringView column, const QString& made, const QString& expression) {
    try {
        rows.SetValue(column, made);
        rows.SetValue(u"FieldName", expression);
        rows.Update();
        return true;
    } catch (const ado::Error&) {
        return false;
    }
}

void FollowInOrders(ZPGGlobalDeclarations& state, const QString& from, const QString& to) {
    const ado::RecordsetPtr& orders = state.rsOrderBy;
    if (!HasRows(orders)) return;
    for (orders->MoveFirst(); !orders->Eof(); orders->MoveNext()) {
        if (orders->Text(u"FieldName") != from) continue;
        const bool ascending = orders->Text(u"OrderBy").contains(u"ASC");
        Follow(*orders, u"OrderBy", to + (ascending ? QStringLiteral(" ASC") : QStringLiteral(" DESC")), to);
    }
    orders->MoveFirst();
}

void FollowInAliases(ZPGGlobalDeclarations& state, const QString& from, const QString& to) {
    const ado::RecordsetPtr& aliases = state.rsAlias;
    if (!HasRows(aliases)) return;
    for (aliases->MoveFirst(); !aliases->Eof(); aliases->MoveNext())
        if (aliases->Text(u"FieldName") == from) aliases->SetValue(u"FieldName", to);
    aliases->Update();
    aliases->MoveFirst();
}

/// What a group row over `from` says once that is `to`: the expression itself, or what its aggregate is
/// called with. The aggregate's name stays, though a short expression may occur in it.
QString Regrouped(const QString& groupBy, const QString& from, const QString& to) {
    if (groupBy == from) return to;
    for (const QString& begin : {QStringLiteral("("), QStringLiteral("(DISTINCT ")})
        if (const QString call = begin + from + u')'; groupBy.endsWith(call))
            return groupBy.chopped(call.size()) + begin + to + u')';
    return groupBy;
}

/// Group rows over an expression that was edited: the field follows, and so does what is made of it, its
/// alias and its ordering.
void FollowInGroups(ZPGGlobalDeclarations& state, const QString& from, const QString& to) {
    const ado::RecordsetPtr& groups = state.rsGroupBy;
    if (!HasRows(groups)) return;
    for (groups->MoveFirst(); !groups->Eof(); groups->MoveNext()) {
        if (groups->Text(u"FieldName") != from) continue;
        const QString before = groups->Text(u"GroupBy");
        const QString after = Regrouped(before, from, to);
        if (!Follow(*groups, u"GroupBy", after, to) || before == from) continue;
        FollowInAliases(state, before, after);
        FollowInOrders(state, before, after);
    }
    groups->MoveFirst();
}

void CopyRow(const ado::Recordset& from, ado::Recordset& to) {
    to.AddNew();
    for (int field = 0; field < from.FieldCount(); ++field) {
        const QVariant value = from.Value(field);
        if (value.isValid()) to.SetValue(field, value);
    }
    to.Update();
}

}  // namespace

void BeginFieldOrder(ZPGGlobalDeclarations& state, const QString& mode) {
    FormState& form = *state.Form;
    form.cmdCommit.Enabled = false;
    ShowSqlView(state);
    form.dgrSQL.DataSource.reset();
    const bool operatorChosen = !form.lstOperands.Items.Text().isEmpty();
    form.cmbAvailableValues1.Enabled = form.cmbAvailableValues2.Enabled = operatorChosen;
    RegenerateStatement(state);
    state.EditMode = mode;
}

FieldOrderForm LoadFieldOrder(const ZPGGlobalDeclarations& state) {
    FieldOrderForm form;
    form.OutputVisible = form.AliasVisible = IsGroup(state) || IsCalc(state);
    form.EditVisible = IsCalc(state);
    FillOrderLists(state, form);
    return form;
}

void FillOrderLists(const ZPGGlobalDeclarations& state, FieldOrderForm& form) {
    form.Rows.clear();
    SelectNothing(form);
    const ado::RecordsetPtr& rows = Target(state);
    if (!HasRows(rows)) return;
    for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) form.Rows.push_back(Shown(state, *rows));
    rows->MoveFirst();
}

void OrderRowClicked(const ZPGGlobalDeclarations& state, FieldOrderForm& form, int index) {
    form.ListIndex = index;
    const FieldOrderForm::Row* row = InHand(form);
    if (!row) return;
    form.DeleteEnabled = true;
    form.EditEnabled = IsCalc(state);
    form.Alias = row->Alias;
    if (form.OutputVisible && MoveToRow(state, *row))
        form.Output = Target(state)->Text(u"OutputYes/No") == u"YES";
    EnableMoves(form);
}

void OutputClicked(ZPGGlobalDeclarations& state, FieldOrderForm& form, bool output) {
    form.Output = output;
    const FieldOrderForm::Row* row = InHand(form);
    if (!form.OutputVisible || !row || !MoveToRow(state, *row)) return;
    Target(state)->SetValue(u"OutputYes/No", output ? QStringLiteral("YES") : QStringLiteral("NO"));
    Target(state)->Update();
}

void MoveOrderRow(const ZPGGlobalDeclarations& state, FieldOrderForm& form, bool down) {
    const int to = form.ListIndex + (down ? 1 : -1);
    if (!InHand(form) || to < 0 || to >= static_cast<int>(form.Rows.size())) return;
    std::swap(form.Rows[static_cast<size_t>(form.ListIndex)], form.Rows[static_cast<size_t>(to)]);
    OrderRowClicked(state, form, to);
}

void BeginCalcEdit(ZPGGlobalDeclarations& state, const FieldOrderForm& form) {
    const FieldOrderForm::Row* row = InHand(form);
    state.EditCalcField = row ? row->Field : QString();
    state.EditCalcAlias = row ? row->Alias : QString();
    state.EditCalcShow = form.Output ? 1 : 0;
    state.CalcFieldCreated = false;
}

void EndCalcEdit(ZPGGlobalDeclarations& state, FieldOrderForm& form, const QString& oldExpression) {
    // Cancelled: the lists hold moves that nothing else knows of yet.
    if (!state.CalcFieldCreated) return;
    state.CalcFieldCreated = false;
    FollowInGroups(state, oldExpression, state.EditCalcNew);
    FollowInOrders(state, oldExpression, state.EditCalcNew);
    if (InHand(form)) {
        form.Rows[static_cast<size_t>(form.ListIndex)].Field = state.EditCalcNew;
        OrderRowClicked(state, form, form.ListIndex);
    }
    state.EditCalcNew.clear();
}

void DeleteOrderRow(ZPGGlobalDeclarations& state, FieldOrderForm& form) {
    const FieldOrderForm::Row* inHand = InHand(form);
    if (!inHand) return;
    // Kept by value: a host's box may let the user change the rows meanwhile.
    const FieldOrderForm::Row row = *inHand;
    const int showing = state.Showing;
    const BoxAnswer answer = state.UserPrompts->MsgBox(
        ResString(state, 177), BoxStyle::YesNo + BoxStyle::Question, ResString(state, 178));
    if (state.Showing != showing || answer != BoxAnswer::Yes) return;
    if (MoveToRow(state, row)) Target(state)->Delete();
    if (!row.Alias.isEmpty()) DeleteAlias(state, row.Alias, row.Field);
    if (form.OutputVisible) {
        DeleteRows(state.rsOrderBy, [&](const ado::Recordset& orders, qint64 at) {
            // Every text holds the empty one, which an expression of nothing but blanks is stored as.
            return !row.Field.isEmpty() &&
                   orders.TextAt(at, orders.FieldIndex(u"OrderBy")).contains(row.Field);
        });
    }
    TakeOut(form, row);
}

void AcceptFieldOrder(ZPGGlobalDeclarations& state, const FieldOrderForm& form) {
    ado::RecordsetPtr& rows = Target(state);
    if (!HasRows(rows)) return;
    auto ordered = std::make_shared<ado::Recordset>();
    for (int field = 0; field < rows->FieldCount(); ++field) ordered->Append(rows->FieldAt(field));
    ordered->Open();
    // A row that was taken over is taken away, so that of equal rows each comes once.
    for (const FieldOrderForm::Row& row : form.Rows) {
        if (!MoveToRow(state, row)) continue;
        CopyRow(*rows, *ordered);
        rows->Delete();
    }
    rows->Close();
    rows = ordered;
    rows->MoveFirst();
}

}  // namespace zephrin
