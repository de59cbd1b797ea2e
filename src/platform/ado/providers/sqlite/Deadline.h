#pragma once

#include "platform/ado/Watch.h"
#include "platform/ado/providers/sqlite/Handles.h"

#include <QElapsedTimer>

#include <memory>

namespace zephrin::ado::providers::sqlite {

/// The time that one statement may take, and whoever else may stop it. Only the time inside Scope counts, so
/// who takes the rows of a cursor slowly doesn't use it up, nor does a watcher that lets the user answer
/// something.
class Deadline {
 public:
    /// 0 seconds wait for ever.
    Deadline(int seconds, std::shared_ptr<Watch> watch)
        : limit(qint64(seconds) * 1000), waiting(std::move(watch)) {}

    bool HasPassed() const { return limit > 0 && used + running.elapsed() - Pause() >= limit; }
    int Seconds() const { return int(limit / 1000); }
    /// It was not the time that ended the statement.
    bool WasStopped() const { return waiting->WasStopped(); }

    /// Puts a deadline over a connection: what runs too long, waits too long for a lock, or is stopped, is
    /// interrupted.
    class Scope {
     public:
        Scope(sqlite3* database, Deadline& deadline);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

     private:
        sqlite3* database;
        Deadline& deadline;
    };

 private:
    /// Asked by the engine in the middle of what it does.
    bool MustStop() { return HasPassed() || !waiting->GoOn(); }
    qint64 Pause() const { return waiting->TakenByWatcher() - pausedBefore; }
    static int StopIfMust(void* deadline);
    static int WaitForLock(void* deadline, int attempts);

    qint64 limit;
    std::shared_ptr<Watch> waiting;
    qint64 used = 0;
    qint64 pausedBefore = 0;
    QElapsedTimer running;
};

}  // namespace zephrin::ado::providers::sqlite
