#include <pelta/Annotations/PgmIDManager.h>

namespace pelta {

std::uint64_t AtomicUInt::incrementAndGet() {
    return queue_.sync([this] { return ++value_; });
}

AtomicUInt& PgmShapeIDHelper::atomicID() {
    static AtomicUInt counter;
    return counter;
}

AtomicUInt& PgmImageIDHelper::atomicID() {
    static AtomicUInt counter;
    return counter;
}

}  // namespace pelta
