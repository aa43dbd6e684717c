// Feeds the CCITTFax decoder any bytes: the first three choose its parameters. It must come to an end, and
// say the same whatever the size of the buffers that it fills.
#include <cstdint>

#include "fuzz/ccitt_parameters.h"
#include "fuzz/require.h"
#include "tests/filter/codec_harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using zorvan::fuzz::kCcittHeader;
    // A bit may be a whole row; nothing new happens beyond this.
    constexpr std::size_t kEnough = 200000;
    if (size < kCcittHeader) {
        return 0;
    }
    const FilterCcittParameters parameters = zorvan::fuzz::CcittParameters(data);
    const zorvan::filter::Coding coding{FILTER_DECODE_CCITTFAX, &parameters};
    const std::string_view input(reinterpret_cast<const char*>(data + kCcittHeader), size - kCcittHeader);
    const auto decoded = zorvan::filter::Decode(coding, input, 65536, kEnough);
    zorvan::fuzz::Require(decoded == zorvan::filter::Decode(coding, input, 1 + size % 13, kEnough));
    return 0;
}
