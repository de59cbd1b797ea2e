#pragma once

#include "platform/ado/providers/sqlite/Handles.h"

#include <QElapsedTimer>

namespace zephrin::ado::providers::sqlite {

/// The time that one statement may take. Only the time inside Scope counts, so who takes the rows of a cursor
/// slowly doesn't use it up.
class Deadline {
 public:
    /// 0 seconds wait for ever.
    explicit Deadline(int seconds) : limit(qint64(seconds) * 1000) {}

    bool HasPassed() const { return limit > 0 && used + running.elapsed() >= limit; }
    int Seconds() const { return int(limit / 1000); }

    /// Puts a deadline over a connection: what runs too long, or waits too long for a lock, is interrupted.
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
    qint64 limit;
    qint64 used = 0;
    QElapsedTimer running;
};

}  // namespace zephrin::ado::providers::sqlite
