#include "platform/controls/ColouredText.h"
#include "support/ScriptedPrompts.h"
#include "wizard/frmCriteriaBuilder.h"
#include "wizard/frmTableJoinTypes.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

using namespace zephrin;

namespace {

class Dialogs : public testing::Test {
 protected:
    /// Shows `dialog` and runs `act` on it once it is open.
    bool Run(WizardDialog* dialog, const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(0, dialog, [dialog, act] { act(*dialog); });
        return WizardDialog::Run(dialog);
    }

    static void Press(QDialog& dialog, const char* name) {
        auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
        ASSERT_TRUE(button) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }

    ZPGGlobalDeclarations state{{}, std::make_shared<test::ScriptedPrompts>()};
};

struct KeyRow {
    const char* What;
    QString Before;
    int SelectionStart, SelectionEnd;
    const char* Key;
    QString After;
};

TEST_F(Dialogs, KeysPutTheirTextIn) {
    const QString between = QStringLiteral("BETWEEN 1");
    const KeyRow table[] = {
        {"at the caret", QStringLiteral("12"), 1, 1, "cmd5", QStringLiteral("152")},
        {"beside a selection", QStringLiteral("12"), 0, 2, "cmd5", QStringLiteral("512")},
        {"a word leads with a blank", QStringLiteral("> 1"), 3, 3, "cmdAnd", QStringLiteral("> 1 AND")},
        {"also at the start", QString(), 0, 0, "cmdLike", QStringLiteral(" LIKE")},
        {"long word", between, 9, 9, "cmdBetween", between + QStringLiteral(" BETWEEN")},
        {"sign", QString(), 0, 0, "cmdGreaterThanorEqual", QStringLiteral(">=")},
        {"apostrophe", QStringLiteral("= "), 2, 2, "cmdApos", QStringLiteral("= '")},
        {"second line", QStringLiteral("a\r\nb"), 2, 2, "cmdWildCard1", QStringLiteral("a\r\n%b")},
    };
    for (const KeyRow& row : table) {
        state.CurrentCellText = row.Before;
        Run(new frmCriteriaBuilder(state, state.CurrentCellText, nullptr), [&row](QDialog& dialog) {
            auto* box = dialog.findChild<controls::ColouredText*>(QStringLiteral("txtCriteria"));
            QTextCursor cursor = box->textCursor();
            cursor.setPosition(row.SelectionStart);
            cursor.setPosition(row.SelectionEnd, QTextCursor::KeepAnchor);
            box->setTextCursor(cursor);
            Press(dialog, row.Key);
            EXPECT_EQ(box->Text(), row.After) << row.What;
            EXPECT_TRUE(box->textCursor().atEnd()) << row.What;
            EXPECT_FALSE(box->textCursor().hasSelection()) << row.What;
            dialog.reject();
        });
    }
}

TEST_F(Dialogs, CriteriaComeBackOnlyWhenTheyChanged) {
    struct Row {
        const char* What;
        std::function<void(QDialog&)> Act;
        bool Changed;
        QString Text;
    };
    const QString before = QStringLiteral("> 1");
    const Row table[] = {
        {"OK with the same text", [](QDialog& d) { Press(d, "cmdCriteriaOK"); }, false, before},
        {"cleared and OK",
         [](QDialog& d) {
             Press(d, "cmdDelete");
             Press(d, "cmdCriteriaOK");
         },
         true, QString()},
        {"changed and Cancel",
         [](QDialog& d) {
             Press(d, "cmd7");
             Press(d, "cmdCriteriaCancel");
         },
         false, before},
        {"changed and Escape",
         [](QDialog& d) {
             Press(d, "cmd7");
             QTest::keyClick(&d, Qt::Key_Escape);
         },
         false, before},
        {"changed and OK",
         [](QDialog& d) {
             Press(d, "cmd7");
             Press(d, "cmdCriteriaOK");
         },
         true, QStringLiteral("> 17")},
    };
    for (const Row& row : table) {
        state.CurrentCellText = before;
        state.CriteriaChanged = false;
        EXPECT_TRUE(Run(new frmCriteriaBuilder(state, state.CurrentCellText, nullptr), row.Act)) << row.What;
        EXPECT_EQ(state.CriteriaChanged, row.Changed) << row.What;
        EXPECT_EQ(state.CurrentCellText, row.Text) << row.What;
    }
}

TEST_F(Dialogs, ADialogGoesWithItsForm) {
    auto* form = new QWidget;
    const bool there = Run(new frmCriteriaBuilder(state, {}, form), [this, form](QDialog&) {
        ++state.Showing;
        delete form;
    });
    EXPECT_FALSE(there);
}

TEST_F(Dialogs, JoinTypesHandTheirTextBackOnOk) {
    struct Row {
        const char* Option;
        QString Text;
    };
    const Row table[] = {{"optJoinType_0", QStringLiteral("=")},
                         {"optJoinType_1", QStringLiteral("=>")},
                         {"optJoinType_2", QStringLiteral("<=")},
                         {"optJoinType_3", QStringLiteral("<>")}};
    for (const Row& row : table) {
        QString compare = row.Text;
        Run(new frmTableJoinTypes(state, compare, nullptr), [&row](QDialog& dialog) {
            EXPECT_TRUE(dialog.findChild<QRadioButton*>(QString::fromLatin1(row.Option))->isChecked());
            Press(dialog, "optJoinType_0");
            Press(dialog, row.Option);
            Press(dialog, "cmdOK");
        });
        EXPECT_EQ(compare, row.Text);
        compare = QStringLiteral("kept");
        Run(new frmTableJoinTypes(state, compare, nullptr), [&row](QDialog& dialog) {
            Press(dialog, row.Option);
            Press(dialog, "cmdCancel");
        });
        EXPECT_EQ(compare, QStringLiteral("kept"));
    }
}

}  // namespace
