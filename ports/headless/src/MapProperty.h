#pragma once

#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <pelta/Engine/MLNExpression.h>
#include <pelta/Engine/MLNShape.h>
#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// A layer property as a layer holds it: absent while nobody has set it.
template <class T>
using MapProperty = std::optional<MLNExpression<T>>;

namespace detail {

/// An attribute's value as the type of a property; nothing when it is of another type.
template <class T>
[[nodiscard]] std::optional<T> attributeAs(const MLNAttributeValue& value) {
    if constexpr (std::is_same_v<T, CGVector>) {
        const auto* numbers = std::get_if<std::vector<double>>(&value);
        return numbers != nullptr && numbers->size() == 2
                   ? std::optional(CGVector{(*numbers)[0], (*numbers)[1]})
                   : std::nullopt;
    } else if constexpr (std::is_same_v<T, double>) {
        return std::visit(
            [](const auto& held) -> std::optional<double> {
                using Held = std::decay_t<decltype(held)>;
                if constexpr (std::is_arithmetic_v<Held> && !std::is_same_v<Held, bool>) {
                    return static_cast<double>(held);
                }
                return std::nullopt;
            },
            value);
    } else {
        const T* held = std::get_if<T>(&value);
        return held != nullptr ? std::optional(*held) : std::nullopt;
    }
}

}  // namespace detail

/// The value of a property for a feature, `fallback` when it is absent or the feature lacks the attribute.
template <class T>
[[nodiscard]] T resolve(const MapProperty<T>& property, const MLNShape& feature, T fallback) {
    if (!property) {
        return fallback;
    }
    if (property->isConstant()) {
        return property->constant();
    }
    const MLNAttributeValue* value = feature.attribute(property->attribute());
    return value != nullptr ? detail::attributeAs<T>(*value).value_or(std::move(fallback)) : fallback;
}

}  // namespace pelta
