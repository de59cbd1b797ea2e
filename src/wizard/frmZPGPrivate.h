#pragma once

#include "wizard/Hourglass.h"
#include "wizard/WizardPage.h"
#include "wizard/frmZPG.h"

#include <array>
#include <memory>

class QEventLoop;
class QLabel;
class QProgressBar;
class QPushButton;
class QStatusBar;
class QTabWidget;

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
    void MakeStatusBar();
    void MakeShortcuts();
    void NameForScreenReaders();
    void ShowState();
    void ShowAtOnce();
    void FocusFirstControl();
    void ShowTabs();
    /// Shows the work in hand in the status bar, or the status text where there is none.
    void ShowWork();
    void ShowStatus(const QString& text, bool speak);
    void TakeFocus();
    void TabChosen(int index);
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
    QProgressBar* prgWork = nullptr;
    QPushButton* cmdStop = nullptr;
    /// What of the work in hand a screen reader has read out last.
    QString spokenWork;
    int spokenTens = 0;

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

}  // namespace zephrin
