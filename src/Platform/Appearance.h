#pragma once

namespace pelta::detail {

/// Notes a change that a port must show, and asks for a frame.
void appearanceDidChange();
/// The number of such changes so far.
unsigned long appearanceRevision() noexcept;

}  // namespace pelta::detail
