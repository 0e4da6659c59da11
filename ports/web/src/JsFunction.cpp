#include "JsFunction.h"

#include <emscripten.h>
#include <emscripten/bind.h>
#include <string>
#include <unordered_map>
#include <utility>

using emscripten::val;

// Embind functions insist on their number of arguments, JavaScript callers on theirs; an array serves both.
// clang-format off
EM_JS(emscripten::EM_VAL, peltaMakeFunction, (int identifier), {
    return Emval.toHandle((...values) => Module["peltaCall"](identifier, values));
});
// clang-format on

namespace pelta {

namespace {

struct Registry {
    std::unordered_map<int, JsFunction::Body> bodies;
    int last = 0;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

val call(int identifier, const val& arguments) {
    const auto found = registry().bodies.find(identifier);
    if (found == registry().bodies.end()) {
        return val::undefined();
    }
    // A copy, because the call may end the function's life.
    const JsFunction::Body body = found->second;
    return body(arguments);
}

}  // namespace

JsFunction::JsFunction(Body body) : identifier_(++registry().last) {
    registry().bodies.emplace(identifier_, std::move(body));
    value_ = val::take_ownership(peltaMakeFunction(identifier_));
}

JsFunction::~JsFunction() {
    registry().bodies.erase(identifier_);
}

JsFunction::JsFunction(JsFunction&& other) noexcept
    : identifier_(std::exchange(other.identifier_, 0)),
      value_(std::exchange(other.value_, val::undefined())) {}

JsFunction& JsFunction::operator=(JsFunction&& other) noexcept {
    std::swap(identifier_, other.identifier_);
    std::swap(value_, other.value_);
    return *this;
}

JsFunction JsFunction::listener(std::function<void(const val& argument)> body) {
    return JsFunction([body = std::move(body)](const val& arguments) {
        body(arguments[0]);
        return val::undefined();
    });
}

EventListener::EventListener(val target, std::string type, std::function<void(const val& event)> body,
                             val options)
    : target_(std::move(target)),
      type_(std::move(type)),
      function_(JsFunction::listener(std::move(body))),
      options_(std::move(options)) {
    target_.call<void>("addEventListener", type_, function_.value(), options_);
}

EventListener::~EventListener() {
    if (!function_.value().isUndefined()) {
        target_.call<void>("removeEventListener", type_, function_.value(), options_);
    }
}

}  // namespace pelta

EMSCRIPTEN_BINDINGS(pelta_function) {
    emscripten::function("peltaCall", &pelta::call);
}
