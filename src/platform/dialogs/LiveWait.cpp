#include "platform/dialogs/LiveWait.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace zephrin {

namespace {

bool IsEscape(QEvent* event) {
    return (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) &&
           static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
}

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::InputMethod:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::NativeGesture:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

bool IsMouse(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

/// Input comes to a window first, and from there to the widget that it is for.
QWidget* WidgetOf(QObject* receiver) {
    if (receiver->isWidgetType()) return static_cast<QWidget*>(receiver);
    if (!receiver->isWindowType()) return nullptr;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->windowHandle() == receiver) return window;
    return nullptr;
}

/// Drops every Escape until none has come for a moment: who stopped something by it, and holds the key or
/// presses it once more, must not close the window with that.
class LateEscapes : public QObject {
 public:
    explicit LateEscapes(QObject* application) : QObject(application) {
        quiet.setSingleShot(true);
        connect(&quiet, &QTimer::timeout, this, &QObject::deleteLater);
        quiet.start(QuietTime);
        application->installEventFilter(this);
    }

 private:
    static constexpr int QuietTime = 400;  // milliseconds

    bool eventFilter(QObject*, QEvent* event) override {
        if (!IsEscape(event)) return false;
        quiet.start(QuietTime);
        return true;
    }

    QTimer quiet;
};

}  // namespace

LiveWait::LiveWait() : modalBefore(QApplication::activeModalWidget()) {
    // For the whole time: what a program does where it is told of the progress counts as well.
    qApp->installEventFilter(this);
    exitedBefore = HasExited();
}

void LiveWait::Begin() {
    if (std::exchange(begun, true)) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

LiveWait::~LiveWait() {
    if (begun) {
        ProcessEvents();
        QApplication::restoreOverrideCursor();
    }
    qApp->removeEventFilter(this);
    if (byEscape) new LateEscapes(qApp);
    // Refused in the middle; the windows may ask their questions now.
    if (quits) QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

bool LiveWait::Breathe() {
    ProcessEvents();
    if (!stopped && !exitedBefore && HasExited()) stopped = true;
    return !stopped;
}

void LiveWait::ProcessEvents() {
    level = QThread::currentThread()->loopLevel();
    QApplication::processEvents(begun ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
}

bool LiveWait::HasExited() {
    level = QThread::currentThread()->loopLevel() + 1;
    // A loop that is entered behind the end of the program's does nothing, and says so.
    QEventLoop probe;
    QMetaObject::invokeMethod(&probe, &QEventLoop::quit, Qt::QueuedConnection);
    const bool exited =
        probe.exec(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers) == -1;
    level = QThread::currentThread()->loopLevel();
    return exited;
}

bool LiveWait::IsForStop(QObject* watched, QEvent* event) {
    if (!IsMouse(event->type())) return false;
    QWidget* target = WidgetOf(watched);
    if (target && watched->isWindowType()) {
        QWidget* const child = target->childAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        if (child) target = child;
    }
    const bool onStop = target && target->property(StopsProperty).toBool() && target->isEnabled();
    if (event->type() == QEvent::MouseButtonPress) pressedStop = onStop;
    // A press on the button has its release wherever that comes.
    return onStop || (pressedStop && event->type() == QEvent::MouseButtonRelease);
}

bool LiveWait::IsForBox(QObject* watched) const {
    if (QThread::currentThread()->loopLevel() <= level) return false;
    const QWidget* const box = QApplication::activeModalWidget();
    if (!box || box == modalBefore) return false;
    for (const QWidget* widget = WidgetOf(watched); widget; widget = widget->parentWidget())
        if (widget == box) return true;
    return false;
}

bool LiveWait::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Quit) {
        stopped = quits = true;
        return true;
    }
    const bool closes = event->type() == QEvent::Close;
    if (!closes && !IsInput(event->type())) return false;
    if (IsForBox(watched) || IsForStop(watched, event)) return false;
    // A close event that nobody refuses hides the window, even when no window ever saw it.
    if (closes) event->ignore();
    if (IsEscape(event)) stopped = byEscape = true;
    return true;
}

}  // namespace zephrin
