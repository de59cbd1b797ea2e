#pragma once

#include <zephrin/ado/Recordset.h>

#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QTableView;

namespace zephrin::controls {

class DataGridPrivate;

/// A grid bound to a recordset: it shows its rows, moves its cursor, edits its cells and adds rows to it.
///
/// The recordset's cursor follows the user at once. The grid follows a cursor that the program moves once the
/// program comes to rest (or asks for CurrentRow), so that a loop over the rows costs nothing; it never moves
/// the cursor by itself.
///
/// F2 or a double-click opens a cell (for selecting a part of its text where it may not be changed), F4 or
/// Alt+Down presses its button, Ctrl+Enter is a click on the head of its column, Alt+Shift with an arrow
/// makes the column wider or narrower, Ctrl+C copies the selected cells whole. The context menu offers all of
/// it, and a screen reader finds it as actions of the grid. In a query's result a Null shows as "Null".
///
/// Splits are panes of the same rows side by side, each with columns scrolled on its own, rows scrolled
/// together. There is always one. The grid keeps its recordset alive.
class DataGrid : public QWidget {
    Q_OBJECT
 public:
    explicit DataGrid(QWidget* parent = nullptr);
    ~DataGrid() override;

    /// Binds to `recordset`; null shows an empty grid. Nothing is copied: the cost does not depend on the
    /// rows.
    void SetDataSource(const ado::RecordsetPtr& recordset);
    const ado::RecordsetPtr& DataSource() const;
    /// Shows the columns anew, after the recordset got others.
    void Rebind();

    void SetAllowUpdate(bool allow);
    /// Shows an empty row behind the last, in which typing begins a new row.
    void SetAllowAddNew(bool allow);
    /// Shows a button in each cell of `column` while its row is the current one; -1 means every column.
    void SetColumnButton(int column, bool show);
    /// What the button of a cell does, and what a click on a head does, in words for the context menu and for
    /// screen readers. Heads without such words take no click by key.
    void SetButtonText(const QString& text);
    void SetHeadText(const QString& text);
    /// Pixels at 100 %. A width that the user gave since a call with the same value stays.
    void SetColumnWidth(int column, int width);
    /// Emphasises the head of one column, e.g. the one to sort by; -1 for none. The rows stay as they are.
    void MarkColumn(int column);

    int SplitCount() const;
    /// Adds a pane in the room of the others. False, with nothing added, where a further one would be too narrow:
    /// the grid never asks for more room because of its panes.
    bool AddSplit();
    /// Removes the last pane; does nothing when there is only one.
    void RemoveSplit();

    /// The current cell: row from 0 (RecordCount() on the add-new row), -1 when there is none.
    int CurrentRow() const;
    int CurrentColumn() const;
    void SetCurrentCell(int row, int column);
    bool IsOnAddNewRow() const;
    /// Where the cell, or the button in it, lies in the grid's coordinates: in the pane that was used last,
    /// else in the first that shows it. Empty when it is out of sight or, for a button, when the cell has
    /// none.
    QRect CellRect(int row, int column) const;
    QRect ButtonRect(int row, int column) const;
    /// Takes over what stands in an open cell editor; false when it was refused and the editor stays.
    bool CommitEdit();
    void CancelEdit();

    /// What an edited cell will hold, made of what was typed; the default takes the text as it is. Set by the
    /// owner.
    using Normalise = std::function<QString(int column, const QString& typed)>;
    void SetNormalise(Normalise normalise);

    /// The view of a pane, from 0, for styling and for tests; null when there are fewer. Its object name is
    /// the grid's with "_pane_" and the index behind it.
    QTableView* Pane(int index) const;

    /// What can be done with the current cell by key, as actions with caption, key and whether it may be done
    /// now; the context menu and screen readers offer these. They belong to the grid.
    QList<QAction*> CellActions();

    /// What stands in the middle while there is no recordset or no row.
    void SetEmptyText(const QString& text);

    QSize minimumSizeHint() const override;

 Q_SIGNALS:
    void HeadClick(int column);
    /// The button of a cell in the current row was pressed.
    void ButtonClick(int column);
    /// A cell was edited by the user and its value stands in the recordset, whose cursor is on its row.
    void AfterColEdit(int column);
    /// A value was refused by the recordset; `text` says why. The editor stays open.
    void EditRefused(const QString& text);
    void RowColChange(int row, int column);
    void Click();

 private:
    std::unique_ptr<DataGridPrivate> d;
};

}  // namespace zephrin::controls
