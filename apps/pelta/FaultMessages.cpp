#include "FaultMessages.h"

#include <algorithm>
#include <cstdio>

namespace pelta::command {

namespace {

constexpr std::uint64_t namedFaults = 100;
constexpr std::size_t quotedBytes = 40;

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isControl(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code < 0x20 || code == 0x7F;
}

}  // namespace

void FaultMessages::tell(const std::string& place, std::string_view reason) {
    if (++fileCount_ <= namedFaults) {
        progress_.hide();
        std::fprintf(stderr, "%s: %.*s\n", place.c_str(), static_cast<int>(reason.size()), reason.data());
    }
}

void FaultMessages::endFile(const std::string& name, std::string_view kind) {
    if (fileCount_ > namedFaults) {
        progress_.hide();
        std::fprintf(stderr, "%s: %llu more %.*s\n", name.c_str(),
                     static_cast<unsigned long long>(fileCount_ - namedFaults), static_cast<int>(kind.size()),
                     kind.data());
    }
    count_ += fileCount_;
    fileCount_ = 0;
}

std::string inQuotes(std::string_view text) {
    std::size_t length = std::min(text.size(), quotedBytes);
    while (length < text.size() && length > 0 && continuesCharacter(text[length])) {
        --length;
    }
    std::string result("'");
    result.append(text.substr(0, length));
    std::replace_if(result.begin(), result.end(), isControl, ' ');
    return result + (length < text.size() ? "…'" : "'");
}

}  // namespace pelta::command
