// The module as its callers meet it: loaded by name, driven through its eight entry points.
#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/system.h"
#include "tests/filter/codec_harness.h"
#include "tests/filter/loaded_module.h"

namespace zorvan::filter {
namespace {

using testing::UnorderedElementsAre;

TEST_F(Module, EncodesAndDecodesThroughItsEntryPoints) {
    for (unsigned int code = FILTER_ENCODE_FLATE; code <= FILTER_ENCODE_ASCIIHEX; code += 2) {
        Writer writer;
        void* const encoder = createEncoder(code, nullptr, &writer.slot, Writer::Write);
        ASSERT_NE(encoder, nullptr);
        EXPECT_EQ(encodeData(encoder, "something", 9), 0);
        EXPECT_EQ(flush(encoder), 0);
        EXPECT_EQ(encodeEod(encoder), 0);
        destroyEncoder(encoder);

        Reader reader{0, writer.bytes};
        const auto hint = static_cast<unsigned int>(writer.bytes.size() << 8U);
        void* const decoder = createDecoder((code + 1) | hint, nullptr, &reader.slot, Reader::Read);
        ASSERT_NE(decoder, nullptr);
        std::array<char, 100> buffer{};
        auto size = static_cast<unsigned int>(buffer.size());
        EXPECT_EQ(decodeData(decoder, buffer.data(), &size), 0);
        EXPECT_EQ(std::string(buffer.data(), size), "something");
        size = static_cast<unsigned int>(buffer.size());
        EXPECT_EQ(decodeData(decoder, buffer.data(), &size), 0);
        EXPECT_EQ(size, 0U);
        destroyDecoder(decoder);
    }
}

TEST_F(Module, HandsParameterBlocksToTheirCodecs) {
    constexpr FilterDctParameters kGrayPixel{{1, 1, 1, 100}};
    const std::pair<Coding, std::string> pieces[] = {{{FILTER_ENCODE_CCITTFAX, &kByteRows}, "something"},
                                                     {{FILTER_ENCODE_DCT, &kGrayPixel}, "s"}};
    for (const auto& [coding, data] : pieces) {
        Writer writer;
        void* const encoder = createEncoder(coding.code, coding.parameters, &writer.slot, Writer::Write);
        ASSERT_NE(encoder, nullptr);
        EXPECT_EQ(encodeData(encoder, data.data(), static_cast<unsigned int>(data.size())), 0);
        EXPECT_EQ(encodeEod(encoder), 0);
        destroyEncoder(encoder);

        Reader reader{0, writer.bytes};
        void* const decoder = createDecoder(coding.code + 1, coding.parameters, &reader.slot, Reader::Read);
        ASSERT_NE(decoder, nullptr);
        std::array<char, 100> buffer{};
        auto size = static_cast<unsigned int>(buffer.size());
        EXPECT_EQ(decodeData(decoder, buffer.data(), &size), 0);
        EXPECT_EQ(std::string(buffer.data(), size), data);
        destroyDecoder(decoder);
    }
}

TEST_F(Module, TellsDamageAndRefusalByMinusOne) {
    Reader reader{0, "9jqo^9v"};
    void* const decoder = createDecoder(FILTER_DECODE_ASCII85, nullptr, &reader.slot, Reader::Read);
    std::array<char, 100> buffer{};
    for (const unsigned int valid : {4U, 0U, 0U}) {
        auto size = static_cast<unsigned int>(buffer.size());
        EXPECT_EQ(decodeData(decoder, buffer.data(), &size), -1);
        EXPECT_EQ(size, valid);
    }
    destroyDecoder(decoder);

    Writer writer;
    writer.accepted = 0;
    void* const encoder = createEncoder(FILTER_ENCODE_ASCII85, nullptr, &writer.slot, Writer::Write);
    EXPECT_EQ(encodeData(encoder, "something", 9), 0);
    EXPECT_EQ(encodeEod(encoder), -1);
    EXPECT_EQ(encodeData(encoder, "something", 9), -1);
    EXPECT_EQ(encodeData(encoder, nullptr, 0), -1);
    EXPECT_EQ(flush(encoder), -1);
    EXPECT_EQ(writer.calls, 1U);
    destroyEncoder(encoder);
}

TEST_F(Module, BearsNullPointers) {
    Writer writer;
    Reader reader{0, "41>"};
    EXPECT_EQ(createEncoder(FILTER_ENCODE_ASCIIHEX, nullptr, &writer.slot, nullptr), nullptr);
    EXPECT_EQ(createDecoder(FILTER_DECODE_ASCIIHEX, nullptr, &reader.slot, nullptr), nullptr);
    unsigned int size = 10;
    EXPECT_EQ(encodeData(nullptr, "a", 1), -1);
    EXPECT_EQ(encodeEod(nullptr), -1);
    EXPECT_EQ(flush(nullptr), -1);
    EXPECT_EQ(decodeData(nullptr, &size, &size), -1);
    EXPECT_EQ(size, 0U);
    destroyEncoder(nullptr);
    destroyDecoder(nullptr);

    void* const encoder = createEncoder(FILTER_ENCODE_ASCIIHEX, nullptr, &writer.slot, Writer::Write);
    EXPECT_EQ(encodeData(encoder, nullptr, 1), -1);
    EXPECT_EQ(encodeData(encoder, nullptr, 0), 0);
    destroyEncoder(encoder);
    void* const decoder = createDecoder(FILTER_DECODE_ASCIIHEX, nullptr, &reader.slot, Reader::Read);
    size = 10;
    EXPECT_EQ(decodeData(decoder, nullptr, &size), -1);
    EXPECT_EQ(decodeData(decoder, &size, nullptr), -1);
    size = 0;
    EXPECT_EQ(decodeData(decoder, nullptr, &size), 1);
    destroyDecoder(decoder);
}

TEST_F(Module, EncodesAndDecodesNothingForCodesThatItDoesNotKnow) {
    Writer writer;
    Reader reader;
    for (const unsigned int code : {1U, 5U, 14U, 256U + FILTER_ENCODE_LZW}) {
        EXPECT_EQ(createEncoder(code, nullptr, &writer.slot, Writer::Write), nullptr);
    }
    for (const unsigned int code : {0U, 4U, 15U}) {
        void* const decoder = createDecoder(code, nullptr, &reader.slot, Reader::Read);
        ASSERT_NE(decoder, nullptr);
        unsigned char byte = 0;
        unsigned int size = 1;
        EXPECT_EQ(decodeData(decoder, &byte, &size), -1);
        EXPECT_EQ(size, 0U);
        destroyDecoder(decoder);
    }
}

TEST_F(Module, WritesNothingWhenAnEncoderIsDestroyed) {
    Writer writer;
    void* const encoder = createEncoder(FILTER_ENCODE_ASCII85, nullptr, &writer.slot, Writer::Write);
    EXPECT_EQ(encodeData(encoder, "something", 9), 0);
    destroyEncoder(encoder);
    EXPECT_EQ(writer.calls, 0U);
}

TEST(ModuleFile, ExportsTheEightEntryPointsAndNothingElse) {
    EXPECT_THAT(test::ExportedNames(FILTER_MODULE),
                UnorderedElementsAre("CreateEncoder", "EncodeData", "Encode_EOD", "Flush", "DestroyEncoder",
                                     "CreateDecoder", "DecodeData", "DestroyDecoder"));
}

}  // namespace
}  // namespace zorvan::filter
