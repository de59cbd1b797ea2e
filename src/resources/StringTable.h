#pragma once

#include <QString>

namespace zephrin::resources {

/// Ids of one set; the sets stand this far from each other.
inline constexpr int FirstStringId = 101;
inline constexpr int LastStringId = 246;
inline constexpr int StringSetDistance = 200;

/// Text of a string resource. Ids 101 to 246 are English; the same ids + 200, + 400 and + 600 are French,
/// German and Spanish, and hold the English text where there is no translation. Empty for an id that stands
/// for no text.
QString LoadResString(int id);

}  // namespace zephrin::resources
