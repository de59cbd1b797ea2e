#include "platform/ado/providers/sqlite/Deadline.h"

#include <QThread>

namespace zephrin::ado::providers::sqlite {

namespace {

// Often enough to stop within a millisecond or so, rare enough not to be felt.
constexpr int InstructionsBetweenLooks = 10'000;

}  // namespace

int Deadline::StopIfMust(void* deadline) {
    return static_cast<Deadline*>(deadline)->MustStop() ? 1 : 0;
}

int Deadline::WaitForLock(void* deadline, int attempts) {
    if (static_cast<Deadline*>(deadline)->MustStop()) return 0;
    QThread::msleep(attempts < 10 ? 1 : 10);
    return 1;
}

Deadline::Scope::Scope(sqlite3* over, Deadline& by) : database(over), deadline(by) {
    deadline.pausedBefore = deadline.waiting->TakenByWatcher();
    deadline.running.start();
    sqlite3_busy_handler(database, WaitForLock, &deadline);
    if (deadline.limit > 0 || deadline.waiting->IsWatched())
        sqlite3_progress_handler(database, InstructionsBetweenLooks, StopIfMust, &deadline);
}

Deadline::Scope::~Scope() {
    deadline.used += deadline.running.elapsed() - deadline.Pause();
    sqlite3_progress_handler(database, 0, nullptr, nullptr);
    sqlite3_busy_handler(database, nullptr, nullptr);
}

}  // namespace zephrin::ado::providers::sqlite
