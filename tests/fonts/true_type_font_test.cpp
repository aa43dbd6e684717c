// TrueType fonts as Type 42 fonts.
#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "fonts/true_type_builder.h"

namespace zorvan::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// A page with the font /Foo, object 10, whose dictionary has these entries too, and its file, object 12.
PdfBuilder PageWithFile(std::string_view file, std::string_view entries,
                        std::string_view streamEntries = "") {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Type /Font /Subtype /TrueType /BaseFont /Foo /FontDescriptor 11 0 R " +
                       std::string(entries) + " >>");
    pdf.Object(11, "<< /Type /FontDescriptor /FontFile2 12 0 R >>");
    return pdf.Stream(12, file, streamEntries);
}

std::string FontOf(std::string_view file, std::string_view entries) {
    return DefinitionsOf(PageWithFile(file, entries));
}

/// The bytes that hexadecimal digits stand for; other characters may not be among them but for line ends.
std::string FromHexadecimal(std::string_view digits) {
    std::string clean;
    for (const char digit : digits) {
        if (digit != '\n') {
            EXPECT_NE(std::string_view("0123456789ABCDEF").find(digit), std::string_view::npos) << digit;
            clean += digit;
        }
    }
    EXPECT_EQ(clean.size() % 2, 0U);
    std::string bytes;
    for (std::size_t at = 0; at + 1 < clean.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(clean.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

/// The strings of the glyph data.
std::vector<std::string> GlyphData(std::string_view font) {
    std::string rest = Between(font, "/sfnts[", "]def\n");
    std::vector<std::string> strings;
    while (!rest.empty()) {
        EXPECT_EQ(rest[0], '<');
        const std::size_t end = rest.find('>');
        strings.push_back(FromHexadecimal(rest.substr(1, end - 1)));
        rest.erase(0, end == std::string::npos ? end : end + 1);
    }
    return strings;
}

TEST(TrueTypeFont, IsWrittenAsAType42FontInABlockThatStaysOpen) {
    const std::string file = FileWith(Format6(65, {1, 0, 2}));
    const std::string font = FontOf(file, "/FirstChar 65 /LastChar 68");
    EXPECT_THAT(font, StartsWith("%%BeginResource: font Foo\n"
                                 "%!PS-TrueTypeFont-65536-65536-1\n"
                                 "11 dict begin/FontName /Foo def\n"
                                 "/Encoding 256 array\n"
                                 "0 1 255{1 index exch/.notdef put}for\n"
                                 "dup 65 /g1 put\n"
                                 "dup 67 /g2 put\n"
                                 "readonly def\n"
                                 "/PaintType 0 def\n"
                                 "/FontMatrix [1 0 0 1 0 0] def\n"
                                 "/FontBBox [-10 -20 1000 800] def\n"
                                 "/FontType 42 def\n"
                                 "/sfnts[<"));
    EXPECT_THAT(GlyphData(font), ElementsAre(file + '\0'));
    EXPECT_THAT(font, EndsWith(">]def\n"
                               "/CharStrings 5 dict dup begin\n"
                               "/.notdef 0 def\n"
                               "/g1 1 def\n"
                               "/g2 2 def\n"
                               "end readonly def\n"
                               "/Foo currentdict end definefont pop\n"
                               "[/N10 /Foo -1 TZ\n"));
}

TEST(TrueTypeFont, HasRoomForEachCodeAndNotdefHoweverManyHaveGlyphs) {
    EXPECT_THAT(
        FontOf(FileWith(Format6(65, {1})), "/FirstChar 32 /LastChar 126"),
        HasSubstr("]def\n/CharStrings 96 dict dup begin\n/.notdef 0 def\n/g1 1 def\nend readonly def\n"));
}

TEST(TrueTypeFont, NamesAGlyphOfTwoCodesTwice) {
    const std::string font = FontOf(FileWith(Format6(65, {3, 3})), "/FirstChar 65 /LastChar 66");
    EXPECT_THAT(font, HasSubstr("dup 65 /g3 put\ndup 66 /g3 put\nreadonly"));
    EXPECT_THAT(font, HasSubstr("/.notdef 0 def\n/g3 3 def\n/g3 3 def\nend"));
}

TEST(TrueTypeFont, ReachesTheGlyphsOfSymbolFonts) {
    EXPECT_THAT(FontOf(FileWith(Format6(0xF041, {3})), "/FirstChar 65 /LastChar 65"),
                HasSubstr("put}for\ndup 65 /g3 put\nreadonly"));
}

TEST(TrueTypeFont, TakesFromTheFirstSubtableWhatBothMap) {
    const std::string file = TrueTypeBuilder()
                                 .Table("cmap", Cmap({{3, 1, Format6(65, {1})}, {1, 0, Format6(65, {2, 3})}}))
                                 .Bytes();
    EXPECT_THAT(FontOf(file, "/FirstChar 65 /LastChar 66"),
                HasSubstr("put}for\ndup 65 /g1 put\ndup 66 /g3 put\nreadonly"));
}

TEST(TrueTypeFont, LeavesOutTheCodesOutsideOfItsRange) {
    const std::string file = FileWith(Format6(64, {1, 2, 3, 4}));
    EXPECT_THAT(FontOf(file, "/FirstChar 65 /LastChar 66"),
                HasSubstr("put}for\ndup 65 /g2 put\ndup 66 /g3 put\nreadonly"));
    EXPECT_THAT(FontOf(file, ""), HasSubstr("put}for\nreadonly"));
    EXPECT_THAT(FontOf(file, ""), HasSubstr("/CharStrings 2 dict dup begin\n/.notdef 0 def\nend"));
}

TEST(TrueTypeFont, HoldsItsRangeWithinBytes) {
    const std::string file = FileWith(Format0(0, {1, 2}));
    const std::string wide = FontOf(file, "/FirstChar -5 /LastChar 100000");
    EXPECT_THAT(wide, HasSubstr("put}for\ndup 0 /g1 put\ndup 1 /g2 put\nreadonly"));
    EXPECT_THAT(wide, HasSubstr("/CharStrings 257 dict dup begin\n"));
    const std::string last = FontOf(FileWith(Format0(255, {7})), "/FirstChar 300 /LastChar 300");
    EXPECT_THAT(last, HasSubstr("put}for\ndup 255 /g7 put\nreadonly"));
    EXPECT_THAT(last, HasSubstr("/CharStrings 2 dict dup begin\n"));
}

TEST(TrueTypeFont, HasNoGlyphsWhenItsRangeEndsBeforeItBegins) {
    const std::string font = FontOf(FileWith(Format6(32, {1, 2, 3})), "/FirstChar 126 /LastChar 32");
    EXPECT_THAT(font, HasSubstr("put}for\nreadonly def\n"));
    EXPECT_THAT(font, HasSubstr("/CharStrings 1 dict dup begin\n/.notdef 0 def\nend readonly def\n"));
}

TEST(TrueTypeFont, TakesItsRangeByReference) {
    PdfBuilder pdf = PageWithFile(FileWith(Format6(65, {1, 2})), "/FirstChar 20 0 R /LastChar 21 0 R");
    EXPECT_THAT(DefinitionsOf(pdf.Object(20, "66").Object(21, "66")),
                HasSubstr("put}for\ndup 66 /g2 put\nreadonly"));
}

TEST(TrueTypeFont, IsCutIntoStringsOf32768BytesAndOneMore) {
    std::string file = FileWith(Format6(65, {1}));
    for (unsigned i = 0; file.size() < 70000; ++i) {
        file += static_cast<char>(i * 7U & 0xFFU);
    }
    const std::vector<std::string> strings = GlyphData(FontOf(file, "/FirstChar 65 /LastChar 65"));
    ASSERT_EQ(strings.size(), 3U);
    EXPECT_EQ(strings[0], file.substr(0, 32768) + '\0');
    EXPECT_EQ(strings[1], file.substr(32768, 32768) + '\0');
    EXPECT_EQ(strings[2], file.substr(65536) + '\0');
    EXPECT_EQ(strings[2].size(), 4465U);
}

TEST(TrueTypeFont, HasNoEmptyStringBehindAWholeNumberOfPieces) {
    std::string file = FileWith(Format6(65, {1}));
    file.resize(65536);
    const std::vector<std::string> strings = GlyphData(FontOf(file, ""));
    ASSERT_EQ(strings.size(), 2U);
    EXPECT_EQ(strings[1].size(), 32769U);
}

TEST(TrueTypeFont, WithoutAFileIsAskedOfTheDeviceInTheDevicesEncoding) {
    const std::string font = "/Subtype /TrueType /BaseFont /Arial ";
    EXPECT_EQ(DefinitionsOfFont(font), "[/N10 /Arial -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont(font + "/Encoding /WinAnsiEncoding"), "[/N10 /Arial -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont(font + "/Encoding << /BaseEncoding /MacRomanEncoding /Differences [1 /a] >>"),
              "[/N10 /Arial -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont(font + "/FontDescriptor << /Flags 4 >>"), "[/N10 /Arial -1 TZ\n");
}

TEST(TrueTypeFont, PaysNoHeedToItsEncodingBesideAFile) {
    const std::string file = FileWith(Format6(65, {1}));
    EXPECT_EQ(FontOf(file, "/FirstChar 65 /LastChar 65 /Encoding /MacExpertEncoding"),
              FontOf(file, "/FirstChar 65 /LastChar 65"));
}

TEST(TrueTypeFont, TakesNoOtherProgramThanFontFile2) {
    PdfBuilder pdf = FontPage();
    pdf.Object(
        10,
        "<< /Subtype /TrueType /BaseFont /Foo /FontDescriptor << /FontFile 12 0 R /FontFile3 12 0 R >> >>");
    EXPECT_EQ(DefinitionsOf(pdf.Stream(12, "x")), "[/N10 /Foo -1 TZ\n");
}

TEST(TrueTypeFont, WithAnEmptyFileIsLeftToTheDevice) {
    EXPECT_EQ(FontOf("", ""), "[/N10 /Foo -1 TZ\n");
}

TEST(TrueTypeFont, IsDecoded) {
    const std::string file = FileWith(Format6(65, {1}));
    std::string digits;
    for (const char byte : file) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        digits += kDigits[static_cast<unsigned char>(byte) >> 4U];
        digits += kDigits[static_cast<unsigned char>(byte) & 0xFU];
    }
    const std::string font = DefinitionsOf(PageWithFile(digits + ">", "", "/Filter /ASCIIHexDecode"));
    EXPECT_THAT(GlyphData(font), ElementsAre(file + '\0'));
}

TEST(TrueTypeFont, EndsItsPageWhenFontFile2IsNoStream) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /TrueType /BaseFont /Foo /FontDescriptor << /FontFile2 12 0 R >> >>");
    EXPECT_EQ(DefinitionsUpTo(-4095, pdf.Object(12, "[1 2]"), 10), "");
}

TEST(TrueTypeFont, EndsItsPageWhenItsFileIsDamaged) {
    EXPECT_EQ(DefinitionsUpTo(-4092, PageWithFile("this is not compressed", "", "/Filter /FlateDecode"), 12),
              "");
}

TEST(TrueTypeFont, EndsItsPageWithMinusOneWhenItsFileCannotBeParsed) {
    const std::string noCmap = TrueTypeBuilder().Table("head", Head({1, 2, 3, 4})).Bytes();
    for (const std::string& file : {std::string("too short"), noCmap, FileWith(OfFormat(12, {1, 2, 3}))}) {
        const Conversion conversion = Convert(PageWithFile(file, "").Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{-1});
        EXPECT_THAT(conversion.output, Not(HasSubstr("BeginResource: font")));
        EXPECT_THAT(conversion.output, Not(HasSubstr("/N10")));
    }
}

}  // namespace
}  // namespace zorvan::test
