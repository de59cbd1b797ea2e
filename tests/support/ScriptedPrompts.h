#pragma once

#include <zephrin/Prompts.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace zephrin::test {

/// Answers every box and dialog from a script and remembers what was asked. A box that nobody scripted fails the test
/// and answers Cancel.
class ScriptedPrompts : public Prompts {
 public:
    struct Box {
        QString Text;
        int Style = 0;
        QString Title;
    };
    /// Answers for the next boxes, first in first out.
    QList<BoxAnswer> Answers;
    /// Paths for the next file dialogs; an empty one is Cancel.
    QStringList Paths;
    /// Strings for the next connection prompts and input boxes.
    QStringList Texts;
    /// Where exports go, and which files were handed to the desktop.
    QString Folder;
    QStringList Opened;
    /// Runs while a box is open, before it is answered.
    std::function<void(const Box&)> WhileOpen;

    QList<Box> Boxes;
    QList<FileChoice> Choices;
    int Abouts = 0;

    BoxAnswer MsgBox(const QString& text, int style, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title, const QString& text) override;
    QString ShowOpen(const FileChoice& choice) override;
    QString ShowSave(const FileChoice& choice) override;
    QString PromptNewConnection(const QString& present) override;
    QString ExportFolder() override { return Folder; }
    bool OpenDocument(const QString& path) override;
    void ShowAbout(const QString& name, const QString& version) override;

 private:
    QString NextPath(const FileChoice& choice);
};

}  // namespace zephrin::test
