#pragma once

class QWidget;

namespace zephrin {

/// Gives `window` the key Shift+F1: it shows the tool tip of the control that has the keyboard, which
/// otherwise only a mouse gets to see.
void AddTipKey(QWidget* window);

}  // namespace zephrin
