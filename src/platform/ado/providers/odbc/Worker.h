#pragma once

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

/// `seconds` from now; 0 is no deadline.
Deadline DeadlineAfter(int seconds);

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

/// True when the outcome is there before the deadline.
template <class T>
bool IsReadyBy(const std::future<T>& outcome, const Deadline& deadline) {
    if (deadline) return outcome.wait_until(*deadline) == std::future_status::ready;
    outcome.wait();
    return true;
}

}  // namespace zephrin::ado::odbc
