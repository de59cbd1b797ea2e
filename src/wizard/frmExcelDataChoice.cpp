#include "wizard/frmExcelDataChoice.h"

#include "wizard/Build.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zephrin {

frmExcelDataChoice::frmExcelDataChoice(ZPGGlobalDeclarations& run, QString& chosen, QWidget* over)
    : WizardDialog(run, QStringLiteral("frmExcelDataChoice"), over), answer(chosen) {
    setWindowTitle(ResString(run, 155).trimmed());

    auto* fraExcelChoice = MakeFrame(QStringLiteral("fraExcelChoice"), 158);
    auto* choices = new QVBoxLayout(fraExcelChoice);
    QList<QRadioButton*> options;
    const QString names[] = {QStringLiteral("Pivot"), QStringLiteral("Data")};
    for (int index = 0; index < 2; ++index) {
        auto* option = new QRadioButton(u'&' + ResString(run, 156 + index));
        option->setObjectName(QStringLiteral("optDataChoice_%1").arg(index));
        option->setChecked(names[index] == DataChoice);
        connect(option, &QRadioButton::toggled, this, [this, name = names[index]](bool on) {
            if (on) DataChoice = name;
        });
        choices->addWidget(option);
        options << option;
    }
    MakeOneStop(options);

    QPushButton* cmdOK = MakeButton(QStringLiteral("cmdOK"), 148);
    QPushButton* cmdCancel = MakeButton(QStringLiteral("cmdCancel"), 149);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraExcelChoice);
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 42);
    FinishControls();
}

void frmExcelDataChoice::accept() {
    answer = DataChoice;
    WizardDialog::accept();
}

}  // namespace zephrin
