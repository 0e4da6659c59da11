#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Progress.h"

namespace pelta::command {

/// Names on standard error what is wrong in files: the first hundred faults of each, and how many more it
/// has.
class FaultMessages {
 public:
    /// @param progress  is hidden before each message; must outlive this.
    explicit FaultMessages(Progress& progress) : progress_(progress) {}

    /// @param place  the file's name, and where in the file the fault is.
    void tell(const std::string& place, std::string_view reason);

    /// Ends a file: the next fault is another one's.
    ///
    /// @param kind  what its faults are, in the plural: "lines cannot be converted".
    void endFile(const std::string& name, std::string_view kind);

    /// Faults in all files, named or not.
    [[nodiscard]] std::uint64_t count() const noexcept { return count_ + fileCount_; }

 private:
    Progress& progress_;
    std::uint64_t count_ = 0;      // in the files before
    std::uint64_t fileCount_ = 0;  // in the file at hand
};

/// Text of an input in single quotes, fit for a message: a long one cut, control characters as blanks.
[[nodiscard]] std::string inQuotes(std::string_view text);

}  // namespace pelta::command
