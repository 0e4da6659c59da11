#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <pelta/Platform/UIView.h>

#include "Element.h"
#include "JsFunction.h"
#include "LayerNode.h"

namespace pelta {

/// Shows one view with all within as elements of the page.
class ViewNode {
 public:
    explicit ViewNode(std::shared_ptr<UIView> view);
    ~ViewNode();
    ViewNode(const ViewNode&) = delete;
    ViewNode& operator=(const ViewNode&) = delete;

    /// Brings the elements in line with the view.
    ///
    /// @param takesTouches  false when a view further out keeps touches from all within.
    void show(bool takesTouches);
    /// Lets pictures, drawings and texts be made anew, for another screen scale.
    void forgetContent();

    [[nodiscard]] const emscripten::val& element() const noexcept { return box_.value(); }
    /// True for the node of that very view, which still exists.
    [[nodiscard]] bool shows(const UIView& view) const { return view_.lock().get() == &view; }

 private:
    void showBox(const UIView& view, bool takesTouches);
    void showAccessibility(UIView& view);
    void showLayers(UIView& view);
    void showContent(UIView& view);
    void showSubviews(const UIView& view, bool takesTouches);
    void showSurface(const emscripten::val& surface);
    void showPicture(const PictureContent& picture, CGRect bounds);
    void showText(const TextContent& text, CGRect bounds);
    void showDrawing(UIView& view, unsigned revision);
    void setContentElement(const emscripten::val& newElement);
    void insertBelowSubviews(const emscripten::val& newElement);
    void activate();

    std::weak_ptr<UIView> view_;
    Element box_;
    std::unique_ptr<LayerNode> layers_;
    std::unique_ptr<Element> content_;
    /// The element of a map, which belongs to the map.
    emscripten::val surface_ = emscripten::val::null();
    std::string contentKey_;  ///< Tells contents apart; empty when nothing is shown.
    std::optional<UIImage> shownPicture_;
    std::vector<std::unique_ptr<ViewNode>> subviews_;
    std::vector<emscripten::val> shownOrder_;
    std::string label_;
    std::optional<bool> isButton_;
    std::optional<EventListener> keyListener_;
    std::optional<EventListener> clickListener_;
};

}  // namespace pelta
