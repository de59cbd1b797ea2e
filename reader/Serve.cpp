#include "reader/Serve.h"

#include "reader/Source.h"

#include <cerrno>
#include <new>
#include <unistd.h>

namespace zephrin::reader {

using namespace ado::files;

namespace {

/// The host has gone, or wants no more.
struct NobodyListens {};

void WriteAll(const QByteArray& bytes) {
    const char* at = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = write(STDOUT_FILENO, at, std::size_t(left));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) throw NobodyListens();
        at += written;
        left -= written;
    }
}

/// What is answered, record by record; short ones are sent together.
class Answer final : public RowSink {
 public:
    void Hello() {
        records.Begin(RecordKind::Hello);
        records.PutNumber(ProtocolVersion);
        records.End();
    }
    template <typename Record>
    void Put(const Record& record) {
        records.Put(record);
        if (records.Bytes().size() > 64 * 1024) Flush();
    }
    void End(qint64 count) {
        records.Begin(RecordKind::End);
        records.PutLong(count);
        records.End();
        Flush();
    }
    void Fail(const Failure& failure) {
        records.Put(failure);
        Flush();
    }

 protected:
    void Send(const QByteArray& bytes) override {
        Flush();
        WriteAll(bytes);
    }

 private:
    void Flush() {
        WriteAll(records.Bytes());
        records.Clear();
    }
    RecordWriter records;
};

QByteArray ReadExactly(qsizetype count) {
    QByteArray bytes;
    while (bytes.size() < count) {
        char part[4096];
        const ssize_t got =
            read(STDIN_FILENO, part, std::size_t(qMin<qsizetype>(count - bytes.size(), sizeof part)));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        bytes.append(part, got);
    }
    return bytes;
}

std::optional<Request> ReadRequest() {
    const QByteArray length = ReadExactly(sizeof(quint32));
    RecordReader head(length.constData(), length.size());
    const quint32 count = head.TakeNumber();
    if (!head.IsFinished() || count == 0 || count > LongestRecord) return std::nullopt;
    const QByteArray record = ReadExactly(qsizetype(count));
    RecordReader reader(record.constData(), record.size());
    if (RecordKind(reader.TakeByte()) != RecordKind::Request) return std::nullopt;
    return reader.TakeRequest();
}

void AnswerCatalog(Source& source, Answer& answer) {
    const std::vector<CatalogEntry> catalog = source.Catalog();
    for (const CatalogEntry& entry : catalog) {
        answer.Put(entry.Table);
        for (const ColumnInfo& column : entry.Columns) answer.Put(column);
    }
    answer.End(qint64(catalog.size()));
}

void AnswerColumns(Source& source, const QString& name, Answer& answer) {
    const QList<ColumnInfo> columns = source.Columns(name);
    answer.Put(TableInfo{name, TableKind::Table, {}});
    for (const ColumnInfo& column : columns) answer.Put(column);
}

void AnswerRequest(const Request& request, Answer& answer) {
    const std::unique_ptr<Source> source = OpenSource(request);
    if (request.Wanted == Operation::Catalog) return AnswerCatalog(*source, answer);
    for (const QString& name : request.Names) AnswerColumns(*source, name, answer);
    if (request.Wanted == Operation::Rows) {
        for (const QString& name : request.Names) source->Rows(name, answer);
        answer.Finish();
    }
    answer.End(answer.Count());
}

}  // namespace

int Serve() {
    const std::optional<Request> request = ReadRequest();
    try {
        Answer answer;
        answer.Hello();
        if (!request) return 2;
        try {
            AnswerRequest(*request, answer);
        } catch (const ReadError& error) {
            answer.Fail({error.Kind, error.Text});
        } catch (const std::bad_alloc&) {
            answer.Fail(
                {FailureKind::TooLarge, QStringLiteral("reading it takes more memory than is allowed")});
        }
        return 0;
    } catch (const NobodyListens&) {
        return 1;
    }
}

}  // namespace zephrin::reader
