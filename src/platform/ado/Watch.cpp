#include "platform/ado/Watch.h"

#include <utility>

namespace zephrin::ado {

bool Watch::GoOn() {
    if (!watcher || asking) return !stopped;
    const qint64 now = running.elapsed();
    if (now - asked < Interval) return !stopped;
    // A copy: whoever is let in may take the watcher away.
    const Watcher ask = watcher;
    asking = true;
    const bool goOn = ask({now, rows});
    asking = false;
    asked = running.elapsed();
    taken += asked - now;
    stopped = stopped || !goOn;
    return !stopped;
}

void Watch::RequireIdle() const {
    if (waiting)
        throw Error(ErrorNumber::StillExecuting,
                    QStringLiteral("Operation cannot be performed while another one is still executing."));
}

Watch::Call::Call(Watch& itsWatch, Kind kind) : watch(itsWatch) {
    watch.RequireIdle();
    if (kind == Kind::GoesOn && watch.stopped) throw Cancelled();
    watch.waiting = true;
    if (kind == Kind::GoesOn) return;
    watch.running.start();
    watch.asked = watch.rows = 0;
    watch.stopped = false;
}

Error Cancelled() {
    return Error(ErrorNumber::OperationCancelled,
                 QStringLiteral("Operation has been cancelled by the user."));
}

}  // namespace zephrin::ado
