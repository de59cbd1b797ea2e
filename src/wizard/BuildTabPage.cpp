#include "wizard/BuildTabPage.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/CriteriaGrid.h"
#include "output/CreateView.h"
#include "output/RunQuery.h"
#include "platform/controls/Bidi.h"
#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "platform/controls/Splitter.h"
#include "wizard/ComboBox.h"
#include "wizard/ListBox.h"
#include "wizard/Look.h"
#include "wizard/Pick.h"
#include "wizard/ShowControl.h"
#include "wizard/Splits.h"
#include "wizard/frmCalcFields.h"
#include "wizard/frmCriteriaBuilder.h"
#include "wizard/frmFieldOrder.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace zephrin {

namespace {

void TellRefusal(ZPGGlobalDeclarations& state, const QString& text) {
    state.UserPrompts->MsgBox(text, BoxStyle::Exclamation, state.Options.gRunTimeCaption);
}

}  // namespace

BuildTabPage::BuildTabPage(WizardHost& wizardHost) : WizardPage(wizardHost, QStringLiteral("tabBuild")) {
    halves = new controls::Splitter(Qt::Horizontal);
    halves->SetHandleName(tr("Width of the halves"));
    halves->setObjectName(QStringLiteral("sptBuild"));
    halves->setChildrenCollapsible(false);
    halves->addWidget(MakeSentence());
    halves->addWidget(MakeRight());
    halves->handle(1)->setObjectName(QStringLiteral("sptBuild_handle"));
    halves->setStretchFactor(0, 1);
    halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves);
    ConnectLeft();
    ConnectRight();
    ConnectGrid();
    SetVisitOrder();
}

// --- What the user does ---

void BuildTabPage::ConnectLeft() {
    for (int i = 0; i < 3; ++i)
        OnChosen(optQuery[i], [i](ZPGGlobalDeclarations& state) { ChooseQueryMode(state, i); });
    for (int i = 0; i < 2; ++i)
        OnChosen(optAndOr[i], [i](ZPGGlobalDeclarations& state) { state.Form->optAndOr.Selected = i; });
    OnPick(Host(), lstSelectedFields, [](FormState& form) { return &form.lstSelectedFields.Items; });
    OnPick(Host(), lstOperands, [](FormState& form) { return &form.lstOperands.Items; });
    ConnectValueBox(0, [](FormState& form) { return &form.cmbAvailableValues1.Items; });
    ConnectValueBox(1, [](FormState& form) { return &form.cmbAvailableValues2.Items; });
    OnClick(cmdFieldValues, LookUpFieldValues);
    OnClick(cmdCommit, CommitEntry);
    OnClick(cmdEditWhere, EditCriteria);
}

void BuildTabPage::ConnectValueBox(int box, ListState* (*items)(FormState&)) {
    ComboBox* combo = cmbAvailableValues[static_cast<std::size_t>(box)];
    OnPick(Host(), combo, items);
    connect(combo, &ComboBox::Typed, this, [this, box](const QString& text) {
        Host().Run([box, text](ZPGGlobalDeclarations& state) { ValueTyped(state, box, text); });
    });
    // Enter in a value is what the button beside it does, when it may be pressed.
    connect(combo, &ComboBox::Entered, cmdCommit, &QPushButton::click);
}

void BuildTabPage::ConnectGrid() {
    dgrSQL->SetButtonText(tr("&Build the Criteria"));
    dgrSQL->SetAllowUpdate(true);
    dgrSQL->SetAllowAddNew(true);
    dgrSQL->SetNormalise(
        [this](int, const QString& typed) { return NormaliseCriterion(Host().State(), typed); });
    connect(dgrSQL, &controls::DataGrid::AfterColEdit, this, [this](int column) {
        Host().Run([column](ZPGGlobalDeclarations& state) { CriterionEdited(state, column); });
    });
    connect(dgrSQL, &controls::DataGrid::ButtonClick, this, [this](int column) {
        Host().RunCommitted([this, column](ZPGGlobalDeclarations& state) { EditCell(state, column); });
    });
    connect(dgrSQL, &controls::DataGrid::EditRefused, this, [this](const QString& text) {
        Host().Run([text](ZPGGlobalDeclarations& state) { TellRefusal(state, text); });
    });
    OnClick(cmdSplit,
            [this](ZPGGlobalDeclarations& state) { AddSplit(state, dgrSQL, state.Form->cmdDeleteSplit); });
    OnClick(cmdDeleteSplit,
            [this](ZPGGlobalDeclarations& state) { RemoveSplit(state, dgrSQL, state.Form->cmdDeleteSplit); });
}

/// Lets the user write the cell's text in the dialog; a text that the cell can't hold comes back to him.
void BuildTabPage::EditCell(ZPGGlobalDeclarations& state, int column) {
    const bool onNewRow = dgrSQL->IsOnAddNewRow();
    const QPointer<BuildTabPage> alive(this);
    BeginCellDialog(state, column, onNewRow);
    const QString cell = state.CurrentCellText;
    while (WizardDialog::Run(new frmCriteriaBuilder(state, cell, window()))) {
        if (EndCellDialog(state, column, onNewRow)) return;
        // The keypad's Cancel leaves this flag as it stands; it must not bring the refused text once more.
        state.CriteriaChanged = false;
        TellRefusal(state, tr("The criteria are too long for the cell."));
        if (!alive) return;
    }
}

void BuildTabPage::ConnectRight() {
    connect(chkDistinct, &QCheckBox::toggled, this, [this](bool ticked) {
        Host().Run([ticked](ZPGGlobalDeclarations& state) {
            state.Form->chkDistinct.Value = ticked ? 1 : 0;
            DistinctClicked(state);
        });
    });
    connect(chkPercent, &QCheckBox::toggled, this, [this](bool ticked) {
        Host().Run([ticked](ZPGGlobalDeclarations& state) {
            state.Form->chkPercent.Value = ticked ? 1 : 0;
            PercentClicked(state);
        });
    });
    connect(txtTopX, &QLineEdit::textChanged, this, [this](const QString& text) {
        Host().Run([text](ZPGGlobalDeclarations& state) {
            state.Form->txtTopX.Text = text;
            TopXChanged(state);
        });
    });
    connect(txtSQL, &controls::ColouredText::TextEdited, this, [this](const QString& text) {
        Host().Run([text](ZPGGlobalDeclarations& state) { StatementTyped(state, text); });
    });
    OnClick(cmdSQLView, ShowSqlView);
    OnClick(cmdResetSQL, ResetSql);
    connect(cmdRunQuery, &QPushButton::clicked, this, [this] {
        if (!RefuseRun(Host().State())) Host().RunCommitted(RunQuery);
    });
    OnClick(cmdCreateView, CreateView);
    OnClick(cmdCalcField, [this](ZPGGlobalDeclarations& state) { CreateCalcField(state); });
    OnClick(cmdEditGroup, [this](ZPGGlobalDeclarations& state) { EditRows(state, QStringLiteral("Group")); });
    OnClick(cmdEditOrder, [this](ZPGGlobalDeclarations& state) { EditRows(state, QStringLiteral("Order")); });
    OnClick(cmdEditCalcField,
            [this](ZPGGlobalDeclarations& state) { EditRows(state, QStringLiteral("Calc")); });
    auto* run = new QShortcut(QKeySequence(Qt::Key_F5), this);
    connect(run, &QShortcut::activated, cmdRunQuery, &QPushButton::click);
}

void BuildTabPage::CreateCalcField(ZPGGlobalDeclarations& state) {
    BeginCalcField(state);
    if (WizardDialog::Run(new frmCalcFields(state, window()))) EndCalcField(state);
}

void BuildTabPage::EditRows(ZPGGlobalDeclarations& state, const QString& mode) {
    BeginFieldOrder(state, mode);
    if (WizardDialog::Run(new frmFieldOrder(state, window()))) ShowSqlView(state);
}

bool BuildTabPage::CommitEdits() {
    return dgrSQL->CommitEdit();
}

// --- Showing the state ---

void BuildTabPage::ShowState(FormState& form) {
    ShowSentence(form);
    ShowStatement(form);
    ShowRunButtons(form);
}

void BuildTabPage::ShowSentence(FormState& form) {
    ShowOptions<3>(optQuery, form.optQuery);
    ShowControl(fraBuildQuery, form.fraBuildQuery);
    const QString sentence = form.fraBuildQuery.Caption;
    const QString caption = sentence.isEmpty() ? optQuery[form.optQuery.Selected]->text() : sentence;
    SetCaption(fraBuildQuery, isRightToLeft() ? controls::Isolated(caption) : caption);
    ShowList(lstSelectedFields, form.lstSelectedFields);
    ShowList(lstOperands, form.lstOperands);
    ShowCombo(cmbAvailableValues[0], form.cmbAvailableValues1);
    ShowCombo(cmbAvailableValues[1], form.cmbAvailableValues2);
    ShowControl(cmdFieldValues, form.cmdFieldValues);
    ShowControl(fraAndOr, form.fraAndOr);
    ShowOptions<2>(optAndOr, form.optAndOr);
    ShowControl(cmdCommit, form.cmdCommit);
    ShowControl(cmdEditWhere, form.cmdEditWhere);
    ShowControl(cmdEditGroup, form.cmdEditGroup);
    ShowControl(cmdEditOrder, form.cmdEditOrder);
    ShowControl(cmdEditCalcField, form.cmdEditCalcField);
    ShowControl(cmdCalcField, form.cmdCalcField);
}

void BuildTabPage::ShowStatement(FormState& form) {
    fraQueryOptions->setEnabled(form.fraQueryOptions.Enabled);
    ShowCheck(chkDistinct, form.chkDistinct);
    ShowControl(lblTopX, form.lblTopX);
    ShowText(txtTopX, form.txtTopX);
    ShowCheck(chkPercent, form.chkPercent);
    // The grid takes the options away one by one; an empty frame says nothing.
    const bool hasOptions = form.chkDistinct.Visible || form.txtTopX.Visible || form.chkPercent.Visible;
    fraQueryOptions->setVisible(form.fraQueryOptions.Visible && hasOptions);
    ShowColouredText(txtSQL, form.txtSQL);
    ShowGrid(dgrSQL, form.dgrSQL);
    // A query that is begun anew is shown in one pane.
    while (!form.cmdDeleteSplit.Enabled && dgrSQL->SplitCount() > 1) dgrSQL->RemoveSplit();
    dgrSQL->SetColumnButton(-1, form.dgrSQL.ColumnButtons);
    ShowControl(fraTxt, form.fraTxt);
    ShowControl(txtField, form.txtField);
    ShowControl(txtOr, form.txtOr);
    ShowControl(txtValue, form.txtValue);
    for (int i = 0; i < 2; ++i) ShowLabel(lblSQLLabel[i], form.lblSQLLabel[i]);
    ShowControl(cmdSplit, form.cmdSplit);
    ShowControl(cmdDeleteSplit, form.cmdDeleteSplit);
    ShowControl(cmdSQLView, form.cmdSQLView);
}

void BuildTabPage::ShowRunButtons(FormState& form) {
    ShowControl(cmdResetSQL, form.cmdResetSQL);
    ShowControl(cmdCreateView, form.cmdCreateView);
    ShowControl(cmdRunQuery, form.cmdRunQuery);
    cmdRunQuery->setMinimumWidth(
        std::max(TwipsToPixels(form.cmdRunQueryWidth), cmdRunQuery->sizeHint().width()));
}

}  // namespace zephrin
