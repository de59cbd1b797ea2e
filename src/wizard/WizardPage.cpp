#include "wizard/WizardPage.h"

#include <QAbstractButton>

#include <utility>

namespace zephrin {

WizardPage::WizardPage(WizardHost& wizardHost, const QString& name) : host(wizardHost) {
    setObjectName(name);
}

void WizardPage::OnClick(QAbstractButton* button, WizardHost::Operation operation) {
    connect(button, &QAbstractButton::clicked, this,
            [this, run = std::move(operation)] { host.RunCommitted(run); });
}

void WizardPage::OnChosen(QAbstractButton* option, WizardHost::Operation operation) {
    connect(option, &QAbstractButton::toggled, this, [this, run = std::move(operation)](bool chosen) {
        if (chosen) host.RunCommitted(run);
    });
}

}  // namespace zephrin
