#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace pelta {

/// Value of a layer property: a constant, or the value of an attribute of the drawn feature. A feature that
/// lacks the attribute takes the property's default.
template <class T>
class MLNExpression {
 public:
    // Constants read naturally at the call: layer->setIconSize(1.5).
    /// The same value for every feature.
    MLNExpression(T constant) : constant_(std::move(constant)) {}

    /// Each feature's own value of an attribute; a feature without it gets the property's default.
    [[nodiscard]] static MLNExpression expressionForKeyPath(std::string_view attribute) {
        MLNExpression expression{T{}};
        expression.attribute_ = std::make_shared<const std::string>(attribute);
        return expression;
    }

    /// True: one value for every feature.
    [[nodiscard]] bool isConstant() const noexcept { return attribute_ == nullptr; }
    /// The constant; a default value when the expression names an attribute.
    [[nodiscard]] const T& constant() const noexcept { return constant_; }
    /// The attribute's name; empty for constants.
    [[nodiscard]] std::string_view attribute() const noexcept {
        return attribute_ ? std::string_view(*attribute_) : std::string_view();
    }

    friend bool operator==(const MLNExpression& a, const MLNExpression& b) {
        return a.constant_ == b.constant_ && a.attribute() == b.attribute();
    }

 private:
    T constant_;
    std::shared_ptr<const std::string> attribute_;
};

/// Selects the features whose text attribute equals a value; an empty attribute name selects all.
struct MLNPredicate {
    std::string attribute;  ///< Name of the attribute.
    std::string value;      ///< What it must be.

    /// Features whose attribute is exactly this text.
    [[nodiscard]] static MLNPredicate equal(std::string_view attribute, std::string_view value) {
        return {std::string(attribute), std::string(value)};
    }

    friend bool operator==(const MLNPredicate&, const MLNPredicate&) = default;
};

}  // namespace pelta
