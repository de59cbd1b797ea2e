#include "flow/Criteria.h"

#include "flow/BuildTab.h"

namespace zephrin {

namespace {

ComboState& ValueBox(FormState& form, int box) {
    return box == 0 ? form.cmbAvailableValues1 : form.cmbAvailableValues2;
}

bool IsBetween(const FormState& form) {
    return form.lstOperands.Items.Text() == QLatin1String("between");
}

}  // namespace

void SetValueText(ZPGGlobalDeclarations& state, int box, const QString& text) {
    QString& shown = ValueBox(*state.Form, box).Text;
    if (shown == text) return;
    shown = text;
    ValueChanged(state, box);
}

void ValueChanged(ZPGGlobalDeclarations& state, int box) {
    FormState& form = *state.Form;
    ComboState& changed = ValueBox(form, box);
    changed.ToolTipText = changed.Text;
    form.cmdCommit.Enabled =
        !changed.Text.isEmpty() && (!IsBetween(form) || !ValueBox(form, 1 - box).Text.isEmpty());
    RefreshSentence(state);
}

void RefreshSentence(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    QString& caption = form.fraBuildQuery.Caption;
    caption = QueryModeCaption(state) + u' ' + form.lstSelectedFields.Items.Text() + u' ' +
              form.lstOperands.Items.Text() + u' ' + form.cmbAvailableValues1.Text;
    if (!form.cmbAvailableValues2.Text.isEmpty())
        caption += QStringLiteral(" AND ") + form.cmbAvailableValues2.Text;
}

}  // namespace zephrin
