#pragma once

#include <array>
#include <span>

namespace zephrin::resources {

/// One string resource in its four languages. A language that is null has no translation of its own.
struct StringRow {
    int Id = 0;                              ///< of the English set
    std::array<const char16_t*, 4> Texts{};  ///< English, French, German, Spanish
};

/// Every resource that has a text, by rising id.
std::span<const StringRow> StringRows();

}  // namespace zephrin::resources
