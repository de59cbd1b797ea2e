#include "wizard/BuildTabPage.h"

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/CriteriaGrid.h"
#include "output/CreateView.h"
#include "output/RunQuery.h"
#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "wizard/Build.h"
#include "wizard/ComboBox.h"
#include "wizard/Icons.h"
#include "wizard/ListBox.h"
#include "wizard/Look.h"
#include "wizard/Pick.h"
#include "wizard/ShowControl.h"
#include "wizard/frmCalcFields.h"
#include "wizard/frmCriteriaBuilder.h"
#include "wizard/frmFieldOrder.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

namespace zephrin {

namespace {

template <std::size_t N>
std::array<QRadioButton*, N> MakeOptionButtons(const QString& name, const std::array<QString, N>& captions,
                                               QWidget* parent) {
    std::array<QRadioButton*, N> buttons{};
    auto* group = new QButtonGroup(parent);
    for (std::size_t i = 0; i < N; ++i) {
        buttons[i] = new QRadioButton(captions[i], parent);
        buttons[i]->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
        group->addButton(buttons[i], static_cast<int>(i));
    }
    return buttons;
}

QVBoxLayout* PlainColumn(QWidget* parent) {
    auto* layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QHBoxLayout* PlainRow(QWidget* parent) {
    auto* layout = new QHBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

void TellRefusal(ZPGGlobalDeclarations& state, const QString& text) {
    state.UserPrompts->MsgBox(text, BoxStyle::Exclamation, state.Options.gRunTimeCaption);
}

}  // namespace

BuildTabPage::BuildTabPage(WizardHost& wizardHost) : WizardPage(wizardHost, QStringLiteral("tabBuild")) {
    auto* halves = new QSplitter;
    halves->setObjectName(QStringLiteral("sptBuild"));
    halves->setChildrenCollapsible(false);
    halves->addWidget(MakeSentence());
    halves->addWidget(MakeRight());
    halves->setStretchFactor(0, 1);
    halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves);
    ConnectLeft();
    ConnectRight();
    ConnectGrid();
    SetVisitOrder();
}

// --- Left: the sentence
// --------------------------------------------------------------------------------------------

QWidget* BuildTabPage::MakeSentence() {
    auto* left = new QWidget;
    QVBoxLayout* layout = PlainColumn(left);
    layout->addWidget(MakeModes());
    fraBuildQuery = MakeFrame(QStringLiteral("fraBuildQuery"), 0);
    auto* sentence = new QVBoxLayout(fraBuildQuery);
    sentence->addWidget(MakeLists(), 1);
    sentence->addWidget(MakeValues());
    layout->addWidget(fraBuildQuery, 1);
    layout->addWidget(MakeEditButtons());
    return left;
}

QWidget* BuildTabPage::MakeModes() {
    auto* modes = new QWidget;
    optQuery = MakeOptionButtons<3>(
        QStringLiteral("optQuery"),
        {QStringLiteral("Where"), QStringLiteral("Group"), QStringLiteral("Order")}, modes);
    QHBoxLayout* layout = PlainRow(modes);
    for (QRadioButton* option : optQuery) layout->addWidget(option);
    layout->addStretch();
    return modes;
}

QWidget* BuildTabPage::MakeLists() {
    auto* lists = new QWidget;
    lstSelectedFields = new ListBox(QStringLiteral("lstSelectedFields"));
    lstOperands = new ListBox(QStringLiteral("lstOperands"));
    auto* grid = new QGridLayout(lists);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(MakeLabel(QStringLiteral("lblSelectedFields"), 126, lstSelectedFields), 0, 0);
    grid->addWidget(MakeLabel(QStringLiteral("lblOperands"), 127, lstOperands), 0, 1);
    grid->addWidget(lstSelectedFields, 1, 0);
    grid->addWidget(lstOperands, 1, 1);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    return lists;
}

QWidget* BuildTabPage::MakeValues() {
    auto* values = new QWidget;
    auto* grid = new QGridLayout(values);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 2; ++i) {
        cmbAvailableValues[i] = new ComboBox(QStringLiteral("cmbAvailableValues%1").arg(i + 1));
        grid->addWidget(
            MakeLabel(QStringLiteral("lblAvailableValues%1").arg(i + 1), 128 + i, cmbAvailableValues[i]), 0,
            i);
        grid->addWidget(cmbAvailableValues[i], 1, i);
        grid->setColumnStretch(i, 1);
    }
    cmdFieldValues = MakeIconButton(QStringLiteral("cmdFieldValues"), QStringLiteral("search"),
                                    ResString(Host().State(), 242));
    grid->addWidget(cmdFieldValues, 1, 2);

    fraAndOr = MakeFrame(QStringLiteral("fraAndOr"), 130);
    optAndOr = MakeOptionButtons<2>(QStringLiteral("optAndOr"), {QStringLiteral("AND"), QStringLiteral("OR")},
                                    fraAndOr);
    auto* row = new QHBoxLayout(fraAndOr);
    for (QRadioButton* option : optAndOr) row->addWidget(option);
    row->addStretch();
    cmdCommit = MakeButton(QStringLiteral("cmdCommit"), 233, QStringLiteral("add"));
    SetDesignToolTip(cmdCommit, ResString(Host().State(), 243));
    auto* foot = new QHBoxLayout;
    foot->addWidget(fraAndOr, 1);
    foot->addWidget(cmdCommit, 0, Qt::AlignBottom);
    grid->addLayout(foot, 2, 0, 1, 3);
    return values;
}

QWidget* BuildTabPage::MakeEditButtons() {
    QGroupBox* frame = MakeFrame(QStringLiteral("fraEdit"), 131);
    const auto make = [this](const QString& name, const QString& icon, int toolTip) {
        return MakeIconButton(name, icon, ResString(Host().State(), toolTip));
    };
    cmdEditWhere = make(QStringLiteral("cmdEditWhere"), QStringLiteral("edit-where"), 238);
    cmdEditGroup = make(QStringLiteral("cmdEditGroup"), QStringLiteral("edit-group"), 239);
    cmdEditOrder = make(QStringLiteral("cmdEditOrder"), QStringLiteral("edit-order"), 240);
    cmdEditCalcField = make(QStringLiteral("cmdEditCalcField"), QStringLiteral("edit-calc"), 241);
    cmdCalcField = MakeButton(QStringLiteral("cmdCalcField"), 230, QStringLiteral("calc-field"));
    SetDesignToolTip(cmdCalcField, ResString(Host().State(), 245));
    auto* layout = new QHBoxLayout(frame);
    for (QPushButton* button : {cmdEditWhere, cmdEditGroup, cmdEditOrder, cmdEditCalcField})
        layout->addWidget(button);
    layout->addStretch();
    layout->addWidget(cmdCalcField);
    return frame;
}

// --- Right: the statement or the grid
// ------------------------------------------------------------------------------

QWidget* BuildTabPage::MakeRight() {
    auto* right = new QWidget;
    QVBoxLayout* layout = PlainColumn(right);
    layout->addWidget(MakeOptions());
    txtSQL = new controls::ColouredText;
    txtSQL->setObjectName(QStringLiteral("txtSQL"));
    txtSQL->setTabChangesFocus(true);
    dgrSQL = new controls::DataGrid;
    dgrSQL->setObjectName(QStringLiteral("dgrSQL"));
    dgrSQL->setAccessibleName(ResString(Host().State(), 246));
    lblSQLLabel[0] = MakeLabel(QStringLiteral("lblSQLLabel_0"), 0, dgrSQL);
    lblSQLLabel[0]->setWordWrap(true);
    lblSQLLabel[1] = MakeLabel(QStringLiteral("lblSQLLabel_1"), 120, txtSQL);
    layout->addWidget(lblSQLLabel[1]);
    layout->addWidget(txtSQL, 1);
    layout->addWidget(lblSQLLabel[0]);
    layout->addWidget(MakeLegend());
    layout->addWidget(dgrSQL, 1);
    layout->addWidget(MakeGridFoot());
    layout->addWidget(MakeRunButtons());
    return right;
}

QWidget* BuildTabPage::MakeOptions() {
    fraQueryOptions = MakeFrame(QStringLiteral("fraQueryOptions"), 122);
    chkDistinct = new QCheckBox(QStringLiteral("Distinct"));
    chkDistinct->setObjectName(QStringLiteral("chkDistinct"));
    txtTopX = new QLineEdit;
    txtTopX->setObjectName(QStringLiteral("txtTopX"));
    txtTopX->setMaximumWidth(txtTopX->fontMetrics().averageCharWidth() * 14);
    lblTopX = MakeLabel(QStringLiteral("lblTopX"), 121, txtTopX);
    chkPercent = new QCheckBox(QStringLiteral("Percent"));
    chkPercent->setObjectName(QStringLiteral("chkPercent"));
    auto* layout = new QHBoxLayout(fraQueryOptions);
    for (QWidget* widget : {static_cast<QWidget*>(chkDistinct), static_cast<QWidget*>(lblTopX),
                            static_cast<QWidget*>(txtTopX), static_cast<QWidget*>(chkPercent)})
        layout->addWidget(widget);
    layout->addStretch();
    return fraQueryOptions;
}

QWidget* BuildTabPage::MakeLegend() {
    fraTxt = new QFrame;
    fraTxt->setObjectName(QStringLiteral("fraTxt"));
    txtField = MakeLabel(QStringLiteral("txtField"), 116);
    txtValue = MakeLabel(QStringLiteral("txtValue"), 119);
    txtOr = MakeLabel(QStringLiteral("txtOr_0"), 117);
    auto* layout = new QHBoxLayout(fraTxt);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QLabel* label : {txtField, txtValue, txtOr}) layout->addWidget(label);
    layout->addStretch();
    return fraTxt;
}

QWidget* BuildTabPage::MakeGridFoot() {
    auto* foot = new QWidget;
    cmdSplit = MakeButton(QStringLiteral("cmdSplit"), 124, QStringLiteral("split"));
    cmdDeleteSplit = MakeButton(QStringLiteral("cmdDeleteSplit"), 125, QStringLiteral("unsplit"));
    cmdSQLView = MakeButton(QStringLiteral("cmdSQLView"), 165, QStringLiteral("edit"));
    QHBoxLayout* layout = PlainRow(foot);
    layout->addWidget(cmdSplit);
    layout->addWidget(cmdDeleteSplit);
    layout->addStretch();
    layout->addWidget(cmdSQLView);
    return foot;
}

QWidget* BuildTabPage::MakeRunButtons() {
    auto* buttons = new QWidget;
    cmdResetSQL = MakeButton(QStringLiteral("cmdResetSQL"), 164, QStringLiteral("reset"));
    cmdCreateView = MakeIconButton(QStringLiteral("cmdCreateView"), QStringLiteral("create-view"),
                                   ResString(Host().State(), 226));
    cmdRunQuery = MakeButton(QStringLiteral("cmdRunQuery"), 118, QStringLiteral("run"));
    SetDesignToolTip(cmdRunQuery, QStringLiteral("F5"));
    QHBoxLayout* layout = PlainRow(buttons);
    layout->addWidget(cmdResetSQL);
    layout->addStretch();
    layout->addWidget(cmdCreateView);
    layout->addWidget(cmdRunQuery);
    return buttons;
}

// --- What the user does
// --------------------------------------------------------------------------------------------

void BuildTabPage::ConnectLeft() {
    for (int i = 0; i < 3; ++i)
        OnClick(optQuery[i], [i](ZPGGlobalDeclarations& state) { ChooseQueryMode(state, i); });
    for (int i = 0; i < 2; ++i)
        OnClick(optAndOr[i], [i](ZPGGlobalDeclarations& state) { state.Form->optAndOr.Selected = i; });
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
    OnClick(cmdSplit, [this](ZPGGlobalDeclarations& state) {
        dgrSQL->AddSplit();
        state.Form->cmdDeleteSplit.Enabled = true;
    });
    OnClick(cmdDeleteSplit, [this](ZPGGlobalDeclarations& state) {
        dgrSQL->RemoveSplit();
        state.Form->cmdDeleteSplit.Enabled = dgrSQL->SplitCount() > 1;
    });
}

/// Lets the user write the cell's text in the dialog; a text that the cell can't hold comes back to him.
void BuildTabPage::EditCell(ZPGGlobalDeclarations& state, int column) {
    const bool onNewRow = dgrSQL->IsOnAddNewRow();
    const QPointer<BuildTabPage> alive(this);
    BeginCellDialog(state, column, onNewRow);
    while (WizardDialog::Run(new frmCriteriaBuilder(state, window()))) {
        if (EndCellDialog(state, column, onNewRow)) return;
        TellRefusal(state, tr("The criteria are too long for the cell."));
        if (!alive) return;
    }
}

void BuildTabPage::ConnectRight() {
    connect(chkDistinct, &QCheckBox::clicked, this, [this](bool ticked) {
        Host().Run([ticked](ZPGGlobalDeclarations& state) {
            state.Form->chkDistinct.Value = ticked ? 1 : 0;
            DistinctClicked(state);
        });
    });
    connect(chkPercent, &QCheckBox::clicked, this, [this](bool ticked) {
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
    OnClick(cmdRunQuery, RunQuery);
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

void BuildTabPage::SetVisitOrder() {
    QWidget* order[] = {optQuery[0],
                        optQuery[1],
                        optQuery[2],
                        lstSelectedFields,
                        lstOperands,
                        cmbAvailableValues[0],
                        cmbAvailableValues[1],
                        cmdFieldValues,
                        optAndOr[0],
                        optAndOr[1],
                        cmdCommit,
                        cmdEditWhere,
                        cmdEditGroup,
                        cmdEditOrder,
                        cmdEditCalcField,
                        cmdCalcField,
                        chkDistinct,
                        txtTopX,
                        chkPercent,
                        txtSQL,
                        dgrSQL,
                        cmdSplit,
                        cmdDeleteSplit,
                        cmdSQLView,
                        cmdResetSQL,
                        cmdCreateView,
                        cmdRunQuery};
    for (int i = 1; i < static_cast<int>(std::size(order)); ++i) setTabOrder(order[i - 1], order[i]);
}

// --- Showing the state
// ---------------------------------------------------------------------------------------------

void BuildTabPage::ShowState(FormState& form) {
    ShowSentence(form);
    ShowStatement(form);
    ShowRunButtons(form);
}

void BuildTabPage::ShowSentence(FormState& form) {
    ShowOptions<3>(optQuery, form.optQuery);
    ShowControl(fraBuildQuery, form.fraBuildQuery);
    const QString caption = form.fraBuildQuery.Caption;
    SetCaption(fraBuildQuery, caption.isEmpty() ? optQuery[form.optQuery.Selected]->text() : caption);
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
