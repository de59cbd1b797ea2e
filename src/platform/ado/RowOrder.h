#pragma once

#include <zephrin/ado/Types.h>

#include <QtGlobal>

#include <cstdint>
#include <vector>

namespace zephrin::ado {

class ColumnStore;

/// One column of an order.
struct SortKey {
    int Column = 0;
    DataType Type = DataType::Variant;
    bool Descending = false;
};

/// 0, 1, 2 ... below `count`.
std::vector<std::uint32_t> RowsInOrder(qint64 count);

/// `rows` of the store ordered by the keys, the first key deciding first; rows that are equal keep their
/// order.
///
/// Ascending, a column has its Nulls first, then numbers by their exact values whatever they are stored as,
/// then dates, times, texts in the order of CompareTexts, and bytes. False comes before True. Descending is
/// the reverse.
std::vector<std::uint32_t> SortedRows(const ColumnStore& store, std::vector<std::uint32_t> rows,
                                      const std::vector<SortKey>& keys);

}  // namespace zephrin::ado
