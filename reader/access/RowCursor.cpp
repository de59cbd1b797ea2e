#include "reader/access/RowCursor.h"

namespace zephrin::reader::access {

namespace {

constexpr quint8 DataPage = 1;
constexpr int OwnerOffset = 4;

}  // namespace

RowCursor::RowCursor(PageFile& of, const TableDefinition& table) : file(of), definition(table) {
    page.resize(std::size_t(file.PageSize()));
    offsets.reserve(256);
}

void RowCursor::ThrowBadRow() const {
    ThrowDamaged(QStringLiteral("row %1 of page %2").arg(row).arg(pageNumber));
}

bool RowCursor::Next() {
    for (;;) {
        while (row < rowsOnPage)
            if (TakeRow()) return true;
        if (!NextPage()) break;
    }
    // The list of a table's pages may name others; but then all rows must have been on the rest.
    if (passedOver && found < definition.RowCount)
        ThrowDamaged(QStringLiteral("%1 of %2 rows are missing")
                         .arg(definition.RowCount - found)
                         .arg(definition.RowCount));
    return false;
}

bool RowCursor::NextPage() {
    while (nextPage < definition.DataPages.size()) {
        pageNumber = definition.DataPages[nextPage++];
        const Span read = file.Page(pageNumber);
        if (read.Byte(0) != DataPage || read.Long(OwnerOffset) != definition.Page) {
            passedOver = true;
            continue;
        }
        // A copy: long values bring other pages in while its rows are read.
        std::copy(read.Data, read.Data + read.Size, page.begin());
        row = 0;
        rowsOnPage = file.RowsOf(read);
        return true;
    }
    return false;
}

/// Reads the row that is next on the page; false where it was deleted.
bool RowCursor::TakeRow() {
    const PageFile::Entry entry = file.EntryOf({page.data(), int(page.size())}, row++);
    if (entry.IsDeleted) return false;
    bytes = entry.Bytes;
    if (entry.IsMoved) {
        const Span there = file.Row(RowPlace(bytes.Long(0)));
        moved.assign(there.Data, there.Data + there.Size);
        bytes = {moved.data(), int(moved.size())};
    }
    ++found;
    const int countSize = file.IsOldest() ? 1 : 2;
    columns = file.IsOldest() ? bytes.Byte(0) : bytes.Short(0);
    dataStart = countSize;
    const int nullBytes = (columns + 7) / 8;
    if (columns == 0 || countSize + nullBytes > bytes.Size) ThrowBadRow();
    nulls = bytes.Part(bytes.Size - nullBytes, nullBytes);
    offsets.clear();
    if (!definition.HasVariable) return true;
    if (file.IsOldest())
        ReadOldestOffsets(nullBytes);
    else
        ReadOffsets(nullBytes);
    return true;
}

void RowCursor::ReadOffsets(int nullBytes) {
    const int countAt = bytes.Size - nullBytes - 2;
    const int count = bytes.Short(countAt);
    if (count > columns || countAt - 2 * (count + 1) < dataStart) ThrowBadRow();
    const uchar* at = bytes.Data + countAt;
    for (int index = 0; index <= count; ++index) {
        at -= 2;
        offsets.push_back(at[0] | at[1] << 8);
    }
}

/// The oldest format has one byte an offset, and behind them the columns at which another 256 is to be added.
void RowCursor::ReadOldestOffsets(int nullBytes) {
    const int countAt = bytes.Size - nullBytes - 1;
    const int count = bytes.Byte(countAt);
    int jumps = (bytes.Size - 1) / 256;
    const int firstAt = countAt - jumps - 1;
    // The last of them may stand for nothing.
    if ((firstAt - count) / 256 < jumps) --jumps;
    if (count > columns || firstAt - count < dataStart) ThrowBadRow();
    int used = 0;
    for (int index = 0; index <= count; ++index) {
        while (used < jumps && bytes.Data[countAt - 1 - used] == index) ++used;
        offsets.push_back(bytes.Data[firstAt - index] + used * 256);
    }
}

Cell RowCursor::At(const StoredColumn& column) const {
    Cell cell;
    // A column that is younger than the row has no value in it.
    if (column.Number >= columns) return cell;
    cell.IsNull = (nulls.Data[column.Number / 8] >> (column.Number % 8) & 1) == 0;
    if (cell.IsNull || (column.Type == StoredType::Boolean && !column.IsCalculated)) return cell;
    if (column.IsFixed) {
        cell.Bytes = bytes.Part(dataStart + column.Offset, column.Length);
        return cell;
    }
    const auto index = std::size_t(column.Index);
    if (index + 1 >= offsets.size()) {
        cell.IsNull = true;
        return cell;
    }
    if (offsets[index + 1] < offsets[index]) ThrowBadRow();
    cell.Bytes = bytes.Part(offsets[index], offsets[index + 1] - offsets[index]);
    return cell;
}

}  // namespace zephrin::reader::access
