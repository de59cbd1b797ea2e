#pragma once

#include "platform/ado/providers/files/protocol/Records.h"
#include "reader/ReadError.h"

namespace zephrin::reader {

/// Takes the rows of a table, value by value, and passes them on in records of a good size.
///
///     sink.BeginRow(); sink.Int(1); sink.Null(); sink.EndRow(); ... sink.Finish();
class RowSink {
 public:
    virtual ~RowSink() = default;

    void BeginRow();
    void Null() { records.PutByte(quint8(ado::files::ValueTag::Null)); }
    void Int(qint64 value) {
        records.PutByte(quint8(ado::files::ValueTag::Int));
        records.PutLong(value);
    }
    void Double(double value) {
        records.PutByte(quint8(ado::files::ValueTag::Double));
        records.PutDouble(value);
    }
    void Money(qint64 tenThousandths) {
        records.PutByte(quint8(ado::files::ValueTag::Money));
        records.PutLong(tenThousandths);
    }
    void Decimal(const QByteArray& digits) {
        Run(ado::files::ValueTag::Decimal, digits.constData(), digits.size());
    }
    void Text(const char* utf8, qsizetype bytes) { Run(ado::files::ValueTag::Text, utf8, bytes); }
    void Text(const QByteArray& utf8) { Text(utf8.constData(), utf8.size()); }
    void Bytes(const char* bytes, qsizetype count) { Run(ado::files::ValueTag::Bytes, bytes, count); }
    /// A text of at most `most` bytes that the caller writes where it is told, and then says how long it
    /// became.
    char* BeginText(qsizetype most);
    void EndText(qsizetype most, qsizetype bytes);
    void EndRow();

    /// Passes on what still waits. Once, behind the last row.
    void Finish() { PassOn(); }
    qint64 Count() const { return rows; }

 protected:
    /// Whole records, to be sent or dropped.
    virtual void Send(const QByteArray& bytes) = 0;

 private:
    void Run(ado::files::ValueTag tag, const char* bytes, qsizetype count);
    void PassOn();

    ado::files::RecordWriter records;
    qint64 rows = 0;
    quint32 waiting = 0;
    qsizetype countAt = 0;
};

}  // namespace zephrin::reader
