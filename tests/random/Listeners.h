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
/// An application's delegates, sources and items, which do what they were told to.

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
    std::array<Action, mapEventCount> actions;

    void regionWillChangeAnimated(PgmMapView&, bool, PgmCameraUpdateReason) override {
        run(MapEvent::willChange);
    }
    void regionIsChangingWithReason(PgmMapView&, PgmCameraUpdateReason) override {
        run(MapEvent::isChanging);
    }
    void regionDidChangeAnimated(PgmMapView&, bool, PgmCameraUpdateReason) override {
        run(MapEvent::didChange);
    }
    void mapViewDidBecomeIdle(PgmMapView&) override { run(MapEvent::idle); }
    void didTapMapView(PgmMapView&, CLLocationCoordinate2D) override { run(MapEvent::tap); }
    void didLongTapMapView(PgmMapView&, CLLocationCoordinate2D) override { run(MapEvent::longPress); }
    void didUpdateUserLocation(PgmMapView&, const std::optional<CLLocation>&) override {
        run(MapEvent::location);
    }

 private:
    void run(MapEvent event) const { runAction(actions[static_cast<std::size_t>(event)]); }
};

class ClusterListener final : public PgmClusterManagerDelegate {
 public:
    std::array<Action, clusterQuestionCount> actions;
    /// What markers are given when they are about to be shown.
    std::function<void(PgmMarkerOptions&)> configure;

    void willRenderCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>&,
                           PgmMarkerOptions& options) override {
        ask(ClusterQuestion::willRenderCluster, options);
    }
    void willRenderClusterItem(PgmClusterManager&, const std::shared_ptr<PgmClusterItem>&,
                               PgmMarkerOptions& options) override {
        ask(ClusterQuestion::willRenderItem, options);
    }
    bool didTapCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>&,
                       PgmMarkerOptions& options) override {
        ask(ClusterQuestion::didTapCluster, options);
        return true;
    }
    bool didTapClusterItem(PgmClusterManager&, const std::shared_ptr<PgmClusterItem>&,
                           PgmMarkerOptions& options) override {
        ask(ClusterQuestion::didTapItem, options);
        return false;
    }

 private:
    void ask(ClusterQuestion question, PgmMarkerOptions& options) const {
        runAction(actions[static_cast<std::size_t>(question)]);
        if (configure) {
            configure(options);
        }
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
