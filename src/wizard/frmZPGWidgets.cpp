// What the form is made of, and how it shows the state.

#include "flow/Shell.h"
#include "platform/dialogs/LiveWait.h"
#include "resources/Icons.h"
#include "savedquery/OpenQuery.h"
#include "savedquery/SaveQuery.h"
#include "wizard/Build.h"
#include "wizard/BuildTabPage.h"
#include "wizard/FieldTabPage.h"
#include "wizard/JoinTabPage.h"
#include "wizard/ResultsTabPage.h"
#include "wizard/ShowControl.h"
#include "wizard/TableTabPage.h"
#include "wizard/TipKey.h"
#include "wizard/WizardDialog.h"
#include "wizard/frmZPGPrivate.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zephrin {

void frmZPG::Private::BuildWidgets() {
    resources::InitResources();
    TabZPG = new QTabWidget;
    TabZPG->setObjectName(QStringLiteral("TabZPG"));
    TabZPG->setUsesScrollButtons(false);
    pages = {new TableTabPage(*this), new JoinTabPage(*this), new FieldTabPage(*this),
             new BuildTabPage(*this), new ResultsTabPage(*this)};
    const QString captions[] = {QStringLiteral("Select Tables"), QStringLiteral("Build Joins"),
                                QStringLiteral("Select Fields"), QStringLiteral("Build Query"),
                                QStringLiteral("Query Results")};
    for (int i = 0; i < WizardTabCount; ++i) TabZPG->addTab(pages[i], captions[i]);

    MakeStatusBar();

    auto* layout = new QVBoxLayout(q);
    layout->addWidget(TabZPG, 1);
    layout->addWidget(MakeFoot());
    layout->addWidget(stbZPB);
    connect(TabZPG, &QTabWidget::currentChanged, q, [this](int index) {
        if (loaded && !showing) TabChosen(index);
    });
    connect(cmdExit, &QPushButton::clicked, q, &QWidget::close);
    MakeShortcuts();
}

void frmZPG::Private::MakeStatusBar() {
    stbZPB = new QStatusBar;
    stbZPB->setObjectName(QStringLiteral("stbZPB"));
    statusPanel = new QLabel;
    statusPanel->setObjectName(QStringLiteral("stbZPB_1"));
    statusPanel->setTextFormat(Qt::PlainText);
    // A long text must not widen the form.
    statusPanel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    prgWork = new QProgressBar;
    prgWork->setObjectName(QStringLiteral("prgWork"));
    prgWork->setAccessibleName(tr("Progress"));
    prgWork->setRange(0, 1000);
    prgWork->setTextVisible(false);
    cmdStop = new QPushButton(tr("Stop"));
    cmdStop->setObjectName(QStringLiteral("cmdStop"));
    cmdStop->setToolTip(tr("Stop what is waited for (Esc)"));
    cmdStop->setProperty(LiveWait::StopsProperty, true);
    // No key reaches it but Escape, which does the same; and the focus stays where the user works.
    cmdStop->setFocusPolicy(Qt::NoFocus);
    stbZPB->addWidget(statusPanel, 1);
    for (QWidget* shownWhileWorking : {static_cast<QWidget*>(prgWork), static_cast<QWidget*>(cmdStop)}) {
        // Nothing moves when they come and go.
        QSizePolicy keeping = shownWhileWorking->sizePolicy();
        keeping.setRetainSizeWhenHidden(true);
        shownWhileWorking->setSizePolicy(keeping);
        shownWhileWorking->hide();
        stbZPB->addPermanentWidget(shownWhileWorking);
        shownWhileWorking->hide();
    }
    prgWork->setMaximumHeight(statusPanel->sizeHint().height());
    prgWork->setMaximumWidth(prgWork->fontMetrics().averageCharWidth() * 24);
    connect(cmdStop, &QPushButton::clicked, q, [this] { StopWork(*state); });
}

QWidget* frmZPG::Private::MakeFoot() {
    auto* foot = new QWidget;
    cmdOpenQuery =
        MakeIconButton(QStringLiteral("cmdOpenQuery"), QStringLiteral("open"), tr("Open Saved Query"));
    cmdSaveQuery = MakeButton(QStringLiteral("cmdSaveQuery"), 162, QStringLiteral("save"));
    cmdDeleteQuery = MakeButton(QStringLiteral("cmdDeleteQuery"), 163, QStringLiteral("delete"));
    cmdExit = MakeButton(QStringLiteral("cmdExit"), 225, QStringLiteral("close"));
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* button : {cmdOpenQuery, cmdSaveQuery, cmdDeleteQuery}) layout->addWidget(button);
    layout->addStretch();
    layout->addWidget(cmdExit);
    connect(cmdSaveQuery, &QPushButton::clicked, q,
            [this] { RunCommitted([](ZPGGlobalDeclarations& run) { SaveQuery(run); }); });
    connect(cmdDeleteQuery, &QPushButton::clicked, q,
            [this] { Run([](ZPGGlobalDeclarations& run) { DeleteQuery(run); }); });
    connect(cmdOpenQuery, &QPushButton::clicked, q,
            [this] { RunCommitted([](ZPGGlobalDeclarations& run) { OpenFromButton(run); }); });
    return foot;
}

void frmZPG::Private::MakeShortcuts() {
    for (int i = 0; i < WizardTabCount; ++i) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), q);
        connect(shortcut, &QShortcut::activated, TabZPG, [this, i] {
            if (TabZPG->isTabVisible(i) && TabZPG->isTabEnabled(i)) TabZPG->setCurrentIndex(i);
        });
    }
    for (auto [standard, button] :
         {std::pair(QKeySequence::Open, cmdOpenQuery), {QKeySequence::Save, cmdSaveQuery}}) {
        const QKeySequence key(standard);
        connect(new QShortcut(key, q), &QShortcut::activated, button, &QPushButton::click);
        const QString name = button->accessibleName();
        const QString tip = key.toString(QKeySequence::NativeText);
        SetDesignToolTip(button, name.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(name, tip));
    }
    AddTipKey(q);
}

void frmZPG::Private::NameForScreenReaders() {
    NameByLabels(q);
    TabZPG->setAccessibleName(q->windowTitle());
    TabZPG->tabBar()->setAccessibleName(tr("Steps of the query"));
}

// --- Showing the state ---

void frmZPG::Private::ShowState() {
    if (!loaded) return;
    const auto earlier = std::exchange(form, state->Form);
    {
        const QScopedValueRollback guard(showing, true);
        ShowTabs();
        for (WizardPage* page : pages) page->ShowState(*form);
        ShowControl(cmdOpenQuery, form->cmdOpenQuery);
        ShowControl(cmdSaveQuery, form->cmdSaveQuery);
        ShowControl(cmdDeleteQuery, form->cmdDeleteQuery);
        ShowWork();
        pointer.Show(form->Pointer);
    }
    TakeFocus();
    if (std::exchange(form->Minimised, false)) q->showMinimized();
}

void frmZPG::Private::ShowWork() {
    if (!loaded) return;
    const WorkInHand& work = state->WorkNow;
    const WorkProgress& progress = work.Progress;
    cmdStop->setVisible(work.Felt);
    cmdStop->setEnabled(!work.StopWanted);
    prgWork->setVisible(work.Felt && progress.All > 0);
    if (progress.All > 0)
        prgWork->setValue(static_cast<int>(std::min<qint64>(progress.Done * 1000 / progress.All, 1000)));
    if (!work.Felt || progress.Seconds < 1) {
        // The end of what was read out isn't worth hearing the same words again.
        const QString& text = state->Form->StatusText;
        return ShowStatus(text, text != std::exchange(spokenWork, QString()));
    }
    // Read out when it begins, and then from time to time.
    const int tens = progress.Seconds / 10;
    const bool speak = progress.What != std::exchange(spokenWork, progress.What) || tens != spokenTens;
    spokenTens = tens;
    ShowStatus(ProgressText(progress), speak);
}

/// A text that is longer than the form is wide is there as a tip. Who doesn't see it hears it.
void frmZPG::Private::ShowStatus(const QString& text, bool speak) {
    if (statusPanel->text() == text) return;
    statusPanel->setText(text);
    statusPanel->setToolTip(PlainToolTip(text));
    if (!speak) return;
    QAccessibleEvent alert(statusPanel, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

/// Where a user would begin on the page that is shown first.
void frmZPG::Private::FocusFirstControl() {
    QWidget* page = TabZPG->currentWidget();
    for (QWidget* widget = page->nextInFocusChain(); page->isAncestorOf(widget);
         widget = widget->nextInFocusChain()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isEnabled()) continue;
        widget->setFocus(Qt::OtherFocusReason);
        return;
    }
}

/// In the middle of an operation: whoever asks is about to keep the event loop waiting.
void frmZPG::Private::ShowAtOnce() {
    ShowState();
    if (q->isVisible() && pointer.IsHourglass()) q->repaint();
}

void frmZPG::Private::ShowTabs() {
    const TabState& tabs = form->TabZPG;
    const QSignalBlocker blocker(TabZPG);
    for (int i = 0; i < WizardTabCount; ++i) {
        if (TabZPG->isTabVisible(i) != tabs.TabVisible[i]) TabZPG->setTabVisible(i, tabs.TabVisible[i]);
        // The toolkit's keys pass over disabled tabs only, and would lead to a hidden one.
        const bool reachable = tabs.TabEnabled[i] && tabs.TabVisible[i];
        if (TabZPG->isTabEnabled(i) != reachable) TabZPG->setTabEnabled(i, reachable);
    }
    if (TabZPG->currentIndex() != tabs.Tab) TabZPG->setCurrentIndex(tabs.Tab);
}

void frmZPG::Private::TakeFocus() {
    const QString name = std::exchange(form->FocusRequest, QString());
    if (name.isEmpty()) return;
    auto* widget = q->findChild<QWidget*>(name);
    if (widget && widget->isVisible() && widget->isEnabled()) widget->setFocus(Qt::OtherFocusReason);
}

}  // namespace zephrin
