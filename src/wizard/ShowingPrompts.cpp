#include "wizard/ShowingPrompts.h"

#include <utility>

namespace zephrin {

void ShowForAnswer(const ZPGGlobalDeclarations& state) {
    const std::shared_ptr<FormState> form = state.Form;
    const MousePointer pointer = std::exchange(form->Pointer, MousePointer::Default);
    ShowFormNow(state);
    form->Pointer = pointer;
}

// Each call keeps the host's prompts alive by itself: this object may go while the box is open.

ShowingPrompts::ShowingPrompts(std::shared_ptr<Prompts> hostPrompts, std::function<void()> showForm)
    : prompts(std::move(hostPrompts)), show(std::move(showForm)) {}

BoxAnswer ShowingPrompts::MsgBox(const QString& text, int style, const QString& title) {
    const auto asked = prompts;
    show();
    return asked->MsgBox(text, style, title);
}

QString ShowingPrompts::InputBox(const QString& prompt, const QString& title, const QString& text) {
    const auto asked = prompts;
    show();
    return asked->InputBox(prompt, title, text);
}

QString ShowingPrompts::ShowOpen(const FileChoice& choice) {
    const auto asked = prompts;
    show();
    return asked->ShowOpen(choice);
}

QString ShowingPrompts::ShowSave(const FileChoice& choice) {
    const auto asked = prompts;
    show();
    return asked->ShowSave(choice);
}

QString ShowingPrompts::PromptNewConnection(const QString& present) {
    const auto asked = prompts;
    show();
    return asked->PromptNewConnection(present);
}

QString ShowingPrompts::ExportFolder() {
    return prompts->ExportFolder();
}

bool ShowingPrompts::OpenDocument(const QString& path) {
    return prompts->OpenDocument(path);
}

void ShowingPrompts::ShowAbout(const QString& name, const QString& version) {
    const auto asked = prompts;
    show();
    asked->ShowAbout(name, version);
}

}  // namespace zephrin
