#include "platform/controls/DataGridPrivate.h"

#include "platform/controls/CellEditor.h"
#include "platform/controls/Splitter.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace zephrin::controls {

DataGridPrivate::DataGridPrivate(DataGrid& grid) : q(grid), selection(&model) {
    splitter = new Splitter(Qt::Horizontal, &q);
    splitter->SetHandleName(DataGrid::tr("Width of the panes"));
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(&q);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    emptyLabel = new QLabel(&q);
    emptyLabel->setObjectName(QStringLiteral("emptyText"));
    emptyLabel->setTextFormat(Qt::PlainText);
    emptyLabel->setAlignment(Qt::AlignCenter);
    emptyLabel->setWordWrap(true);
    emptyLabel->setForegroundRole(QPalette::PlaceholderText);
    emptyLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    emptyLabel->hide();

    AddPane();
    q.installEventFilter(this);
    connect(&q, &QObject::objectNameChanged, this, &DataGridPrivate::NamePanes);
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, &DataGridPrivate::RememberWidths);
    connect(&model, &QAbstractItemModel::modelReset, this, &DataGridPrivate::AfterReset);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &DataGridPrivate::ShowEmptyText);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &DataGridPrivate::ShowEmptyText);
    connect(&selection, &QItemSelectionModel::currentChanged, this, &DataGridPrivate::CurrentChanged);
}

DataGridPrivate::~DataGridPrivate() {
    // The panes work on the model and on this object, and so have to go first.
    ending = true;
    delete splitter;
}

void DataGridPrivate::SetDataSource(const ado::RecordsetPtr& source) {
    if (model.Source()) model.Source()->disconnect(this);
    model.SetRecordset(source);
    if (source) connect(source.get(), &ado::Recordset::CursorMoved, this, &DataGridPrivate::CursorMoved);
}

// --- Panes
// -----------------------------------------------------------------------------------------------------

void DataGridPrivate::AddPane() {
    auto* pane = new GridPane(model, *this, splitter);
    QItemSelectionModel* own = pane->selectionModel();
    pane->setSelectionModel(&selection);
    delete own;
    Connect(pane);
    splitter->addWidget(pane);
    panes.push_back(pane);
    RememberWidths();
    rememberedWidths.push_back(rememberedWidths.empty() ? QHash<QString, int>() : rememberedWidths.back());
    ApplyWidths(panes.size() - 1);
    ArrangePanes();
}

bool DataGridPrivate::HasRoomForPane() const {
    const int count = static_cast<int>(panes.size()) + 1;
    const int handles = splitter->handleWidth() * (count - 1);
    return splitter->width() - handles >= count * panes.front()->minimumSizeHint().width();
}

void DataGridPrivate::RemovePane() {
    if (panes.size() < 2) return;
    if (panes.back()->OpenEditor() && !CommitEdit()) CancelEdit();
    GridPane* last = panes.back();
    panes.pop_back();
    rememberedWidths.resize(panes.size());
    if (active == last) active = panes.front();
    // The call may come from within one of the pane's own events.
    last->hide();
    last->setObjectName(QString());
    last->deleteLater();
    ArrangePanes();
}

void DataGridPrivate::Connect(GridPane* pane) {
    connect(pane->horizontalHeader(), &QHeaderView::sectionClicked, &q, &DataGrid::HeadClick);
    QScrollBar* bar = pane->verticalScrollBar();
    // A new pane learns its range in steps as it is laid out, and until then stands short of the others.
    const auto adopt = [this, bar] {
        const QScopedValueRollback guard(adoptingScroll, true);
        if (!panes.empty()) bar->setValue(panes.front()->verticalScrollBar()->value());
    };
    adopt();
    connect(bar, &QScrollBar::rangeChanged, this, adopt);
    connect(bar, &QScrollBar::valueChanged, this, [this](int value) {
        if (adoptingScroll) return;
        for (GridPane* each : panes) each->verticalScrollBar()->setValue(value);
    });
}

void DataGridPrivate::ArrangePanes() {
    const bool several = panes.size() > 1;
    for (GridPane* pane : panes) {
        const bool last = pane == panes.back();
        pane->verticalHeader()->setVisible(pane == panes.front());
        pane->setVerticalScrollBarPolicy(last ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        // Rows stand beside each other only where all panes are equally high.
        pane->setHorizontalScrollBarPolicy(several ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
    }
    splitter->setSizes(QList<int>(static_cast<qsizetype>(panes.size()), std::max(splitter->width(), 1)));
    q.setFocusProxy(panes.front());
    for (std::size_t at = 1; at < panes.size(); ++at) {
        QWidget* handle = splitter->handle(static_cast<int>(at));
        QWidget::setTabOrder(panes[at - 1], handle);
        QWidget::setTabOrder(handle, panes[at]);
    }
    NamePanes();
}

void DataGridPrivate::NamePanes() {
    const QString description = (q.accessibleDescription() + u' ' + actions.KeysInWords()).trimmed();
    for (std::size_t at = 0; at < panes.size(); ++at) {
        panes[at]->setObjectName(q.objectName() + QStringLiteral("_pane_%1").arg(at));
        panes[at]->setAccessibleName(q.accessibleName());
        panes[at]->setAccessibleDescription(description);
    }
}

const GridPane* DataGridPrivate::PaneThatShows(const QModelIndex& index) const {
    const auto shows = [&index](const GridPane* pane) {
        return pane->viewport()->rect().intersects(pane->visualRect(index));
    };
    if (active && shows(active)) return active;
    const auto found = std::find_if(panes.begin(), panes.end(), shows);
    return found == panes.end() ? nullptr : *found;
}

bool DataGridPrivate::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &q) {
        // The name for screen readers is given to the grid; what they meet are its panes.
        if (event->type() == QEvent::Show) NamePanes();
        if (event->type() == QEvent::Resize || event->type() == QEvent::Show) ShowEmptyText();
    }
    return QObject::eventFilter(watched, event);
}

void DataGridPrivate::SetEmptyText(const QString& text) {
    emptyLabel->setText(text);
    ShowEmptyText();
}

void DataGridPrivate::ShowEmptyText() {
    const bool empty = model.rowCount() == 0 && !emptyLabel->text().isEmpty();
    emptyLabel->setVisible(empty);
    if (!empty) return;
    const int head = model.columnCount() > 0 ? panes.front()->horizontalHeader()->height() : 0;
    emptyLabel->setGeometry(q.rect().adjusted(8, head + 4, -8, -4));
    emptyLabel->raise();
}

// --- Column widths
// ---------------------------------------------------------------------------------------------

void DataGridPrivate::RememberWidths() {
    for (std::size_t pane = 0; pane < rememberedWidths.size(); ++pane)
        for (int column = 0; column < columnNames.size() && column < panes[pane]->horizontalHeader()->count();
             ++column)
            rememberedWidths[pane][columnNames.at(column)] = panes[pane]->columnWidth(column);
}

int DataGridPrivate::WidthOf(std::size_t pane, int column) const {
    const int remembered = rememberedWidths[pane].value(columnNames.at(column), 0);
    if (remembered > 0) return remembered;
    const int given = givenWidths.value(column, 0);
    return given > 0 ? given * q.logicalDpiX() / 96 : panes[pane]->SampleWidth(column);
}

void DataGridPrivate::ApplyWidths(std::size_t pane) {
    for (int column = 0; column < columnNames.size(); ++column)
        panes[pane]->setColumnWidth(column, WidthOf(pane, column));
}

void DataGridPrivate::ApplyWidths() {
    columnNames.clear();
    for (int column = 0; column < model.columnCount(); ++column)
        columnNames << model.headerData(column, Qt::Horizontal).toString();
    for (std::size_t pane = 0; pane < panes.size(); ++pane) {
        ApplyWidths(pane);
        rememberedWidths[pane].clear();
    }
}

void DataGridPrivate::SetColumnWidth(int column, int width) {
    if (givenWidths.value(column, 0) == width) return;
    givenWidths[column] = width;
    if (column < 0 || column >= columnNames.size()) return;
    for (GridPane* pane : panes) pane->setColumnWidth(column, width * q.logicalDpiX() / 96);
}

// --- Buttons
// ---------------------------------------------------------------------------------------------------

void DataGridPrivate::SetButton(int column, bool show) {
    if (column < 0) {
        everyColumnHasButton = show;
        if (!show) buttonColumns.clear();
    } else if (show) {
        buttonColumns.insert(column);
    } else {
        buttonColumns.erase(column);
    }
    for (GridPane* pane : panes) pane->viewport()->update();
}

bool DataGridPrivate::HasButton(int column) const {
    return everyColumnHasButton || buttonColumns.contains(column);
}

void DataGridPrivate::PressButton(int column) {
    if (!CommitEdit()) return;
    MoveCursorTo(Current().row());
    Q_EMIT q.ButtonClick(column);
}

// --- The current cell and the cursor
// ---------------------------------------------------------------------------

void DataGridPrivate::AfterReset() {
    ApplyWidths();
    ShowEmptyText();
    cursorPending = true;
    FollowCursor();
}

/// A loop of the program over the rows moves the cursor thousands of times; what counts is where it comes to
/// rest.
void DataGridPrivate::CursorMoved() {
    if (std::exchange(cursorPending, true)) return;
    QMetaObject::invokeMethod(this, &DataGridPrivate::FollowCursor, Qt::QueuedConnection);
}

void DataGridPrivate::FollowCursor() {
    if (!std::exchange(cursorPending, false) || !model.Source()) return;
    const qint64 row = model.Source()->AbsolutePosition() - 1;
    if (row < 0 || row >= model.RecordRows() || row == selection.currentIndex().row()) return;
    const int column = std::clamp(selection.currentIndex().column(), 0, std::max(model.columnCount() - 1, 0));
    selection.setCurrentIndex(model.index(static_cast<int>(row), column),
                              QItemSelectionModel::ClearAndSelect);
}

QModelIndex DataGridPrivate::Current() {
    FollowCursor();
    return selection.currentIndex();
}

void DataGridPrivate::SetCurrent(int row, int column) {
    cursorPending = false;
    const QModelIndex index = model.index(row, column);
    if (index.isValid())
        selection.setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    else
        selection.clear();
}

void DataGridPrivate::MoveCursorTo(int row) {
    const ado::RecordsetPtr recordset = model.Source();
    if (!recordset || row < 0 || row >= model.RecordRows() || recordset->AbsolutePosition() == row + 1)
        return;
    recordset->SetAbsolutePosition(row + 1);
    cursorPending = false;
}

void DataGridPrivate::CurrentChanged(const QModelIndex& current, const QModelIndex& previous) {
    if (current.row() != previous.row())
        for (GridPane* pane : panes) pane->viewport()->update();
    // A row that the program removes takes the current cell along, and the cursor is the program's then.
    if (model.IsTelling()) {
        CursorMoved();
    } else {
        cursorPending = false;
        MoveCursorTo(current.row());
    }
    Q_EMIT q.RowColChange(current.row(), current.column());
}

// --- Editing
// ---------------------------------------------------------------------------------------------------

CellEditor* DataGridPrivate::OpenEditor() const {
    for (const GridPane* pane : panes)
        if (CellEditor* editor = pane->OpenEditor()) return editor;
    return nullptr;
}

/// Writes what was typed; a null string when all went well or there was nothing to write.
QString DataGridPrivate::Commit(CellEditor& editor) {
    if (ending || committing || !editor.IsChanged() || !editor.Cell().isValid()) return {};
    const QPointer<CellEditor> open(&editor);
    const int column = editor.Cell().column();
    const bool isNew = model.IsAddNewRow(editor.Cell().row());
    const int row = isNew ? model.RecordRows() : editor.Cell().row();
    const QString text = normalise ? normalise(column, editor.text()) : editor.text();
    {
        const QScopedValueRollback guard(committing, true);
        const QString refusal = model.Write(row, column, text);
        if (!refusal.isNull()) return refusal;
        if (open) open->Accept();
        if (isNew) SetCurrent(row, column);
        MoveCursorTo(row);
    }
    Q_EMIT q.AfterColEdit(column);
    return {};
}

bool DataGridPrivate::CommitByUser(CellEditor& editor) {
    const QString refusal = Commit(editor);
    if (refusal.isNull()) return true;
    // Loss of focus and change of cell both bring the same text.
    if (std::exchange(refusalPending, true)) return false;
    // The box that will say so must not open in the middle of a change of focus.
    const QPointer<CellEditor> open(&editor);
    QMetaObject::invokeMethod(
        this, [this, open, refusal] { ReportRefusal(open, refusal); }, Qt::QueuedConnection);
    return false;
}

void DataGridPrivate::ReportRefusal(const QPointer<CellEditor>& editor, const QString& text) {
    refusalPending = false;
    const QPointer<DataGridPrivate> alive(this);
    Q_EMIT q.EditRefused(text);
    if (!alive || !editor || !editor->isVisible() || !editor->Cell().isValid()) return;
    selection.setCurrentIndex(editor->Cell(), QItemSelectionModel::ClearAndSelect);
    editor->setFocus();
}

bool DataGridPrivate::CommitEdit() {
    const QPointer<CellEditor> editor = OpenEditor();
    if (!editor) return true;
    const QString refusal = Commit(*editor);
    if (!refusal.isNull()) {
        editor->SetRefused(true);
        Q_EMIT q.EditRefused(refusal);
        return false;
    }
    // Taking the value over may have closed it already.
    for (GridPane* pane : panes)
        if (editor && pane->OpenEditor() == editor) pane->CloseEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void DataGridPrivate::CancelEdit() {
    for (GridPane* pane : panes)
        if (CellEditor* editor = pane->OpenEditor())
            pane->CloseEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

}  // namespace zephrin::controls
