// Feeds a decoder, that of FILTER_CODE, any bytes: it must come to an end, and say the same whatever the
// size of the buffers that it fills.
#include <cstdint>
#include <cstdlib>

#include "tests/filter/codec_harness.h"

using zorvan::filter::Decode;
using zorvan::filter::Decoded;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Data may expand a thousand times; nothing new happens beyond this.
    constexpr std::size_t kEnough = 200000;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const Decoded decoded = Decode(FILTER_CODE, input, 65536, kEnough);
    if (decoded != Decode(FILTER_CODE, input, 1 + size % 13, kEnough)) {
        std::abort();
    }
    return 0;
}
