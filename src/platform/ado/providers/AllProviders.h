#pragma once

#include "platform/ado/Provider.h"

namespace zephrin::ado::providers {

/// Every provider of this build, in the order in which they are asked. Called where an application is put together (the
/// control, a test), so that nothing else has to know a provider.
ProviderSet AllProviders();

}  // namespace zephrin::ado::providers
