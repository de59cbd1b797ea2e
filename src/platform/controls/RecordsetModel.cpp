#include "platform/controls/RecordsetModel.h"

#include <zephrin/ado/Error.h>

#include <QScopedValueRollback>
#include <QTextDocument>

#include <limits>

namespace zephrin::controls {

namespace {

/// Views count rows in int, and one more has to fit behind the last.
int ViewRows(qint64 count) {
    return static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max() - 1));
}

/// Tool tips guess at rich text; a name that looks like it must show as it is.
QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

/// Numbers stand at the right of their column.
bool IsNumberType(ado::DataType type) {
    using enum ado::DataType;
    switch (type) {
        case SmallInt:
        case Integer:
        case Single:
        case Double:
        case Currency:
        case Decimal:
        case TinyInt:
        case UnsignedTinyInt:
        case BigInt:
        case Numeric:
            return true;
        default:
            return false;
    }
}

Qt::Alignment AlignmentOf(ado::DataType type) {
    return Qt::AlignVCenter | (IsNumberType(type) ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace

void RecordsetModel::SetRecordset(const ado::RecordsetPtr& source) {
    if (recordset) recordset->disconnect(this);
    recordset = source;
    if (recordset) {
        connect(recordset.get(), &ado::Recordset::Reset, this, &RecordsetModel::Reread);
        connect(recordset.get(), &ado::Recordset::RowsInserted, this, &RecordsetModel::Insert);
        connect(recordset.get(), &ado::Recordset::RowsRemoved, this, &RecordsetModel::Remove);
        connect(recordset.get(), &ado::Recordset::CellsChanged, this, &RecordsetModel::ReportCells);
    }
    Reread();
}

void RecordsetModel::Reread() {
    const QScopedValueRollback tells(telling, true);
    beginResetModel();
    const bool open = recordset && recordset->IsOpen();
    columns = open ? recordset->FieldCount() : 0;
    rows = columns > 0 ? ViewRows(recordset->RecordCount()) : 0;
    endResetModel();
}

void RecordsetModel::SetAllowUpdate(bool allow) {
    allowUpdate = allow;
}

void RecordsetModel::SetAllowAddNew(bool allow) {
    if (allow == allowAddNew) return;
    beginResetModel();
    allowAddNew = allow;
    endResetModel();
}

void RecordsetModel::SetMarkedColumn(int column) {
    const int before = std::exchange(marked, column);
    for (const int each : {before, marked})
        if (each >= 0 && each < columns) Q_EMIT headerDataChanged(Qt::Horizontal, each, each);
}

bool RecordsetModel::HasAddNewRow() const {
    return allowAddNew && columns > 0 && recordset && recordset->IsUpdatable();
}

bool RecordsetModel::MayEdit(int row) const {
    if (!recordset || !recordset->IsUpdatable()) return false;
    return IsAddNewRow(row) || (allowUpdate && row >= 0 && row < rows);
}

QString RecordsetModel::Write(int row, int column, const QString& text) {
    const ado::RecordsetPtr target = recordset;
    const bool isNew = IsAddNewRow(row);
    if (!MayEdit(row)) return {};
    bool begun = false;
    try {
        if (isNew) {
            target->AddNew();
            begun = true;
            target->SetValue(column, text);
        } else {
            target->SetValueAt(row, column, text);
        }
        target->Update();
    } catch (const ado::Error& error) {
        if (begun) target->CancelUpdate();
        return error.Description().isEmpty() ? QStringLiteral("%1").arg(error.Number()) : error.Description();
    }
    return {};
}

int RecordsetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows + (HasAddNewRow() ? 1 : 0);
}

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

/// Where a row of the views stands in the recordset, -1 for one that is no longer there or not yet.
qint64 RecordsetModel::RowInRecordset(int row) const {
    if (row >= rows) return -1;
    if (changeBy >= 0) return row < changeAt ? row : row + changeBy;
    if (row < changeAt) return row;
    return row < changeAt - changeBy ? -1 : row + changeBy;
}

void RecordsetModel::Insert(qint64 first, qint64 count) {
    const QScopedValueRollback tells(telling, true);
    const int at = ViewRows(first);
    const int added = ViewRows(count);
    {
        const QScopedValueRollback where(changeAt, at);
        const QScopedValueRollback by(changeBy, added);
        beginInsertRows({}, at, at + added - 1);
    }
    rows += added;
    endInsertRows();
}

void RecordsetModel::Remove(qint64 first, qint64 count) {
    const QScopedValueRollback tells(telling, true);
    const int at = ViewRows(first);
    const int gone = ViewRows(count);
    if (gone == 0) return;
    {
        const QScopedValueRollback where(changeAt, at);
        const QScopedValueRollback by(changeBy, -gone);
        beginRemoveRows({}, at, at + gone - 1);
    }
    rows -= gone;
    endRemoveRows();
}

void RecordsetModel::ReportCells(qint64 row, int firstField, int lastField) {
    if (row < 0 || row >= rows || columns == 0) return;
    const int at = static_cast<int>(row);
    Q_EMIT dataChanged(index(at, firstField), index(at, std::min(lastField, columns - 1)));
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !recordset) return {};
    const int column = index.column();
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(AlignmentOf(recordset->FieldAt(column).Type));
    const qint64 row = RowInRecordset(index.row());
    if (row < 0) return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(QString()) : QVariant();
    switch (role) {
        case Qt::DisplayRole:
            return recordset->TextAt(row, column, ShownChars);
        case Qt::EditRole:
            return recordset->TextAt(row, column, EditedChars);
        case NullRole:
            return !recordset->IsUpdatable() && recordset->IsNullAt(row, column);
        case Qt::AccessibleTextRole:
            if (data(index, NullRole).toBool()) return QStringLiteral("Null");
            return recordset->TextAt(row, column, ShownChars);
        default:
            return {};
    }
}

bool RecordsetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !MayEdit(index.row())) return false;
    return Write(index.row(), index.column(), value.toString()).isNull();
}

QVariant RecordsetModel::ColumnHead(int column, int role) const {
    switch (role) {
        case Qt::DisplayRole:
            return recordset->FieldAt(column).Name;
        case Qt::ToolTipRole:
            return PlainToolTip(headHint.isEmpty() ? recordset->FieldAt(column).Name
                                                   : recordset->FieldAt(column).Name + u'\n' + headHint);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(AlignmentOf(recordset->FieldAt(column).Type));
        default:
            return {};
    }
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section < 0 || !recordset) return {};
    if (orientation == Qt::Horizontal) return section < columns ? ColumnHead(section, role) : QVariant();
    if (section >= rowCount()) return {};
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignRight);
    if (role != Qt::DisplayRole) return {};
    return IsAddNewRow(section) ? QVariant(QStringLiteral("*")) : QVariant(section + 1);
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    // A cell that may not be changed opens too, so that a part of its text can be selected and copied.
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemNeverHasChildren;
}

}  // namespace zephrin::controls
