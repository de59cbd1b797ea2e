#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/ado/RowSet.h"

namespace zephrin::ado {

/// The rows that a statement brought: they never change, and every recordset that shares them has an order of
/// its own.
class FetchedRows : public RowSet {
 public:
    explicit FetchedRows(std::shared_ptr<const ColumnStore> rows) : store(std::move(rows)) {}

    std::unique_ptr<RowSet> Share() const override;
    qint64 Count() const override { return store->RowCount(); }
    bool IsNull(qint64 row, int column) const override;
    QVariant Value(qint64 row, int column, DataType type) const override;
    QString Text(qint64 row, int column, DataType type, qsizetype maxChars) const override;
    void Order(const std::vector<SortKey>& keys) override;
    void RestoreOrder() override { order.reset(); }
    qint64 MemoryUsage() const override;

 private:
    qint64 Stored(qint64 row) const { return order ? (*order)[static_cast<std::size_t>(row)] : row; }

    std::shared_ptr<const ColumnStore> store;
    /// Stored row of each row; null while the rows stand as they came.
    std::shared_ptr<const std::vector<std::uint32_t>> order;
};

}  // namespace zephrin::ado
