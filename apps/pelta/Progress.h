#pragma once

#include <chrono>
#include <string_view>

namespace pelta::command {

/// One line on standard error that tells how far the work has come: only on a terminal that the results do
/// not go to, and only for what takes longer than a second. Ends with the object, or with a signal that ends
/// the process, leaving no trace.
class Progress {
 public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// True when it is time to `show`; cheap enough to ask often.
    [[nodiscard]] bool isDue() const;
    /// Replaces the line.
    void show(std::string_view text);
    /// Takes the line away, so that other lines can be written.
    void hide();

 private:
    using Clock = std::chrono::steady_clock;

    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point due_;
};

}  // namespace pelta::command
