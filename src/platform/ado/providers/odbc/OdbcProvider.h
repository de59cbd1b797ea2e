#pragma once

#include "platform/ado/Provider.h"

namespace zephrin::ado::providers {

/// Every database that has an ODBC driver: `Driver={...};...`, `DSN=...`, `Provider=MSDASQL;...`, and the
/// known OLE DB strings for SQL Server and Access, whose keywords are translated.
///
/// It takes any string, so it stands last among the providers.
class OdbcProvider final : public Provider {
 public:
    bool Accepts(const QString& connectionString) const override;
    std::unique_ptr<Session> Open(const OpenRequest& request) const override;
    InstalledSources Installed() const override;
};

}  // namespace zephrin::ado::providers
