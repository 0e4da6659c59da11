#include "LineBlocks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "InputName.h"

namespace pelta::command {

namespace {

constexpr std::size_t roomSize = std::size_t{1} << 18U;

/// True for a file that standard output writes to as well, with something left to read: what is written would
/// be read again, without end.
bool isOutput(int file) {
    struct stat input {};
    struct stat output {};
    return fstat(file, &input) == 0 && fstat(STDOUT_FILENO, &output) == 0 && S_ISREG(output.st_mode) &&
           input.st_dev == output.st_dev && input.st_ino == output.st_ino &&
           lseek(file, 0, SEEK_CUR) < input.st_size;
}

}  // namespace

LineBlocks::LineBlocks(std::string_view path)
    : name_(inputName(path)),
      file_(path == "-" ? STDIN_FILENO : open(name_.c_str(), O_RDONLY | O_CLOEXEC)),
      room_(roomSize + 1) {
    if (file_ < 0) {
        error_ = std::strerror(errno);
    } else if (isOutput(file_)) {
        error_ = "it is the output as well; write to another file";
    }
}

LineBlocks::~LineBlocks() {
    if (file_ > STDIN_FILENO) {
        close(file_);
    }
}

std::string_view LineBlocks::next() {
    std::copy(room_.begin() + static_cast<std::ptrdiff_t>(given_),
              room_.begin() + static_cast<std::ptrdiff_t>(size_), room_.begin());
    size_ -= given_;
    given_ = 0;
    while (error_.empty() && !hasEnded_) {
        const std::size_t old = size_;
        read();
        const auto lineBreak = std::string_view(room_.data() + old, size_ - old).rfind('\n');
        if (lineBreak != std::string_view::npos) {
            return give(old + lineBreak + 1);
        }
        if (size_ == roomSize) {
            return give(size_);
        }
    }
    if (!error_.empty()) {
        return {};
    }
    if ((size_ > 0 ? room_[size_ - 1] : last_) != '\n') {
        room_[size_++] = '\n';
    }
    return give(size_);
}

std::string_view LineBlocks::give(std::size_t count) {
    given_ = count;
    last_ = count > 0 ? room_[count - 1] : last_;
    return {room_.data(), count};
}

void LineBlocks::read() {
    const ssize_t count = ::read(file_, room_.data() + size_, roomSize - size_);
    if (count >= 0) {
        size_ += static_cast<std::size_t>(count);
        hasEnded_ = count == 0;
    } else if (errno != EINTR) {
        error_ = std::strerror(errno);
    }
}

}  // namespace pelta::command
