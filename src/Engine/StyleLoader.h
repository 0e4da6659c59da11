#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// True for a text that an address can be: not empty, without blanks and control characters.
[[nodiscard]] bool isStyleAddress(std::string_view text) noexcept;

/// Gets style documents and reads them. Of several requests under way only the newest is answered. Answers
/// come later on the main thread, and not once the loader is released.
class StyleLoader {
 public:
    struct Answers {
        std::function<void(StyleDocument)> didRead;
        std::function<void(const std::string& message)> didFail;
    };

    explicit StyleLoader(Answers answers) : answers_(std::make_shared<const Answers>(std::move(answers))) {}

    void loadAddress(const std::string& address);
    void loadText(std::string text);
    /// From a request until its answer.
    [[nodiscard]] bool isLoading() const noexcept { return request_ != nullptr; }

 private:
    struct Request {};

    [[nodiscard]] std::weak_ptr<const Request> beginRequest();
    void answer(std::string text, std::string address);
    void fail(const std::string& message);

    std::shared_ptr<const Answers> answers_;
    std::shared_ptr<const Request> request_;
};

}  // namespace pelta
