#pragma once

#include "platform/ado/providers/files/FileCache.h"

namespace zephrin::ado::files {

/// A connection to an Access or Excel file. Each statement sees the file as it is when the statement begins.
class FilesSession final : public Session {
 public:
    /// Opens the file or throws ado::Error.
    FilesSession(std::shared_ptr<FileCache> shared, const OpenRequest& request);

    std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) override;
    std::unique_ptr<Cursor> Tables() override;
    std::unique_ptr<Cursor> Columns(const QString& table) override;

 private:
    template <typename Work>
    std::unique_ptr<Cursor> OnCurrentFile(int seconds, Work work);
    Patience UpTo(int seconds) const;

    std::shared_ptr<FileCache> cache;
    FileTarget file;
    int timeout;
    std::shared_ptr<Watch> watch;
    std::shared_ptr<FileDatabase> database;
};

}  // namespace zephrin::ado::files
