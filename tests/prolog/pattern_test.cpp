// Patterns: prototypes, instances and colours made of them.
#include <string>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

std::string Tiling(const std::string& name, int paintType, const std::string& cell,
                   const std::string& step = "10") {
    return name + " <<\n/PatternType 1\n/PaintType " + std::to_string(paintType) +
           "\n/TilingType 1\n/BBox [0 0 10 10 ]\n/XStep " + step + "\n/YStep " + step +
           "\n/Matrix [1 0 0 1 0 0 ]\n/PaintProc {begin 10 dict begin save /gs {gsDI} def\n" +
           (paintType == 2 ? "/sfc {} store /ssc {} store\n" : "") + cell +
           "\nrestore end end} bind >> /PatternPrototype defineRes pop\n";
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

std::string Made(const std::string& name) {
    return name + " " + name + " /PatternPrototype findRes makePat\n";
}

/// A page with one pattern /N7, made, and this content.
Picture WithPattern(const std::string& prototype, const std::string& content) {
    return PrologJob().Page(Made("/N7") + content, prototype).Paint().at(0);
}

const std::string kFillAll = "/N7 /MadePattern findRes scn\n0 0 60 60 re f\n";
const std::string kCorner = "0 0 5 5 re\nf";
const std::string kRedCorner = "1 0 0 rg\n" + kCorner;

TEST(ColoredPattern, PaintsItsCellInItsOwnColors) {
    const Picture page = WithPattern(Tiling("/N7", 1, "1 0 0 rg\n" + kCorner), "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(2, 2), kRed);
    EXPECT_EQ(page.At(52, 32), kRed);
    EXPECT_EQ(page.At(7, 7), kWhite);
}

// The Q makes the cell set its colour anew, and the page's own is the very pattern that is being painted.
TEST(ColoredPattern, BeginsInBlackWhateverThePageHad) {
    const Picture page =
        WithPattern(Tiling("/N7", 1, "q\nQ\n" + kCorner),
                    "1 0 0 rg 0 90 5 5 re f /Pattern cs " + kFillAll + "1 0 0 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(12, 12), kBlack);
    EXPECT_EQ(page.At(72, 72), kRed);
}

TEST(ColoredPattern, StrokesToo) {
    const Picture page = WithPattern(Tiling("/N7", 1, "1 0 0 rg\n" + kCorner),
                                     "20 w /Pattern CS /N7 /MadePattern findRes SCN 0 20 m 60 20 l S");
    EXPECT_EQ(page.At(12, 22), kRed);
    EXPECT_EQ(page.At(17, 27), kWhite);
}

TEST(ColoredPattern, MayLeaveSavesAndOperandsInItsCell) {
    const Picture page = WithPattern(Tiling("/N7", 1, "q 1 2 (x)\n1 0 0 rg\n" + kCorner + "\nq q Q Q Q Q"),
                                     "q /Pattern cs " + kFillAll + "Q 0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(12, 12), kRed);
    EXPECT_EQ(page.At(72, 72), kBlue);
}

TEST(ColoredPattern, MayFailInItsCell) {
    const Picture page = WithPattern(Tiling("/N7", 1, "1 0 0 rg\n" + kCorner + "\nnosuchoperator"),
                                     "/Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(12, 12), kRed);
    EXPECT_EQ(page.At(72, 72), kBlue);
}

TEST(UncoloredPattern, TakesTheColorOfItsSpace) {
    const Picture page =
        WithPattern(Tiling("/N7", 2, "1 0 0 rg\n" + kCorner), "[/Pattern DefaultRGB ] cs 0 0 1 " + kFillAll);
    EXPECT_EQ(page.At(12, 12), kBlue);
    EXPECT_EQ(page.At(17, 17), kWhite);
}

TEST(UncoloredPattern, TakesTheLastColorWhenItsSpaceHasNone) {
    const Picture page = WithPattern(Tiling("/N7", 2, "1 0 0 rg\n" + kCorner),
                                     "0 1 0 rg /Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(12, 12), kGreen);
    EXPECT_EQ(page.At(72, 72), kBlue);
}

TEST(UncoloredPattern, LeavesTheColorOperatorsWorkingAfterwards) {
    const Picture page = WithPattern(
        Tiling("/N7", 2, kCorner),
        "0 1 0 rg /Pattern cs " + kFillAll + "q 0 0 1 rg 70 70 5 5 re f Q 1 0 0 RG 5 w 70 90 m 90 90 l S");
    EXPECT_EQ(page.At(72, 72), kBlue);
    EXPECT_EQ(page.At(80, 90), kRed);
}
// A shape's procedures that set colours do nothing, and the Q makes the device run the cell anew inside it.
TEST(ColoredPattern, KeepsItsColorsInsideAShape) {
    const Picture page =
        WithPattern(Tiling("/N7", 1, kRedCorner),
                    "/Pattern cs /N7 /MadePattern findRes scn 0 90 9 9 re f q\nQ\nq PDFVars /sfc {} put\n"
                    "0 0 60 60 re f Q\n0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(12, 12), kRed);
    EXPECT_EQ(page.At(17, 17), kWhite);
    EXPECT_EQ(page.At(72, 72), kBlue);
}

// The clip is still to come when the cell runs, and the cell's own path must not become it.
TEST(ColoredPattern, DoesNotClipWithThePagesPendingClip) {
    const Picture page =
        WithPattern(Tiling("/N7", 1, "1 0 0 rg 0 0 2 2 re f\n" + kCorner),
                    "/Pattern cs /N7 /MadePattern findRes scn 0 0 60 60 re W f 0 0 1 rg 50 50 40 40 re f");
    EXPECT_EQ(page.At(14, 14), kRed);
    EXPECT_EQ(page.At(55, 55), kBlue);
    EXPECT_EQ(page.At(72, 72), kWhite);
}

TEST(ColoredPattern, BeginsInAPagesGraphicsStateAndTextState) {
    const std::string cell =
        "currentlinewidth = currentlinecap = currentdash pop == OverprintMode = TextRender = Clip = " +
        kCorner;
    const PrologJob job = PrologJob().Page(
        Made("/N7") +
            "7 w 2 J [3] 0 d 2 Tr 4 TL <</OPM 1>> gs /Pattern cs /N7 /MadePattern findRes scn "
            "0 0 60 60 re f TextRender =",
        Tiling("/N7", 1, cell));
    EXPECT_EQ(Interpret("-sDEVICE=ppmraw -r72 -g100x100 -sOutputFile=/dev/null", job.Text()).text,
              "1.0\n0\n[]\n0\n0\n0\n2\n");
}

TEST(ColoredPattern, TakesNoNumbersAndLeavesNone) {
    for (const std::string space : {"[/Pattern DefaultRGB ] cs ", "1 0 0 rg [/Pattern DefaultRGB ] cs "}) {
        const PrologJob job = PrologJob().Page(
            Made("/N7") + space + "0 1 0 /N7 /MadePattern findRes scn 0 0 60 60 re f count =",
            Tiling("/N7", 1, "1 0 0 rg\n" + kCorner));
        EXPECT_EQ(job.Run().text, "0\n");
        EXPECT_EQ(job.Paint().at(0).At(12, 12), kRed);
    }
}

TEST(ColoredPattern, LeavesTheNumbersOfWhoeverPlacesThePage) {
    const PrologJob job = PrologJob().Before("8 9\n").Page(
        Made("/N7") + "[/Pattern DefaultRGB ] cs /N7 /MadePattern findRes scn count =",
        Tiling("/N7", 1, kCorner));
    EXPECT_EQ(job.Run().text, "2\n");
}

TEST(UncoloredPattern, StrokesAndShowsTextAndPaintsStencils) {
    const std::string use = "0 0 1 /N7 /MadePattern findRes ";
    const std::string space = "[/Pattern DefaultRGB ] ";
    const std::string stencil =
        "q 60 0 0 60 0 0 cm <</ImageType 1 /Width 1 /Height 1 /BitsPerComponent 1 /ImageMatrix [1 0 0 1 0 0] "
        "/Decode [0 1] /DataSource <00>>> imagemask Q";
    for (const std::string& painting :
         {space + "CS " + use + "SCN 60 w 0 30 m 60 30 l S", space + "cs " + use + "scn " + stencil,
          space + "cs " + use + "scn 0 0 60 60 re B", space + "cs " + use + "scn q Q q 0 0 60 60 re f* Q"}) {
        const Picture page = WithPattern(Tiling("/N7", 2, "1 0 0 rg\n" + kCorner), painting);
        EXPECT_EQ(page.At(12, 12), kBlue) << painting;
        EXPECT_EQ(page.At(17, 17), kWhite) << painting;
    }
}

TEST(UncoloredPattern, PassesOverImagesShadingsAndColors) {
    const std::string silent =
        "0 1 0 rg 0 1 0 RG [/DeviceRGB] setcolorspace\n"
        "q 10 0 0 10 0 0 cm <</ImageType 1 /Width 1 /Height 1 /BitsPerComponent 8 /ImageMatrix [1 0 0 1 0 0] "
        "/Decode [0 1 0 1 0 1] /DataSource <ff0000>>> image Q\n"
        "<</ShadingType 2 /ColorSpace DefaultRGB /Coords [0 0 10 0] /Function <</FunctionType 2 /Domain [0 "
        "1] "
        "/C0 [1 0 0] /C1 [1 0 0] /N 1>> >> sh\n"
        "<</TR {pop 0}>> gs\n";
    const Picture page =
        WithPattern(Tiling("/N7", 2, silent + kCorner), "[/Pattern DefaultRGB ] cs 0 0 1 " + kFillAll);
    EXPECT_EQ(page.At(12, 12), kBlue);
    EXPECT_EQ(page.At(17, 17), kWhite);
}

TEST(UncoloredPattern, PassesOverPatterns) {
    const std::string patterns =
        "/Pattern cs /N8 /MadePattern findRes scn /Pattern CS /N8 /MadePattern findRes SCN\n";
    const Picture page = PrologJob()
                             .Page(Made("/N7") + "[/Pattern DefaultRGB ] cs 0 0 1 " + kFillAll,
                                   Tiling("/N8", 1, kRedCorner, "2") + Tiling("/N7", 2, patterns + kCorner))
                             .Paint()
                             .at(0);
    EXPECT_EQ(page.At(12, 12), kBlue);
    EXPECT_EQ(page.At(17, 17), kWhite);
}

TEST(UncoloredPattern, PaintsItsStencils) {
    const Picture page = WithPattern(
        Tiling("/N7", 2,
               "q 5 0 0 5 0 0 cm <</ImageType 1 /Width 1 /Height 1 /BitsPerComponent 1 /ImageMatrix [1 0 0 1 "
               "0 0] /Decode [0 1] /DataSource <00>>> imagemask Q"),
        "[/Pattern DefaultRGB ] cs 0 0 1 " + kFillAll);
    EXPECT_EQ(page.At(12, 12), kBlue);
    EXPECT_EQ(page.At(17, 17), kWhite);
}

TEST(UncoloredPattern, TakesTheInitialColorOfASpaceThatHasHadNone) {
    const std::string lab = "[/CIEBasedABC <</WhitePoint [1 1 1]>>] cs /Pattern cs ";
    const Picture page = WithPattern(Tiling("/N7", 2, kCorner), "1 0 0 rg " + lab + kFillAll);
    EXPECT_EQ(page.At(12, 12), kBlack);
}

TEST(UncoloredPattern, TakesAnotherColorEachTime) {
    const Picture page =
        WithPattern(Tiling("/N7", 2, kCorner),
                    "[/Pattern DefaultRGB ] cs 0 0 1 /N7 /MadePattern findRes scn 0 0 10 10 re f "
                    "q 1 0 0 /N7 /MadePattern findRes scn 20 0 10 10 re f Q 40 0 10 10 re f "
                    "0 1 0 /N7 /MadePattern findRes scn <<>> gs 60 0 10 10 re f 1 0 0 rg 80 0 10 10 re f");
    EXPECT_EQ(page.At(2, 2), kBlue);
    EXPECT_EQ(page.At(22, 2), kRed);
    EXPECT_EQ(page.At(42, 2), kBlue);
    EXPECT_EQ(page.At(62, 2), kGreen);
    EXPECT_EQ(page.At(87, 7), kRed);
}

TEST(ShadingPattern, PaintsItsShading) {
    const std::string prototype =
        "/N7 <<\n/PatternType 2\n/Shading <</ShadingType 2\n/ColorSpace DefaultRGB \n/Coords [0 0 60 0 "
        "]\n/Function << "
        "/FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [0 0 1] /N 1 >>\n>>\n/Matrix [1 0 0 1 0 0]\n>> "
        "/PatternPrototype defineRes pop\n";
    const Picture page = WithPattern(prototype, "/Pattern cs " + kFillAll + "0 1 0 rg 70 70 5 5 re f");
    EXPECT_GT(page.At(5, 5).at(0), 200);
    EXPECT_GT(page.At(55, 5).at(2), 200);
    EXPECT_EQ(page.At(72, 72), kGreen);
}

TEST(Pattern, AppliesItsMatrixToTheOneInForce) {
    std::string prototype = Tiling("/N7", 1, "1 0 0 rg\n" + kCorner);
    prototype.replace(prototype.find("1 0 0 1 0 0"), 11, "1 0 0 1 5 0");
    const Picture page = WithPattern(prototype, "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(2, 2), kWhite);
    EXPECT_EQ(page.At(7, 2), kRed);
}

TEST(Pattern, ThatIsMissingPaintsNothingOrTheColorBefore) {
    const Picture page = WithPattern("", "1 0 0 rg /Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(2, 2), kWhite);
    EXPECT_EQ(page.At(72, 72), kBlue);
    const Picture never = WithPattern("", "/Pattern cs /N8 /MadePattern findRes scn 0 0 60 60 re f");
    EXPECT_EQ(never.At(2, 2), kWhite);
}

// Where patterns are placed.

std::string Form(const std::string& name, const std::string& matrix, const std::string& content) {
    return name + " <<\n/FormType 1\n/BBox [0 0 100 100 ]\n/Matrix [" + matrix +
           " ]\n/PaintProc {pop save {\n" + content + "\n} exec restore} bind >> /Form defineRes pop\n";
}

const std::string kFillForm = "/Pattern cs /N7 /MadePattern findRes scn\n0 0 20 20 re f\n";

// Corners of 5 in cells of 10: on the page at 0, in the form at 3.
TEST(PlacedPattern, BelongsToTheFormThatUsesIt) {
    const std::string setup = Tiling("/N7", 1, kRedCorner) + Form("/N8", "1 0 0 1 3 40", kFillForm);
    const std::string onPage = "/Pattern cs /N7 /MadePattern findRes scn 0 0 20 20 re f\n";
    for (const std::string& made : {Made("/N7"), std::string()}) {
        const Picture page =
            PrologJob()
                .Page(made + onPage +
                          "/N8 /Form findRes EF\n40 0 20 20 re f /N7 /MadePattern findRes scn "
                          "60 0 20 20 re f",
                      setup)
                .Paint()
                .at(0);
        EXPECT_EQ(page.At(1, 1), kRed);
        EXPECT_EQ(page.At(6, 1), kWhite);
        EXPECT_EQ(page.At(4, 41), kRed);
        EXPECT_EQ(page.At(7, 41), kRed);
        EXPECT_EQ(page.At(9, 41), kWhite);
        EXPECT_EQ(page.At(51, 1), kRed);
        EXPECT_EQ(page.At(56, 1), kWhite);
        EXPECT_EQ(page.At(61, 1), kRed);
    }
}

TEST(PlacedPattern, KnowsNothingOfWhatTheContentDoesToTheMatrix) {
    for (const std::string cm : {"1 0 0 1 7 7 cm ", "3 0 0 3 0 0 cm ", "q 1 0 0 1 2 2 cm Q "}) {
        const Picture page =
            PrologJob()
                .Page("/N8 /Form findRes EF\n",
                      Tiling("/N7", 1, kRedCorner) +
                          Form("/N8", "1 0 0 1 3 40",
                               cm + "/Pattern cs /N7 /MadePattern findRes scn 0 0 60 60 re f"))
                .Paint()
                .at(0);
        EXPECT_EQ(page.At(24, 61), kRed) << cm;
        EXPECT_EQ(page.At(27, 61), kRed) << cm;
        EXPECT_EQ(page.At(29, 61), kWhite) << cm;
    }
}

TEST(PlacedPattern, InheritedAsAColorStaysWhereItWas) {
    const std::string setup = Tiling("/N7", 1, kRedCorner) + Form("/N8", "1 0 0 1 3 40", "0 0 20 20 re f");
    const Picture page =
        PrologJob()
            .Page(Made("/N7") + "/Pattern cs /N7 /MadePattern findRes scn /N8 /Form findRes EF\n", setup)
            .Paint()
            .at(0);
    EXPECT_EQ(page.At(4, 41), kRed);
    EXPECT_EQ(page.At(7, 41), kWhite);
}

TEST(PlacedPattern, FollowsAFormWhereverItIsPainted) {
    const std::string setup = Tiling("/N7", 1, kRedCorner) + Form("/N8", "1 0 0 1 0 0", kFillForm);
    const Picture page = PrologJob()
                             .Page(Made("/N7") +
                                       "q 1 0 0 1 3 40 cm /N8 /Form findRes EF\nQ "
                                       "q 2 0 0 2 50 40 cm /N8 /Form findRes EF\nQ "
                                       "/N8 /Form findRes EF\n",
                                   setup)
                             .Paint()
                             .at(0);
    EXPECT_EQ(page.At(7, 41), kRed);
    EXPECT_EQ(page.At(9, 41), kWhite);
    EXPECT_EQ(page.At(58, 41), kRed);
    EXPECT_EQ(page.At(61, 41), kWhite);
    EXPECT_EQ(page.At(4, 1), kRed);
    EXPECT_EQ(page.At(6, 1), kWhite);
}

TEST(PlacedPattern, StandsInAFieldsAppearanceByTheFieldsMatrix) {
    const Picture page = PrologJob()
                             .Page(Made("/N7") +
                                       "q 1 0 0 1 9 9 cm\nQ\nq\n3 40 60 60 RC\n1 0 0 1 3 40 cm\n"
                                       "1 0 0 1 7 7 cm\n" +
                                       kFillForm + "Q\n" + kFillForm,
                                   Tiling("/N7", 1, kRedCorner))
                             .Paint()
                             .at(0);
    EXPECT_EQ(page.At(17, 51), kRed);
    EXPECT_EQ(page.At(19, 51), kWhite);
    EXPECT_EQ(page.At(1, 1), kRed);
    EXPECT_EQ(page.At(6, 1), kWhite);
}

TEST(PlacedPattern, StandsInAnotherCellByThatCell) {
    // Black 2 x 2 corners in steps of 4, in a cell of 20 that begins at 3.
    std::string outer = Tiling("/N7", 1, "/Pattern cs /N8 /MadePattern findRes scn 0 0 10 10 re f", "20");
    outer.replace(outer.find("1 0 0 1 0 0"), 11, "1 0 0 1 3 0");
    const std::string inner = Tiling("/N8", 1, "0 0 1 rg 0 0 2 2 re f", "4");
    for (const std::string& made : {Made("/N7") + Made("/N8"), Made("/N7")}) {
        const Picture page = PrologJob().Page(made + "/Pattern cs " + kFillAll, inner + outer).Paint().at(0);
        EXPECT_EQ(page.At(4, 1), kBlue);
        EXPECT_EQ(page.At(5, 1), kWhite);
        EXPECT_EQ(page.At(24, 5), kBlue);
        EXPECT_EQ(page.At(26, 5), kWhite);
        EXPECT_EQ(page.At(15, 1), kWhite);
    }
}

TEST(PlacedPattern, IsMadeOnceForManyUses) {
    const std::string fetch = "/N7 /MadePattern findRes ";
    const std::string same =
        fetch + "true 100 {/Pattern cs " + fetch + "dup scn 0 0 5 5 re f 2 index eq and} repeat\n";
    const PrologJob job = PrologJob().Page(
        Made("/N7") + same + "q 3 3 scale " + same + "== pop Q == pop /N8 /Form findRes EF\n",
        Tiling("/N7", 1, kRedCorner) + Form("/N8", "1 0 0 1 3 40", same + "== pop"));
    EXPECT_EQ(job.Run().text, "true\ntrue\ntrue\n");
}

TEST(PlacedPattern, ThatCannotBeMadeIsTriedOnce) {
    const std::string uses = "100 {/Pattern cs /N7 /MadePattern findRes scn 0 0 5 5 re f 1 0 0 rg} repeat\n";
    const PrologJob job = PrologJob().Page(
        Made("/N7") + uses + "vmstatus pop exch pop " + uses + "vmstatus pop exch pop exch sub 1000 lt =",
        Replaced(Tiling("/N7", 1, kRedCorner), "0 0 10 10", "0 0 0 10"));
    EXPECT_EQ(job.Run().text, "true\n");
}

TEST(PlacedPattern, MayBeMissingAllOver) {
    const Picture page = Painted(
        "1 0 0 rg 0 0 1 null scn 0 0 20 20 re f count 0 ne {0 1 0 rg 50 50 9 9 re f} if "
        "/Pattern cs null scn 0 1 0 RG null SCN 5 w 70 0 m 70 50 l S");
    EXPECT_EQ(page.At(10, 10), kRed);
    EXPECT_EQ(page.At(55, 55), kWhite);
    EXPECT_EQ(page.At(70, 20), kGreen);
}

// Cells of all sorts.

TEST(Cell, MayHaveNegativeSteps) {
    const Picture page = WithPattern(Tiling("/N7", 1, kRedCorner, "-10"), "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(2, 2), kRed);
    EXPECT_EQ(page.At(52, 32), kRed);
    EXPECT_EQ(page.At(7, 7), kWhite);
}

TEST(Cell, RepeatsByItsSizeWhereItsStepsAreZero) {
    const Picture page = WithPattern(Tiling("/N7", 1, kRedCorner, "0"), "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(52, 32), kRed);
    EXPECT_EQ(page.At(7, 7), kWhite);
}

TEST(Cell, MayHaveItsBoxTurnedRound) {
    const Picture page = WithPattern(Replaced(Tiling("/N7", 1, kRedCorner), "[0 0 10 10 ]", "[10 10 0 0 ]"),
                                     "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(52, 32), kRed);
    EXPECT_EQ(page.At(7, 7), kWhite);
}

TEST(Cell, MayHaveNoTypesThatThereAre) {
    const std::string cell = Replaced(Tiling("/N7", 0, kRedCorner), "/TilingType 1", "/TilingType 0");
    EXPECT_EQ(WithPattern(cell, "/Pattern cs " + kFillAll).At(52, 32), kRed);
    for (const std::string type : {"2", "3"}) {
        const std::string typed =
            Replaced(Tiling("/N7", 1, kRedCorner), "/TilingType 1", "/TilingType " + type);
        EXPECT_EQ(WithPattern(typed, "/Pattern cs " + kFillAll).At(52, 32), kRed);
    }
}

TEST(Cell, StaysWhereItIsWithAMatrixThatIsNone) {
    for (const std::string matrix : {"[1 0 0 1 0 null ]", "[2 0 0 2 0 ]", "null"}) {
        const std::string cell = Replaced(Tiling("/N7", 1, kRedCorner), "[1 0 0 1 0 0 ]", matrix);
        EXPECT_EQ(WithPattern(cell, "/Pattern cs " + kFillAll).At(52, 32), kRed) << matrix;
    }
}

TEST(Cell, OfNothingPaintsNothingAndEndsNothing) {
    const std::string cell = Tiling("/N7", 1, kRedCorner);
    for (const std::string& prototype :
         {Replaced(cell, "[0 0 10 10 ]", "[0 0 0 10 ]"), Replaced(cell, "[0 0 10 10 ]", "[0 0 null null ]"),
          Replaced(cell, "[1 0 0 1 0 0 ]", "[0 0 0 0 0 0 ]"),
          Replaced(cell, "[1 0 0 1 0 0 ]", "[1 1 1 1 0 0 ]"), Replaced(cell, "/XStep 10", "/XStep null"),
          std::string("/N7 <<\n/PatternType 2\n/Shading <</ShadingType 2\n>>\n/Matrix [1 0 0 1 0 0]\n>> "
                      "/PatternPrototype defineRes pop\n"),
          std::string("/N7 <<\n/PatternType 2\n/Shading null\n/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype "
                      "defineRes pop\n")}) {
        const Picture page = WithPattern(
            prototype, "/Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f count 0 ne {stop} if");
        EXPECT_EQ(page.At(30, 30), kWhite) << prototype;
        EXPECT_EQ(page.At(72, 72), kBlue) << prototype;
    }
}

TEST(Cell, MayOverlapItsNeighbours) {
    const Picture page =
        WithPattern(Tiling("/N7", 1, "1 0 0 rg\n0 0 9 2 re f", "5"), "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(3, 1), kRed);
    EXPECT_EQ(page.At(33, 1), kRed);
    EXPECT_EQ(page.At(33, 36), kRed);
    EXPECT_EQ(page.At(33, 33), kWhite);
}

TEST(Cell, MayBeTinyOrWrittenInPieces) {
    std::string tiny =
        Replaced(Tiling("/N7", 1, "1 0 0 rg {\n0 0 10 10 re f\n} exec\n"), "1 0 0 1 0 0", ".01 0 0 .01 0 0");
    const Picture page = WithPattern(tiny, "/Pattern cs " + kFillAll);
    EXPECT_EQ(page.At(30, 30), kRed);
    EXPECT_EQ(page.At(70, 70), kWhite);
}

}  // namespace
}  // namespace zorvan::test
