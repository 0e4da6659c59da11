#include "DocumentFolder.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace pelta::headless {

namespace {

bool isLetter(char c) noexcept {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool isSchemeCharacter(char c) noexcept {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
}

/// The scheme of an address in lower case, without its colon; empty when there is none.
std::string schemeOf(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isLetter(address.front())) {
        return {};
    }
    std::string scheme(address.substr(0, colon));
    if (!std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter)) {
        return {};
    }
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return scheme;
}

int hexValue(char c) noexcept {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const int letter = std::tolower(static_cast<unsigned char>(c));
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && index + 2 < text.size()) {
            const int high = hexValue(text[index + 1]);
            const int low = hexValue(text[index + 2]);
            if (high >= 0 && low >= 0) {
                decoded += static_cast<char>(high * 16 + low);
                index += 2;
                continue;
            }
        }
        decoded += text[index];
    }
    return decoded;
}

/// The path in a "file:" address; a host between "//" and the path is passed over.
std::string pathInFileAddress(std::string_view address) {
    std::string_view rest = address.substr(5);
    if (rest.substr(0, 2) == "//") {
        const auto path = rest.find('/', 2);
        rest = path == std::string_view::npos ? std::string_view{} : rest.substr(path);
    }
    return percentDecoded(rest);
}

FetchResult failure(std::string_view address, std::string_view reason) {
    return {false, {}, "Cannot read \"" + std::string(address) + "\": " + std::string(reason)};
}

FetchResult problem(std::string reason) {
    return {false, {}, std::move(reason)};
}

}  // namespace

FetchResult DocumentFolder::read(const std::string& address) const {
    const auto served = served_.find(address);
    if (served != served_.end()) {
        return {true, served->second, {}};
    }
    const std::string scheme = schemeOf(address);
    if (!scheme.empty() && scheme != "file") {
        return failure(address,
                       "the headless port does not fetch over the network; hand the document over with "
                       "serveDocument, or name a file.");
    }
    const std::string path = scheme.empty() ? address : pathInFileAddress(address);
    if (path.empty()) {
        return failure(address, "it names no file; give the path of a document.");
    }
    FetchResult result = readFile(folder_ / path);
    if (!result.isOk) {
        result.message = failure(address, result.message).message;
    }
    return result;
}

FetchResult readFile(const std::filesystem::path& file) {
    if (file.native().find('\0') != std::string::npos) {
        return problem("a file name cannot hold a zero byte.");
    }
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return problem("there is no such file; check the path and the resource folder.");
    }
    if (error) {
        return problem("the file cannot be found (" + error.message() + "); check the path.");
    }
    if (std::filesystem::is_directory(status)) {
        return problem("it is a folder; name a document in it.");
    }
    if (!std::filesystem::is_regular_file(status)) {
        return problem("it is not a regular file; name a document.");
    }
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (stream && stream.peek() != std::ifstream::traits_type::eof()) {
        text << stream.rdbuf();
    }
    if (!stream.is_open() || stream.bad() || text.bad()) {
        return problem("the file cannot be read; check its permissions.");
    }
    return {true, std::move(text).str(), {}};
}

}  // namespace pelta::headless
