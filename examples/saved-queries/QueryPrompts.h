#pragma once

#include <zephrin/Prompts.h>

#include <QDir>
#include <QPointer>
#include <QStatusBar>

/// The dialogs of this host. What only tells something goes to the status line and stops nobody; a question
/// is asked in a box; a file is a name in the folder of queries.
class QueryPrompts : public zephrin::Prompts {
 public:
    /// The control may ask a last time while the window goes away, so the status line is watched.
    QueryPrompts(QStatusBar* statusLine, QDir queries);

    zephrin::BoxAnswer MsgBox(const QString& text, int style, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title, const QString& text) override;
    QString ShowOpen(const FileChoice& choice) override;
    QString ShowSave(const FileChoice& choice) override;
    /// This host has one connection and lets nobody change it.
    QString PromptNewConnection(const QString& present) override;
    void ShowAbout(const QString& name, const QString& version) override;

 private:
    QPointer<QStatusBar> status;
    QDir folder;
};

/// The names of the queries in a folder, and the file of a name.
QStringList QueryNames(const QDir& folder);
QString QueryFile(const QDir& folder, const QString& name);
