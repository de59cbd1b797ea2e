#pragma once

#include <zephrin/ado/Recordset.h>

#include <QVariant>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace zephrin::ado {

/// What one stored cell is. The tag is stored with each cell, since an embedded engine may answer any kind of
/// value in any column; the column's DataType is what was declared.
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

/// Rows in columns of fixed-size chunks: a tag and eight bytes a cell, long values in an arena of their
/// chunk. Sealed chunks stay where they are as rows are added; only the chunk being filled may move.
///
/// A provider writes columns independently (a block fetch fills one column after the other) and then says how
/// many rows are whole.
///
/// Writing, one call a cell, the cells of a column in row order:
///     store.AppendInt(0, id); store.AppendText(1, utf8, length); store.EndRows(1);
///
/// Reading is by row and column, both from 0, and only inside RowCount() and ColumnCount().
class ColumnStore {
 public:
    static constexpr int ChunkBits = 12;
    static constexpr std::uint32_t ChunkRows = 1U << ChunkBits;

    /// Takes at most `memoryLimit` bytes (0: no limit); an append beyond them throws
    /// ErrorNumber::OutOfMemory.
    explicit ColumnStore(int columnCount = 0, qint64 memoryLimit = 0);
    ~ColumnStore();
    ColumnStore(ColumnStore&&) noexcept;
    ColumnStore& operator=(ColumnStore&&) noexcept;

    int ColumnCount() const { return static_cast<int>(columns.size()); }
    qint64 RowCount() const { return rowCount; }

    void AppendNull(int column) { AppendSlot(column, CellTag::Null, 0); }
    void AppendInt(int column, std::int64_t value) { AppendSlot(column, CellTag::Int, Bits(value)); }
    void AppendDouble(int column, double value) { AppendSlot(column, CellTag::Double, Bits(value)); }
    void AppendText(int column, const char* utf8, qsizetype bytes) {
        AppendRun(column, CellTag::Text, utf8, bytes);
    }
    void AppendBytes(int column, const char* bytes, qsizetype count) {
        AppendRun(column, CellTag::Bytes, bytes, count);
    }
    void AppendDecimal(int column, const char* digits, qsizetype bytes) {
        AppendRun(column, CellTag::Decimal, digits, bytes);
    }
    void AppendCurrency(int column, std::int64_t tenThousandths) {
        AppendSlot(column, CellTag::Currency, Bits(tenThousandths));
    }
    void AppendDate(int column, std::int64_t daysSinceEpoch) {
        AppendSlot(column, CellTag::Date, Bits(daysSinceEpoch));
    }
    void AppendTime(int column, std::int64_t ticksSinceMidnight) {
        AppendSlot(column, CellTag::Time, Bits(ticksSinceMidnight));
    }
    void AppendDateTime(int column, std::int64_t ticksSinceEpoch) {
        AppendSlot(column, CellTag::DateTime, Bits(ticksSinceEpoch));
    }
    void AppendGuid(int column, const char* text, qsizetype bytes) {
        AppendRun(column, CellTag::Guid, text, bytes);
    }
    /// Appends a value of any kind under the tag that suits it; digits of a `type` that is an exact decimal
    /// are told from texts. What has no tag is stored as its text.
    void AppendValue(int column, const QVariant& value, DataType type);
    /// Says that every column now has `rows` cells more.
    void EndRows(qint64 rows = 1);
    /// Gives back what was reserved for further rows. Rows may still be added afterwards.
    void Squeeze();
    /// Drops the rows and keeps the columns, for who takes rows in portions.
    void Clear();

    CellTag TagAt(qint64 row, int column) const {
        const Column& c = columns[static_cast<std::size_t>(column)];
        return static_cast<CellTag>(ChunkOf(c, row).tags[row & (ChunkRows - 1)]);
    }
    /// Cells of the tags that hold a whole number: integers, currencies, dates and times.
    std::int64_t IntAt(qint64 row, int column) const { return Unbits<std::int64_t>(SlotAt(row, column)); }
    double DoubleAt(qint64 row, int column) const { return Unbits<double>(SlotAt(row, column)); }
    /// The bytes of a Text, Bytes, Decimal or Guid cell. Valid until the store changes.
    std::string_view RunAt(qint64 row, int column) const;

    /// The cell as a host gets it: whole numbers as bool (of a Boolean column), int or qlonglong, doubles as
    /// double, texts, Guids, decimals and currencies as QString (the digits of the last two are exact), bytes
    /// as QByteArray, dates and times as QDate, QTime and QDateTime. A QDateTime says that it is UTC, so
    /// that no daylight saving rule can move what is a plain reading of a clock: take its date() and time().
    QVariant ValueAt(qint64 row, int column, DataType type) const;
    /// The cell as it is shown, at most `maxChars` UTF-16 units; no more than these are decoded.
    QString TextAt(qint64 row, int column, DataType type, qsizetype maxChars) const;

    /// Bytes taken from the heap, reserves included.
    qint64 MemoryUsage() const;

 private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    template <class T>
    using Buffer = std::unique_ptr<T[], Free>;

    struct Chunk {
        Buffer<std::uint8_t> tags;
        Buffer<std::uint64_t> slots;
        Buffer<char> arena;
        std::uint32_t capacity = 0;
        std::size_t arenaSize = 0;
        std::size_t arenaCapacity = 0;
    };
    struct Column {
        std::vector<Chunk> chunks;
        /// Cells in the last chunk, and how many it has room for.
        std::uint32_t fill = 0;
        std::uint32_t capacity = 0;
    };

    template <class T>
    static std::uint64_t Bits(T value) {
        std::uint64_t bits;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }
    template <class T>
    static T Unbits(std::uint64_t bits) {
        T value;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    static const Chunk& ChunkOf(const Column& column, qint64 row) {
        return column.chunks[static_cast<std::size_t>(row) >> ChunkBits];
    }
    std::uint64_t SlotAt(qint64 row, int column) const {
        const Column& c = columns[static_cast<std::size_t>(column)];
        return ChunkOf(c, row).slots[row & (ChunkRows - 1)];
    }

    void AppendSlot(int column, CellTag tag, std::uint64_t slot) {
        Column& c = columns[static_cast<std::size_t>(column)];
        if (c.fill == c.capacity) MakeRoom(c);
        Chunk& chunk = c.chunks.back();
        chunk.tags[c.fill] = static_cast<std::uint8_t>(tag);
        chunk.slots[c.fill++] = slot;
    }

    // A run of up to seven bytes lies in the slot itself, its length in the lowest byte. A longer one lies in
    // the arena of its chunk: marker 8, then 20 bits of length and 36 bits of offset. A length that 20 bits
    // can't hold stands in the arena, before the bytes.
    static constexpr std::size_t InlineMost = 7;
    static constexpr std::uint64_t InArena = 8;
    static constexpr std::uint64_t LengthElsewhere = (1U << 20) - 1;
    static constexpr std::size_t ArenaMost = std::size_t{1} << 36;

    void AppendRun(int column, CellTag tag, const char* bytes, qsizetype count) {
        const auto size = static_cast<std::size_t>(count);
        if (size > InlineMost) return AppendLongRun(column, tag, bytes, size);
        std::uint64_t slot = size;
        if (size != 0) std::memcpy(reinterpret_cast<char*>(&slot) + 1, bytes, size);
        AppendSlot(column, tag, slot);
    }
    void AppendLongRun(int column, CellTag tag, const char* bytes, std::size_t size) {
        Column& c = columns[static_cast<std::size_t>(column)];
        if (c.fill == c.capacity) MakeRoom(c);
        Chunk& chunk = c.chunks.back();
        if (size >= LengthElsewhere || size > chunk.arenaCapacity - chunk.arenaSize)
            return AppendHard(c, tag, bytes, size);
        std::memcpy(&chunk.arena[static_cast<std::ptrdiff_t>(chunk.arenaSize)], bytes, size);
        chunk.tags[c.fill] = static_cast<std::uint8_t>(tag);
        chunk.slots[c.fill++] = InArena | size << 8 | chunk.arenaSize << 28;
        chunk.arenaSize += size;
    }
    void AppendHard(Column& column, CellTag tag, const char* bytes, std::size_t size);
    void MakeRoom(Column& column);
    void Resize(Chunk& chunk, std::uint32_t capacity);
    void ResizeArena(Chunk& chunk, std::size_t capacity);
    /// Counts a change of what is taken from the heap, before it is made.
    void Count(qint64 change);

    std::vector<Column> columns;
    qint64 rowCount = 0;
    qint64 held = 0;  ///< bytes of all chunks
    qint64 limit = 0;
};

}  // namespace zephrin::ado
