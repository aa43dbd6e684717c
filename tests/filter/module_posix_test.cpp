// What a caller's functions throw. On Windows each module has an unwinder of its own, and no exception gets
// from one into the other.
#include <array>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/filter/loaded_module.h"

namespace zorvan::filter {
namespace {

int ZORVAN_CALL ThrowAtWrite(const int*, const void*, unsigned int, unsigned int*) {
    throw std::runtime_error("write");
}

int ZORVAN_CALL ThrowAtRead(const int*, void*, unsigned int, unsigned int*) {
    throw std::runtime_error("read");
}

TEST_F(Module, LetsNoExceptionThrough) {
    void* const encoder = createEncoder(FILTER_ENCODE_LZW, nullptr, nullptr, ThrowAtWrite);
    EXPECT_EQ(encodeEod(encoder), -1);
    EXPECT_EQ(encodeEod(encoder), -1);
    destroyEncoder(encoder);
    void* const decoder = createDecoder(FILTER_DECODE_LZW, nullptr, nullptr, ThrowAtRead);
    for (int i = 0; i < 2; ++i) {
        std::array<char, 10> buffer{};
        unsigned int size = 10;
        EXPECT_EQ(decodeData(decoder, buffer.data(), &size), -1);
        EXPECT_EQ(size, 0U);
    }
    destroyDecoder(decoder);
}

}  // namespace
}  // namespace zorvan::filter
