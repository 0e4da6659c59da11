#include "LayerNode.h"

#include <algorithm>
#include <utility>

#include "CssText.h"

using emscripten::val;

namespace pelta {

namespace {

/// The CSS property that a key path moves, with the unit of its values; empty for unknown paths.
std::pair<std::string, std::string> cssProperty(const std::string& keyPath) {
    if (keyPath == "opacity") {
        return {"opacity", ""};
    }
    if (keyPath == "transform.scale" || keyPath == "transform.scale.xy") {
        return {"scale", ""};
    }
    if (keyPath == "transform.rotation" || keyPath == "transform.rotation.z") {
        return {"rotate", "rad"};
    }
    return {};
}

val keyframes(const CAKeyframeAnimation& animation, const std::string& property, const std::string& unit) {
    val frames = val::array();
    const std::size_t count = std::min(animation.values.size(), animation.keyTimes.size());
    for (std::size_t i = 0; i < count; ++i) {
        val frame = val::object();
        frame.set(property, cssNumber(animation.values[i]) + unit);
        frame.set("offset", std::clamp(animation.keyTimes[i], 0.0, 1.0));
        frames.call<void>("push", frame);
    }
    return frames;
}

val timing(const CAAnimationGroup& group) {
    const auto points = group.timingFunction.controlPoints();
    std::string easing = "cubic-bezier(";
    for (std::size_t i = 0; i < points.size(); ++i) {
        easing += (i == 0 ? "" : ",") + cssNumber(points[i]);
    }
    val options = val::object();
    options.set("duration", std::max(0.0, group.duration) * 1000);
    options.set("easing", easing + ")");
    options.set("iterations", group.repeatsForever ? val::global("Infinity") : val(1));
    options.set("fill", std::string(group.isRemovedOnCompletion ? "none" : "forwards"));
    return options;
}

}  // namespace

val reducedMotionQuery() {
    return val::global("matchMedia")(std::string("(prefers-reduced-motion: reduce)"));
}

bool prefersReducedMotion() {
    return reducedMotionQuery()["matches"].isTrue();
}

void LayerNode::show() {
    const CALayer::Properties& p = layer_->properties();
    const CGSize size = p.bounds.size;
    std::string style =
        "position:absolute;pointer-events:none;left:" + cssLength(p.position.x - size.width / 2) +
        ";top:" + cssLength(p.position.y - size.height / 2) + ";width:" + cssLength(size.width) +
        ";height:" + cssLength(size.height) + ";opacity:" + cssNumber(p.opacity) +
        ";border-radius:" + cssLength(p.cornerRadius) + ";background:" + cssColor(p.backgroundColor);
    if (p.affineTransform != CGAffineTransform{}) {
        style += ";transform:" + cssTransform(p.affineTransform);
    }
    box_.setStyle(std::move(style));
    showSublayers();
    showAnimations();
}

void LayerNode::showInView() {
    box_.setStyle("position:absolute;inset:0;pointer-events:none");
    showSublayers();
    showAnimations();
}

void LayerNode::showSublayers() {
    if (inside_.value()["parentNode"].isNull()) {
        box_.append(inside_.value());
    }
    inside_.setStyle("position:absolute;inset:0;transform:" +
                     cssTransform(layer_->properties().sublayerTransform));
    auto wanted = layer_->sublayers();
    std::stable_sort(wanted.begin(), wanted.end(), [](const auto& one, const auto& other) {
        return one->properties().zPosition < other->properties().zPosition;
    });
    std::vector<std::unique_ptr<LayerNode>> former = std::exchange(sublayers_, {});
    std::vector<val> order;
    for (const auto& sublayer : wanted) {
        const auto known = std::find_if(former.begin(), former.end(), [&](const auto& node) {
            return node && &node->layer() == sublayer.get();
        });
        sublayers_.push_back(known == former.end() ? std::make_unique<LayerNode>(sublayer)
                                                   : std::move(*known));
        sublayers_.back()->show();
        order.push_back(sublayers_.back()->element());
    }
    for (const auto& node : former) {
        if (node) {
            std::erase_if(shownOrder_,
                          [&](const val& shown) { return shown.strictlyEquals(node->element()); });
        }
    }
    former.clear();
    arrangeChildren(inside_.value(), shownOrder_, order);
}

void LayerNode::showAnimations() {
    const auto& wanted = layer_->animations();
    const bool isMotionReduced = prefersReducedMotion();
    for (auto shown = animations_.begin(); shown != animations_.end();) {
        const auto still = wanted.find(shown->first);
        const bool isSame = still != wanted.end() && still->second == shown->second.group;
        if (isSame && isMotionReduced == shown->second.isMotionReduced) {
            ++shown;
            continue;
        }
        for (const val& player : shown->second.players) {
            player.call<void>("cancel");
        }
        shown = animations_.erase(shown);
    }
    for (const auto& [key, group] : wanted) {
        if (animations_.count(key) == 0) {
            animations_.emplace(key, ShownAnimation{group, play(group), isMotionReduced});
            if (isMotionReduced && group.repeatsForever) {
                holdStill(animations_.at(key));
            }
        }
    }
}

/// What would move for ever shows one moment of it instead, early in its run, when what fades away is still
/// seen.
void LayerNode::holdStill(ShownAnimation& shown) {
    for (val& player : shown.players) {
        player.call<void>("pause");
        player.set("currentTime", shown.group.duration * 1000 / 3);
    }
}

std::vector<val> LayerNode::play(const CAAnimationGroup& group) const {
    std::vector<val> players;
    for (const CAKeyframeAnimation& animation : group.animations) {
        const auto [property, unit] = cssProperty(animation.keyPath);
        if (!property.empty()) {
            players.push_back(
                element().call<val>("animate", keyframes(animation, property, unit), timing(group)));
        }
    }
    return players;
}

}  // namespace pelta
