// Where fonts are defined: in the document's setup or in their pages; and what can be no font.
#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "fonts/true_type_builder.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kFontOfPage = "/Resources << /Font << /F1 10 0 R >> >> /Contents 30 0 R";

/// So many pages that select the font, object 10, which has this dictionary.
PdfBuilder PagesWithFont(std::size_t count, std::string_view dictionary) {
    PdfBuilder pdf = Pages(std::vector<std::string>(count, kFontOfPage));
    return pdf.Object(10, dictionary).Stream(30, "/F1 12 Tf");
}

/// Converts; all must go well.
std::string OutputOf(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_THAT(conversion.pages, Each(0));
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    return conversion.output;
}

TEST(FontRegistry, DefinesAFontOfTwoPagesOnceInTheSetup) {
    const std::string output = OutputOf(PagesWithFont(2, "<< /Subtype /Type1 /BaseFont /Courier >>"));
    EXPECT_EQ(SetupOf(output), "[/N10 /Courier -1 TZ\n");
    for (const unsigned page : {1U, 2U}) {
        EXPECT_EQ(PageSetupOf(output, page), "");
        EXPECT_EQ(ContentOf(output, page), "/N10 12 Tf\n");
    }
}

TEST(FontRegistry, DefinesATrueTypeFontOfThreePagesOnceInTheSetup) {
    const std::string output = OutputOf(PagesWithFont(3, "<< /Subtype /TrueType /BaseFont /Arial >>"));
    EXPECT_EQ(SetupOf(output), "[/N10 /Arial -1 TZ\n");
    EXPECT_EQ(PageSetupOf(output, 3), "");
}

TEST(FontRegistry, FailsTheSetupForAFontOfTwoPagesThatCannotBeWritten) {
    PdfBuilder pdf =
        PagesWithFont(2, "<< /Subtype /Type1 /BaseFont /Foo /FontDescriptor << /FontFile 11 0 R >> >>");
    const Conversion conversion = Convert(pdf.Stream(11, "not compressed", "/Filter /FlateDecode").Bytes());
    EXPECT_EQ(conversion.global, -4092);
    EXPECT_EQ(conversion.error.code, -4092);
}

TEST(FontRegistry, DefinesAFontOfOnePageInThatPage) {
    PdfBuilder pdf = Pages({"", kFontOfPage});
    pdf.Object(10, "<< /Subtype /Type1 /BaseFont /Courier >>").Stream(30, "/F1 12 Tf");
    const std::string output = OutputOf(pdf);
    EXPECT_EQ(SetupOf(output), "");
    EXPECT_EQ(PageSetupOf(output, 1), "");
    EXPECT_EQ(PageSetupOf(output, 2), "[/N10 /Courier -1 TZ\n");
    EXPECT_EQ(ContentOf(output, 2), "/N10 12 Tf\n");
}

TEST(FontRegistry, DefinesAFontOfTwoNamesOnce) {
    PdfBuilder pdf = FontPage("/F1 10 0 R /F2 10 0 R", "/F1 12 Tf /F2 9 Tf");
    const std::string output = OutputOf(pdf.Object(10, "<< /Subtype /Type1 /BaseFont /Courier >>"));
    EXPECT_EQ(PageSetupOf(output), "[/N10 /Courier -1 TZ\n");
    EXPECT_EQ(ContentOf(output), "/N10 12 Tf\n/N10 9 Tf\n");
}

TEST(FontRegistry, DefinesAType3FontInEachOfItsPages) {
    const std::string output = OutputOf(PagesWithFont(2, "<< /Subtype /Type3 /Name /T3 >>"));
    EXPECT_EQ(SetupOf(output), "");
    EXPECT_THAT(PageSetupOf(output, 1), HasSubstr("\n[/T3 /N10 -1 TZ\n"));
    EXPECT_EQ(PageSetupOf(output, 2), PageSetupOf(output, 1));
}

TEST(FontRegistry, DefinesWhatAType3FontOfTwoPagesUsesInTheSetup) {
    PdfBuilder pdf =
        PagesWithFont(2, "<< /Subtype /Type3 /Name /T3 /Resources << /Font << /F1 11 0 R >> >> >>");
    const std::string output = OutputOf(pdf.Object(11, "<< /Subtype /Type1 /BaseFont /Courier >>"));
    EXPECT_EQ(SetupOf(output), "[/N11 /Courier -1 TZ\n");
    for (const unsigned page : {1U, 2U}) {
        EXPECT_THAT(PageSetupOf(output, page), HasSubstr("\n[/T3 /N10 -1 TZ\n"));
        EXPECT_THAT(PageSetupOf(output, page), Not(HasSubstr("/N11")));
    }
}

TEST(FontRegistry, DefinesAFontUsedByAPageAndItsType3FontOnce) {
    PdfBuilder pdf = FontPage("/F1 10 0 R /F2 11 0 R");
    pdf.Object(10, "<< /Subtype /Type3 /Name /T3 /Resources << /Font << /F1 11 0 R >> >> >>");
    EXPECT_EQ(
        CountOf(DefinitionsOf(pdf.Object(11, "<< /Subtype /Type1 /BaseFont /Courier >>")), "/N11 /Courier"),
        1);
}

TEST(FontRegistry, NamesAFontOfAnotherGenerationInTheLongForm) {
    PdfBuilder pdf = FontPage("/F1 40 2 R", "/F1 9 Tf");
    pdf.Object(40, "<< /Subtype /Type1 /BaseFont /Courier >>", 2);
    const std::string output = OutputOf(pdf);
    EXPECT_EQ(PageSetupOf(output), "[/N40-2 /Courier -1 TZ\n");
    EXPECT_EQ(ContentOf(output), "/N40-2 9 Tf\n");
}

TEST(FontRegistry, NamesAType3FontOfAnotherGenerationInTheLongForm) {
    PdfBuilder pdf = FontPage("/F1 40 2 R");
    const std::string font = DefinitionsOf(pdf.Object(40, "<< /Subtype /Type3 /Name /T3 >>", 2));
    EXPECT_THAT(font, HasSubstr("\n/FontName /N40-2 def\n"));
    EXPECT_THAT(font, HasSubstr("\n[/T3 /N40-2 -1 TZ\n"));
}

TEST(FontRegistry, NumbersADirectFont) {
    PdfBuilder pdf = FontPage("/F1 << /Subtype /Type1 /BaseFont /Courier >>", "/F1 9 Tf");
    const std::string output = OutputOf(pdf);
    EXPECT_EQ(PageSetupOf(output), "[/N589823 /Courier -1 TZ\n");
    EXPECT_EQ(ContentOf(output), "/N589823 9 Tf\n");
}

TEST(FontRegistry, WritesAMultipleMasterFontLikeAType1Font) {
    const std::string rest =
        " /BaseFont /Foo_300 /Encoding << /BaseEncoding /WinAnsiEncoding /Differences [65 /Z] >> "
        "/FontDescriptor << /FontFile 11 0 R >> >>";
    std::vector<std::string> fonts;
    for (const std::string subtype : {"/Type1", "/MMType1"}) {
        PdfBuilder pdf = FontPage();
        pdf.Object(10, "<< /Subtype " + subtype + rest);
        fonts.push_back(
            DefinitionsOf(pdf.Stream(11, "currentfile eexec\n\x01\x02", "/Length1 18 /Length2 2")));
    }
    EXPECT_THAT(fonts[0], HasSubstr("\n0102\n"));
    EXPECT_EQ(fonts[1], fonts[0]);
}

TEST(FontRegistry, RecordsWhatCanBeNoFontAndGoesOn) {
    for (const std::string object :
         {"<< /Subtype /Unknown >>", "<< /Subtype /CIDFontType0 >>", "<< /Subtype /CIDFontType2 >>",
          "<< /BaseFont /Courier >>", "<< /Subtype (Type1) >>", "[1 2]", "5", "null"}) {
        PdfBuilder pdf = FontPage("/F1 10 0 R /F2 11 0 R", "/F1 12 Tf /F2 9 Tf");
        pdf.Object(10, object).Object(11, "<< /Subtype /Type1 /BaseFont /Courier >>");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << object;
        EXPECT_EQ(conversion.error.code, -4084) << object;
        EXPECT_EQ(conversion.error.message, "Illegal Font.");
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10)) << object;
        EXPECT_EQ(PageSetupOf(conversion.output), "[/N11 /Courier -1 TZ\n") << object;
        EXPECT_EQ(ContentOf(conversion.output), " 12 Tf\n/N11 9 Tf\n") << object;
    }
}

TEST(FontRegistry, RecordsAType3FontThatContainsItselfAndWritesItOnce) {
    PdfBuilder pdf = FontPage();
    pdf.Object(
        10,
        "<< /Subtype /Type3 /Name /T3 /Resources << /Font << /Me 10 0 R >> >> /CharProcs << /a 12 0 R >> >>");
    pdf.Stream(12, "/Me 1 Tf (a) Tj");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, -4084);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
    const std::string setup = PageSetupOf(conversion.output);
    EXPECT_EQ(CountOf(setup, "[/T3 /N10 -1 TZ\n"), 1);
    EXPECT_THAT(setup, HasSubstr("\n/a { save\n/N10 1 Tf\n(a) Tj\nrestore } bind def\n"));
}

// Naming is not using: many fonts have the resources of their page.
TEST(FontRegistry, WritesType3FontsThatNameEachOtherOnce) {
    const auto font = [](const std::string& name, const std::string& other) {
        return "<< /Subtype /Type3 /Name /" + name + " /Resources << /Font << /F " + other + " 0 R >> >> >>";
    };
    PdfBuilder pdf = Pages({kFontOfPage, "/Resources << /Font << /F1 11 0 R >> >>"});
    pdf.Object(10, font("A", "11")).Object(11, font("B", "10")).Stream(30, "n");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    EXPECT_EQ(conversion.error.code, 0);
    for (const unsigned page : {1U, 2U}) {
        const std::string setup = PageSetupOf(conversion.output, page);
        EXPECT_EQ(CountOf(setup, "[/A /N10 -1 TZ\n"), 1) << page;
        EXPECT_EQ(CountOf(setup, "[/B /N11 -1 TZ\n"), 1) << page;
    }
}

TEST(FontRegistry, RecordsAType3FontThatIsShownInItsOwnGlyph) {
    PdfBuilder pdf = Pages({kFontOfPage});
    pdf.Object(10,
               "<< /Subtype /Type3 /Name /A /Encoding << /Differences [97 /a] >> /CharProcs << /a 12 0 R >> "
               "/Resources << /Font << /F 10 0 R >> >> >>");
    pdf.Stream(12, "1 0 d0 BT /F 1 Tf (a) Tj ET").Stream(30, "n");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0}));
    EXPECT_EQ(conversion.error.code, -4084);
}

/// A page with a font of every class, each with a program.
std::string PageOfAllClasses() {
    PdfBuilder pdf = FontPage("/F1 10 0 R /F2 11 0 R /F3 12 0 R /F4 13 0 R");
    pdf.Object(10,
               "<< /Subtype /Type1 /BaseFont /A /Encoding /MacExpertEncoding "
               "/FontDescriptor << /FontFile 20 0 R >> >>");
    pdf.Object(11, "<< /Subtype /Type1 /BaseFont /B /FontDescriptor << /FontFile3 20 0 R >> >>");
    pdf.Object(12, "<< /Subtype /TrueType /BaseFont /C /FontDescriptor << /FontFile2 21 0 R >> >>");
    pdf.Object(13, "<< /Subtype /Type3 /Name /D /CharProcs << /a 22 0 R >> >>");
    pdf.Stream(20, "currentfile eexec\n\x01\x02\x03\x04");
    return pdf.Stream(21, FileWith(Format6(65, {1}))).Stream(22, "1 w").Bytes();
}

/// Writes the page to a host that refuses the so-manieth piece of it, or none for 0; gives how many it was
/// handed.
std::uint64_t WriteRefusing(std::uint64_t call, const std::string& file) {
    Pieces::Reset();
    EXPECT_EQ(OpenFile(file), 0);
    const std::uint64_t before = Pieces::Calls();
    Pieces::Refuse(call == 0 ? 0 : before + call, 77, false);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), call == 0 ? 0 : 77) << call;
    const std::uint64_t calls = Pieces::Calls() - before;
    Pieces::ResetRefusal();
    ZORVAN_OneFileEnd();
    return calls;
}

TEST(FontRegistry, PassesOnWhatTheHostRefusesAndWritesNothingMore) {
    const std::string file = PageOfAllClasses();
    const Job job;
    const std::uint64_t whole = WriteRefusing(0, file);
    ASSERT_GT(whole, 40U);
    for (std::uint64_t call = 1; call <= whole; ++call) {
        EXPECT_EQ(WriteRefusing(call, file), call);
    }
    EXPECT_EQ(GetErrorInfo().code, 0);
}

}  // namespace
}  // namespace zorvan::test
