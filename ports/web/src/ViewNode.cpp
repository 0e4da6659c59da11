#include "ViewNode.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>

#include "Canvas.h"
#include "CanvasContext.h"
#include "CssText.h"
#include "MapSurfaces.h"

using emscripten::val;

namespace pelta {

namespace {

std::string place(CGRect rect) {
    return "position:absolute;left:" + cssLength(rect.origin.x) + ";top:" + cssLength(rect.origin.y) +
           ";width:" + cssLength(rect.size.width) + ";height:" + cssLength(rect.size.height);
}

/// The rectangle moved to where pixels of the screen begin: a picture between them would be blurred.
CGRect onPixels(CGRect rect) {
    const double scale = UIScreen::scale();
    return {{std::round(rect.origin.x * scale) / scale, std::round(rect.origin.y * scale) / scale},
            rect.size};
}

std::string sizeKey(CGSize size) {
    return cssNumber(size.width) + "x" + cssNumber(size.height);
}

/// A view's own transform within that of the layer around it, which acts about the superview's middle.
std::string transformInSuperview(const UIView& view) {
    std::string text;
    const auto parent = view.superview();
    if (parent && parent->hasLayer()) {
        const CATransform3D& outer = parent->layer()->properties().sublayerTransform;
        if (outer != CATransform3D{}) {
            const CGPoint center = view.center();
            const double x = parent->bounds().midX() - center.x;
            const double y = parent->bounds().midY() - center.y;
            text = "translate(" + cssLength(x) + "," + cssLength(y) + ") " + cssTransform(outer) +
                   " translate(" + cssLength(-x) + "," + cssLength(-y) + ") ";
        }
    }
    if (view.transform() != CGAffineTransform{}) {
        text += cssTransform(view.transform());
    }
    return text;
}

const char* cssAlignment(NSTextAlignment alignment) {
    switch (alignment) {
        case NSTextAlignment::left:
            return "left";
        case NSTextAlignment::center:
            return "center";
        case NSTextAlignment::right:
            return "right";
    }
    return "left";
}

}  // namespace

ViewNode::ViewNode(std::shared_ptr<UIView> view) : view_(view) {}

ViewNode::~ViewNode() {
    if (!surface_.isNull() && surface_["parentNode"].strictlyEquals(element())) {
        MapSurfaces::park(surface_);
    }
}

void ViewNode::show(bool takesTouches) {
    const auto view = view_.lock();
    if (!view) {
        return;
    }
    const bool isTouchable = takesTouches && view->isUserInteractionEnabled();
    showBox(*view, isTouchable);
    if (view->isHidden()) {
        return;  // What is within waits until it can be seen.
    }
    showAccessibility(*view);
    showLayers(*view);
    showContent(*view);
    showSubviews(*view, isTouchable);
}

void ViewNode::showBox(const UIView& view, bool takesTouches) {
    std::string style = place(onPixels(view.frame()));
    style += takesTouches ? ";pointer-events:auto" : ";pointer-events:none";
    if (view.isHidden()) {
        style += ";display:none";
    }
    if (view.alpha() < 1) {
        style += ";opacity:" + cssNumber(view.alpha());
    }
    if (view.backgroundColor().alpha > 0) {
        style += ";background:" + cssColor(view.backgroundColor());
    }
    if (view.cornerRadius() > 0) {
        style += ";border-radius:" + cssLength(view.cornerRadius());
    }
    if (view.clipsToBounds()) {
        style += ";overflow:clip";
    }
    const std::string transform = transformInSuperview(view);
    if (!transform.empty()) {
        style += ";transform:" + transform;
    }
    box_.setStyle(std::move(style));
}

void ViewNode::showAccessibility(UIView& view) {
    const auto* button = dynamic_cast<const UIButton*>(&view);
    const bool acts =
        button != nullptr || (!view.accessibilityLabel().empty() && !view.gestureRecognizers().empty() &&
                              !std::holds_alternative<SurfaceContent>(view.content()));
    if (label_ != view.accessibilityLabel()) {
        label_ = view.accessibilityLabel();
        box_.setAttribute("aria-label", label_);
    }
    if (button != nullptr) {
        box_.setAttribute("aria-disabled", button->isEnabled() ? "" : "true");
    }
    if (isButton_ == acts) {
        return;
    }
    isButton_ = acts;
    box_.setAttribute("role", acts ? "button" : label_.empty() ? "" : "img");
    box_.setAttribute("tabindex", acts ? "0" : "");
    keyListener_.reset();
    clickListener_.reset();
    if (acts) {
        keyListener_.emplace(element(), "keydown", [this](const val& event) {
            const auto key = event["key"].as<std::string>();
            if (key == "Enter" || key == " ") {
                event.call<void>("preventDefault");
                activate();
            }
        });
        clickListener_.emplace(element(), "click", [this](const val& event) {
            // Clicks of a pointer have a count and have arrived as touches already.
            if (event["detail"].as<int>() == 0) {
                activate();
            }
        });
    }
}

void ViewNode::activate() {
    const auto view = view_.lock();
    if (auto* button = dynamic_cast<UIButton*>(view.get())) {
        button->sendTouchUpInside();
        return;
    }
    UIWindow* const window = view ? view->window() : nullptr;
    if (window == nullptr) {
        return;
    }
    constexpr int keyboardTouch = -1;
    const double now = val::global("performance").call<double>("now") / 1000;
    const CGRect bounds = view->bounds();
    const CGPoint middle = view->convertPointToWindow({bounds.midX(), bounds.midY()});
    window->deliverTouch({keyboardTouch, UITouchPhase::began, middle, now});
    window->deliverTouch({keyboardTouch, UITouchPhase::ended, middle, now});
}

void ViewNode::showLayers(UIView& view) {
    if (!view.hasLayer()) {
        return;
    }
    if (!layers_) {
        layers_ = std::make_unique<LayerNode>(view.layer());
        element().call<void>("insertBefore", layers_->element(), element()["firstChild"]);
    }
    layers_->showInView();
}

void ViewNode::showContent(UIView& view) {
    const ViewContent content = view.content();
    if (const auto* picture = std::get_if<PictureContent>(&content)) {
        showPicture(*picture, view.bounds());
    } else if (const auto* text = std::get_if<TextContent>(&content)) {
        showText(*text, view.bounds());
    } else if (const auto* drawn = std::get_if<DrawnContent>(&content)) {
        showDrawing(view, drawn->revision);
    } else if (const auto* surface = std::get_if<SurfaceContent>(&content)) {
        showSurface(MapSurfaces::find(surface->owner));
    } else if (!contentKey_.empty()) {
        forgetContent();
    }
}

void ViewNode::showSurface(const val& surface) {
    if (!surface.isNull() && !surface.strictlyEquals(surface_)) {
        insertBelowSubviews(surface);
        surface_ = surface;
    }
}

void ViewNode::setContentElement(const val& newElement) {
    content_ = std::make_unique<Element>(newElement);
    insertBelowSubviews(newElement);
}

void ViewNode::insertBelowSubviews(const val& newElement) {
    const val after = layers_ ? layers_->element()["nextSibling"] : element()["firstChild"];
    element().call<void>("insertBefore", newElement, after);
}

void ViewNode::forgetContent() {
    for (const auto& subview : subviews_) {
        subview->forgetContent();
    }
    content_.reset();
    contentKey_.clear();
    shownPicture_.reset();
}

void ViewNode::showPicture(const PictureContent& picture, CGRect bounds) {
    const CGRect rect = rectForPicture(picture, bounds);
    const bool isStretchable = picture.image.capInsets().has_value();
    // A plain picture is scaled by the browser; a stretchable one is drawn for each size.
    const std::string key = isStretchable ? "stretchable " + sizeKey(rect.size) : "picture";
    if (key != contentKey_ || !shownPicture_ || !shownPicture_->isIdenticalTo(picture.image)) {
        if (isStretchable) {
            const auto drawn = UIGraphicsImageRenderer(rect.size).image([&](GraphicsContext& context) {
                context.drawImage(picture.image, {{}, rect.size});
            });
            setContentElement(drawn ? canvasWithPicture(*drawn) : makeCanvas(1, 1));
        } else {
            setContentElement(canvasWithPicture(picture.image));
        }
        contentKey_ = key;
        shownPicture_ = picture.image;
    }
    content_->setStyle(place(rect) + ";pointer-events:none");
}

void ViewNode::showText(const TextContent& text, CGRect bounds) {
    const NSTextAttributes& attributes = text.attributes;
    const std::string key = "text " + text.text;
    if (key != contentKey_) {
        if (contentKey_.rfind("text ", 0) != 0) {
            setContentElement(val::global("document").call<val>("createElement", std::string("div")));
        }
        content_->set("textContent", text.text);
        contentKey_ = key;
    }
    content_->setStyle(place(bounds) + ";pointer-events:none;white-space:pre;user-select:none;font:" +
                       cssFont(attributes.font) + ";line-height:" + cssLength(bounds.size.height) +
                       ";color:" + cssColor(attributes.foregroundColor) +
                       ";text-align:" + cssAlignment(attributes.alignment));
}

void ViewNode::showDrawing(UIView& view, unsigned revision) {
    const CGRect bounds = view.bounds();
    const std::string key = "drawing " + std::to_string(revision) + " " + sizeKey(bounds.size);
    if (key == contentKey_) {
        return;
    }
    const double scale = UIScreen::scale();
    const auto pixels = [&](CGFloat length) {
        return static_cast<int>(std::clamp(std::ceil(length * scale - 1e-6), 1.0, 16384.0));
    };
    const int width = pixels(bounds.size.width);
    const int height = pixels(bounds.size.height);
    CanvasContext context(width, height, scale);
    view.draw(context, bounds);
    setContentElement(context.canvas());
    content_->setStyle(place({{}, {width / scale, height / scale}}) + ";pointer-events:none");
    contentKey_ = key;
}

void ViewNode::showSubviews(const UIView& view, bool takesTouches) {
    std::vector<std::unique_ptr<ViewNode>> former = std::exchange(subviews_, {});
    std::vector<val> order;
    for (const auto& subview : view.subviews()) {
        const auto known = std::find_if(former.begin(), former.end(),
                                        [&](const auto& node) { return node && node->shows(*subview); });
        subviews_.push_back(known == former.end() ? std::make_unique<ViewNode>(subview) : std::move(*known));
        order.push_back(subviews_.back()->element());
    }
    for (const auto& node : former) {
        if (node) {
            std::erase_if(shownOrder_,
                          [&](const val& shown) { return shown.strictlyEquals(node->element()); });
        }
    }
    former.clear();
    arrangeChildren(element(), shownOrder_, order);
    for (const auto& node : subviews_) {
        node->show(takesTouches);
    }
}

}  // namespace pelta
