#include <emscripten/bind.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Stage.h"

// Info windows and the user's position.

using emscripten::val;

namespace pelta::browser {

namespace {

/// Shows a title in the standard bubble.
class Title final : public PgmImageTextDataSource {
 public:
    explicit Title(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] std::optional<std::string> title(PgmShape& /*with*/) override { return text_; }

 private:
    std::string text_;
};

/// A drawn disc.
class Disc final : public UIView {
 public:
    using UIView::UIView;
    [[nodiscard]] ViewContent content() const override { return DrawnContent{}; }
    void draw(GraphicsContext& context, CGRect rect) override { context.fillOval(rect, UIColor{0, 0, 1, 1}); }
};

/// Shows a green card of 80 × 60 points with a half-transparent red box, whose white inside is as transparent
/// as a whole, and a drawn disc.
class Card final : public PgmImageViewDataSource {
 public:
    [[nodiscard]] std::shared_ptr<UIView> view(PgmShape& /*with*/) override {
        const auto card = make<UIView>(CGRect{{500, 500}, {80, 60}});
        card->setBackgroundColor({0, 1, 0, 1});
        const auto box = make<UIView>(CGRect{{0, 0}, {40, 30}});
        box->setBackgroundColor({1, 0, 0, 1});
        box->setAlpha(0.5);
        const auto inside = make<UIView>(CGRect{{20, 0}, {20, 30}});
        inside->setBackgroundColor(UIColor::white());
        box->addSubview(inside);
        card->addSubview(box);
        card->addSubview(make<Disc>(CGRect{{50, 20}, {20, 20}}));
        return card;
    }
};

/// The data sources that are in use; windows hold theirs weakly.
std::vector<std::shared_ptr<PgmImageDataSource>>& sources() {
    static std::vector<std::shared_ptr<PgmImageDataSource>> all;
    return all;
}

/// @param options  map, title or card, and either `marker` (a shape's number) or `at`.
int addInfoWindow(const val& options) {
    const auto window = PgmInfoWindow::create();
    sources().push_back(options["card"].isTrue()
                            ? std::shared_ptr<PgmImageDataSource>(std::make_shared<Card>())
                            : std::make_shared<Title>(options["title"].as<std::string>()));
    window->setImageDataSource(sources().back());
    if (options["marker"].isNumber()) {
        auto& marker = Stage::shared().shape(options["marker"].as<int>());
        window->setMarker(std::static_pointer_cast<PgmMarker>(marker.shared_from_this()));
    } else {
        window->setPosition(
            CLLocationCoordinate2D{options["at"][0].as<double>(), options["at"][1].as<double>()});
    }
    window->setMapView(Stage::shared().map(0).view);
    return Stage::shared().addShape(window);
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(annotation_commands) {
    using namespace pelta::browser;
    emscripten::function("addInfoWindow", &addInfoWindow);
    command("redrawInfoWindow", [](int window) {
        static_cast<pelta::PgmInfoWindow&>(Stage::shared().shape(window)).invalidate();
    });
    command("follow", [](int map, unsigned mode) {
        Stage::shared().map(map).view->setUserTrackingMode(*pelta::PgmUserTrackingModeFromRaw(mode));
    });
    emscripten::function("setLogging", &pelta::setIsLoggerEnabled);
}
