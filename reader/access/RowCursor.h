#pragma once

#include "reader/access/TableDefinition.h"

namespace zephrin::reader::access {

/// What a row has in one column.
struct Cell {
    bool IsNull = true;  ///< of a truth value: whether it is false
    Span Bytes;
};

/// The rows of one table, wherever on its pages they are.
class RowCursor {
 public:
    RowCursor(PageFile& of, const TableDefinition& table);

    /// The next row; false behind the last. Throws ReadError where rows are missing or don't hold together.
    bool Next();
    /// The bytes stay until the next row.
    Cell At(const StoredColumn& column) const;

 private:
    bool NextPage();
    bool TakeRow();
    void ReadOffsets(int nullBytes);
    void ReadOldestOffsets(int nullBytes);
    [[noreturn]] void ThrowBadRow() const;

    PageFile& file;
    const TableDefinition& definition;
    std::size_t nextPage = 0;
    quint32 pageNumber = 0;
    std::vector<uchar> page;
    std::vector<uchar> moved;
    int row = 0;
    int rowsOnPage = 0;
    quint32 found = 0;
    bool passedOver = false;

    Span bytes;
    int columns = 0;
    Span nulls;
    int dataStart = 0;
    /// Where the columns of no fixed place begin, and behind them where the last one ends.
    std::vector<int> offsets;
};

}  // namespace zephrin::reader::access
