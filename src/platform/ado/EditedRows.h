#pragma once

#include "platform/ado/RowSet.h"

#include <QList>

namespace zephrin::ado {

/// The rows of a table that is filled by hand: few, and changed all the time. A row takes room for its cells
/// as they are written. What is shared is copied by row, when a cell of it is written.
class EditedRows : public RowSet {
 public:
    std::unique_ptr<RowSet> Share() const override;
    qint64 Count() const override { return rows.size(); }
    bool IsNull(qint64 row, int column) const override;
    QVariant Value(qint64 row, int column, DataType type) const override;
    QString Text(qint64 row, int column, DataType type, qsizetype maxChars) const override;
    void Order(const std::vector<SortKey>& keys) override;
    void RestoreOrder() override;
    qint64 MemoryUsage() const override;

    void Append();
    void Remove(qint64 row) { rows.removeAt(row); }
    void Clear() { rows.clear(); }
    /// Takes the value as it is: it suits the column already.
    void Set(qint64 row, int column, const QVariant& value);

 private:
    struct Row {
        qint64 Sequence = 0;
        QList<QVariant> Cells;
    };

    QList<Row> rows;
    qint64 nextSequence = 0;
};

}  // namespace zephrin::ado
