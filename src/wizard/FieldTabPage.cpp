#include "wizard/FieldTabPage.h"

#include "flow/FieldTab.h"
#include "wizard/ListBox.h"
#include "wizard/MovePanel.h"
#include "wizard/Pick.h"
#include "wizard/ShowControl.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin {

FieldTabPage::FieldTabPage(WizardHost& wizardHost)
    : WizardPage(wizardHost, QStringLiteral("tabFields")),
      fraFields(new MovePanel({QStringLiteral("fraFields"), QStringLiteral("lstZPQFieldFrom"),
                               QStringLiteral("lstZPQFieldTo"), QStringLiteral("cmdZPQField"), 109, 110, 111,
                               tr("Put the field out"), tr("Put all fields out"), tr("Take the field back"),
                               tr("Take all fields back")})) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraFields);

    OnPick(Host(), fraFields->From, [](FormState& form) { return &form.lstZPQFieldFrom.Items; });
    OnPick(Host(), fraFields->To, [](FormState& form) { return &form.lstZPQFieldTo.Items; });
    OnClick(fraFields->Right, MoveFieldRight);
    OnClick(fraFields->RightAll, MoveAllFieldsRight);
    OnClick(fraFields->Left, MoveFieldLeft);
    OnClick(fraFields->LeftAll, MoveAllFieldsLeft);
    connect(fraFields->From, &ListBox::DblClick, this, [this] { Host().Run(FieldFromDoubleClicked); });
    connect(fraFields->To, &ListBox::DblClick, this, [this] { Host().Run(FieldToDoubleClicked); });
}

void FieldTabPage::ShowState(FormState& form) {
    ShowList(fraFields->From, form.lstZPQFieldFrom);
    ShowList(fraFields->To, form.lstZPQFieldTo);
    fraFields->ShowButtons(form.cmdZPQFieldRight, form.cmdZPQFieldRightAll, form.cmdZPQFieldLeft,
                           form.cmdZPQFieldLeftAll);
}

}  // namespace zephrin
