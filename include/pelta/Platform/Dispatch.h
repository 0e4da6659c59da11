#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

/// @file
/// The main queue and serial queues.

namespace pelta {

/// The queue of work for the main thread, in order of due time and then of submission.
///
/// The port runs due tasks once a frame, after that frame's camera events, and at their due time when no
/// frame is under way. The main thread is the thread that runs this queue; the thread that installs the port
/// becomes it.
class MainQueue {
 public:
    /// What a queue runs.
    using Task = std::function<void()>;

    /// Queues a task; it never runs inside this call. Any thread.
    static void async(Task task);
    /// Queues a task to run `delay` seconds from now on the port's clock; negative and non-finite delays
    /// count as 0. Any thread.
    static void asyncAfter(double delay, Task task);
    /// Runs a task on the main thread and returns when it is done. Any thread.
    ///
    /// On the main thread it runs at once. Elsewhere the caller waits until the main thread has run its
    /// queue, however long that takes; a main thread that waits for the caller meanwhile waits for ever.
    /// Once the port goes away nobody runs the queue any more: callers that wait then, and those that come
    /// before another port is installed, return with their task unrun.
    static void sync(const Task& task);
    /// True on the thread that runs this queue.
    [[nodiscard]] static bool isMainThread() noexcept;

    /// For ports: runs every task that is due at `now` (seconds on the port's clock); tasks that these add
    /// for the same moment run at the next call. Returns how many ran.
    static std::size_t runDue(double now);
    /// For ports: the earliest due time of all waiting tasks (seconds on the port's clock), if there are any.
    [[nodiscard]] static std::optional<double> nextDue();
    /// For ports, before the port itself goes away: drops all waiting tasks and, until a port is installed
    /// again, those that come later.
    static void clear();
};

/// Runs pieces of work one at a time, from any thread.
class SerialQueue {
 public:
    /// @param label  name for debugging.
    explicit SerialQueue(std::string label) : label_(std::move(label)) {}

    /// Name of the queue, for logs.
    [[nodiscard]] const std::string& label() const noexcept { return label_; }

    /// Runs the work on the caller's thread while no other work of this queue runs, and returns its result.
    /// Calling it from inside its own work is a programming error (it would wait for itself).
    template <class Work>
    auto sync(Work&& work) {
        const std::lock_guard lock(mutex_);
        return std::forward<Work>(work)();
    }

 private:
    std::string label_;
    std::mutex mutex_;
};

}  // namespace pelta
