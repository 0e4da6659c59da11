#pragma once

#include <emscripten/val.h>
#include <functional>
#include <set>
#include <string>

#include <pelta/Engine/MLNStyle.h>

namespace pelta {

/// Brings the pictures of a GL JS map in line with a style.
class StyleImages {
 public:
    explicit StyleImages(emscripten::val map) : map_(std::move(map)) {}

    /// What takes over a frame's changes, to be run once, now or later, before those of layers and sources.
    /// It adds pictures; those that have left the style stay until `removeRetired`.
    [[nodiscard]] std::function<void()> changes(const MLNStyle& style, const MLNStyleChanges& changes);
    [[nodiscard]] bool hasRetired() const noexcept { return !retired_.empty(); }
    /// Takes out pictures that have left the style. GL JS draws tiles that need them until the new ones have
    /// arrived, so this waits until the map has come to rest.
    void removeRetired();
    /// Another document has been loaded, which has none of the pictures.
    void reset() { retired_.clear(); }

 private:
    emscripten::val map_;
    std::set<std::string> retired_;
};

}  // namespace pelta
