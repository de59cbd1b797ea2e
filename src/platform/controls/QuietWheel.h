#pragma once

class QComboBox;

namespace zephrin::controls {

/// Keeps the wheel from a drop-down that the user has not turned to: rolling past it neither changes it nor
/// gives it the keyboard. What lies around it scrolls instead.
void KeepWheelAway(QComboBox* box);

}  // namespace zephrin::controls
