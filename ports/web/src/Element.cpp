#include "Element.h"

#include <algorithm>
#include <utility>

using emscripten::val;

namespace pelta {

Element::Element() : Element(val::global("document").call<val>("createElement", std::string("div"))) {}

Element::Element(val element) : value_(std::move(element)) {}

Element::~Element() {
    value_.call<void>("remove");
}

void Element::setStyle(std::string cssText) {
    if (cssText != style_) {
        style_ = std::move(cssText);
        value_["style"].set("cssText", style_);
    }
}

void Element::setAttribute(const std::string& name, const std::string& text) {
    if (text.empty()) {
        value_.call<void>("removeAttribute", name);
    } else {
        value_.call<void>("setAttribute", name, text);
    }
}

void Element::set(const std::string& property, const std::string& text) {
    value_.set(property, text);
}

void Element::append(const val& child) {
    value_.call<void>("appendChild", child);
}

void arrangeChildren(const val& parent, std::vector<val>& shown, const std::vector<val>& wanted) {
    const auto isSame = [](const val& a) { return [&a](const val& b) { return a.strictlyEquals(b); }; };
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (i < shown.size() && shown[i].strictlyEquals(wanted[i])) {
            continue;
        }
        const auto former = std::find_if(shown.begin(), shown.end(), isSame(wanted[i]));
        if (former != shown.end()) {
            shown.erase(former);
        }
        parent.call<void>("insertBefore", wanted[i], i < shown.size() ? shown[i] : val::null());
        shown.insert(shown.begin() + static_cast<std::ptrdiff_t>(i), wanted[i]);
    }
}

}  // namespace pelta
