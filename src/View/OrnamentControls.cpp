#include "View/OrnamentControls.h"

#include <string>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/Make.h>

namespace pelta {

namespace {

constexpr CGFloat dividerHeight = 1;  // Points.

constexpr const char* locationPicture = "peltamap_location_none";

std::optional<UIImage> picture(const std::string& name, const char* state) {
    return Bundle::library().imageNamed(name + state);
}

/// A button as large as its normal picture. A state whose picture is missing shows the normal one.
std::shared_ptr<UIButton> makeButton(const std::string& pictureName, std::string label) {
    const auto normal = picture(pictureName, "_normal");
    auto button = make<UIButton>(CGRect{{}, normal ? normal->size() : CGSize{}});
    button->setImage(normal, UIControlState::normal);
    button->setImage(picture(pictureName, "_pressed"), UIControlState::highlighted);
    button->setImage(picture(pictureName, "_disabled"), UIControlState::disabled);
    button->setAccessibilityLabel(std::move(label));
    return button;
}

std::shared_ptr<UIView> makeContainer(CGSize size) {
    auto container = make<UIView>(CGRect{{}, size});
    container->setTranslatesAutoresizingMaskIntoConstraints(false);
    return container;
}

}  // namespace

std::shared_ptr<UIView> makeZoomControl(std::function<void()> plus, std::function<void()> minus) {
    const auto zoomIn = makeButton("peltamap_zoom_in", "Zoom in");
    zoomIn->setTouchUpInside(std::move(plus));
    const auto zoomOut = makeButton("peltamap_zoom_out", "Zoom out");
    zoomOut->setTouchUpInside(std::move(minus));
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

std::shared_ptr<UIButton> makeLocationButton() {
    return makeButton(locationPicture, "My location");
}

void showLocationPictures(UIButton& button, std::optional<UIImage> image, std::optional<UIImage> pressed) {
    if (!image) {
        image = picture(locationPicture, "_normal");
        pressed = picture(locationPicture, "_pressed");
    }
    button.setImage(std::move(image), UIControlState::normal);
    button.setImage(std::move(pressed), UIControlState::highlighted);
}

std::shared_ptr<UIView> makeLocationControl(const std::shared_ptr<UIButton>& button) {
    auto container = makeContainer(button->bounds().size);
    container->addSubview(button);
    return container;
}

}  // namespace pelta
