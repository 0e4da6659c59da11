#pragma once

#include <emscripten/val.h>
#include <functional>
#include <string>

namespace pelta {

/// A JavaScript function that runs C++ code for as long as this object lives. Calls that come later, from a
/// listener that the browser has not dropped yet, do nothing and answer undefined.
class JsFunction {
 public:
    /// Takes the call's arguments as a JavaScript array and answers the result.
    using Body = std::function<emscripten::val(const emscripten::val& arguments)>;

    JsFunction() = default;
    explicit JsFunction(Body body);
    ~JsFunction();
    JsFunction(JsFunction&& other) noexcept;
    JsFunction& operator=(JsFunction&& other) noexcept;

    /// A function without a result that takes its first argument, as listeners and promises call it.
    [[nodiscard]] static JsFunction listener(std::function<void(const emscripten::val& argument)> body);

    /// The function to hand to JavaScript.
    [[nodiscard]] const emscripten::val& value() const noexcept { return value_; }

 private:
    int identifier_ = 0;
    emscripten::val value_ = emscripten::val::undefined();
};

/// Listens to an event of an `EventTarget` for as long as this object lives.
class EventListener {
 public:
    EventListener(emscripten::val target, std::string type,
                  std::function<void(const emscripten::val& event)> body,
                  emscripten::val options = emscripten::val::undefined());
    ~EventListener();
    EventListener(EventListener&&) noexcept = default;
    EventListener& operator=(EventListener&&) = delete;

 private:
    emscripten::val target_;
    std::string type_;
    JsFunction function_;
    emscripten::val options_;
};

}  // namespace pelta
