// What a fuzz target demands of its input's outcome.
#pragma once

#include <cstdlib>

namespace zorvan::fuzz {

/// Ends the run as a finding.
inline void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace zorvan::fuzz
