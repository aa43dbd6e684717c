// The parameters of a CCITTFax decoder out of three bytes of a fuzz target's input.
#pragma once

#include <array>
#include <cstdint>

#include "zorvan/filter.h"

namespace zorvan::fuzz {

constexpr std::size_t kCcittHeader = 3;

/// Coding in the lowest bits, then flags; width; height.
inline FilterCcittParameters CcittParameters(const std::uint8_t* data) {
    constexpr std::array kDimensions = {-1, 0, 1, 4};
    // Enough for every order of magnitude.
    constexpr std::array kColumns = {1, 7, 8, 9, 63, 64, 200, 1728, 2600, 5300, 65534, 65535};
    const unsigned int flags = data[0];
    return {.k = kDimensions[flags % kDimensions.size()],
            .end_of_line = static_cast<int>(flags >> 2U & 1U),
            .encoded_byte_align = static_cast<int>(flags >> 3U & 1U),
            .columns = kColumns[data[1] % kColumns.size()],
            .rows = data[2],
            .end_of_block = static_cast<int>(flags >> 4U & 1U),
            .black_is_1 = static_cast<int>(flags >> 5U & 1U)};
}

}  // namespace zorvan::fuzz
