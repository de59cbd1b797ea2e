#include "platform/ado/providers/files/FilesSession.h"

#include "platform/ado/providers/files/Failures.h"

#include <QElapsedTimer>

namespace zephrin::ado::files {

namespace {

/// Another program that writes all the time would keep a statement here for ever.
constexpr int MostTries = 5;

}  // namespace

FilesSession::FilesSession(std::shared_ptr<FileCache> shared, const OpenRequest& request)
    : cache(std::move(shared)),
      file(ReadFileString(request)),
      timeout(request.ConnectionTimeout),
      watch(request.Waiting) {
    OnCurrentFile(timeout, [](FileDatabase&) { return nullptr; });
}

/// Waits for so many seconds, or until the watcher says no; its own time doesn't count.
Patience FilesSession::UpTo(int seconds) const {
    QElapsedTimer since;
    since.start();
    return [since, seconds, before = watch->TakenByWatcher(), asked = watch, path = file.Path] {
        if (!asked->GoOn()) throw Cancelled();
        const qint64 used = since.elapsed() - (asked->TakenByWatcher() - before);
        if (seconds > 0 && used > qint64(seconds) * 1000)
            throw FileError(
                QStringLiteral("Timeout expired: the file '%1' could not be read within %2 seconds.")
                    .arg(path)
                    .arg(seconds),
                ErrorNumber::TimeoutExpired);
    };
}

/// Runs `work` on the file as it is now, and anew where the file changes meanwhile.
template <typename Work>
std::unique_ptr<Cursor> FilesSession::OnCurrentFile(int seconds, Work work) {
    for (int tries = 0; tries < MostTries; ++tries) {
        const Patience patience = UpTo(seconds);
        try {
            if (!database || !database->IsCurrent()) database = cache->Open(file, patience);
            // A watcher may let in whoever closes this session.
            const std::shared_ptr<FileDatabase> current = database;
            const FileDatabase::Waiting scope(*current, patience, watch);
            return work(*current);
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
    return OnCurrentFile(options.CommandTimeout,
                         [&](FileDatabase& current) { return current.Engine().Execute(statement, options); });
}

std::unique_ptr<Cursor> FilesSession::Tables() {
    return OnCurrentFile(timeout, [](FileDatabase& current) { return current.Tables(); });
}

std::unique_ptr<Cursor> FilesSession::Columns(const QString& table) {
    return OnCurrentFile(timeout, [&](FileDatabase& current) { return current.Columns(table); });
}

}  // namespace zephrin::ado::files
