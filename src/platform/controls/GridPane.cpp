#include "platform/controls/GridPane.h"

#include "platform/controls/CellEditor.h"
#include "platform/controls/GridHeader.h"
#include "platform/controls/RecordsetModel.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

namespace zephrin::controls {

namespace {

constexpr int sampledRows = 30;
constexpr int sampledChars = 60;

/// The action whose key was pressed, if it may be done now.
QAction* ActionOf(const QKeyEvent& event, const QList<QAction*>& actions) {
    const QKeySequence pressed(
        QKeyCombination(event.modifiers() & ~Qt::KeypadModifier, Qt::Key(event.key())));
    for (QAction* action : actions)
        if (action->isEnabled() && action->shortcuts().contains(pressed)) return action;
    return nullptr;
}

}  // namespace

GridPane::GridPane(RecordsetModel& model, PaneOwner& paneOwner, QWidget* parent)
    : QTableView(parent), records(model), owner(paneOwner) {
    // Before there are rows, since a header goes through all of them for each of these.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    FitRowsToFont();
    setModel(&model);
    setItemDelegate(new GridDelegate(*this, this));
    setHorizontalHeader(new GridHeader(model, this));
    // A view would select the column whose head is pressed.
    disconnect(horizontalHeader(), &QHeaderView::sectionPressed, this, nullptr);
    disconnect(horizontalHeader(), &QHeaderView::sectionEntered, this, nullptr);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
}

void GridPane::FitRowsToFont() {
    const int height = fontMetrics().height() + 8;
    if (verticalHeader()->defaultSectionSize() == height) return;
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(height);
}

int GridPane::SampleWidth(int column) const {
    const int rows = std::min(records.RecordRows(), sampledRows);
    // A head that is marked later is bold, and so a little wider.
    int width = horizontalHeader()->sectionSizeHint(column) * 11 / 10;
    for (int row = 0; row < rows; ++row) {
        const QString text = records.index(row, column).data().toString().left(sampledChars);
        width = std::max(width, fontMetrics().horizontalAdvance(text) + fontMetrics().averageCharWidth() * 2);
    }
    if (owner.HasButton(column)) width += verticalHeader()->defaultSectionSize();
    return std::clamp(width, fontMetrics().averageCharWidth() * 6, fontMetrics().averageCharWidth() * 45);
}

CellEditor* GridPane::OpenEditor() const {
    const auto editors = viewport()->findChildren<CellEditor*>(Qt::FindDirectChildrenOnly);
    for (CellEditor* editor : editors)
        if (editor->Cell().isValid() && indexWidget(editor->Cell()) == editor) return editor;
    return nullptr;
}

QRect GridPane::ButtonRect(const QModelIndex& index) const {
    if (index.row() != currentIndex().row() || !owner.HasButton(index.column())) return {};
    QRect rect = visualRect(index);
    const int width = std::min(rect.height(), rect.width());
    if (layoutDirection() == Qt::LeftToRight)
        rect.setLeft(rect.right() + 1 - width);
    else
        rect.setWidth(width);
    return rect;
}

QModelIndex GridPane::ButtonAt(const QPoint& position) const {
    const QModelIndex index = indexAt(position);
    return index.isValid() && ButtonRect(index).contains(position) ? index : QModelIndex();
}

bool GridPane::IsPressed(const QModelIndex& index) const {
    return pressedInside && pressed == index;
}

/// A search by typing would read every row of the column.
void GridPane::keyboardSearch(const QString&) {}

/// The pane in use goes to the current cell; the others follow its rows and keep their columns.
void GridPane::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (owner.IsActive(this)) QTableView::scrollTo(index, hint);
}

QSize GridPane::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, fontMetrics().height() * 4};
}

void GridPane::commitData(QWidget* widget) {
    auto* editor = qobject_cast<CellEditor*>(widget);
    if (editor) editor->SetRefused(!owner.CommitByUser(*editor));
}

void GridPane::closeEditor(QWidget* widget, QAbstractItemDelegate::EndEditHint hint) {
    const auto* editor = qobject_cast<const CellEditor*>(widget);
    if (editor && editor->IsRefused() && hint != QAbstractItemDelegate::RevertModelCache) return;
    // Taking the text over may have closed the editor already; going on to the next cell is still to be done.
    QTableView::closeEditor(OpenEditor() == editor ? widget : nullptr, hint);
}

void GridPane::CloseEditor(CellEditor* editor, QAbstractItemDelegate::EndEditHint hint) {
    editor->SetRefused(false);
    QTableView::closeEditor(editor, hint);
}

bool GridPane::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // Typing on a cell that may not be changed opens nothing; F2 and a double-click show its text for
    // selection.
    if (trigger == QAbstractItemView::AnyKeyPressed && !records.MayEdit(index.row())) return false;
    if (trigger == QAbstractItemView::EditKeyPressed || trigger == QAbstractItemView::DoubleClicked)
        owner.Activate(this);
    return QTableView::edit(index, trigger, event);
}

void GridPane::focusInEvent(QFocusEvent* event) {
    owner.Activate(this);
    QTableView::focusInEvent(event);
}

void GridPane::keyPressEvent(QKeyEvent* event) {
    owner.Activate(this);
    if (QAction* action = ActionOf(*event, owner.CellActions())) {
        event->accept();
        // Nothing may follow: what it does may end this grid.
        action->trigger();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void GridPane::contextMenuEvent(QContextMenuEvent* event) {
    owner.Activate(this);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex cell = byKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!cell.isValid()) return;
    if (!selectionModel()->isSelected(cell))
        selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect);
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("cellMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(owner.CellActions());
    menu->popup(byKey ? viewport()->mapToGlobal(visualRect(cell).center()) : event->globalPos());
}

void GridPane::mousePressEvent(QMouseEvent* event) {
    owner.Activate(this);
    const QModelIndex button =
        event->button() == Qt::LeftButton ? ButtonAt(event->position().toPoint()) : QModelIndex();
    if (!button.isValid()) {
        QTableView::mousePressEvent(event);
        owner.PaneClicked();
        return;
    }
    pressed = button;
    pressedInside = true;
    selectionModel()->setCurrentIndex(button, QItemSelectionModel::ClearAndSelect);
    update(button);
}

void GridPane::mouseMoveEvent(QMouseEvent* event) {
    if (!pressed.isValid()) return QTableView::mouseMoveEvent(event);
    pressedInside = ButtonAt(event->position().toPoint()) == pressed;
    update(pressed);
}

void GridPane::mouseReleaseEvent(QMouseEvent* event) {
    if (!pressed.isValid()) return QTableView::mouseReleaseEvent(event);
    const QModelIndex released = pressed;
    const bool inside = ButtonAt(event->position().toPoint()) == pressed;
    pressed = QPersistentModelIndex();
    pressedInside = false;
    update(released);
    // Nothing may follow: the handler may end this grid.
    if (inside) owner.PressButton(released.column());
}

void GridPane::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FitRowsToFont();
}

}  // namespace zephrin::controls
