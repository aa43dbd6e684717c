// Writing to a file descriptor until everything is written.
#pragma once

#include <cstddef>

namespace zorvan::cli {

// Writes all `count` bytes, waiting where the descriptor is a non-blocking one. The result is 0 or an errno.
int WriteAll(int descriptor, const char* bytes, std::size_t count);

}  // namespace zorvan::cli
