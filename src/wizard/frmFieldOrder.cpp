#include "wizard/frmFieldOrder.h"

#include "wizard/Build.h"
#include "wizard/ListBox.h"
#include "wizard/ShowControl.h"
#include "wizard/frmCalcFields.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zephrin {

namespace {

int CaptionId(const QString& mode) {
    return mode == u"Group" ? 239 : mode == u"Order" ? 240 : 241;
}

/// The two lists show one row each, index for index: they scroll and are picked together.
void ScrollTogether(const ListBox* one, const ListBox* other) {
    QObject::connect(one->verticalScrollBar(), &QScrollBar::valueChanged, other->verticalScrollBar(),
                     &QScrollBar::setValue);
    QObject::connect(other->verticalScrollBar(), &QScrollBar::valueChanged, one->verticalScrollBar(),
                     &QScrollBar::setValue);
}

void ShowInList(ListState& list, const QStringList& items, int index) {
    if (list.Items() != items) {
        list.Clear();
        list.AddItems(items);
    }
    list.SetListIndex(index);
}

}  // namespace

frmFieldOrder::frmFieldOrder(ZPGGlobalDeclarations& run, QWidget* over)
    : WizardDialog(run, QStringLiteral("frmFieldOrder"), over), form(LoadFieldOrder(run)) {
    setWindowTitle(ResString(State(), CaptionId(State().EditMode)));
    auto* middle = new QHBoxLayout;
    middle->addWidget(MakeLists(), 1);
    middle->addWidget(MakeOptions());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(MakeFoot());
    lstFields->SetItems(&fields);
    lstAlias->SetItems(&aliases);
    FinishControls();
    ConnectControls();
    Show();
    lstFields->setFocus();
    resize(sizeHint().expandedTo(QSize(560, 340)));
}

QWidget* frmFieldOrder::MakeLists() {
    QGroupBox* fraOrder = MakeFrame(QStringLiteral("fraOrder"), 231);
    lstFields = new ListBox(QStringLiteral("lstFields"));
    lstFields->setAccessibleName(ResString(State(), 231));
    lstAlias = new ListBox(QStringLiteral("lstAlias"));
    lstAlias->setAccessibleName(ResString(State(), 146).remove(u':').trimmed());
    ScrollTogether(lstFields, lstAlias);
    auto* lists = new QHBoxLayout;
    lists->addWidget(lstFields, 3);
    lists->addWidget(lstAlias, 2);
    txtAlias = new QLineEdit;
    txtAlias->setObjectName(QStringLiteral("txtAlias"));
    txtAlias->setReadOnly(true);
    txtAlias->setAccessibleName(lstAlias->accessibleName());
    auto* alias = new QHBoxLayout;
    QLabel* lblAlias = MakeLabel(QStringLiteral("lblAlias"), 146, txtAlias);
    alias->addWidget(lblAlias);
    alias->addWidget(txtAlias, 1);
    auto* layout = new QVBoxLayout(fraOrder);
    layout->addLayout(lists, 1);
    layout->addLayout(alias);
    // An order has no alias.
    for (QWidget* each :
         {static_cast<QWidget*>(lstAlias), static_cast<QWidget*>(lblAlias), static_cast<QWidget*>(txtAlias)})
        each->setVisible(form.AliasVisible);
    return fraOrder;
}

QWidget* frmFieldOrder::MakeOptions() {
    auto* side = new QWidget;
    QGroupBox* fraMove = MakeFrame(QStringLiteral("fraMove"), 0);
    auto* moves = new QVBoxLayout(fraMove);
    const QString icons[] = {QStringLiteral("up"), QStringLiteral("down")},
                  names[] = {tr("Move Up"), tr("Move Down")};
    for (int index = 0; index < 2; ++index) {
        cmdUpDown[index] =
            MakeIconButton(QStringLiteral("cmdUpDown_%1").arg(index), icons[index], names[index]);
        moves->addWidget(cmdUpDown[index]);
    }
    Frame1 = MakeFrame(QStringLiteral("Frame1"), 122);
    chkOutput = new QCheckBox(ResString(State(), 232));
    chkOutput->setObjectName(QStringLiteral("chkOutput"));
    chkOutput->setToolTip(tr("Display Field in Query Results"));
    cmdEdit = MakeIconButton(QStringLiteral("cmdEdit"), QStringLiteral("edit"), ResString(State(), 241));
    cmdDelete =
        MakeIconButton(QStringLiteral("cmdDelete"), QStringLiteral("delete"), ResString(State(), 244));
    auto* options = new QVBoxLayout(Frame1);
    options->addWidget(chkOutput);
    options->addWidget(cmdEdit);
    options->addWidget(cmdDelete);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(fraMove);
    layout->addWidget(Frame1);
    layout->addStretch();
    return side;
}

QWidget* frmFieldOrder::MakeFoot() {
    auto* foot = new QWidget;
    cmdOK = MakeButton(QStringLiteral("cmdOK"), 148);
    cmdOK->setDefault(true);
    cmdCancel = MakeButton(QStringLiteral("cmdCancel"), 149);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(cmdOK);
    layout->addWidget(cmdCancel);
    return foot;
}

void frmFieldOrder::ConnectControls() {
    for (ListBox* list : {lstFields, lstAlias}) {
        connect(list, &ListBox::Picked, this,
                [this](int row) { Change([&] { OrderRowClicked(State(), form, row); }); });
        connect(list, &ListBox::DblClick, cmdEdit, &QPushButton::click);
    }
    connect(chkOutput, &QCheckBox::clicked, this,
            [this](bool on) { Change([&] { OutputClicked(State(), form, on); }); });
    for (int index = 0; index < 2; ++index) {
        connect(cmdUpDown[index], &QPushButton::clicked, this,
                [this, index] { Change([&] { MoveOrderRow(State(), form, index == 1); }); });
    }
    connect(cmdEdit, &QPushButton::clicked, this, &frmFieldOrder::EditCalc);
    connect(cmdDelete, &QPushButton::clicked, this, &frmFieldOrder::Delete);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFieldOrder::EditCalc() {
    if (!form.EditEnabled || !form.EditVisible) return;
    BeginCalcEdit(State(), form);
    const QString before = State().EditCalcField;
    const QPointer<frmFieldOrder> guard(this);
    if (!Run(new frmCalcFields(State(), this)) || !guard) return;
    Change([&] { EndCalcEdit(State(), form, before); });
}

void frmFieldOrder::Delete() {
    Change([this] { DeleteOrderRow(State(), form); });
}

void frmFieldOrder::Change(const std::function<void()>& operation) {
    const QPointer<frmFieldOrder> guard(this);
    Act(operation);
    if (guard) Show();
}

void frmFieldOrder::Show() {
    QStringList shownFields, shownAliases;
    for (const FieldOrderForm::Row& row : form.Rows) {
        shownFields << row.Field;
        shownAliases << row.Alias;
    }
    ShowInList(fields, shownFields, form.ListIndex);
    ShowInList(aliases, shownAliases, form.ListIndex);
    lstFields->setToolTip(PlainToolTip(fields.Text()));
    txtAlias->setText(form.Alias);
    chkOutput->setVisible(form.OutputVisible);
    chkOutput->setEnabled(form.ListIndex >= 0);
    chkOutput->setChecked(form.Output);
    cmdEdit->setVisible(form.EditVisible);
    cmdEdit->setEnabled(form.EditEnabled);
    cmdDelete->setEnabled(form.DeleteEnabled);
    cmdUpDown[0]->setEnabled(form.UpEnabled);
    cmdUpDown[1]->setEnabled(form.DownEnabled);
}

void frmFieldOrder::accept() {
    if (Act([this] { AcceptFieldOrder(State(), form); })) QDialog::accept();
}

}  // namespace zephrin
