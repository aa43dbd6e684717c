// ASCIIHex: what it writes, and what it bears to read.
#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

using namespace std::string_view_literals;

std::string EncodeHex(std::string_view data) {
    return Encode(FILTER_ENCODE_ASCIIHEX, data);
}

// In buffers of 3 bytes, so that the end of a buffer meets every state.
Decoded DecodeHex(std::string_view data) {
    const Decoded decoded = Decode(FILTER_DECODE_ASCIIHEX, data, 3);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_ASCIIHEX, data));
    return decoded;
}

TEST(HexEncoder, WritesTwoDigitsAByteAndTheEnd) {
    EXPECT_EQ(EncodeHex("\x01\xAF!"), "01AF21>");
}

TEST(HexEncoder, WritesTheEndAloneForNoData) {
    EXPECT_EQ(EncodeHex(""), ">");
}

TEST(HexEncoder, KeepsNoDigitsBackWhenAChunkIsEncoded) {
    Writer writer;
    const auto encoder = EncoderTo(writer, FILTER_ENCODE_ASCIIHEX);
    EXPECT_TRUE(encoder->Encode(AsBytes("ab")));
    EXPECT_EQ(writer.bytes, "6162");
    EXPECT_TRUE(encoder->Encode(AsBytes("c")));
    EXPECT_EQ(writer.bytes, "616263");
}

TEST(HexEncoder, BreaksLinesAt72Digits) {
    const std::string line(72, '3');
    const std::string bytes(36, '3');
    EXPECT_EQ(EncodeHex(bytes), line + "\n>");
    EXPECT_EQ(EncodeHex(bytes + bytes + "3"), line + "\n" + line + "\n33>");
}

TEST(HexDecoder, TakesCapitalAndSmallLetters) {
    EXPECT_EQ(DecodeHex("41aFBc>"), (Decoded{"A\xAF\xBC", Progress::kEnd}));
}

TEST(HexDecoder, PassesOverWhiteSpaceAnywhere) {
    EXPECT_EQ(DecodeHex("\0 4\t1\r\n4\f2\0\0 43 >"sv), (Decoded{"ABC", Progress::kEnd}));
}

TEST(HexDecoder, PassesOverCharactersThatAreNoDigits) {
    EXPECT_EQ(DecodeHex("<4g1\xFF\x1A"
                        "42~>"),
              (Decoded{"AB", Progress::kEnd}));
}

TEST(HexDecoder, TakesAnOddLastDigitWithAZero) {
    EXPECT_EQ(DecodeHex("414>"), (Decoded{"A@", Progress::kEnd}));
    EXPECT_EQ(DecodeHex("4\n>"), (Decoded{"@", Progress::kEnd}));
}

TEST(HexDecoder, DropsHalfAByteWhereTheDataIsCutOff) {
    EXPECT_EQ(DecodeHex("4142"), (Decoded{"AB", Progress::kEnd}));
    EXPECT_EQ(DecodeHex("41424"), (Decoded{"AB", Progress::kEnd}));
}

TEST(HexDecoder, JoinsDigitsAcrossBlocksOfInput) {
    std::string data(4095, ' ');
    data += "414243>";
    EXPECT_EQ(DecodeHex(data), (Decoded{"ABC", Progress::kEnd}));
}

}  // namespace
}  // namespace zorvan::filter
