#include "platform/ado/FetchedRows.h"

namespace zephrin::ado {

std::unique_ptr<RowSet> FetchedRows::Share() const {
    return std::make_unique<FetchedRows>(*this);
}

bool FetchedRows::IsNull(qint64 row, int column) const {
    return store->TagAt(Stored(row), column) == CellTag::Null;
}

QVariant FetchedRows::Value(qint64 row, int column, DataType type) const {
    return store->ValueAt(Stored(row), column, type);
}

QString FetchedRows::Text(qint64 row, int column, DataType type, qsizetype maxChars) const {
    return store->TextAt(Stored(row), column, type, maxChars);
}

void FetchedRows::Order(const std::vector<SortKey>& keys) {
    auto present = order ? *order : RowsInOrder(store->RowCount());
    order = std::make_shared<const std::vector<std::uint32_t>>(SortedRows(*store, std::move(present), keys));
}

qint64 FetchedRows::MemoryUsage() const {
    const auto orderBytes = order ? order->capacity() * sizeof(std::uint32_t) : 0;
    return store->MemoryUsage() + static_cast<qint64>(orderBytes);
}

}  // namespace zephrin::ado
