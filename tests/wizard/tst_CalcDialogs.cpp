#include "platform/controls/ColouredText.h"
#include "support/ScriptedPrompts.h"
#include "wizard/FormTest.h"
#include "wizard/ListBox.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <functional>

using namespace zephrin;

namespace {

class CalcDialogs : public test::FormTest {
 protected:
    CalcDialogs() {
        Connect();
        Show();
        ChooseOneTable(QStringLiteral("[Products]"), {});
    }

    /// Presses `button` of the form and runs `act` on the dialog that it opens.
    void Open(const char* button, const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(0, form.get(), [act] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            act(*dialog);
        });
        Click(button);
    }

    static void Press(QDialog& dialog, const char* name) {
        auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
        ASSERT_TRUE(button) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    static void DoubleClickRow(QDialog& dialog, const char* name, int row) {
        auto* list = dialog.findChild<ListBox*>(QString::fromLatin1(name));
        ASSERT_TRUE(list) << name;
        const QPoint at = list->visualRect(list->model()->index(row, 0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    }
    static QString Expression(QDialog& dialog) {
        return dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria"))->toPlainText();
    }
    static void TypeAlias(QDialog& dialog, const QString& alias) {
        auto* box = dialog.findChild<QLineEdit*>(QStringLiteral("txtAlias"));
        box->setFocus();
        QTest::keyClicks(box, alias);
    }

    /// Makes a calculated field as a user does who types it.
    void Create(const QString& expression, const QString& alias) {
        Open("cmdCalcField", [&](QDialog& dialog) {
            QTest::keyClicks(dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria")), expression);
            TypeAlias(dialog, alias);
            Press(dialog, "cmdOK");
        });
    }
};

TEST_F(CalcDialogs, ListsInsertAndOkWritesTheField) {
    Open("cmdCalcField", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("frmCalcFields"));
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isEnabled());
        DoubleClickRow(dialog, "lstFunctions", 0);
        EXPECT_EQ(Expression(dialog), QStringLiteral(" LEFT(<<string,n>>)"));
        Press(dialog, "optFunctionType_2");
        EXPECT_EQ(dialog.findChild<ListBox*>(QStringLiteral("lstFunctions"))->model()->rowCount(), 6);
        Press(dialog, "cmdClear");
        EXPECT_EQ(Expression(dialog), QString());
        TypeAlias(dialog, QStringLiteral("Twice"));
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isEnabled());
        QTest::keyClicks(dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria")),
                         QStringLiteral("2"));
        DoubleClickRow(dialog, "lstOperators", 4);
        EXPECT_EQ(Expression(dialog), QStringLiteral("2 *"));
        QTest::keyClicks(dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria")),
                         QStringLiteral(" 21"));
        Press(dialog, "cmdOK");
    });
    EXPECT_TRUE(Statement().startsWith(QStringLiteral("SELECT 2 * 21 AS Twice"))) << qPrintable(Statement());
    Click("cmdRunQuery");
    ASSERT_TRUE(state->rsQueryResult);
    EXPECT_EQ(state->rsQueryResult->Value(QStringView(u"Twice")).toInt(), 42);
}

TEST_F(CalcDialogs, AnExpressionIsTakenAsItWasTyped) {
    const QString blank = QStringLiteral("[Unit\u00a0Price]");
    Open("cmdCalcField", [&](QDialog& dialog) {
        TypeAlias(dialog, QStringLiteral("X"));
        auto* box = dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria"));
        box->insertPlainText(blank);
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClicks(box, QStringLiteral("*2"));
        // The list's text goes to the caret, also behind a line break.
        box->moveCursor(QTextCursor::Left);
        DoubleClickRow(dialog, "lstOperators", 1);
        Press(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
        if (dialog.isVisible()) dialog.reject();
    });
    ASSERT_EQ(state->rsCalcFields->RecordCount(), 1);
    EXPECT_EQ(state->rsCalcFields->TextAt(0, 0), blank + QStringLiteral("\r\n* +2"))
        << "a blank that does not break is part of a name";
    EXPECT_EQ(Statement(), State().txtSQL.Text);
    const auto* box = Find<controls::ColouredText>("txtSQL");
    EXPECT_EQ(box->ColourAt(static_cast<int>(Statement().indexOf(QStringLiteral("FROM")))), 0xff0000ffU)
        << "what comes behind a line break keeps its colour";
}

// The tip of any row is what it stands for, not only that of the one that is selected.
TEST_F(CalcDialogs, RowsTellWhatTheyStandFor) {
    const auto check = [](const ListBox* list, int row, const char* meaning) {
        const QModelIndex item = list->model()->index(row, 0);
        const QPoint at = list->visualRect(item).center();
        QHelpEvent help(QEvent::ToolTip, at, list->viewport()->mapToGlobal(at));
        QApplication::sendEvent(list->viewport(), &help);
        EXPECT_EQ(QToolTip::text(), QString::fromLatin1(meaning));
        QToolTip::hideText();
        QAccessibleInterface* cell =
            QAccessible::queryAccessibleInterface(const_cast<ListBox*>(list))->child(row);
        ASSERT_TRUE(cell);
        EXPECT_EQ(cell->text(QAccessible::Name), item.data().toString());
        EXPECT_EQ(cell->text(QAccessible::Description), QString::fromLatin1(meaning));
    };
    Create(QStringLiteral("1+1"), QStringLiteral("Two"));
    const auto* fields = Find<ListBox>("lstSelectedFields");
    check(fields, 1, "[Products].[Product Name]");
    Open("cmdCalcField", [&](QDialog& dialog) {
        check(dialog.findChild<ListBox*>(QStringLiteral("lstCalcFields")), 0, "1+1");
        dialog.reject();
    });
}

TEST_F(CalcDialogs, ToolTipsShowExpressionsAsTheyStand) {
    Create(QStringLiteral("2 <b AND 3> 1"), QStringLiteral("X"));
    const QString shown = QStringLiteral("2 &lt;b AND 3&gt; 1");
    const auto tipOf = [](QDialog& dialog, const char* name) {
        auto* list = dialog.findChild<ListBox*>(QString::fromLatin1(name));
        const QModelIndex last = list->model()->index(list->model()->rowCount() - 1, 0);
        list->scrollTo(last);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(last).center());
        return list->toolTip();
    };
    const struct {
        const char* Button;
        const char* List;
    } rows[] = {{"cmdCalcField", "lstCalcFields"}, {"cmdEditCalcField", "lstFields"}};
    for (const auto& row : rows) {
        Open(row.Button, [&](QDialog& dialog) {
            EXPECT_TRUE(tipOf(dialog, row.List).contains(shown)) << row.List;
            dialog.reject();
        });
    }
}

TEST_F(CalcDialogs, EscapeIsCancelAndATakenAliasKeepsTheDialog) {
    Create(QStringLiteral("1"), QStringLiteral("One"));
    Open("cmdCalcField", [&](QDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria")),
                         QStringLiteral("2"));
        TypeAlias(dialog, QStringLiteral("One"));
        Press(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("txtAlias"))->selectedText(),
                  QStringLiteral("One"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(prompts->Boxes.size(), 1);
    EXPECT_EQ(state->rsCalcFields->RecordCount(), 1);
}

TEST_F(CalcDialogs, OrderEditAndDeleteReachTheStatement) {
    Create(QStringLiteral("1"), QStringLiteral("A"));
    Create(QStringLiteral("2"), QStringLiteral("B"));
    const auto pick = [](QDialog& dialog, int row) {
        auto* list = dialog.findChild<ListBox*>(QStringLiteral("lstFields"));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
    };
    Open("cmdEditCalcField", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Calculated Fields"));
        pick(dialog, 0);
        Press(dialog, "cmdUpDown_1");
        Press(dialog, "cmdOK");
    });
    EXPECT_TRUE(Statement().startsWith(QStringLiteral("SELECT 2 AS B, 1 AS A"))) << qPrintable(Statement());

    Open("cmdEditCalcField", [&](QDialog& dialog) {
        pick(dialog, 0);
        QTimer::singleShot(0, &dialog, [] {
            auto* editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(editor);
            EXPECT_EQ(Expression(*editor), QStringLiteral("2"));
            EXPECT_FALSE(editor->findChild<QLineEdit*>(QStringLiteral("txtAlias"))->isEnabled());
            QTest::keyClicks(editor->findChild<QPlainTextEdit*>(QStringLiteral("txtCriteria")),
                             QStringLiteral("3"));
            Press(*editor, "cmdOK");
        });
        Press(dialog, "cmdEdit");
        pick(dialog, 1);
        Press(dialog, "chkOutput");
        Press(dialog, "cmdCancel");
    });
    EXPECT_TRUE(Statement().startsWith(QStringLiteral("SELECT 23 AS B\r\n"))) << qPrintable(Statement());

    Open("cmdEditCalcField", [&](QDialog& dialog) {
        pick(dialog, 0);
        prompts->Answers = {BoxAnswer::Yes};
        Press(dialog, "cmdDelete");
        Press(dialog, "cmdCancel");
    });
    EXPECT_TRUE(Statement().startsWith(QStringLiteral("SELECT 23 AS B\r\n"))) << qPrintable(Statement());
    EXPECT_EQ(state->rsCalcFields->RecordCount(), 1);
}

TEST_F(CalcDialogs, AWizardThatGoesTakesItsDialogsAlong) {
    Open("cmdEditCalcField", [&](QDialog&) { form->UnloadSilently(); });
    EXPECT_FALSE(QApplication::activeModalWidget());
}

}  // namespace
