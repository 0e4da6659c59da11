#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pelta/Engine/MLNShape.h>

namespace pelta {

struct ModelLayer;
struct RunFeature;

/// The shapes of a source that carry one identifier, and the layers that select it.
struct ShapePlace {
    std::string identifier;
    std::vector<const MLNShape*> shapes;
    std::vector<ModelLayer*> layers;
    RunFeature* feature = nullptr;  ///< The one that the engine has for the shape; null if it has none.
    bool isChanged = false;         ///< Listed by the update under way.

    /// The shape, if there is exactly one and it has something to draw; else null.
    [[nodiscard]] const MLNShape* drawableShape() const;
};

/// A source's shapes by their attribute "identifier", kept in step with the source by looking at what
/// differs.
class ShapeIndex {
 public:
    /// Name of the attribute.
    static constexpr std::string_view identifierAttribute = "identifier";

    /// Takes over a source's contents.
    /// @return the places selected by layers whose shapes are others, or have changed, since the last call.
    std::vector<ShapePlace*> update(std::shared_ptr<const MLNShape> contents);

    /// The place of an identifier, for a layer that selects it.
    [[nodiscard]] ShapePlace& enter(std::string_view identifier, ModelLayer& layer);
    /// The layer no longer selects the place's identifier.
    void leave(ShapePlace& place, const ModelLayer& layer);

    /// What the source holds.
    [[nodiscard]] const std::shared_ptr<const MLNShape>& contents() const noexcept { return contents_; }

 private:
    struct Record {
        const MLNShape* shape = nullptr;
        std::uint64_t revision = 0;
        ShapePlace* place = nullptr;
    };

    [[nodiscard]] ShapePlace& place(std::string_view identifier);
    [[nodiscard]] std::vector<ShapePlace*> takeChanged();
    [[nodiscard]] Record recordOf(const MLNShape& shape);
    void forget(const Record& record);
    void noteIfChanged(Record& record);
    void noteChange(ShapePlace* place);

    std::shared_ptr<const MLNShape> contents_;
    std::vector<Record> records_;
    std::unordered_map<std::string_view, std::unique_ptr<ShapePlace>> places_;  // Keys lie in the places.
    std::vector<ShapePlace*> changed_;
};

}  // namespace pelta
