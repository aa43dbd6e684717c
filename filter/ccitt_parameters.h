// What both CCITTFax codecs take from the caller's parameter block.
#ifndef FILTER_CCITT_PARAMETERS_H
#define FILTER_CCITT_PARAMETERS_H

#include <cstddef>
#include <optional>

#include "zorvan/filter.h"

namespace zorvan::filter {

struct CcittParameters {
    bool IsGroup4() const { return k < 0; }
    bool IsMixed() const { return k > 0; }
    // The end-of-line codes in a row that end the data: T.6's EOFB and T.4's RTC.
    unsigned int EndOfBlockLines() const { return IsGroup4() ? 2 : 6; }
    std::size_t RowBytes() const { return (columns + 7) / 8; }

    int k = 0;
    bool endOfLine = false;
    bool encodedByteAlign = false;
    std::size_t columns = 1728;
    // 0 where the height is not known.
    std::size_t rows = 0;
    bool endOfBlock = true;
    bool blackIs1 = false;
};

// The defaults where there is no block; nothing where the block is unusable.
inline std::optional<CcittParameters> ReadCcittParameters(const void* block) {
    if (block == nullptr) {
        return CcittParameters{};
    }
    const auto& given = *static_cast<const FilterCcittParameters*>(block);
    if (given.columns < 1 || given.columns > FILTER_CCITT_MAXIMUM_COLUMNS || given.rows < 0) {
        return std::nullopt;
    }
    return CcittParameters{.k = given.k,
                           .endOfLine = given.end_of_line != 0,
                           .encodedByteAlign = given.encoded_byte_align != 0,
                           .columns = static_cast<std::size_t>(given.columns),
                           .rows = static_cast<std::size_t>(given.rows),
                           .endOfBlock = given.end_of_block != 0,
                           .blackIs1 = given.black_is_1 != 0};
}

}  // namespace zorvan::filter

#endif
