#include "wizard/EscapeWatch.h"

#include <QApplication>
#include <QKeyEvent>

namespace zephrin {

bool EscapeWatch::Pressed() {
    QCoreApplication* application = QApplication::instance();
    application->installEventFilter(this);
    QApplication::processEvents();
    application->removeEventFilter(this);
    return pressed;
}

bool EscapeWatch::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::ShortcutOverride:
            pressed = pressed || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
            return true;
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::ContextMenu:
            return true;
        case QEvent::Close:
            // A close event that nobody refuses hides the window, even when no window ever saw it.
            event->ignore();
            return true;
        default:
            return false;
    }
}

}  // namespace zephrin
