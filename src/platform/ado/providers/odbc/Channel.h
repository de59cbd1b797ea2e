#pragma once

#include "platform/ado/providers/odbc/Handles.h"
#include "platform/ado/providers/odbc/RowBatch.h"
#include "platform/ado/providers/odbc/Worker.h"

#include <zephrin/ado/Error.h>

#include <functional>
#include <memory>

namespace zephrin::ado::odbc {

/// An open connection and the thread on which its driver is called.
///
/// Every call has a deadline that holds whatever the driver does: first the driver is asked to cancel, and
/// where it doesn't come back even then, the connection is given up and left to its thread. Used from one
/// thread.
class Channel {
 public:
    Channel(std::unique_ptr<Worker> worker, std::shared_ptr<Link> link, DriverTraits traits);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    const DriverTraits& Traits() const { return traits; }
    const std::shared_ptr<Link>& Connection() const { return link; }
    bool IsAlive() const { return alive; }

    /// Runs `job`, which works on `statement`, for at most `seconds` (0: without end), and returns what it
    /// returns. Throws what it throws, ErrorNumber::TimeoutExpired at the deadline, and
    /// ErrorNumber::InvalidConnection on a connection that is lost already.
    template <class Job>
    std::invoke_result_t<Job> Run(int seconds, const std::shared_ptr<Statement>& statement, Job job);

    /// Has `held` destroyed on the driver's thread, behind the jobs that may still use it.
    template <class T>
    void Release(std::shared_ptr<T> held) {
        worker->Post([held = std::move(held)] {});
    }

 private:
    void RequireAlive() const;
    void NoteFailure(const Error& failure);
    /// Cancels `statement`; true when the job came back in time afterwards.
    bool Interrupt(const std::shared_ptr<Statement>& statement,
                   const std::function<bool(Deadline)>& isBackBy);
    [[noreturn]] void GiveUp(int seconds);
    Error Stopped(int seconds, const Error& failure) const;

    std::unique_ptr<Worker> worker;
    std::shared_ptr<Link> link;
    const DriverTraits traits;
    bool alive = true;
};

template <class Job>
std::invoke_result_t<Job> Channel::Run(int seconds, const std::shared_ptr<Statement>& statement, Job job) {
    RequireAlive();
    auto outcome = worker->Start(std::move(job));
    // A driver that holds the time-out itself has words of its own for it: it gets a moment to say them.
    Deadline deadline = DeadlineAfter(seconds);
    if (deadline) *deadline += std::chrono::milliseconds(500);
    const bool late = !IsReadyBy(outcome, deadline);
    if (late && !Interrupt(statement, [&outcome](Deadline until) { return IsReadyBy(outcome, until); }))
        GiveUp(seconds);
    try {
        return outcome.get();
    } catch (const Error& failure) {
        NoteFailure(failure);
        if (late && alive) throw Stopped(seconds, failure);
        throw;
    }
}

}  // namespace zephrin::ado::odbc
