// Type 3 fonts: the header, the encoding, and glyphs that are contents.
#include <gmock/gmock.h>

#include "fonts/font_page.h"

namespace zorvan::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kMetrics = "/FontMatrix [0.001 0 0 0.001 0 0] /FontBBox [0 0 750 750] ";

/// A page with a Type 3 font, object 10, of these entries; object 12 is a stream for its glyphs.
PdfBuilder PageWithGlyphs(const std::string& entries, std::string_view glyph = "0 0 750 750 re f") {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Type /Font /Subtype /Type3 " + entries + " >>");
    return pdf.Stream(12, glyph);
}

std::string FontOf(const std::string& entries) {
    return DefinitionsOf(PageWithGlyphs(entries));
}

/// What stands between the brackets of its encoding.
std::string EncodingOf(const std::string& encoding) {
    return Between(FontOf("/Name /T3 " + encoding), "/Encoding [", "] def\n");
}

TEST(Type3Font, IsDefinedUnderItsResourceNameAndCopiedUnderItsOwn) {
    EXPECT_EQ(FontOf(std::string("/Name /T3 ") + kMetrics +
                     "/CharProcs << /square 12 0 R >> /Encoding << /Differences [65 /square] >>"),
              "%%BeginResource: font /T3\n"
              "10 dict begin\n"
              "T3Defs\n"
              "/FontType 3 def\n"
              "/FontName /N10 def\n"
              "/FontMatrix [0.001 0 0 0.001 0 0 ] def\n"
              "/FontBBox [0 0 750 750 ] def\n"
              "/Encoding [\n65 nND\n/square\n190 nND\n] def\n"
              "/GlyphProcs 2 dict begin\n"
              "/.notdef {250 0 d0} bind def\n"
              "/square { save\n"
              "0 0 750 750 re\n"
              "f\n"
              "restore } bind def\n"
              "currentdict end def\n"
              "FontName currentdict end\n"
              "definefont pop\n"
              "%%EndResource\n"
              "[/T3 /N10 -1 TZ\n");
}

TEST(Type3Font, WritesIntegersOfItsMatrixAndBoxAsIntegersAndRealsShort) {
    const std::string font =
        FontOf("/Name /T3 /FontMatrix [1 0.50 -0.0000001 1.0 -2 .25] /FontBBox [-10 -20.5 1000 0.0]");
    EXPECT_THAT(font,
                HasSubstr("\n/FontMatrix [1 0.5 0 1 -2 0.25 ] def\n/FontBBox [-10 -20.5 1000 0 ] def\n"));
}

TEST(Type3Font, TakesItsMatrixAndBoxByReference) {
    PdfBuilder pdf = PageWithGlyphs("/Name /T3 /FontMatrix 20 0 R /FontBBox [0 0 21 0 R 5]");
    EXPECT_THAT(DefinitionsOf(pdf.Object(20, "[2 0 0 2 0 0]").Object(21, "7")),
                HasSubstr("\n/FontMatrix [2 0 0 2 0 0 ] def\n/FontBBox [0 0 7 5 ] def\n"));
}

TEST(Type3Font, WithoutANameIsNamedByANumberBelow32768) {
    const std::string font = FontOf(kMetrics);
    const std::string name = Between(font, "%%BeginResource: font /", "\n");
    ASSERT_FALSE(name.empty());
    ASSERT_EQ(name.find_first_not_of("0123456789"), std::string::npos) << name;
    EXPECT_LT(std::stol(name), 32768);
    EXPECT_EQ(std::to_string(std::stol(name)), name);
    EXPECT_THAT(font, EndsWith("\n[/" + name + " /N10 -1 TZ\n"));
}

TEST(Type3Encoding, FillsTheCodesBetweenItsNames) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [65 /A /B 97 /a] >>"),
              "\n65 nND\n/A/B\n30 nND\n/a\n158 nND\n");
}

TEST(Type3Encoding, IgnoresACodeThatIsNotAhead) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [0 /g0 0 /g1] >>"), "/g0/g1\n254 nND\n");
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [2 /a 1 /b 4 /c -3 /d] >>"),
              "\n2 nND\n/a/b/c/d\n250 nND\n");
}

TEST(Type3Encoding, OfAnEmptyArrayHas256TimesNotdef) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [] >>"), "\n256 nND\n");
}

TEST(Type3Encoding, WithoutAnArrayIsEmpty) {
    EXPECT_EQ(EncodingOf(""), "");
    EXPECT_EQ(EncodingOf("/Encoding << /BaseEncoding /WinAnsiEncoding >>"), "");
    EXPECT_EQ(EncodingOf("/Encoding /MacRomanEncoding"), "");
}

TEST(Type3Encoding, PaysNoHeedToTheBaseEncoding) {
    EXPECT_EQ(EncodingOf("/Encoding << /BaseEncoding /MacExpertEncoding /Differences [1 /a] >>"),
              "\n1 nND\n/a\n254 nND\n");
}

TEST(Type3Encoding, BreaksTheLineBehindEachNinthName) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [/a /b /c /d /e /f /g /h /i /j /k] >>"),
              "/a/b/c/d/e/f/g/h/i\n/j/k\n245 nND\n");
}

TEST(Type3Encoding, TakesItsArrayByReference) {
    PdfBuilder pdf = PageWithGlyphs("/Name /T3 /Encoding 20 0 R");
    pdf.Object(20, "<< /Differences 21 0 R >>").Object(21, "[255 /z]");
    EXPECT_EQ(Between(DefinitionsOf(pdf), "/Encoding [", "] def\n"), "\n255 nND\n/z");
}

TEST(Type3Encoding, EndsAtTheLastCode) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [254 /a /b /c 300 /d] >>"), "\n254 nND\n/a/b");
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [300 /d] >>"), "\n256 nND\n");
}

TEST(Type3Encoding, KeepsAnEmptyNameApartFromTheNextName) {
    EXPECT_EQ(EncodingOf("/Encoding << /Differences [/ /quit / ] >>"), "/ /quit/ \n253 nND\n");
}

// In the dictionary that holds the glyphs, they would run in the place of the operators that define them.
TEST(Type3Glyphs, AreNotNamedLikeTheWordsBetweenThem) {
    const std::string font = FontOf(
        "/Name /T3 /Encoding << /Differences [/bind /def /currentdict /end /ends] >> /CharProcs << "
        "/bind 12 0 R /def 12 0 R /currentdict 12 0 R /end 12 0 R /ends 12 0 R >>");
    EXPECT_THAT(font, HasSubstr("/Encoding [/$bind/$def/$currentdict/$end/ends\n251 nND\n"));
    for (const std::string name : {"$bind", "$def", "$currentdict", "$end", "ends"}) {
        EXPECT_THAT(font, HasSubstr("\n/" + name + " { save\n"));
    }
}

TEST(Type3Glyphs, AreCountedWithTheNotdefThatTheFontLacks) {
    EXPECT_THAT(FontOf("/Name /T3 /CharProcs << /a 12 0 R /b 12 0 R /c 12 0 R >>"),
                HasSubstr("\n/GlyphProcs 4 dict begin\n/.notdef {250 0 d0} bind def\n/a { save\n"));
}

TEST(Type3Glyphs, KeepTheNotdefThatTheFontHas) {
    EXPECT_THAT(FontOf("/Name /T3 /CharProcs << /a 12 0 R /.notdef 12 0 R >>"),
                HasSubstr("\n/GlyphProcs 2 dict begin\n"
                          "/a { save\n0 0 750 750 re\nf\nrestore } bind def\n"
                          "/.notdef { save\n0 0 750 750 re\nf\nrestore } bind def\n"
                          "currentdict end def\n"));
}

TEST(Type3Glyphs, MayBeMissing) {
    const std::string none =
        "\n/GlyphProcs 1 dict begin\n/.notdef {250 0 d0} bind def\ncurrentdict end def\n";
    EXPECT_THAT(FontOf("/Name /T3 /CharProcs << >>"), HasSubstr(none));
    EXPECT_THAT(FontOf("/Name /T3"), HasSubstr(none));
}

TEST(Type3Glyphs, AreTakenByReference) {
    PdfBuilder pdf = PageWithGlyphs("/Name /T3 /CharProcs 20 0 R", "500 0 0 0 750 750 d1 1 w");
    EXPECT_THAT(DefinitionsOf(pdf.Object(20, "<< /a 12 0 R >>")),
                HasSubstr("\n/a { save\n500 0 0 0 750 750 d1\n1 w\nrestore } bind def\n"));
}

TEST(Type3Glyphs, UseTheResourcesOfTheirFontWhichAreDefinedFirst) {
    PdfBuilder pdf =
        PageWithGlyphs("/Name /T3 /CharProcs << /a 12 0 R >> /Resources 20 0 R", "/F1 1 Tf (x) Tj");
    pdf.Object(20, "<< /Font << /F1 21 0 R >> >>");
    pdf.Object(21, "<< /Subtype /Type1 /BaseFont /Courier >>");
    const std::string font = DefinitionsOf(pdf);
    EXPECT_THAT(font, StartsWith("[/N21 /Courier -1 TZ\n%%BeginResource: font /T3\n"));
    EXPECT_THAT(font, HasSubstr("\n/a { save\n/N21 1 Tf\n(x) Tj\nrestore } bind def\n"));
    EXPECT_EQ(CountOf(font, "/N21 /Courier"), 1);
}

TEST(Type3Glyphs, UseTheResourcesOfThePageWhenTheirFontHasNone) {
    PdfBuilder pdf = FontPage("/F1 10 0 R /F2 21 0 R");
    pdf.Object(10, "<< /Subtype /Type3 /Name /T3 /CharProcs << /a 12 0 R >> >>")
        .Stream(12, "/F2 1 Tf (x) Tj");
    pdf.Object(21, "<< /Subtype /Type1 /BaseFont /Courier >>");
    EXPECT_THAT(DefinitionsOf(pdf), HasSubstr("\n/a { save\n/N21 1 Tf\n(x) Tj\nrestore } bind def\n"));
}

TEST(Type3Glyphs, EndTheirPageWhenOneFails) {
    const std::string written =
        DefinitionsUpTo(-4093, PageWithGlyphs("/Name /T3 /CharProcs << /a 12 0 R >>", "1 w 1 m"), 12);
    EXPECT_THAT(written, EndsWith("\n/a { save\n1 w\n"));
}

TEST(Type3Glyphs, EndTheirPageWhenAResourceOfTheirsFails) {
    PdfBuilder pdf = PageWithGlyphs("/Name /T3 /Resources << /Font << /F1 21 0 R >> >>");
    pdf.Object(21, "<< /Subtype /TrueType /BaseFont /Foo /FontDescriptor << /FontFile2 7 >> >>");
    EXPECT_EQ(DefinitionsUpTo(-4095, pdf, 21), "");
}

}  // namespace
}  // namespace zorvan::test
