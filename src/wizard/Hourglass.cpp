#include "wizard/Hourglass.h"

#include <QCursor>
#include <QGuiApplication>

namespace zephrin {

void Hourglass::Show(MousePointer pointer) {
    if (pointer == shown) return;
    shown = pointer;
    if (pointer == MousePointer::Hourglass) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

}  // namespace zephrin
