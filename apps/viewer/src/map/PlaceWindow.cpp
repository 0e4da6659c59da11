#include "map/PlaceWindow.h"

#include <string>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Make.h>

namespace pelta::viewer {

namespace {

constexpr CGFloat pictureSide = 24;
constexpr double thanksDuration = 1.5;
constexpr UIColor accent{0x1F / 255.0, 0x5F / 255.0, 0xD6 / 255.0, 1};
constexpr UIColor pressedGround{0x1F / 255.0, 0x5F / 255.0, 0xD6 / 255.0, 0.14};
constexpr UIColor thanksColor{0x1E / 255.0, 0x8E / 255.0, 0x3E / 255.0, 1};

/// Two sheets, one before the other.
void drawSheets(GraphicsContext& context) {
    const auto sheet = [&](CGPoint corner) {
        context.fillRoundedRect({corner, {9, 11}}, 2, accent);
        context.fillRoundedRect({{corner.x + 1.5, corner.y + 1.5}, {6, 8}}, 1, UIColor::white());
    };
    sheet({6, 4});
    sheet({9, 8});
}

std::optional<UIImage> sheetsPicture(bool isPressed) {
    return UIGraphicsImageRenderer({pictureSide, pictureSide}).image([isPressed](GraphicsContext& context) {
        if (isPressed) {
            context.fillRoundedRect({{}, {pictureSide, pictureSide}}, 6, pressedGround);
        }
        drawSheets(context);
    });
}

std::optional<UIImage> thanksPicture() {
    return UIGraphicsImageRenderer({pictureSide, pictureSide}).image([](GraphicsContext& context) {
        const UIFont font = UIFont::boldSystemFont(15);
        const CGFloat height = sizeOfText("✓", font).height;
        context.drawText("✓", {{0, (pictureSide - height) / 2}, {pictureSide, height}},
                         {font, thanksColor, NSTextAlignment::center});
    });
}

}  // namespace

PlaceWindow::PlaceWindow(const std::shared_ptr<PgmMapView>& map, Copy copy)
    : map_(map), copy_(std::move(copy)), window_(PgmInfoWindow::create()) {}

void PlaceWindow::open(CLLocationCoordinate2D place) {
    close();
    const auto map = map_.lock();
    if (map == nullptr) {
        return;
    }
    place_ = place;
    bubble_ = make<PlaceBubble>(placeTexts(place));
    window_->setImageDataSource(shared_from_this());
    window_->setPosition(place);
    window_->setMapView(map);
    addButtons(*map);
    cameraDidMove();
}

void PlaceWindow::close() {
    window_->setMapView(nullptr);
    for (auto& button : buttons_) {
        if (button != nullptr) {
            button->removeFromSuperview();
            button = nullptr;
        }
    }
    bubble_ = nullptr;
}

std::shared_ptr<UIView> PlaceWindow::view(PgmShape&) {
    return bubble_;
}

void PlaceWindow::addButtons(PgmMapView& map) {
    const auto texts = placeTexts(place_);
    for (std::size_t row = 0; row < buttons_.size(); ++row) {
        auto button = make<UIButton>(CGRect{});
        button->setImage(sheetsPicture(false), UIControlState::normal);
        button->setImage(sheetsPicture(true), UIControlState::highlighted);
        button->setAccessibilityLabel("Copy " + std::string(texts[row].system) + " " + texts[row].numbers);
        button->setTouchUpInside([weak = weak_from_this(), row] {
            if (const auto self = weak.lock()) {
                self->didPress(row);
            }
        });
        map.addSubview(button);
        buttons_[row] = std::move(button);
    }
}

void PlaceWindow::didPress(std::size_t row) {
    copy_(placeTexts(place_)[row].numbers);
    buttons_[row]->setImage(thanksPicture(), UIControlState::normal);
    MainQueue::asyncAfter(thanksDuration, [weak = std::weak_ptr(buttons_[row])] {
        if (const auto button = weak.lock()) {
            button->setImage(sheetsPicture(false), UIControlState::normal);
        }
    });
}

void PlaceWindow::cameraDidMove() {
    const auto map = map_.lock();
    if (!isOpen() || map == nullptr) {
        return;
    }
    const CGPoint tip = map->projection()->point(place_);
    const CGSize size = bubble_->bounds().size;
    const CGPoint corner{tip.x - size.width / 2, tip.y - size.height};
    for (std::size_t row = 0; row < buttons_.size(); ++row) {
        CGRect frame = bubble_->buttonRect(row);
        frame.origin.x += corner.x;
        frame.origin.y += corner.y;
        buttons_[row]->setFrame(frame);
        buttons_[row]->setIsHidden(!map->bounds().contains({frame.midX(), frame.midY()}));
    }
}

}  // namespace pelta::viewer
