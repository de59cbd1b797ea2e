#include "platform/ado/providers/odbc/Channel.h"

namespace zephrin::ado::odbc {

namespace {

/// How long a driver may take to let go of a cancelled statement.
constexpr std::chrono::seconds CancelTime{2};

}  // namespace

Channel::Channel(std::unique_ptr<Worker> itsWorker, std::shared_ptr<Link> itsLink, DriverTraits itsTraits)
    : worker(std::move(itsWorker)), link(std::move(itsLink)), traits(std::move(itsTraits)) {}

Channel::~Channel() {
    Release(std::move(link));
}

void Channel::RequireAlive() const {
    if (alive) return;
    throw Error(ErrorNumber::InvalidConnection, QStringLiteral("The connection to the database is lost."),
                traits.DriverName);
}

void Channel::NoteFailure(const Error& failure) {
    if (failure.Number() == ErrorNumber::InvalidConnection) alive = false;
}

bool Channel::Interrupt(const std::shared_ptr<Statement>& statement,
                        const std::function<bool(Deadline)>& isBackBy) {
    if (!statement) return false;
    // Cancelling can hang too: some drivers make a connection for it.
    Worker canceller;
    const auto cancelled = canceller.Start([statement] { SQLCancel(statement->Handle()); });
    const Deadline until = Clock::now() + CancelTime;
    // Both have to be back, or the handle would be freed under the call that still works on it.
    if (IsReadyBy(cancelled, until) && isBackBy(until)) return true;
    canceller.Abandon();
    return false;
}

void Channel::GiveUp(int seconds) {
    worker->Abandon();
    alive = false;
    throw Error(
        ErrorNumber::TimeoutExpired,
        QStringLiteral("The database did not answer within %1 seconds, nor when it was asked to stop. The "
                       "connection is given up.")
            .arg(seconds),
        traits.DriverName);
}

Error Channel::Stopped(int seconds, const Error& failure) const {
    return Error(ErrorNumber::TimeoutExpired,
                 QStringLiteral("The statement was stopped after %1 seconds. %2")
                     .arg(seconds)
                     .arg(failure.Description()),
                 failure.Source());
}

}  // namespace zephrin::ado::odbc
