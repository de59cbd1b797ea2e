#include "wizard/ListBox.h"

#include "wizard/ShowControl.h"
#include "wizard/TextDelegate.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QToolTip>

namespace zephrin {

ListBox::ListBox(const QString& name, QWidget* parent) : QListView(parent) {
    setObjectName(name);
    setUniformItemSizes(true);
    setItemDelegate(new TextDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(this, &QListView::doubleClicked, this, [this] { Q_EMIT DblClick(); });
}

void ListBox::SetItems(ListState* items) {
    if (state == items && model() == items) return;
    if (state) state->disconnect(this);
    state = items;
    // Connected before the view connects itself: what the view selects while rows come and go is not a pick.
    connect(items, &ListState::rowsAboutToBeRemoved, this, [this] { following = true; });
    connect(items, &ListState::rowsAboutToBeInserted, this, [this] { following = true; });
    const QScopedValueRollback guard(following, true);
    setModel(items);
    connect(items, &ListState::rowsInserted, this, &ListBox::FollowState);
    connect(items, &ListState::ListIndexChanged, this, &ListBox::FollowState);
    FollowState();
}

void ListBox::FollowState() {
    following = true;
    if (const int row = state ? state->ListIndex() : -1; row >= 0) {
        setCurrentIndex(state->index(row));
    } else if (selectionModel()) {
        selectionModel()->clear();
    }
    following = false;
}

void ListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (following || !state) return;
    const QModelIndexList rows = selectedIndexes();
    if (rows.isEmpty()) {
        // What is selected is not taken back by a click; only the state does that.
        FollowState();
        return;
    }
    reported = true;
    Q_EMIT Picked(rows.first().row());
}

void ListBox::mousePressEvent(QMouseEvent* event) {
    const QPointer<ListBox> alive(this);
    reported = false;
    QListView::mousePressEvent(event);
    if (!alive || event->button() != Qt::LeftButton) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || !selectionModel()->isSelected(index)) return;
    const int row = index.row();
    if (!reported) Q_EMIT Picked(row);
    if (alive) Q_EMIT Chosen(row);
}

void ListBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || event->modifiers() & ~Qt::KeypadModifier) return QListView::keyPressEvent(event);
    const QModelIndexList rows = selectedIndexes();
    if (rows.isEmpty()) return;
    const QPointer<ListBox> alive(this);
    Q_EMIT Chosen(rows.first().row());
    if (alive && state && state->ListIndex() >= 0) Q_EMIT DblClick();
}

void ListBox::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    // The toolkit makes the first row current here without selecting it, and the first Down would pass it
    // over.
    if (state && state->ListIndex() < 0) selectionModel()->clearCurrentIndex();
}

/// What looks like mark-up is shown as it stands.
bool ListBox::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex item = indexAt(help->pos());
    QToolTip::showText(help->globalPos(),
                       item.isValid() ? PlainToolTip(item.data(Qt::ToolTipRole).toString()) : toolTip(),
                       viewport());
    return true;
}

QSize ListBox::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 28, metrics.lineSpacing() * 8};
}

QSize ListBox::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 10, metrics.lineSpacing() * 3};
}

}  // namespace zephrin
