#pragma once

#include "platform/ado/providers/files/FileString.h"
#include "platform/ado/providers/files/ReaderProcess.h"
#include "platform/ado/providers/files/protocol/Records.h"

#include <functional>

namespace zephrin::ado::files {

/// Called again and again while something is waited for; throws ado::Error where it is not to be waited for
/// any longer.
using Patience = std::function<void()>;

/// Thrown where a sheet is wider than it says of itself: it has to be asked for again, and measured.
struct SheetIsWider {};

/// Thrown where a file has no table of the name that was asked for.
struct NoSuchTable {};

/// A request to the reader and its answer, record by record. Whatever goes wrong is an ado::Error that names
/// the file.
class Conversation {
 public:
    Conversation(const Request& request, Patience patience);

    struct Record {
        RecordKind Kind;
        RecordReader Content;
    };
    /// The next record, which holds until the one behind it; nothing at the end of the answer.
    std::optional<Record> Next();

    /// The answer is not what it should be.
    [[noreturn]] void ThrowUnexpected() const;

 private:
    bool Receive();
    [[noreturn]] void ThrowFailure(RecordReader content) const;
    [[noreturn]] void ThrowCut();

    QString path;
    Patience patience;
    ReaderProcess process;
    QByteArray buffer;
    qsizetype begin = 0;
    qsizetype end = 0;
    bool greeted = false;
};

/// The catalogue of a file, with the columns that came along.
struct FileTable {
    TableInfo Table;
    QList<ColumnInfo> Columns;
};

/// Asks for tables and their columns, and takes the whole answer.
QList<FileTable> AskForTables(const Request& request, const Patience& patience);

}  // namespace zephrin::ado::files
