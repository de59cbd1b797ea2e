#include "platform/ado/providers/odbc/Channel.h"

namespace zephrin::ado::odbc {

namespace {

/// How long a driver may take to let go of a cancelled statement.
constexpr std::chrono::seconds CancelTime{2};

}  // namespace

Channel::Channel(std::unique_ptr<Worker> itsWorker, std::shared_ptr<Link> itsLink, DriverTraits itsTraits,
                 std::shared_ptr<Watch> itsWatch)
    : worker(std::move(itsWorker)),
      link(std::move(itsLink)),
      traits(std::move(itsTraits)),
      watch(std::move(itsWatch)) {}

Channel::~Channel() {
    Release(std::move(link));
}

void Channel::RequireAlive() const {
    if (alive) return;
    throw Error(ErrorNumber::InvalidConnection, QStringLiteral("The connection to the database is lost."),
                traits.DriverName);
}

bool Channel::Interrupt(const std::shared_ptr<Statement>& statement,
                        const std::function<bool(Clock::time_point)>& isBackBy) {
    if (!statement) return false;
    // Cancelling can hang too: some drivers make a connection for it.
    Worker canceller;
    const auto cancelled = canceller.Start([statement] { SQLCancel(statement->Handle()); });
    const Clock::time_point until = Clock::now() + CancelTime;
    // Both have to be back, or the handle would be freed under the call that still works on it.
    if (IsReadyBy(cancelled, until, *watch) && isBackBy(until)) return true;
    canceller.Abandon();
    return false;
}

void Channel::GiveUp(WaitEnd end, int seconds) {
    worker->Abandon();
    alive = false;
    if (end == WaitEnd::Stopped) {
        const Error stopped = Cancelled();
        throw Error(
            stopped.Number(),
            stopped.Description() +
                QStringLiteral(
                    " The database did not answer when it was asked to stop: the connection is given up."),
            traits.DriverName);
    }
    throw Error(
        ErrorNumber::TimeoutExpired,
        QStringLiteral("The database did not answer within %1 seconds, nor when it was asked to stop. The "
                       "connection is given up.")
            .arg(seconds),
        traits.DriverName);
}

Error Channel::TimedOut(int seconds, const QString& driversWords) const {
    return Error(ErrorNumber::TimeoutExpired,
                 QStringLiteral("The statement was stopped after %1 seconds. %2")
                     .arg(seconds)
                     .arg(driversWords)
                     .trimmed(),
                 traits.DriverName);
}

Error Channel::Meant(WaitEnd end, int seconds, const Error& failure) const {
    // Whatever broke down in the moment of the stop.
    if (watch->WasStopped()) return Cancelled();
    // A time-out that took the connection along is one all the same.
    if (end == WaitEnd::Late) return TimedOut(seconds, failure.Description());
    return Error(failure.Number(), failure.Description(), failure.Source());
}

}  // namespace zephrin::ado::odbc
