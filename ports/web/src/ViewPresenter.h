#pragma once

#include <emscripten/val.h>

#include <pelta/Platform/UIWindow.h>

#include "ViewNode.h"

namespace pelta {

/// Shows the view tree of a window inside an element of the page.
class ViewPresenter {
 public:
    /// `window` outlives this object.
    ViewPresenter(const emscripten::val& root, UIWindow& window) : node_(window.shared_from_this()) {
        root.call<void>("appendChild", node_.element());
    }

    /// Brings the page in line with the tree.
    void present() { node_.show(true); }
    /// Lets pictures, drawings and texts be made anew at the next `present`.
    void redrawContent() { node_.forgetContent(); }

 private:
    ViewNode node_;
};

}  // namespace pelta
