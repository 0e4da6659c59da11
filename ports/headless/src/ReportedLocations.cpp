#include "ReportedLocations.h"

#include <algorithm>
#include <cmath>

#include <pelta/Platform/Log.h>

namespace pelta::headless {

void ReportedLocations::addObserver(std::weak_ptr<LocationObserver> observer) {
    const auto added = observer.lock();
    const bool isKnown = std::any_of(observers_.begin(), observers_.end(),
                                     [&added](const auto& known) { return known.lock() == added; });
    if (added && !isKnown) {
        observers_.push_back(std::move(observer));
    }
}

void ReportedLocations::removeObserver(const LocationObserver& observer) {
    std::erase_if(observers_, [&observer](const auto& known) {
        const auto living = known.lock();
        return !living || living.get() == &observer;
    });
}

void ReportedLocations::report(const CLLocation& location) {
    if (!CLLocationCoordinate2DIsValid(location.coordinate)) {
        dPrint("A reported location without a valid coordinate is left out.");
        return;
    }
    for (const auto& observer : livingObservers()) {
        observer->locationDidUpdate(location);
    }
}

void ReportedLocations::report(const CLHeading& heading) {
    if (!std::isfinite(heading.magneticHeading) || !std::isfinite(heading.trueHeading)) {
        dPrint("A reported heading that is not finite is left out.");
        return;
    }
    for (const auto& observer : livingObservers()) {
        observer->headingDidUpdate(heading);
    }
}

void ReportedLocations::report(CLLocationFailure failure, std::string_view reason) {
    for (const auto& observer : livingObservers()) {
        observer->locationDidFail(failure, reason);
    }
}

bool ReportedLocations::isObserved() const {
    return std::any_of(observers_.begin(), observers_.end(),
                       [](const auto& observer) { return !observer.expired(); });
}

std::vector<std::shared_ptr<LocationObserver>> ReportedLocations::livingObservers() {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    std::vector<std::shared_ptr<LocationObserver>> living;
    for (const auto& observer : observers_) {
        living.push_back(observer.lock());
    }
    return living;
}

}  // namespace pelta::headless
