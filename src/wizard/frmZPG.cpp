#include "wizard/frmZPG.h"

#include "flow/Shell.h"
#include "savedquery/SaveQuery.h"
#include "wizard/Guarded.h"
#include "wizard/Look.h"
#include "wizard/ShowingPrompts.h"
#include "wizard/WizardDialog.h"
#include "wizard/frmZPGPrivate.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include <utility>

namespace zephrin {

frmZPG::Private::Private(frmZPG* owner, std::shared_ptr<ZPGGlobalDeclarations> run, const QFont& font)
    : q(owner), state(std::move(run)), labelFont(font) {}

frmZPG::Private::~Private() {
    life->alive = false;
}

// --- Handlers ---

void frmZPG::Private::Run(const Operation& operation) {
    if (!loaded || showing || IsBusy(*state)) return;
    const auto run = state;
    const Handler handler(this);
    RunGuarded(*run, [&] { operation(*run); });
    if (handler.FormIsThere()) RunGuarded(*run, [this] { ShowState(); });
}

void frmZPG::Private::RunCommitted(const Operation& operation) {
    if (!loaded || showing || IsBusy(*state)) return;
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

// --- Closing ---

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
    SaveOutcome outcome = SaveOutcome::Failed;
    RunGuarded(*run, [&] { outcome = SaveQuery(*run); });
    if (!handler.FormIsThere()) return false;
    if (outcome == SaveOutcome::Failed) ShowState();
    return outcome != SaveOutcome::Failed;
}

QString frmZPG::Private::Unload() {
    loaded = false;
    const auto run = state;
    const QString error = UnloadForm(*run);
    run->ShowForm = nullptr;
    run->ShowWork = nullptr;
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
    // At 200 % a screen may be smaller than the form likes to be.
    resize(sizeHint().expandedTo(QSize(940, 640)).boundedTo(screen()->availableSize()));
}

frmZPG::~frmZPG() {
    // Deleted by somebody who did not unload it: release what the showing holds, and let nobody call back.
    if (d->loaded) d->Unload();
    // A window that goes takes the focus from its controls, and what they report of it runs on the private
    // part: they go first, while there is somebody to report to.
    hide();
    while (auto* child = findChild<QWidget*>({}, Qt::FindDirectChildrenOnly)) delete child;
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
    run->ShowWork = [this] { d->ShowWork(); };
    run->UserPrompts =
        std::make_shared<ShowingPrompts>(run->UserPrompts, [run = run.get()] { ShowForAnswer(*run); });
    bool isLoaded = false;
    RunGuarded(*run, [&] { isLoaded = LoadForm(*run); });
    if (isLoaded) {
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

void frmZPG::BelongTo(const QWidget* owner) {
    QWindow* const over = owner ? owner->window()->windowHandle() : nullptr;
    winId();  // makes the window of this form, too
    // Nobody belongs to what belongs to him.
    if (over && over != windowHandle() && !windowHandle()->isAncestorOf(over, QWindow::IncludeTransients))
        windowHandle()->setTransientParent(over);
}

void frmZPG::BringForward() {
    if (!isVisible()) return;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
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
    if (IsBusy(*d->state) || !d->AskBeforeClosing()) {
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
