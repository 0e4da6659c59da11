#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pelta::command {

/// A file, or standard input, piece by piece, in the same room however long it is. A piece is handed over as
/// soon as it has come, so that a person or a program at the other end of a pipe is not kept waiting.
class LineBlocks {
 public:
    /// A file that standard output writes to as well counts as one that cannot be read.
    ///
    /// @param path  "-" for standard input.
    explicit LineBlocks(std::string_view path);
    ~LineBlocks();
    LineBlocks(const LineBlocks&) = delete;
    LineBlocks& operator=(const LineBlocks&) = delete;

    /// The next piece: whole lines with their line breaks; a missing one at the end of the file is put there.
    /// A piece without one at its end is part of a line too long for the room, which goes on in the next.
    /// @return empty at the end, or when reading failed. Valid until the next call.
    [[nodiscard]] std::string_view next();

    /// Why it could not be read on; empty when it could.
    [[nodiscard]] const std::string& error() const noexcept { return error_; }
    /// What messages call it.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

 private:
    void read();
    std::string_view give(std::size_t count);

    std::string name_;
    std::string error_;
    int file_ = -1;
    std::vector<char> room_;
    std::size_t given_ = 0;  // bytes at the start that were handed over
    std::size_t size_ = 0;   // bytes that have come
    char last_ = '\n';       // sign handed over last
    bool hasEnded_ = false;
};

}  // namespace pelta::command
