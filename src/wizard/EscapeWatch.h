#pragma once

#include <QObject>

namespace zephrin {

/// Lets the user press Escape, and nothing else, while an operation keeps the window busy: every other key,
/// click and close request is dropped as long as this lives, so that nothing can be started in the middle of
/// it.
class EscapeWatch : public QObject {
 public:
    EscapeWatch();
    ~EscapeWatch() override;

    /// Lets the windows repaint and says whether Escape was pressed since the watch began.
    bool Pressed();

 private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    bool pressed = false;
};

}  // namespace zephrin
