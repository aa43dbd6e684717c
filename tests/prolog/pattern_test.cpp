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

std::string Made(const std::string& name) {
    return name + " " + name + " /PatternPrototype findRes makePat\n";
}

/// A page with one pattern /N7, made, and this content.
Picture WithPattern(const std::string& prototype, const std::string& content) {
    return PrologJob().Page(Made("/N7") + content, prototype).Paint().at(0);
}

const std::string kFillAll = "/N7 /MadePattern findRes scn\n0 0 60 60 re f\n";
const std::string kCorner = "0 0 5 5 re\nf";

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

TEST(Pattern, ThatTheDeviceRefusesPaintsNothing) {
    const Picture page =
        WithPattern(Tiling("/N7", 1, kCorner, "0"), "/Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(2, 2), kWhite);
    EXPECT_EQ(page.At(72, 72), kBlue);
}

TEST(Pattern, ThatIsMissingPaintsNothingOrTheColorBefore) {
    const Picture page = WithPattern("", "1 0 0 rg /Pattern cs " + kFillAll + "0 0 1 rg 70 70 5 5 re f");
    EXPECT_EQ(page.At(2, 2), kWhite);
    EXPECT_EQ(page.At(72, 72), kBlue);
    const Picture never = WithPattern("", "/Pattern cs /N8 /MadePattern findRes scn 0 0 60 60 re f");
    EXPECT_EQ(never.At(2, 2), kWhite);
}

}  // namespace
}  // namespace zorvan::test
