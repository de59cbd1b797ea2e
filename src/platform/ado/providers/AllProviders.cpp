#include "platform/ado/providers/AllProviders.h"

#include "platform/ado/providers/sqlite/SqliteProvider.h"

namespace zephrin::ado::providers {

ProviderSet AllProviders() {
    return {std::make_shared<SqliteProvider>()};
}

}  // namespace zephrin::ado::providers
