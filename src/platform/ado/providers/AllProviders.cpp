#include "platform/ado/providers/AllProviders.h"

#include "platform/ado/providers/odbc/OdbcProvider.h"
#include "platform/ado/providers/sqlite/SqliteProvider.h"

namespace zephrin::ado::providers {

ProviderSet AllProviders() {
    // ODBC takes whatever the others leave, so it is asked last.
    return {std::make_shared<SqliteProvider>(), std::make_shared<OdbcProvider>()};
}

}  // namespace zephrin::ado::providers
