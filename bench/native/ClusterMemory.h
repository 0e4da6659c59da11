#pragma once

#include <cstddef>

/// Bytes that operator new has handed out and that have not been given back.
[[nodiscard]] std::size_t bytesInUse() noexcept;
