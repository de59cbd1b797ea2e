#pragma once

#include "flow/CalcFunctions.h"
#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

/// The dialog of one calculated field without its widgets.
struct CalcFieldForm {
    /// A row of the list of fields: what it shows, and what it inserts.
    struct FieldRow {
        QString Shown;
        QString Key;
        bool operator==(const FieldRow&) const = default;
    };

    CalcFunctionType FunctionType = CalcFunctionType::Text;
    QStringList Functions;
    std::vector<FieldRow> Fields;
    /// With CR LF for its line breaks.
    QString Criteria;
    /// The selection in Criteria, from 0; a line break counts two.
    int SelStart = 0;
    int SelLength = 0;
    QString Alias;
    bool AliasEnabled = true;
    bool ShowField = true;
    bool OkEnabled = false;
};

/// What frmZPG does before and behind the dialog of a new field.
void BeginCalcField(ZPGGlobalDeclarations& state);
void EndCalcField(ZPGGlobalDeclarations& state);

/// Fills the dialog: lists by dialect, and the field to edit where EditCalcField names one.
CalcFieldForm LoadCalcField(const ZPGGlobalDeclarations& state);
void ChooseFunctionType(const ZPGGlobalDeclarations& state, CalcFieldForm& form, CalcFunctionType type);

/// Puts `text` in place of the selection, or behind a blank at the caret. The caret goes to the end of the
/// whole text.
void InsertIntoExpression(CalcFieldForm& form, const QString& text);
void ClearExpression(CalcFieldForm& form);
/// Typing never disables OK. It enables it once there is an alias, or an expression that was cleared while
/// its alias can't be changed could never be replaced by hand.
void ExpressionTyped(CalcFieldForm& form, const QString& text);
/// The alias was typed in, or a field picked: what OK needs was looked at.
void AliasChanged(CalcFieldForm& form);
void CalcFieldPicked(CalcFieldForm& form);

enum class CalcOutcome {
    Stored,     ///< the field stands in rsCalcFields, the dialog closes
    Refused,    ///< the user was told why, the dialog stays
    TakenAlias  ///< the same, and the alias is to be typed anew
};
/// OK. Takes the field over, with CR LF for its line breaks, or says why not.
CalcOutcome AcceptCalcField(ZPGGlobalDeclarations& state, const CalcFieldForm& form);
void CancelCalcField(ZPGGlobalDeclarations& state);

/// True unless the expression holds an aggregate that is not written exactly as a group row has it.
bool AggregatesAreGrouped(const ZPGGlobalDeclarations& state, const QString& expression);

}  // namespace zephrin
