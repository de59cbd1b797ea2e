#pragma once

#include "platform/controls/DataGrid.h"
#include "platform/controls/GridActions.h"
#include "platform/controls/GridPane.h"
#include "platform/controls/RecordsetModel.h"

#include <QHash>
#include <QItemSelectionModel>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <set>
#include <vector>

class QLabel;

namespace zephrin::controls {

class Splitter;

/// The inside of a DataGrid: one model and one selection, shown by every pane.
class DataGridPrivate : public QObject, public PaneOwner {
    Q_OBJECT
 public:
    explicit DataGridPrivate(DataGrid& grid);
    ~DataGridPrivate() override;

    void SetDataSource(const ado::RecordsetPtr& source);
    void AddPane();
    bool HasRoomForPane() const;
    void RemovePane();
    void SetColumnWidth(int column, int width);
    void SetButton(int column, bool show);
    void SetEmptyText(const QString& text);
    void SetCurrent(int row, int column);
    QModelIndex Current();
    bool CommitEdit();
    void CancelEdit();
    /// The pane that shows the cell, the one in use first.
    const GridPane* PaneThatShows(const QModelIndex& index) const;

    DataGrid& q;
    RecordsetModel model;
    QItemSelectionModel selection;
    std::vector<GridPane*> panes;
    DataGrid::Normalise normalise;

    GridActions actions{*this};

    bool HasButton(int column) const override;
    void PressButton(int column) override;
    /// The pane in use.
    GridPane& ActivePane() const { return active ? *active : *panes.front(); }
    /// Tells each pane the name and the description that the grid has.
    void NamePanes();

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool CommitByUser(CellEditor& editor) override;
    QList<QAction*> CellActions() override { return actions.Now(); }
    void Activate(GridPane* pane) override { active = pane; }
    bool IsActive(const GridPane* pane) const override {
        return active == pane || (!active && pane == panes.front());
    }
    void PaneClicked() override { Q_EMIT q.Click(); }

    void Connect(GridPane* pane);
    void ArrangePanes();
    void RememberWidths();
    void ApplyWidths();
    void ApplyWidths(std::size_t pane);
    int WidthOf(std::size_t pane, int column) const;
    void ShowEmptyText();

    void AfterReset();
    void CursorMoved();
    void FollowCursor();
    void MoveCursorTo(int row);
    void CurrentChanged(const QModelIndex& current, const QModelIndex& previous);

    QString Commit(CellEditor& editor);
    void ReportRefusal(const QPointer<CellEditor>& editor, const QString& text);
    CellEditor* OpenEditor() const;

    Splitter* splitter = nullptr;
    QLabel* emptyLabel = nullptr;
    QPointer<GridPane> active;
    std::set<int> buttonColumns;
    bool everyColumnHasButton = false;
    QStringList columnNames;
    QHash<int, int> givenWidths;
    /// Widths by the columns' names, a pane each, carried over when the columns are shown anew.
    std::vector<QHash<QString, int>> rememberedWidths;
    bool cursorPending = false;
    bool committing = false;
    bool adoptingScroll = false;
    bool refusalPending = false;
    bool ending = false;
};

}  // namespace zephrin::controls
