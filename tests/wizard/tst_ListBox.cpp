#include "wizard/ListBox.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using zephrin::ListBox;
using zephrin::ListState;

class ListBoxTest : public testing::Test {
 protected:
    ListBoxTest() {
        items.AddItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        list.SetItems(&items);
        list.resize(200, 200);
        list.show();
    }

    QPoint At(int row) { return list.visualRect(items.index(row)).center(); }
    void Press(int row) { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, At(row)); }
    int SelectedRow() const {
        const auto rows = list.selectionModel()->selectedIndexes();
        return rows.isEmpty() ? -1 : rows.first().row();
    }

    ListState items;
    ListBox list{QStringLiteral("lstTest")};
    QSignalSpy picked{&list, &ListBox::Picked};
    QSignalSpy doubleClicked{&list, &ListBox::DblClick};
};

TEST_F(ListBoxTest, ReportsEachClickOnce) {
    Press(1);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.last().first().toInt(), 1);
    // The state takes the pick; the second click on the same row counts as well.
    items.SetListIndex(1);
    Press(1);
    EXPECT_EQ(picked.size(), 2);
    QTest::keyClick(&list, Qt::Key_Down);
    ASSERT_EQ(picked.size(), 3);
    EXPECT_EQ(picked.last().first().toInt(), 2);
}

TEST_F(ListBoxTest, SelectsNoNeighbourWhenTheSelectedRowGoes) {
    items.SetListIndex(1);
    EXPECT_EQ(SelectedRow(), 1);
    items.RemoveItem(1);
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(picked.size(), 0) << "nobody picked anything";
    EXPECT_EQ(items.ListIndex(), -1);
}

TEST_F(ListBoxTest, FollowsTheStateThroughEveryChange) {
    items.SetListIndex(2);
    items.RemoveItem(0);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(picked.size(), 0);
    items.AddItem(QStringLiteral("z"), 0);
    EXPECT_EQ(SelectedRow(), 2);
    EXPECT_EQ(picked.size(), 0);
    items.Clear();
    EXPECT_EQ(picked.size(), 0);
    EXPECT_EQ(SelectedRow(), -1);
    items.AddItems({QStringLiteral("x"), QStringLiteral("y")});
    EXPECT_EQ(SelectedRow(), -1) << "a list that is filled selects nothing";
    EXPECT_EQ(picked.size(), 0);
}

TEST_F(ListBoxTest, ARowIsOneLine) {
    const int height = list.sizeHintForRow(0);
    items.AddItem(QStringLiteral("a\r\n+b"));
    EXPECT_EQ(list.sizeHintForRow(3), height);
}

TEST_F(ListBoxTest, KeepsTheSelectionWhenAControlClickWouldTakeItBack) {
    items.SetListIndex(0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, At(0));
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(items.ListIndex(), 0);
}

TEST_F(ListBoxTest, EnterIsADoubleClickOnTheSelectedRow) {
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(doubleClicked.size(), 0) << "nothing is selected";
    items.SetListIndex(0);
    QTest::keyClick(&list, Qt::Key_Return);
    Press(0);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, At(0));
    EXPECT_EQ(doubleClicked.size(), 2);
}

TEST_F(ListBoxTest, OutlivesItsItems) {
    auto other = std::make_unique<ListState>();
    other->AddItem(QStringLiteral("only"));
    list.SetItems(other.get());
    items.SetListIndex(2);
    EXPECT_EQ(SelectedRow(), -1) << "the former items are let go";
    other.reset();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(doubleClicked.size(), 0);
    list.SetItems(&items);
    EXPECT_EQ(SelectedRow(), 2);
}

}  // namespace
