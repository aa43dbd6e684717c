// LZW: what it writes, and what it bears to read.
#include <initializer_list>

#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

std::string EncodeLzw(std::string_view data) {
    return Encode(FILTER_ENCODE_LZW, data);
}

// In buffers of 3 bytes, so that the end of a buffer falls into strings.
Decoded DecodeLzw(std::string_view data) {
    const Decoded decoded = Decode(FILTER_DECODE_LZW, data, 3);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_LZW, data));
    return decoded;
}

// Codes packed from the highest bit on, each in as many bits as it is said to have.
class CodeWriter {
public:
    CodeWriter& Put(unsigned int code, unsigned int width) {
        for (unsigned int bit = width; bit-- > 0;) {
            if (count_++ % 8 == 0) {
                bytes_ += '\0';
            }
            const unsigned int place = 7 - (count_ - 1) % 8;
            const unsigned int bits = static_cast<unsigned char>(bytes_.back()) | (code >> bit & 1U) << place;
            bytes_.back() = static_cast<char>(bits);
        }
        return *this;
    }
    CodeWriter& Put9(std::initializer_list<unsigned int> codes) {
        for (const unsigned int code : codes) {
            Put(code, 9);
        }
        return *this;
    }
    const std::string& Text() const { return bytes_; }

private:
    unsigned int count_ = 0;
    std::string bytes_;
};

std::string Codes9(std::initializer_list<unsigned int> codes) {
    return CodeWriter().Put9(codes).Text();
}

TEST(LzwEncoder, WritesTheStandardsExample) {
    EXPECT_EQ(EncodeLzw("\x2D\x2D\x2D\x2D\x2D\x41\x2D\x2D\x2D\x42"),
              Codes9({256, 45, 258, 258, 65, 259, 66, 257}));
    EXPECT_EQ(EncodeLzw("\x2D\x2D\x2D\x2D\x2D\x41\x2D\x2D\x2D\x42"), "\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01");
}

TEST(LzwEncoder, WritesClearAndEndForNoData) {
    EXPECT_EQ(EncodeLzw(""), Codes9({256, 257}));
}

// Every pair of bytes is a new one, so that each byte becomes a code and each code an entry.
std::string NewPairs(std::size_t size) {
    std::string bytes;
    for (unsigned int step = 1; bytes.size() < size; step += 2) {
        unsigned int byte = 0;
        for (unsigned int i = 0; i < 256 && bytes.size() < size; ++i) {
            bytes += static_cast<char>(byte);
            byte += step;
        }
    }
    return bytes;
}

// The codes for NewPairs: all of one byte, one entry after each, and one bit more an entry early; then
// those of `ending` in the width reached.
std::string CodesOfNewPairs(std::size_t size, std::size_t entriesBeforeClear,
                            std::initializer_list<unsigned int> ending) {
    CodeWriter codes;
    codes.Put(256, 9);
    unsigned int width = 9;
    std::size_t next = 258;
    for (const char byte : NewPairs(size)) {
        codes.Put(static_cast<unsigned char>(byte), width);
        ++next;
        if (next == entriesBeforeClear) {
            codes.Put(256, width);
            next = 258;
            width = 9;
        } else if (next == std::size_t{1} << width && width < 12) {
            ++width;
        }
    }
    for (const unsigned int code : ending) {
        codes.Put(code, width);
    }
    return codes.Text();
}

constexpr std::size_t kSizesAroundEachChange[] = {253, 254, 255, 766, 1790, 3836, 3837, 3838, 3900, 5000};

TEST(LzwEncoder, ChangesTheWidthOneCodeEarlyAndClearsBeforeTheTableIsFull) {
    for (const std::size_t size : kSizesAroundEachChange) {
        EXPECT_EQ(EncodeLzw(NewPairs(size)), CodesOfNewPairs(size, 4095, {257})) << size;
    }
}

TEST(LzwDecoder, ChangesTheWidthOneCodeEarly) {
    for (const std::size_t size : kSizesAroundEachChange) {
        const Decoded whole{NewPairs(size), Progress::kEnd};
        EXPECT_EQ(DecodeLzw(CodesOfNewPairs(size, 4095, {257})), whole) << size;
    }
}

TEST(LzwDecoder, KeepsAFullTableWithCodesOf12Bits) {
    const Decoded whole{NewPairs(9000), Progress::kEnd};
    EXPECT_EQ(DecodeLzw(CodesOfNewPairs(9000, kNoLimit, {257})), whole);
}

TEST(LzwDecoder, StillKnowsItsStringsWhenTheTableIsFull) {
    const std::string pairs = NewPairs(4000);
    const std::string strings = pairs.substr(0, 2) + pairs.substr(4095 - 258, 2);
    EXPECT_EQ(DecodeLzw(CodesOfNewPairs(4000, kNoLimit, {258, 4095, 257})),
              (Decoded{pairs + strings, Progress::kEnd}));
}

TEST(LzwDecoder, NeedsNoClearCodeAtTheStart) {
    EXPECT_EQ(DecodeLzw(Codes9({45, 258, 258, 65, 259, 66, 257})), (Decoded{"-----A---B", Progress::kEnd}));
}

TEST(LzwDecoder, TakesSeveralClearCodes) {
    EXPECT_EQ(DecodeLzw(Codes9({256, 256, 65, 258, 256, 66, 258, 256, 257})),
              (Decoded{"AAABBB", Progress::kEnd}));
}

TEST(LzwDecoder, NeedsNoEnd) {
    const std::string data = Codes9({256, 65, 66, 258, 0});
    EXPECT_EQ(DecodeLzw(data.substr(0, 5)), (Decoded{"ABAB", Progress::kEnd}));
}

TEST(LzwDecoder, GivesOutLongStringsInPieces) {
    const std::string data(500000, 'a');
    EXPECT_EQ(DecodeLzw(EncodeLzw(data)), (Decoded{data, Progress::kEnd}));
}

TEST(LzwDecoder, FailsAtACodeThatStandsForNothingYet) {
    EXPECT_EQ(DecodeLzw(Codes9({256, 65, 66, 260, 65, 257})), (Decoded{"AB", Progress::kDamaged}));
    EXPECT_EQ(DecodeLzw(Codes9({256, 258, 257})), (Decoded{"", Progress::kDamaged}));
    EXPECT_EQ(DecodeLzw(Codes9({65, 66, 258, 256, 258, 257})), (Decoded{"ABAB", Progress::kDamaged}));
}

}  // namespace
}  // namespace zorvan::filter
