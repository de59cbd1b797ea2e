#pragma once

namespace zephrin::controls {

/// Has screen readers meet every grid with what can be done with its current cell: the button that is painted
/// in it, the head of its column. May be called as often as one likes.
void MakeGridsAccessible();

}  // namespace zephrin::controls
