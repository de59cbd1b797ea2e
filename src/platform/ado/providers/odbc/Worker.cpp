#include "platform/ado/providers/odbc/Worker.h"

namespace zephrin::ado::odbc {

namespace {

/// How long a connection may take to close before it is left to its thread.
constexpr std::chrono::seconds ClosingTime{3};
/// For a driver that holds the time-out itself.
constexpr std::chrono::milliseconds Grace{500};

}  // namespace

Deadline DeadlineAfter(int seconds) {
    return Allowance(seconds).Until();
}

Deadline Allowance::Until() const {
    if (limit.count() <= 0) return std::nullopt;
    return Clock::now() + (limit - used) + Grace;
}

Worker::Worker() : queue(std::make_shared<Queue>()), thread([queue = queue] { Run(queue); }) {}

Worker::~Worker() {
    std::unique_lock lock(queue->Mutex);
    queue->Closing = true;
    queue->Changed.notify_all();
    const bool ended =
        !abandoned && queue->Changed.wait_for(lock, ClosingTime, [this] { return queue->Finished; });
    lock.unlock();
    if (ended) {
        thread.join();
    } else {
        thread.detach();
    }
}

void Worker::Post(std::function<void()> job) {
    const std::lock_guard lock(queue->Mutex);
    queue->Jobs.push_back(std::move(job));
    queue->Changed.notify_all();
}

void Worker::Run(const std::shared_ptr<Queue>& queue) {
    std::unique_lock lock(queue->Mutex);
    for (;;) {
        queue->Changed.wait(lock, [&] { return queue->Closing || !queue->Jobs.empty(); });
        if (queue->Jobs.empty()) break;
        {
            // The job ends its life here too, without the lock: it may be the last to hold a handle.
            const std::function<void()> job = std::move(queue->Jobs.front());
            queue->Jobs.pop_front();
            lock.unlock();
            job();
        }
        lock.lock();
    }
    queue->Finished = true;
    queue->Changed.notify_all();
}

}  // namespace zephrin::ado::odbc
