// The codec library, but for one call of its decoders, which fails: the one that a test asks for.
#include <cstdint>

#include "zorvan/filter.h"

// What CreateDecoder and DecodeData of the real library are called in this module.
extern "C" void* ZORVAN_CALL RealCreateDecoder(unsigned int, const void*, const int*, FilterReadFunction);
extern "C" int ZORVAN_CALL RealDecodeData(void*, void*, unsigned int*);

namespace {

std::uint64_t calls = 0;
std::uint64_t failing = 0;

bool Fails() {
    return ++calls == failing;
}

}  // namespace

/// From now on lets the `call`-th call fail, counted from 1; 0: none. Returns the calls since the last time.
extern "C" ZORVAN_EXPORT std::uint64_t FailDecoderCall(std::uint64_t call) {
    const std::uint64_t before = calls;
    calls = 0;
    failing = call;
    return before;
}

void* ZORVAN_CALL CreateDecoder(unsigned int filterCode, const void* parameters, const int* slot,
                                FilterReadFunction read) {
    return Fails() ? nullptr : RealCreateDecoder(filterCode, parameters, slot, read);
}

int ZORVAN_CALL DecodeData(void* decoder, void* output, unsigned int* size) {
    if (Fails()) {
        *size = 0;
        return -1;
    }
    return RealDecodeData(decoder, output, size);
}
