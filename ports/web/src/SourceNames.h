#pragma once

#include <string>
#include <string_view>

#include <pelta/Engine/MLNShape.h>
#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// What the engine calls the model's sources. A style document has sources of its own under any names, which
/// the model's may have too; the engine has all of them in one place, so the names of the model's begin with
/// what no name of the document's begins with.
class SourceNames {
 public:
    SourceNames() = default;
    explicit SourceNames(const StyleDocument& document);

    /// Of a source as it is.
    [[nodiscard]] std::string ofWhole(std::string_view source) const;
    /// Of a source's part for runs that draw shapes of one kind: so no change of a marker reaches lines and
    /// areas.
    [[nodiscard]] std::string ofKind(std::string_view source, MLNShapeKind shape) const;

 private:
    std::string prefix_ = "pelta:";
};

}  // namespace pelta
