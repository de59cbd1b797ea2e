#include "controls/GridFixture.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>

namespace zephrin::controls {

using DataGridTest = GridFixture;

TEST_F(DataGridTest, TheCursorFollowsTheUserAtOnce) {
    Bind(5);
    EXPECT_EQ(Current(), QStringLiteral("0,0"));
    QSignalSpy moves(&Grid, &DataGrid::RowColChange);
    Press(Qt::Key_Down);
    EXPECT_EQ(Sheet->AbsolutePosition(), 2);
    Press(Qt::Key_Right);
    EXPECT_EQ(Current(), QStringLiteral("1,1"));
    EXPECT_EQ(moves.count(), 2);
    ClickCell(3, 2);
    EXPECT_EQ(Sheet->AbsolutePosition(), 4);
    EXPECT_EQ(Current(), QStringLiteral("3,2"));
}

TEST_F(DataGridTest, TheGridFollowsACursorThatComesToRest) {
    Bind(5);
    Grid.SetCurrentCell(2, 1);
    QSignalSpy moves(&Grid, &DataGrid::RowColChange);
    for (Sheet->MoveFirst(); !Sheet->Eof(); Sheet->MoveNext()) {
    }
    Sheet->SetAbsolutePosition(4);
    EXPECT_EQ(moves.count(), 0);
    EXPECT_EQ(Current(), QStringLiteral("3,1"));
    EXPECT_EQ(moves.count(), 1);

    Sheet->SetSort(QStringLiteral("N DESC"));
    QCoreApplication::processEvents();
    EXPECT_EQ(Current(), QStringLiteral("0,0"));
    EXPECT_EQ(Pane().currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("a4"));
}

TEST_F(DataGridTest, RowsThatTheProgramRemovesLeaveItsCursorAlone) {
    Bind(5);
    Grid.SetCurrentCell(1, 0);
    // Walks over all rows and removes every second one, as the program's own loops do.
    QString visited;
    Sheet->MoveFirst();
    for (int step = 0; !Sheet->Eof(); ++step) {
        visited += Sheet->Text(0);
        if (step % 2 == 1) Sheet->Delete();
        Sheet->MoveNext();
    }
    EXPECT_EQ(visited, QStringLiteral("a0a1a2a3a4"));
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/a2 b2 2/a4 b4 4"));
    Sheet->DeleteAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(Grid.CurrentRow(), -1);
}

TEST_F(DataGridTest, SplitsScrollTheirRowsTogetherAndTheirColumnsAlone) {
    Bind(200);
    Grid.resize(400, 300);
    Grid.AddSplit();
    Grid.AddSplit();
    QCoreApplication::processEvents();
    ASSERT_EQ(Grid.SplitCount(), 3);
    EXPECT_EQ(Pane(2).objectName(), QStringLiteral("dgr_pane_2"));
    Pane(0).setColumnWidth(0, 300);
    Pane(1).verticalScrollBar()->setValue(50);
    for (int pane = 0; pane < 3; ++pane) {
        EXPECT_EQ(Pane(pane).verticalScrollBar()->value(), 50);
        EXPECT_EQ(Pane(pane).verticalScrollBar()->isVisible(), pane == 2);
        EXPECT_EQ(Pane(pane).verticalHeader()->isVisible(), pane == 0);
        EXPECT_EQ(Pane(pane).viewport()->height(), Pane(0).viewport()->height());
    }
    EXPECT_NE(Pane(1).columnWidth(0), 300);
    Pane(1).setColumnWidth(0, 200);

    // The current cell is one, but only the pane in use goes to it sideways.
    ClickCell(52, 0, 1);
    QTest::keyClick(&Pane(1), Qt::Key_Right);
    QTest::keyClick(&Pane(1), Qt::Key_Right);
    EXPECT_EQ(Current(), QStringLiteral("52,2"));
    EXPECT_GT(Pane(1).horizontalScrollBar()->value(), 0);
    EXPECT_EQ(Pane(0).horizontalScrollBar()->value(), 0);
    EXPECT_EQ(Pane(2).currentIndex(), Pane(1).currentIndex());

    // A new pane stands at the same rows.
    Grid.AddSplit();
    Settle();
    EXPECT_EQ(Pane(3).verticalScrollBar()->value(), 50);
    for (int count = 3; count >= 0; --count) Grid.RemoveSplit();
    QCoreApplication::processEvents();
    EXPECT_EQ(Grid.SplitCount(), 1);
    EXPECT_EQ(Grid.Pane(1), nullptr);
    EXPECT_TRUE(Pane(0).verticalScrollBar()->isVisible());
}

TEST_F(DataGridTest, AClickOnAHeadIsReportedAndDoesNothingElse) {
    Bind(3);
    Grid.SetCurrentCell(1, 0);
    QSignalSpy heads(&Grid, &DataGrid::HeadClick);
    QHeaderView* head = Pane().horizontalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                      {head->sectionViewportPosition(2) + 10, head->height() / 2});
    ASSERT_EQ(heads.count(), 1);
    EXPECT_EQ(heads.first().first().toInt(), 2);
    EXPECT_EQ(Current(), QStringLiteral("1,0"));
    EXPECT_EQ(Pane().selectionModel()->selectedIndexes().size(), 1);
    EXPECT_EQ(Cells(), QStringLiteral("a0 b0 0/a1 b1 1/a2 b2 2"));
}

TEST_F(DataGridTest, TheMarkedHeadLooksDifferent) {
    Bind(3);
    const QImage before = Pane().horizontalHeader()->grab().toImage();
    Grid.MarkColumn(1);
    const QImage marked = Pane().horizontalHeader()->grab().toImage();
    EXPECT_NE(before, marked);
    Grid.MarkColumn(-1);
    EXPECT_EQ(before, Pane().horizontalHeader()->grab().toImage());
}

TEST_F(DataGridTest, WidthsStayWhenTheSameColumnsAreBoundAnew) {
    Bind(3);
    Grid.SetColumnWidth(1, 123);
    EXPECT_EQ(Pane().columnWidth(1), 123);
    Pane().setColumnWidth(0, 222);
    Grid.Rebind();
    EXPECT_EQ(Pane().columnWidth(0), 222);
    Grid.SetDataSource(nullptr);
    Bind(4);
    EXPECT_EQ(Pane().columnWidth(1), 123);
    // What the program asks for again does not undo what the user did since.
    Pane().setColumnWidth(1, 99);
    Grid.SetColumnWidth(1, 123);
    EXPECT_EQ(Pane().columnWidth(1), 99);
}

TEST_F(DataGridTest, NullLooksDifferentFromEmptyInAResult) {
    BindQuery(QStringLiteral("SELECT NULL AS a, '' AS b, 'x' AS c"));
    const QAbstractItemModel& model = *Pane().model();
    const QImage picture = Pane().viewport()->grab().toImage();
    const auto cell = [&](int column) {
        QImage image = picture.copy(Pane().visualRect(model.index(0, column)).adjusted(3, 3, -3, -3));
        return image;
    };
    const auto isBlank = [](const QImage& image) {
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != image.pixel(0, 0)) return false;
        return true;
    };
    Pane().setCurrentIndex(model.index(0, 2));
    EXPECT_FALSE(isBlank(cell(0)));
    EXPECT_TRUE(isBlank(cell(1)));
    EXPECT_EQ(model.index(0, 0).data().toString(), QString());
    EXPECT_EQ(model.index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Null"));
    EXPECT_EQ(model.index(0, 1).data(Qt::AccessibleTextRole).toString(), QString());

    // A sheet that is filled by hand is full of cells that nobody wrote; they are just blank.
    Bind(0);
    Sheet->AddNew();
    QCoreApplication::processEvents();
    EXPECT_EQ(Pane().model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), QString());
}

TEST_F(DataGridTest, AnEmptyGridSaysSo) {
    Grid.SetEmptyText(QStringLiteral("No rows & <b>"));
    const auto* label = Grid.findChild<QLabel*>(QStringLiteral("emptyText"));
    EXPECT_TRUE(label->isVisible());
    Bind(1);
    EXPECT_FALSE(label->isVisible());
    Sheet->DeleteAll();
    EXPECT_TRUE(label->isVisible());
    Grid.SetAllowAddNew(true);
    EXPECT_FALSE(label->isVisible());
}

TEST_F(DataGridTest, ReadersHearTheNameOfTheGridInItsPanes) {
    Grid.setAccessibleName(QStringLiteral("Results"));
    Grid.hide();
    Grid.show();
    Grid.AddSplit();
    for (int pane = 0; pane < 2; ++pane) {
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&Pane(pane));
        ASSERT_NE(reader, nullptr);
        EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Results"));
    }
}

TEST_F(DataGridTest, TypingInAResultSearchesNothingAndOpensNothing) {
    BindQuery(QStringLiteral("SELECT Name FROM Customers"));
    const QModelIndex before = Pane().currentIndex();
    Press(Qt::Key_B);
    EXPECT_EQ(Pane().currentIndex(), before);
    EXPECT_EQ(Editor(), nullptr);
    // But the text of a cell can be opened to select a part of it.
    Press(Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_TRUE(Editor()->isReadOnly());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(DataGridTest, TheGridKeepsItsRecordsetAlive) {
    Bind(2);
    const std::weak_ptr<ado::Recordset> bound = Sheet;
    Sheet.reset();
    EXPECT_FALSE(bound.expired());
    EXPECT_EQ(Pane().model()->index(1, 0).data().toString(), QStringLiteral("a1"));
    Grid.SetDataSource(nullptr);
    EXPECT_TRUE(bound.expired());
    EXPECT_EQ(Grid.CurrentRow(), -1);
}

}  // namespace zephrin::controls
