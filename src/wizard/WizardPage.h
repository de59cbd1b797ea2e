#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QWidget>

#include <functional>

class QAbstractButton;

namespace zephrin {

/// What a page sees of the form around it.
class WizardHost {
 public:
    using Operation = std::function<void(ZPGGlobalDeclarations&)>;

    virtual ~WizardHost() = default;
    virtual ZPGGlobalDeclarations& State() = 0;
    /// Runs what a handler calls, then shows the state. Does nothing while the state is being shown, so that
    /// widgets which are set report nothing, while a work is under way, and on a form that is not loaded. The
    /// page may be gone when this returns.
    virtual void Run(const Operation& operation) = 0;
    /// The same, after an open cell editor was taken over; an editor that refuses its value keeps the user
    /// where he is.
    virtual void RunCommitted(const Operation& operation) = 0;
};

/// One tab of the wizard: builds its widgets, shows the state on them, and reports what the user does.
class WizardPage : public QWidget {
 public:
    WizardPage(WizardHost& wizardHost, const QString& name);

    /// Makes every widget of the page agree with the state. May be called at any time, and twice.
    virtual void ShowState(FormState& form) = 0;
    /// Takes over what stands in an open cell editor; false when it was refused.
    virtual bool CommitEdits() { return true; }

 protected:
    WizardHost& Host() const { return host; }
    void OnClick(QAbstractButton* button, WizardHost::Operation operation);
    /// The same for an option button; choosing the one that is chosen is no news.
    void OnChosen(QAbstractButton* option, WizardHost::Operation operation);

 private:
    WizardHost& host;
};

}  // namespace zephrin
