#pragma once

#include <memory>

#include <pelta/Engine/MLNMapView.h>

namespace pelta {

/// The way from the parts of a map view to its delegate. The view and the delegate stay alive during a call
/// and may be gone after it; then further calls reach nobody.
class MapViewEvents {
 public:
    explicit MapViewEvents(std::weak_ptr<MLNMapView> view) : view_(std::move(view)) {}

    [[nodiscard]] std::shared_ptr<MLNMapViewDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::shared_ptr<MLNMapViewDelegate>& delegate) { delegate_ = delegate; }
    [[nodiscard]] std::shared_ptr<MLNMapView> view() const { return view_.lock(); }

    /// Calls `call(delegate, view)`.
    template <class Call>
    void tell(Call&& call) const {
        const auto view = view_.lock();
        const auto delegate = delegate_.lock();
        if (view && delegate) {
            call(*delegate, *view);
        }
    }

 private:
    std::weak_ptr<MLNMapView> view_;
    std::weak_ptr<MLNMapViewDelegate> delegate_;
};

}  // namespace pelta
