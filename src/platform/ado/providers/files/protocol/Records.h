#pragma once

#include "platform/ado/providers/files/protocol/Protocol.h"

#include <QByteArray>

#include <cstring>

namespace zephrin::ado::files {

/// Puts one record together after the other in one buffer.
class RecordWriter {
 public:
    void Begin(RecordKind kind);
    /// Closes the record that was begun.
    void End();
    /// Forgets what was written since Begin().
    void Discard() { buffer.truncate(start); }

    void PutByte(quint8 value) { buffer.append(char(value)); }
    void PutNumber(quint32 value) { PutRaw(&value, sizeof value); }
    void PutLong(qint64 value) { PutRaw(&value, sizeof value); }
    void PutDouble(double value) { PutRaw(&value, sizeof value); }
    void PutBytes(const char* bytes, qsizetype count);
    void PutText(const QString& text);
    /// Room for `count` bytes that the caller fills.
    char* Grow(qsizetype count);
    void Shrink(qsizetype count) { buffer.chop(count); }
    /// Writes a number over what stands at `offset` of Bytes().
    void PatchNumber(qsizetype offset, quint32 value) {
        std::memcpy(buffer.data() + offset, &value, sizeof value);
    }

    void Put(const Request& request);
    void Put(const TableInfo& table);
    void Put(const ColumnInfo& column);
    void Put(const Failure& failure);

    /// Bytes of the record that is being written.
    qsizetype Written() const { return buffer.size() - start; }
    const QByteArray& Bytes() const { return buffer; }
    void Clear() { buffer.resize(0); }

 private:
    void PutRaw(const void* bytes, qsizetype count) { buffer.append(static_cast<const char*>(bytes), count); }

    QByteArray buffer;
    qsizetype start = 0;
};

/// Takes one record apart. Each Take answers nothing where the record is too short for it or holds what can't
/// be, and so does every one after it.
class RecordReader {
 public:
    RecordReader(const char* bytes, qsizetype count) : at(bytes), end(bytes + count) {}

    bool IsSound() const { return sound; }
    /// Whether all was taken and nothing was missing.
    bool IsFinished() const { return sound && at == end; }

    quint8 TakeByte();
    quint32 TakeNumber();
    qint64 TakeLong();
    double TakeDouble();
    /// Bytes behind their length, which stay in the record's buffer.
    QByteArrayView TakeBytes();
    QString TakeText();

    std::optional<Request> TakeRequest();
    std::optional<TableInfo> TakeTable();
    std::optional<ColumnInfo> TakeColumn();
    std::optional<Failure> TakeFailure();

 private:
    template <typename Value>
    Value TakeRaw() {
        Value value{};
        if (!Has(qsizetype(sizeof value))) return value;
        std::memcpy(&value, at, sizeof value);
        at += sizeof value;
        return value;
    }
    bool Has(qsizetype count);

    const char* at;
    const char* end;
    bool sound = true;
};

}  // namespace zephrin::ado::files
