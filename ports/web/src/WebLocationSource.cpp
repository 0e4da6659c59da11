#include "WebLocationSource.h"

#include <cmath>
#include <string>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Log.h>

using emscripten::val;

namespace pelta {

namespace {

/// A number that the device may leave out.
double numberOr(const val& value, double missing) {
    return value.isNumber() ? value.as<double>() : missing;
}

bool isKnown(const val& value) {
    return !value.isUndefined() && !value.isNull();
}

std::string reasonOf(const val& error) {
    const val message = error["message"];
    const bool isTold = message.isString() && message["length"].as<int>() > 0;
    return isTold ? message.as<std::string>() : "error " + std::to_string(error["code"].as<int>());
}

CLLocationFailure failureOf(const val& error) {
    constexpr int permissionDenied = 1;
    return error["code"].as<int>() == permissionDenied ? CLLocationFailure::denied
                                                       : CLLocationFailure::unavailable;
}

/// Degrees by which the screen's upper edge is turned clockwise from the device's.
double screenAngle() {
    const val orientation = val::global("screen")["orientation"];
    return isKnown(orientation) ? numberOr(orientation["angle"], 0) : 0;
}

/// Some browsers report the device's orientation only once the user has agreed to it. A refusal leaves the
/// position without a heading.
void askForOrientation() {
    const val interface = val::global("DeviceOrientationEvent");
    if (isKnown(interface) && isKnown(interface["requestPermission"])) {
        const val answer = interface.call<val>("requestPermission");
        answer.call<void>("catch", val::global("Function").new_(std::string()));
    }
}

}  // namespace

void WebLocationSource::addObserver(std::weak_ptr<LocationObserver> observer) {
    const auto added = observer.lock();
    for (const auto& present : observers_) {
        if (present.lock() == added) {
            return;
        }
    }
    observers_.push_back(std::move(observer));
    if (!watch_) {
        start();
    }
}

void WebLocationSource::removeObserver(const LocationObserver& observer) {
    std::erase_if(observers_, [&](const auto& present) {
        const auto living = present.lock();
        return !living || living.get() == &observer;
    });
    if (observers_.empty()) {
        stop();
    }
}

void WebLocationSource::start() {
    watch_ = std::make_shared<Watch>();
    askForOrientation();
    const auto turned = [this](const val& event) { orientationDidChange(event); };
    for (const char* type : {"deviceorientationabsolute", "deviceorientation"}) {
        watch_->headingListeners.emplace_back(val::global("window"), type, turned);
    }
    watch_->didUpdate = JsFunction::listener([this](const val& position) { positionDidUpdate(position); });
    watch_->didFail =
        JsFunction::listener([this](const val& error) { fail(failureOf(error), reasonOf(error)); });
    const val geolocation = val::global("navigator")["geolocation"];
    if (!isKnown(geolocation)) {
        // Later, as a browser that has one would say so.
        MainQueue::async([this, watch = std::weak_ptr(watch_)] {
            if (!watch.expired()) {
                fail(CLLocationFailure::unavailable, "this browser has no location service");
            }
        });
        return;
    }
    val options = val::object();
    options.set("enableHighAccuracy", true);
    watch_->identifier =
        geolocation.call<int>("watchPosition", watch_->didUpdate.value(), watch_->didFail.value(), options);
}

void WebLocationSource::stop() {
    if (watch_ && watch_->identifier) {
        val::global("navigator")["geolocation"].call<void>("clearWatch", *watch_->identifier);
    }
    watch_.reset();
}

void WebLocationSource::fail(CLLocationFailure failure, const std::string& reason) {
    report([&](LocationObserver& observer) { observer.locationDidFail(failure, reason); });
}

void WebLocationSource::positionDidUpdate(const val& position) {
    const val coords = position["coords"];
    CLLocation location;
    location.coordinate = {numberOr(coords["latitude"], NAN), numberOr(coords["longitude"], NAN)};
    location.altitude = numberOr(coords["altitude"], 0);
    location.horizontalAccuracy = numberOr(coords["accuracy"], -1);
    location.course = numberOr(coords["heading"], -1);
    location.speed = numberOr(coords["speed"], -1);
    location.timestamp = val::global("performance").call<double>("now") / 1000;
    if (!CLLocationCoordinate2DIsValid(location.coordinate)) {
        dPrint("A position without a valid coordinate was left out.");
        return;
    }
    report([&](LocationObserver& observer) { observer.locationDidUpdate(location); });
}

void WebLocationSource::orientationDidChange(const val& event) {
    const val compass = event["webkitCompassHeading"];
    CLHeading heading;
    if (compass.isNumber()) {
        heading.magneticHeading = compass.as<double>();
    } else if (event["absolute"].isTrue() && event["alpha"].isNumber()) {
        // alpha grows counterclockwise, and is the device's, whose upper edge need not be the screen's.
        heading.magneticHeading = std::fmod(720 - event["alpha"].as<double>() + screenAngle(), 360);
    } else {
        return;
    }
    if (!std::isfinite(heading.magneticHeading)) {
        return;
    }
    report([&](LocationObserver& observer) { observer.headingDidUpdate(heading); });
}

void WebLocationSource::report(const std::function<void(LocationObserver&)>& work) {
    const auto observers = observers_;  // A report may add or remove observers.
    for (const auto& observer : observers) {
        if (const auto living = observer.lock()) {
            work(*living);
        }
    }
}

}  // namespace pelta
