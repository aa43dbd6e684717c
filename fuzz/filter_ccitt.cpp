// Feeds the CCITTFax decoder any bytes: the first three choose its parameters. It must come to an end, and
// say the same whatever the size of the buffers that it fills.
#include <array>
#include <cstdint>

#include "fuzz/require.h"
#include "tests/filter/codec_harness.h"

namespace {

// Enough for every order of magnitude.
constexpr std::array kColumns = {1, 7, 8, 9, 63, 64, 200, 1728, 2600, 5300, 65535, 70000};

// Coding in the lowest bits, then flags; width; height.
FilterCcittParameters ParametersOf(const std::uint8_t* data) {
    constexpr std::array kDimensions = {-1, 0, 1, 4};
    const unsigned int flags = data[0];
    return {.k = kDimensions[flags % kDimensions.size()],
            .end_of_line = static_cast<int>(flags >> 2U & 1U),
            .encoded_byte_align = static_cast<int>(flags >> 3U & 1U),
            .columns = kColumns[data[1] % kColumns.size()],
            .rows = data[2],
            .end_of_block = static_cast<int>(flags >> 4U & 1U),
            .black_is_1 = static_cast<int>(flags >> 5U & 1U)};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHeader = 3;
    // A bit may be a whole row; nothing new happens beyond this.
    constexpr std::size_t kEnough = 200000;
    if (size < kHeader) {
        return 0;
    }
    const FilterCcittParameters parameters = ParametersOf(data);
    const zorvan::filter::Coding coding{FILTER_DECODE_CCITTFAX, &parameters};
    const std::string_view input(reinterpret_cast<const char*>(data + kHeader), size - kHeader);
    const auto decoded = zorvan::filter::Decode(coding, input, 65536, kEnough);
    zorvan::fuzz::Require(decoded == zorvan::filter::Decode(coding, input, 1 + size % 13, kEnough));
    return 0;
}
