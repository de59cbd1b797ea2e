#include "flow/Criteria.h"

#include "flow/BuildTab.h"
#include "runstate/Dialect.h"
#include "runstate/Retrieval.h"
#include "sqlgen/CommitCriterion.h"
#include "sqlgen/CriteriaOperators.h"
#include "sqlgen/GroupRow.h"
#include "sqlgen/OrderByClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <zephrin/ado/Error.h>

namespace zephrin {

namespace {

constexpr int WhereMode = 0;
constexpr int GroupMode = 1;

ComboState& ValueBox(FormState& form, int box) {
    return box == 0 ? form.cmbAvailableValues1 : form.cmbAvailableValues2;
}

bool TakesTwoValues(const FormState& form) {
    const CriteriaOperator* entry = FindCriteriaOperator(form.lstOperands.Items.Text());
    return entry && entry->TakesTwoValues();
}

void ValueChanged(ZPGGlobalDeclarations& state, int box) {
    FormState& form = *state.Form;
    ComboState& changed = ValueBox(form, box);
    changed.ToolTipText = changed.Text;
    form.cmdCommit.Enabled = !form.lstOperands.Items.Text().isEmpty() && !changed.Text.isEmpty() &&
                             (!TakesTwoValues(form) || !ValueBox(form, 1 - box).Text.isEmpty());
    RefreshSentence(state);
}

void ClearValues(ZPGGlobalDeclarations& state) {
    state.Form->LookedUpType = ado::DataType::Empty;
    for (const int box : {0, 1}) {
        ValueBox(*state.Form, box).Items.Clear();
        SetValueText(state, box, {});
    }
}

/// The operator in hand chooses between AND and OR for a field that has a criterion already.
void ApplyOperatorDefault(FormState& form) {
    if (form.FieldHasCriteria <= 0) return;
    const CriteriaOperator* entry = FindCriteriaOperator(form.lstOperands.Items.Text());
    if (entry) form.optAndOr.Selected = entry->DefaultsToOr ? 1 : 0;
}

bool ColumnHasText(const ado::RecordsetPtr& sheet, const QString& column) {
    const int field = HasRows(sheet) ? sheet->FieldIndex(column) : -1;
    for (qint64 row = 0; field >= 0 && row < sheet->RecordCount(); ++row)
        if (!sheet->TextAt(row, field, 1).isEmpty()) return true;
    return false;
}

/// What an operator of Where mode needs.
void EnableValues(ZPGGlobalDeclarations& state, const CriteriaOperator& entry) {
    FormState& form = *state.Form;
    form.cmbAvailableValues1.Enabled = !entry.TakesNoValue();
    form.cmbAvailableValues2.Enabled = entry.TakesTwoValues();
    if (entry.TakesTwoValues()) {
        form.cmdCommit.Enabled = false;
    } else if (entry.TakesNoValue() || !form.cmbAvailableValues1.Text.isEmpty()) {
        form.cmdCommit.Enabled = true;
    }
    if (state.Options.gAllowValueSearch) form.cmdFieldValues.Enabled = true;
}

// Each of these writes the entry of its mode and returns an empty text, or why it could not.

QString CommitWhere(ZPGGlobalDeclarations& state) {
    switch (CommitCriterion(state)) {
        case CommitOutcome::TooLong:
            return QStringLiteral("Not added: the conditions on a field can have %1 characters in all ..")
                .arg(state.rsWhere->FieldAt(0).DefinedSize);
        case CommitOutcome::Failed:
            return QStringLiteral("Not added: the condition could not be written ..");
        case CommitOutcome::Written:
            break;
    }
    FormState& form = *state.Form;
    EnableAndOr(form, true);
    form.fraBuildQuery.Caption = QueryModeCaption(state);
    ++form.FieldHasCriteria;
    ApplyOperatorDefault(form);
    return {};
}

QString Refusal(const ado::RecordsetPtr& rows, RowOutcome outcome) {
    if (outcome == RowOutcome::TakenAlias) return QStringLiteral("Not added: the alias exists already ..");
    if (outcome != RowOutcome::TooLong) return {};
    return QStringLiteral("Not added: the expression can have %1 characters in all ..")
        .arg(rows->FieldAt(0).DefinedSize);
}

void ReturnToFields(FormState& form) {
    form.cmdCommit.Enabled = false;
    form.lstSelectedFields.ToolTipText.clear();
    form.FocusRequest = QStringLiteral("lstSelectedFields");
}

QString CommitGroup(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    const RowOutcome outcome = AddGroupRow(state);
    if (state.Showing != showing) return {};
    if (const QString refusal = Refusal(state.rsGroupBy, outcome); !refusal.isEmpty()) return refusal;
    SyncCriteriaColumns(state);
    BuildSelectClause(state);
    ShowSqlView(state);
    ReturnToFields(*state.Form);
    return {};
}

QString CommitOrder(ZPGGlobalDeclarations& state) {
    if (const QString refusal = Refusal(state.rsOrderBy, AddOrderRow(state)); !refusal.isEmpty())
        return refusal;
    EnableAndOr(*state.Form, true);
    state.Form->fraBuildQuery.Caption = QueryModeCaption(state);
    BuildOrderByClause(state);
    ReturnToFields(*state.Form);
    return {};
}

QString CommitInMode(ZPGGlobalDeclarations& state) {
    switch (state.Form->optQuery.Selected) {
        case WhereMode:
            return CommitWhere(state);
        case GroupMode:
            return CommitGroup(state);
        default:
            return CommitOrder(state);
    }
}

bool IsBinary(ado::DataType type) {
    return type == ado::DataType::Binary || type == ado::DataType::VarBinary ||
           type == ado::DataType::LongVarBinary;
}

/// The values of the field in hand. A sum is looked up as the query forms it, in its groups.
ado::RecordsetPtr ReadValues(ZPGGlobalDeclarations& state, const FormState::FieldKey& field) {
    clsFieldValues values(state);
    if (field.Key == field.Column) {
        const FieldParts parts = SplitField(state, field.Key);
        return values.colFieldValues(parts.Table, parts.Field);
    }
    QString from = state.FromClause;
    if (IsAggregateExpression(field.Key))
        for (const QString& clause : {state.WhereClause, state.GroupByClause})
            if (!clause.isEmpty()) from += u' ' + clause;
    return values.colExpressionValues(field.Key, from);
}

/// The values as the results show them, but for truth, which a server only knows as a number.
QStringList ValueTexts(const ZPGGlobalDeclarations& state, const ado::Recordset& values) {
    const bool asNumber =
        values.FieldAt(0).Type == ado::DataType::Boolean && IsServerDialect(state.gDatabaseType);
    QStringList texts;
    for (qint64 row = 0; row < values.RecordCount(); ++row) {
        if (values.IsNullAt(row, 0)) continue;
        texts << (asNumber ? QString::number(values.ValueAt(row, 0).toBool() ? 1 : 0)
                           : values.TextAt(row, 0));
    }
    return texts;
}

/// Puts the values on offer; returns what is to be told of it.
QString OfferValues(ZPGGlobalDeclarations& state, const ado::Recordset& values) {
    const ado::DataType type = values.FieldAt(0).Type;
    if (IsBinary(type)) return QStringLiteral("The field is binary: it has no values to choose from ..");
    FormState& form = *state.Form;
    form.LookedUpType = type;
    const QStringList texts = ValueTexts(state, values);
    for (const int box : {0, 1}) ValueBox(form, box).Items.AddItems(texts);
    return texts.isEmpty() ? QStringLiteral("The field has no values ..") : QStringLiteral("Ready ..");
}

}  // namespace

void SelectedFieldClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const FormState::FieldKey key = SelectedFieldKey(form);
    form.optAndOr.Selected = 0;
    form.CriteriaField = key.Column;
    if (form.optQuery.Selected != WhereMode) form.cmdCommit.Enabled = false;
    RecountCriteria(state, form.CriteriaField);
    const bool chosen = !form.lstSelectedFields.Items.Text().isEmpty();
    form.lstOperands.Enabled = chosen;
    form.lstSelectedFields.ToolTipText = chosen ? key.Key : QString();
    ClearValues(state);
    RefreshSentence(state);
}

void OperatorClicked(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    ApplyOperatorDefault(form);
    if (form.lstOperands.Items.Text().isEmpty()) {
        form.cmdCommit.Enabled = false;
    } else if (form.optQuery.Selected != WhereMode) {
        form.cmdCommit.Enabled = true;
    } else if (const CriteriaOperator* entry = FindCriteriaOperator(form.lstOperands.Items.Text())) {
        EnableValues(state, *entry);
    }
    RefreshSentence(state);
}

void ValueTyped(ZPGGlobalDeclarations& state, int box, const QString& text) {
    // What is typed is no item of the list any more; the same item can then be picked again.
    ValueBox(*state.Form, box).Items.SetListIndex(-1);
    SetValueText(state, box, text);
}

void ValuePicked(ZPGGlobalDeclarations& state, int box) {
    const ListState& items = ValueBox(*state.Form, box).Items;
    if (items.ListIndex() >= 0) SetValueText(state, box, items.Text());
}

void SetValueText(ZPGGlobalDeclarations& state, int box, const QString& text) {
    QString& shown = ValueBox(*state.Form, box).Text;
    if (shown == text) return;
    shown = text;
    ValueChanged(state, box);
}

void LookUpFieldValues(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const FormState::FieldKey field = SelectedFieldKey(form);
    if (field.Key.isEmpty()) return;
    form.Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    const int showing = state.Showing;
    ado::RecordsetPtr values;
    QString told;
    bool stopped = false;
    try {
        values = ReadValues(state, field);
    } catch (const ado::Error& error) {
        stopped = error.Number() == ado::ErrorNumber::OperationCancelled;
        told = QStringLiteral("The values could not be read: %1 ..").arg(error.Description());
    }
    if (state.Showing != showing) return;
    // Stopped: what was on offer stays.
    if (!stopped) {
        form.LookedUpType = ado::DataType::Empty;
        for (const int box : {0, 1}) ValueBox(form, box).Items.Clear();
        SetStatusText(state, values ? OfferValues(state, *values) : told);
    }
    form.Pointer = MousePointer::Default;
}

void CommitEntry(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    FormState& form = *state.Form;
    SetStatusText(state, QStringLiteral("Building SQL .."));
    form.Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    QString refusal;
    try {
        refusal = CommitInMode(state);
    } catch (const ado::Error& error) {
        if (error.Number() != ado::ErrorNumber::OperationCancelled) throw;
        // The entry stands as it was, to be committed later.
        refusal = error.Description();
    }
    if (state.Showing != showing) return;
    form.Pointer = MousePointer::Default;
    SetStatusText(state, refusal.isEmpty() ? QStringLiteral("Ready ..") : refusal);
    if (!refusal.isEmpty()) return;
    AssembleStatement(state);
    ClearValues(state);
    // A box that is off can't take the focus; it stays where the mode has put it.
    if (form.cmbAvailableValues1.Enabled) form.FocusRequest = QStringLiteral("cmbAvailableValues1");
}

void RefillFieldList(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    if (form.optQuery.Selected == GroupMode) {
        RefreshSelectedFieldList(state);
    } else {
        FillQueryFieldList(state);
    }
    form.CriteriaField.clear();
    form.FieldHasCriteria = 0;
    form.lstSelectedFields.ToolTipText.clear();
    RefreshSentence(state);
}

void RefreshSentence(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    QString& caption = form.fraBuildQuery.Caption;
    caption = QueryModeCaption(state);
    if (form.lstSelectedFields.Items.ListIndex() < 0) return;
    caption += u' ' + form.lstSelectedFields.Items.Text() + u' ' + form.lstOperands.Items.Text() + u' ' +
               form.cmbAvailableValues1.Text;
    if (!form.cmbAvailableValues2.Text.isEmpty())
        caption += QStringLiteral(" AND ") + form.cmbAvailableValues2.Text;
}

void RecountCriteria(ZPGGlobalDeclarations& state, const QString& column) {
    state.Form->FieldHasCriteria = ColumnHasText(state.rsWhere, column) ? 1 : 0;
    ApplyOperatorDefault(*state.Form);
    ReturnToFirst(state.rsWhere);
}

}  // namespace zephrin
