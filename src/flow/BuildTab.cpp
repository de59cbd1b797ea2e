#include "flow/BuildTab.h"

#include "flow/Criteria.h"
#include "runstate/Dialect.h"
#include "sqlgen/CriteriaOperators.h"
#include "sqlgen/GroupByClause.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

QStringList OperatorsOfMode(const ZPGGlobalDeclarations& state) {
    switch (state.Form->optQuery.Selected) {
        case 0:
            return CriteriaOperatorList();
        case 1:
            return GroupOperators(state.gDatabaseType);
        default:
            return {QStringLiteral("ASC"), QStringLiteral("DESC")};
    }
}

void RebuildSelectAndAssemble(ZPGGlobalDeclarations& state) {
    BuildSelectClause(state);
    AssembleStatement(state);
}

/// Sets a check box from code, which counts as a click when it changes.
void ClearCheck(ZPGGlobalDeclarations& state, CheckState& box, void (*clicked)(ZPGGlobalDeclarations&)) {
    if (box.Value == 0) return;
    box.Value = 0;
    clicked(state);
}

/// How colours lie after an edit that left `head` characters at the start and `tail` at the end of the text.
/// What was typed takes the colour of the character in front of it.
std::vector<ColourSpan> CarryColours(const std::vector<ColourSpan>& spans, int head, int removed,
                                     int inserted) {
    std::vector<ColourSpan> carried;
    const int removedEnd = head + removed;
    for (const ColourSpan& span : spans) {
        const int end = span.Start + span.Length;
        int newStart = span.Start < head ? span.Start : head + inserted;
        if (span.Start > removedEnd) newStart = span.Start + inserted - removed;
        int newEnd = end < head ? end : head + inserted;
        if (end > removedEnd) newEnd = end + inserted - removed;
        if (newEnd > newStart) carried.push_back({newStart, newEnd - newStart, span.Colour});
    }
    return carried;
}

/// Shows the statement's side of the tab instead of the criteria grid.
void HideGrid(FormState& form) {
    form.cmdSplit.Visible = false;
    form.cmdDeleteSplit.Visible = false;
    form.cmdSQLView.Visible = false;
    for (ControlState* option :
         {static_cast<ControlState*>(&form.chkDistinct), &form.lblTopX,
          static_cast<ControlState*>(&form.txtTopX), static_cast<ControlState*>(&form.chkPercent)})
        option->Visible = true;
    form.txtSQL.Visible = true;
    form.dgrSQL.Visible = false;
    for (ControlState* legend : {&form.fraTxt, &form.txtField, &form.txtOr, &form.txtValue})
        legend->Visible = false;
    form.lblSQLLabel[0].Visible = false;
    form.lblSQLLabel[1].Visible = true;
}

/// Empties and disables what a criterion is entered with; the fields stay.
void EndCriteriaEntry(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.lstOperands.Items.SetText({});
    SetValueText(state, 0, {});
    SetValueText(state, 1, {});
    form.lstOperands.Enabled = false;
    form.cmbAvailableValues1.Enabled = false;
    form.cmbAvailableValues2.Enabled = false;
    form.cmdFieldValues.Enabled = false;
}

void DropCriteriaAndOptions(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    ClearCheck(state, form.chkDistinct, DistinctClicked);
    ClearCheck(state, form.chkPercent, PercentClicked);
    if (!form.txtTopX.Text.isEmpty()) {
        form.txtTopX.Text.clear();
        TopXChanged(state);
    }
    for (const ado::RecordsetPtr& rows :
         {state.rsAlias, state.rsWhere, state.rsGroupBy, state.rsOrderBy, state.rsCalcFields})
        DeleteAllRows(rows);
    if (state.rsHaving && state.rsHaving->IsOpen()) state.rsHaving->Close();
}

}  // namespace

QString QueryModeCaption(const ZPGGlobalDeclarations& state) {
    static constexpr const char* captions[] = {"Where", "Group", "Order"};
    return QString::fromLatin1(captions[std::clamp(state.Form->optQuery.Selected, 0, 2)]);
}

void EnableAndOr(FormState& form, bool enabled) {
    if (enabled) form.fraAndOr.Enabled = true;
    for (ControlState& option : form.optAndOr.Options) option.Enabled = enabled;
}

void ChooseQueryMode(ZPGGlobalDeclarations& state, int index) {
    FormState& form = *state.Form;
    form.optQuery.Selected = index;
    form.dgrSQL.Visible = false;
    form.cmdSplit.Visible = false;
    form.cmdDeleteSplit.Visible = false;
    form.cmdCommit.Enabled = false;
    form.cmbAvailableValues1.Enabled = false;
    form.cmbAvailableValues2.Enabled = false;
    ShowSqlView(state);
    form.lstOperands.Items.Clear();
    form.lstOperands.Enabled = false;
    form.fraBuildQuery.Caption = QueryModeCaption(state);
    form.lstOperands.Items.AddItems(OperatorsOfMode(state));
    if (index == 1) BuildGroupByClause(state);
}

void DistinctClicked(ZPGGlobalDeclarations& state) {
    RebuildSelectAndAssemble(state);
}

void PercentClicked(ZPGGlobalDeclarations& state) {
    RebuildTopClause(state);
    RebuildSelectAndAssemble(state);
}

void TopXChanged(ZPGGlobalDeclarations& state) {
    RebuildTopClause(state);
    RebuildSelectAndAssemble(state);
}

void StatementTyped(ZPGGlobalDeclarations& state, const QString& text) {
    RichTextState& box = state.Form->txtSQL;
    const QString& old = box.Text;
    const qsizetype shorter = std::min(old.size(), text.size());
    qsizetype head = 0;
    while (head < shorter && old[head] == text[head]) ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && old[old.size() - 1 - tail] == text[text.size() - 1 - tail]) ++tail;
    box.Colours =
        CarryColours(box.Colours, static_cast<int>(head), static_cast<int>(old.size() - head - tail),
                     static_cast<int>(text.size() - head - tail));
    box.Text = text;
    EnableRunQuery(state);
}

void SetOptionControls(ZPGGlobalDeclarations& state, int count) {
    FormState& form = *state.Form;
    const RunOptions& options = state.Options;
    form.cmdSaveQuery.Enabled = count >= 1 && options.gAllowSaveDelete;
    form.fraQueryOptions.Enabled = count >= 1;
    form.optQuery.Options[1].Enabled = options.gAllowGroupBy;
    form.optQuery.Options[2].Enabled = options.gAllowOrderBy;
    form.cmdCalcField.Enabled = options.gAllowCalcFields;
    form.cmdEditCalcField.Enabled = options.gAllowCalcFields;
    form.cmdEditGroup.Enabled = options.gAllowGroupBy;
    form.cmdEditOrder.Enabled = options.gAllowOrderBy;
}

void ShowSqlView(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    form.Pointer = MousePointer::Hourglass;
    EndCriteriaEntry(state);
    HideGrid(form);
    PurgeEmptyCriteria(state);
    RefillFieldList(state);
    RegenerateStatement(state);
    EnableAndOr(form, !state.WhereClause.isEmpty());
    form.Pointer = MousePointer::Default;
}

void ResetSql(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    const BoxAnswer answer = state.UserPrompts->MsgBox(
        ResString(state, 203), BoxStyle::Question + BoxStyle::YesNo, state.Options.gRunTimeCaption);
    if (state.Showing != showing || answer != BoxAnswer::Yes) return;
    DropCriteriaAndOptions(state);
    // The focus goes to the option of Where mode, which selects it.
    ChooseQueryMode(state, 0);
    FormState& form = *state.Form;
    form.FocusRequest = QStringLiteral("optQuery_0");
    RefreshSelectedFieldList(state);
    form.fraAndOr.Enabled = false;
    EnableAndOr(form, false);
    form.lstSelectedFields.ToolTipText.clear();
    form.dgrSQL.DataSource = form.GridMode == QLatin1String("Where") ? state.rsWhere : state.rsHaving;
}

}  // namespace zephrin
