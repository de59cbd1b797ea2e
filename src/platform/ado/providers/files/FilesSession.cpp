#include "platform/ado/providers/files/FilesSession.h"

#include "platform/ado/providers/files/Failures.h"

#include <QElapsedTimer>

namespace zephrin::ado::files {

namespace {

/// Another program that writes all the time would keep a statement here for ever.
constexpr int MostTries = 5;

/// Waits for as long as a connection may take.
Patience UpTo(int seconds, const QString& path) {
    QElapsedTimer since;
    since.start();
    return [since, seconds, path] {
        if (seconds > 0 && since.hasExpired(qint64(seconds) * 1000))
            throw FileError(
                QStringLiteral("Timeout expired: the file '%1' could not be read within %2 seconds.")
                    .arg(path)
                    .arg(seconds),
                ErrorNumber::TimeoutExpired);
    };
}

}  // namespace

FilesSession::FilesSession(std::shared_ptr<FileCache> shared, const FileTarget& target, int connectionTimeout)
    : cache(std::move(shared)), file(target), timeout(connectionTimeout) {
    OnCurrentFile([](const Patience&) { return nullptr; });
}

/// Runs `work` on the file as it is now, and anew where the file changes meanwhile.
template <typename Work>
std::unique_ptr<Cursor> FilesSession::OnCurrentFile(Work work) {
    for (int tries = 0; tries < MostTries; ++tries) {
        const Patience patience = UpTo(timeout, file.Path);
        try {
            if (!database || !database->IsCurrent()) database = cache->Open(file, patience);
            // The engine may outlive what this session holds, while somebody lets events in.
            const std::shared_ptr<FileDatabase> current = database;
            const FileDatabase::Waiting scope(*current, patience);
            return work(patience);
        } catch (const FileChanged&) {
            database.reset();
        } catch (const SheetIsWider&) {
            file.MeasureSheets = true;
            database.reset();
        }
    }
    throw FileError(
        QStringLiteral("The file '%1' is being changed all the time by another program. Try again later.")
            .arg(file.Path));
}

std::unique_ptr<Cursor> FilesSession::Execute(const QString& statement, const ExecuteOptions& options) {
    return OnCurrentFile([&](const Patience&) { return database->Engine().Execute(statement, options); });
}

std::unique_ptr<Cursor> FilesSession::Tables() {
    return OnCurrentFile([&](const Patience& patience) { return database->Tables(patience); });
}

std::unique_ptr<Cursor> FilesSession::Columns(const QString& table) {
    return OnCurrentFile([&](const Patience& patience) { return database->Columns(table, patience); });
}

}  // namespace zephrin::ado::files
