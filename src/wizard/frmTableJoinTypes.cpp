#include "wizard/frmTableJoinTypes.h"

#include "platform/dialogs/WrapLabel.h"
#include "wizard/Build.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zephrin {

namespace {

/// By the index of the option; "=>" is spelled so on purpose.
constexpr const char16_t* compareTexts[] = {u"=", u"=>", u"<=", u"<>"};

}  // namespace

frmTableJoinTypes::frmTableJoinTypes(ZPGGlobalDeclarations& run, QString& compareText, QWidget* over)
    : WizardDialog(run, QStringLiteral("frmTableJoinTypes"), over),
      compare(compareText),
      chosen(compareText) {
    setWindowTitle(QStringLiteral(" Join Properties"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeOptions());
    layout->addWidget(MakeFoot());
    FinishControls();
    for (int i = 0; i < 4; ++i) {
        const QString text = QString::fromUtf16(compareTexts[i]);
        if (chosen == text) optJoinType[i]->setChecked(true);
        connect(optJoinType[i], &QRadioButton::clicked, this, [this, text] { chosen = text; });
    }
    MakeOneStop(QList<QRadioButton*>(std::begin(optJoinType), std::end(optJoinType)));
}

QWidget* frmTableJoinTypes::MakeOptions() {
    QGroupBox* frame = MakeFrame(QStringLiteral("fraJoinType"), 112);
    auto* grid = new QGridLayout(frame);
    for (int i = 0; i < 4; ++i) {
        optJoinType[i] = new QRadioButton;
        optJoinType[i]->setObjectName(QStringLiteral("optJoinType_%1").arg(i));
        // The fourth type has no text among the resources.
        auto* label = new WrapLabel;
        NameLabel(label, QStringLiteral("lblJoinType_%1").arg(i), i < 3 ? 152 + i : 0, optJoinType[i]);
        if (i == 3) label->setText(tr("4: All records from both Tables."));
        grid->addWidget(optJoinType[i], i, 0, Qt::AlignTop);
        grid->addWidget(label, i, 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 50);
    return frame;
}

QWidget* frmTableJoinTypes::MakeFoot() {
    auto* foot = new QWidget;
    QPushButton* cmdOK = MakeButton(QStringLiteral("cmdOK"), 148);
    QPushButton* cmdCancel = MakeButton(QStringLiteral("cmdCancel"), 149);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmTableJoinTypes::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(cmdOK);
    layout->addWidget(cmdCancel);
    return foot;
}

void frmTableJoinTypes::cmdOK_Click() {
    compare = chosen;
    accept();
}

}  // namespace zephrin
