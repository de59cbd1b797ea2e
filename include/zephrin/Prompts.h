#pragma once

#include <zephrin/Export.h>

#include <QString>

namespace zephrin {

/// Style numbers of a message box; a style is a sum of one button set, one icon and one default.
namespace BoxStyle {
inline constexpr int OkOnly = 0;       ///< Buttons: OK
inline constexpr int YesNoCancel = 3;  ///< Buttons: Yes, No and Cancel
inline constexpr int YesNo = 4;        ///< Buttons: Yes and No
inline constexpr int Critical = 16;    ///< Icon of a failure
inline constexpr int Question = 32;    ///< Icon of a question
inline constexpr int Exclamation = 48; ///< Icon of a warning
inline constexpr int Information = 64; ///< Icon of a remark
/// The second button answers Enter instead of the first.
inline constexpr int DefaultSecond = 256;
}  // namespace BoxStyle

/// What was pressed. A box closed by its window button or Escape answers Cancel, or No where it has no Cancel, or Ok.
enum class BoxAnswer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// Everything at which the query builder stops to ask its user. The default (DefaultPrompts) shows Qt's dialogs; a host
/// that has dialogs of its own, or a test that answers by itself, puts another one in its place.
///
/// Every call is modal for the application and returns when the user has answered. Texts are plain, never rich text.
class ZEPHRIN_EXPORT Prompts {
 public:
    virtual ~Prompts();

    /// Shows `text` with the buttons and the icon of `style` (a sum of BoxStyle numbers).
    virtual BoxAnswer MsgBox(const QString& text, int style, const QString& title) = 0;
    /// Asks for one line of text; a null string means that the user cancelled.
    virtual QString InputBox(const QString& prompt, const QString& title, const QString& text) = 0;

    /// What a file dialog is asked with.
    struct FileChoice {
        QString Title;        ///< caption of the dialog
        QString Filter;       ///< e.g. "zpb(*.zpb)|*.zpb": name and pattern pairs, "|" between them
        QString FileName;     ///< what the name box holds at first
        bool MustExist = false;        ///< only a file that is there may be chosen
        bool OverwritePrompt = false;  ///< the dialog asks before it returns a file that is there
    };
    /// The chosen path whole, or empty for Cancel. No suffix is added to what was typed.
    virtual QString ShowOpen(const FileChoice& choice) = 0;
    /// The same for a file to be written.
    virtual QString ShowSave(const FileChoice& choice) = 0;

    /// Asks the user for a connection string; empty for Cancel.
    virtual QString PromptNewConnection(const QString& present) = 0;
    /// The folder that exported workbooks go to; the default is the user's documents folder.
    virtual QString ExportFolder();
    /// Opens a finished file with the desktop's program for it. False when there is none; the user is then told where
    /// the file lies. The default opens nothing.
    virtual bool OpenDocument(const QString& path);
    /// The about box of the product.
    virtual void ShowAbout(const QString& name, const QString& version) = 0;
};

}  // namespace zephrin
