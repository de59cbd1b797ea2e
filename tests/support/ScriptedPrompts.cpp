#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin::test {

BoxAnswer ScriptedPrompts::MsgBox(const QString& text, int style, const QString& title) {
    Boxes.append({text, style, title});
    if (WhileOpen) WhileOpen(Boxes.last());
    // A box with nothing but OK needs no script.
    if ((style & 7) == BoxStyle::OkOnly) return BoxAnswer::Ok;
    if (Answers.isEmpty()) {
        ADD_FAILURE() << "nobody answers the box: " << qPrintable(text);
        return BoxAnswer::Cancel;
    }
    return Answers.takeFirst();
}

QString ScriptedPrompts::InputBox(const QString&, const QString&, const QString&) {
    return Texts.isEmpty() ? QString() : Texts.takeFirst();
}

QString ScriptedPrompts::NextPath(const FileChoice& choice) {
    Choices.append(choice);
    return Paths.isEmpty() ? QString() : Paths.takeFirst();
}

QString ScriptedPrompts::ShowOpen(const FileChoice& choice) { return NextPath(choice); }
QString ScriptedPrompts::ShowSave(const FileChoice& choice) { return NextPath(choice); }

QString ScriptedPrompts::PromptNewConnection(const QString&) {
    return Texts.isEmpty() ? QString() : Texts.takeFirst();
}

bool ScriptedPrompts::OpenDocument(const QString& path) {
    Opened << path;
    return true;
}

void ScriptedPrompts::ShowAbout(const QString&, const QString&) { ++Abouts; }

}  // namespace zephrin::test
