#include "TextFetch.h"

#include <memory>
#include <utility>

#include "JsFunction.h"

using emscripten::val;

namespace pelta {

namespace {

/// One fetch under way, which owns itself until it has answered.
class Fetch {
 public:
    static void begin(const std::string& address, std::function<void(FetchResult)> completion) {
        const auto fetch = std::make_shared<Fetch>(address, std::move(completion));
        fetch->self_ = fetch;
        // Called from a promise, so that an address that `fetch` refuses to look at fails like any other.
        val::global("Promise")
            .call<val>("resolve")
            .call<val>("then", fetch->begin_.value())
            .call<val>("then", fetch->didRespond_.value())
            .call<val>("then", fetch->didRead_.value(), fetch->didFail_.value());
    }

    /// For `begin`.
    Fetch(std::string address, std::function<void(FetchResult)> completion)
        : address_(std::move(address)), completion_(std::move(completion)) {}

 private:
    /// The promise of the text, or undefined when there is none to come.
    val read(const val& response) {
        if (response["ok"].as<bool>()) {
            return response.call<val>("text");
        }
        fail("the server answered with status " + std::to_string(response["status"].as<int>()));
        return val::undefined();
    }

    void fail(const std::string& reason) {
        answer({false, {}, "Cannot fetch \"" + address_ + "\": " + reason + ". Check the address."});
    }

    void answer(FetchResult result) {
        const auto keep = std::move(self_);
        if (const auto completion = std::exchange(completion_, nullptr)) {
            completion(std::move(result));
        }
    }

    std::string address_;
    std::function<void(FetchResult)> completion_;
    std::shared_ptr<Fetch> self_;
    JsFunction begin_{[this](const val&) { return val::global("fetch")(address_); }};
    JsFunction didRespond_{[this](const val& arguments) { return read(arguments[0]); }};
    JsFunction didRead_ = JsFunction::listener([this](const val& text) {
        answer({true, text.as<std::string>(), {}});
    });
    JsFunction didFail_ =
        JsFunction::listener([this](const val& error) { fail(error["message"].as<std::string>()); });
};

}  // namespace

void fetchText(const std::string& address, std::function<void(FetchResult)> completion) {
    Fetch::begin(address, std::move(completion));
}

}  // namespace pelta
