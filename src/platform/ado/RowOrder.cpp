#include "platform/ado/RowOrder.h"

#include "platform/ado/ColumnStore.h"
#include "platform/ado/DecimalDigits.h"
#include "platform/ado/TextOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <span>

namespace zephrin::ado {

namespace {

/// Kinds of values that are compared with their like only, in their ascending order.
enum class Kind : std::uint8_t { Null, Number, Moment, Time, Text, Bytes };
constexpr std::size_t KindCount = 6;

Kind KindOf(CellTag tag) {
    switch (tag) {
        case CellTag::Null:
            return Kind::Null;
        case CellTag::Int:
        case CellTag::Double:
        case CellTag::Decimal:
        case CellTag::Currency:
            return Kind::Number;
        case CellTag::Date:
        case CellTag::DateTime:
            return Kind::Moment;
        case CellTag::Time:
            return Kind::Time;
        case CellTag::Text:
        case CellTag::Guid:
            return Kind::Text;
        case CellTag::Bytes:
            break;
    }
    return Kind::Bytes;
}

/// A row on its way: what is compared lies beside its number, so that sorting walks through memory in order.
struct Entry {
    std::uint64_t Key;
    std::uint32_t Row;
    std::uint32_t Run;  ///< of texts and bytes: which of the level's prepared runs
};
using Entries = std::span<Entry>;

/// Texts and bytes of one level in the form in which they are compared, byte by byte.
struct PreparedRuns {
    std::vector<char> Bytes;
    std::vector<std::size_t> Ends;

    std::string_view At(std::uint32_t run) const {
        const std::size_t begin = run == 0 ? 0 : Ends[run - 1];
        return {Bytes.data() + begin, Ends[run] - begin};
    }
    void Clear() {
        Bytes.clear();
        Ends.clear();
    }
};

std::uint64_t KeyOfInt(std::int64_t value) {
    return static_cast<std::uint64_t>(value) ^ (std::uint64_t{1} << 63);
}

std::uint64_t KeyOfDouble(double value) {
    // Both zeros are one number.
    const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
    return bits >> 63 ? ~bits : bits | std::uint64_t{1} << 63;
}

std::uint64_t KeyOfDays(std::int64_t days) {
    // Days too far away for ticks are beyond every moment that has them.
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / TicksPerDay;
    return KeyOfInt(std::clamp(days, -most, most) * TicksPerDay);
}

constexpr std::size_t RunStep = 7;

/// Seven bytes of the run from `offset`, then how many of them it had: 8 where it goes on behind them.
std::uint64_t KeyOfRun(std::string_view run, std::size_t offset) {
    const std::size_t left = run.size() - offset;
    const std::size_t taken = std::min(left, RunStep);
    unsigned char bytes[8] = {};
    if (taken != 0) std::memcpy(bytes, run.data() + offset, taken);
    std::uint64_t key = 0;
    for (std::size_t index = 0; index < RunStep; ++index) key = key << 8 | bytes[index];
    return key << 8 | std::min<std::size_t>(left, RunStep + 1);
}

bool GoesOn(std::uint64_t key, bool descending) {
    return ((descending ? ~key : key) & 0xFF) == RunStep + 1;
}

bool ByKey(const Entry& a, const Entry& b) {
    return a.Key < b.Key;
}

/// A stable sort that costs nothing to begin: most runs of equal rows are short.
template <class Less>
void StableSort(Entries entries, Less less) {
    constexpr std::size_t few = 24;
    if (entries.size() > few) return std::stable_sort(entries.begin(), entries.end(), less);
    for (std::size_t next = 1; next < entries.size(); ++next) {
        const Entry moving = entries[next];
        std::size_t at = next;
        for (; at > 0 && less(moving, entries[at - 1]); --at) entries[at] = entries[at - 1];
        entries[at] = moving;
    }
}

/// Calls `then` with every run of more than one entry that `same` finds equal to its neighbour.
template <class Same, class Then>
void ForEachRun(Entries entries, Same same, Then then) {
    for (std::size_t begin = 0; begin < entries.size();) {
        std::size_t end = begin + 1;
        while (end < entries.size() && same(entries[end - 1], entries[end])) ++end;
        if (end - begin > 1) then(entries.subspan(begin, end - begin));
        begin = end;
    }
}

bool SameKey(const Entry& a, const Entry& b) {
    return a.Key == b.Key;
}

class Sorter {
 public:
    Sorter(const ColumnStore& rows, const std::vector<SortKey>& sortKeys)
        : store(rows), keys(sortKeys), runs(sortKeys.size()) {}

    void Sort(Entries entries, std::size_t level);

 private:
    void SortKind(Entries entries, std::size_t level, Kind kind);
    void SortNumbers(Entries entries, std::size_t level);
    void SortMixedNumbers(Entries entries, std::size_t level);
    void SortRuns(Entries entries, std::size_t level, Kind kind);
    void SortRunsFrom(Entries entries, std::size_t level, std::size_t offset);
    void Prepare(Entries entries, std::size_t level, Kind kind);
    double Approximate(std::uint32_t row, int column) const;
    DecimalDigits Exact(std::uint32_t row, int column) const;

    template <class KeyOf>
    void SortByKey(Entries entries, std::size_t level, KeyOf keyOf) {
        const bool descending = keys[level].Descending;
        for (Entry& entry : entries) entry.Key = descending ? ~keyOf(entry.Row) : keyOf(entry.Row);
        StableSort(entries, ByKey);
        ForEachRun(entries, SameKey, [&](Entries equal) { Sort(equal, level + 1); });
    }

    const ColumnStore& store;
    const std::vector<SortKey>& keys;
    std::vector<PreparedRuns> runs;
    TextKeyWriter textKeys;
};

void Sorter::Sort(Entries entries, std::size_t level) {
    if (level == keys.size() || entries.size() < 2) return;
    const int column = keys[level].Column;
    std::array<std::size_t, KindCount> counts{};
    for (const Entry& entry : entries)
        ++counts[static_cast<std::size_t>(KindOf(store.TagAt(entry.Row, column)))];
    if (std::find(counts.begin(), counts.end(), entries.size()) == counts.end()) {
        const bool descending = keys[level].Descending;
        for (Entry& entry : entries) {
            const auto kind = static_cast<std::uint64_t>(KindOf(store.TagAt(entry.Row, column)));
            entry.Key = descending ? KindCount - kind : kind;
        }
        StableSort(entries, ByKey);
    }
    std::size_t begin = 0;
    while (begin < entries.size()) {
        const Kind kind = KindOf(store.TagAt(entries[begin].Row, column));
        const std::size_t count = counts[static_cast<std::size_t>(kind)];
        SortKind(entries.subspan(begin, count), level, kind);
        begin += count;
    }
}

void Sorter::SortKind(Entries entries, std::size_t level, Kind kind) {
    const int column = keys[level].Column;
    switch (kind) {
        case Kind::Null:
            return Sort(entries, level + 1);
        case Kind::Number:
            return SortNumbers(entries, level);
        case Kind::Moment:
            return SortByKey(entries, level, [&](std::uint32_t row) {
                const std::int64_t value = store.IntAt(row, column);
                return store.TagAt(row, column) == CellTag::Date ? KeyOfDays(value) : KeyOfInt(value);
            });
        case Kind::Time:
            return SortByKey(entries, level,
                             [&](std::uint32_t row) { return KeyOfInt(store.IntAt(row, column)); });
        case Kind::Text:
        case Kind::Bytes:
            return SortRuns(entries, level, kind);
    }
}

void Sorter::SortNumbers(Entries entries, std::size_t level) {
    const int column = keys[level].Column;
    const CellTag tag = store.TagAt(entries.front().Row, column);
    const bool uniform = std::all_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        return store.TagAt(entry.Row, column) == tag;
    });
    if (!uniform || tag == CellTag::Decimal) return SortMixedNumbers(entries, level);
    if (tag == CellTag::Double)
        return SortByKey(entries, level,
                         [&](std::uint32_t row) { return KeyOfDouble(store.DoubleAt(row, column)); });
    if (keys[level].Type == DataType::Boolean)
        return SortByKey(entries, level,
                         [&](std::uint32_t row) { return std::uint64_t{store.IntAt(row, column) != 0}; });
    SortByKey(entries, level, [&](std::uint32_t row) { return KeyOfInt(store.IntAt(row, column)); });
}

/// Numbers of several kinds are ordered by the doubles next to them; those that share one are compared digit
/// by digit.
void Sorter::SortMixedNumbers(Entries entries, std::size_t level) {
    const int column = keys[level].Column;
    const bool descending = keys[level].Descending;
    for (Entry& entry : entries) {
        const std::uint64_t key = KeyOfDouble(Approximate(entry.Row, column));
        entry.Key = descending ? ~key : key;
    }
    StableSort(entries, ByKey);
    const auto compare = [&](const Entry& a, const Entry& b) {
        const int sign = Compare(Exact(a.Row, column), Exact(b.Row, column));
        return descending ? -sign : sign;
    };
    ForEachRun(entries, SameKey, [&](Entries close) {
        StableSort(close, [&](const Entry& a, const Entry& b) { return compare(a, b) < 0; });
        ForEachRun(
            close, [&](const Entry& a, const Entry& b) { return compare(a, b) == 0; },
            [&](Entries equal) { Sort(equal, level + 1); });
    });
}

double Sorter::Approximate(std::uint32_t row, int column) const {
    switch (store.TagAt(row, column)) {
        case CellTag::Int:
            return static_cast<double>(store.IntAt(row, column));
        case CellTag::Double:
            return store.DoubleAt(row, column);
        default:
            return Exact(row, column).ToDouble();
    }
}

DecimalDigits Sorter::Exact(std::uint32_t row, int column) const {
    switch (store.TagAt(row, column)) {
        case CellTag::Int:
            return DecimalDigits::OfInteger(store.IntAt(row, column), 0);
        case CellTag::Currency:
            return DecimalDigits::OfInteger(store.IntAt(row, column), 4);
        case CellTag::Double:
            return DecimalDigits::OfDouble(store.DoubleAt(row, column));
        default:
            return DecimalDigits::OfText(store.RunAt(row, column));
    }
}

void Sorter::SortRuns(Entries entries, std::size_t level, Kind kind) {
    Prepare(entries, level, kind);
    SortRunsFrom(entries, level, 0);
}

void Sorter::Prepare(Entries entries, std::size_t level, Kind kind) {
    PreparedRuns& prepared = runs[level];
    prepared.Clear();
    prepared.Ends.reserve(entries.size());
    for (Entry& entry : entries) {
        const std::string_view run = store.RunAt(entry.Row, keys[level].Column);
        entry.Run = static_cast<std::uint32_t>(prepared.Ends.size());
        if (kind == Kind::Text)
            textKeys.Append(run, prepared.Bytes);
        else
            prepared.Bytes.insert(prepared.Bytes.end(), run.begin(), run.end());
        prepared.Ends.push_back(prepared.Bytes.size());
    }
}

/// Sorts runs that agree in all bytes before `offset`: a few bytes at a time, then those that still agree by
/// the next.
void Sorter::SortRunsFrom(Entries entries, std::size_t level, std::size_t offset) {
    const PreparedRuns& prepared = runs[level];
    const bool descending = keys[level].Descending;
    // Long texts that begin alike are compared as a whole instead, or the steps would go as deep as they are
    // long.
    constexpr std::size_t deepest = 16 * RunStep;
    if (entries.size() <= 8 || offset >= deepest) {
        const auto rest = [&](const Entry& entry) { return prepared.At(entry.Run).substr(offset); };
        StableSort(entries, [&](const Entry& a, const Entry& b) {
            return descending ? rest(b) < rest(a) : rest(a) < rest(b);
        });
        return ForEachRun(
            entries, [&](const Entry& a, const Entry& b) { return rest(a) == rest(b); },
            [&](Entries equal) { Sort(equal, level + 1); });
    }
    for (Entry& entry : entries) {
        const std::uint64_t key = KeyOfRun(prepared.At(entry.Run), offset);
        entry.Key = descending ? ~key : key;
    }
    StableSort(entries, ByKey);
    ForEachRun(entries, SameKey, [&](Entries equal) {
        if (GoesOn(equal.front().Key, descending))
            SortRunsFrom(equal, level, offset + RunStep);
        else
            Sort(equal, level + 1);
    });
}

}  // namespace

std::vector<std::uint32_t> RowsInOrder(qint64 count) {
    std::vector<std::uint32_t> rows(static_cast<std::size_t>(count));
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

std::vector<std::uint32_t> SortedRows(const ColumnStore& store, std::vector<std::uint32_t> rows,
                                      const std::vector<SortKey>& keys) {
    std::vector<Entry> entries(rows.size());
    std::transform(rows.begin(), rows.end(), entries.begin(), [](std::uint32_t row) {
        return Entry{0, row, 0};
    });
    Sorter(store, keys).Sort(entries, 0);
    std::transform(entries.begin(), entries.end(), rows.begin(),
                   [](const Entry& entry) { return entry.Row; });
    return rows;
}

}  // namespace zephrin::ado
