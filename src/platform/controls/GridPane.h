#pragma once

#include "platform/controls/GridDelegate.h"

#include <QPersistentModelIndex>
#include <QTableView>

class QAction;

namespace zephrin::controls {

class CellEditor;
class GridPane;
class RecordsetModel;

/// What a pane leaves to the grid that it is a part of.
class PaneOwner {
 public:
    virtual ~PaneOwner() = default;
    /// Takes over an editor's text; false when it was refused. The user did this by leaving the cell.
    virtual bool CommitByUser(CellEditor& editor) = 0;
    virtual bool HasButton(int column) const = 0;
    virtual void PressButton(int column) = 0;
    /// What the keys and the context menu offer for the current cell.
    virtual QList<QAction*> CellActions() = 0;
    /// The user turned to this pane; it is the one that scrolls sideways to the current cell.
    virtual void Activate(GridPane* pane) = 0;
    virtual bool IsActive(const GridPane* pane) const = 0;
    /// A click into the pane, but not on a button.
    virtual void PaneClicked() = 0;
};

/// One pane of a DataGrid.
class GridPane : public QTableView, private CellButtons {
    Q_OBJECT
 public:
    GridPane(RecordsetModel& model, PaneOwner& owner, QWidget* parent);

    /// Width that a column needs for its head and the first rows.
    int SampleWidth(int column) const;
    CellEditor* OpenEditor() const;
    /// Where the button of a cell lies in the viewport; empty when the cell shows none.
    QRect ButtonRect(const QModelIndex& index) const override;
    /// Ends an editor whose text was taken over or given up.
    void CloseEditor(CellEditor* editor, QAbstractItemDelegate::EndEditHint hint);

    using QTableView::edit;
    void keyboardSearch(const QString& search) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    QSize minimumSizeHint() const override;

 protected:
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    bool IsPressed(const QModelIndex& index) const override;
    QModelIndex ButtonAt(const QPoint& position) const;
    void FitRowsToFont();

    RecordsetModel& records;
    PaneOwner& owner;
    QPersistentModelIndex pressed;
    bool pressedInside = false;
};

}  // namespace zephrin::controls
