#pragma once

#include "platform/ado/providers/odbc/Diagnostics.h"
#include "platform/ado/providers/odbc/RowBatch.h"
#include "platform/ado/providers/odbc/Worker.h"

#include <zephrin/ado/Error.h>

#include <functional>
#include <memory>

namespace zephrin::ado::odbc {

/// An open connection and the thread on which its driver is called.
///
/// Every call has a deadline that holds whatever the driver does, and can be stopped by the watcher: first
/// the driver is asked to cancel, and where it doesn't come back even then, the connection is given up and
/// left to its thread. Used from one thread.
class Channel {
 public:
    Channel(std::unique_ptr<Worker> worker, std::shared_ptr<Link> link, DriverTraits traits,
            std::shared_ptr<Watch> watch);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    const DriverTraits& Traits() const { return traits; }
    const std::shared_ptr<Link>& Connection() const { return link; }
    bool IsAlive() const { return alive; }

    /// Runs `job`, which works on `statement`, within the time that the statement has left, and returns what
    /// it returns. Throws what it throws, ErrorNumber::TimeoutExpired where the time is up, Cancelled() where
    /// it was stopped, and ErrorNumber::InvalidConnection on a connection that is lost already.
    template <class Job>
    std::invoke_result_t<Job> Run(Allowance& time, const std::shared_ptr<Statement>& statement, Job job);

    /// Has `held` destroyed on the driver's thread, behind the jobs that may still use it.
    template <class T>
    void Release(std::shared_ptr<T> held) {
        worker->Post([held = std::move(held)] {});
    }

 private:
    void RequireAlive() const;
    Error TimedOut(int seconds, const QString& driversWords) const;
    /// Cancels `statement`; true when the job came back in time afterwards.
    bool Interrupt(const std::shared_ptr<Statement>& statement,
                   const std::function<bool(Clock::time_point)>& isBackBy);
    [[noreturn]] void GiveUp(WaitEnd end, int seconds);
    /// What a failure of the driver means behind a wait that ended so.
    Error Meant(WaitEnd end, int seconds, const Error& failure) const;

    std::unique_ptr<Worker> worker;
    std::shared_ptr<Link> link;
    const DriverTraits traits;
    const std::shared_ptr<Watch> watch;
    bool alive = true;
};

template <class Job>
std::invoke_result_t<Job> Channel::Run(Allowance& time, const std::shared_ptr<Statement>& statement,
                                       Job job) {
    RequireAlive();
    if (watch->WasStopped()) throw Cancelled();
    if (time.IsUsedUp()) throw TimedOut(time.Seconds(), {});
    const Clock::time_point begin = Clock::now();
    auto outcome = worker->Start(std::move(job));
    const WaitEnd end = WaitFor(outcome, time.Until(), *watch);
    const auto isBackBy = [&](Clock::time_point until) { return IsReadyBy(outcome, until, *watch); };
    if (end != WaitEnd::Ready && !Interrupt(statement, isBackBy)) GiveUp(end, time.Seconds());
    time.Use(Clock::now() - begin);
    try {
        return outcome.get();
    } catch (const DriverFailure& failure) {
        if (failure.LosesConnection()) alive = false;
        throw Meant(end, time.Seconds(), failure);
    } catch (const Error& failure) {
        throw Meant(end, time.Seconds(), failure);
    }
}

}  // namespace zephrin::ado::odbc
