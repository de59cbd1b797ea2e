#pragma once

namespace demo {

enum class Colours { Light, Dark };

/// Gives the whole application light or dark colours, in a style that takes colours from the palette alone.
void UseColours(Colours colours);

/// Whether windows are dark at present.
bool IsDark();

}  // namespace demo
