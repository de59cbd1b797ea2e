#pragma once

#include "wizard/ComboBox.h"
#include "wizard/ListBox.h"
#include "wizard/WizardPage.h"

namespace zephrin {

/// Puts what the user picks in `control` (a ListBox or a ComboBox) into the list of the state that `items`
/// names. The state tells its handlers; a pick of what is selected already is told as well.
template <class Control, class Items>
void OnPick(WizardHost& host, Control* control, Items items) {
    QObject::connect(control, &Control::Picked, control, [&host, items](int row) {
        host.Run([items, row](ZPGGlobalDeclarations& state) {
            ListState* list = items(*state.Form);
            if (list->ListIndex() == row) {
                Q_EMIT list->Click();
            } else {
                list->SetListIndex(row);
            }
        });
    });
}

}  // namespace zephrin
