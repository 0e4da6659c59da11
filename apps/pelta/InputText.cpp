#include "InputText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <simdjson.h>

#include "InputName.h"

namespace pelta::command {

namespace {

constexpr std::size_t firstPiece = std::size_t{1} << 20U;

struct Closer {
    void operator()(std::FILE* file) const {
        if (file != stdin) {
            std::fclose(file);
        }
    }
};

}  // namespace

InputText::InputText(std::string_view path) : name_(inputName(path)) {
    const std::unique_ptr<std::FILE, Closer> file(path == "-" ? stdin : std::fopen(name_.c_str(), "rb"));
    if (file == nullptr) {
        error_ = std::strerror(errno);
        return;
    }
    for (;;) {
        if (bytes_.size() < size_ + firstPiece / 2 + simdjson::SIMDJSON_PADDING) {
            bytes_.resize(std::max(firstPiece, bytes_.size() * 2) + simdjson::SIMDJSON_PADDING);
        }
        const std::size_t room = bytes_.size() - size_ - simdjson::SIMDJSON_PADDING;
        const std::size_t count = std::fread(bytes_.data() + size_, 1, room, file.get());
        size_ += count;
        if (count < room) {
            break;
        }
    }
    if (std::ferror(file.get()) != 0) {
        error_ = std::strerror(errno);
    }
}

}  // namespace pelta::command
