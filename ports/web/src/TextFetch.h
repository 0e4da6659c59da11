#pragma once

#include <functional>
#include <string>

#include <pelta/Platform/PlatformPort.h>

namespace pelta {

/// Fetches a document with the browser's `fetch`, see `PlatformPort::fetchText`.
void fetchText(const std::string& address, std::function<void(FetchResult)> completion);

}  // namespace pelta
