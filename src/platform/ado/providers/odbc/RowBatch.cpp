#include "platform/ado/providers/odbc/RowBatch.h"

#include "platform/ado/providers/odbc/Diagnostics.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace zephrin::ado::odbc {

namespace {

constexpr size_t BatchBytes = 2 << 20;
/// Each batch is one round to the worker and back, which a busy machine makes expensive.
constexpr size_t MostRows = 4096;
/// A batch ends early when its long cells hold that much.
constexpr size_t MostLongBytes = 16 << 20;
/// Bytes in the row for a column that may be longer.
constexpr size_t LongPlace = 512;
constexpr size_t FirstPiece = 4 << 10;
constexpr size_t MostPiece = 8 << 20;
/// An indicator at or below this one means the long cell LongMark - indicator. ODBC's own marks end at -100
/// less a length, and lengths at execution don't occur here.
constexpr SQLLEN LongMark = -1'000'000;

size_t Aligned(size_t offset) {
    return (offset + 7) & ~size_t(7);
}

struct CShape {
    SQLSMALLINT CType;
    size_t Bytes;  ///< 0: by the column's size
};

CShape ShapeOf(CellKind kind) {
    switch (kind) {
        case CellKind::Integer:
            return {SQL_C_SBIGINT, sizeof(SQLBIGINT)};
        case CellKind::Double:
            return {SQL_C_DOUBLE, sizeof(SQLDOUBLE)};
        case CellKind::Bit:
            return {SQL_C_BIT, sizeof(SQLCHAR)};
        case CellKind::BitText:
            return {SQL_C_CHAR, 32};
        case CellKind::Bytes:
            return {SQL_C_BINARY, 0};
        case CellKind::Decimal:
        case CellKind::Currency:
            return {SQL_C_CHAR, 64};
        case CellKind::Date:
            return {SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT)};
        case CellKind::DateTime:
            return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
        case CellKind::Time:
        case CellKind::DateText:
        case CellKind::Guid:
            return {SQL_C_CHAR, 64};
        case CellKind::Text:
            break;
    }
    return {SQL_C_WCHAR, 0};
}

bool IsFixed(SQLSMALLINT cType) {
    return cType != SQL_C_WCHAR && cType != SQL_C_CHAR && cType != SQL_C_BINARY;
}

/// Bytes of the terminator that the driver writes behind a value.
size_t TerminatorOf(SQLSMALLINT cType) {
    return cType == SQL_C_WCHAR ? sizeof(SQLWCHAR) : cType == SQL_C_CHAR ? 1 : 0;
}

/// Bytes that a column's cells get in a row.
size_t PlaceFor(const ColumnInfo& column, const CShape& shape) {
    if (shape.Bytes > 0) return shape.Bytes;
    if (IsLong(column)) return LongPlace;
    const size_t unit = shape.CType == SQL_C_WCHAR ? sizeof(SQLWCHAR) : 1;
    return (size_t(column.Size) + 1) * unit;
}

/// All of a cell, from its beginning; nothing for Null. The pieces grow.
std::optional<std::vector<char>> ReadWhole(const Statement& statement, SQLUSMALLINT number, SQLSMALLINT cType,
                                           size_t piece, const QString& driverName) {
    const size_t terminator = TerminatorOf(cType);
    std::vector<char> whole;
    for (piece &= ~size_t(1);; piece = std::min(piece * 2, MostPiece)) {
        const size_t begin = whole.size();
        whole.resize(begin + piece);
        SQLLEN length = 0;
        const SQLRETURN outcome =
            SQLGetData(statement.Handle(), number, cType, whole.data() + begin, SQLLEN(piece), &length);
        if (outcome == SQL_NO_DATA) {
            whole.resize(begin);
            return whole;
        }
        CheckStatement(outcome, statement, driverName);
        if (length == SQL_NULL_DATA) return std::nullopt;
        const bool last = length != SQL_NO_TOTAL && size_t(length) + terminator <= piece;
        whole.resize(begin + (last ? size_t(length) : piece - terminator));
        if (last) return whole;
    }
}

}  // namespace

RowBatch::RowBatch(const std::vector<ColumnInfo>& columns, const DriverTraits& driver, qint64 rowLimit)
    : traits(driver), wanted(rowLimit > 0 ? rowLimit : std::numeric_limits<qint64>::max()) {
    LayOut(columns);
    capacity = size_t(std::min<qint64>(qint64(capacity), wanted));
    ChooseWay(columns);
    memory = std::make_unique<std::byte[]>(rowSize * capacity);
}

void RowBatch::LayOut(const std::vector<ColumnInfo>& columns) {
    for (const ColumnInfo& column : columns) {
        Slot slot;
        slot.Kind = KindOf(column, traits.LooseTypes);
        const CShape shape = ShapeOf(slot.Kind);
        slot.CType = shape.CType;
        slot.Variable = !IsFixed(shape.CType);
        slot.Capacity = PlaceFor(column, shape);
        if (traits.LooseTypes && slot.Variable) slot.Capacity = std::min(slot.Capacity, LongPlace);
        slot.Indicator = rowSize;
        slot.Data = rowSize + sizeof(SQLLEN);
        rowSize = Aligned(slot.Data + slot.Capacity);
        slots.push_back(slot);
    }
    capacity = std::clamp(BatchBytes / std::max<size_t>(rowSize, 1), size_t(1), MostRows);
}

void RowBatch::ChooseWay(const std::vector<ColumnInfo>& columns) {
    const auto firstLong = std::find_if(columns.begin(), columns.end(), IsLong);
    const bool uncertain = traits.LooseTypes || firstLong != columns.end();
    const SQLUINTEGER can = traits.GetDataExtensions;
    const SQLUINTEGER anywhere = SQL_GD_BOUND | SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER;
    if (!uncertain) {
        blockRows = capacity;
    } else if ((can & (anywhere | SQL_GD_BLOCK)) == (anywhere | SQL_GD_BLOCK)) {
        // Few enough rows that a block of long cells doesn't fill the memory.
        blockRows = std::min<size_t>(capacity, 64);
        capacity = std::max(blockRows, capacity / blockRows * blockRows);
    } else if ((can & anywhere) != anywhere && firstLong != columns.end()) {
        // Such a driver reads long cells only behind the bound ones, from left to right.
        for (size_t i = size_t(firstLong - columns.begin()); i < slots.size(); ++i) slots[i].Bound = false;
    }
}

void RowBatch::Bind(const Statement& statement) {
    SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROW_BIND_TYPE, AsPointer(rowSize), 0);
    SQLULEN granted = 0;
    if (!SQL_SUCCEEDED(
            SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROW_ARRAY_SIZE, AsPointer(blockRows), 0)) ||
        !SQL_SUCCEEDED(SQLGetStmtAttr(statement.Handle(), SQL_ATTR_ROW_ARRAY_SIZE, &granted, SQL_IS_UINTEGER,
                                      nullptr)) ||
        granted == 0 || granted > blockRows) {
        SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROW_ARRAY_SIZE, AsPointer(1), 0);
        granted = 1;
    }
    blockRows = size_t(granted);
    states.assign(blockRows, SQL_ROW_SUCCESS);
    SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROW_STATUS_PTR, states.data(), 0);
    if (!SQL_SUCCEEDED(SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0)) &&
        blockRows > 1)
        FailStatement(statement, traits.DriverName);
    offsetWorks = SQL_SUCCEEDED(SQLSetStmtAttr(statement.Handle(), SQL_ATTR_ROW_BIND_OFFSET_PTR, &offset, 0));
    if (!offsetWorks) capacity = blockRows;
    BindColumns(statement);
}

void RowBatch::BindColumns(const Statement& statement) {
    for (size_t i = 0; i < slots.size(); ++i) {
        Slot& slot = slots[i];
        if (!slot.Bound) continue;
        if (!SQL_SUCCEEDED(SQLBindCol(statement.Handle(), SQLUSMALLINT(i + 1), slot.CType, PlaceAt(0, slot),
                                      SQLLEN(slot.Capacity), &IndicatorAt(0, slot))))
            FailStatement(statement, traits.DriverName);
    }
}

void RowBatch::Fill(const Statement& statement) {
    rows = 0;
    longCells.clear();
    longBytes = 0;
    while (!ended && rows < wanted && size_t(rows) + blockRows <= capacity && longBytes < MostLongBytes)
        if (!FetchBlock(statement)) break;
    // A block may bring more than was wanted, where the driver doesn't hold the row limit.
    rows = std::min(rows, wanted);
    wanted -= rows;
    if (wanted == 0) ended = true;
}

bool RowBatch::FetchBlock(const Statement& statement) {
    offset = size_t(rows) * rowSize;
    fetched = 1;
    const SQLRETURN outcome = SQLFetch(statement.Handle());
    if (outcome == SQL_NO_DATA) {
        ended = true;
        return false;
    }
    CheckStatement(outcome, statement, traits.DriverName);
    const SQLULEN got = std::min<SQLULEN>(fetched, blockRows);
    if (outcome == SQL_SUCCESS_WITH_INFO) CheckRows(statement, got);
    for (SQLULEN i = 0; i < got; ++i) CompleteRow(statement, rows + qint64(i), i);
    rows += qint64(got);
    ended = got == 0;
    return !ended;
}

void RowBatch::CheckRows(const Statement& statement, SQLULEN got) const {
    for (SQLULEN i = 0; i < got; ++i)
        if (states[i] == SQL_ROW_ERROR) FailStatement(statement, traits.DriverName);
}

void RowBatch::CompleteRow(const Statement& statement, qint64 row, SQLULEN rowInBlock) {
    bool positioned = blockRows == 1;
    for (size_t i = 0; i < slots.size(); ++i) {
        Slot& slot = slots[i];
        if (slot.Bound && (!slot.Variable || !IsCut(slot, IndicatorAt(row, slot)))) continue;
        if (!positioned) {
            if (!SQL_SUCCEEDED(
                    SQLSetPos(statement.Handle(), rowInBlock + 1, SQL_POSITION, SQL_LOCK_NO_CHANGE)))
                FailStatement(statement, traits.DriverName);
            positioned = true;
        }
        ReadPiecewise(statement, row, i);
    }
}

bool RowBatch::IsCut(const Slot& slot, SQLLEN length) const {
    if (length == SQL_NULL_DATA) return false;
    return length == SQL_NO_TOTAL || size_t(length) + TerminatorOf(slot.CType) > slot.Capacity;
}

void RowBatch::ReadPiecewise(const Statement& statement, qint64 row, size_t column) {
    Slot& slot = slots[column];
    SQLLEN& indicator = IndicatorAt(row, slot);
    const auto number = SQLUSMALLINT(column + 1);
    if (!slot.Variable) {
        if (!SQL_SUCCEEDED(SQLGetData(statement.Handle(), number, slot.CType, PlaceAt(row, slot),
                                      SQLLEN(slot.Capacity), &indicator)))
            FailStatement(statement, traits.DriverName);
        return;
    }
    // A bound cell that was cut has told its length.
    const size_t known = slot.Bound && indicator > 0 ? size_t(indicator) + sizeof(SQLWCHAR) : 0;
    std::optional<std::vector<char>> whole =
        ReadWhole(statement, number, slot.CType, std::clamp(known, FirstPiece, MostPiece), traits.DriverName);
    if (!whole) {
        indicator = SQL_NULL_DATA;
        return;
    }
    longBytes += whole->size();
    indicator = LongMark - SQLLEN(longCells.size());
    longCells.push_back(std::move(*whole));
}

SQLLEN RowBatch::LengthAt(qint64 row, int column) const {
    const SQLLEN indicator = IndicatorAt(row, slots[size_t(column)]);
    return indicator <= LongMark ? SQLLEN(longCells[size_t(LongMark - indicator)].size()) : indicator;
}

const char* RowBatch::DataAt(qint64 row, int column) const {
    const Slot& slot = slots[size_t(column)];
    const SQLLEN indicator = IndicatorAt(row, slot);
    if (indicator <= LongMark) return longCells[size_t(LongMark - indicator)].data();
    return reinterpret_cast<const char*>(memory.get()) + size_t(row) * rowSize + slot.Data;
}

SQLLEN& RowBatch::IndicatorAt(qint64 row, const Slot& slot) {
    return *reinterpret_cast<SQLLEN*>(memory.get() + size_t(row) * rowSize + slot.Indicator);
}

const SQLLEN& RowBatch::IndicatorAt(qint64 row, const Slot& slot) const {
    return *reinterpret_cast<const SQLLEN*>(memory.get() + size_t(row) * rowSize + slot.Indicator);
}

char* RowBatch::PlaceAt(qint64 row, const Slot& slot) {
    return reinterpret_cast<char*>(memory.get()) + size_t(row) * rowSize + slot.Data;
}

}  // namespace zephrin::ado::odbc
