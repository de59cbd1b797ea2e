#include "platform/ado/providers/sqlite/Deadline.h"

#include <QThread>

namespace zephrin::ado::providers::sqlite {

namespace {

// Often enough to stop within a millisecond or so, rare enough not to be felt.
constexpr int InstructionsBetweenLooks = 10'000;

int StopWhenPassed(void* deadline) {
    return static_cast<const Deadline*>(deadline)->HasPassed() ? 1 : 0;
}

int WaitForLock(void* deadline, int attempts) {
    if (static_cast<const Deadline*>(deadline)->HasPassed()) return 0;
    QThread::msleep(attempts < 10 ? 1 : 10);
    return 1;
}

}  // namespace

Deadline::Scope::Scope(sqlite3* over, Deadline& by) : database(over), deadline(by) {
    deadline.running.start();
    sqlite3_busy_handler(database, WaitForLock, &deadline);
    if (deadline.limit > 0)
        sqlite3_progress_handler(database, InstructionsBetweenLooks, StopWhenPassed, &deadline);
}

Deadline::Scope::~Scope() {
    deadline.used += deadline.running.elapsed();
    sqlite3_progress_handler(database, 0, nullptr, nullptr);
    sqlite3_busy_handler(database, nullptr, nullptr);
}

}  // namespace zephrin::ado::providers::sqlite
