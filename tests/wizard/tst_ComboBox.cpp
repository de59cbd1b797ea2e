#include "wizard/ComboBox.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using zephrin::ComboBox;
using zephrin::ListState;

class ComboBoxTest : public testing::Test {
 protected:
    ComboBoxTest() { combo.SetItems(&items); }

    ListState items;
    ComboBox combo{QStringLiteral("cmbTest")};
    QSignalSpy picked{&combo, &ComboBox::Picked};
    QSignalSpy typed{&combo, &ComboBox::Typed};
};

TEST_F(ComboBoxTest, ShowsWhatItIsToldAndReportsNoneOfIt) {
    items.AddItems({QStringLiteral("one"), QStringLiteral("two")});
    combo.ShowSelection(-1, {});
    EXPECT_EQ(combo.currentIndex(), -1) << "a drop-down that is filled selects nothing";
    EXPECT_EQ(combo.currentText(), QString());
    combo.ShowSelection(1, QStringLiteral("two"));
    EXPECT_EQ(combo.currentText(), QStringLiteral("two"));
    items.Clear();
    combo.ShowSelection(-1, QStringLiteral("typed"));
    EXPECT_EQ(combo.currentText(), QStringLiteral("typed"));
    EXPECT_EQ(picked.size(), 0);
    EXPECT_EQ(typed.size(), 0);
}

TEST_F(ComboBoxTest, ReportsTypingAndNeitherCompletesNorStoresIt) {
    items.AddItems({QStringLiteral("London"), QStringLiteral("Paris")});
    combo.ShowSelection(-1, {});
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("Lo"));
    EXPECT_EQ(combo.currentText(), QStringLiteral("Lo"));
    ASSERT_EQ(typed.size(), 2);
    EXPECT_EQ(typed.last().first().toString(), QStringLiteral("Lo"));
    QTest::keyClick(combo.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(items.ListCount(), 2);
    EXPECT_EQ(picked.size(), 0);
}

TEST_F(ComboBoxTest, KeepsTheCaretWhereTheUserTypes) {
    combo.ShowSelection(-1, QStringLiteral("12"));
    combo.lineEdit()->setCursorPosition(1);
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("5"));
    combo.ShowSelection(-1, QStringLiteral("152"));
    EXPECT_EQ(combo.lineEdit()->cursorPosition(), 2);
}

TEST_F(ComboBoxTest, ReportsAPickOnceHoweverItIsMade) {
    items.AddItems({QStringLiteral("one"), QStringLiteral("two")});
    combo.ShowSelection(-1, {});
    combo.show();
    const auto choose = [this](int row) {
        combo.showPopup();
        combo.view()->setCurrentIndex(items.index(row));
        QTest::keyClick(combo.view(), Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    choose(1);
    EXPECT_EQ(picked.size(), 1);
    combo.ShowSelection(1, QStringLiteral("two"));
    choose(1);
    EXPECT_EQ(picked.size(), 2) << "what is chosen already may be picked again";
    combo.setCurrentIndex(0);
    EXPECT_EQ(picked.size(), 3) << "a tool drives the box as a user does";
    EXPECT_EQ(typed.size(), 0);
    combo.setEditText(QStringLiteral("three"));
    EXPECT_EQ(typed.size(), 1);
}

TEST_F(ComboBoxTest, TakesNoChangeOfItsItemsForAPick) {
    combo.ShowSelection(-1, QStringLiteral("typed"));
    items.AddItem(QStringLiteral("one"));
    items.AddItem(QStringLiteral("zero"), 0);
    combo.ShowSelection(0, QStringLiteral("zero"));
    items.RemoveItem(0);
    items.Clear();
    EXPECT_EQ(picked.size(), 0);
    EXPECT_EQ(typed.size(), 0);
}

TEST_F(ComboBoxTest, ReportsWhatIsChosenWithTheKeyboard) {
    items.AddItems({QStringLiteral("one"), QStringLiteral("two")});
    combo.ShowSelection(0, QStringLiteral("one"));
    QTest::keyClick(&combo, Qt::Key_Down);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.last().first().toInt(), 1);
}

}  // namespace
