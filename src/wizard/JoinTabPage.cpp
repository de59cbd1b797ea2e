#include "wizard/JoinTabPage.h"

#include "flow/JoinTab.h"
#include "platform/controls/DataGrid.h"
#include "wizard/Build.h"
#include "wizard/ComboBox.h"
#include "wizard/Icons.h"
#include "wizard/ListBox.h"
#include "wizard/Look.h"
#include "wizard/Pick.h"
#include "wizard/ShowControl.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zephrin {

namespace {

/// Twips, in the order of the columns of rsJoins.
constexpr int compareColumn = 4;
constexpr int gridColumns[] = {1500, 1550, 1500, 1800, 1000, 1800};

QString Element(const QString& name, int index) {
    return QStringLiteral("%1_%2").arg(name).arg(index);
}

}  // namespace

JoinTabPage::JoinTabPage(WizardHost& wizardHost) : WizardPage(wizardHost, QStringLiteral("tabJoins")) {
    QGroupBox* fraJoins = MakeFrame(QStringLiteral("fraJoins"), 104);
    auto* pair = new QGridLayout(fraJoins);
    AddSide(pair, 0);
    AddMiddle(pair);
    AddSide(pair, 1);
    pair->setColumnStretch(0, 1);
    pair->setColumnStretch(2, 1);
    pair->setRowStretch(3, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraJoins, 3);
    layout->addWidget(MakeGrid(), 2);

    QWidget* order[] = {cmbJoinTables[0], cmbJoinTables[1], cmdlockTables, lstJoinFields[0], lstJoinFields[1],
                        cmbJoinType,      cmdAddJoin,       dgrJoins,      cmdResetJoins};
    for (int i = 1; i < static_cast<int>(std::size(order)); ++i) setTabOrder(order[i - 1], order[i]);
    ConnectPair();
    ConnectGrid();
}

void JoinTabPage::ConnectPair() {
    for (int side = 0; side < 2; ++side) {
        const auto at = static_cast<std::size_t>(side);
        OnPick(Host(), cmbJoinTables[at], [at](FormState& form) { return &form.cmbJoinTables[at].Items; });
        OnPick(Host(), lstJoinFields[at], [at](FormState& form) { return &form.lstJoinFields[at].Items; });
        connect(cmbJoinTables[at], &ComboBox::Typed, this, [this, side] {
            Host().Run([side](ZPGGlobalDeclarations& state) { JoinTableTyped(state, side); });
        });
        const auto chosen = [this, side] {
            Host().Run([side](ZPGGlobalDeclarations& state) { JoinTableChosen(state, side); });
        };
        connect(cmbJoinTables[at], &ComboBox::Chosen, this, chosen);
        connect(cmbJoinTables[at], &ComboBox::Entered, this, chosen);
        connect(lstJoinFields[at], &ListBox::Chosen, this, [this] { Host().Run(JoinFieldChosen); });
    }
    OnPick(Host(), cmbJoinType, [](FormState& form) { return &form.cmbJoinType.Items; });
    connect(cmbJoinType, &ComboBox::Typed, this, [this] { Host().Run(JoinTypeTyped); });
    OnClick(cmdlockTables, LockClicked);
    OnClick(cmdAddJoin, AddJoin);
}

void JoinTabPage::ConnectGrid() {
    OnClick(cmdResetJoins, ResetJoins);
    connect(dgrJoins, &controls::DataGrid::ButtonClick, this, [this] { Host().Run(CompareButtonClicked); });
    connect(dgrJoins, &controls::DataGrid::Click, this, [this] { Host().Run(HideCompareList); });
    connect(dgrJoins, &controls::DataGrid::RowColChange, this, [this] { Host().Run(HideCompareList); });
    connect(lstJoinCompare, &ListBox::Chosen, this, &JoinTabPage::ChooseComparison);
}

void JoinTabPage::AddSide(QGridLayout* pair, int index) {
    const bool from = index == 0;
    const int column = from ? 0 : 2;
    cmbJoinTables[index] = new ComboBox(Element(QStringLiteral("cmbJoinTables"), index));
    cmbJoinTables[index]->SetPickOnly();
    lblJoinTable[index] =
        MakeLabel(from ? QStringLiteral("lblJoinTableFrom") : QStringLiteral("lblJoinTableTo"),
                  from ? 105 : 106, cmbJoinTables[index]);
    lstJoinFields[index] = new ListBox(Element(QStringLiteral("lstJoinFields"), index));
    QLabel* lblJoinField =
        MakeLabel(from ? QStringLiteral("lblJoinFieldFrom") : QStringLiteral("lblJoinFieldTo"),
                  from ? 107 : 108, lstJoinFields[index]);
    pair->addWidget(lblJoinTable[index], 0, column);
    pair->addWidget(cmbJoinTables[index], 1, column);
    pair->addWidget(lblJoinField, 2, column);
    pair->addWidget(lstJoinFields[index], 3, column);
}

void JoinTabPage::AddMiddle(QGridLayout* pair) {
    cmdlockTables =
        MakeIconButton(QStringLiteral("cmdlockTables"), QStringLiteral("unlock"), tr("Lock Tables"));
    cmbJoinType = new ComboBox(QStringLiteral("cmbJoinType"));
    cmbJoinType->SetPickOnly();
    cmbJoinType->setMinimumContentsLength(6);
    cmdAddJoin = MakeButton(QStringLiteral("cmdAddJoin"), 113, QStringLiteral("add"));
    auto* question = MakeLabel(QStringLiteral("lblQuestionMark"), 0);
    question->setText(QStringLiteral("?"));
    question->setToolTip(
        tr("=  only rows that match\n>=  all rows of the left table\n<>  all rows of both tables"));
    // The label itself is out of reach for the keyboard.
    cmbJoinType->setWhatsThis(question->toolTip());
    auto* head = new QHBoxLayout;
    head->addWidget(MakeLabel(QStringLiteral("lblJoinType"), 112, cmbJoinType), 1);
    head->addWidget(question);
    auto* type = new QVBoxLayout;
    type->addLayout(head);
    type->addWidget(cmbJoinType);
    type->addWidget(cmdAddJoin);
    type->addStretch();
    pair->addWidget(cmdlockTables, 1, 1);
    pair->addLayout(type, 3, 1);
}

QWidget* JoinTabPage::MakeGrid() {
    auto* lower = new QWidget;
    auto* layout = new QVBoxLayout(lower);
    layout->setContentsMargins(0, 0, 0, 0);
    dgrJoins = new controls::DataGrid;
    dgrJoins->setObjectName(QStringLiteral("dgrJoins"));
    dgrJoins->SetAllowUpdate(false);
    dgrJoins->SetButtonText(tr("Choose the &Comparison"));
    dgrJoins->SetEmptyText(tr("Pick two tables, lock them, pick a field of each, and add the join."));
    cmdResetJoins = MakeButton(QStringLiteral("cmdResetJoins"), 114, QStringLiteral("delete"));
    auto* foot = new QHBoxLayout;
    foot->addStretch();
    foot->addWidget(cmdResetJoins);
    layout->addWidget(MakeLabel(QStringLiteral("lblJoins"), 115, dgrJoins));
    layout->addWidget(dgrJoins, 1);
    layout->addLayout(foot);

    lstJoinCompare = new ListBox(QStringLiteral("lstJoinCompare"), this);
    lstJoinCompare->setAccessibleName(tr("Comparison"));
    lstJoinCompare->hide();
    lstJoinCompare->installEventFilter(this);
    return lower;
}

void JoinTabPage::ChooseComparison(int row) {
    Host().Run([row](ZPGGlobalDeclarations& state) { state.Form->lstJoinCompare.Items.SetListIndex(row); });
}

/// The keys of the open list that its view doesn't know: those that chose or gave up, and those that opened
/// it.
bool JoinTabPage::CompareListKey(const QKeyEvent& event) {
    const bool button =
        event.key() == Qt::Key_F4 ||
        (event.modifiers() & Qt::AltModifier && (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up));
    if (event.key() == Qt::Key_Escape || button) {
        Host().Run(HideCompareList);
        return true;
    }
    if (event.key() != Qt::Key_Space) return false;
    if (const QModelIndex current = lstJoinCompare->currentIndex(); current.isValid())
        ChooseComparison(current.row());
    return true;
}

bool JoinTabPage::IsInGrid(const QWidget* widget) const {
    return widget && (widget == dgrJoins || dgrJoins->isAncestorOf(widget));
}

/// The open list goes when the user turns to something else. A press in the grid is the grid's to tell of: it
/// may be one on the button that opened the list.
bool JoinTabPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched != lstJoinCompare) return WizardPage::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) return CompareListKey(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut && lstJoinCompare->isVisible()) {
        const bool byMouse = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
        if (!byMouse || !IsInGrid(QApplication::focusWidget())) Host().Run(HideCompareList);
    }
    return false;
}

/// The list may be open while the keyboard is in the grid, and Escape gives up the list before the wizard.
void JoinTabPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && lstJoinCompare->isVisible()) {
        Host().Run(HideCompareList);
    } else {
        WizardPage::keyPressEvent(event);
    }
}

/// Puts the list below the cell whose button was pressed, or above it where there is no room.
void JoinTabPage::ShowCompareList(ListBoxState& state) {
    const bool opens = state.Visible && lstJoinCompare->isHidden();
    if (opens) {
        const QRect cell = dgrJoins->CellRect(dgrJoins->CurrentRow(), compareColumn);
        const QPoint corner = dgrJoins->mapTo(this, cell.bottomLeft());
        const QFontMetrics metrics = lstJoinCompare->fontMetrics();
        QRect place(corner, QSize(std::max(cell.width(), metrics.averageCharWidth() * 8),
                                  metrics.lineSpacing() * (state.Items.ListCount() + 1)));
        if (place.bottom() > rect().bottom()) place.moveBottom(corner.y() - cell.height());
        lstJoinCompare->setGeometry(place);
        lstJoinCompare->raise();
    }
    // What is hidden hands the keyboard to the next control; here it goes back to the cell.
    if (!state.Visible && lstJoinCompare->hasFocus()) dgrJoins->setFocus(Qt::PopupFocusReason);
    ShowList(lstJoinCompare, state);
    if (opens) lstJoinCompare->setFocus(Qt::PopupFocusReason);
}

void JoinTabPage::ShowLock(const ButtonState& lock) {
    ShowControl(cmdlockTables, lock);
    const bool locked = lock.Tag == QLatin1StringView("1");
    if (cmdlockTables->property("Tag").toString() == lock.Tag) return;
    cmdlockTables->setProperty("Tag", lock.Tag);
    cmdlockTables->setAccessibleName(locked ? tr("Unlock Tables") : tr("Lock Tables"));
    SetDesignToolTip(cmdlockTables, cmdlockTables->accessibleName());
    SetFace(cmdlockTables, locked ? QStringLiteral("lock") : QStringLiteral("unlock"));
}

void JoinTabPage::ShowState(FormState& form) {
    ShowLabel(lblJoinTable[0], form.lblJoinTableFrom);
    ShowLabel(lblJoinTable[1], form.lblJoinTableTo);
    ShowLock(form.cmdlockTables);
    ShowControl(cmdAddJoin, form.cmdAddJoin);
    ShowControl(cmdResetJoins, form.cmdResetJoins);
    for (int i = 0; i < 2; ++i) {
        ShowCombo(cmbJoinTables[i], form.cmbJoinTables[i]);
        ShowList(lstJoinFields[i], form.lstJoinFields[i]);
    }
    ShowCombo(cmbJoinType, form.cmbJoinType);
    ShowGrid(dgrJoins, form.dgrJoins);
    dgrJoins->SetColumnButton(compareColumn, HasRows(form.dgrJoins.DataSource));
    for (int column = 0; column < static_cast<int>(std::size(gridColumns)); ++column)
        dgrJoins->SetColumnWidth(column, TwipsToPixels(gridColumns[column]));
    ShowCompareList(form.lstJoinCompare);
}

}  // namespace zephrin
