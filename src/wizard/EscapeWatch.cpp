#include "wizard/EscapeWatch.h"

#include <QApplication>
#include <QKeyEvent>

namespace zephrin {

EscapeWatch::EscapeWatch() {
    QApplication::instance()->installEventFilter(this);
}

EscapeWatch::~EscapeWatch() {
    QApplication::instance()->removeEventFilter(this);
}

bool EscapeWatch::Pressed() {
    QApplication::processEvents();
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
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

}  // namespace zephrin
