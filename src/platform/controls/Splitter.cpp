#include "platform/controls/Splitter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <limits>

namespace zephrin::controls {

namespace {

class Handle : public QSplitterHandle {
 public:
    Handle(Qt::Orientation orientation, QSplitter* parent) : QSplitterHandle(orientation, parent) {
        setFocusPolicy(Qt::TabFocus);
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int step = fontMetrics().averageCharWidth() * 3;
        const int place = orientation() == Qt::Horizontal ? x() : y();
        const bool across = orientation() == Qt::Horizontal;
        if (event->key() == (across ? Qt::Key_Left : Qt::Key_Up)) return Move(place - step);
        if (event->key() == (across ? Qt::Key_Right : Qt::Key_Down)) return Move(place + step);
        if (event->key() == Qt::Key_Home) return Move(0);
        if (event->key() == Qt::Key_End) return Move(across ? splitter()->width() : splitter()->height());
        QSplitterHandle::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent* event) override {
        QSplitterHandle::paintEvent(event);
        if (!hasFocus()) return;
        // A handle is a few pixels wide: no frame would be seen on it.
        QPainter painter(this);
        painter.fillRect(rect(), palette().highlight());
    }

    void focusInEvent(QFocusEvent* event) override {
        QSplitterHandle::focusInEvent(event);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        QSplitterHandle::focusOutEvent(event);
        update();
    }

 private:
    /// `place` counts from the left or the top, in a mirrored window too.
    void Move(int place) {
        const bool mirrored = orientation() == Qt::Horizontal && isRightToLeft();
        moveSplitter(mirrored ? place + width() : place);
    }
};

}  // namespace

Splitter::Splitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {}

void Splitter::SetHandleName(const QString& name) {
    handleName = name;
    for (int at = 0; at < count(); ++at) handle(at)->setAccessibleName(name);
}

QSplitterHandle* Splitter::createHandle() {
    auto* made = new Handle(orientation(), this);
    made->setAccessibleName(handleName);
    return made;
}

}  // namespace zephrin::controls
