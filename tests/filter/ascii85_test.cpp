// ASCII85: what it writes, and what it bears to read.
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

using namespace std::string_view_literals;

std::string Encode85(std::string_view data) {
    return Encode(FILTER_ENCODE_ASCII85, data);
}

// In buffers of 3 bytes, so that the end of a buffer falls into groups.
Decoded Decode85(std::string_view data) {
    const Decoded decoded = Decode(FILTER_DECODE_ASCII85, data, 3);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_ASCII85, data));
    return decoded;
}

Decoded Whole(std::string_view bytes) {
    return {std::string(bytes), Progress::kEnd};
}

Decoded Damaged(std::string_view bytes) {
    return {std::string(bytes), Progress::kDamaged};
}

TEST(Ascii85Encoder, WritesGroupsAndTheEndButNoBeginning) {
    EXPECT_EQ(Encode85("Man "), "9jqo^~>");
    EXPECT_EQ(Encode85("Man is"), "9jqo^Bla~>");
    EXPECT_EQ(Encode85(""), "~>");
}

TEST(Ascii85Encoder, WritesZForFourZerosButNotForFewer) {
    EXPECT_EQ(Encode85("\0\0\0\0\0\0\0\0"sv), "zz~>");
    EXPECT_EQ(Encode85("\0\0\0"sv), "!!!!~>");
    EXPECT_EQ(Encode85("\0"sv), "!!~>");
}

TEST(Ascii85Encoder, BreaksNoLineInsideTheEnd) {
    const std::string ones(71 * 4, '\0');
    EXPECT_EQ(Encode85(ones), std::string(71, 'z') + "\n~>");
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(Ascii85Encoder, KeepsLinesShortAndFreeOfAPercentSignInFront) {
    std::string percentSigns;  // each group is "%%%%%"
    while (percentSigns.size() < 4000) {
        percentSigns += "\x0C\x98\x00\xB4"sv;
    }
    ASSERT_EQ(Encode85(percentSigns.substr(0, 4)), " %%%%%~>");
    std::mt19937 random(1);
    for (const std::string& data : {percentSigns, SampleBytes(Kind::kNoise, 60000, random)}) {
        const std::string encoded = Encode85(data);
        for (const std::string& line : LinesOf(encoded)) {
            EXPECT_LE(line.size(), 72U);
            EXPECT_NE(line.front(), '%');
        }
        EXPECT_EQ(Decode85(encoded), Whole(data));
    }
}

TEST(Ascii85Encoder, CountsTheLinesOfEachPieceFromItsBeginning) {
    Writer writer;
    const auto encoder = EncoderTo(writer, FILTER_ENCODE_ASCII85);
    const std::string data(60 * 4, '\0');
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(encoder->Encode(AsBytes(data)));
        EXPECT_TRUE(encoder->End());
    }
    const std::string piece = std::string(60, 'z') + "~>";
    EXPECT_EQ(writer.bytes, piece + piece);
}

TEST(Ascii85Decoder, PassesOverWhiteSpaceAnywhere) {
    EXPECT_EQ(Decode85("\r\n9j\0q o\t^\fBl\na ~ >"sv), Whole("Man is"));
}

TEST(Ascii85Decoder, PassesOverTheOpeningMark) {
    EXPECT_EQ(Decode85("<~9jqo^~>"), Whole("Man "));
    EXPECT_EQ(Decode85("\r\n <~9jqo^~>"), Whole("Man "));
    EXPECT_EQ(Decode85("<\n~9jqo^~>"), Whole("Man "));
    EXPECT_EQ(Decode85("<~~>"), Whole(""));
}

TEST(Ascii85Decoder, PassesOverAnOpeningMarkAcrossBlocksOfInput) {
    const std::string data = std::string(4095, ' ') + "<~9jqo^~>";
    EXPECT_EQ(Decode85(data), Whole("Man "));
}

TEST(Ascii85Decoder, TakesALessSignForADigitOtherwise) {
    const std::string bytes = "T\xA0\xE1\x2F";
    ASSERT_EQ(Encode85(bytes).front(), '<');
    EXPECT_EQ(Decode85(Encode85(bytes)), Whole(bytes));
    EXPECT_EQ(Decode85("<"), Whole(""));
}

TEST(Ascii85Decoder, TakesZAmongOtherGroups) {
    EXPECT_EQ(Decode85("9jqo^z9jqo^zBla~>"), Whole("Man \0\0\0\0Man \0\0\0\0is"sv));
}

TEST(Ascii85Decoder, TakesLastGroupsOfEveryLength) {
    EXPECT_EQ(Decode85("9jqo^9jqo~>"), Whole("Man Man"));
    EXPECT_EQ(Decode85("9jqo^9jn~>"), Whole("Man Ma"));
    EXPECT_EQ(Decode85("9jqo^9`~>"), Whole("Man M"));
}

TEST(Ascii85Decoder, DropsALastGroupOfOneDigit) {
    EXPECT_EQ(Decode85("9jqo^9~>"), Whole("Man "));
}

TEST(Ascii85Decoder, NeedsNoEnd) {
    EXPECT_EQ(Decode85("9jqo^Bla"), Whole("Man is"));
    EXPECT_EQ(Decode85("9jqo^Bla\r\n"), Whole("Man is"));
    EXPECT_EQ(Decode85("9jqo^Bla~"), Whole("Man is"));
}

std::uint32_t BigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes) {
        value = value << 8U | static_cast<unsigned char>(byte);
    }
    return value;
}

TEST(Ascii85Decoder, CountsTheMissingDigitsOfACutGroupAsTheHighest) {
    std::mt19937 random(2);
    std::string group = "\xFF\xFF\xFF\xFF";
    for (int round = 0; round < 1000; ++round) {
        std::string encoded = Encode85(group);
        encoded.erase(0, encoded.find_first_not_of(' '));
        for (std::size_t digits = 2; digits < 5; ++digits) {
            const Decoded cut = Decode85(std::string_view(encoded).substr(0, digits));
            ASSERT_EQ(cut.progress, Progress::kEnd);
            ASSERT_EQ(cut.bytes.size(), digits - 1);
            const std::uint32_t excess = BigEndian(cut.bytes) - BigEndian(group.substr(0, digits - 1));
            EXPECT_LE(excess, 1U) << encoded << ' ' << digits;
        }
        group = SampleBytes(Kind::kNoise, 4, random);
    }
}

TEST(Ascii85Decoder, FailsAtACharacterThatIsNoDigit) {
    EXPECT_EQ(Decode85("9jqo^9jqo^9jvqo^~>"), Damaged("Man Man "));
    EXPECT_EQ(Decode85("9jqo^\x80~>"), Damaged("Man "));
    EXPECT_EQ(Decode85("{9jqo^"), Damaged(""));
}

TEST(Ascii85Decoder, FailsAtAZInsideAGroup) {
    EXPECT_EQ(Decode85("9jqo^9jz~>"), Damaged("Man "));
}

TEST(Ascii85Decoder, FailsAtAGroupThatIsTooLarge) {
    EXPECT_EQ(Decode85("s8W-!~>"), Whole("\xFF\xFF\xFF\xFF"));
    EXPECT_EQ(Decode85("9jqo^s8W-\"~>"), Damaged("Man "));
    EXPECT_EQ(Decode85("9jqo^s8W.~>"), Damaged("Man "));
    EXPECT_EQ(Decode85("9jqo^uu"), Damaged("Man "));
}

}  // namespace
}  // namespace zorvan::filter
