// TrueType fonts, whose glyph data the procset cuts anew (Adobe TN 5012, section 4.4).
#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using testing::Each;
using testing::Lt;

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kPiece = 32768;

void Put(Bytes& bytes, int count, std::uint32_t value) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> static_cast<unsigned>(shift)));
    }
}

void PutAll(Bytes& bytes, int count, const std::vector<std::uint32_t>& values) {
    for (const std::uint32_t value : values) {
        Put(bytes, count, value);
    }
}

/// A glyph of so many bytes: a square of 600 units, and behind its description bytes that nothing reads.
Bytes Square(std::size_t size, std::uint32_t seed) {
    Bytes glyph;
    PutAll(glyph, 2, {1, 0, 0, 600, 600, 3, 0});  // one contour, its box, its last point, no instructions
    PutAll(glyph, 1, {1, 1, 1, 1});               // four points on the curve
    PutAll(glyph, 2, {0, 600, 0, 0x10000 - 600, 0, 0, 600, 0});
    while (glyph.size() < size) {
        seed = seed * 1103515245 + 12345;
        Put(glyph, 1, seed >> 16U);
    }
    return glyph;
}

/// A TrueType file, and the places where it may be cut.
struct File {
    Bytes bytes;
    std::set<std::size_t> boundaries;
};

struct Table {
    std::string tag;
    Bytes bytes;
};

/// Glyph 0 is empty, the others are squares of so many bytes each; offsets of two or of four bytes.
std::vector<Table> Tables(std::uint32_t squares, std::size_t size, bool longOffsets) {
    Bytes glyf;
    Bytes loca;
    const auto locate = [&] {
        Put(loca, longOffsets ? 4 : 2, static_cast<std::uint32_t>(glyf.size() / (longOffsets ? 1 : 2)));
    };
    locate();
    for (std::uint32_t at = 0; at < squares; ++at) {
        locate();
        const Bytes glyph = Square(size, at);
        glyf.insert(glyf.end(), glyph.begin(), glyph.end());
    }
    locate();
    Bytes head;
    PutAll(head, 4, {0x10000, 0, 0, 0x5F0F3CF5});
    PutAll(head, 2, {0, 1000, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 600, 600, 0, 8, 2, longOffsets ? 1U : 0U, 0});
    Bytes hhea;
    PutAll(hhea, 2, {1, 0, 800, 0, 0, 1000, 0, 0, 600, 1, 0, 0, 0, 0, 0, 0, 0, 1});
    Bytes hmtx;
    PutAll(hmtx, 2, {1000, 0});
    hmtx.resize(4 + 2 * squares);
    Bytes maxp;
    PutAll(maxp, 2, {1, 0, squares + 1, 4, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0});
    return {{"cvt ", Bytes(1000)}, {"glyf", glyf}, {"head", head}, {"hhea", hhea},
            {"hmtx", hmtx},        {"loca", loca}, {"maxp", maxp}};
}

File SquaresFile(std::uint32_t squares, std::size_t size, bool longOffsets = true) {
    const std::vector<Table> tables = Tables(squares, size, longOffsets);
    File file;
    Put(file.bytes, 4, 0x10000);
    PutAll(file.bytes, 2, {static_cast<std::uint32_t>(tables.size()), 0, 0, 0});
    std::size_t at = 12 + 16 * tables.size();
    for (const Table& table : tables) {
        file.boundaries.insert(at);
        for (std::uint32_t square = 0; table.tag == "glyf" && square < squares; ++square) {
            file.boundaries.insert(at + square * size);
        }
        file.bytes.insert(file.bytes.end(), table.tag.begin(), table.tag.end());
        PutAll(file.bytes, 4,
               {0, static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(table.bytes.size())});
        at += (table.bytes.size() + 3) / 4 * 4;
    }
    for (const Table& table : tables) {
        file.bytes.insert(file.bytes.end(), table.bytes.begin(), table.bytes.end());
        file.bytes.resize((file.bytes.size() + 3) / 4 * 4);
    }
    return file;
}

std::string Hex(const std::uint8_t* bytes, std::size_t count) {
    std::string hex;
    for (std::size_t at = 0; at < count; ++at) {
        hex += "0123456789abcdef"[bytes[at] >> 4U];
        hex += "0123456789abcdef"[bytes[at] & 15U];
    }
    return hex;
}

/// The strings of sfnts as the library writes them: pieces of one size, each with one byte of padding.
std::string Strings(const Bytes& bytes, std::size_t piece = kPiece) {
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        text += "<" + Hex(bytes.data() + at, std::min(piece, bytes.size() - at)) + "00>";
    }
    return text;
}

/// The font that the library writes: /Big, with glyph 1 at A and the last one at B.
std::string Font(const File& file, std::uint32_t last, std::size_t piece = kPiece) {
    const std::string glyph = "/g" + std::to_string(last);
    return "%!PS-TrueTypeFont-65536-65536-1\n11 dict begin/FontName /Big def\n/Encoding 256 array\n"
           "0 1 255{1 index exch/.notdef put}for\ndup 65 /g1 put\ndup 66 " +
           glyph +
           " put\nreadonly def\n/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n"
           "/FontBBox [0 0 600 600] def\n/FontType 42 def\n/sfnts[" +
           Strings(file.bytes, piece) + "]def\n/CharStrings 3 dict dup begin\n/.notdef 0 def\n/g1 1 def\n" +
           glyph + " " + std::to_string(last) +
           " def\nend readonly def\n/Big currentdict end definefont pop\n";
}

/// The strings that the device got, without their padding, in hexadecimal.
std::vector<std::string> Cut(const std::string& font) {
    const Outcome outcome =
        PrologJob()
            .Page(
                "/Out (%stdout) (w) file def FontDirectory /Big get /sfnts get {\n"
                "dup length 1 sub 0 exch getinterval Out exch writehexstring Out (\\n) writestring} forall",
                font)
            .Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text.substr(0, 500);
    std::vector<std::string> strings;
    std::istringstream lines(outcome.text);
    for (std::string line; std::getline(lines, line);) {
        strings.push_back(line);
    }
    return strings;
}

std::string Joined(const std::vector<std::string>& strings) {
    std::string text;
    for (const std::string& each : strings) {
        text += each;
    }
    return text;
}

/// The bytes in each string, with its padding.
std::vector<std::size_t> Sizes(const std::vector<std::string>& strings) {
    std::vector<std::size_t> sizes(strings.size());
    std::ranges::transform(strings, sizes.begin(),
                           [](const std::string& each) { return each.size() / 2 + 1; });
    return sizes;
}

void ExpectCutAtBoundaries(const File& file, const std::vector<std::string>& strings) {
    EXPECT_TRUE(Joined(strings) == Hex(file.bytes.data(), file.bytes.size()));
    EXPECT_THAT(Sizes(strings), Each(Lt(65536U)));
    std::size_t at = 0;
    for (const std::string& each : strings) {
        EXPECT_TRUE(at == 0 || file.boundaries.contains(at)) << at;
        at += each.size() / 2;
    }
}

TEST(GlyphData, IsCutWhereATableOrAGlyphBegins) {
    for (const bool longOffsets : {true, false}) {
        const File file = SquaresFile(40, 2402, longOffsets);  // 96,080 bytes of glyphs
        EXPECT_GT(file.bytes.size(), 2 * kPiece);
        ExpectCutAtBoundaries(file, Cut(Font(file, 40)));
    }
}

TEST(GlyphData, IsCutInAsManyPiecesAsItTakes) {
    const File file = SquaresFile(150, 2000);  // 300,000 bytes of glyphs
    const std::vector<std::string> strings = Cut(Font(file, 150));
    ExpectCutAtBoundaries(file, strings);
    EXPECT_EQ(strings.size(), 5U);
}

TEST(GlyphData, OfTwoPiecesThatFitIntoOneBecomesOne) {
    const File file = SquaresFile(10, 4000);
    const std::vector<std::string> strings = Cut(Font(file, 10));
    ExpectCutAtBoundaries(file, strings);
    EXPECT_EQ(strings.size(), 1U);
}

TEST(GlyphData, IsCutInsideAGlyphThatNoStringCouldHold) {
    const File file = SquaresFile(2, 80000);
    const std::vector<std::string> strings = Cut(Font(file, 2));
    EXPECT_TRUE(Joined(strings) == Hex(file.bytes.data(), file.bytes.size()));
    EXPECT_THAT(Sizes(strings), Each(Lt(65536U)));
}

TEST(GlyphData, OfOnePieceStays) {
    const File file = SquaresFile(10, 2000);
    EXPECT_THAT(Sizes(Cut(Font(file, 10))), testing::ElementsAre(file.bytes.size() + 1));
}

TEST(GlyphData, ThatIsCutOtherwiseStays) {
    const File file = SquaresFile(20, 2000);
    EXPECT_THAT(Sizes(Cut(Font(file, 20, 30000))), testing::ElementsAre(30001U, file.bytes.size() - 29999));
}

/// Defines a font of these strings, and tells their lengths and the height of both stacks afterwards.
std::string AfterDefining(const std::string& strings) {
    return Printed("/f 5 dict dup begin /FontType 42 def /sfnts [" + strings +
                   "] def end def\n{/Bad f definefont} stopped clear\n"
                   "f /sfnts get {length =only ( ) print} forall count = countdictstack =");
}

TEST(GlyphData, ThatIsNoTrueTypeFileStays) {
    for (const std::string byte : {"83", "255", "0"}) {
        EXPECT_EQ(AfterDefining("3 {32769 string 0 1 32768 {1 index exch " + byte + " put} for} repeat"),
                  "32769 32769 32769 0\n8\n")
            << byte;
    }
}

TEST(GlyphData, WithoutItsLocationsStaysAndStopsNothing) {
    File file = SquaresFile(40, 2402);
    file.bytes.resize(file.bytes.size() - 200);
    for (std::size_t i = 12; i + 16 <= 12 + 16 * std::size_t{file.bytes[5]}; i += 16) {
        if (std::equal(&file.bytes[i], &file.bytes[i + 4], "loca")) {
            file.bytes[i + 8] = 0x10;  // an offset far behind the end
        }
    }
    const Outcome outcome =
        PrologJob().Page("countdictstack = (survived) =", Font(file, 40) + "[/N7 /Big -1 TZ\n").Run();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, PrologJob().Page("countdictstack = (survived) =").Run().text);
}

TEST(GlyphData, IsWhatTheDeviceShows) {
    for (const std::uint32_t last : {2U, 40U}) {
        const File file = SquaresFile(last, 2402);
        const std::string font = Font(file, last) + "[/N7 /Big -1 TZ\n";
        for (const std::string code : {"A", "B"}) {
            const Picture page =
                PrologJob().Page("BT /N7 50 Tf 10 10 Td (" + code + ") Tj ET", font).Paint().at(0);
            EXPECT_EQ(page.At(11, 11), kBlack) << code;
            EXPECT_EQ(page.At(38, 38), kBlack) << code;
            EXPECT_EQ(page.At(43, 25), kWhite) << code;
        }
    }
}

TEST(TrueTypeCopy, HasNoBoundingBoxOfFontUnits) {
    const std::string font = Font(SquaresFile(2, 100), 2) + "[/N7 /Big -1 TZ\n";
    const Outcome outcome =
        PrologJob()
            .Page("FontDirectory /N7 get dup /FontBBox get == /Encoding get dup length = 66 get =", font)
            .Run();
    EXPECT_EQ(outcome.text, "[0 0 0 0]\n256\ng2\n");
}

}  // namespace
}  // namespace zorvan::test
