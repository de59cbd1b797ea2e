#include "reader/RowSink.h"

namespace zephrin::reader {

using ado::files::RecordKind;
using ado::files::ValueTag;

namespace {

/// Large enough that a record costs nothing beside its rows, small enough that both sides work at the same
/// time.
constexpr qsizetype GoodSize = 128 * 1024;

void CheckLength(qsizetype bytes) {
    if (bytes > qsizetype(ado::files::LongestValue))
        throw ReadError{
            ado::files::FailureKind::TooLarge,
            QStringLiteral("it holds a value of more than %1 megabytes, which is more than can be taken over")
                .arg(ado::files::LongestValue >> 20)};
}

}  // namespace

void RowSink::BeginRow() {
    if (waiting > 0) return;
    records.Begin(RecordKind::Rows);
    countAt = records.Bytes().size();
    records.PutNumber(0);
}

void RowSink::Run(ValueTag tag, const char* bytes, qsizetype count) {
    CheckLength(count);
    records.PutByte(quint8(tag));
    records.PutBytes(bytes, count);
}

char* RowSink::BeginText(qsizetype most) {
    CheckLength(most);
    char* const room = records.Grow(1 + qsizetype(sizeof(quint32)) + most);
    *room = char(ValueTag::Text);
    return room + 1 + sizeof(quint32);
}

void RowSink::EndText(qsizetype most, qsizetype bytes) {
    records.Shrink(most - bytes);
    records.PatchNumber(records.Bytes().size() - bytes - qsizetype(sizeof(quint32)), quint32(bytes));
}

void RowSink::EndRow() {
    ++rows;
    ++waiting;
    if (records.Written() >= GoodSize) PassOn();
}

void RowSink::PassOn() {
    if (waiting == 0) return;
    records.PatchNumber(countAt, waiting);
    records.End();
    waiting = 0;
    Send(records.Bytes());
    records.Clear();
}

}  // namespace zephrin::reader
