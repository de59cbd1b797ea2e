#include "flow/Handlers.h"

#include "flow/FieldTab.h"
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
}

}  // namespace zephrin
