#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNMapView.h>

#include "View/RetiredPictures.h"

namespace pelta {

/// The shapes of one map view and what keeps the engine's style in step with them: the order of their
/// layers, the source of their features and the pictures they need. Changes are only noted; the work is done
/// once before a frame.
///
/// A shape makes its layers once and takes them along: the map that it was put on last has them in its style,
/// and every map removes layers from its own style only.
///
/// Shapes run the application's code when they are asked for features, pictures or layers. It may add and
/// remove shapes and change the style, so nothing of either is held meanwhile; whoever calls keeps the
/// registry itself alive.
class ShapeRegistry {
 public:
    using Shapes = std::map<std::uint64_t, std::shared_ptr<PgmShape>>;

    /// Of the one source that holds the features of all shapes.
    static constexpr std::string_view sourceIdentifier = "pel-shapes";

    /// Work that waits for the next frame.
    struct PendingWork {
        bool reorderShapes = false;
        bool updateShapes = false;
        bool checkShapeImage = false;
    };

    ShapeRegistry();
    ~ShapeRegistry();
    ShapeRegistry(const ShapeRegistry&) = delete;
    ShapeRegistry& operator=(const ShapeRegistry&) = delete;

    void setEngine(std::shared_ptr<MLNMapView> engine) { engine_ = std::move(engine); }

    [[nodiscard]] const Shapes& shapes() const noexcept { return shapes_; }
    [[nodiscard]] const Shapes& shapesToRemove() const noexcept { return shapesToRemove_; }
    [[nodiscard]] PendingWork& pendingWork() noexcept { return pendingWork_; }
    [[nodiscard]] const PendingWork& pendingWork() const noexcept { return pendingWork_; }
    [[nodiscard]] bool hasLoadedStyle() const noexcept { return hasLoadedStyle_; }
    /// Of the loaded style, lowest symbol layer; absent when it has none.
    [[nodiscard]] const std::optional<std::string>& firstSymbolLayer() const noexcept {
        return firstSymbolLayer_;
    }

    void add(const std::shared_ptr<PgmShape>& shape);
    void remove(const std::shared_ptr<PgmShape>& shape);
    void draw(PgmShape& shape);
    void updateSource(std::string_view identifier);
    void reorder();
    void checkImages();
    /// Notes that an info window no longer shows a picture; null is ignored.
    void retirePicture(std::shared_ptr<PgmImage> picture);

    /// Prepares a newly loaded style for shapes and draws those that there are.
    void styleDidLoad(MLNStyle& style);
    /// Does what is pending, each kind once.
    void doPendingWork();
    void triggerRepaint();

 private:
    using Pictures = std::vector<std::shared_ptr<PgmImage>>;

    [[nodiscard]] MLNStyle* style() const;
    [[nodiscard]] std::shared_ptr<MLNShapeSource> source(std::string_view identifier) const;
    [[nodiscard]] std::vector<std::shared_ptr<PgmShape>> shapesNow() const;
    [[nodiscard]] Pictures neededPictures() const;
    void putIntoStyle(const Pictures& pictures) const;
    void removeRetiredPictures(const Pictures& needed);
    void requestEverything();

    std::shared_ptr<MLNMapView> engine_;
    Shapes shapes_;
    Shapes shapesToRemove_;
    PendingWork pendingWork_;
    RetiredPictures retiredPictures_;
    std::optional<std::string> firstSymbolLayer_;
    bool hasLoadedStyle_ = false;
};

}  // namespace pelta
