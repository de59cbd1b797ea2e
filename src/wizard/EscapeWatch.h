#pragma once

#include <QObject>

namespace zephrin {

/// Lets the user press Escape, and nothing else, while an operation keeps the window busy.
class EscapeWatch : public QObject {
 public:
    /// Lets the windows repaint and says whether Escape was pressed since the watch began. Every other key,
    /// click and close request that waited is dropped, so that nothing can be started in the middle of the
    /// operation. Boxes that the operation opens in between work as always.
    bool Pressed();

 private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    bool pressed = false;
};

}  // namespace zephrin
