#include "platform/dialogs/DefaultPrompts.h"

#include "platform/dialogs/DataLinkDialog.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QUrl>

#include <utility>

namespace zephrin {

namespace {

constexpr qsizetype longestText = 1500;
constexpr qsizetype mostLines = 25;

QWidget* Parent() {
    QWidget* active = QApplication::activeWindow();
    return active ? active : QApplication::activeModalWidget();
}

/// Runs a dialog made on the heap; false when it was cancelled or went away with its parent.
template <typename Dialog>
bool Run(const QPointer<Dialog>& dialog) {
    dialog->setWindowModality(Qt::ApplicationModal);
    const int result = dialog->exec();
    return dialog && result == QDialog::Accepted;
}

/// Deletes a dialog at the end of a block, unless its parent did so before.
template <typename Dialog>
class Modal {
 public:
    explicit Modal(const QString& name) : dialog(new Dialog(Parent())) { dialog->setObjectName(name); }
    ~Modal() { delete dialog.data(); }
    Q_DISABLE_COPY_MOVE(Modal)

    Dialog* operator->() const { return dialog; }
    const QPointer<Dialog>& Pointer() const { return dialog; }

 private:
    QPointer<Dialog> dialog;
};

QMessageBox::Icon IconOf(int style) {
    switch (style & 0x70) {
        case BoxStyle::Critical:
            return QMessageBox::Critical;
        case BoxStyle::Question:
            return QMessageBox::Question;
        case BoxStyle::Exclamation:
            return QMessageBox::Warning;
        case BoxStyle::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

QList<QMessageBox::StandardButton> ButtonsOf(int style) {
    switch (style & 0x7) {
        case BoxStyle::YesNoCancel:
            return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
        case BoxStyle::YesNo:
            return {QMessageBox::Yes, QMessageBox::No};
        default:
            return {QMessageBox::Ok};
    }
}

BoxAnswer AnswerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        case QMessageBox::Cancel:
            return BoxAnswer::Cancel;
        default:
            return BoxAnswer::Ok;
    }
}

/// A text that would not fit on a screen shows its beginning, and the whole of it as details.
void SetBoxText(QMessageBox& box, QString text) {
    text.replace(QLatin1StringView("\r\n"), QLatin1StringView("\n"));
    const QString lines = text.section(u'\n', 0, mostLines - 1);
    const QString shown = lines.left(longestText);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.setText(shown.size() == text.size() ? shown : shown + QStringLiteral(" \u2026"));
    if (shown.size() != text.size()) box.setDetailedText(text);
}

}  // namespace

DefaultPrompts::DefaultPrompts(ado::ProviderSet offered) : providers(std::move(offered)) {}

BoxAnswer DefaultPrompts::MsgBox(const QString& text, int style, const QString& title) {
    const Modal<QMessageBox> box(QStringLiteral("msgBox"));
    const QList<QMessageBox::StandardButton> buttons = ButtonsOf(style);
    SetBoxText(*box.Pointer(), text);
    box->setWindowTitle(title);
    box->setIcon(IconOf(style));
    for (const QMessageBox::StandardButton button : buttons) box->addButton(button);
    const bool second = (style & BoxStyle::DefaultSecond) != 0 && buttons.size() > 1;
    box->setDefaultButton(buttons.at(second ? 1 : 0));
    // Cancel, No and Ok are the last of their sets.
    box->setEscapeButton(buttons.last());
    Run(box.Pointer());
    return AnswerOf(box.Pointer() ? box->standardButton(box->clickedButton()) : buttons.last());
}

QString DefaultPrompts::InputBox(const QString& prompt, const QString& title, const QString& text) {
    const Modal<QInputDialog> dialog(QStringLiteral("inputBox"));
    dialog->setInputMode(QInputDialog::TextInput);
    dialog->setWindowTitle(title);
    dialog->setTextValue(text);
    // The prompt labels the input line, so that a single "&" would be taken for a mnemonic.
    QString label = prompt;
    label.replace(u'&', QLatin1StringView("&&")).replace(QLatin1StringView("\r\n"), QLatin1StringView("\n"));
    dialog->setLabelText(label);
    for (QLabel* each : dialog->findChildren<QLabel*>()) each->setTextFormat(Qt::PlainText);
    if (!Run(dialog.Pointer())) return {};
    const QString answer = dialog->textValue();
    return answer.isNull() ? QStringLiteral("") : answer;
}

QString DefaultPrompts::ShowOpen(const FileChoice& choice) {
    return ChooseFile(choice, false);
}

QString DefaultPrompts::ShowSave(const FileChoice& choice) {
    return ChooseFile(choice, true);
}

QString DefaultPrompts::ChooseFile(const FileChoice& choice, bool save) {
    const Modal<QFileDialog> dialog(QStringLiteral("fileDialog"));
    dialog->setWindowTitle(choice.Title);
    dialog->setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(choice.MustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite, !choice.OverwritePrompt);
    dialog->setDefaultSuffix(QString());
    dialog->setNameFilters(NameFilters(choice.Filter));
    if (!folder.isEmpty()) dialog->setDirectory(folder);
    if (!choice.FileName.isEmpty()) dialog->selectFile(choice.FileName);
    if (!Run(dialog.Pointer())) return {};
    const QString path = dialog->selectedFiles().value(0);
    folder = QFileInfo(path).absolutePath();
    return QDir::toNativeSeparators(path);
}

QString DefaultPrompts::PromptNewConnection(const QString& present) {
    const QPointer<DataLinkDialog> dialog(new DataLinkDialog(present, providers, Parent()));
    const bool accepted = Run(dialog);
    const QString chosen = accepted ? dialog->ConnectionString() : QString();
    delete dialog.data();
    return chosen;
}

bool DefaultPrompts::OpenDocument(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void DefaultPrompts::ShowAbout(const QString& name, const QString& version) {
    const Modal<QMessageBox> box(QStringLiteral("aboutBox"));
    box->setWindowTitle(name);
    box->setIcon(QMessageBox::Information);
    SetBoxText(*box.Pointer(), name + u'\n' + version);
    box->addButton(QMessageBox::Ok);
    Run(box.Pointer());
}

QStringList NameFilters(const QString& pairs) {
    static const QRegularExpression shownPattern(QStringLiteral("\\s*\\([^()]*\\)\\s*\\z"));
    const QStringList parts = pairs.split(u'|');
    QStringList filters;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        QStringList patterns = parts.at(at + 1).split(u';', Qt::SkipEmptyParts);
        // "*.*" means every file, also one without a dot.
        for (QString& pattern : patterns)
            pattern = pattern.trimmed() == u"*.*" ? QStringLiteral("*") : pattern.trimmed();
        filters << QString(parts.at(at)).remove(shownPattern) +
                       QStringLiteral(" (%1)").arg(patterns.join(u' '));
    }
    return filters;
}

}  // namespace zephrin
