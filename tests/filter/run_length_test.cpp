// RunLength: what it writes, and what it bears to read.
#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

using namespace std::string_view_literals;

std::string EncodeRuns(std::string_view data) {
    return Encode(FILTER_ENCODE_RUNLENGTH, data);
}

// In buffers of 3 bytes, so that the end of a buffer falls into runs and literals.
Decoded DecodeRuns(std::string_view data) {
    const Decoded decoded = Decode(FILTER_DECODE_RUNLENGTH, data, 3);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_RUNLENGTH, data));
    return decoded;
}

TEST(RunLengthEncoder, WritesLiteralsRunsAndTheEnd) {
    EXPECT_EQ(EncodeRuns("abcddddd"),
              "\x02"
              "abc\xFC"
              "d\x80");
    EXPECT_EQ(EncodeRuns(""), "\x80");
}

TEST(RunLengthEncoder, LeavesPairsAmongTheLiterals) {
    EXPECT_EQ(EncodeRuns("abbc"),
              "\x03"
              "abbc\x80");
}

TEST(RunLengthEncoder, WritesAtMost128BytesInAPacket) {
    EXPECT_EQ(EncodeRuns(std::string(130, 'a')),
              "\x81"
              "a\x01"
              "aa\x80");
    std::string unlike;
    for (unsigned int i = 0; i < 128; ++i) {
        unlike += static_cast<char>(i);
    }
    std::string expected = "\x7F";
    expected += unlike;
    expected += "\0a\x80"sv;
    EXPECT_EQ(EncodeRuns(unlike + "a"), expected);
}

TEST(RunLengthEncoder, GrowsNoiseByAtMostOneByteIn128) {
    std::mt19937 random(1);
    const std::string noise = SampleBytes(Kind::kNoise, 70000, random);
    EXPECT_LE(EncodeRuns(noise).size(), noise.size() + noise.size() / 128 + 2);
}

TEST(RunLengthDecoder, TakesLiteralsAndRuns) {
    EXPECT_EQ(DecodeRuns("\x02"
                         "abc\xFC"
                         "d\xFF"
                         "e\x00"
                         "f\x80"sv),
              (Decoded{"abcdddddeef", Progress::kEnd}));
}

TEST(RunLengthDecoder, NeedsNoEnd) {
    EXPECT_EQ(DecodeRuns("\x02"
                         "abc"),
              (Decoded{"abc", Progress::kEnd}));
    EXPECT_EQ(DecodeRuns("\x02"
                         "ab"),
              (Decoded{"ab", Progress::kEnd}));
    EXPECT_EQ(DecodeRuns("\x00"
                         "a\xF0"sv),
              (Decoded{"a", Progress::kEnd}));
}

}  // namespace
}  // namespace zorvan::filter
