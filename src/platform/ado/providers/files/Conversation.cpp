#include "platform/ado/providers/files/Conversation.h"

#include "platform/ado/providers/files/Failures.h"

namespace zephrin::ado::files {

namespace {

constexpr qsizetype FirstRoom = 256 * 1024;
constexpr int LookEvery = 50;
/// No file has as many, and a host that took them would be at its end.
constexpr qsizetype MostTables = 50'000;
constexpr qsizetype MostColumns = 2'000'000;

QString NeededReader() {
    const QString reader = FindReader();
    if (reader.isEmpty())
        throw FileError(
            QStringLiteral(
                "Access and Excel files are read by the program zephrin-file-reader, which is not installed. "
                "The package zephrin-file-reader brings it."),
            ErrorNumber::ProviderNotFound);
    return reader;
}

QByteArray Bytes(const Request& request) {
    RecordWriter writer;
    writer.Put(request);
    return writer.Bytes();
}

QString Unreadable(const QString& path, const QString& why) {
    return QStringLiteral("The file '%1' can't be read: %2.").arg(path, why);
}

}  // namespace

Conversation::Conversation(const Request& request, Patience ours)
    : path(request.Path),
      patience(std::move(ours)),
      process(NeededReader(), Bytes(request)),
      buffer(FirstRoom, Qt::Uninitialized) {}

/// Takes in what has come; false at the end.
bool Conversation::Receive() {
    if (begin > 0 && begin == end) begin = end = 0;
    if (end == buffer.size()) {
        if (begin > 0) {
            std::memmove(buffer.data(), buffer.constData() + begin, size_t(end - begin));
            end -= begin;
            begin = 0;
        } else {
            buffer.resize(buffer.size() * 2);
        }
    }
    for (;;) {
        qsizetype count = 0;
        switch (process.Read(buffer.data() + end, buffer.size() - end, LookEvery, count)) {
            case ReaderProcess::Outcome::Bytes:
                end += count;
                patience();
                return true;
            case ReaderProcess::Outcome::End:
                return false;
            case ReaderProcess::Outcome::Nothing:
                patience();
        }
    }
}

std::optional<Conversation::Record> Conversation::Next() {
    constexpr qsizetype head = sizeof(quint32);
    for (;;) {
        if (end - begin >= head) {
            const quint32 length = RecordReader(buffer.constData() + begin, head).TakeNumber();
            if (length == 0 || length > LongestRecord) ThrowUnexpected();
            if (end - begin >= head + qsizetype(length)) {
                RecordReader content(buffer.constData() + begin + head, qsizetype(length));
                begin += head + qsizetype(length);
                const auto kind = RecordKind(content.TakeByte());
                if (kind == RecordKind::Hello) {
                    if (greeted || content.TakeNumber() != ProtocolVersion)
                        throw FileError(QStringLiteral(
                            "The program zephrin-file-reader is of another version than Zephrin. "
                            "Install both of the same version."));
                    greeted = true;
                    continue;
                }
                if (!greeted) ThrowUnexpected();
                if (kind == RecordKind::Failed) ThrowFailure(content);
                if (kind == RecordKind::End) return std::nullopt;
                return Record{kind, content};
            }
        }
        if (!Receive()) ThrowCut();
    }
}

void Conversation::ThrowUnexpected() const {
    throw FileError(Unreadable(path, QStringLiteral("the reader answered what can't be")));
}

void Conversation::ThrowCut() {
    const QString how = process.HowItEnded();
    throw FileError(
        Unreadable(path, how.isEmpty() ? QStringLiteral("the reader stopped in the middle of it") : how));
}

void Conversation::ThrowFailure(RecordReader content) const {
    const std::optional<Failure> failure = content.TakeFailure();
    if (!failure) ThrowUnexpected();
    switch (failure->Kind) {
        case FailureKind::Wider:
            throw SheetIsWider();
        case FailureKind::NoTable:
            throw NoSuchTable();
        case FailureKind::LinkedTable:
            throw FileError(
                QStringLiteral(
                    "The table is only linked here, to %1. Links are not followed: open the file or "
                    "database itself.")
                    .arg(failure->Text));
        default:
            throw FileError(Unreadable(path, failure->Text));
    }
}

QList<FileTable> AskForTables(const Request& request, const Patience& patience) {
    QList<FileTable> tables;
    qsizetype columns = 0;
    Conversation conversation(request, patience);
    while (std::optional<Conversation::Record> record = conversation.Next()) {
        if (record->Kind == RecordKind::Table && tables.size() < MostTables) {
            const std::optional<TableInfo> table = record->Content.TakeTable();
            if (!table) conversation.ThrowUnexpected();
            tables.append({*table, {}});
        } else if (record->Kind == RecordKind::Column && !tables.isEmpty() && ++columns < MostColumns) {
            const std::optional<ColumnInfo> column = record->Content.TakeColumn();
            if (!column) conversation.ThrowUnexpected();
            tables.last().Columns.append(*column);
        } else {
            conversation.ThrowUnexpected();
        }
    }
    return tables;
}

}  // namespace zephrin::ado::files
