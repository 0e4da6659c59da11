#include "TextFetch.h"

#include <memory>
#include <utility>

#include "JsFunction.h"

using emscripten::val;

namespace pelta {

namespace {

/// One fetch under way; answers once.
struct Fetch {
    std::string address;
    std::function<void(FetchResult)> completion;

    void answer(FetchResult result) {
        if (const auto answer = std::exchange(completion, nullptr)) {
            answer(std::move(result));
        }
    }

    void fail(const std::string& reason) {
        answer({false, {}, "Cannot fetch \"" + address + "\": " + reason + ". Check the address."});
    }
};

/// Answers with the response's text, or why it is none.
void readResponse(const std::shared_ptr<Fetch>& fetch, const val& response) {
    if (!response["ok"].as<bool>()) {
        fetch->fail("the server answered with status " + std::to_string(response["status"].as<int>()));
        return;
    }
    response.call<val>("text").call<val>(
        "then", JsFunction::once([fetch](const val& text) {
            fetch->answer({true, text.as<std::string>(), {}});
        }),
        JsFunction::once([fetch](const val& error) { fetch->fail(error["message"].as<std::string>()); }));
}

}  // namespace

void fetchText(const std::string& address, std::function<void(FetchResult)> completion) {
    const auto fetch = std::make_shared<Fetch>(Fetch{address, std::move(completion)});
    // Called from a promise, so that an address that fetch refuses to look at fails like any other.
    const JsFunction::Body begin = [address](const val&) { return val::global("fetch")(address); };
    const auto starter = std::make_shared<JsFunction>(begin);
    val::global("Promise")
        .call<val>("resolve")
        .call<val>("then", starter->value())
        .call<val>("then",
                   JsFunction::once([fetch, starter](const val& response) { readResponse(fetch, response); }),
                   JsFunction::once([fetch, starter](const val& error) {
                       fetch->fail(error["message"].as<std::string>());
                   }));
}

}  // namespace pelta
