#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pelta::command {

/// The whole of a file, or of standard input, with room behind it that parsers may read.
class InputText {
 public:
    /// @param path  "-" for standard input.
    explicit InputText(std::string_view path);

    /// Why it could not be read; empty when it could.
    [[nodiscard]] const std::string& error() const noexcept { return error_; }
    /// What messages call it.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

    [[nodiscard]] std::string_view text() const noexcept { return {bytes_.data(), size_}; }
    /// Bytes from the start of the text that may be read.
    [[nodiscard]] std::size_t capacity() const noexcept { return bytes_.size(); }

 private:
    std::string name_;
    std::string error_;
    std::vector<char> bytes_;
    std::size_t size_ = 0;
};

}  // namespace pelta::command
