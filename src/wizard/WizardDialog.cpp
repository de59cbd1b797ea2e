#include "wizard/WizardDialog.h"

#include "wizard/Guarded.h"
#include "wizard/Look.h"
#include "wizard/TipKey.h"

#include <QLabel>

namespace zephrin {

namespace {
constexpr int lastDialogCaption = 231;
}

WizardDialog::WizardDialog(ZPGGlobalDeclarations& run, const QString& name, QWidget* over)
    : QDialog(over, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      state(run) {
    setObjectName(name);
    setWindowModality(Qt::ApplicationModal);
}

bool WizardDialog::Run(WizardDialog* dialog) {
    ZPGGlobalDeclarations& state = dialog->State();
    const int showing = state.Showing;
    const QPointer<WizardDialog> alive(dialog);
    ShowFormNow(state);
    dialog->exec();
    if (alive) delete dialog;
    return state.Showing == showing;
}

bool WizardDialog::Act(const std::function<void()>& operation) {
    const QPointer<WizardDialog> alive(this);
    return RunGuarded(state, operation) && alive;
}

void WizardDialog::FinishControls() {
    ApplyCaptions(this, state, lastDialogCaption);
    NameByLabels(this);
    AddTipKey(this);
}

void NameByLabels(QWidget* form) {
    const auto labels = form->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        QWidget* buddy = label->buddy();
        if (buddy && buddy->accessibleName().isEmpty())
            buddy->setAccessibleName(label->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
    }
}

}  // namespace zephrin
