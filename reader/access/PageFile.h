#pragma once

#include "reader/ReadError.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <memory>
#include <vector>

// The library's header includes this one inside its own extern "C".
#include <glib.h>
#include <mdbtools.h>

namespace zephrin::reader::access {

/// A row of a page, or the whole page: bytes that nobody reads beyond.
struct Span {
    const uchar* Data = nullptr;
    int Size = 0;

    /// Throws where the bytes aren't there.
    Span Part(int from, int count) const {
        if (from < 0 || count < 0 || from > Size || count > Size - from)
            ThrowDamaged(QStringLiteral("an entry that reaches beyond its page"));
        return {Data + from, count};
    }
    quint8 Byte(int at) const { return *Part(at, 1).Data; }
    quint16 Short(int at) const {
        const uchar* p = Part(at, 2).Data;
        return quint16(p[0] | p[1] << 8);
    }
    quint32 Long(int at) const {
        const uchar* p = Part(at, 4).Data;
        return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
    }
};

/// Where a row stands: three bytes of page above one of row, as the file writes it.
struct RowPlace {
    explicit RowPlace(quint32 packed) : Page(packed >> 8), Row(int(packed & 0xff)) {}
    quint32 Page;
    int Row;
};

/// The pages of a database file. The library opens it, knows its version, and takes away its simple encoding.
class PageFile {
 public:
    /// Throws ReadError for what isn't such a file or can't be read.
    PageFile(const QString& path, const QString& password);

    bool IsOldest() const { return handle->f->jet_version == MDB_VER_JET3; }
    int PageSize() const { return int(handle->fmt->pg_size); }
    quint32 PageCount() const { return pages; }
    /// The code page of texts where a column names none; only the oldest format has them.
    int CodePage() const { return handle->f->code_page; }

    /// Of each column that says so among the properties of its table, of which type its calculated values
    /// are.
    QHash<QString, int> ResultTypes(QByteArray properties) const;

    /// A page. The bytes stay until one of the next calls.
    Span Page(quint32 number);
    /// The bytes of a row wherever it stands, deleted or not.
    Span Row(RowPlace place);
    /// How many rows a data page says that it has.
    int RowsOf(const Span& page) const;
    /// Where a row of a data page begins and ends, and the two flags of its entry.
    struct Entry {
        Span Bytes;
        bool IsMoved = false;  ///< Bytes are the place where the row is
        bool IsDeleted = false;
    };
    Entry EntryOf(const Span& page, int row) const;

 private:
    struct Close {
        void operator()(MdbHandle* open) const { mdb_close(open); }
    };
    struct Kept {
        quint32 Number = ~0u;
        std::array<uchar, MDB_PGSIZE> Bytes;
    };

    std::unique_ptr<MdbHandle, Close> handle;
    quint32 pages = 0;
    std::vector<Kept> kept;
};

}  // namespace zephrin::reader::access
