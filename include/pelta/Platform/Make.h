#pragma once

#include <memory>
#include <string_view>
#include <utility>

namespace pelta {

namespace detail {

/// Unqualified name of a type, read from the compiler's own rendering of this function's signature.
template <class T>
[[nodiscard]] constexpr std::string_view typeName() noexcept {
    std::string_view text = __PRETTY_FUNCTION__;
    const auto start = text.find("T = ");
    text.remove_prefix(start + 4);
    text = text.substr(0, text.find_first_of(";]"));
    const auto scope = text.substr(0, text.find('<')).rfind("::");
    return scope == std::string_view::npos ? text : text.substr(scope + 2);
}

}  // namespace detail

/// Makes a reference-counted object and then runs its `completeConstruction(className)`, where virtual
/// functions and `shared_from_this` already work. Every factory uses it; so can an application for subclasses
/// of its own.
template <class T, class... Arguments>
[[nodiscard]] std::shared_ptr<T> make(Arguments&&... arguments) {
    auto object = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    object->completeConstruction(detail::typeName<T>());
    return object;
}

}  // namespace pelta
