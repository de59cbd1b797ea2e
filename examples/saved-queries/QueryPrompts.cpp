#include "QueryPrompts.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

#include <utility>

using zephrin::BoxAnswer;
namespace BoxStyle = zephrin::BoxStyle;

namespace {

/// The buttons of a style: its lowest three bits.
constexpr int buttonBits = 7;

}  // namespace

QueryPrompts::QueryPrompts(QStatusBar* statusLine, QDir queries)
    : status(statusLine), folder(std::move(queries)) {}

BoxAnswer QueryPrompts::MsgBox(const QString& text, int style, const QString& title) {
    const int buttons = style & buttonBits;
    if (buttons == BoxStyle::OkOnly) {
        if (status) status->showMessage(text.simplified());
        return BoxAnswer::Ok;
    }
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    if (buttons == BoxStyle::YesNoCancel) box.addButton(QMessageBox::Cancel);
    if ((style & BoxStyle::DefaultSecond) != 0) box.setDefaultButton(QMessageBox::No);
    switch (box.exec()) {
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Cancel;
    }
}

QString QueryPrompts::InputBox(const QString& prompt, const QString& title, const QString& text) {
    bool accepted = false;
    const QString answer = QInputDialog::getText(QApplication::activeWindow(), title, prompt,
                                                 QLineEdit::Normal, text, &accepted);
    // Null means Cancel, so an empty answer has to be a text that is not null.
    if (!accepted) return {};
    return answer.isNull() ? QStringLiteral("") : answer;
}

QString QueryPrompts::ShowOpen(const FileChoice& choice) {
    bool accepted = false;
    const QString name =
        QInputDialog::getItem(QApplication::activeWindow(), choice.Title, QObject::tr("Query:"),
                              QueryNames(folder), 0, false, &accepted);
    return accepted && !name.isEmpty() ? QueryFile(folder, name) : QString();
}

QString QueryPrompts::ShowSave(const FileChoice& choice) {
    QString name = InputBox(QObject::tr("Name of the query:"), choice.Title, {}).trimmed();
    // A name is no path.
    name.replace(u'/', u'-');
    return name.isEmpty() ? QString() : QueryFile(folder, name);
}

QString QueryPrompts::PromptNewConnection(const QString&) {
    return {};
}

void QueryPrompts::ShowAbout(const QString& name, const QString& version) {
    if (status) status->showMessage(name + u' ' + version);
}

QStringList QueryNames(const QDir& folder) {
    QStringList names = folder.entryList({QStringLiteral("*.zpb")}, QDir::Files, QDir::Name);
    for (QString& name : names) name.chop(4);
    return names;
}

QString QueryFile(const QDir& folder, const QString& name) {
    return folder.filePath(name + QStringLiteral(".zpb"));
}
