#include "platform/controls/QuietWheel.h"

#include <QComboBox>
#include <QEvent>

namespace zephrin::controls {

namespace {

class WheelFilter : public QObject {
 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
        event->ignore();
        return true;
    }
};

}  // namespace

void KeepWheelAway(QComboBox* box) {
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(new WheelFilter(box));
}

}  // namespace zephrin::controls
