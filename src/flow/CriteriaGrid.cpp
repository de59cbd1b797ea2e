#include "flow/CriteriaGrid.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "platform/text/Text.h"
#include "sqlgen/Blanks.h"
#include "sqlgen/CriterionText.h"
#include "sqlgen/Statement.h"

#include <algorithm>

namespace zephrin {

namespace {

constexpr int WhereLegend = 246;
constexpr int HavingLegend = 123;

void ShowGridParts(FormState& form, bool shown) {
    form.txtSQL.Visible = !shown;
    form.dgrSQL.Visible = shown;
    for (ControlState* legend : {&form.fraTxt, &form.txtField, &form.txtOr, &form.txtValue})
        legend->Visible = shown;
    form.lblSQLLabel[0].Visible = shown;
    form.lblSQLLabel[1].Visible = !shown;
}

void HideSelectOptions(FormState& form) {
    form.chkDistinct.Visible = false;
    form.lblTopX.Visible = false;
    form.txtTopX.Visible = false;
    form.chkPercent.Visible = false;
}

void BindGrid(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.GridMode = form.GridShowsHaving ? QStringLiteral("Having") : QStringLiteral("Where");
    form.dgrSQL.DataSource = form.GridShowsHaving ? state.rsHaving : state.rsWhere;
    form.lblSQLLabel[0].Caption = ResString(state, form.GridShowsHaving ? HavingLegend : WhereLegend);
    form.GridShowsHaving = false;
    form.dgrSQL.ColumnButtons = true;
}

bool HoldsOperator(const FormState& form, const QString& text) {
    return std::any_of(form.OperatorTokens.begin(), form.OperatorTokens.end(),
                       [&](const QString& token) { return text.contains(token, Qt::CaseInsensitive); });
}

/// Writes into the current row, or into one of its own. A row that can't hold the text is not left behind.
bool WriteCell(ado::Recordset& sheet, int column, const QString& text, bool onNewRow) {
    if (onNewRow) sheet.AddNew();
    try {
        sheet.SetValue(column, text);
        sheet.Update();
        return true;
    } catch (const ado::Error&) {
        if (onNewRow) sheet.CancelUpdate();
        return false;
    }
}

bool HasColumn(const ado::RecordsetPtr& sheet, int column) {
    return sheet && sheet->IsOpen() && column >= 0 && column < sheet->FieldCount();
}

bool HasCurrentRow(const ado::Recordset& sheet) {
    return !sheet.Bof() && !sheet.Eof();
}

}  // namespace

void EditCriteria(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.Pointer = MousePointer::Hourglass;
    form.dgrSQL.DataSource.reset();
    form.cmdCommit.Enabled = false;
    ShowSqlView(state);
    const bool hasOperator = !form.lstOperands.Items.Text().isEmpty();
    form.cmbAvailableValues1.Enabled = hasOperator;
    form.cmbAvailableValues2.Enabled = hasOperator;
    RegenerateStatement(state);
    form.cmdSQLView.Visible = true;
    ShowGridParts(form, true);
    HideSelectOptions(form);
    EnableRunQuery(state);
    BindGrid(state);
    form.cmdSplit.Visible = true;
    form.cmdDeleteSplit.Visible = true;
    form.Pointer = MousePointer::Default;
}

void ShowStatementOrGrid(ZPGGlobalDeclarations& state, QueryView view) {
    FormState& form = *state.Form;
    const bool grid = view == QueryView::Grid;
    form.cmdCommit.Enabled = !grid && !form.lstOperands.Items.Text().isEmpty();
    form.fraQueryOptions.Enabled = !grid;
    ShowGridParts(form, grid);
    if (grid) form.dgrSQL.DataSource = state.rsWhere;
    EnableRunQuery(state);
}

QString NormaliseCriterion(const ZPGGlobalDeclarations& state, const QString& typed) {
    if (typed.isEmpty() || HoldsOperator(*state.Form, typed)) return typed;
    if (typed.contains(u'\'')) return LeftTrimmed(typed);
    const QString equals = QStringLiteral("= ");
    if (text::IsNumeric(typed)) return equals + typed;
    if (text::IsDate(typed)) {
        // Whoever is no server writes dates as files do, an unknown dialect too.
        const QString delimiter =
            DateDelimiter(state) == QLatin1String("'") ? QStringLiteral("'") : QStringLiteral("#");
        return equals + delimiter + CriterionDate(state, typed) + delimiter;
    }
    return equals + u'\'' + LeftTrimmed(typed) + u'\'';
}

void CriterionEdited(ZPGGlobalDeclarations& state, int column) {
    const ado::RecordsetPtr& sheet = state.rsWhere;
    if (!HasColumn(sheet, column)) return;
    // What stands in another column says nothing of the field in hand.
    if (sheet->FieldAt(column).Name != state.Form->CriteriaField) return;
    // The grid stands on the edited row: counting must not move it.
    const qint64 row = sheet->AbsolutePosition();
    RecountCriteria(state, state.Form->CriteriaField);
    if (row > 0) sheet->SetAbsolutePosition(row);
}

void BeginCellDialog(ZPGGlobalDeclarations& state, int column, bool onNewRow) {
    const ado::RecordsetPtr& sheet = state.rsWhere;
    // A dialog that is cancelled must not find the outcome of the one before.
    state.CriteriaChanged = false;
    state.CurrentCellText.clear();
    if (!onNewRow && HasColumn(sheet, column) && HasCurrentRow(*sheet))
        state.CurrentCellText = sheet->Text(column);
}

bool EndCellDialog(ZPGGlobalDeclarations& state, int column, bool onNewRow) {
    const ado::RecordsetPtr& sheet = state.rsWhere;
    if (state.CriteriaChanged && HasColumn(sheet, column) && (onNewRow || HasCurrentRow(*sheet))) {
        if (!WriteCell(*sheet, column, NormaliseCriterion(state, state.CurrentCellText), onNewRow))
            return false;
        CriterionEdited(state, column);
    }
    state.CurrentCellText.clear();
    return true;
}

}  // namespace zephrin
