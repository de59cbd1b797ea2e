#include "platform/controls/DataGrid.h"

#include "platform/controls/DataGridPrivate.h"
#include "platform/controls/GridAccessible.h"

#include <QTableView>

namespace zephrin::controls {

DataGrid::DataGrid(QWidget* parent) : QWidget(parent), d(std::make_unique<DataGridPrivate>(*this)) {
    setFocusPolicy(Qt::StrongFocus);
    MakeGridsAccessible();
}

DataGrid::~DataGrid() = default;

void DataGrid::SetDataSource(const ado::RecordsetPtr& recordset) {
    d->SetDataSource(recordset);
}

const ado::RecordsetPtr& DataGrid::DataSource() const {
    return d->model.Source();
}

void DataGrid::Rebind() {
    d->SetDataSource(ado::RecordsetPtr(d->model.Source()));
}

void DataGrid::SetAllowUpdate(bool allow) {
    d->model.SetAllowUpdate(allow);
}

void DataGrid::SetAllowAddNew(bool allow) {
    d->model.SetAllowAddNew(allow);
}

void DataGrid::SetColumnButton(int column, bool show) {
    d->SetButton(column, show);
}

void DataGrid::SetButtonText(const QString& text) {
    d->actions.SetButtonText(text);
    d->NamePanes();
}

void DataGrid::SetHeadText(const QString& text) {
    d->actions.SetHeadText(text);
    d->NamePanes();
}

void DataGrid::SetColumnWidth(int column, int width) {
    d->SetColumnWidth(column, width);
}

void DataGrid::MarkColumn(int column) {
    d->model.SetMarkedColumn(column);
}

int DataGrid::SplitCount() const {
    return static_cast<int>(d->panes.size());
}

bool DataGrid::AddSplit() {
    const bool room = d->HasRoomForPane();
    if (room) d->AddPane();
    return room;
}

void DataGrid::RemoveSplit() {
    d->RemovePane();
}

int DataGrid::CurrentRow() const {
    return d->Current().row();
}

int DataGrid::CurrentColumn() const {
    return d->Current().column();
}

void DataGrid::SetCurrentCell(int row, int column) {
    d->SetCurrent(row, column);
}

bool DataGrid::IsOnAddNewRow() const {
    return d->model.IsAddNewRow(CurrentRow());
}

QRect DataGrid::CellRect(int row, int column) const {
    const QModelIndex index = d->model.index(row, column);
    const GridPane* pane = d->PaneThatShows(index);
    if (!pane) return {};
    const QRect rect = pane->visualRect(index);
    return {pane->viewport()->mapTo(this, rect.topLeft()), rect.size()};
}

QRect DataGrid::ButtonRect(int row, int column) const {
    const QModelIndex index = d->model.index(row, column);
    const GridPane* pane = d->PaneThatShows(index);
    if (!pane) return {};
    const QRect rect = pane->ButtonRect(index);
    return rect.isEmpty() ? QRect() : QRect(pane->viewport()->mapTo(this, rect.topLeft()), rect.size());
}

bool DataGrid::CommitEdit() {
    return d->CommitEdit();
}

void DataGrid::CancelEdit() {
    d->CancelEdit();
}

void DataGrid::SetNormalise(Normalise normalise) {
    d->normalise = std::move(normalise);
}

QTableView* DataGrid::Pane(int index) const {
    return index >= 0 && index < SplitCount() ? d->panes[static_cast<std::size_t>(index)] : nullptr;
}

QList<QAction*> DataGrid::CellActions() {
    return d->actions.Now();
}

QSize DataGrid::minimumSizeHint() const {
    return d->panes.front()->minimumSizeHint();
}

void DataGrid::SetEmptyText(const QString& text) {
    d->SetEmptyText(text);
}

}  // namespace zephrin::controls
