#pragma once

#include <filesystem>
#include <map>
#include <string>

#include <pelta/Platform/PlatformPort.h>

namespace pelta::headless {

/// Where the documents of an application come from: given ones by address, all others as files.
class DocumentFolder {
 public:
    void serve(std::string address, std::string text) {
        served_.insert_or_assign(std::move(address), std::move(text));
    }
    void setFolder(std::filesystem::path folder) { folder_ = std::move(folder); }
    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return folder_; }

    /// The document at an address, or a message that names the address, what is wrong and what to do.
    [[nodiscard]] FetchResult read(const std::string& address) const;

 private:
    std::map<std::string, std::string, std::less<>> served_;
    std::filesystem::path folder_ = ".";
};

/// The whole of a regular file, or a message that says what is wrong with it.
[[nodiscard]] FetchResult readFile(const std::filesystem::path& file);

}  // namespace pelta::headless
