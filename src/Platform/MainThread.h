#pragma once

namespace pelta::detail {

/// Makes the calling thread the main thread.
void becomeMainThread() noexcept;

}  // namespace pelta::detail
