#pragma once

#include <zephrin/Zephrin.h>

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerPropertySheetExtension>
#include <QDesignerTaskMenuExtension>
#include <QString>

#include <memory>

namespace zephrin::test {

/// Qt Designer without its main window: its core with property editor, widget box and object inspector, the
/// plugin found in its folder, and one form.
class Editor {
 public:
    Editor();
    ~Editor();

    /// Shows a form with one control, which has these properties besides its place.
    void Open(const QString& properties = {});
    /// The control is the first of the form, then.
    void OpenContents(const QString& contents);
    /// The properties that the form stores for the control, each on a line: "name=text of its element". A
    /// colour is "r,g,b". The place is left out.
    QString Stored() const;
    /// Saves the form and opens what was saved.
    void Reopen();
    void SetByEditor(const char* property, const QVariant& value);

    QDesignerPropertySheetExtension& Sheet() const;
    int IndexOf(const char* property) const { return Sheet().indexOf(QString::fromLatin1(property)); }
    QDesignerTaskMenuExtension& TaskMenu() const;
    QUndoStack& History() const { return *form->commandHistory(); }

    std::unique_ptr<QDesignerFormEditorInterface> core;
    QDesignerFormWindowInterface* form = nullptr;
    Zephrin* control = nullptr;
};

/// A form of one control that is called "zephrin".
QString FormText(const QString& properties);

}  // namespace zephrin::test
