// Flate: agreement with zlib, and what it bears to read.
#include <gtest/gtest.h>
#include <zlib.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

using namespace std::string_view_literals;

Bytef* AsZlibInput(std::string_view text) {
    return const_cast<Bytef*>(AsBytes(text).data());
}

// Data as another program would have encoded it.
std::string Deflate(std::string_view data, int level, int windowBits, int strategy) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, strategy), Z_OK);
    std::string encoded(deflateBound(&stream, data.size()), '\0');
    stream.next_in = AsZlibInput(data);
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = AsZlibInput(encoded);
    stream.avail_out = static_cast<uInt>(encoded.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    encoded.resize(stream.total_out);
    deflateEnd(&stream);
    return encoded;
}

std::string Deflate(std::string_view data) {
    return Deflate(data, Z_DEFAULT_COMPRESSION, MAX_WBITS, Z_DEFAULT_STRATEGY);
}

// In buffers of 3 bytes, so that the end of a buffer falls anywhere.
Decoded DecodeFlate(std::string_view data) {
    const Decoded decoded = Decode(FILTER_DECODE_FLATE, data, 3);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_FLATE, data));
    return decoded;
}

Decoded Whole(std::string_view bytes) {
    return {std::string(bytes), Progress::kEnd};
}

TEST(FlateEncoder, WritesWhatZlibReadsBack) {
    std::mt19937 random(1);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : {0U, 1U, 4096U, 70000U}) {
            const std::string data = SampleBytes(kind, size, random);
            const std::string encoded = Encode(FILTER_ENCODE_FLATE, data);
            std::string decoded(size + 1, '\0');
            uLongf length = decoded.size();
            ASSERT_EQ(uncompress(AsZlibInput(decoded), &length, AsZlibInput(encoded), encoded.size()), Z_OK);
            decoded.resize(length);
            EXPECT_EQ(decoded, data);
        }
    }
}

TEST(FlateDecoder, TakesEveryWayOfZlib) {
    std::mt19937 random(2);
    const std::string data = SampleBytes(Kind::kRuns, 70000, random);
    for (const int strategy : {Z_DEFAULT_STRATEGY, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED}) {
        for (const int level : {0, 1, 9}) {
            for (const int windowBits : {9, 12, 15}) {
                EXPECT_EQ(DecodeFlate(Deflate(data, level, windowBits, strategy)), Whole(data));
            }
        }
    }
}

TEST(FlateDecoder, ExpandsDataAThousandTimes) {
    const std::string data(2000000, 'a');
    EXPECT_EQ(Decode(FILTER_DECODE_FLATE, Deflate(data)), Whole(data));
}

TEST(FlateDecoder, PassesOverWhiteSpaceBeforeTheHeader) {
    for (const std::string_view space : {"\n", "\r\n", " \t\f\r\n"}) {
        EXPECT_EQ(DecodeFlate(std::string(space) + Deflate("something")), Whole("something"));
    }
    EXPECT_EQ(DecodeFlate(std::string(5000, '\0') + Deflate("something")), Whole("something"));
    EXPECT_EQ(DecodeFlate("\r\n"), Whole(""));
}

TEST(FlateDecoder, MindsNeitherAWrongSumAtTheEndNorWrongCheckBits) {
    std::string encoded = Deflate("something");
    encoded.back() = static_cast<char>(encoded.back() ^ 0x55);
    EXPECT_EQ(DecodeFlate(encoded), Whole("something"));
    encoded[1] = static_cast<char>(encoded[1] ^ 1);
    EXPECT_EQ(DecodeFlate(encoded), Whole("something"));
}

TEST(FlateDecoder, NeedsNoSumAtTheEnd) {
    const std::string encoded = Deflate("something");
    EXPECT_EQ(DecodeFlate(encoded.substr(0, encoded.size() - 4)), Whole("something"));
}

TEST(FlateDecoder, FailsWithoutAHeader) {
    const Decoded nothing{"", Progress::kDamaged};
    EXPECT_EQ(DecodeFlate("something"), nothing);
    EXPECT_EQ(DecodeFlate("\xF8\x01"), nothing);
    const std::string encoded = Deflate("something");
    EXPECT_EQ(DecodeFlate(encoded.substr(2)), nothing);
}

TEST(FlateDecoder, FailsWhereADictionaryIsAskedFor) {
    std::string encoded = Deflate("something");
    encoded[1] = static_cast<char>(encoded[1] | 0x20);
    EXPECT_EQ(DecodeFlate(encoded), (Decoded{"", Progress::kDamaged}));
}

TEST(FlateDecoder, FailsAtABlockOfNoKnownType) {
    EXPECT_EQ(DecodeFlate("\x78\x9C\x07"), (Decoded{"", Progress::kDamaged}));
}

TEST(FlateDecoder, DeliversWhatStandsBeforeTheDamage) {
    // A stored block of nine bytes, then no block.
    EXPECT_EQ(DecodeFlate("\x78\x01\x00\x09\x00\xF6\xFFsomething\x07"sv),
              (Decoded{"something", Progress::kDamaged}));
}

}  // namespace
}  // namespace zorvan::filter
