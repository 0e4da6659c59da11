#pragma once

#include <emscripten/val.h>
#include <functional>
#include <string>
#include <vector>

namespace pelta {

/// A `div` of the page whose style is written only when it differs from what it was.
class Element {
 public:
    Element();
    explicit Element(emscripten::val element);
    ~Element();
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    [[nodiscard]] const emscripten::val& value() const noexcept { return value_; }
    /// Replaces the inline style.
    void setStyle(std::string cssText);
    /// Sets an attribute, or takes it away when the text is empty.
    void setAttribute(const std::string& name, const std::string& text);
    /// Sets a property of text.
    void set(const std::string& property, const std::string& text);
    void append(const emscripten::val& child);

 private:
    emscripten::val value_;
    std::string style_;
};

/// Puts the children of an element into an order while moving as few of them as possible, because an element
/// that moves loses focus and scroll position.
///
/// @param shown   the children as they stand, all of them in `wanted`; brought to the new order.
/// @param wanted  the children in their new order.
void arrangeChildren(const emscripten::val& parent, std::vector<emscripten::val>& shown,
                     const std::vector<emscripten::val>& wanted);

}  // namespace pelta
