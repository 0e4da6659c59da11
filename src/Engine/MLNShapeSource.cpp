#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyle.h>

namespace pelta {

void MLNShapeSource::setShape(std::shared_ptr<const MLNShape> shape) {
    shape_ = std::move(shape);
    if (style_ != nullptr) {
        style_->sourceDidChange(*this);
    }
}

}  // namespace pelta
