#include "reader/access/TableDefinition.h"

#include "reader/access/TextDecoder.h"

#include <algorithm>

namespace zephrin::reader::access {

namespace {

constexpr quint8 DefinitionPage = 2;
constexpr int MostPages = 1000;
constexpr int MostColumns = 1024;

constexpr quint8 FixedFlag = 0x01;
constexpr quint8 CountsItselfFlag = 0x04;
constexpr quint8 CalculatedFlags = 0xc0;

/// Where the parts of a definition stand, which differs between the oldest format and all others.
struct Layout {
    int RowCount;
    int VariableCount;
    int ColumnCount;
    int IndexCount;
    int UsageMap;
    int Columns;
    int IndexSize;
    int ColumnSize;
    // Within a column.
    int Number;
    int Index;
    int Precision;
    int CodePage;  ///< -1: none
    int Flags;
    int MoreFlags;  ///< -1: none
    int Offset;
    int Length;
    int NameLength;
};
constexpr Layout Oldest{12, 23, 25, 31, 35, 43, 8, 18, 1, 3, 11, 11, 13, -1, 14, 16, 1};
constexpr Layout Newer{16, 43, 45, 51, 55, 63, 12, 25, 5, 7, 11, -1, 15, 16, 21, 23, 2};

/// All pages of the definition in one piece.
QByteArray Gather(PageFile& file, quint32 number) {
    QByteArray all;
    for (int count = 0; number != 0; ++count) {
        const Span page = file.Page(number);
        if (page.Byte(0) != DefinitionPage || count == MostPages)
            ThrowDamaged(QStringLiteral("page %1 defines no table").arg(number));
        const int from = count == 0 ? 0 : 8;
        all.append(reinterpret_cast<const char*>(page.Data) + from, page.Size - from);
        number = page.Long(4);
    }
    return all;
}

StoredColumn ReadColumn(const Span& entry, const Layout& layout, int codePage) {
    StoredColumn column;
    column.Type = StoredType(entry.Byte(0));
    column.Number = entry.Short(layout.Number);
    column.Index = entry.Short(layout.Index);
    column.Precision = entry.Byte(layout.Precision);
    column.Scale = entry.Byte(layout.Precision + 1);
    column.ComplexId = entry.Long(layout.Precision);
    column.IsFixed = (entry.Byte(layout.Flags) & FixedFlag) != 0;
    column.CountsItself = (entry.Byte(layout.Flags) & CountsItselfFlag) != 0;
    column.IsCalculated =
        layout.MoreFlags >= 0 && (entry.Byte(layout.MoreFlags) & CalculatedFlags) == CalculatedFlags;
    column.Offset = entry.Short(layout.Offset);
    column.Length = entry.Short(layout.Length);
    if (layout.CodePage >= 0) {
        const int own = entry.Short(layout.CodePage);
        const bool isText = column.Type == StoredType::Text || column.Type == StoredType::Memo;
        column.CodePage = isText && own != 0 ? own : codePage;
    }
    return column;
}

/// The pages that a bit is set for.
void AddPages(const Span& bits, quint32 first, quint32 count, std::vector<quint32>& into) {
    for (int byte = 0; byte < bits.Size; ++byte) {
        for (int bit = 0; bits.Data[byte] >> bit != 0; ++bit)
            if (const quint32 page = first + quint32(byte) * 8 + quint32(bit);
                (bits.Data[byte] >> bit & 1) != 0 && page < count)
                into.push_back(page);
    }
}

/// A usage map is one stretch of bits, or a list of pages that are full of them.
std::vector<quint32> ReadUsageMap(PageFile& file, RowPlace place) {
    std::vector<quint32> pages;
    const Span stored = file.Row(place);
    const std::vector<uchar> copy(stored.Data, stored.Data + stored.Size);
    const Span map{copy.data(), int(copy.size())};
    if (map.Byte(0) == 0) {
        AddPages(map.Part(5, map.Size - 5), map.Long(1), file.PageCount(), pages);
        return pages;
    }
    if (map.Byte(0) != 1) ThrowDamaged(QStringLiteral("a usage map of an unknown kind"));
    const auto perPage = quint32(file.PageSize() - 4) * 8;
    for (quint32 part = 0; int(part) * 4 + 5 <= map.Size; ++part) {
        const quint32 number = map.Long(int(part) * 4 + 1);
        if (number == 0) continue;
        const Span page = file.Page(number);
        AddPages(page.Part(4, page.Size - 4), part * perPage, file.PageCount(), pages);
    }
    return pages;
}

}  // namespace

TableDefinition ReadDefinition(PageFile& file, quint32 page) {
    const Layout& layout = file.IsOldest() ? Oldest : Newer;
    const QByteArray gathered = Gather(file, page);
    const Span all{reinterpret_cast<const uchar*>(gathered.constData()), int(gathered.size())};
    TableDefinition table;
    table.Page = page;
    table.RowCount = all.Long(layout.RowCount);
    table.HasVariable = all.Short(layout.VariableCount) > 0;
    const int count = all.Short(layout.ColumnCount);
    const quint32 indexes = all.Long(layout.IndexCount);
    if (count > MostColumns || indexes > quint32(all.Size))
        ThrowDamaged(QStringLiteral("page %1 defines a table that can't be").arg(page));

    int at = layout.Columns + int(indexes) * layout.IndexSize;
    for (int column = 0; column < count; ++column, at += layout.ColumnSize)
        table.Columns.append(ReadColumn(all.Part(at, layout.ColumnSize), layout, file.CodePage()));
    TextDecoder names(file.IsOldest() ? file.CodePage() : 0);
    for (StoredColumn& column : table.Columns) {
        const int length = layout.NameLength == 1 ? all.Byte(at) : all.Short(at);
        column.Name = QString::fromUtf8(names.Decoded(all.Part(at + layout.NameLength, length)));
        at += layout.NameLength + length;
        if (column.Name.isEmpty())
            ThrowDamaged(QStringLiteral("page %1 has a column without a name").arg(page));
    }
    std::sort(table.Columns.begin(), table.Columns.end(),
              [](const StoredColumn& one, const StoredColumn& other) { return one.Number < other.Number; });
    table.DataPages = ReadUsageMap(file, RowPlace(all.Long(layout.UsageMap)));
    return table;
}

}  // namespace zephrin::reader::access
