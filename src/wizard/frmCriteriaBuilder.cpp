#include "wizard/frmCriteriaBuilder.h"

#include "flow/CriteriaCell.h"
#include "platform/controls/Bidi.h"
#include "platform/controls/ColouredText.h"
#include "platform/controls/DocumentText.h"
#include "wizard/Build.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTextCursor>
#include <QVBoxLayout>

namespace zephrin {

namespace {

struct Key {
    const char16_t* Name;
    const char16_t* Caption;
    int Row, Column;
};

constexpr Key keys[] = {
    {u"cmd7", u"7", 0, 0},
    {u"cmd8", u"8", 0, 1},
    {u"cmd9", u"9", 0, 2},
    {u"cmd4", u"4", 1, 0},
    {u"cmd5", u"5", 1, 1},
    {u"cmd6", u"6", 1, 2},
    {u"cmd1", u"1", 2, 0},
    {u"cmd2", u"2", 2, 1},
    {u"cmd3", u"3", 2, 2},
    {u"cmd0", u"0", 3, 0},
    {u"cmdPoint", u".", 3, 1},
    {u"cmdApos", u"'", 3, 2},
    {u"cmdEquals", u"=", 0, 4},
    {u"cmdNotEqual", u"<>", 1, 4},
    {u"cmdGreaterThan", u">", 0, 5},
    {u"cmdLessThan", u"<", 1, 5},
    {u"cmdGreaterThanorEqual", u">=", 2, 4},
    {u"cmdLessThanorEqual", u"<=", 2, 5},
    {u"cmdWildCard1", u"%", 0, 6},
    {u"cmdWildCard2", u"*", 1, 6},
    {u"cmdWildCard3", u"?", 2, 6},
    {u"cmdLike", u"LIKE", 3, 4},
    {u"cmdAnd", u"AND", 3, 5},
    {u"cmdBetween", u"BETWEEN", 3, 6},
};

/// The words are kept apart from what stands before them; no blank follows.
QString Inserted(const QString& caption) {
    return caption.front().isLetter() ? u' ' + caption : caption;
}

}  // namespace

frmCriteriaBuilder::frmCriteriaBuilder(ZPGGlobalDeclarations& run, const QString& cell, QWidget* over)
    : WizardDialog(run, QStringLiteral("frmCriteriaBuilder"), over),
      txtCriteria(new controls::ColouredText),
      cellText(cell) {
    setWindowTitle(QStringLiteral(" Build Field Value Criteria"));
    txtCriteria->setObjectName(QStringLiteral("txtCriteria"));
    txtCriteria->setAccessibleName(tr("Criteria"));
    txtCriteria->setTabChangesFocus(true);
    txtCriteria->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtCriteria, 1);
    layout->addWidget(MakeKeys());
    layout->addWidget(MakeFoot());
    FinishControls();
    txtCriteria->SetText(run.CurrentCellText);
    txtCriteria->moveCursor(QTextCursor::End);
    txtCriteria->setFocus();
}

QWidget* frmCriteriaBuilder::MakeKeys() {
    auto* pad = new QWidget;
    // Digits stand the same way everywhere.
    pad->setLayoutDirection(Qt::LeftToRight);
    auto* grid = new QGridLayout(pad);
    grid->setContentsMargins(0, 0, 0, 0);
    // The operators stand a little apart from the digits.
    grid->setColumnMinimumWidth(3, fontMetrics().averageCharWidth());
    for (const Key& key : keys) {
        const QString caption = QString::fromUtf16(key.Caption);
        grid->addWidget(MakeKey(QString::fromUtf16(key.Name), caption, Inserted(caption)), key.Row,
                        key.Column);
    }
    return pad;
}

QPushButton* frmCriteriaBuilder::MakeKey(const QString& name, const QString& caption,
                                         const QString& inserted) {
    QPushButton* key = MakeButton(name, 0);
    key->setText(QGuiApplication::isRightToLeft() ? controls::Isolated(caption) : caption);
    key->setAccessibleName(caption);
    // Enter is OK wherever the keyboard is; Space presses a key.
    key->setAutoDefault(false);
    connect(key, &QPushButton::clicked, this, [this, inserted] { Insert(inserted); });
    return key;
}

QWidget* frmCriteriaBuilder::MakeFoot() {
    auto* foot = new QWidget;
    QPushButton* cmdDelete = MakeButton(QStringLiteral("cmdDelete"), 150);
    QPushButton* cmdCriteriaOK = MakeButton(QStringLiteral("cmdCriteriaOK"), 148);
    QPushButton* cmdCriteriaCancel = MakeButton(QStringLiteral("cmdCriteriaCancel"), 149);
    cmdCriteriaOK->setDefault(true);
    connect(cmdDelete, &QPushButton::clicked, this, [this] { txtCriteria->SetText({}); });
    connect(cmdCriteriaOK, &QPushButton::clicked, this, &frmCriteriaBuilder::cmdCriteriaOK_Click);
    connect(cmdCriteriaCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(cmdDelete);
    layout->addStretch();
    layout->addWidget(cmdCriteriaOK);
    layout->addWidget(cmdCriteriaCancel);
    return foot;
}

void frmCriteriaBuilder::Insert(const QString& key) {
    const int place = txtCriteria->textCursor().selectionStart();
    txtCriteria->SetText(
        InsertKey(txtCriteria->Text(), controls::TextPosition(*txtCriteria->document(), place), key));
    txtCriteria->moveCursor(QTextCursor::End);
    txtCriteria->setFocus();
}

bool frmCriteriaBuilder::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtCriteria && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && !(key->modifiers() & ~Qt::KeypadModifier)) {
            cmdCriteriaOK_Click();
            return true;
        }
    }
    return WizardDialog::eventFilter(watched, event);
}

void frmCriteriaBuilder::cmdCriteriaOK_Click() {
    if (Act([this] { AcceptCriteria(State(), cellText, txtCriteria->Text()); })) accept();
}

}  // namespace zephrin
