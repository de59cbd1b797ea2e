#include "flow/CalcFields.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "sqlgen/Aliases.h"
#include "sqlgen/Blanks.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WorkingRows.h"

#include <zephrin/ado/Error.h>

#include <algorithm>

namespace zephrin {

namespace {

const auto ErrorTitle = QStringLiteral("Calc Field Creation Error");

QString UnknownAggregateText(const QString& expression) {
    return QStringLiteral(
               "Unable to create Calculated Field : %1.\r\nField is using an unknown Aggregate.\r\n"
               "You must first create the Aggregate using the Group function before using the Aggregate in a "
               "Calculated field.")
        .arg(expression);
}

/// Moves to the first row whose `column` equals `text`; false when there is none.
bool MoveTo(const ado::RecordsetPtr& recordset, QStringView column, const QString& text) {
    if (!HasRows(recordset)) return false;
    for (recordset->MoveFirst(); !recordset->Eof(); recordset->MoveNext())
        if (recordset->Text(column) == text) return true;
    recordset->MoveFirst();
    return false;
}

/// The alias of a field that stands already leads to the new expression from now on.
void RememberAlias(ZPGGlobalDeclarations& state, const QString& expression, const QString& alias) {
    const ado::RecordsetPtr& aliases = state.rsAlias;
    if (!MoveTo(aliases, u"Alias", alias)) {
        BeginRow(*aliases);
        aliases->SetValue(u"Alias", alias);
        aliases->SetValue(u"RecordsetType", QStringLiteral("rsCalcFields"));
    }
    aliases->SetValue(u"FieldName", expression);
    aliases->Update();
}

void StoreCalcField(ZPGGlobalDeclarations& state, const QString& expression, const QString& alias,
                    bool show) {
    const ado::RecordsetPtr& fields = state.rsCalcFields;
    BeginRow(*fields);
    fields->SetValue(u"CalcField", expression);
    fields->SetValue(u"Alias", alias);
    // The case of "No" is what tells this dialog's rows from those of the order dialog.
    fields->SetValue(u"OutputYes/No", show ? QStringLiteral("YES") : QStringLiteral("No"));
    fields->Update();
    RememberAlias(state, expression, alias);
}

/// An expression or alias that its column can't hold is refused before anything is touched.
bool FitsItsColumns(const ZPGGlobalDeclarations& state, const QString& expression, const QString& alias) {
    const auto fits = [&](QStringView column, const QString& text) {
        const int index = state.rsCalcFields->FieldIndex(column);
        return text.size() <= state.rsCalcFields->FieldAt(index).DefinedSize;
    };
    return fits(u"CalcField", expression) && fits(u"Alias", alias);
}

void TellTooLong(ZPGGlobalDeclarations& state) {
    state.UserPrompts->MsgBox(
        QStringLiteral("The expression and the alias can have %1 characters each at most.")
            .arg(state.rsCalcFields->FieldAt(0).DefinedSize),
        BoxStyle::Critical, ErrorTitle);
}

}  // namespace

void BeginCalcField(ZPGGlobalDeclarations& state) {
    ShowSqlView(state);
    state.Form->cmdCommit.Enabled = false;
}

void EndCalcField(ZPGGlobalDeclarations& state) {
    RefillFieldList(state);
    // An order that waited for the field comes back with it.
    RegenerateStatement(state);
}

CalcFieldForm LoadCalcField(const ZPGGlobalDeclarations& state) {
    CalcFieldForm form;
    ChooseFunctionType(state, form, CalcFunctionType::Text);
    for (const QString& field : state.colSelFields)
        form.Fields.push_back({field.mid(field.indexOf(u'.') + 1), field});
    for (const GroupRow& group : GroupRows(state))
        if (!group.FieldAlias.isEmpty()) form.Fields.push_back({group.FieldAlias, group.GroupBy});
    for (const CalcRow& calc : CalcRows(state)) form.Fields.push_back({calc.Alias, calc.CalcField});
    if (state.EditCalcField.isEmpty()) return form;
    form.Criteria = WithCrLf(state.EditCalcField);
    form.Alias = state.EditCalcAlias;
    form.AliasEnabled = false;
    form.ShowField = state.EditCalcShow == 1;
    AliasChanged(form);
    return form;
}

void ChooseFunctionType(const ZPGGlobalDeclarations& state, CalcFieldForm& form, CalcFunctionType type) {
    form.FunctionType = type;
    form.Functions = CalcFunctions(state.gDatabaseType, type);
}

void InsertIntoExpression(CalcFieldForm& form, const QString& text) {
    const QString before = form.Criteria.left(form.SelStart);
    const QString behind = form.Criteria.mid(form.SelStart + form.SelLength);
    form.Criteria = before + (form.SelLength > 0 ? QString() : QStringLiteral(" ")) + text + behind;
    form.SelStart = static_cast<int>(form.Criteria.size());
    form.SelLength = 0;
    form.OkEnabled = !form.Alias.isEmpty();
}

void ClearExpression(CalcFieldForm& form) {
    form.Criteria.clear();
    form.SelStart = form.SelLength = 0;
    form.OkEnabled = false;
}

void ExpressionTyped(CalcFieldForm& form, const QString& text) {
    form.Criteria = text;
    if (!text.isEmpty() && !form.Alias.isEmpty()) form.OkEnabled = true;
}

void AliasChanged(CalcFieldForm& form) {
    form.OkEnabled = !form.Criteria.isEmpty() && !form.Alias.isEmpty();
}

void CalcFieldPicked(CalcFieldForm& form) {
    form.OkEnabled = !form.Alias.isEmpty();
}

bool AggregatesAreGrouped(const ZPGGlobalDeclarations& state, const QString& expression) {
    if (!IsAggregateExpression(expression)) return true;
    const std::vector<GroupRow> groups = GroupRows(state);
    return std::any_of(groups.begin(), groups.end(), [&](const GroupRow& group) {
        return !group.FieldAlias.isEmpty() && expression.contains(group.GroupBy);
    });
}

CalcOutcome AcceptCalcField(ZPGGlobalDeclarations& state, const CalcFieldForm& form) {
    if (!AggregatesAreGrouped(state, form.Criteria)) {
        state.UserPrompts->MsgBox(UnknownAggregateText(form.Criteria), BoxStyle::Critical, ErrorTitle);
        return CalcOutcome::Refused;
    }
    const QString expression = LeftTrimmed(WithCrLf(form.Criteria)), alias = LeftTrimmed(form.Alias);
    if (!FitsItsColumns(state, expression, alias)) {
        TellTooLong(state);
        return CalcOutcome::Refused;
    }
    // An edit keeps its alias, whatever else has it in a query of old.
    if (state.EditCalcField.isEmpty() && AliasIsTaken(state, alias)) {
        TellTakenAlias(state);
        return CalcOutcome::TakenAlias;
    }
    if (MoveTo(state.rsCalcFields, u"Alias", alias)) state.rsCalcFields->Delete();
    StoreCalcField(state, expression, alias, form.ShowField);
    state.EditCalcNew = expression;
    state.CalcFieldCreated = true;
    state.EditCalcField.clear();
    state.EditCalcAlias.clear();
    state.EditCalcShow = 0;
    return CalcOutcome::Stored;
}

void CancelCalcField(ZPGGlobalDeclarations& state) {
    state.EditCalcField.clear();
    state.EditCalcAlias.clear();
    state.CalcFieldCreated = false;
}

}  // namespace zephrin
