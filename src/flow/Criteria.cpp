#include "flow/Criteria.h"

#include "flow/BuildTab.h"
#include "runstate/Retrieval.h"
#include "sqlgen/CommitCriterion.h"
#include "sqlgen/CriteriaOperators.h"
#include "sqlgen/GroupRow.h"
#include "sqlgen/OrderByClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <QDateTime>
#include <QLocale>

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
    form.cmdCommit.Enabled =
        !changed.Text.isEmpty() && (!TakesTwoValues(form) || !ValueBox(form, 1 - box).Text.isEmpty());
    RefreshSentence(state);
}

void ClearValues(ZPGGlobalDeclarations& state) {
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

void CommitWhere(ZPGGlobalDeclarations& state) {
    CommitCriterion(state);
    ++state.Form->FieldHasCriteria;
    ApplyOperatorDefault(*state.Form);
}

void ReturnToFields(FormState& form) {
    form.lstSelectedFields.ToolTipText.clear();
    form.FocusRequest = QStringLiteral("lstSelectedFields");
}

void CommitGroup(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    AddGroupRow(state);
    if (state.Showing != showing) return;
    SyncCriteriaColumns(state);
    BuildSelectClause(state);
    ShowSqlView(state);
    ReturnToFields(*state.Form);
}

void CommitOrder(ZPGGlobalDeclarations& state) {
    AddOrderRow(state);
    BuildOrderByClause(state);
    ReturnToFields(*state.Form);
}

void CommitInMode(ZPGGlobalDeclarations& state) {
    switch (state.Form->optQuery.Selected) {
        case WhereMode:
            return CommitWhere(state);
        case GroupMode:
            return CommitGroup(state);
        default:
            return CommitOrder(state);
    }
}

/// A value as the user would type it: a date in ISO form, without the time where it is midnight.
QString ValueText(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Bool:
            return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        case QMetaType::Double:
        case QMetaType::Float:
            return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate);
        case QMetaType::QDateTime: {
            const QDateTime moment = value.toDateTime();
            if (moment.time() == QTime(0, 0)) return moment.date().toString(Qt::ISODate);
            return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        }
        default:
            return value.toString();
    }
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
    if (form.optQuery.Selected != WhereMode) {
        if (!form.lstOperands.Items.Text().isEmpty()) form.cmdCommit.Enabled = true;
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
    const FieldParts parts = SplitField(state, form.CriteriaField);
    if (parts.Table.isEmpty()) return;
    form.Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    QStringList texts;
    for (const QVariant& value : clsFieldValues(state).colFieldValues(parts.Table, parts.Field))
        if (!value.isNull()) texts << ValueText(value);
    for (const int box : {0, 1}) {
        ValueBox(form, box).Items.Clear();
        ValueBox(form, box).Items.AddItems(texts);
    }
    form.Pointer = MousePointer::Default;
}

void CommitEntry(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    FormState& form = *state.Form;
    EnableAndOr(form, true);
    form.fraBuildQuery.Caption = QueryModeCaption(state);
    if (form.optQuery.Selected != WhereMode) form.cmdCommit.Enabled = false;
    SetStatusText(state, QStringLiteral("Building SQL .."));
    form.Pointer = MousePointer::Hourglass;
    ShowFormNow(state);
    CommitInMode(state);
    if (state.Showing != showing) return;
    AssembleStatement(state);
    ClearValues(state);
    SetStatusText(state, QStringLiteral("Ready .."));
    form.Pointer = MousePointer::Default;
    // A box that is off can't take the focus; it stays where the mode has put it.
    if (form.cmbAvailableValues1.Enabled) form.FocusRequest = QStringLiteral("cmbAvailableValues1");
}

void RefreshSentence(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    QString& caption = form.fraBuildQuery.Caption;
    caption = QueryModeCaption(state) + u' ' + form.lstSelectedFields.Items.Text() + u' ' +
              form.lstOperands.Items.Text() + u' ' + form.cmbAvailableValues1.Text;
    if (!form.cmbAvailableValues2.Text.isEmpty())
        caption += QStringLiteral(" AND ") + form.cmbAvailableValues2.Text;
}

void RecountCriteria(ZPGGlobalDeclarations& state, const QString& column) {
    state.Form->FieldHasCriteria = ColumnHasText(state.rsWhere, column) ? 1 : 0;
    ApplyOperatorDefault(*state.Form);
    ReturnToFirst(state.rsWhere);
}

}  // namespace zephrin
