#include "controls/GridFixture.h"

#include <QPointer>

namespace zephrin::controls {

class GridEditing : public GridFixture {
 protected:
    GridEditing() {
        QObject::connect(&Grid, &DataGrid::EditRefused, &Grid,
                         [this](const QString& text) { Refusals << text; });
        QObject::connect(&Grid, &DataGrid::AfterColEdit, &Grid, [this](int column) {
            Edits << QStringLiteral("%1@%2").arg(column).arg(Sheet->AbsolutePosition());
        });
    }
    QStringList Edits, Refusals;
};

TEST_F(GridEditing, EnterTakesOverWhatTheOwnerMakesOfIt) {
    Bind(3);
    Grid.SetNormalise(
        [](int column, const QString& typed) { return column == 0 ? QStringLiteral("= ") + typed : typed; });
    Type(1, 0, QStringLiteral("5"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/= 5 b1 1/a2 b2 2"));
    EXPECT_EQ(Edits, QStringList{QStringLiteral("0@2")});
    // Opened and left as it was is no edit.
    Grid.SetCurrentCell(1, 0);
    Press(Qt::Key_F2);
    Press(Qt::Key_Return);
    EXPECT_EQ(Edits.size(), 1);
    // A cell that the user emptied is empty, and not Null.
    Type(2, 0, QString());
    Press(Qt::Key_Return);
    EXPECT_EQ(Sheet->ValueAt(2, 0), QVariant(QStringLiteral("= ")));
    EXPECT_TRUE(Refusals.isEmpty());
}

TEST_F(GridEditing, EscapeGivesUp) {
    Bind(2);
    Type(1, 1, QStringLiteral("x"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/a1 b1 1"));
    EXPECT_TRUE(Edits.isEmpty());
}

TEST_F(GridEditing, LeavingTheCellByAnyWayTakesTheTextOver) {
    Bind(3);
    Type(0, 0, QStringLiteral("x"));
    ClickCell(2, 1);
    EXPECT_EQ(Sheet->TextAt(0, 0), QStringLiteral("x"));
    EXPECT_EQ(Current(), QStringLiteral("2,1"));
    Type(1, 0, QStringLiteral("y"));
    Press(Qt::Key_Down);
    EXPECT_EQ(Sheet->TextAt(1, 0), QStringLiteral("y"));
    Type(2, 0, QStringLiteral("z"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(Sheet->TextAt(2, 0), QStringLiteral("z"));
    EXPECT_EQ(Current(), QStringLiteral("2,1"));
    EXPECT_NE(Editor(), nullptr);
    EXPECT_EQ(Edits, QStringList({QStringLiteral("0@1"), QStringLiteral("0@2"), QStringLiteral("0@3")}));
}

TEST_F(GridEditing, ARefusedTextKeepsTheEditorUntilItIsMendedOrGivenUp) {
    Bind(3);
    const QString tooLong = QStringLiteral("eleven char");
    Type(1, 0, tooLong);
    Press(Qt::Key_Return);
    ASSERT_EQ(Refusals.size(), 1);
    EXPECT_FALSE(Refusals.first().isEmpty());
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), tooLong);
    EXPECT_EQ(Sheet->TextAt(1, 0), QStringLiteral("a1"));

    // Clicking elsewhere leads back.
    ClickCell(2, 1);
    ASSERT_EQ(Refusals.size(), 2);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), tooLong);
    EXPECT_EQ(Current(), QStringLiteral("1,0"));

    EXPECT_FALSE(Grid.CommitEdit());
    EXPECT_EQ(Refusals.size(), 3);
    QTest::keyClick(Editor(), Qt::Key_Backspace);
    EXPECT_TRUE(Grid.CommitEdit());
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_EQ(Sheet->TextAt(1, 0), QStringLiteral("eleven cha"));

    Type(1, 2, QStringLiteral("x"));
    EXPECT_FALSE(Grid.CommitEdit());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_TRUE(Grid.CommitEdit());
    EXPECT_EQ(Sheet->TextAt(1, 2), QStringLiteral("1"));
}

TEST_F(GridEditing, TypingInTheLastRowBeginsANewOne) {
    Bind(1);
    Grid.SetAllowAddNew(true);
    Grid.SetCurrentCell(1, 1);
    EXPECT_TRUE(Grid.IsOnAddNewRow());
    QTest::keyClicks(&Pane(), QStringLiteral("n"));
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Sheet->RecordCount(), 1);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/ n "));
    // The user goes on in the row that has just begun.
    EXPECT_EQ(Current(), QStringLiteral("1,2"));
    EXPECT_FALSE(Grid.IsOnAddNewRow());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Edits, QStringList{QStringLiteral("1@2")});

    // Nothing typed, nothing begun; a refused text begins nothing either.
    Grid.SetCurrentCell(2, 0);
    Press(Qt::Key_F2);
    Press(Qt::Key_Return);
    EXPECT_EQ(Sheet->RecordCount(), 2);
    Type(2, 0, QStringLiteral("eleven char"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Sheet->RecordCount(), 2);
    EXPECT_EQ(Refusals.size(), 1);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClick(Editor(), Qt::Key_Backspace);
    Press(Qt::Key_Return);
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/ n /eleven cha  "));
    EXPECT_EQ(Current(), QStringLiteral("2,0"));
}

TEST_F(GridEditing, ButtonsShowInTheCurrentRow) {
    Bind(3);
    Grid.SetColumnButton(1, true);
    Grid.SetCurrentCell(1, 0);
    EXPECT_TRUE(Grid.ButtonRect(0, 1).isEmpty());
    EXPECT_TRUE(Grid.ButtonRect(1, 0).isEmpty());
    const QRect button = Grid.ButtonRect(1, 1);
    EXPECT_TRUE(Grid.CellRect(1, 1).contains(button));

    QStringList log;
    QObject::connect(&Grid, &DataGrid::Click, &Grid, [&] { log << QStringLiteral("click"); });
    QObject::connect(&Grid, &DataGrid::ButtonClick, &Grid, [&](int column) {
        log << QStringLiteral("button %1 in %2 on %3")
                   .arg(column)
                   .arg(Current())
                   .arg(Sheet->AbsolutePosition());
    });
    const auto clickAt = [&](const QPoint& inGrid) {
        QTest::mouseClick(Pane().viewport(), Qt::LeftButton, {}, Pane().viewport()->mapFrom(&Grid, inGrid));
    };
    clickAt(button.center());
    EXPECT_EQ(log, QStringList{QStringLiteral("button 1 in 1,1 on 2")});
    // In another row there is no button yet: a click there chooses the row.
    log.clear();
    clickAt(button.center() + QPoint(0, Grid.CellRect(2, 1).top() - button.top()));
    EXPECT_EQ(log, QStringList{QStringLiteral("click")});
    EXPECT_EQ(Current(), QStringLiteral("2,1"));

    // Pressed, but let go elsewhere.
    log.clear();
    const QPoint inside = Pane().viewport()->mapFrom(&Grid, Grid.ButtonRect(2, 1).center());
    QTest::mousePress(Pane().viewport(), Qt::LeftButton, {}, inside);
    QTest::mouseRelease(Pane().viewport(), Qt::LeftButton, {}, inside - QPoint(60, 0));
    EXPECT_TRUE(log.isEmpty());

    QTest::keyClick(&Pane(), Qt::Key_F4);
    QTest::keyClick(&Pane(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(log,
              QStringList({QStringLiteral("button 1 in 2,1 on 3"), QStringLiteral("button 1 in 2,1 on 3")}));
    Grid.SetColumnButton(1, false);
    QTest::keyClick(&Pane(), Qt::Key_F4);
    EXPECT_EQ(log.size(), 2);
    Grid.SetColumnButton(-1, true);
    EXPECT_FALSE(Grid.ButtonRect(2, 0).isEmpty());
}

TEST_F(GridEditing, AButtonTakesTheOpenTextOverFirst) {
    Bind(2);
    Grid.SetColumnButton(-1, true);
    QString seen;
    QObject::connect(&Grid, &DataGrid::ButtonClick, &Grid, [&](int column) { seen = Sheet->Text(column); });
    Type(0, 0, QStringLiteral("x"));
    const QPoint button = Pane().viewport()->mapFrom(&Grid, Grid.ButtonRect(0, 0).center());
    QTest::mouseClick(Pane().viewport(), Qt::LeftButton, {}, button);
    EXPECT_EQ(seen, QStringLiteral("x"));
    // With the keyboard, from within the editor.
    Type(1, 0, QStringLiteral("y"));
    Press(Qt::Key_F4);
    EXPECT_EQ(seen, QStringLiteral("y"));
    // A text that is refused keeps its editor, and the button does nothing.
    seen.clear();
    Type(1, 0, QStringLiteral("eleven char"));
    Press(Qt::Key_F4);
    EXPECT_EQ(seen, QString());
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(GridEditing, AHandlerMayBindAnew) {
    Bind(2);
    Grid.SetColumnButton(-1, true);
    QObject::connect(&Grid, &DataGrid::AfterColEdit, &Grid, [&] { Grid.Rebind(); });
    QObject::connect(&Grid, &DataGrid::ButtonClick, &Grid, [&] { Grid.SetDataSource(nullptr); });
    Type(0, 0, QStringLiteral("x"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Sheet->TextAt(0, 0), QStringLiteral("x"));
    Type(1, 0, QStringLiteral("y"));
    ClickCell(0, 1);
    EXPECT_EQ(Sheet->TextAt(1, 0), QStringLiteral("y"));
    QTest::keyClick(&Pane(), Qt::Key_F4);
    EXPECT_EQ(Grid.CurrentRow(), -1);
}

TEST_F(GridEditing, AGridMayEndWithAnOpenEditor) {
    Bind(1);
    auto other = std::make_unique<DataGrid>();
    other->SetAllowUpdate(true);
    other->SetDataSource(Sheet);
    other->AddSplit();
    other->show();
    other->Pane(0)->setFocus();
    QTest::keyClick(other->Pane(0), Qt::Key_F2);
    QTest::keyClicks(other->Pane(0)->findChild<CellEditor*>(), QStringLiteral("x"));
    other.reset();
    EXPECT_EQ(Sheet->TextAt(0, 0), QStringLiteral("a0"));
}

}  // namespace zephrin::controls
