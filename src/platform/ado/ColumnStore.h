#pragma once

#include <zephrin/ado/Recordset.h>

#include <QList>
#include <QVariant>

#include <cstdint>
#include <memory>

namespace zephrin::ado {

/// What one stored cell is. The tag is stored with each cell, since an embedded engine may answer any kind of value in
/// any column; the column's DataType is what was declared.
enum class CellTag : std::uint8_t {
    Null,
    Int,       ///< 64-bit integer, and booleans as 0 and -1
    Double,    ///< double, and Single
    Text,      ///< UTF-8
    Bytes,     ///< raw bytes
    Decimal,   ///< exact decimal as its digits, e.g. "-12.50"
    Currency,  ///< 64-bit count of ten-thousandths
    Date,      ///< days since 1970-01-01
    Time,      ///< 100 ns since midnight
    DateTime,  ///< 100 ns since 1970-01-01T00:00, no time zone
    Guid,      ///< as text, 8-4-4-4-12 without braces
};

inline constexpr qint64 TicksPerSecond = 10'000'000;
inline constexpr qint64 TicksPerDay = 86'400 * TicksPerSecond;

/// Rows in columns of fixed-size chunks: a tag and eight bytes a cell, long values in an arena of their chunk. Addresses
/// stay as rows are added, nothing is copied when it grows.
///
/// A provider writes columns independently (a block fetch fills one column after the other) and then says how many
/// rows are whole.
///
/// Writing, one call a cell, the cells of a column in row order:
///     store.AppendInt(0, id); store.AppendText(1, utf8, length); store.EndRows(1);
class ColumnStore {
 public:
    explicit ColumnStore(int columns = 0);
    ~ColumnStore();
    ColumnStore(ColumnStore&&) noexcept;
    ColumnStore& operator=(ColumnStore&&) noexcept;

    int ColumnCount() const;
    qint64 RowCount() const;

    void AppendNull(int column);
    void AppendInt(int column, std::int64_t value);
    void AppendDouble(int column, double value);
    void AppendText(int column, const char* utf8, qsizetype bytes);
    void AppendBytes(int column, const char* data, qsizetype bytes);
    void AppendDecimal(int column, const char* digits, qsizetype bytes);
    void AppendCurrency(int column, std::int64_t tenThousandths);
    void AppendDate(int column, std::int64_t daysSinceEpoch);
    void AppendTime(int column, std::int64_t ticksSinceMidnight);
    void AppendDateTime(int column, std::int64_t ticksSinceEpoch);
    void AppendGuid(int column, const char* text, qsizetype bytes);
    /// Says that every column now has `rows` cells more.
    void EndRows(qint64 rows = 1);

    CellTag TagAt(qint64 row, int column) const;

 private:
    struct Data;
    std::unique_ptr<Data> data;
};

}  // namespace zephrin::ado
