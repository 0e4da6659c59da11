#pragma once

#include <cstdint>

#include <pelta/Platform/Dispatch.h>

namespace pelta {

/// Counts upwards from 1. Any thread.
class AtomicUInt {
 public:
    /// Adds one and answers the new value.
    std::uint64_t incrementAndGet();

 private:
    std::uint64_t value_ = 0;
    SerialQueue queue_{"atomic_uint"};
};

/// Numbers the shapes of the process.
struct PgmShapeIDHelper {
    /// The counter that numbers shapes.
    [[nodiscard]] static AtomicUInt& atomicID();
};

/// Numbers the images of the process that were made from a picture without a name.
struct PgmImageIDHelper {
    /// The counter that names images.
    [[nodiscard]] static AtomicUInt& atomicID();
};

/// Part of the public surface without members.
class PgmIDManager {};

}  // namespace pelta
