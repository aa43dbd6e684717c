// Reading TrueType files: the box, the maps of codes to glyphs, and files that end too early.
#include "fonts/true_type_parser.h"

#include <map>

#include <gmock/gmock.h>

#include "fonts/true_type_builder.h"

namespace zorvan::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

using Source = TrueTypeParser::GlyphMapSource;

/// What was read of a file; `parsed` false when it could not be.
struct Parsed {
    bool parsed = false;
    GlyphBox box{};
    std::map<int, int> glyphs;  // the codes that have one
};

Parsed Parse(std::string_view file, Source source = Source::kCmap) {
    // Memory of exactly this size, so that a checked build sees every step beyond it.
    const std::vector<std::uint8_t> bytes(file.begin(), file.end());
    TrueTypeParser parser;
    Parsed result{.parsed = parser.Parse(bytes, source), .box = parser.BoundingBox(), .glyphs = {}};
    const std::vector<std::uint16_t>& map = parser.GlyphMap();
    for (std::size_t code = 0; code < map.size(); ++code) {
        if (map[code] != 0) {
            result.glyphs[static_cast<int>(code)] = map[code];
        }
    }
    return result;
}

/// The codes and glyphs of a file, which must be one.
std::map<int, int> GlyphsOf(std::string_view file) {
    const Parsed result = Parse(file);
    EXPECT_TRUE(result.parsed);
    return result.glyphs;
}

std::string WithCmap(const std::vector<Subtable>& subtables) {
    return TrueTypeBuilder().Table("cmap", Cmap(subtables)).Bytes();
}

/// All cuts of a file that are parsed nonetheless.
std::vector<std::size_t> CutsThatPass(const std::string& file, Source source = Source::kCmap) {
    std::vector<std::size_t> cuts;
    for (std::size_t size = 0; size < file.size(); ++size) {
        if (Parse(file.substr(0, size), source).parsed) {
            cuts.push_back(size);
        }
    }
    return cuts;
}

TEST(TrueTypeCmap, OfFormat0MapsBytes) {
    EXPECT_THAT(GlyphsOf(FileWith(Format0(65, {7, 0, 255}))), ElementsAre(Pair(65, 7), Pair(67, 255)));
}

TEST(TrueTypeCmap, OfFormat6MapsCodesInARow) {
    EXPECT_THAT(GlyphsOf(FileWith(Format6(0xF020, {3, 0, 65535}))),
                ElementsAre(Pair(0xF020, 3), Pair(0xF022, 65535)));
    EXPECT_THAT(GlyphsOf(FileWith(Format6(65, {}))), IsEmpty());
}

TEST(TrueTypeCmap, OfFormat6EndsAtTheLastCode) {
    EXPECT_THAT(GlyphsOf(FileWith(Format6(0xFFFF, {3, 4}))), ElementsAre(Pair(0xFFFF, 3)));
}

TEST(TrueTypeCmap, OfFormat4AddsTheDeltaToTheCode) {
    EXPECT_THAT(GlyphsOf(FileWith(Format4({{0x20, 0x22, -0x1D, {}}, {0xFFFF, 0xFFFF, 1, {}}}))),
                ElementsAre(Pair(0x20, 3), Pair(0x21, 4), Pair(0x22, 5)));
    // 0xF020 + 0x0FE3 is 0x10003.
    EXPECT_THAT(GlyphsOf(FileWith(Format4({{0xF020, 0xF021, 0x0FE3, {}}}))),
                ElementsAre(Pair(0xF020, 3), Pair(0xF021, 4)));
}

TEST(TrueTypeCmap, OfFormat4TakesIndicesThroughTheRangeOffset) {
    const std::string table =
        Format4({{0x20, 0x20, 1, {}}, {0x41, 0x43, 1, {9, 0, 11}}, {0x50, 0x51, -5, {20, 21}}});
    EXPECT_THAT(GlyphsOf(FileWith(table)), ElementsAre(Pair(0x20, 0x21), Pair(0x41, 10), Pair(0x43, 12),
                                                       Pair(0x50, 15), Pair(0x51, 16)));
}

TEST(TrueTypeCmap, OfFormat4MapsTheLastCodeOfAll) {
    EXPECT_THAT(GlyphsOf(FileWith(Format4({{0xFFFE, 0xFFFF, 10, {}}}))),
                ElementsAre(Pair(0xFFFE, 8), Pair(0xFFFF, 9)));
}

TEST(TrueTypeCmap, OfFormat4PassesOverASegmentThatEndsBeforeItBegins) {
    EXPECT_THAT(GlyphsOf(FileWith(Format4({{0x30, 0x2F, 1, {}}, {0x40, 0x40, 0, {}}}))),
                ElementsAre(Pair(0x40, 0x40)));
}

TEST(TrueTypeCmap, OfFormat4KeepsTheFirstOfOverlappingSegments) {
    EXPECT_THAT(GlyphsOf(FileWith(Format4({{0x41, 0x42, 1, {}}, {0x42, 0x43, 2, {}}}))),
                ElementsAre(Pair(0x41, 0x42), Pair(0x42, 0x43), Pair(0x43, 0x45)));
}

TEST(TrueTypeCmap, OfFormat4TakesNoIndexFromBeyondTheFile) {
    std::string file = FileWith(Format4({{0x41, 0x43, 0, {9, 10, 11}}}));
    file.resize(file.size() - 2);
    EXPECT_THAT(GlyphsOf(file), ElementsAre(Pair(0x41, 9), Pair(0x42, 10)));
}

TEST(TrueTypeCmap, OfFormat2MapsEachHighByteThroughItsSubheader) {
    const std::string table =
        Format2({{0x41, 0, {}}, {0x40, 5, {1, 0, 3}}, {0xFF, 0, {8, 9}}}, {{0x81, 1}, {0x82, 2}});
    EXPECT_THAT(GlyphsOf(FileWith(table)),
                ElementsAre(Pair(0x8140, 6), Pair(0x8142, 8), Pair(0x8200, 9), Pair(0x82FF, 8)));
}

TEST(TrueTypeCmap, OfFormat2LetsEveryHighByteWithoutASubheaderTakeTheFirst) {
    const std::map<int, int> glyphs = GlyphsOf(FileWith(Format2({{0x41, -1, {3}}}, {})));
    EXPECT_EQ(glyphs.size(), 256U);
    EXPECT_EQ(glyphs.at(0x0041), 2);
    EXPECT_EQ(glyphs.at(0x2041), 2);
    EXPECT_EQ(glyphs.at(0xFF41), 2);
}

TEST(TrueTypeCmap, OfFormats1And3And5AddsNothing) {
    for (const int format : {1, 3, 5}) {
        EXPECT_THAT(GlyphsOf(WithCmap({{3, 1, OfFormat(format, {65, 1, 9})}, {1, 0, Format6(65, {4})}})),
                    ElementsAre(Pair(65, 4)))
            << format;
    }
}

TEST(TrueTypeCmap, OfAFormatAbove6IsNoTable) {
    for (const int format : {7, 8, 10, 12, 14, 0x8000}) {
        EXPECT_FALSE(Parse(WithCmap({{1, 0, Format6(65, {4})}, {3, 1, OfFormat(format, {65, 1, 9})}})).parsed)
            << format;
    }
}

TEST(TrueTypeCmap, LetsTheFirstSubtableInTheFileWinForEachCode) {
    const std::string unicode = Format6(65, {1, 0, 3});
    const std::string roman = Format6(65, {11, 12, 13, 14});
    EXPECT_THAT(GlyphsOf(WithCmap({{3, 1, unicode}, {1, 0, roman}})),
                ElementsAre(Pair(65, 1), Pair(66, 12), Pair(67, 3), Pair(68, 14)));
    EXPECT_THAT(GlyphsOf(WithCmap({{1, 0, roman}, {3, 1, unicode}})),
                ElementsAre(Pair(65, 11), Pair(66, 12), Pair(67, 13), Pair(68, 14)));
}

TEST(TrueTypeCmap, TakesAllOfMicrosoftsEncodingsAndMacintoshsFirst) {
    for (const int encoding : {0, 1, 10}) {
        EXPECT_THAT(GlyphsOf(WithCmap({{3, encoding, Format6(65, {4})}})), ElementsAre(Pair(65, 4)));
    }
    EXPECT_THAT(GlyphsOf(WithCmap({{1, 0, Format6(65, {4})}})), ElementsAre(Pair(65, 4)));
    for (const auto& [platform, encoding] :
         {std::pair(0, 3), std::pair(1, 1), std::pair(2, 1), std::pair(4, 0)}) {
        EXPECT_THAT(GlyphsOf(WithCmap({{platform, encoding, Format6(65, {4})}})), IsEmpty()) << platform;
    }
}

TEST(TrueTypeCmap, DoesNotLookAtSubtablesThatItDoesNotTake) {
    EXPECT_THAT(GlyphsOf(WithCmap({{0, 4, OfFormat(12, {})}, {3, 1, Format6(65, {4})}})),
                ElementsAre(Pair(65, 4)));
}

TEST(TrueTypeCmap, MayBeWithoutSubtables) {
    EXPECT_THAT(GlyphsOf(WithCmap({})), IsEmpty());
}

TEST(TrueTypeCmap, MayNotLeadToASubtableBeyondTheFile) {
    std::string file = WithCmap({{3, 1, Format6(65, {4})}});
    const std::size_t offset = TrueTypeBuilder().Table("cmap", "").OffsetOf("cmap") + 8;
    file.replace(offset, 4, Words({0xFFFF, 0xFFFF}));
    EXPECT_FALSE(Parse(file).parsed);
}

// The sum of both offsets is that of a subtable where addresses have 32 bits.
TEST(TrueTypeCmap, MayNotLeadBackwardsByASumThatOverflows) {
    TrueTypeBuilder builder;
    builder.Table("glyf", Format6(65, {4})).Table("cmap", Cmap({{3, 1, ""}}));
    const std::size_t cmap = builder.OffsetOf("cmap");
    const int back = static_cast<int>(cmap - builder.OffsetOf("glyf"));
    std::string file = builder.Bytes();
    file.replace(cmap + 8, 4, Words({0xFFFF, 0x10000 - back}));
    EXPECT_FALSE(Parse(file).parsed);
}

TEST(TrueTypeFile, IsNoneWithoutACmap) {
    EXPECT_FALSE(Parse(TrueTypeBuilder().Table("head", Head({1, 2, 3, 4})).Bytes()).parsed);
}

TEST(TrueTypeFile, IsNoneBelow13Bytes) {
    for (std::size_t size = 0; size <= 13; ++size) {
        EXPECT_FALSE(Parse(std::string(size, '\0')).parsed) << size;
    }
}

TEST(TrueTypeFile, HasMoreBytesThanItsDirectory) {
    // The table begins where the file does: no subtables.
    const std::string record = "cmap" + Words({0, 0, 0, 0, 0, 4});
    const std::string file = Words({1, 0, 1, 0, 0, 0}) + record;
    EXPECT_FALSE(Parse(file).parsed);
    EXPECT_TRUE(Parse(file + "x").parsed);
}

TEST(TrueTypeFile, TakesTheLastOfTwoTablesOfOneName) {
    EXPECT_THAT(GlyphsOf(TrueTypeBuilder()
                             .Table("cmap", Cmap({{3, 1, Format6(65, {4})}}))
                             .Table("cmap", Cmap({{3, 1, Format6(66, {5})}}))
                             .Bytes()),
                ElementsAre(Pair(66, 5)));
}

TEST(TrueTypeFile, HasTheBoxOfItsHead) {
    EXPECT_EQ(Parse(FileWith(Format6(65, {4}))).box, (GlyphBox{-10, -20, 1000, 800}));
}

TEST(TrueTypeFile, HasABoxOfZerosWithoutAWholeHead) {
    EXPECT_EQ(Parse(WithCmap({})).box, (GlyphBox{0, 0, 0, 0}));
    TrueTypeBuilder builder;
    builder.Table("cmap", Cmap({})).Table("head", Head({1, 2, 3, 4}).substr(0, 55));
    const Parsed parsed = Parse(builder.Bytes());
    EXPECT_TRUE(parsed.parsed);
    EXPECT_EQ(parsed.box, (GlyphBox{0, 0, 0, 0}));
    EXPECT_EQ(Parse(builder.Bytes() + "x").box, (GlyphBox{1, 2, 3, 4}));
}

TEST(TrueTypeFile, IsNoneWhereverItIsCutBeforeTheEndOfItsCmap) {
    for (const std::string& subtable : {Format0(65, {7}), Format2({{0x40, 5, {1, 2}}}, {}),
                                        Format4({{0x20, 0x22, 1, {}}}), Format6(65, {4, 5})}) {
        const std::string file = FileWith(subtable);
        EXPECT_TRUE(Parse(file).parsed);
        EXPECT_THAT(CutsThatPass(file), IsEmpty()) << int{subtable[1]};
    }
}

TEST(TrueTypeFile, KeepsTheGlyphsInFrontOfACutThroughTheIndicesOfFormat4) {
    const std::string file = FileWith(Format4({{0x41, 0x43, 0, {9, 10, 11}}}));
    const std::size_t size = file.size();
    EXPECT_THAT(CutsThatPass(file), ElementsAre(size - 6, size - 5, size - 4, size - 3, size - 2, size - 1));
}

TEST(TrueTypeFile, EndsHoweverManyCodesItsSegmentsRepeat) {
    const std::vector<Segment> segments(4000, Segment{0, 0xFFFF, 1, {}});
    const Parsed parsed = Parse(FileWith(Format4(segments)));
    EXPECT_TRUE(parsed.parsed);
    EXPECT_EQ(parsed.glyphs.size(), 65535U);  // 0xFFFF has glyph 0
}

/// A file whose `loca` holds so many bytes.
std::string WithLoca(int glyphs, int longOffsets, std::size_t size) {
    return TrueTypeBuilder()
        .Table("head", Head({1, 2, 3, 4}, longOffsets))
        .Table("maxp", Maxp(glyphs))
        .Table("loca", std::string(size, '\0'))
        .Bytes();
}

TEST(TrueTypeIdentity, MapsEachGlyphThatLocaHoldsToItself) {
    const Parsed parsed = Parse(WithLoca(4, 0, 10), Source::kIdentity);
    EXPECT_TRUE(parsed.parsed);
    EXPECT_EQ(parsed.box, (GlyphBox{1, 2, 3, 4}));
    EXPECT_THAT(parsed.glyphs, ElementsAre(Pair(1, 1), Pair(2, 2), Pair(3, 3)));
    EXPECT_EQ(Parse(WithLoca(65535, 0, 131072), Source::kIdentity).glyphs.size(), 65534U);
}

TEST(TrueTypeIdentity, NeedsAnOffsetForEachGlyphAndOneMore) {
    EXPECT_FALSE(Parse(WithLoca(4, 0, 9), Source::kIdentity).parsed);
    EXPECT_TRUE(Parse(WithLoca(4, 1, 20), Source::kIdentity).parsed);
    EXPECT_TRUE(Parse(WithLoca(4, 2, 20), Source::kIdentity).parsed);
    EXPECT_FALSE(Parse(WithLoca(4, 1, 19), Source::kIdentity).parsed);
    EXPECT_TRUE(Parse(WithLoca(0, 0, 2), Source::kIdentity).parsed);
    EXPECT_FALSE(Parse(WithLoca(0, 0, 1), Source::kIdentity).parsed);
}

TEST(TrueTypeIdentity, NeedsNoCmapAndIsNotHelpedByOne) {
    const std::string file = TrueTypeBuilder().Table("maxp", Maxp(2)).Table("cmap", Cmap({})).Bytes();
    EXPECT_TRUE(Parse(file).parsed);
    EXPECT_FALSE(Parse(file, Source::kIdentity).parsed);
}

TEST(TrueTypeIdentity, CountsNoGlyphsWithoutAWholeMaxp) {
    TrueTypeBuilder builder;
    builder.Table("loca", std::string(20, '\0')).Table("maxp", Maxp(4).substr(0, 31));
    EXPECT_TRUE(Parse(builder.Bytes(), Source::kIdentity).parsed);
    EXPECT_THAT(Parse(builder.Bytes(), Source::kIdentity).glyphs, IsEmpty());
    EXPECT_EQ(Parse(builder.Bytes() + "x", Source::kIdentity).glyphs.size(), 3U);
}

TEST(TrueTypeIdentity, IsNoneWhereverTheFileIsCut) {
    EXPECT_THAT(CutsThatPass(WithLoca(4, 0, 10), Source::kIdentity), IsEmpty());
    EXPECT_THAT(CutsThatPass(WithLoca(4, 1, 20), Source::kIdentity), IsEmpty());
}

TEST(GlyphMapFold, GivesEachByteTheGlyphOfTheLowestCodeThatEndsInIt) {
    std::vector<std::uint16_t> map(65536);
    map[0x41] = 1;
    map[0x0142] = 5;
    map[0xF041] = 6;
    map[0xF042] = 7;
    map[0xF043] = 8;
    map[0xFFFF] = 9;
    const std::array<std::uint16_t, 256> folded = FoldGlyphMap(map);
    EXPECT_EQ(folded[0x41], 1);
    EXPECT_EQ(folded[0x42], 5);
    EXPECT_EQ(folded[0x43], 8);
    EXPECT_EQ(folded[0xFF], 9);
    EXPECT_EQ(folded[0x40], 0);
}

}  // namespace
}  // namespace zorvan::test
