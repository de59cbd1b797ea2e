#include "reader/access/PageFile.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>

namespace zephrin::reader::access {

using ado::files::FailureKind;

namespace {

constexpr std::size_t KeptPages = 64;
constexpr int RowCountOldest = 8;
constexpr int RowCount = 12;
constexpr quint16 OffsetMask = 0x1fff;
constexpr quint16 MovedFlag = 0x4000;
constexpr quint16 DeletedFlag = 0x8000;
/// In the first page, behind what the simple encoding covers: how long the description of an encryption is.
constexpr int EncryptionInfo = 0x299;

/// Looks at the head of the file, so that a refusal can say why.
void CheckHead(QFile& file) {
    const QByteArray head = file.read(0x300);
    if (head.isEmpty()) throw ReadError{FailureKind::WrongKind, QStringLiteral("it is empty")};
    const QByteArray name = head.mid(4, 15);
    if (name != QByteArrayView("Standard Jet DB") && name != QByteArrayView("Standard ACE DB"))
        throw ReadError{FailureKind::WrongKind, QStringLiteral("it is not an Access database")};
    const int version = head.size() > 0x14 ? uchar(head[0x14]) : 255;
    if (version > MDB_VER_ACCDB_2019)
        throw ReadError{FailureKind::Unsupported,
                        QStringLiteral("it has a format of Access that is newer than what can be read (%1)")
                            .arg(version)};
    if (version >= MDB_VER_ACCDB_2007 && head.size() > EncryptionInfo + 1 &&
        (head[EncryptionInfo] != 0 || head[EncryptionInfo + 1] != 0))
        throw ReadError{
            FailureKind::Encrypted,
            QStringLiteral("it is encrypted with a password, and encrypted databases can't be read")};
}

}  // namespace

PageFile::PageFile(const QString& path, const QString&) : kept(KeptPages) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw ReadError{FailureKind::Unreadable, file.errorString()};
    CheckHead(file);
    handle.reset(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    if (!handle) throw ReadError{FailureKind::Damaged, QStringLiteral("its first page is damaged")};
    pages = quint32(qMin<qint64>(file.size() / PageSize(), 0xffffff));
}

QHash<QString, int> PageFile::ResultTypes(QByteArray properties) const {
    QHash<QString, int> types;
    if (properties.size() < 4) return types;
    GPtrArray* const blocks =
        mdb_kkd_to_props(handle.get(), properties.data(), std::size_t(properties.size()));
    if (!blocks) return types;
    for (guint index = 0; index < blocks->len; ++index) {
        auto* const block = static_cast<MdbProperties*>(g_ptr_array_index(blocks, index));
        if (block && block->name && block->hash)
            if (const auto* type = static_cast<const char*>(g_hash_table_lookup(block->hash, "ResultType")))
                types.insert(QString::fromUtf8(block->name), std::atoi(type));
        mdb_free_props(block);
    }
    g_ptr_array_free(blocks, TRUE);
    return types;
}

Span PageFile::Page(quint32 number) {
    Kept& slot = kept[number % KeptPages];
    if (slot.Number != number) {
        slot.Number = ~0u;
        if (number >= pages || mdb_read_pg(handle.get(), number) != handle->fmt->pg_size)
            ThrowDamaged(QStringLiteral("page %1 is not there").arg(number));
        std::memcpy(slot.Bytes.data(), handle->pg_buf, std::size_t(PageSize()));
        slot.Number = number;
    }
    return {slot.Bytes.data(), PageSize()};
}

int PageFile::RowsOf(const Span& page) const {
    return page.Short(IsOldest() ? RowCountOldest : RowCount);
}

PageFile::Entry PageFile::EntryOf(const Span& page, int row) const {
    const int table = (IsOldest() ? RowCountOldest : RowCount) + 2;
    const quint16 entry = page.Short(table + 2 * row);
    const int from = entry & OffsetMask;
    const int end = row == 0 ? PageSize() : page.Short(table + 2 * (row - 1)) & OffsetMask;
    return {page.Part(from, end - from), (entry & MovedFlag) != 0, (entry & DeletedFlag) != 0};
}

Span PageFile::Row(RowPlace place) {
    const Span page = Page(place.Page);
    if (place.Row >= RowsOf(page))
        ThrowDamaged(QStringLiteral("a row of page %1 is not there").arg(place.Page));
    return EntryOf(page, place.Row).Bytes;
}

}  // namespace zephrin::reader::access
