#include "platform/dialogs/DefaultPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

/// Runs `act` once a modal dialog is open. Set it before the call that opens one and does not return until
/// then.
void WhenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [timer, act] {
        QWidget* open = QApplication::activeModalWidget();
        if (!open || !open->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        act(open);
    });
    timer->start(5);
}

template <typename Dialog>
void WhenOpen(std::function<void(Dialog&)> act) {
    WhenModal([act](QWidget* open) {
        auto* dialog = qobject_cast<Dialog*>(open);
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}

void Press(QWidget& dialog, Qt::Key key) {
    QTest::keyClick(&dialog, key);
}

/// The name of a value of one of the box's properties.
QString KeyOf(const char* property, int value) {
    const QMetaObject& meta = QMessageBox::staticMetaObject;
    return QString::fromLatin1(meta.property(meta.indexOfProperty(property)).enumerator().valueToKey(value));
}

/// What a box offers as one text: its buttons, the default in brackets, and its icon.
QStringList Picture(const QMessageBox& box) {
    QStringList shown{KeyOf("icon", box.icon())};
    for (QAbstractButton* button : box.buttons()) {
        const QString name = KeyOf("standardButtons", box.standardButton(button));
        shown << (button == box.defaultButton() ? u'[' + name + u']' : name);
    }
    shown.sort();
    return shown;
}

/// Name and role that a screen reader is told.
QString Told(QWidget* widget) {
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    if (!interface) return {};
    const auto role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(interface->role());
    return QStringLiteral("%1: %2").arg(QString::fromLatin1(role), interface->text(QAccessible::Name));
}

TEST(DefaultPrompts, AreToldToScreenReaders) {
    DefaultPrompts prompts({});
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(Told(&box), QStringLiteral("AlertMessage: Query Builder"));
        EXPECT_EQ(Told(box.button(QMessageBox::Yes)), QStringLiteral("Button: Yes"));
        Press(box, Qt::Key_Escape);
    });
    prompts.MsgBox(QStringLiteral("Really?"), BoxStyle::YesNo, QStringLiteral("Query Builder"));
    WhenOpen<QInputDialog>([](QInputDialog& dialog) {
        EXPECT_EQ(Told(dialog.findChild<QLineEdit*>()),
                  QStringLiteral("EditableText: Please give your view a name"));
        Press(dialog, Qt::Key_Escape);
    });
    prompts.InputBox(QStringLiteral("Please give your view a name"), QStringLiteral("Create View"), {});
}

}  // namespace

TEST(DefaultPrompts, BoxesByStyle) {
    DefaultPrompts prompts({});
    const struct {
        int Style;
        const char* Picture;
        Qt::Key Key;
        BoxAnswer Answer;
    } rows[] = {
        {BoxStyle::Critical, "[Ok] Critical", Qt::Key_Escape, BoxAnswer::Ok},
        {BoxStyle::Information, "[Ok] Information", Qt::Key_Return, BoxAnswer::Ok},
        {36, "No [Yes] Question", Qt::Key_Return, BoxAnswer::Yes},
        {36, "No [Yes] Question", Qt::Key_Escape, BoxAnswer::No},
        {36 + BoxStyle::DefaultSecond, "Yes [No] Question", Qt::Key_Return, BoxAnswer::No},
        {BoxStyle::YesNoCancel + BoxStyle::Exclamation, "Cancel No [Yes] Warning", Qt::Key_Escape,
         BoxAnswer::Cancel},
        {BoxStyle::YesNoCancel + BoxStyle::Question, "Cancel No [Yes] Question", Qt::Key_N, BoxAnswer::No},
        {BoxStyle::OkOnly, "[Ok] NoIcon", Qt::Key_Return, BoxAnswer::Ok},
    };
    for (const auto& row : rows) {
        WhenOpen<QMessageBox>([&row](QMessageBox& box) {
            EXPECT_EQ(box.objectName(), QStringLiteral("msgBox"));
            EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
            EXPECT_EQ(box.text(), QStringLiteral("<b>a</b>\nb & c"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            QStringList expected = QString::fromLatin1(row.Picture).split(u' ');
            expected.sort();
            EXPECT_EQ(Picture(box), expected);
            QTest::keyClick(&box, row.Key, row.Key == Qt::Key_N ? Qt::AltModifier : Qt::NoModifier);
        });
        EXPECT_EQ(prompts.MsgBox(QStringLiteral("<b>a</b>\r\nb & c"), row.Style, QStringLiteral("Title")),
                  row.Answer)
            << row.Picture;
    }
}

TEST(DefaultPrompts, ALongTextFitsTheScreenAndStaysReadable) {
    DefaultPrompts prompts({});
    QString text;
    for (int line = 0; line < 500; ++line) text += QStringLiteral("line %1\r\n").arg(line);
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_LT(box.text().size(), 2000);
        EXPECT_TRUE(box.detailedText().contains(QStringLiteral("line 499")));
        EXPECT_LT(box.height(), 800);
        Press(box, Qt::Key_Escape);
    });
    prompts.MsgBox(text, BoxStyle::Critical, QString());
}

TEST(DefaultPrompts, AParentThatDiesCancels) {
    DefaultPrompts prompts({});
    const auto openWith = [&](auto ask) {
        QPointer<QWidget> window = new QWidget;
        window->show();
        QApplication::setActiveWindow(window);
        WhenModal([window](const QWidget* open) {
            EXPECT_EQ(open->parentWidget(), window.data());
            delete window.data();
        });
        ask();
        EXPECT_TRUE(window.isNull());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    };
    openWith([&] { EXPECT_EQ(prompts.MsgBox(QStringLiteral("?"), 36, QString()), BoxAnswer::No); });
    openWith(
        [&] { EXPECT_TRUE(prompts.InputBox(QStringLiteral("?"), QString(), QStringLiteral("x")).isNull()); });
    openWith([&] { EXPECT_EQ(prompts.ShowSave({}), QString()); });
    openWith([&] { EXPECT_EQ(prompts.PromptNewConnection(QString()), QString()); });
    openWith([&] { prompts.ShowAbout(QStringLiteral("Name"), QStringLiteral("1")); });
}

TEST(DefaultPrompts, InputBoxTellsEmptyFromCancelled) {
    DefaultPrompts prompts({});
    const auto ask = [&](const QString& typed, Qt::Key key) {
        WhenOpen<QInputDialog>([&](QInputDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("inputBox"));
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Title"));
            auto* line = dialog.findChild<QLineEdit*>();
            ASSERT_NE(line, nullptr);
            EXPECT_EQ(line->text(), QStringLiteral("before"));
            const auto* label = dialog.findChild<QLabel*>();
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            EXPECT_EQ(label->text(), QStringLiteral("A && B"));
            line->setText(typed);
            Press(dialog, key);
        });
        return prompts.InputBox(QStringLiteral("A & B"), QStringLiteral("Title"), QStringLiteral("before"));
    };
    EXPECT_EQ(ask(QStringLiteral("after"), Qt::Key_Return), QStringLiteral("after"));
    const QString empty = ask(QString(), Qt::Key_Return);
    EXPECT_TRUE(empty.isEmpty() && !empty.isNull());
    EXPECT_TRUE(ask(QStringLiteral("after"), Qt::Key_Escape).isNull());
}

TEST(DefaultPrompts, SavingTakesTheNameAsItWasTyped) {
    const QTemporaryDir folder;
    DefaultPrompts prompts({});
    const auto save = [&](const QString& typed) {
        WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Save"));
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("zpb (*.zpb)")});
            EXPECT_TRUE(dialog.testOption(QFileDialog::DontConfirmOverwrite));
            auto* line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(line, nullptr);
            line->setText(typed);
            Press(dialog, Qt::Key_Return);
        });
        return prompts.ShowSave(
            {QStringLiteral("Save"), QStringLiteral("zpb(*.zpb)|*.zpb"), QString(), false, false});
    };
    EXPECT_EQ(save(folder.filePath(QStringLiteral("query"))), folder.filePath(QStringLiteral("query")));
    // The next choice begins in the same folder.
    EXPECT_EQ(save(QStringLiteral("other.zpb")), folder.filePath(QStringLiteral("other.zpb")));
}

TEST(DefaultPrompts, OpeningOffersTheNameAndMayBeCancelled) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("q.zpb")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.close();
    DefaultPrompts prompts({});
    const auto open = [&](Qt::Key key) {
        WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
            EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
            Press(dialog, key);
        });
        return prompts.ShowOpen(
            {QStringLiteral("Open"), QStringLiteral("zpb(*.zpb)|*.zpb"), file.fileName(), true});
    };
    EXPECT_EQ(open(Qt::Key_Return), file.fileName());
    EXPECT_EQ(open(Qt::Key_Escape), QString());
}

TEST(DefaultPrompts, FiltersOfPairs) {
    const struct {
        const char* Pairs;
        const char* Expected;
    } rows[] = {
        {"zpb(*.zpb)|*.zpb", "zpb (*.zpb)"},
        {"Text|*.txt;*.csv|All files (*.*)|*.*", "Text (*.txt *.csv),All files (*)"},
        {"", ""},
        {"No pattern", ""},
        {"A (old) files (*.a)|*.a", "A (old) files (*.a)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(NameFilters(QString::fromLatin1(row.Pairs)).join(u','), QString::fromLatin1(row.Expected))
            << row.Pairs;
}

TEST(DefaultPrompts, AboutShowsNameAndVersion) {
    DefaultPrompts prompts({});
    bool seen = false;
    WhenOpen<QMessageBox>([&seen](QMessageBox& box) {
        seen = true;
        EXPECT_EQ(box.objectName(), QStringLiteral("aboutBox"));
        EXPECT_EQ(box.text(), QStringLiteral("Name\n1.2"));
        Press(box, Qt::Key_Escape);
    });
    prompts.ShowAbout(QStringLiteral("Name"), QStringLiteral("1.2"));
    EXPECT_TRUE(seen);
}

}  // namespace zephrin
