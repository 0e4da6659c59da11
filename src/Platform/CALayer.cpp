#include <pelta/Platform/CALayer.h>

#include "Platform/Appearance.h"

namespace pelta {

void CALayer::update(const Properties& properties) {
    if (properties == properties_) {
        return;
    }
    properties_ = properties;
    detail::appearanceDidChange();
}

void CALayer::addSublayer(const std::shared_ptr<CALayer>& layer) {
    if (!layer) {
        return;
    }
    for (auto ancestor = shared_from_this(); ancestor; ancestor = ancestor->superlayer()) {
        if (ancestor == layer) {
            return;
        }
    }
    layer->removeFromSuperlayer();
    layer->superlayer_ = weak_from_this();
    sublayers_.push_back(layer);
    detail::appearanceDidChange();
}

void CALayer::removeFromSuperlayer() {
    const auto superlayer = superlayer_.lock();
    if (!superlayer) {
        return;
    }
    const auto self = shared_from_this();
    superlayer_.reset();
    std::erase(superlayer->sublayers_, self);
    detail::appearanceDidChange();
}

void CALayer::addAnimation(CAAnimationGroup animation, const std::string& key) {
    animations_.insert_or_assign(key, std::move(animation));
    detail::appearanceDidChange();
}

void CALayer::removeAnimationForKey(const std::string& key) {
    if (animations_.erase(key) > 0) {
        detail::appearanceDidChange();
    }
}

}  // namespace pelta
