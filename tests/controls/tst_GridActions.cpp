#include "controls/GridFixture.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

namespace zephrin::controls {

namespace {

class GridActions : public GridFixture {
 protected:
    GridActions() {
        Bind(3);
        Grid.SetColumnButton(1, true);
        Grid.SetButtonText(QStringLiteral("&Choose"));
        Grid.SetHeadText(QStringLiteral("&Sort"));
        Grid.SetCurrentCell(1, 1);
        Pane().setFocus();
    }

    /// What happened since the last call.
    QString Happened() {
        QString events;
        for (const auto& click : std::exchange(static_cast<QList<QList<QVariant>>&>(buttons), {}))
            events += QStringLiteral("button %1 ").arg(click.first().toInt());
        for (const auto& click : std::exchange(static_cast<QList<QList<QVariant>>&>(heads), {}))
            events += QStringLiteral("head %1 ").arg(click.first().toInt());
        return events.trimmed();
    }

    QAction* Find(const char* name) {
        const auto actions = Grid.CellActions();
        for (QAction* action : actions)
            if (action->objectName() == QLatin1StringView(name)) return action;
        return nullptr;
    }

    QSignalSpy buttons{&Grid, &DataGrid::ButtonClick};
    QSignalSpy heads{&Grid, &DataGrid::HeadClick};
};

TEST_F(GridActions, KeysDoWhatTheMouseDoes) {
    struct Row {
        int Column;
        Qt::KeyboardModifiers Modifiers;
        Qt::Key Key;
        const char* Event;
    };
    const Row table[] = {
        {1, Qt::NoModifier, Qt::Key_F4, "button 1"},
        {1, Qt::AltModifier, Qt::Key_Down, "button 1"},
        {0, Qt::NoModifier, Qt::Key_F4, ""},
        {0, Qt::ControlModifier, Qt::Key_Return, "head 0"},
        {2, Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Enter, "head 2"},
        {2, Qt::NoModifier, Qt::Key_Return, ""},
    };
    for (const Row& row : table) {
        Grid.SetCurrentCell(1, row.Column);
        QTest::keyClick(&Pane(), row.Key, row.Modifiers);
        EXPECT_EQ(Happened().toStdString(), row.Event) << row.Key << " on " << row.Column;
    }
}

TEST_F(GridActions, HeadsWithoutAMeaningTakeNoKey) {
    DataGrid other;
    other.SetDataSource(Sheet);
    other.SetCurrentCell(0, 0);
    const QSignalSpy clicks(&other, &DataGrid::HeadClick);
    QTest::keyClick(other.Pane(0), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(clicks.size(), 0);
}

TEST_F(GridActions, ColumnsGetWiderTowardsTheNextOne) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Grid.setLayoutDirection(direction);
        const bool mirrored = direction == Qt::RightToLeft;
        const int before = Pane().columnWidth(1);
        QTest::keyClick(&Pane(), mirrored ? Qt::Key_Left : Qt::Key_Right,
                        Qt::AltModifier | Qt::ShiftModifier);
        EXPECT_GT(Pane().columnWidth(1), before);
        QTest::keyClick(&Pane(), mirrored ? Qt::Key_Right : Qt::Key_Left,
                        Qt::AltModifier | Qt::ShiftModifier);
        EXPECT_EQ(Pane().columnWidth(1), before);
    }
}

TEST_F(GridActions, TheMenuOffersWhatTheCellCan) {
    struct Row {
        int Column;
        const char* Offered;
    };
    const Row table[] = {
        {0, "columnHead copyCells openCell widerColumn narrowerColumn fitColumn"},
        {1, "cellButton columnHead copyCells openCell widerColumn narrowerColumn fitColumn"},
    };
    for (const Row& row : table) {
        Grid.SetCurrentCell(1, row.Column);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&Pane(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        QStringList offered;
        for (const QAction* action : menu->actions())
            if (action->isVisible() && action->isEnabled()) offered << action->objectName();
        EXPECT_EQ(offered.join(u' ').toStdString(), row.Offered);
        menu->close();
        Settle();
    }
    Find("copyCells")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("b1"));
}

TEST_F(GridActions, ScreenReadersPressWhatIsPainted) {
    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&Grid);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->role(), QAccessible::Pane);
    QAccessibleActionInterface* actions = grid->actionInterface();
    ASSERT_TRUE(actions);
    const QString press = QAccessibleActionInterface::pressAction();
    ASSERT_TRUE(actions->actionNames().contains(press));
    EXPECT_EQ(actions->localizedActionName(press), QStringLiteral("Choose"));
    EXPECT_EQ(actions->keyBindingsForAction(press).value(0), QStringLiteral("F4"));
    actions->doAction(press);
    EXPECT_EQ(Happened(), QStringLiteral("button 1"));
    actions->doAction(QStringLiteral("columnHead"));
    EXPECT_EQ(Happened(), QStringLiteral("head 1"));
    Grid.SetCurrentCell(1, 0);
    EXPECT_FALSE(actions->actionNames().contains(press));
    const QAccessibleInterface* pane = QAccessible::queryAccessibleInterface(&Pane());
    EXPECT_EQ(Pane().model()->headerData(1, Qt::Horizontal, Qt::ToolTipRole).toString(),
              QStringLiteral("B\nSort: Ctrl+Return."));
    EXPECT_EQ(pane->text(QAccessible::Description), QStringLiteral("Choose: F4. Sort: Ctrl+Return."));
}

}  // namespace

}  // namespace zephrin::controls
