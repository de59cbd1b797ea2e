#include "flow/Handlers.h"

#include "flow/Criteria.h"
#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "flow/TableTab.h"

namespace zephrin {

namespace {

/// Runs `handler` at each click of `items`, as long as their form is the one in hand.
template <class Handler>
void OnClick(ZPGGlobalDeclarations& state, const ListState& items, Handler handler) {
    const FormState* form = state.Form.get();
    QObject::connect(&items, &ListState::Click, &items, [&state, form, handler] {
        if (state.Form.get() == form) handler(state);
    });
}

}  // namespace

void ConnectHandlers(ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    OnClick(state, form.lstZPQTableSelection.Items, TableSelectionClicked);
    OnClick(state, form.lstZPQTableTo.Items, TableToClicked);
    OnClick(state, form.lstZPQFieldFrom.Items, FieldFromClicked);
    OnClick(state, form.lstZPQFieldTo.Items, FieldToClicked);
    for (const int side : {0, 1}) {
        const auto index = static_cast<std::size_t>(side);
        OnClick(state, form.cmbJoinTables[index].Items, [side](auto& run) { JoinTablePicked(run, side); });
        OnClick(state, form.lstJoinFields[index].Items, [side](auto& run) { JoinFieldClicked(run, side); });
    }
    OnClick(state, form.cmbJoinType.Items, JoinTypePicked);
    OnClick(state, form.lstJoinCompare.Items, ComparePicked);
    OnClick(state, form.lstSelectedFields.Items, SelectedFieldClicked);
    OnClick(state, form.lstOperands.Items, OperatorClicked);
    OnClick(state, form.cmbAvailableValues1.Items, [](auto& run) { ValuePicked(run, 0); });
    OnClick(state, form.cmbAvailableValues2.Items, [](auto& run) { ValuePicked(run, 1); });
}

}  // namespace zephrin
