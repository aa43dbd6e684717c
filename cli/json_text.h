// Text as a JSON string (RFC 8259).
#pragma once

#include <string>
#include <string_view>

namespace zorvan::cli {

// The quoted string. File names need not be UTF-8, JSON must be: bytes that are not become U+FFFD.
std::string JsonString(std::string_view text);

}  // namespace zorvan::cli
