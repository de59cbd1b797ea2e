#pragma once

#include "reader/RowSink.h"
#include "reader/Source.h"
#include "reader/access/LongValues.h"
#include "reader/access/RowCursor.h"
#include "reader/access/TextDecoder.h"

#include <QHash>

#include <map>

namespace zephrin::reader::access {

/// What a column is, as the drivers for such files tell it.
ColumnInfo InfoOf(const StoredColumn& column);

/// Texts that stand for the numbers in a column of attachments or of several values.
using ComplexTexts = QHash<quint32, QByteArray>;

/// Writes cells to a sink as the values that they are, and answers what the reader itself wants of its system
/// tables.
class ValueWriter {
 public:
    explicit ValueWriter(PageFile& of) : file(of), longValues(of) {}

    /// `complex` is for a column of that type.
    void Write(const Cell& cell, const StoredColumn& column, const ComplexTexts* complex, RowSink& into);

    qint64 WholeNumber(const Cell& cell);
    /// A value of any type as people read it; empty where it can't be read.
    QByteArray Readable(const Cell& cell, const StoredColumn& column);
    QByteArray LongBytes(const Cell& cell);
    /// A text of any kind, long or not.
    QByteArray Text(const Cell& cell, const StoredColumn& column);

 private:
    void WriteText(const Span& text, const StoredColumn& column, RowSink& into);
    void WriteDecimal(const Span& bytes, const StoredColumn& column, RowSink& into);
    TextDecoder& DecoderOf(const StoredColumn& column);

    PageFile& file;
    LongValues longValues;
    std::map<int, TextDecoder> decoders;
};

}  // namespace zephrin::reader::access
