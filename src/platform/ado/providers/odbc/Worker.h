#pragma once

#include "platform/ado/Watch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace zephrin::ado::odbc {

using Clock = std::chrono::steady_clock;

/// A point in time, or none for waiting without end.
using Deadline = std::optional<Clock::time_point>;

/// `seconds` from now, and the moment that a driver gets to tell of its own time-out in its own words; 0 is
/// no deadline.
Deadline DeadlineAfter(int seconds);

/// The time that one statement may take, all calls of it together: executing it and fetching batch after
/// batch. What the caller does between the calls doesn't count.
class Allowance {
 public:
    /// 0 seconds wait for ever.
    explicit Allowance(int seconds = 0) : limit(seconds) {}

    int Seconds() const { return int(limit.count()); }
    bool IsUsedUp() const { return limit.count() > 0 && used >= limit; }
    /// The end of a call that begins now.
    Deadline Until() const;
    void Use(Clock::duration time) { used += time; }

 private:
    std::chrono::seconds limit;
    Clock::duration used{0};
};

/// A thread that runs one job after the other, and that can be left behind.
///
/// A driver can hang in any of its calls, and nothing but the end of the network connection wakes it. So the
/// calls are made here, while the caller waits for no longer than it wants. When the wait is over the thread
/// is abandoned: it keeps alive whatever its jobs hold, finishes them whenever the driver returns, and ends
/// by itself.
///
/// A job must not hold the worker, and must hold by shared ownership all that it touches.
class Worker {
 public:
    Worker();
    /// Waits shortly for the jobs that are under way, unless the worker was abandoned.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Runs `job` behind the jobs before it. Its outcome, or what it throws, comes through the future.
    template <class Job>
    std::future<std::invoke_result_t<Job>> Start(Job job) {
        auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Job>()>>(std::move(job));
        auto outcome = task->get_future();
        Post([task] { (*task)(); });
        return outcome;
    }
    /// Runs `job`, whose outcome nobody waits for.
    void Post(std::function<void()> job);
    /// Nobody will wait for this worker again.
    void Abandon() { abandoned = true; }
    bool IsAbandoned() const { return abandoned; }

 private:
    struct Queue {
        std::mutex Mutex;
        std::condition_variable Changed;
        std::deque<std::function<void()>> Jobs;
        bool Closing = false;
        bool Finished = false;
    };
    static void Run(const std::shared_ptr<Queue>& queue);

    std::shared_ptr<Queue> queue;
    std::thread thread;
    bool abandoned = false;
};

enum class WaitEnd {
    Ready,    ///< the outcome is there
    Late,     ///< the deadline came first
    Stopped,  ///< the watcher did not want to wait any longer
};

/// Waits for the outcome of a job, and asks the watcher meanwhile.
template <class T>
WaitEnd WaitFor(const std::future<T>& outcome, const Deadline& deadline, Watch& watch) {
    const auto ready = [&](Clock::time_point until) {
        return outcome.wait_until(until) == std::future_status::ready;
    };
    if (!watch.IsWatched() && !deadline) {
        outcome.wait();
        return WaitEnd::Ready;
    }
    for (;;) {
        const Clock::time_point next = Clock::now() + std::chrono::milliseconds(Watch::Interval);
        if (ready(!watch.IsWatched() ? *deadline : deadline ? std::min(*deadline, next) : next))
            return WaitEnd::Ready;
        const bool goOn = watch.GoOn();
        // The watcher may have taken its time.
        if (ready(Clock::now())) return WaitEnd::Ready;
        if (!goOn) return WaitEnd::Stopped;
        if (deadline && Clock::now() >= *deadline) return WaitEnd::Late;
    }
}

/// Waits for the outcome until the deadline, whatever the watcher says; it is asked all the same, and keeps
/// the windows alive. True when the outcome is there.
template <class T>
bool IsReadyBy(const std::future<T>& outcome, Clock::time_point deadline, Watch& watch) {
    do {
        const auto next = std::min(deadline, Clock::now() + std::chrono::milliseconds(Watch::Interval));
        if (outcome.wait_until(next) == std::future_status::ready) return true;
        watch.GoOn();
    } while (Clock::now() < deadline);
    return outcome.wait_until(Clock::now()) == std::future_status::ready;
}

}  // namespace zephrin::ado::odbc
