#include "platform/ado/providers/files/FileDatabase.h"

#include "platform/ado/MemoryCursor.h"
#include "platform/ado/providers/files/Declarations.h"
#include "platform/ado/providers/files/Failures.h"
#include "platform/ado/providers/files/RowBinder.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <sys/stat.h>

namespace zephrin::ado::files {

using namespace providers::sqlite;

namespace {

/// What stays free on the disk that the rows go to.
constexpr qint64 SpareBytes = 200 << 20;
constexpr qint64 PageBytes = 4096;
/// A query that reads a query that reads ... may not go on for ever.
constexpr int DeepestView = 20;

QString CacheFolderOf(const FileTarget& target) {
    if (!target.CacheFolder.isEmpty()) return target.CacheFolder;
    return qEnvironmentVariable("ZEPHRIN_CACHE_FOLDER", QDir::tempPath());
}

}  // namespace

FileStamp FileStamp::Of(const QString& path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec};
}

FileDatabase::FileDatabase(const FileTarget& target, const Patience& patience)
    : file(target), stamp(FileStamp::Of(target.Path)), folder(CacheFolderOf(target)) {
    const QFileInfo info(file.Path);
    if (stamp.Size < 0) throw FileError(QStringLiteral("Could not find file '%1'.").arg(file.Path));
    if (!info.isFile()) throw FileError(QStringLiteral("'%1' is not a file.").arg(file.Path));
    if (!info.isReadable()) throw FileError(QStringLiteral("The file '%1' may not be read.").arg(file.Path));
    for (const FileTable& table : AskForTables(RequestFor(Operation::Catalog, {}), patience)) {
        const QString key = table.Table.Name.toCaseFolded();
        if (tables.contains(key)) continue;
        tables.insert(key, Known{table});
        order << key;
    }
    CheckUnchanged();
    OpenEngine();
}

FileDatabase::Waiting::Waiting(FileDatabase& of, const Patience& patience,
                               const std::shared_ptr<Watch>& watch)
    : database(of) {
    if (database.waiting)
        throw FileError(
            QStringLiteral("The file '%1' is being read for another statement.").arg(database.file.Path),
            ErrorNumber::StillExecuting);
    database.waiting = patience;
    database.engine->WaitWith(watch);
}

Request FileDatabase::RequestFor(Operation operation, const Known& table) const {
    Request request;
    request.Wanted = operation;
    request.Path = QFileInfo(file.Path).absoluteFilePath();
    request.Kind = file.Kind;
    request.HasHeads = file.HasHeads;
    request.MixedAsText = file.MixedAsText;
    request.MeasureSheets = file.MeasureSheets;
    if (operation != Operation::Catalog) request.Names << table.Table.Table.Name;
    return request;
}

/// The engine's own file has no name as soon as it is open: nobody else finds it, and it goes with this
/// program.
void FileDatabase::OpenEngine() {
    QTemporaryFile room(QDir(folder).filePath(QStringLiteral("zephrin-XXXXXX")));
    if (!room.open())
        throw FileError(QStringLiteral("The rows of '%1' can't be kept in the folder '%2': %3.")
                            .arg(file.Path, folder, room.errorString()));
    room.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    OpenOptions options;
    options.Path = room.fileName();
    options.Speaks = file.Speaks;
    engine = std::make_unique<SqliteSession>(options, 0, std::make_shared<Watch>(), this);
    // Nothing of it outlives the program, so that nothing has to be safe from a sudden end.
    sqlite3_exec(engine->Engine(),
                 "PRAGMA page_size = 4096; PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;"
                 "PRAGMA locking_mode = EXCLUSIVE; PRAGMA cache_size = -16000; CREATE TABLE zx_any (x); DROP "
                 "TABLE zx_any",
                 nullptr, nullptr, nullptr);
}

void FileDatabase::CheckUnchanged() const {
    if (!IsCurrent()) throw FileChanged();
}

void FileDatabase::LookAround() const {
    if (waiting) waiting();
}

void FileDatabase::ReadColumns(Known& table) {
    if (!table.Table.Columns.isEmpty()) return;
    const QList<FileTable> answer =
        AskForTables(RequestFor(Operation::Describe, table), [this] { LookAround(); });
    if (answer.size() == 1) table.Table.Columns = answer.front().Columns;
    CheckUnchanged();
    if (table.Table.Columns.isEmpty())
        throw FileError(QStringLiteral("The table '%1' of the file '%2' has no columns.")
                            .arg(table.Table.Table.Name, file.Path));
}

void FileDatabase::Declare(const QString& name) {
    auto found = tables.find(name.toCaseFolded());
    if (found == tables.end()) found = FindArea(name);
    if (found == tables.end() || found->IsDeclared) return;
    if (found->Table.Table.Kind == TableKind::Query)
        DeclareView(*found);
    else
        DeclareTable(*found);
}

/// Parts of a sheet are tables that no catalogue lists: "Sheet1$A1:C9".
QHash<QString, FileDatabase::Known>::iterator FileDatabase::FindArea(const QString& name) {
    if (file.Kind != FileKind::Workbook || !name.contains(u'$')) return tables.end();
    Known area;
    area.Table.Table.Name = name;
    try {
        ReadColumns(area);
    } catch (const NoSuchTable&) {
        return tables.end();
    }
    return tables.insert(name.toCaseFolded(), area);
}

void FileDatabase::DeclareTable(Known& table) {
    ReadColumns(table);
    const QByteArray sql = TableDeclaration(table.Table.Table.Name, table.Table.Columns);
    const int code = sqlite3_exec(engine->Engine(), sql.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) ThrowEngine(code, table.Table.Table.Name);
    table.IsDeclared = true;
}

void FileDatabase::DeclareView(Known& view) {
    const auto isBeing = [](const Known& known) { return known.IsBeingDeclared; };
    if (view.IsBeingDeclared || std::count_if(tables.cbegin(), tables.cend(), isBeing) >= DeepestView) return;
    view.IsBeingDeclared = true;
    const FileTable definition = view.Table;
    const auto declared = [&](bool done) {
        Known& now = tables[definition.Table.Name.toCaseFolded()];
        now.IsBeingDeclared = false;
        now.IsDeclared = done;
    };
    try {
        engine->DefineView(definition.Table.Name, definition.Table.Text);
        declared(true);
    } catch (const Error&) {
        declared(false);
        throw;
    }
}

/// Whether a saved query is one that the dialect of this program runs.
bool FileDatabase::CanRun(Known& view) {
    try {
        if (!view.IsDeclared) DeclareView(view);
        return view.IsDeclared;
    } catch (const Error&) {
        return false;
    }
}

std::unique_ptr<Cursor> FileDatabase::Tables() {
    std::vector<MemoryCursor::Row> rows;
    for (const QString& key : std::as_const(order)) {
        Known& known = tables[key];
        const bool isView = known.Table.Table.Kind == TableKind::Query;
        if (isView && !CanRun(known)) continue;
        const bool isSystem = known.Table.Table.Kind == TableKind::System;
        rows.push_back({QVariant(), QVariant(), known.Table.Table.Name,
                        isView     ? QStringLiteral("VIEW")
                        : isSystem ? QStringLiteral("SYSTEM TABLE")
                                   : QStringLiteral("TABLE")});
    }
    std::sort(rows.begin(), rows.end(), [](const MemoryCursor::Row& one, const MemoryCursor::Row& other) {
        return one[2].toString().compare(other[2].toString(), Qt::CaseInsensitive) < 0;
    });
    return std::make_unique<MemoryCursor>(
        QList<Field>{{QStringLiteral("TABLE_CATALOG"), DataType::VarWChar, 128},
                     {QStringLiteral("TABLE_SCHEMA"), DataType::VarWChar, 128},
                     {QStringLiteral("TABLE_NAME"), DataType::VarWChar, 255},
                     {QStringLiteral("Table_Type"), DataType::VarWChar, 128}},
        std::move(rows));
}

std::unique_ptr<Cursor> FileDatabase::Columns(const QString& table) {
    Declare(table);
    return engine->Columns(table);
}

void FileDatabase::Fill(const QList<QString>& names, Deadline& deadline) {
    for (const QString& name : names) {
        const auto found = tables.find(name.toCaseFolded());
        if (found == tables.end() || found->IsFilled || found->Table.Table.Kind == TableKind::Query) continue;
        Import(*found, [&] {
            LookAround();
            if (deadline.HasPassed())
                throw FileError(
                    QStringLiteral(
                        "Timeout expired: reading the table '%1' of the file '%2' took longer than "
                        "%3 seconds and was stopped.")
                        .arg(name, file.Path)
                        .arg(deadline.Seconds()),
                    ErrorNumber::TimeoutExpired);
        });
    }
}

/// The engine's file may grow as far as the disk has room, but for what others need.
void FileDatabase::LeaveRoom() const {
    const qint64 free = QStorageInfo(folder).bytesAvailable();
    const qint64 pages = std::max<qint64>(free - SpareBytes, 0) / PageBytes + 16;
    sqlite3_exec(engine->Engine(),
                 "PRAGMA max_page_count = " + QByteArray::number(std::min<qint64>(pages, 0xfffffffe)),
                 nullptr, nullptr, nullptr);
}

void FileDatabase::Import(Known& table, const Patience& patience) {
    LeaveRoom();
    sqlite3* const database = engine->Engine();
    sqlite3_exec(database, "SAVEPOINT zx_import", nullptr, nullptr, nullptr);
    try {
        Conversation conversation(RequestFor(Operation::Rows, table), patience);
        ImportRows(table, conversation);
        CheckUnchanged();
    } catch (const NoSuchTable&) {
        sqlite3_exec(database, "ROLLBACK TO zx_import; RELEASE zx_import", nullptr, nullptr, nullptr);
        throw FileChanged();
    } catch (...) {
        sqlite3_exec(database, "ROLLBACK TO zx_import; RELEASE zx_import", nullptr, nullptr, nullptr);
        throw;
    }
    const int code = sqlite3_exec(database, "RELEASE zx_import", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) ThrowEngine(code, table.Table.Table.Name);
    table.IsFilled = true;
}

void FileDatabase::ImportRows(Known& table, Conversation& conversation) {
    const QString name = table.Table.Table.Name;
    QList<ColumnInfo> columns;
    RowBinder binder(engine->Engine(), RowInsertion(name, table.Table.Columns.size()),
                     table.Table.Columns.size());
    while (std::optional<Conversation::Record> record = conversation.Next()) {
        switch (record->Kind) {
            case RecordKind::Table:
                break;
            case RecordKind::Column:
                if (const std::optional<ColumnInfo> column = record->Content.TakeColumn(); column)
                    columns.append(*column);
                break;
            case RecordKind::Rows:
                // Told anew with the rows: another answer means another file.
                if (columns != table.Table.Columns) throw FileChanged();
                if (const int code = binder.Insert(record->Content); code != SQLITE_OK) {
                    if (code == RowBinder::NotRows) conversation.ThrowUnexpected();
                    ThrowEngine(code, name);
                }
                break;
            default:
                conversation.ThrowUnexpected();
        }
    }
}

void FileDatabase::ThrowEngine(int code, const QString& table) const {
    switch (code & 0xff) {
        case SQLITE_FULL:
        case SQLITE_IOERR:
            throw FileError(
                QStringLiteral(
                    "The rows of the table '%1' of the file '%2' don't fit into the folder '%3', which "
                    "has no more room for them.")
                    .arg(table, file.Path, folder));
        case SQLITE_INTERRUPT:
            LookAround();
            throw FileError(
                QStringLiteral(
                    "Timeout expired: reading the table '%1' of the file '%2' took too long and was "
                    "stopped.")
                    .arg(table, file.Path),
                ErrorNumber::TimeoutExpired);
        default:
            throw FileError(QStringLiteral("The table '%1' of the file '%2' can't be taken over: %3.")
                                .arg(table, file.Path, QString::fromUtf8(sqlite3_errmsg(engine->Engine()))));
    }
}

}  // namespace zephrin::ado::files
