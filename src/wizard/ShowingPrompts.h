#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <zephrin/Prompts.h>

#include <functional>
#include <memory>

namespace zephrin {

/// Shows the state on the form for a user who is about to be asked. He is not kept waiting: the hourglass of
/// an operation stays away until the operation goes on.
void ShowForAnswer(const ZPGGlobalDeclarations& state);

/// Brings the form up to date before each box that an operation opens, and passes the question on to the
/// prompts of the host: the user answers in front of what he asked for.
class ShowingPrompts : public Prompts {
 public:
    ShowingPrompts(std::shared_ptr<Prompts> hostPrompts, std::function<void()> showForm);

    const std::shared_ptr<Prompts>& HostPrompts() const { return prompts; }

    BoxAnswer MsgBox(const QString& text, int style, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title, const QString& text) override;
    QString ShowOpen(const FileChoice& choice) override;
    QString ShowSave(const FileChoice& choice) override;
    QString PromptNewConnection(const QString& present) override;
    QString ExportFolder() override;
    bool OpenDocument(const QString& path) override;
    void ShowAbout(const QString& name, const QString& version) override;

 private:
    std::shared_ptr<Prompts> prompts;
    std::function<void()> show;
};

}  // namespace zephrin
