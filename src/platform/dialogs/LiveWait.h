#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace zephrin {

/// Keeps all windows of the application alive while something is waited for on their thread, and lets the
/// user put an end to it: by Escape, or by a button that is marked for it.
///
/// Every other key and click that is made meanwhile, in whichever window, is dropped, and no window can be
/// closed. The pointer is the hourglass. Timers and sockets do what they do. Who opens a box or a window that
/// blocks the others in one of them gets an answer there: only the box's input is let through, for as long as
/// it runs its own event loop.
class LiveWait : public QObject {
 public:
    /// A button with this property gets its clicks.
    static constexpr const char* StopsProperty = "ZPBStopsWork";

    LiveWait();
    /// From here on the user has to feel that he waits. Before, the windows are painted, and what he types and clicks is
    /// kept for later.
    void Begin();
    /// Drops what was typed and clicked so far, and an Escape that is still held down or pressed again at
    /// once.
    ~LiveWait() override;

    /// Lets events in, and with them anybody. False once the user, or the end of the program, asks to stop.
    bool Breathe();

 private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void ProcessEvents();
    /// True once somebody has ended the application's event loop. Lets events in as well.
    bool HasExited();
    bool IsForStop(QObject* watched, QEvent* event);
    bool IsForBox(QObject* watched) const;

    bool begun = false;
    bool stopped = false;
    bool byEscape = false;
    bool pressedStop = false;
    bool quits = false;
    bool exitedBefore = false;
    int level = 0;
    QPointer<QWidget> modalBefore;
};

}  // namespace zephrin
