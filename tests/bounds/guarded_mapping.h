// Files that this program maps end where readable memory ends, when their size is a multiple of a page's.
#pragma once

#include <cstddef>

namespace zorvan::test {

/// How many files were mapped so.
std::size_t GuardedMappings();

}  // namespace zorvan::test
