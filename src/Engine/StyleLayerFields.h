#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// A JSON value as far as the fields of a style layer need to know it.
struct JsonValue {
    enum class Kind { text, number, other };
    Kind kind = Kind::other;
    std::string text;
    double number = 0;
};

/// Collects the fields of one layer of a style document and checks them.
class StyleLayerFields {
 public:
    /// Takes a field of the layer; unknown ones are left alone.
    /// @return what is wrong with the value, with the fix; empty when nothing is.
    [[nodiscard]] std::string take(std::string_view key, const JsonValue& value);
    /// Takes the value of "visibility" in the layer's "layout".
    void takeVisibility(const JsonValue& value);

    /// Checks the layer as a whole once all fields have been taken.
    /// @return what is wrong, with the fix; empty when the layer is good.
    [[nodiscard]] std::string finish();

    [[nodiscard]] const DocumentLayer& layer() const noexcept { return layer_; }

 private:
    [[nodiscard]] std::string takeZoom(std::string_view key, float& field, const JsonValue& value) const;

    DocumentLayer layer_;
    std::string type_;
};

}  // namespace pelta
