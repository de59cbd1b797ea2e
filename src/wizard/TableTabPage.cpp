#include "wizard/TableTabPage.h"

#include "flow/TableTab.h"
#include "wizard/ListBox.h"
#include "wizard/MovePanel.h"
#include "wizard/Pick.h"
#include "wizard/ShowControl.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin {

TableTabPage::TableTabPage(WizardHost& wizardHost)
    : WizardPage(wizardHost, QStringLiteral("tabTables")),
      fraTables(new MovePanel({QStringLiteral("fraTables"), QStringLiteral("lstZPQTableSelection"),
                               QStringLiteral("lstZPQTableTo"), QStringLiteral("cmdZPQTable"), 101, 102, 103,
                               tr("Select the table"), tr("Select all tables"), tr("Take the table back"),
                               tr("Take all tables back")})) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraTables);

    OnPick(Host(), fraTables->From, [](FormState& form) { return &form.lstZPQTableSelection.Items; });
    OnPick(Host(), fraTables->To, [](FormState& form) { return &form.lstZPQTableTo.Items; });
    OnClick(fraTables->Right, MoveTableRight);
    OnClick(fraTables->RightAll, MoveAllTablesRight);
    OnClick(fraTables->Left, MoveTableLeft);
    OnClick(fraTables->LeftAll, MoveAllTablesLeft);
    connect(fraTables->From, &ListBox::DblClick, this, [this] { Host().Run(MoveTableRight); });
    connect(fraTables->To, &ListBox::DblClick, this, [this] { Host().Run(MoveTableLeft); });
}

void TableTabPage::ShowState(FormState& form) {
    ShowList(fraTables->From, form.lstZPQTableSelection);
    ShowList(fraTables->To, form.lstZPQTableTo);
    fraTables->ShowButtons(form.cmdZPQTableRight, form.cmdZPQTableRightAll, form.cmdZPQTableLeft,
                           form.cmdZPQTableLeftAll);
}

}  // namespace zephrin
