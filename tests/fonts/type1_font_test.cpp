// Type 1 fonts: without a program, with a Type 1 program, and with a compact one.
#include <gmock/gmock.h>

#include "fonts/font_page.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;

/// What stands behind every Type 1 program, whatever stands there in the file.
std::string Trailer() {
    std::string trailer;
    for (int line = 0; line < 8; ++line) {
        trailer += "\r" + std::string(64, '0');
    }
    return trailer + "\rcleartomark\n";
}

const std::string kClear = "%!PS-AdobeFont-1.0: Foo\ncurrentfile eexec\n";

/// A page with the font /Foo, object 10, and its program, object 12, under a key of its descriptor.
PdfBuilder PageWithProgram(std::string_view key, std::string_view program,
                           std::string_view streamEntries = "") {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Type /Font /Subtype /Type1 /BaseFont /Foo /FontDescriptor 11 0 R >>");
    pdf.Object(11, "<< /Type /FontDescriptor /" + std::string(key) + " 12 0 R >>");
    return pdf.Stream(12, program, streamEntries);
}

/// The font when a program becomes this.
std::string Embedded(const std::string& program, const std::string& name = "/Foo") {
    return "%%BeginResource: font /Foo\n" + program + "%%EndResource\n[/N10 " + name + " -1 TZ\n";
}

TEST(Type1Font, WithoutAProgramIsAskedOfTheDevice) {
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /Helvetica"), "[/N10 /Helvetica -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /Helvetica /FontDescriptor << /Flags 4 >>"),
              "[/N10 /Helvetica -1 TZ\n");
}

TEST(Type1Font, TakesItsEncodingFromTheProlog) {
    PdfBuilder pdf = FontPage("/F1 7 0 R");
    pdf.Object(7, "<< /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>");
    EXPECT_EQ(DefinitionsOf(pdf), "[/N7 /Helvetica-Bold 1 TZ\n");
}

TEST(Type1Font, IsNamedByItsBaseFontAsOneToken) {
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /ABCDEF+Foo,Bold"),
              "[/N10 /ABCDEF+Foo,Bold -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /Foo#20Bold#28x#29"),
              "[/N10 /Foo$Bold$x$ -1 TZ\n");
    const std::string longest(126, 'x');
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /" + longest), "[/N10 /" + longest + " -1 TZ\n");
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1"), "[/N10 / -1 TZ\n");
}

TEST(Type1Font, WithOnlyATrueTypeProgramIsNotEmbedded) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile2", "x")), "[/N10 /Foo -1 TZ\n");
}

TEST(Type1Font, WritesItsProgramsSecondPartInHexadecimal) {
    const PdfBuilder pdf =
        PageWithProgram("FontFile", kClear + "\x01\x02\x80\xFF"s + std::string(64, '0') + "\ncleartomark\n",
                        "/Length1 " + std::to_string(kClear.size()) + " /Length2 4 /Length3 77");
    EXPECT_EQ(DefinitionsOf(pdf), Embedded(kClear + "010280FF\n" + Trailer()));
}

TEST(Type1Font, HasATrailerOfItsOwnWhenTheFileHasNone) {
    const std::string lengths = "/Length1 " + std::to_string(kClear.size()) + " /Length2 2 /Length3 0";
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile", kClear + "\x01\x02", lengths)),
              Embedded(kClear + "0102\n" + Trailer()));
}

TEST(Type1Font, TakesTheLengthsByReference) {
    PdfBuilder pdf = PageWithProgram("FontFile", "%!PS\n\x01\x02\x03", "/Length1 20 0 R /Length2 21 0 R");
    EXPECT_EQ(DefinitionsOf(pdf.Object(20, "5").Object(21, "2")), Embedded("%!PS\n0102\n" + Trailer()));
}

TEST(Type1Font, TakesNegativeLengthsForNone) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile", kClear + "\x01\x02", "/Length1 -1 /Length2 -1")),
              Embedded(kClear + "0102\n" + Trailer()));
}

TEST(Type1Font, ClampsTheLengthsToTheProgram) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile", "%!PS\n", "/Length1 500 /Length2 500")),
              Embedded("%!PS\n" + Trailer()));
    EXPECT_EQ(
        DefinitionsOf(PageWithProgram("FontFile", kClear + "\x01\x02",
                                      "/Length1 " + std::to_string(kClear.size()) + " /Length2 2000000000")),
        Embedded(kClear + "0102\n" + Trailer()));
}

TEST(Type1Font, WithAnEmptyProgramHasTheTrailerAlone) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile", "")), Embedded(Trailer()));
}

TEST(Type1Font, CountsTheLengthsBehindTheFilter) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile", "252150530A 0180 03>",
                                            "/Filter /ASCIIHexDecode /Length1 5 /Length2 3")),
              Embedded("%!PS\n018003\n" + Trailer()));
}

TEST(Type1Font, BreaksTheDigitsIntoLines) {
    const std::string binary(100, '\x81');
    const std::string font = DefinitionsOf(PageWithProgram("FontFile", kClear + binary));
    std::string digits = Between(font, kClear, "\r");
    EXPECT_LT(digits.find('\n'), 100U);
    std::erase(digits, '\n');
    std::string expected;
    for (int byte = 0; byte < 100; ++byte) {
        expected += "81";
    }
    EXPECT_EQ(digits, expected);
}

TEST(Type1Font, EndsItsPageWhenItsProgramIsNoStream) {
    for (const std::string key : {"FontFile", "FontFile3"}) {
        for (const std::string value : {"5", "<< /Length 3 >>", "(x)"}) {
            PdfBuilder pdf = FontPage();
            pdf.Object(10, "<< /Subtype /Type1 /BaseFont /Foo /FontDescriptor 11 0 R >>");
            pdf.Object(11, "<< /" + key + " 12 0 R >>").Object(12, value);
            EXPECT_EQ(DefinitionsUpTo(-4095, pdf, 10), "%%BeginResource: font /Foo\n") << key << value;
        }
    }
}

TEST(Type1Font, EndsItsPageWhenItsProgramIsDamaged) {
    for (const std::string key : {"FontFile", "FontFile3"}) {
        EXPECT_EQ(DefinitionsUpTo(-4092, PageWithProgram(key, "not compressed", "/Filter /FlateDecode"), 12),
                  "%%BeginResource: font /Foo\n");
    }
}

// --- Compact programs.

/// A header, a Name INDEX, and bytes that only a device understands.
std::string CompactProgram(const std::string& name) {
    return "\x01\x00\x04\x01\x00\x01\x01\x01"s + static_cast<char>(name.size() + 1) + name +
           "\x00\x00\xFF\r\n%%"s;
}

std::string Compact(const std::string& program) {
    const std::string size = std::to_string(program.size());
    return "/FontSetInit /ProcSet findresource begin\n%%BeingData:" + size + " Binary Bytes\n/TestCFF " +
           size + " StartData\n" + program + "\n%%EndData\n";
}

TEST(CompactFont, IsHandedToFontSetInitAndFoundByTheNameThatItDeclares) {
    const std::string program = CompactProgram("ABCDEF+Bar");
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", program, "/Subtype /Type1C")),
              Embedded(Compact(program), "/ABCDEF+Bar"));
}

TEST(CompactFont, MayBeOfAnySubtype) {
    const std::string program = CompactProgram("Foo");
    for (const std::string subtype : {"", "/Subtype /OpenType", "/Subtype /CIDFontType0C"}) {
        EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", program, subtype)), Embedded(Compact(program)));
    }
}

TEST(CompactFont, CountsItsBytesBehindTheFilter) {
    const std::string program = "\x01\x00\x04\x01\x00\x01\x01\x01\x02Z"s;
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", "0100040100010101025A>", "/Filter /ASCIIHexDecode")),
              Embedded(Compact(program), "/Z"));
}

TEST(CompactFont, KeepsItsBaseFontWhenItDeclaresNoNameThatFits) {
    for (const std::string& program :
         {CompactProgram(std::string(127, 'x')), CompactProgram("a b"), "\x01"s}) {
        EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", program)), Embedded(Compact(program)));
    }
    const std::string longest(126, 'x');
    const std::string program = CompactProgram(longest);
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", program)),
              Embedded(Compact(program), "/" + longest));
}

TEST(CompactFont, WithAnEmptyProgramHasAnEmptyBlock) {
    EXPECT_EQ(DefinitionsOf(PageWithProgram("FontFile3", "")), Embedded(""));
}

TEST(CompactFont, StandsBehindAType1Program) {
    PdfBuilder pdf = FontPage();
    pdf.Object(
        10, "<< /Subtype /Type1 /BaseFont /Foo /FontDescriptor << /FontFile3 13 0 R /FontFile 12 0 R >> >>");
    pdf.Stream(12, kClear + "\x01\x02").Stream(13, CompactProgram("Bar"));
    EXPECT_EQ(DefinitionsOf(pdf), Embedded(kClear + "0102\n" + Trailer()));
}

TEST(CompactFont, TakesDifferencesUnderTheNameThatItDeclares) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10,
               "<< /Subtype /Type1 /BaseFont /Foo /Encoding << /Differences [65 /a] >> "
               "/FontDescriptor << /FontFile3 12 0 R >> >>");
    EXPECT_THAT(DefinitionsOf(pdf.Stream(12, CompactProgram("Bar"))),
                EndsWith("%%EndResource\n[  65 /a\n/N10 /Bar -1 TZ\n"));
}

}  // namespace
}  // namespace zorvan::test
