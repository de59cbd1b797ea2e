#pragma once

#include <zephrin/ado/Error.h>

namespace zephrin::ado::files {

/// An error of this provider.
inline Error FileError(const QString& description, int number = ErrorNumber::ProviderFailed) {
    return Error(number, description, QStringLiteral("Zephrin File Provider"));
}

}  // namespace zephrin::ado::files
