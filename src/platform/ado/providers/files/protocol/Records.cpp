#include "platform/ado/providers/files/protocol/Records.h"

#include <QtEndian>

namespace zephrin::ado::files {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the records are written as the machine has its numbers");

namespace {

constexpr quint8 HasHeadsFlag = 1;
constexpr quint8 MixedAsTextFlag = 2;
constexpr quint8 MeasureSheetsFlag = 4;

/// No file has as many; a count beyond it is not worth a list.
constexpr quint32 MostNames = 100'000;

}  // namespace

void RecordWriter::Begin(RecordKind kind) {
    start = buffer.size();
    PutNumber(0);
    PutByte(quint8(kind));
}

void RecordWriter::End() {
    const auto length = quint32(Written() - qsizetype(sizeof(quint32)));
    std::memcpy(buffer.data() + start, &length, sizeof length);
    start = buffer.size();
}

void RecordWriter::PutBytes(const char* bytes, qsizetype count) {
    PutNumber(quint32(count));
    PutRaw(bytes, count);
}

void RecordWriter::PutText(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    PutBytes(utf8.constData(), utf8.size());
}

char* RecordWriter::Grow(qsizetype count) {
    const qsizetype from = buffer.size();
    if (buffer.capacity() < from + count) buffer.reserve(qMax(from + count, buffer.capacity() * 2));
    buffer.resize(from + count);
    return buffer.data() + from;
}

void RecordWriter::Put(const Request& request) {
    Begin(RecordKind::Request);
    PutNumber(ProtocolVersion);
    PutByte(quint8(request.Wanted));
    PutText(request.Path);
    PutByte(quint8(request.Kind));
    PutText(request.Password);
    PutByte(quint8((request.HasHeads ? HasHeadsFlag : 0) | (request.MixedAsText ? MixedAsTextFlag : 0) |
                   (request.MeasureSheets ? MeasureSheetsFlag : 0)));
    PutNumber(quint32(request.Names.size()));
    for (const QString& name : request.Names) PutText(name);
    End();
}

void RecordWriter::Put(const TableInfo& table) {
    Begin(RecordKind::Table);
    PutText(table.Name);
    PutByte(quint8(table.Kind));
    PutText(table.Text);
    End();
}

void RecordWriter::Put(const ColumnInfo& column) {
    Begin(RecordKind::Column);
    PutText(column.Name);
    PutByte(quint8(column.Kind));
    PutNumber(quint32(column.Size));
    PutByte(quint8(column.Precision));
    PutByte(quint8(column.Scale));
    PutByte(column.CountsItself ? 1 : 0);
    End();
}

void RecordWriter::Put(const Failure& failure) {
    Begin(RecordKind::Failed);
    PutByte(quint8(failure.Kind));
    PutText(failure.Text);
    End();
}

bool RecordReader::Has(qsizetype count) {
    if (sound && end - at >= count) return true;
    sound = false;
    at = end;
    return false;
}

quint8 RecordReader::TakeByte() {
    return TakeRaw<quint8>();
}
quint32 RecordReader::TakeNumber() {
    return TakeRaw<quint32>();
}
qint64 RecordReader::TakeLong() {
    return TakeRaw<qint64>();
}
double RecordReader::TakeDouble() {
    return TakeRaw<double>();
}

QByteArrayView RecordReader::TakeBytes() {
    const quint32 count = TakeNumber();
    if (!Has(qsizetype(count))) return {};
    const QByteArrayView bytes(at, qsizetype(count));
    at += count;
    return bytes;
}

QString RecordReader::TakeText() {
    return QString::fromUtf8(TakeBytes());
}

std::optional<Request> RecordReader::TakeRequest() {
    Request request;
    if (TakeNumber() != ProtocolVersion) return std::nullopt;
    request.Wanted = Operation(TakeByte());
    request.Path = TakeText();
    request.Kind = FileKind(TakeByte());
    request.Password = TakeText();
    const quint8 flags = TakeByte();
    request.HasHeads = flags & HasHeadsFlag;
    request.MixedAsText = flags & MixedAsTextFlag;
    request.MeasureSheets = flags & MeasureSheetsFlag;
    const quint32 names = TakeNumber();
    if (names > MostNames || request.Wanted < Operation::Catalog || request.Wanted > Operation::Rows ||
        request.Kind > FileKind::Workbook)
        return std::nullopt;
    for (quint32 name = 0; name < names && sound; ++name) request.Names.append(TakeText());
    if (!IsFinished()) return std::nullopt;
    return request;
}

std::optional<TableInfo> RecordReader::TakeTable() {
    TableInfo table;
    table.Name = TakeText();
    table.Kind = TableKind(TakeByte());
    table.Text = TakeText();
    if (!IsFinished() || table.Kind > TableKind::Linked) return std::nullopt;
    return table;
}

std::optional<ColumnInfo> RecordReader::TakeColumn() {
    ColumnInfo column;
    column.Name = TakeText();
    column.Kind = ColumnKind(TakeByte());
    column.Size = int(TakeNumber() & 0x7fffffff);
    column.Precision = TakeByte();
    column.Scale = TakeByte();
    column.CountsItself = TakeByte() != 0;
    if (!IsFinished() || column.Kind > LastColumnKind) return std::nullopt;
    return column;
}

std::optional<Failure> RecordReader::TakeFailure() {
    Failure failure;
    failure.Kind = FailureKind(TakeByte());
    failure.Text = TakeText();
    if (!IsFinished() || failure.Kind > LastFailureKind) return std::nullopt;
    return failure;
}

}  // namespace zephrin::ado::files
