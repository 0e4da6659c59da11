#pragma once

#include <simdjson.h>
#include <string>

namespace pelta::command {

/// Reads a value to its end.
///
/// @param depth  how many objects and arrays the value lies in.
/// @return why it is not JSON through and through, at most 128 levels deep; empty when it is.
[[nodiscard]] std::string faultIn(simdjson::ondemand::value value, int depth);
[[nodiscard]] std::string faultIn(simdjson::ondemand::document& document);

/// The parser's error in words. Throws `std::bad_alloc` where the error is that memory ran out.
[[nodiscard]] std::string described(simdjson::error_code error);

}  // namespace pelta::command
