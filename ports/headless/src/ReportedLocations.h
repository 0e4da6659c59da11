#pragma once

#include <memory>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::headless {

/// A location source that repeats what it is told.
class ReportedLocations final : public LocationSource {
 public:
    void addObserver(std::weak_ptr<LocationObserver> observer) override;
    void removeObserver(const LocationObserver& observer) override;

    void report(const CLLocation& location);
    void report(const CLHeading& heading);
    void report(CLLocationFailure failure, std::string_view reason);
    [[nodiscard]] bool isObserved() const;

 private:
    /// The living observers, held while they are told; the released ones are forgotten.
    [[nodiscard]] std::vector<std::shared_ptr<LocationObserver>> livingObservers();

    std::vector<std::weak_ptr<LocationObserver>> observers_;
};

}  // namespace pelta::headless
