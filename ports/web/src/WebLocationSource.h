#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

#include "JsFunction.h"

namespace pelta {

/// The user's position and heading from the browser's Geolocation and DeviceOrientation interfaces. Where the
/// browser has none or the user refuses, observers hear `locationDidFail`.
class WebLocationSource final : public LocationSource {
 public:
    void addObserver(std::weak_ptr<LocationObserver> observer) override;
    void removeObserver(const LocationObserver& observer) override;

 private:
    /// What runs while somebody listens.
    struct Watch {
        JsFunction didUpdate;
        JsFunction didFail;
        std::optional<int> identifier;  ///< Of the browser's position watch.
        std::vector<EventListener> headingListeners;
    };

    void start();
    void stop();
    void fail(CLLocationFailure failure, const std::string& reason);
    void positionDidUpdate(const emscripten::val& position);
    void orientationDidChange(const emscripten::val& event);
    void report(const std::function<void(LocationObserver&)>& work);

    std::vector<std::weak_ptr<LocationObserver>> observers_;
    std::shared_ptr<Watch> watch_;
};

}  // namespace pelta
