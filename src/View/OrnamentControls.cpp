#include "View/OrnamentControls.h"

#include <string>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/Make.h>

namespace pelta {

namespace {

constexpr CGFloat dividerHeight = 1;  // Points.

/// A button as large as its normal picture. A state whose picture is missing shows the normal one.
std::shared_ptr<UIButton> makeButton(const std::string& pictureName, std::string label,
                                     std::function<void()> action) {
    const auto& bundle = Bundle::library();
    const auto normal = bundle.imageNamed(pictureName + "_normal");
    auto button = make<UIButton>(CGRect{{}, normal ? normal->size() : CGSize{}});
    button->setImage(normal, UIControlState::normal);
    button->setImage(bundle.imageNamed(pictureName + "_pressed"), UIControlState::highlighted);
    button->setImage(bundle.imageNamed(pictureName + "_disabled"), UIControlState::disabled);
    button->setAccessibilityLabel(std::move(label));
    button->setTouchUpInside(std::move(action));
    return button;
}

std::shared_ptr<UIView> makeContainer(CGSize size) {
    auto container = make<UIView>(CGRect{{}, size});
    container->setTranslatesAutoresizingMaskIntoConstraints(false);
    return container;
}

}  // namespace

std::shared_ptr<UIView> makeZoomControl(std::function<void()> plus, std::function<void()> minus) {
    const auto zoomIn = makeButton("peltamap_zoom_in", "Zoom in", std::move(plus));
    const auto zoomOut = makeButton("peltamap_zoom_out", "Zoom out", std::move(minus));
    const CGSize size = zoomIn->bounds().size;
    const auto divider = make<UIImageView>(CGRect{{0, size.height}, {size.width, dividerHeight}});
    divider->setImage(Bundle::library().imageNamed("peltamap_zoom_div"));
    zoomOut->setFrame({{0, size.height + dividerHeight}, zoomOut->bounds().size});

    auto container = makeContainer({size.width, 2 * size.height + dividerHeight});
    container->addSubview(zoomIn);
    container->addSubview(divider);
    container->addSubview(zoomOut);
    return container;
}

std::shared_ptr<UIView> makeLocationControl(std::function<void()> action) {
    const auto button = makeButton("peltamap_location_none", "My location", std::move(action));
    auto container = makeContainer(button->bounds().size);
    container->addSubview(button);
    return container;
}

}  // namespace pelta
