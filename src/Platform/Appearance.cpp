#include "Platform/Appearance.h"

#include <pelta/Platform/Frames.h>

namespace pelta::detail {

namespace {

unsigned long revision = 0;

}  // namespace

void appearanceDidChange() {
    ++revision;
    FrameLoop::request();
}

unsigned long appearanceRevision() noexcept {
    return revision;
}

}  // namespace pelta::detail
