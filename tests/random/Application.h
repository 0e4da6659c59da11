#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <pelta/Pelta.h>

#include "Placeholders.h"

namespace pelta::random {

/// @file
/// An application's delegates, shapes, sources and items, which do what they were told to.

using Action = std::function<void()>;

inline void runAction(const Action& action) {
    // An action may put another in its place, or release whoever holds it.
    const Action held = action;
    if (held) {
        held();
    }
}

class MapListener final : public PgmMapDelegate {
 public:
    using Reason = PgmCameraUpdateReason;
    using Location = std::optional<CLLocation>;
    std::array<Action, mapEventCount> actions;

    void regionWillChangeAnimated(PgmMapView&, bool, Reason) override { run(MapEvent::willChange); }
    void regionIsChangingWithReason(PgmMapView&, Reason) override { run(MapEvent::isChanging); }
    void regionDidChangeAnimated(PgmMapView&, bool, Reason) override { run(MapEvent::didChange); }
    void mapViewDidBecomeIdle(PgmMapView&) override { run(MapEvent::idle); }
    void didTapMapView(PgmMapView&, CLLocationCoordinate2D) override { run(MapEvent::tap); }
    void didLongTapMapView(PgmMapView&, CLLocationCoordinate2D) override { run(MapEvent::longPress); }
    void didUpdateUserLocation(PgmMapView&, const Location&) override { run(MapEvent::location); }

 private:
    void run(MapEvent event) const { runAction(actions[static_cast<std::size_t>(event)]); }
};

class ClusterListener final : public PgmClusterManagerDelegate {
 public:
    using Manager = PgmClusterManager;
    using Cluster = std::shared_ptr<PgmCluster>;
    using Item = std::shared_ptr<PgmClusterItem>;
    using Options = PgmMarkerOptions;

    std::array<Action, clusterQuestionCount> actions;
    /// What markers are given when they are about to be shown.
    std::function<void(PgmMarkerOptions&)> configure;

    void willRenderCluster(Manager&, const Cluster&, Options& options) override { ask(0, options); }
    void willRenderClusterItem(Manager&, const Item&, Options& options) override { ask(1, options); }
    bool didTapCluster(Manager&, const Cluster&, Options& options) override { return ask(2, options); }
    bool didTapClusterItem(Manager&, const Item&, Options& options) override { return !ask(3, options); }

 private:
    /// @param question  as the placeholder "question" counts them.
    bool ask(std::size_t question, PgmMarkerOptions& options) const {
        runAction(actions[question]);
        if (configure) {
            configure(options);
        }
        return true;
    }
};

/// What an application's own shapes do when the map asks them for something.
struct ShapeHooks {
    Action onFeature;
    Action onShapeImage;
};

/// An application's subclass of a shape, which runs its hooks from within the map's work.
template <class Shape>
class ApplicationShape final : public Shape, public ShapeHooks {
 public:
    using Shape::Shape;

    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override {
        runAction(onFeature);
        return Shape::feature();
    }
    [[nodiscard]] std::shared_ptr<PgmImage> shapeImage() const override {
        runAction(onShapeImage);
        return Shape::shapeImage();
    }
};

class TextSource final : public PgmImageTextDataSource {
 public:
    explicit TextSource(std::string text, Action action = {})
        : text_(std::move(text)), action_(std::move(action)) {}
    [[nodiscard]] std::optional<std::string> title(PgmShape&) override {
        runAction(action_);
        return text_;
    }

 private:
    std::string text_;
    Action action_;
};

class ViewSource final : public PgmImageViewDataSource {
 public:
    explicit ViewSource(CGSize size) : size_(size) {}
    [[nodiscard]] std::shared_ptr<UIView> view(PgmShape&) override {
        auto view = make<UIView>(CGRect{{}, size_});
        view->setBackgroundColor(UIColor::white());
        return view;
    }

 private:
    CGSize size_;
};

class Item final : public PgmClusterItem {
 public:
    explicit Item(CLLocationCoordinate2D position) : position_(position) {}
    [[nodiscard]] CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

}  // namespace pelta::random
