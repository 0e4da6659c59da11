#include <atomic>
#include <cmath>
#include <condition_variable>
#include <map>
#include <thread>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

#include "Platform/MainThread.h"

namespace pelta {

namespace {

std::atomic<std::thread::id> mainThread{std::this_thread::get_id()};

/// Waiting tasks in the order in which they run.
struct WaitingTasks {
    using Key = std::pair<double, unsigned long long>;  ///< Due time, then number of submission.

    std::mutex mutex;
    std::map<Key, MainQueue::Task> tasks;
    unsigned long long nextNumber = 0;
    bool isClosed = false;  ///< The port that ran them has gone.
};

WaitingTasks& waitingTasks() {
    static WaitingTasks tasks;
    return tasks;
}

/// The earliest task that is due at `now` and was submitted before number `end`; empty when there is none.
MainQueue::Task takeDue(double now, unsigned long long end) {
    WaitingTasks& waiting = waitingTasks();
    const std::lock_guard lock(waiting.mutex);
    for (auto entry = waiting.tasks.begin(); entry != waiting.tasks.end() && entry->first.first <= now;
         ++entry) {
        if (entry->first.second < end) {
            return waiting.tasks.extract(entry).mapped();
        }
    }
    return {};
}

/// Opens when it is destroyed, that is when the task that owns it has run or has been dropped.
class Gate {
 public:
    struct Latch {
        std::mutex mutex;
        std::condition_variable opened;
        bool isOpen = false;
    };

    explicit Gate(std::shared_ptr<Latch> latch) : latch_(std::move(latch)) {}
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() {
        const std::lock_guard lock(latch_->mutex);
        latch_->isOpen = true;
        latch_->opened.notify_all();
    }

 private:
    std::shared_ptr<Latch> latch_;
};

}  // namespace

void detail::becomeMainThread() noexcept {
    mainThread.store(std::this_thread::get_id());
    WaitingTasks& waiting = waitingTasks();
    const std::lock_guard lock(waiting.mutex);
    waiting.isClosed = false;
}

bool MainQueue::isMainThread() noexcept {
    return mainThread.load() == std::this_thread::get_id();
}

void MainQueue::async(Task task) {
    asyncAfter(0, std::move(task));
}

void MainQueue::asyncAfter(double delay, Task task) {
    if (!task) {
        return;
    }
    WaitingTasks& waiting = waitingTasks();
    // Held for as long as the port is used: a port that goes away closes the queue first.
    const std::lock_guard lock(waiting.mutex);
    if (waiting.isClosed) {
        return;
    }
    PlatformPort& port = PlatformPort::current();
    const double due = port.now() + (std::isfinite(delay) && delay > 0 ? delay : 0);
    waiting.tasks.emplace(WaitingTasks::Key{due, waiting.nextNumber++}, std::move(task));
    port.wakeMainQueueAt(due);
}

void MainQueue::sync(const Task& task) {
    if (isMainThread()) {
        task();
        return;
    }
    const auto latch = std::make_shared<Gate::Latch>();
    async([&task, gate = std::make_shared<Gate>(latch)] { task(); });
    std::unique_lock lock(latch->mutex);
    latch->opened.wait(lock, [&latch] { return latch->isOpen; });
}

std::size_t MainQueue::runDue(double now) {
    unsigned long long end = 0;
    {
        WaitingTasks& waiting = waitingTasks();
        const std::lock_guard lock(waiting.mutex);
        end = waiting.nextNumber;
    }
    std::size_t count = 0;
    while (const Task task = takeDue(now, end)) {
        task();
        ++count;
    }
    return count;
}

std::optional<double> MainQueue::nextDue() {
    WaitingTasks& waiting = waitingTasks();
    const std::lock_guard lock(waiting.mutex);
    if (waiting.tasks.empty()) {
        return std::nullopt;
    }
    return waiting.tasks.begin()->first.first;
}

void MainQueue::clear() {
    std::map<WaitingTasks::Key, Task> dropped;  // Destroyed outside the lock: what it holds may do anything.
    WaitingTasks& waiting = waitingTasks();
    const std::lock_guard lock(waiting.mutex);
    dropped.swap(waiting.tasks);
    waiting.isClosed = true;
}

}  // namespace pelta
