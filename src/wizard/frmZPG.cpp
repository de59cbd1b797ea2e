#include "wizard/frmZPG.h"

#include "flow/Shell.h"
#include "savedquery/OpenQuery.h"
#include "savedquery/SaveQuery.h"
#include "resources/Icons.h"
#include "wizard/Build.h"
#include "wizard/BuildTabPage.h"
#include "wizard/FieldTabPage.h"
#include "wizard/Hourglass.h"
#include "wizard/JoinTabPage.h"
#include "wizard/Look.h"
#include "wizard/ResultsTabPage.h"
#include "wizard/ShowControl.h"
#include "wizard/ShowingPrompts.h"
#include "wizard/TableTabPage.h"
#include "wizard/WizardDialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace zephrin {

/// What the form keeps. It is the host of its pages, too: their handlers run through it.
class frmZPG::Private : public WizardHost {
 public:
    Private(frmZPG* form, std::shared_ptr<ZPGGlobalDeclarations> run, const QFont& font);
    ~Private() override;

    ZPGGlobalDeclarations& State() override { return *state; }
    void Run(const Operation& operation) override;
    void RunCommitted(const Operation& operation) override;

    void BuildWidgets();
    QWidget* MakeFoot();
    void MakeShortcuts();
    void NameForScreenReaders();
    void ShowState();
    void ShowAtOnce();
    void FocusFirstControl();
    void ShowTabs();
    void TakeFocus();
    void TabChosen(int index);
    void OpenQuery();
    bool AskBeforeClosing();
    /// Unloads once; the text is that of a failed load.
    QString Unload();

    frmZPG* q;
    std::shared_ptr<ZPGGlobalDeclarations> state;
    /// What the widgets show; kept until they show another one, for their models are in it.
    std::shared_ptr<FormState> form;
    QFont labelFont;
    Hourglass pointer;
    bool loaded = false;
    bool showing = false;
    bool deleteWanted = false;
    QEventLoop* modalLoop = nullptr;
    /// Handlers on the stack. Held by each of them as well: it tells whether the form is still there.
    struct Life {
        bool alive = true;
        int handlers = 0;
    };
    std::shared_ptr<Life> life = std::make_shared<Life>();

    QTabWidget* TabZPG = nullptr;
    std::array<WizardPage*, WizardTabCount> pages{};
    QPushButton* cmdSaveQuery = nullptr;
    QPushButton* cmdDeleteQuery = nullptr;
    QPushButton* cmdOpenQuery = nullptr;
    QPushButton* cmdExit = nullptr;
    QStatusBar* stbZPB = nullptr;
    QLabel* statusPanel = nullptr;

    /// Counts a handler while it runs, and deletes a form that was waiting for the last one.
    class Handler {
     public:
        explicit Handler(Private* owner) : d(owner), life(owner->life) { ++life->handlers; }
        ~Handler() {
            if (--life->handlers == 0 && life->alive && d->deleteWanted) d->q->deleteLater();
        }
        bool FormIsAlive() const { return life->alive; }
        bool FormIsThere() const { return life->alive && d->loaded; }

     private:
        Private* d;
        std::shared_ptr<Life> life;
    };
};

frmZPG::Private::Private(frmZPG* owner, std::shared_ptr<ZPGGlobalDeclarations> run, const QFont& font)
    : q(owner), state(std::move(run)), labelFont(font) {}

frmZPG::Private::~Private() {
    life->alive = false;
}

// --- Handlers ---

void frmZPG::Private::Run(const Operation& operation) {
    if (!loaded || showing) return;
    const auto run = state;
    const Handler handler(this);
    operation(*run);
    if (handler.FormIsThere()) ShowState();
}

void frmZPG::Private::RunCommitted(const Operation& operation) {
    if (!loaded || showing) return;
    const Handler handler(this);
    for (WizardPage* page : pages)
        if (!page->CommitEdits()) return;
    if (handler.FormIsThere()) Run(operation);
}

void frmZPG::Private::TabChosen(int index) {
    if (index == state->Form->TabZPG.Tab) return;
    const Handler handler(this);
    RunCommitted([index](ZPGGlobalDeclarations& run) { SelectTab(run, static_cast<WizardTab>(index)); });
    // An editor that kept its value keeps its tab.
    if (handler.FormIsThere() && !showing) ShowState();
}

// --- The widgets ---

void frmZPG::Private::BuildWidgets() {
    resources::InitResources();
    TabZPG = new QTabWidget;
    TabZPG->setObjectName(QStringLiteral("TabZPG"));
    pages = {new TableTabPage(*this), new JoinTabPage(*this), new FieldTabPage(*this),
             new BuildTabPage(*this), new ResultsTabPage(*this)};
    const QString captions[] = {QStringLiteral("Select Tables"), QStringLiteral("Build Joins"),
                                QStringLiteral("Select Fields"), QStringLiteral("Build Query"),
                                QStringLiteral("Query Results")};
    for (int i = 0; i < WizardTabCount; ++i) TabZPG->addTab(pages[i], captions[i]);

    stbZPB = new QStatusBar;
    stbZPB->setObjectName(QStringLiteral("stbZPB"));
    statusPanel = new QLabel;
    statusPanel->setObjectName(QStringLiteral("stbZPB_1"));
    statusPanel->setTextFormat(Qt::PlainText);
    // A long text must not widen the form.
    statusPanel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    stbZPB->addWidget(statusPanel, 1);

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

QWidget* frmZPG::Private::MakeFoot() {
    auto* foot = new QWidget;
    cmdOpenQuery = MakeIconButton(QStringLiteral("cmdOpenQuery"), QStringLiteral("open"), tr("Open Saved Query"));
    cmdSaveQuery = MakeButton(QStringLiteral("cmdSaveQuery"), 162, QStringLiteral("save"));
    cmdDeleteQuery = MakeButton(QStringLiteral("cmdDeleteQuery"), 163, QStringLiteral("delete"));
    cmdExit = MakeButton(QStringLiteral("cmdExit"), 225, QStringLiteral("close"));
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* button : {cmdOpenQuery, cmdSaveQuery, cmdDeleteQuery}) layout->addWidget(button);
    layout->addStretch();
    layout->addWidget(cmdExit);
    connect(cmdSaveQuery, &QPushButton::clicked, q, [this] {
        RunCommitted([](ZPGGlobalDeclarations& run) {
            QueryFiles disk;
            SaveQuery(run, disk);
        });
    });
    connect(cmdDeleteQuery, &QPushButton::clicked, q, [this] {
        Run([](ZPGGlobalDeclarations& run) {
            QueryFiles disk;
            DeleteQuery(run, disk);
        });
    });
    connect(cmdOpenQuery, &QPushButton::clicked, q, [this] { OpenQuery(); });
    return foot;
}

void frmZPG::Private::MakeShortcuts() {
    for (int i = 0; i < WizardTabCount; ++i) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), q);
        connect(shortcut, &QShortcut::activated, TabZPG, [this, i] {
            if (TabZPG->isTabVisible(i) && TabZPG->isTabEnabled(i)) TabZPG->setCurrentIndex(i);
        });
    }
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
        statusPanel->setText(form->StatusText);
        pointer.Show(form->Pointer);
    }
    TakeFocus();
    if (std::exchange(form->Minimised, false)) q->showMinimized();
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

// --- Closing ---

void frmZPG::Private::OpenQuery() {
    const Handler handler(this);
    OpenOutcome outcome = OpenOutcome::Cancelled;
    Run([&outcome](ZPGGlobalDeclarations& run) {
        QueryFiles disk;
        outcome = OpenFromButton(run, disk);
    });
    // Where no query can be read the wizard closes, as it does at the start.
    if (outcome == OpenOutcome::Failed && handler.FormIsThere()) q->close();
}

bool frmZPG::Private::AskBeforeClosing() {
    const auto run = state;
    const Handler handler(this);
    // Nobody is asked any more, so a value that its cell refuses can't hold the form open either.
    if (!run->gClosingSilently)
        for (WizardPage* page : pages)
            if (!page->CommitEdits()) return false;
    const CloseAnswer answer = QueryUnload(*run);
    if (!handler.FormIsThere() || answer == CloseAnswer::Stay) return false;
    if (answer == CloseAnswer::Close) return true;
    // A file dialog that is cancelled closes all the same; a write that failed would take the query with it.
    QueryFiles disk;
    const SaveOutcome outcome = SaveQuery(*run, disk);
    if (!handler.FormIsThere()) return false;
    if (outcome == SaveOutcome::Failed) ShowState();
    return outcome != SaveOutcome::Failed;
}

QString frmZPG::Private::Unload() {
    loaded = false;
    const auto run = state;
    const QString error = UnloadForm(*run);
    run->ShowForm = nullptr;
    if (const auto wrapped = std::dynamic_pointer_cast<ShowingPrompts>(run->UserPrompts))
        run->UserPrompts = wrapped->HostPrompts();
    pointer.Show(MousePointer::Default);
    // A dialog that is still open ends like its Cancel.
    const auto dialogs = q->findChildren<WizardDialog*>();
    for (WizardDialog* dialog : dialogs) dialog->reject();
    if (modalLoop) modalLoop->quit();
    return error;
}

// --- The form ---

frmZPG::frmZPG(std::shared_ptr<ZPGGlobalDeclarations> state, const QIcon& icon, const QFont& labelFont)
    : d(std::make_unique<Private>(this, std::move(state), labelFont)) {
    setObjectName(QStringLiteral("frmZPG"));
    setWindowTitle(d->state->Options.gRunTimeCaption);
    if (!icon.isNull()) setWindowIcon(icon);
    d->BuildWidgets();
    ApplyCaptions(this, *d->state);
    ApplyLook(this, d->state->Options, labelFont);
    d->NameForScreenReaders();
    resize(sizeHint().expandedTo(QSize(940, 640)));
}

frmZPG::~frmZPG() {
    // Deleted by somebody who did not unload it: release what the showing holds, and let nobody call back.
    if (d->loaded) d->Unload();
}

frmZPG* frmZPG::OpenForm() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (auto* form = qobject_cast<frmZPG*>(window); form && form->d->loaded) return form;
    return nullptr;
}

bool frmZPG::Load() {
    const auto run = d->state;
    const Private::Handler handler(d.get());
    d->loaded = true;
    run->ShowForm = [this] { d->ShowAtOnce(); };
    run->UserPrompts =
        std::make_shared<ShowingPrompts>(run->UserPrompts, [run = run.get()] { ShowForAnswer(*run); });
    if (LoadForm(*run)) {
        if (!handler.FormIsThere()) return false;
        d->FocusFirstControl();
        d->ShowState();
        return true;
    }
    if (handler.FormIsThere()) {
        run->gClosingSilently = true;
        const QString loadError = d->Unload();
        Q_EMIT Unloaded(loadError);
    }
    return false;
}

void frmZPG::ShowModal() {
    const Private::Handler handler(d.get());
    setWindowModality(Qt::ApplicationModal);
    show();
    QEventLoop loop;
    d->modalLoop = &loop;
    loop.exec();
    if (handler.FormIsAlive()) d->modalLoop = nullptr;
}

void frmZPG::UnloadSilently() {
    if (!d->loaded) return;
    d->state->gClosingSilently = true;
    d->Unload();
    hide();
}

void frmZPG::DeleteWhenIdle() {
    if (d->life->handlers == 0) {
        delete this;
    } else {
        d->deleteWanted = true;
    }
}

void frmZPG::closeEvent(QCloseEvent* event) {
    if (!d->loaded) return;
    const Private::Handler handler(d.get());
    if (!d->AskBeforeClosing()) {
        event->ignore();
        return;
    }
    const QString loadError = d->Unload();
    event->accept();
    // What the host does about it happens without the form in front.
    hide();
    Q_EMIT Unloaded(loadError);
}

void frmZPG::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        d->cmdExit->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void frmZPG::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->Run([](ZPGGlobalDeclarations& state) {
        if (!HasRows(state.rsQueryResult)) state.Form->cmdExcel.Enabled = false;
    });
}

void frmZPG::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // The palette of the form is the application's own; the colours of labels are made from it.
    if (event->type() == QEvent::ApplicationPaletteChange && d) {
        ApplyLook(this, d->state->Options, d->labelFont);
        d->ShowState();
    }
}

}  // namespace zephrin
