#pragma once

#include "platform/ado/providers/odbc/TypeMap.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace zephrin::ado::odbc {

/// What the connected driver can do, and how its database behaves.
struct DriverTraits {
    QString DriverName;
    SQLUINTEGER GetDataExtensions = 0;
    /// Escapes `_` and `%` in patterns; empty where the driver has no escape.
    QString PatternEscape;
    /// Any kind of value in any column, of any length, whatever was declared.
    bool LooseTypes = false;
};

/// The cells of some hundred rows, as the driver wrote them, and the driver's way to write them.
///
/// The rows lie one behind the other, each with its columns' length indicators and bytes. Where all cells
/// have a known end, or the driver can read on in any row of a block, whole blocks are fetched; else row
/// after row into the same memory, which costs the round through the driver and nothing more. What is longer
/// than its place is read piecewise.
///
/// Bind and Fill run on the worker's thread, the rest on the caller's, never both at a time.
class RowBatch {
 public:
    /// `rowLimit`: no more rows will be wanted in all; 0 for no limit.
    RowBatch(const std::vector<ColumnInfo>& columns, const DriverTraits& traits, qint64 rowLimit);

    /// Ties the columns to the statement; throws ado::Error.
    void Bind(const Statement& statement);
    /// Replaces the rows by the next ones, until the batch is full or the result ends; throws ado::Error.
    void Fill(const Statement& statement);

    qint64 RowCount() const { return rows; }
    /// No further row will come.
    bool AtEnd() const { return ended; }

    int ColumnCount() const { return int(slots.size()); }
    CellKind KindAt(int column) const { return slots[size_t(column)].Kind; }
    /// Length in bytes, or SQL_NULL_DATA.
    SQLLEN LengthAt(qint64 row, int column) const;
    const char* DataAt(qint64 row, int column) const;

 private:
    struct Slot {
        CellKind Kind = CellKind::Text;
        SQLSMALLINT CType = SQL_C_WCHAR;
        size_t Indicator = 0;  ///< offset in a row
        size_t Data = 0;
        size_t Capacity = 0;  ///< bytes
        bool Variable = false;
        bool Bound = true;
    };

    void LayOut(const std::vector<ColumnInfo>& columns);
    void ChooseWay(const std::vector<ColumnInfo>& columns);
    void BindColumns(const Statement& statement);
    /// Fetches one block to behind the rows that are there; false at the end.
    bool FetchBlock(const Statement& statement);
    void CheckRows(const Statement& statement, SQLULEN first) const;
    void CompleteRow(const Statement& statement, qint64 row, SQLULEN rowInBlock);
    bool IsCut(const Slot& slot, SQLLEN length) const;
    /// Reads a cell that is not bound, or whose place was too small, from its beginning.
    void ReadPiecewise(const Statement& statement, qint64 row, size_t column);
    SQLLEN& IndicatorAt(qint64 row, const Slot& slot);
    char* PlaceAt(qint64 row, const Slot& slot);
    const SQLLEN& IndicatorAt(qint64 row, const Slot& slot) const;

    const DriverTraits traits;
    std::vector<Slot> slots;
    size_t rowSize = 0;
    size_t capacity = 1;   ///< rows that fit
    size_t blockRows = 1;  ///< rows of one fetch
    bool offsetWorks = true;
    std::unique_ptr<std::byte[]> memory;
    std::vector<SQLUSMALLINT> states;
    SQLULEN fetched = 0;
    SQLULEN offset = 0;
    qint64 rows = 0;
    qint64 wanted;  ///< rows that may still come
    bool ended = false;
    /// Cells that were longer than their place; an indicator below LongMark tells which.
    std::vector<std::vector<char>> longCells;
    size_t longBytes = 0;
};

}  // namespace zephrin::ado::odbc
