#include "platform/ado/EditedRows.h"

#include "platform/ado/CellValue.h"
#include "platform/ado/ColumnStore.h"

#include <algorithm>

namespace zephrin::ado {

std::unique_ptr<RowSet> EditedRows::Share() const {
    return std::make_unique<EditedRows>(*this);
}

bool EditedRows::IsNull(qint64 row, int column) const {
    const QList<QVariant>& cells = rows.at(row).Cells;
    return column >= cells.size() || !cells.at(column).isValid();
}

QVariant EditedRows::Value(qint64 row, int column, DataType) const {
    const QList<QVariant>& cells = rows.at(row).Cells;
    return column < cells.size() ? cells.at(column) : QVariant();
}

QString EditedRows::Text(qint64 row, int column, DataType type, qsizetype maxChars) const {
    return ValueText(Value(row, column, type), type, maxChars);
}

void EditedRows::Append() {
    rows.append(Row{nextSequence++, {}});
}

void EditedRows::Set(qint64 row, int column, const QVariant& value) {
    QList<QVariant>& cells = rows[row].Cells;
    if (column >= cells.size()) cells.resize(column + 1);
    cells[column] = value;
}

void EditedRows::Order(const std::vector<SortKey>& keys) {
    // The same sorter as for fetched rows, on a copy of the columns that it looks at.
    ColumnStore values(static_cast<int>(keys.size()));
    std::vector<SortKey> keysOfCopy = keys;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const int column = static_cast<int>(index);
        keysOfCopy[index].Column = column;
        for (qint64 row = 0; row < Count(); ++row)
            values.AppendValue(column, Value(row, keys[index].Column, keys[index].Type), keys[index].Type);
    }
    values.EndRows(Count());
    QList<Row> ordered;
    ordered.reserve(rows.size());
    for (const std::uint32_t row : SortedRows(values, RowsInOrder(Count()), keysOfCopy))
        ordered.append(rows.at(row));
    rows = ordered;
}

void EditedRows::RestoreOrder() {
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.Sequence < b.Sequence; });
}

qint64 EditedRows::MemoryUsage() const {
    qint64 bytes = rows.capacity() * qint64{sizeof(Row)};
    for (const Row& row : rows) {
        bytes += row.Cells.capacity() * qint64{sizeof(QVariant)};
        for (const QVariant& cell : row.Cells)
            if (cell.typeId() == QMetaType::QString) bytes += cell.toString().size() * qint64{sizeof(QChar)};
    }
    return bytes;
}

}  // namespace zephrin::ado
