#include "reader/access/LongValues.h"

namespace zephrin::reader::access {

namespace {

constexpr int HeadSize = 12;
constexpr quint32 LengthMask = 0x3fffffff;
constexpr quint32 InCellFlag = 0x80000000;
constexpr quint32 InOneRowFlag = 0x40000000;

}  // namespace

Span LongValues::Read(const Span& cell) {
    if (cell.Size < HeadSize) ThrowDamaged(QStringLiteral("a long value without its head"));
    const quint32 head = cell.Long(0);
    const quint32 length = head & LengthMask;
    if ((head & InCellFlag) != 0)
        return cell.Part(HeadSize, int(std::min(length, quint32(cell.Size - HeadSize))));
    if (length > ado::files::LongestValue)
        throw ReadError{
            ado::files::FailureKind::TooLarge,
            QStringLiteral("it holds a value of more than %1 megabytes, which is more than can be taken over")
                .arg(ado::files::LongestValue >> 20)};
    bytes.resize(0);
    quint32 place = cell.Long(4);
    if ((head & InOneRowFlag) != 0) {
        const Span row = file.Row(RowPlace(place));
        bytes.append(reinterpret_cast<const char*>(row.Data), std::min(row.Size, int(length)));
    } else {
        // Each row of a chain brings some of it, so a ring of rows ends, too.
        while (place != 0 && quint32(bytes.size()) < length) {
            const Span row = file.Row(RowPlace(place));
            if (row.Size <= 4) ThrowDamaged(QStringLiteral("a long value that is cut"));
            bytes.append(reinterpret_cast<const char*>(row.Data) + 4, row.Size - 4);
            place = row.Long(0);
        }
        if (quint32(bytes.size()) > length) bytes.truncate(qsizetype(length));
    }
    if (quint32(bytes.size()) < length) ThrowDamaged(QStringLiteral("a long value that is cut"));
    return {reinterpret_cast<const uchar*>(bytes.constData()), int(bytes.size())};
}

}  // namespace zephrin::reader::access
