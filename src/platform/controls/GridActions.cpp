#include "platform/controls/GridActions.h"

#include "platform/controls/DataGridPrivate.h"
#include "platform/controls/GridCopy.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <algorithm>

namespace zephrin::controls {

namespace {

QKeySequence Keys(Qt::KeyboardModifiers modifiers, Qt::Key key) {
    return QKeySequence(QKeyCombination(modifiers, key));
}

/// "Sort by This Column: Ctrl+Return."
QString InWords(const QAction& action) {
    return DataGrid::tr("%1: %2.").arg(QString(action.text()).remove(u'&'),
                                       action.shortcut().toString(QKeySequence::NativeText));
}

}  // namespace

GridActions::GridActions(DataGridPrivate& owner)
    : grid(owner),
      button(Add(QStringLiteral("cellButton"), DataGrid::tr("Press the Button of the Cell"))),
      head(Add(QStringLiteral("columnHead"), DataGrid::tr("Click the Head of the Column"))),
      copy(Add(QStringLiteral("copyCells"), DataGrid::tr("&Copy"))),
      open(Add(QStringLiteral("openCell"), DataGrid::tr("&Open Cell"))),
      wider(Add(QStringLiteral("widerColumn"), DataGrid::tr("&Wider Column"))),
      narrower(Add(QStringLiteral("narrowerColumn"), DataGrid::tr("&Narrower Column"))),
      fit(Add(QStringLiteral("fitColumn"), DataGrid::tr("&Fit Column to Its Texts"))) {
    button->setShortcuts({Keys(Qt::NoModifier, Qt::Key_F4), Keys(Qt::AltModifier, Qt::Key_Down)});
    head->setShortcuts({Keys(Qt::ControlModifier, Qt::Key_Return), Keys(Qt::ControlModifier, Qt::Key_Enter)});
    copy->setShortcuts(QKeySequence::Copy);
    open->setShortcut(Keys(Qt::NoModifier, Qt::Key_F2));
    // An action that is not to be seen can't be done either.
    head->setVisible(false);

    QObject::connect(button, &QAction::triggered, &grid,
                     [this] { grid.PressButton(grid.Current().column()); });
    QObject::connect(head, &QAction::triggered, &grid,
                     [this] { Q_EMIT grid.q.HeadClick(grid.Current().column()); });
    QObject::connect(copy, &QAction::triggered, &grid, [this] { Copy(); });
    QObject::connect(open, &QAction::triggered, &grid, [this] { grid.ActivePane().edit(grid.Current()); });
    QObject::connect(wider, &QAction::triggered, &grid, [this] { Widen(2); });
    QObject::connect(narrower, &QAction::triggered, &grid, [this] { Widen(-2); });
    QObject::connect(fit, &QAction::triggered, &grid, [this] {
        const int column = grid.Current().column();
        grid.ActivePane().setColumnWidth(column, grid.ActivePane().SampleWidth(column));
    });
}

QAction* GridActions::Add(const QString& name, const QString& caption) {
    auto* action = new QAction(caption, &grid);
    action->setObjectName(name);
    // The grid itself looks at the keys; in a window of several grids they would be ambiguous otherwise.
    action->setShortcutContext(Qt::WidgetShortcut);
    all << action;
    return action;
}

const QList<QAction*>& GridActions::Now() {
    const QModelIndex cell = grid.Current();
    for (QAction* action : std::as_const(all)) action->setEnabled(cell.isValid());
    button->setVisible(cell.isValid() && grid.HasButton(cell.column()));
    copy->setEnabled(grid.selection.hasSelection());
    // A column grows towards the side to which the next one lies.
    const bool mirrored = grid.q.isRightToLeft();
    wider->setShortcut(Keys(Qt::AltModifier | Qt::ShiftModifier, mirrored ? Qt::Key_Left : Qt::Key_Right));
    narrower->setShortcut(Keys(Qt::AltModifier | Qt::ShiftModifier, mirrored ? Qt::Key_Right : Qt::Key_Left));
    return all;
}

void GridActions::SetButtonText(const QString& text) {
    button->setText(text);
    if (!worded.contains(button)) worded << button;
}

void GridActions::SetHeadText(const QString& text) {
    head->setText(text);
    head->setVisible(true);
    if (!worded.contains(head)) worded << head;
    grid.model.SetHeadHint(InWords(*head));
}

QString GridActions::KeysInWords() const {
    QStringList words;
    for (const QAction* action : worded) words << InWords(*action);
    return words.join(u' ');
}

void GridActions::Copy() const {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QGuiApplication::clipboard()->setText(CopyText(grid.model, grid.selection));
    QGuiApplication::restoreOverrideCursor();
}

void GridActions::Widen(int characters) const {
    GridPane& pane = grid.ActivePane();
    const int column = grid.Current().column();
    const int character = pane.fontMetrics().averageCharWidth();
    pane.setColumnWidth(column, std::max(pane.columnWidth(column) + characters * character, 2 * character));
}

}  // namespace zephrin::controls
