// Patterns: their prototypes, their instances, and the colours that they give.
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "content/space_page.h"
#include "paint/paint_page.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kColored =
    "/PatternType 1 /PaintType 1 /TilingType 2 /BBox [0 0 10 10] /XStep 10 /YStep 10 ";
constexpr const char* kUncolored =
    "/PatternType 1 /PaintType 2 /TilingType 2 /BBox [0 0 10 10] /XStep 10 /YStep 10 ";
constexpr const char* kShading =
    "<< /ShadingType 2 /ColorSpace /DeviceGray /Coords [0 0 1 1] /Function 11 0 R >>";
constexpr const char* kShadingText =
    "<</ShadingType 2\n/ColorSpace DefaultGray /Coords [0 0 1 1 ]\n"
    "/Function /N11 /FunctionDictionary findRes >>\n";
constexpr const char* kRamp = "<< /FunctionType 2 /Domain [0 1] /N 1 >>";

/// A document of one page with these patterns; object 11 is a function, and the objects from 10 on are the
/// test's.
PdfBuilder PatternPage(std::string_view content = "n", std::string_view patterns = "/P 10 0 R",
                       std::string_view others = "") {
    PdfBuilder pdf = OnePage(
        content, "/Resources << /Pattern << " + std::string(patterns) + " >> " + std::string(others) + " >>");
    return pdf.Object(11, kRamp);
}

/// A tiling pattern of the box and steps above, whose content becomes this text.
std::string Tiling(std::string_view name, std::string_view content, int paint = 1,
                   std::string_view matrix = "[1 0 0 1 0 0]") {
    return "/" + std::string(name) + " <<\n/PatternType 1\n/PaintType " + std::to_string(paint) +
           "\n/TilingType 2\n/BBox [0 0 10 10 ]\n/XStep 10\n/YStep 10\n/Matrix " + std::string(matrix) +
           "\n/PaintProc {begin 10 dict begin save /gs {gsDI} def\n" +
           (paint == 2 ? "/sfc {} store /ssc {} store\n" : "") + std::string(content) +
           "restore end end} bind >> /PatternPrototype defineRes pop\n";
}

/// What makes an instance.
std::string Made(const std::string& name) {
    return "/" + name + " /" + name + " /PatternPrototype findRes makePat\n";
}

// --- tiling patterns ---

TEST(TilingPattern, IsAPrototypeInTheSetupAndAnInstanceBehindTheClip) {
    const Drawing page = Draw(PatternPage("1 w").Stream(10, "2 w 3 w", kColored));
    EXPECT_EQ(page.setup, Tiling("N10", "2 w\n3 w\n"));
    EXPECT_EQ(page.content, Made("N10") + "1 w\n");
}

TEST(TilingPattern, WithoutColourLeavesTheColourAlone) {
    EXPECT_EQ(Draw(PatternPage().Stream(10, "0 g", kUncolored)).setup, Tiling("N10", "0 g\n", 2));
}

TEST(TilingPattern, HasItsNumbersAsTheyAreGiven) {
    PdfBuilder pdf = PatternPage();
    pdf.Stream(10, "n",
               "/PatternType 1 /PaintType 1 /TilingType 3 /BBox [-1 0.0 10.50 10.25] /XStep 10.5 /YStep -7 "
               "/Matrix [1.0 0 .5 1 -0.0000001 20]");
    EXPECT_EQ(Draw(pdf).setup,
              "/N10 <<\n/PatternType 1\n/PaintType 1\n/TilingType 3\n"
              "/BBox [-1 0 10.5 10.25 ]\n/XStep 10.5\n/YStep -7\n"
              "/Matrix [1 0 0.5 1 0 20 ]\n"
              "/PaintProc {begin 10 dict begin save /gs {gsDI} def\nn\n"
              "restore end end} bind >> /PatternPrototype defineRes pop\n");
}

TEST(TilingPattern, TakesItsEntriesByReference) {
    PdfBuilder pdf = PatternPage();
    pdf.Stream(10, "/G gs",
               "/PatternType 20 0 R /PaintType 21 0 R /TilingType 21 0 R /BBox 22 0 R /XStep 23 0 R "
               "/YStep 24 0 R /Matrix 25 0 R /Resources 26 0 R");
    pdf.Object(20, "1").Object(21, "2").Object(22, "[0 0 23 0 R 10]").Object(23, "10").Object(24, "10.5");
    pdf.Object(25, "[2 0 0 2 0 0]").Object(26, "<< /ExtGState << /G 27 0 R >> >>").Object(27, "<< /LW 3 >>");
    const std::string setup = Draw(pdf).setup;
    EXPECT_THAT(setup, StartsWith("/N10 <<\n/PatternType 1\n/PaintType 2\n/TilingType 2\n/BBox [0 0 10 10 ]\n"
                                  "/XStep 10\n/YStep 10.5\n/Matrix [2 0 0 2 0 0 ]\n"));
    EXPECT_THAT(setup, HasSubstr("/ssc {} store\n/N27 /ExtGState findRes  gs\n"));
}

TEST(TilingPattern, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = PatternPage("/Pattern cs /P scn", "/P 10 3 R");
    const std::string data = "<< /Length 1 "s + kColored + ">>\nstream\nn\nendstream";
    const Drawing page = Draw(pdf.Object(10, data, 3));
    EXPECT_EQ(page.setup, Tiling("N10-3", "n\n"));
    EXPECT_EQ(page.content, Made("N10-3") + "/Pattern cs\n/N10-3 /MadePattern findRes scn\n");
}

TEST(TilingPattern, IsWrittenOnEachPageThatNamesItAndMadeThere) {
    const std::string entries = "/Resources << /Pattern << /P 10 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, "/Contents 4 0 R", entries}).Stream(4, "n").Stream(10, "1 w", kColored);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(SetupOf(conversion.output), "");
    for (const unsigned number : {1U, 3U}) {
        EXPECT_EQ(PageSetupOf(conversion.output, number), Tiling("N10", "1 w\n")) << number;
        EXPECT_EQ(ContentOf(conversion.output, number), Made("N10") + "n\n") << number;
    }
    EXPECT_EQ(PageSetupOf(conversion.output, 2), "");
    EXPECT_EQ(ContentOf(conversion.output, 2), "n\n");
}

TEST(TilingPattern, OfTwoNamesIsWrittenOnce) {
    const Drawing page = Draw(PatternPage("n", "/P 10 0 R /Q 10 0 R").Stream(10, "n", kColored));
    EXPECT_EQ(page.setup, Tiling("N10", "n\n"));
    EXPECT_EQ(CountOf(page.content, Made("N10")), CountOf(page.content, "makePat"));
}

TEST(TilingPattern, HasWhatItNamesDefinedBeforeTheLineThatOpensIt) {
    PdfBuilder pdf = PatternPage();
    pdf.Stream(10, "/CS cs /X Do /D cs /S sh",
               kColored + "/Resources << /ColorSpace << /CS 12 0 R /D "s + kCalRgb +
                   " >> /XObject << /X 13 0 R >> /Shading << /S << /ShadingType 2 /ColorSpace /DeviceGray "
                   "/Coords [0 0 1 1] /Function " +
                   kRamp + " >> >> >>");
    pdf.Object(12, kCalGray).Stream(13, "7 w", kForm);
    const std::string setup = Draw(pdf).setup;
    const std::size_t opened = setup.find("/N10 <<\n/PatternType 1\n");
    ASSERT_NE(opened, std::string::npos);
    for (const std::string& definition : {Definition("N12", kCalGrayText), FormDefined("N13", "7 w\n"),
                                          std::string(kCalRgbText), "/FunctionDictionary defineRes pop\n"s}) {
        EXPECT_LT(setup.find(definition), opened) << definition;
    }
    EXPECT_EQ(CountOf(setup.substr(opened), "defineRes"), 1);
    EXPECT_THAT(setup.substr(opened), HasSubstr("def\n/N12 /ColorSpace findRes  cs\n"));
}

TEST(TilingPattern, LooksNamesUpInItsOwnResources) {
    PdfBuilder pdf = PatternPage("n", "/P 10 0 R", "/ExtGState << /G 12 0 R >>");
    pdf.Stream(10, "/G gs", kColored + "/Resources << /ExtGState << /G 13 0 R >> >>"s);
    EXPECT_THAT(Draw(pdf.Object(12, "<< /LW 1 >>").Object(13, "<< /LW 2 >>")).setup,
                HasSubstr("\n/N13 /ExtGState findRes  gs\n"));
}

TEST(TilingPattern, WithoutResourcesFindsNoNames) {
    PdfBuilder pdf = PatternPage("n", "/P 10 0 R", "/ExtGState << /G 12 0 R >>");
    pdf.Stream(10, "/G gs", kColored).Object(12, "<< /LW 1 >>");
    EXPECT_EQ(Draw(pdf).setup, Tiling("N10", " gs\n"));
}

// --- shading patterns ---

TEST(ShadingPattern, HasItsShadingInPlace) {
    EXPECT_EQ(Draw(PatternPage().Object(10, "<< /PatternType 2 /Shading "s + kShading + " >>")).setup,
              "/N10 <<\n/PatternType 2\n/Shading "s + kShadingText +
                  "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n");
    PdfBuilder pdf =
        PatternPage().Object(10, "<< /PatternType 2 /Shading 12 0 R /Matrix [1 0 0 1.5 10 20] >>");
    const Drawing page = Draw(pdf.Object(12, kShading));
    EXPECT_EQ(page.setup, "/N10 <<\n/PatternType 2\n/Shading "s + kShadingText +
                              "/Matrix [1 0 0 1.5 10 20 ]\n>> /PatternPrototype defineRes pop\n");
    EXPECT_EQ(page.content, Made("N10") + "n\n");
}

TEST(ShadingPattern, MayBeAStream) {
    EXPECT_THAT(Draw(PatternPage().Stream(10, "data", "/PatternType 2 /Shading "s + kShading)).setup,
                StartsWith("/N10 <<\n/PatternType 2\n/Shading <</ShadingType 2\n"));
}

TEST(ShadingPattern, KeepsItsGraphicsStateToItself) {
    PdfBuilder pdf =
        PatternPage().Object(10, "<< /PatternType 2 /ExtGState 12 0 R /Shading "s + kShading + " >>");
    const Definitions defined = Defined(pdf.Object(12, "<< /LW 5 >>"));
    EXPECT_EQ(defined.page, "/N10 <<\n/PatternType 2\n/Shading "s + kShadingText +
                                "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n");
    EXPECT_THAT(defined.document, HasSubstr("/N12 "));
}

TEST(ShadingPattern, HasDirectThingsDefinedBeforeTheLineThatOpensIt) {
    for (const bool direct : {true, false}) {
        const std::string shading =
            "<< /ShadingType 2 /Coords [0 0 1 1] /ColorSpace "s + kCalGray + " /Function " + kRamp + " >>";
        PdfBuilder pdf = PatternPage().Object(12, shading);
        pdf.Object(10, "<< /PatternType 2 /Shading " + (direct ? shading : "12 0 R") + " >>");
        const std::string setup = Draw(pdf).setup;
        const std::size_t opened = setup.find("/N10 <<\n");
        ASSERT_NE(opened, std::string::npos);
        EXPECT_LT(setup.find(kCalGrayText), opened) << direct;
        EXPECT_LT(setup.find("/FunctionDictionary defineRes pop\n"), opened) << direct;
        EXPECT_EQ(CountOf(setup.substr(opened), "defineRes"), 1) << direct;
        EXPECT_THAT(setup.substr(opened), StartsWith("/N10 <<\n/PatternType 2\n/Shading <</ShadingType 2\n"))
            << direct;
    }
}

TEST(ShadingPattern, GoesOnWithoutARequiredEntryOfItsShading) {
    PdfBuilder pdf = PatternPage().Object(10, "<< /PatternType 2 /Shading 12 0 R >>");
    pdf.Object(12, "<< /ShadingType 2 /ColorSpace /DeviceGray >>");
    EXPECT_EQ(DrawRecording(-4072, pdf, 12).setup,
              "/N10 <<\n/PatternType 2\n/Shading <</ShadingType 2\n/ColorSpace DefaultGray >>\n"
              "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n");
}

// --- on several pages ---

/// Both pages name the pattern, object 10, which others are added for.
PdfBuilder TwoPages(std::string_view pattern) {
    const std::string entries = "/Resources << /Pattern << /P 10 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, entries}).Stream(4, "n").Object(11, kRamp);
    return pattern.empty() ? pdf : pdf.Object(10, pattern);
}

/// Each page has what the pattern needs before the pattern, in its own setup or in the document's.
void ExpectOnBothPages(PdfBuilder pdf, const std::vector<std::string>& definitions) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    for (const unsigned page : {1U, 2U}) {
        const std::string setup = SetupOf(conversion.output) + PageSetupOf(conversion.output, page);
        const std::size_t opened = setup.find("/N10 <<\n/PatternType ");
        ASSERT_NE(opened, std::string::npos) << page;
        for (const std::string& definition : definitions) {
            EXPECT_LT(setup.find(definition), opened) << page << ": " << definition;
            EXPECT_EQ(CountOf(setup, definition), 1) << page << ": " << definition;
        }
    }
}

TEST(PatternOfTwoPages, HasTheSpacesFormsAndFontsOfItsContentOnBoth) {
    PdfBuilder pdf = TwoPages("");
    pdf.Stream(10, "/CS cs /X Do BT /F 9 Tf ET",
               kColored + "/Resources << /ColorSpace << /CS 12 0 R /D "s + kCalRgb +
                   " >> /XObject << /X 13 0 R >> /Font << /F 14 0 R >> >>");
    pdf.Object(12, kCalGray).Stream(13, "7 w", kForm);
    pdf.Object(14, "<< /Subtype /Type1 /BaseFont /Foo >>");
    ExpectOnBothPages(pdf, {Definition("N12", kCalGrayText), FormDefined("N13", "7 w\n"),
                            " "s + kCalRgbText + " /ColorSpace defineRes pop\n", "[/N14 /Foo "});
}

TEST(PatternOfTwoPages, HasTheSpaceAndTheFunctionOfItsShadingOnBoth) {
    const std::string named = "<< /ShadingType 2 /Coords [0 0 1 1] /ColorSpace 13 0 R /Function 11 0 R >>";
    const std::string direct =
        "<< /ShadingType 2 /Coords [0 0 1 1] /ColorSpace "s + kCalGray + " /Function " + kRamp + " >>";
    for (const std::string& shading : {named, direct}) {
        for (const std::string& use : {shading, "12 0 R"s}) {
            PdfBuilder pdf = TwoPages("<< /PatternType 2 /Shading " + use + " >>");
            pdf.Object(12, shading).Object(13, kCalGray);
            ExpectOnBothPages(pdf, {" "s + kCalGrayText + " /ColorSpace defineRes pop\n",
                                    "/FunctionDictionary defineRes pop\n"});
        }
    }
}

TEST(PatternOfTwoPages, HasTheImageDataOfItsContentOnBoth) {
    PdfBuilder pdf = TwoPages("");
    pdf.Stream(10, "/X Do", kColored + "/Resources << /XObject << /X 13 0 R >> >>"s);
    ExpectOnBothPages(pdf.Stream(13, "80", kPixel), {HexImageData("N13", "80")});
}

TEST(PatternOfTwoPages, HasThePatternsOfItsContentOnBoth) {
    PdfBuilder pdf = TwoPages("");
    pdf.Stream(10, "/Pattern cs /Q scn", kColored + "/Resources << /Pattern << /Q 12 0 R >> >>"s);
    ExpectOnBothPages(pdf.Stream(12, "7 w", kColored), {Tiling("N12", "7 w\n")});
}

// Direct things have no number of the file, and their names are those that this page's setup defines.
TEST(PatternOfTwoPages, MayBeADirectObjectOfInheritedResources) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>").Stream(4, "/Pattern cs /P scn").Object(11, kRamp);
    pdf.Object(2,
               "<< /Type /Pages /Kids [3 0 R 5 0 R] /Count 2 /MediaBox [0 0 9 9] /Resources << /Pattern << "
               "/P << /PatternType 2 /Shading "s +
                   kShading + " >> >> >> >>");
    for (const unsigned page : {3U, 5U}) {
        pdf.Object(page, "<< /Type /Page /Parent 2 0 R /Contents 4 0 R >>");
    }
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    for (const unsigned page : {1U, 2U}) {
        const std::string content = ContentOf(conversion.output, page);
        const std::string name = Between(content, "/Pattern cs\n/", " /MadePattern findRes scn\n");
        EXPECT_THAT(name, StartsWith("N5898")) << page;
        EXPECT_EQ(content, Made(name) + "/Pattern cs\n/" + name + " /MadePattern findRes scn\n");
        EXPECT_EQ(PageSetupOf(conversion.output, page),
                  "/" + name + " <<\n/PatternType 2\n/Shading " + kShadingText +
                      "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n");
    }
}

// --- colours ---

/// A page with the patterns A (coloured), B (uncoloured) and S (a shading), and pattern spaces of several
/// bases.
std::string Colors(std::string_view content) {
    PdfBuilder pdf =
        PatternPage(content, "/A 12 0 R /B 13 0 R /S 14 0 R",
                    "/ColorSpace << /RGB [/Pattern /DeviceRGB] /CMYK 15 0 R /Cal 16 0 R /Bare 18 0 R "
                    "/Array 19 0 R >>");
    pdf.Stream(12, "n", kColored).Stream(13, "n", kUncolored);
    pdf.Object(14, "<< /PatternType 2 /Shading "s + kShading + " >>");
    pdf.Object(15, "[/Pattern /DeviceCMYK]").Object(16, "[/Pattern 17 0 R]").Object(17, kCalGray);
    const std::string written = Draw(pdf.Object(18, "/Pattern").Object(19, "[/Pattern]")).content;
    const std::string made = Made("N12") + Made("N13") + Made("N14");
    EXPECT_EQ(CountOf(written, "makePat\n"), 3);
    return written.substr(made.size());
}

TEST(PatternColor, TakesTheComponentsOfTheBaseForAnUncolouredPattern) {
    EXPECT_EQ(Colors("/CMYK cs 0.5 0 0 1 /B scn"),
              "/N15 /ColorSpace findRes  cs\n0.5 0 0 1 /N13 /MadePattern findRes scn\n");
    EXPECT_EQ(Colors("/CMYK CS 0.5 0 0 1 /B SCN"),
              "/N15 /ColorSpace findRes  CS\n0.5 0 0 1 /N13 /MadePattern findRes SCN\n");
    EXPECT_EQ(Colors("/Cal cs 0.25 /B scn"),
              "/N16 /ColorSpace findRes  cs\n0.25 /N13 /MadePattern findRes scn\n");
    EXPECT_THAT(Colors("/RGB cs 1 0.5 0 /B scn"), EndsWith("cs\n1 0.5 0 /N13 /MadePattern findRes scn\n"));
}

TEST(PatternColor, TakesNothingForAPatternOfItsOwnColour) {
    for (const auto& [pattern, name] : {std::tuple{"/A", "/N12"}, std::tuple{"/S", "/N14"}}) {
        const std::string text = std::string(name) + " /MadePattern findRes ";
        EXPECT_EQ(Colors("/CMYK cs "s + pattern + " scn " + pattern + " scn"),
                  "/N15 /ColorSpace findRes  cs\n" + text + "scn\n" + text + "scn\n");
        EXPECT_EQ(Colors("/Pattern cs "s + pattern + " scn"), "/Pattern cs\n" + text + "scn\n");
        EXPECT_EQ(Colors("/Pattern CS "s + pattern + " SCN"), "/Pattern CS\n" + text + "SCN\n");
    }
}

TEST(PatternColor, TakesNothingWhereThePatternSpaceHasNoBase) {
    EXPECT_EQ(Colors("/Pattern cs 0.5 sc /A scn"), "/Pattern cs\n/N12 /MadePattern findRes scn\n");
    EXPECT_THAT(Colors("/Bare cs /A scn"), EndsWith(" cs\n/N12 /MadePattern findRes scn\n"));
    EXPECT_THAT(Colors("/Array cs /A scn"), EndsWith(" cs\n/N12 /MadePattern findRes scn\n"));
}

TEST(PatternColor, WithTooFewNumbersEndsTheContent) {
    PdfBuilder pdf = PatternPage("/CS cs 1 1 /P scn 5 w", "/P 10 0 R", "/ColorSpace << /CS 12 0 R >>");
    const Conversion conversion =
        Convert(pdf.Stream(10, "n", kUncolored).Object(12, "[/Pattern /DeviceRGB]").Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{-4093});
    EXPECT_EQ(conversion.error.code, -4093);
    EXPECT_THAT(ContentOf(conversion.output), HasSubstr(" cs\n%%Trailer"));
}

TEST(PatternColor, OfTheDirectPatternSpaceIsDefinedInThePagesSetup) {
    PdfBuilder pdf = PatternPage("n", "", "/ColorSpace << /CS 12 0 R >>").Object(12, "[/Pattern /DeviceRGB]");
    EXPECT_EQ(Draw(pdf).setup, Definition("N12", "[/Pattern DefaultRGB ]"));
}

/// Whether the registry takes object 10 for a pattern that carries its own colour.
class PatternUseTest : public PaintTest {
protected:
    bool IsColored(PdfBuilder pdf) {
        Prepare(std::move(pdf));
        EXPECT_EQ(Register(ResourceCategory::kPattern), Status::kOk);
        Resource* resource = CurrentRegistry().GetObject(ResourceCategory::kPattern, ResourceKey{10, 0});
        const auto* pattern = dynamic_cast<const PatternUse*>(resource);
        EXPECT_NE(pattern, nullptr);
        return pattern != nullptr && pattern->IsColoredTiling();
    }
};

TEST_F(PatternUseTest, IsAColouredTilingOnlyWithPaintType1) {
    EXPECT_TRUE(IsColored(File().Stream(10, "n", kColored)));
    EXPECT_FALSE(IsColored(File().Stream(10, "n", kUncolored)));
    EXPECT_FALSE(IsColored(File().Stream(10, "n", "/PatternType 1 /PaintType 3")));
    EXPECT_FALSE(IsColored(File().Stream(10, "n", "/PatternType 1")));
    EXPECT_FALSE(IsColored(File("<< /PatternType 2 /PaintType 1 /Shading << /ShadingType 2 >> >>")));
}

// --- patterns that use themselves ---

constexpr const char* kItself = "/Resources << /Pattern << /P 10 0 R >> >>";

TEST(PatternCycle, OfNamesAloneIsNone) {
    const Drawing page =
        Draw(PatternPage("/Pattern cs /P scn").Stream(10, "1 w", std::string(kColored) + kItself));
    EXPECT_EQ(page.setup, Tiling("N10", "1 w\n"));
    EXPECT_EQ(page.content, Made("N10") + "/Pattern cs\n/N10 /MadePattern findRes scn\n");
}

TEST(PatternCycle, LeavesTheUseOutAndEndsThePagesThatNameIt) {
    const std::string entries = "/Resources << /Pattern << /P 10 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, "/Contents 4 0 R", entries}).Stream(4, "n");
    pdf.Stream(10, "1 w /Pattern cs /P scn 0 0 9 9 re f", std::string(kColored) + kItself);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{-4075, 0, -4075}));
    EXPECT_EQ(conversion.error.code, -4080);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
    EXPECT_THAT(conversion.output, Not(HasSubstr("/MadePattern findRes")));
    EXPECT_THAT(conversion.output, Not(HasSubstr(" makePat\n")));
}

TEST(PatternCycle, ThroughOtherContentsIsFoundToo) {
    struct Way {
        const char* content;
        const char* resources;
    };
    for (const Way& way : {Way{"/X Do", "/Resources << /XObject << /X 20 0 R >> >>"},
                           Way{"/Pattern cs /Q scn", "/Resources << /Pattern << /Q 21 0 R >> >>"},
                           Way{"BT /F 9 Tf (a) Tj ET", "/Resources << /Font << /F 22 0 R >> >>"}}) {
        PdfBuilder pdf = PatternPage().Stream(10, way.content, std::string(kColored) + way.resources);
        const std::string uses = "/Pattern cs /P scn";
        pdf.Stream(20, uses, std::string(kForm) + kItself).Stream(21, uses, std::string(kColored) + kItself);
        pdf.Stream(23, "9 0 d0 " + uses);
        pdf.Object(22,
                   "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 9 9] /FontMatrix [1 0 0 1 0 0] "
                   "/FirstChar 97 /LastChar 97 /Widths [9] /Encoding << /Differences [97 /a] >> "
                   "/CharProcs << /a 23 0 R >> "s +
                       kItself + " >>");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{-4075}) << way.content;
        EXPECT_EQ(conversion.error.code, -4080) << way.content;
    }
}

// --- what is no pattern ---

TEST(Pattern, OfAnUnknownTypeEndsThePagesThatNameIt) {
    for (const std::string entries : {"/PatternType 3", "/PatternType 0", "/PatternType -1", ""}) {
        PdfBuilder pdf = PatternPage().Stream(10, "n", entries);
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{-4075}) << entries;
        EXPECT_EQ(conversion.error.code, -4080) << entries;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10)) << entries;
    }
}

TEST(HostilePattern, ThatIsNoPatternAtAllDoesNoHarm) {
    for (const std::string object :
         {"5", "null", "/Name", "[1 2]", "(text)", "<< /PatternType 1 >>", "<< /PatternType 2 >>",
          "<< /PatternType 2 /Shading 5 >>", "<< /PatternType 2 /Shading 10 0 R >>",
          "<< /PatternType 2 /Shading 99 0 R >>", "<< /PatternType 2 /Shading << /ShadingType 99 >> >>",
          "10 0 R"}) {
        const Conversion conversion = Convert(PatternPage("/Pattern cs /P scn").Object(10, object).Bytes());
        const std::string setup = PageSetupOf(conversion.output);
        EXPECT_EQ(conversion.begin, 0) << object;
        EXPECT_THAT(setup, Not(HasSubstr("/Shading /Matrix"))) << object;
        EXPECT_EQ(CountOf(setup, "<<"), CountOf(setup, ">>")) << object;
    }
}

TEST(HostilePattern, WithoutItsEntriesHasNoHalfPair) {
    for (const std::string entries :
         {"", "/BBox 5", "/BBox [0 0 9]", "/BBox [/X /Y (z) []]", "/XStep /X /YStep (y)", "/Matrix [1 0 0]",
          "/Matrix 5", "/PaintType /X /TilingType []", "/Resources 5", "/Resources 10 0 R"}) {
        const Conversion conversion =
            Convert(PatternPage().Stream(10, "1 w", "/PatternType 1 " + entries).Bytes());
        const std::string setup = PageSetupOf(conversion.output);
        EXPECT_EQ(CountOf(setup, "<<"), CountOf(setup, ">>")) << entries;
        for (const std::string half : {"/PaintType \n", "/TilingType \n", "/XStep \n", "/YStep \n",
                                       "/PaintType /", "/XStep /", "/YStep /", "/BBox /"}) {
            EXPECT_THAT(setup, Not(HasSubstr(half))) << entries;
        }
    }
}

TEST(HostilePattern, OfManyLevelsEnds) {
    constexpr unsigned kLevels = 500;
    PdfBuilder pdf = PatternPage("n", "/P 100 0 R");
    for (unsigned level = 0; level < kLevels; ++level) {
        pdf.Stream(100 + level, "/Pattern cs /P scn",
                   kColored + "/Resources << /Pattern << /P "s + std::to_string(101 + level) + " 0 R >> >>");
    }
    const Conversion conversion = Convert(pdf.Stream(100 + kLevels, "n", kColored).Bytes());
    EXPECT_EQ(conversion.begin, 0);
    EXPECT_EQ(CountOf(conversion.output, "/PatternType 1\n"),
              CountOf(conversion.output, "/PatternPrototype defineRes pop\n"));
}

// The form is being written when the pattern, which it names, wants to draw it: that use is the one left out.
TEST(HostilePattern, InAFormInAPatternAndBackEnds) {
    const std::string both = "/Resources << /Pattern << /P 10 0 R >> /XObject << /X 20 0 R >> >>";
    PdfBuilder pdf = OnePage("/X Do /Pattern cs /P scn", both);
    pdf.Stream(10, "/X Do", kColored + both).Stream(20, "/X Do /Pattern cs /P scn", kForm + both);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_NE(conversion.error.code, 0);
    const std::string setup = PageSetupOf(conversion.output);
    EXPECT_EQ(CountOf(setup, "/N10 <<\n"), CountOf(setup, " /PatternPrototype defineRes pop\n"));
    EXPECT_EQ(CountOf(setup, "/N20 <<\n"), CountOf(setup, " /Form defineRes pop\n"));
    EXPECT_THAT(setup, Not(HasSubstr("/N20 /Form findRes EF")));
}

}  // namespace
}  // namespace zorvan::test
