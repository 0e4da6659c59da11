#include "MapSurfaces.h"

#include <map>
#include <string>

using emscripten::val;

namespace pelta {

namespace {

std::map<const void*, val>& surfaces() {
    static std::map<const void*, val> elements;
    return elements;
}

val makeElement(const char* style) {
    val element = val::global("document").call<val>("createElement", std::string("div"));
    element["style"].set("cssText", std::string(style));
    return element;
}

/// Where elements wait until a view shows them.
const val& waitingRoom() {
    static const val room = [] {
        val element = makeElement("position:fixed;left:0;top:0;width:0;height:0;overflow:hidden");
        val::global("document")["body"].call<void>("appendChild", element);
        return element;
    }();
    return room;
}

}  // namespace

val MapSurfaces::add(const void* owner) {
    val element = makeElement("position:absolute;left:0;top:0");
    park(element);
    surfaces().insert_or_assign(owner, element);
    return element;
}

val MapSurfaces::find(const void* owner) {
    const auto found = surfaces().find(owner);
    return found == surfaces().end() ? val::null() : found->second;
}

void MapSurfaces::park(const val& surface) {
    waitingRoom().call<void>("appendChild", surface);
}

void MapSurfaces::remove(const void* owner) {
    const auto found = surfaces().find(owner);
    if (found != surfaces().end()) {
        found->second.call<void>("remove");
        surfaces().erase(found);
    }
}

}  // namespace pelta
