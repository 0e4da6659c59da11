#include <emscripten/bind.h>
#include <memory>
#include <string>
#include <vector>

#include "Stage.h"

// Views of the interface kit that the tests put over the maps.

using emscripten::val;

namespace pelta::browser {

namespace {

int& pressCount() {
    static int count = 0;
    return count;
}

UIImage oneColor(int width, int height, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    std::vector<std::uint8_t> pixels;
    for (int i = 0; i < width * height; ++i) {
        pixels.insert(pixels.end(), {red, green, blue, 255});
    }
    return *UIImage::fromPixels(width, height, 1, std::move(pixels));
}

/// A green button that turns blue while it is pressed.
void addButton(double x, double y, double width, double height, const std::string& label) {
    const auto button = make<UIButton>(CGRect{{x, y}, {width, height}});
    const int pixelWidth = static_cast<int>(width);
    const int pixelHeight = static_cast<int>(height);
    button->setImage(oneColor(pixelWidth, pixelHeight, 0, 255, 0), UIControlState::normal);
    button->setImage(oneColor(pixelWidth, pixelHeight, 0, 0, 255), UIControlState::highlighted);
    button->setAccessibilityLabel(label);
    button->setTouchUpInside([] { ++pressCount(); });
    Stage::shared().window().addSubview(button);
}

void addLabel(double x, double y, const std::string& text) {
    const auto label = make<UILabel>(CGRect{{x, y}, {}});
    label->setText(text);
    label->setAttributes({UIFont::boldSystemFont(20), UIColor{1, 0, 0, 1}, NSTextAlignment::left});
    label->sizeToFit();
    Stage::shared().window().addSubview(label);
}

/// A box that is turned by 45 degrees and half transparent, and a drawn disc within it.
class Disc final : public UIView {
 public:
    using UIView::UIView;
    [[nodiscard]] ViewContent content() const override { return DrawnContent{1}; }
    void draw(GraphicsContext& context, CGRect rect) override { context.fillOval(rect, UIColor{0, 0, 1, 1}); }
};

void addTurnedBox(double x, double y, double side) {
    const auto box = make<UIView>(CGRect{{x, y}, {side, side}});
    box->setBackgroundColor({1, 0, 0, 1});
    box->setAlpha(0.5);
    box->setTransform(CGAffineTransform::rotation(0.7853981633974483));
    box->setIsUserInteractionEnabled(false);
    box->addSubview(make<Disc>(CGRect{{side / 4, side / 4}, {side / 2, side / 2}}));
    Stage::shared().window().addSubview(box);
}

int presses() {
    return pressCount();
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(view_commands) {
    using namespace pelta::browser;
    emscripten::function("addButton", &addButton);
    emscripten::function("addLabel", &addLabel);
    emscripten::function("addTurnedBox", &addTurnedBox);
    emscripten::function("presses", &presses);
}
