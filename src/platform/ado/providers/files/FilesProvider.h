#pragma once

#include "platform/ado/Provider.h"

#include <functional>

namespace zephrin::ado::files {
class FileCache;
}

namespace zephrin::ado::providers {

/// Access databases and Excel workbooks, by the strings that hosts have always used for them: Microsoft.Jet
/// and Microsoft.ACE of OLE DB, and the Access and Excel drivers of ODBC. A driver of that name that is
/// installed comes first.
///
/// The files are read by a program of their own, zephrin-file-reader, and never written.
class FilesProvider final : public Provider {
 public:
    /// `installed` names the ODBC drivers of this machine.
    explicit FilesProvider(std::function<QStringList()> installed);

    bool Accepts(const QString& connectionString) const override;
    std::unique_ptr<Session> Open(const OpenRequest& request) const override;

 private:
    std::function<QStringList()> drivers;
    /// Shared with the sessions: see FileCache.
    std::shared_ptr<files::FileCache> cache;
};

}  // namespace zephrin::ado::providers
