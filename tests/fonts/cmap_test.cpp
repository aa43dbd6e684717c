// CMaps of the file: as resources before the fonts that use them.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "fonts/font_page.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// A CMap's program that tells its name.
std::string Program(const std::string& name) {
    return "/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapName /" + name +
           " def endcmap CMapName currentdict /CMap defineresource pop end end";
}

/// Adds a CMap of this name.
PdfBuilder& AddCMap(PdfBuilder& pdf, unsigned number, const std::string& name, std::string_view more = "") {
    return pdf.Stream(number, Program(name), "/Type /CMap /CMapName /" + name + " " + std::string(more));
}

constexpr const char* kDescendant =
    "<< /Subtype /CIDFontType0 /BaseFont /Part /CIDSystemInfo << /Registry (Adobe) /Ordering (Japan1) >> >>";

/// A page with a composite font, object 10, whose encoding is object 12.
PdfBuilder CMapPage(std::string_view encoding = "12 0 R") {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding " + std::string(encoding) + " >>");
    return pdf.Object(11, kDescendant);
}

/// What a CMap becomes.
std::string Defined(const std::string& resource, const std::string& name) {
    return "%%BeginResource: CMap (" + name + ")\n/" + resource + " " + std::to_string(Program(name).size()) +
           " StartCMap\n" + Program(name) + "\n%%EndResource\n";
}

std::string Line(const std::string& cmap, int mode = 0, const std::string& font = "N10") {
    return "/" + font + " (Part-T0) /" + cmap + " /CMap findRes  [(Part)] /Adobe-Japan1 [ /SansSerif ]  " +
           std::to_string(mode) + " 0 TZzero\n";
}

TEST(CMap, OfTheFileIsWrittenBeforeItsFontAndNamedByItsNumber) {
    PdfBuilder pdf = CMapPage();
    EXPECT_EQ(DefinitionsOf(AddCMap(pdf, 12, "Own-H")), Defined("N12", "Own-H") + Line("N12"));
}

TEST(CMap, IsDecoded) {
    std::string digits;
    for (const char byte : Program("Own")) {
        constexpr const char* kDigits = "0123456789abcdef";
        digits += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    PdfBuilder pdf = CMapPage().Stream(12, digits + ">", "/CMapName /Own /Filter /ASCIIHexDecode");
    EXPECT_EQ(DefinitionsOf(pdf), Defined("N12", "Own") + Line("N12"));
}

TEST(CMap, WritesDownwardsWhenItsDictionarySaysSo) {
    for (const auto& [entries, mode] : {std::pair{"/WMode 1", 1}, std::pair{"/WMode 0", 0}, std::pair{"", 0},
                                        std::pair{"/WMode /X", 0}, std::pair{"/WMode 13 0 R", 1}}) {
        PdfBuilder pdf = CMapPage();
        EXPECT_THAT(DefinitionsOf(AddCMap(pdf, 12, "Own-V", entries).Object(13, "1")),
                    EndsWith(Line("N12", mode)))
            << entries;
    }
}

TEST(CMap, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = CMapPage("12 4 R");
    const std::string program = Program("Own");
    pdf.Object(12,
               "<< /CMapName /Own /Length " + std::to_string(program.size()) + " >>\nstream\n" + program +
                   "\nendstream",
               4);
    EXPECT_EQ(DefinitionsOf(pdf), Defined("N12-4", "Own") + Line("N12-4"));
}

TEST(CMap, OfAFontOfTheSecondKindIsNamedInItsDictionary) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding 12 0 R >>");
    pdf.Object(11,
               "<< /Subtype /CIDFontType2 /BaseFont /Part /CIDSystemInfo << /Registry (Adobe) "
               "/Ordering (Japan1) >> >>");
    EXPECT_EQ(DefinitionsOf(AddCMap(pdf, 12, "Own")),
              Defined("N12", "Own") +
                  "8 dict begin\n/FontName /Part-T0 def\n/FontType 0 def\n/FMapType 9 def\n/WMode 0 def\n"
                  "/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/Encoding [0] def\n"
                  "/CMap dup /N12 exch findresource def\n/FDepVector [/Part findfont] def\n"
                  "currentdict end dup /FontName get exch definefont pop\n" +
                  Line("N12"));
}

TEST(CMap, HasTheOneThatItBuildsOnWrittenBefore) {
    PdfBuilder pdf = CMapPage();
    AddCMap(pdf, 12, "Own", "/UseCMap 13 0 R");
    EXPECT_EQ(DefinitionsOf(AddCMap(pdf, 13, "Base")),
              Defined("N13", "Base") + Defined("N12", "Own") + Line("N12"));
}

TEST(CMap, BuildsOnANameWithoutAWord) {
    PdfBuilder pdf = CMapPage();
    EXPECT_EQ(DefinitionsOf(AddCMap(pdf, 12, "Own", "/UseCMap /H")), Defined("N12", "Own") + Line("N12"));
}

TEST(CMap, OfTwoFontsOfAPageIsWrittenOnce) {
    PdfBuilder pdf = FontPage("/A 10 0 R /B 20 0 R");
    for (const unsigned number : {10U, 20U}) {
        pdf.Object(number, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding 12 0 R >>");
    }
    const std::string setup = DefinitionsOf(AddCMap(pdf.Object(11, kDescendant), 12, "Own"));
    EXPECT_EQ(CountOf(setup, Defined("N12", "Own")), 1);
    EXPECT_THAT(setup, StartsWith(Defined("N12", "Own")));
    EXPECT_THAT(setup, HasSubstr(Line("N12")));
    EXPECT_THAT(setup, HasSubstr(Line("N12", 0, "N20")));
}

/// Two pages with a font each, objects 10 and 20, or with the same one.
PdfBuilder TwoPages(bool sameFont) {
    const std::string first = "/Resources << /Font << /F 10 0 R >> >>";
    PdfBuilder pdf = Pages({first, sameFont ? first : "/Resources << /Font << /F 20 0 R >> >>"});
    for (const unsigned number : {10U, 20U}) {
        pdf.Object(number, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding 12 0 R >>");
    }
    pdf.Object(11, kDescendant);
    return AddCMap(pdf, 12, "Own");
}

TEST(CMap, OfAFontOfTwoPagesStandsBeforeItInTheDocumentsSetup) {
    const Conversion conversion = Convert(TwoPages(true).Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    EXPECT_EQ(SetupOf(conversion.output), Defined("N12", "Own") + Line("N12"));
    EXPECT_EQ(PageSetupOf(conversion.output, 1) + PageSetupOf(conversion.output, 2), "");
}

TEST(CMap, OfFontsOfSeveralPagesIsThereOnEach) {
    const Conversion conversion = Convert(TwoPages(false).Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    const std::string document = SetupOf(conversion.output);
    for (const unsigned page : {1U, 2U}) {
        const std::string defined = document + PageSetupOf(conversion.output, page);
        EXPECT_EQ(defined, Defined("N12", "Own") + Line("N12", 0, page == 1 ? "N10" : "N20")) << page;
    }
}

TEST(HostileCMap, ThatBuildsOnItselfEnds) {
    for (const unsigned base : {12U, 13U}) {
        PdfBuilder pdf = CMapPage();
        AddCMap(pdf, 12, "Own", "/UseCMap " + std::to_string(base) + " 0 R");
        AddCMap(pdf, 13, "Base", "/UseCMap 12 0 R");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.begin, 0);
        const std::string setup = PageSetupOf(conversion.output);
        EXPECT_LE(CountOf(setup, Defined("N12", "Own")), 1) << base;
        EXPECT_LE(CountOf(setup, Defined("N13", "Base")), 1) << base;
        EXPECT_EQ(CountOf(setup, "%%BeginResource: CMap"), CountOf(setup, "%%EndResource\n")) << base;
    }
}

TEST(HostileCMap, OfManyLevelsEnds) {
    PdfBuilder pdf = CMapPage("100 0 R");
    for (unsigned level = 0; level < 2000; ++level) {
        AddCMap(pdf, 100 + level, "L", "/UseCMap " + std::to_string(101 + level) + " 0 R");
    }
    const Conversion conversion = Convert(AddCMap(pdf, 2100, "L").Bytes());
    EXPECT_EQ(conversion.begin, 0);
    EXPECT_EQ(CountOf(conversion.output, "%%BeginResource: CMap"),
              CountOf(conversion.output, "%%EndResource\n/N") +
                  CountOf(conversion.output, "%%EndResource\n%%BeginResource: CMap"));
}

TEST(HostileCMap, WithoutAProgramIsRecordedAndNotWritten) {
    for (const std::string data : {"garbage", "", "quit"}) {
        PdfBuilder pdf = CMapPage().Stream(12, data, "/CMapName /Own");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.error.code, -4070) << data;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(12)) << data;
        EXPECT_THAT(PageSetupOf(conversion.output), Not(HasSubstr("%%BeginResource: CMap"))) << data;
    }
}

TEST(CMap, WithoutANameIsCalledByThatOfTheResource) {
    for (const std::string entries : {"", "/CMapName 5", "/CMapName (text)"}) {
        EXPECT_EQ(DefinitionsOf(CMapPage().Stream(12, Program("Own"), entries)),
                  "%%BeginResource: CMap (N12)\n/N12 " + std::to_string(Program("Own").size()) +
                      " StartCMap\n" + Program("Own") + "\n%%EndResource\n" + Line("N12"))
            << entries;
    }
}

// The line that ends the block may stand in the program too, so its bytes are counted.
TEST(CMap, IsWrittenAsItIsWhateverItHolds) {
    const std::string program = "%%EndResource\r\n\0(begincmap\x80\n"s;
    EXPECT_EQ(
        DefinitionsOf(CMapPage().Stream(12, program, "/CMapName /Own")),
        "%%BeginResource: CMap (Own)\n/N12 28 StartCMap\n" + program + "\n%%EndResource\n" + Line("N12"));
}

TEST(HostileCMap, ThatCannotBeDecodedIsRecorded) {
    PdfBuilder pdf = CMapPage().Stream(12, "x", "/CMapName /Own /Filter /JPXDecode");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.error.code, -4092);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(12));
    EXPECT_THAT(PageSetupOf(conversion.output), Not(HasSubstr("%%BeginResource: CMap")));
}

TEST(HostileCMap, ThatIsItsFontsDescendantOrTheFontItselfEnds) {
    for (const std::string encoding : {"10 0 R", "11 0 R"}) {
        const Conversion conversion = Convert(CMapPage(encoding).Bytes());
        EXPECT_EQ(conversion.error.code, -4070) << encoding;
        EXPECT_THAT(PageSetupOf(conversion.output), Not(HasSubstr("TZzero"))) << encoding;
    }
}

}  // namespace
}  // namespace zorvan::test
