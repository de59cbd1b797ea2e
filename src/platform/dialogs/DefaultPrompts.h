#pragma once

#include "platform/ado/Provider.h"

#include <zephrin/Prompts.h>

class QWidget;

namespace zephrin {

/// Asks with Qt's own dialogs. They belong to the active window, are modal for the application, and answer as
/// cancelled when that window goes while they are open.
///
/// Their object names are "msgBox", "inputBox", "fileDialog" and "aboutBox".
class DefaultPrompts : public Prompts {
 public:
    /// `providers` is what the connection prompt offers.
    explicit DefaultPrompts(ado::ProviderSet providers);

    BoxAnswer MsgBox(const QString& text, int style, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title, const QString& text) override;
    QString ShowOpen(const FileChoice& choice) override;
    QString ShowSave(const FileChoice& choice) override;
    QString PromptNewConnection(const QString& present) override;
    bool OpenDocument(const QString& path) override;
    void ShowAbout(const QString& name, const QString& version) override;

 private:
    QString ChooseFile(const FileChoice& choice, bool save);

    ado::ProviderSet providers;
    /// Where the last file was chosen.
    QString folder;
};

/// The filters of a file dialog in Qt's form, made of name and pattern pairs with "|" between them.
QStringList NameFilters(const QString& pairs);

}  // namespace zephrin
