#include "platform/ado/ColumnStore.h"

#include "platform/ado/CellValue.h"

#include <zephrin/ado/Error.h>

#include <QDateTime>

#include <algorithm>
#include <bit>
#include <new>

namespace zephrin::ado {

static_assert(std::endian::native == std::endian::little,
              "short runs lie behind the lowest byte of their slot");

namespace {

// The first chunk of a column grows in these steps, so that a result of many columns and few rows stays
// small.
constexpr std::uint32_t FirstRows = 16;
constexpr std::size_t FirstArena = 256;

template <class Buffer>
void Reallocate(Buffer& buffer, std::size_t count) {
    using Element = typename Buffer::element_type;
    // Nothing to hold is held in nothing: what realloc answers to 0 differs between platforms.
    if (count == 0) return buffer.reset();
    void* grown = std::realloc(buffer.get(), count * sizeof(Element));
    if (!grown) throw std::bad_alloc();
    (void)buffer.release();
    buffer.reset(static_cast<Element*>(grown));
}

}  // namespace

ColumnStore::ColumnStore(int columnCount, qint64 memoryLimit)
    : columns(static_cast<std::size_t>(columnCount)), limit(memoryLimit) {}
ColumnStore::~ColumnStore() = default;
ColumnStore::ColumnStore(ColumnStore&&) noexcept = default;
ColumnStore& ColumnStore::operator=(ColumnStore&&) noexcept = default;

void ColumnStore::Count(qint64 change) {
    if (change > 0 && limit > 0 && held + change > limit)
        throw Error(
            ErrorNumber::OutOfMemory,
            QStringLiteral("The result takes more than %1 MB of memory, the most that one result may take. "
                           "Ask for fewer records or columns. Records fetched so far: %2.")
                .arg(limit >> 20)
                .arg(rowCount));
    held += change;
}

void ColumnStore::Resize(Chunk& chunk, std::uint32_t capacity) {
    constexpr qint64 cellBytes = sizeof(std::uint64_t) + sizeof(std::uint8_t);
    Count((qint64{capacity} - qint64{chunk.capacity}) * cellBytes);
    Reallocate(chunk.tags, capacity);
    Reallocate(chunk.slots, capacity);
    chunk.capacity = capacity;
}

void ColumnStore::ResizeArena(Chunk& chunk, std::size_t capacity) {
    Count(static_cast<qint64>(capacity) - static_cast<qint64>(chunk.arenaCapacity));
    Reallocate(chunk.arena, capacity);
    chunk.arenaCapacity = capacity;
}

void ColumnStore::MakeRoom(Column& column) {
    if (!column.chunks.empty() && column.capacity < ChunkRows) {
        column.capacity = std::min(ChunkRows, std::max(FirstRows, column.capacity * 4));
        return Resize(column.chunks.back(), column.capacity);
    }
    std::size_t expectedArena = 0;
    if (!column.chunks.empty()) {
        Chunk& full = column.chunks.back();
        // The next chunk's values will be about as long as this one's.
        expectedArena = full.arenaSize + full.arenaSize / 16;
        ResizeArena(full, full.arenaSize);
    }
    Chunk next;
    Resize(next, column.chunks.empty() ? FirstRows : ChunkRows);
    if (expectedArena != 0) ResizeArena(next, std::min<std::size_t>(expectedArena, std::size_t{1} << 20));
    column.fill = 0;
    column.capacity = next.capacity;
    column.chunks.push_back(std::move(next));
}

void ColumnStore::AppendHard(Column& column, CellTag tag, const char* bytes, std::size_t size) {
    Chunk& chunk = column.chunks.back();
    const std::size_t prefix = size >= LengthElsewhere ? sizeof size : 0;
    const std::size_t needed = chunk.arenaSize + prefix + size;
    if (needed > ArenaMost)
        throw Error(ErrorNumber::ProviderFailed,
                    QStringLiteral("The values of a column are too large to be held in memory."));
    if (needed > chunk.arenaCapacity)
        ResizeArena(chunk, std::min(ArenaMost, std::max({FirstArena, needed,
                                                         chunk.arenaCapacity + chunk.arenaCapacity / 2})));
    char* at = chunk.arena.get() + chunk.arenaSize;
    std::memcpy(at, &size, prefix);
    std::memcpy(at + prefix, bytes, size);
    chunk.tags[column.fill] = static_cast<std::uint8_t>(tag);
    const std::uint64_t length = prefix ? LengthElsewhere : size;
    chunk.slots[column.fill++] = InArena | length << 8 | chunk.arenaSize << 28;
    chunk.arenaSize = needed;
}

void ColumnStore::EndRows(qint64 rows) {
    rowCount += rows;
#ifndef NDEBUG
    for (const Column& column : columns)
        Q_ASSERT(qint64(column.chunks.size() - (column.chunks.empty() ? 0 : 1)) * ChunkRows + column.fill ==
                 rowCount);
#endif
}

void ColumnStore::Squeeze() {
    for (Column& column : columns) {
        column.chunks.shrink_to_fit();
        if (column.chunks.empty()) continue;
        Chunk& last = column.chunks.back();
        ResizeArena(last, last.arenaSize);
        // A chunk without cells is never made, so that there is always one to keep.
        column.capacity = column.fill;
        Resize(last, column.fill);
    }
}

void ColumnStore::Clear() {
    for (Column& column : columns) column = {};
    rowCount = held = 0;
}

std::string_view ColumnStore::RunAt(qint64 row, int column) const {
    const Chunk& chunk = ChunkOf(columns[static_cast<std::size_t>(column)], row);
    const std::uint64_t& slot = chunk.slots[row & (ChunkRows - 1)];
    const std::uint64_t kind = slot & 0xFF;
    if (kind <= InlineMost) return {reinterpret_cast<const char*>(&slot) + 1, kind};
    const char* at = chunk.arena.get() + (slot >> 28);
    std::size_t size = slot >> 8 & LengthElsewhere;
    if (size != LengthElsewhere) return {at, size};
    std::memcpy(&size, at, sizeof size);
    return {at + sizeof size, size};
}

QVariant ColumnStore::ValueAt(qint64 row, int column, DataType type) const {
    switch (TagAt(row, column)) {
        case CellTag::Null:
            return {};
        case CellTag::Int:
            return IntegerValue(IntAt(row, column), type);
        case CellTag::Double:
            return DoubleAt(row, column);
        case CellTag::Currency:
            return CurrencyText(IntAt(row, column));
        case CellTag::Date:
            return DateOfDays(IntAt(row, column));
        case CellTag::Time:
            return TimeOfTicks(IntAt(row, column));
        case CellTag::DateTime:
            return DateTimeOfTicks(IntAt(row, column));
        case CellTag::Bytes: {
            const std::string_view run = RunAt(row, column);
            return QByteArray(run.data(), static_cast<qsizetype>(run.size()));
        }
        case CellTag::Text:
        case CellTag::Decimal:
        case CellTag::Guid:
            break;
    }
    const std::string_view run = RunAt(row, column);
    return QString::fromUtf8(run.data(), static_cast<qsizetype>(run.size()));
}

QString ColumnStore::TextAt(qint64 row, int column, DataType type, qsizetype maxChars) const {
    switch (TagAt(row, column)) {
        case CellTag::Null:
            return {};
        case CellTag::Int:
            return IntegerText(IntAt(row, column), type).left(maxChars);
        case CellTag::Double:
            return DoubleShown(DoubleAt(row, column), type).left(maxChars);
        case CellTag::Currency:
            return CurrencyText(IntAt(row, column)).left(maxChars);
        case CellTag::Date:
            return DateOfDays(IntAt(row, column)).toString(Qt::ISODate).left(maxChars);
        case CellTag::Time:
            return TimeText(IntAt(row, column)).left(maxChars);
        case CellTag::DateTime:
            return DateTimeText(IntAt(row, column)).left(maxChars);
        case CellTag::Bytes:
            return BytesText(RunAt(row, column), maxChars);
        case CellTag::Text:
        case CellTag::Decimal:
        case CellTag::Guid:
            break;
    }
    return LeadingText(RunAt(row, column), maxChars);
}

void ColumnStore::AppendValue(int column, const QVariant& value, DataType type) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
        case QMetaType::Nullptr:
            return AppendNull(column);
        case QMetaType::Bool:
            return AppendInt(column, value.toBool() ? -1 : 0);
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::UInt:
        case QMetaType::Long:
            return AppendInt(column, value.toLongLong());
        case QMetaType::Double:
        case QMetaType::Float:
            return AppendDouble(column, value.toDouble());
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            return AppendBytes(column, bytes.constData(), bytes.size());
        }
        case QMetaType::QDate:
            return AppendDate(column, DaysOfDate(value.toDate()));
        case QMetaType::QTime:
            return AppendTime(column, TicksOfTime(value.toTime()));
        case QMetaType::QDateTime:
            return AppendDateTime(column, TicksOfDateTime(value.toDateTime()));
        default:
            break;
    }
    const QByteArray utf8 = value.toString().toUtf8();
    const bool exact = value.typeId() == QMetaType::ULong || value.typeId() == QMetaType::ULongLong ||
                       type == DataType::Decimal || type == DataType::Numeric || type == DataType::Currency;
    AppendRun(column, exact ? CellTag::Decimal : CellTag::Text, utf8.constData(), utf8.size());
}

qint64 ColumnStore::MemoryUsage() const {
    std::size_t bytes = sizeof *this + columns.capacity() * sizeof(Column);
    for (const Column& column : columns) bytes += column.chunks.capacity() * sizeof(Chunk);
    return static_cast<qint64>(bytes) + held;
}

}  // namespace zephrin::ado
