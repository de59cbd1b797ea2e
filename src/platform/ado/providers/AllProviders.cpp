#include "platform/ado/providers/AllProviders.h"

#include "platform/ado/providers/files/FilesProvider.h"
#include "platform/ado/providers/odbc/OdbcProvider.h"
#include "platform/ado/providers/sqlite/SqliteProvider.h"

namespace zephrin::ado::providers {

ProviderSet AllProviders() {
    // ODBC takes whatever the others leave, so it is asked last.
    const auto odbc = std::make_shared<OdbcProvider>();
    const auto files = std::make_shared<FilesProvider>([odbc] { return odbc->Installed().Drivers; });
    return {std::make_shared<SqliteProvider>(), files, odbc};
}

}  // namespace zephrin::ado::providers
