#include "Engine/StyleLoader.h"

#include <algorithm>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/PlatformPort.h>

#include "Engine/StyleDocumentReader.h"

namespace pelta {

bool isStyleAddress(std::string_view text) noexcept {
    constexpr unsigned char del = 0x7F;
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte > ' ' && byte != del;
    });
}

// A request lives until it is answered or a newer one takes its place; an answer to one that is gone is
// dropped.
std::weak_ptr<const StyleLoader::Request> StyleLoader::beginRequest() {
    request_ = std::make_shared<const Request>();
    return request_;
}

void StyleLoader::loadAddress(const std::string& address) {
    auto request = beginRequest();
    const auto take = [this, request = std::move(request), address](FetchResult result) {
        if (request.expired()) {
            return;  // `this` may be gone too.
        }
        if (result.isOk) {
            answer(std::move(result.text), address);
        } else {
            fail(result.message);
        }
    };
    if (isStyleAddress(address)) {
        PlatformPort::current().fetchText(address, take);
        return;
    }
    MainQueue::async([take, address] {
        take({false,
              {},
              "style document \"" + address +
                  "\": this is not an address; give one without blanks "
                  "and control characters"});
    });
}

void StyleLoader::loadText(std::string text) {
    MainQueue::async([this, request = beginRequest(), text = std::move(text)] {
        if (!request.expired()) {
            answer(text, {});
        }
    });
}

void StyleLoader::answer(std::string text, std::string address) {
    auto result = readStyleDocument(std::move(text), std::move(address));
    if (!result.document) {
        fail(result.message);
        return;
    }
    request_ = nullptr;
    const auto answers = answers_;
    answers->didRead(std::move(*result.document));
}

void StyleLoader::fail(const std::string& message) {
    request_ = nullptr;
    const auto answers = answers_;
    answers->didFail(message);
}

}  // namespace pelta
