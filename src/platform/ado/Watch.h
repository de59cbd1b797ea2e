#pragma once

#include <zephrin/ado/Error.h>

#include <QElapsedTimer>

#include <functional>

namespace zephrin::ado {

/// How far a connection has come with what it waits for.
struct Progress {
    qint64 Elapsed = 0;  ///< milliseconds since the statement, the connecting or the schema read began
    qint64 Rows = 0;     ///< rows fetched so far
};

/// Says whether to go on. Asked on the caller's thread, at most every 50 ms, from wherever a connection
/// waits.
///
/// It may let events in, and with them anybody: the connection that waits refuses every other use meanwhile
/// (3711), and may be closed or destroyed, which ends the wait like a stop. It must not throw: an engine's
/// own frames lie between.
using Watcher = std::function<bool(const Progress& progress)>;

/// What a connection, its session and its cursors share to ask their watcher.
///
/// A provider gets it with the request to open, keeps it, and calls GoOn from every loop in which it waits or
/// fetches. Where the answer is no, it stops what it does as soon as it can and throws Cancelled(). Without a
/// watcher the answer is always yes, and costs nothing.
class Watch {
 public:
    static constexpr qint64 Interval = 50;  ///< milliseconds between two questions

    void SetWatcher(Watcher newWatcher) { watcher = std::move(newWatcher); }
    /// False where nobody would be asked.
    bool IsWatched() const { return static_cast<bool>(watcher); }

    /// Asks, unless it was asked just now. Once the answer was no it stays so until the next work begins, but
    /// who goes on calling keeps the windows alive while it waits for a driver that was told to stop.
    bool GoOn();
    bool WasStopped() const { return stopped; }
    /// Ends the wait as its watcher would.
    void Stop() { stopped = true; }

    void CountRows(qint64 more) { rows += more; }
    /// Milliseconds that the watcher itself has taken, all in all: nobody's statement was late in them.
    qint64 TakenByWatcher() const { return taken; }

    bool IsWaiting() const { return waiting; }
    /// Throws ErrorNumber::StillExecuting in the middle of a call.
    void RequireIdle() const;

    /// One call into a provider. While it lives no other is let in: it throws ErrorNumber::StillExecuting
    /// then.
    class Call {
     public:
        enum class Kind { Begins, GoesOn };
        /// A call that begins a work counts time and rows anew; one that goes on throws Cancelled() if it was
        /// stopped.
        Call(Watch& watch, Kind kind);
        ~Call() { watch.waiting = false; }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

     private:
        Watch& watch;
    };

 private:
    Watcher watcher;
    QElapsedTimer running;
    qint64 asked = 0;
    qint64 taken = 0;
    qint64 rows = 0;
    bool stopped = false;
    bool asking = false;
    bool waiting = false;
};

/// The error of what was stopped.
Error Cancelled();

}  // namespace zephrin::ado
