// The graphics state: lines, dashes, matrices, saving.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

TEST(GraphicsState, BeginsAsPdfSays) {
    EXPECT_EQ(
        Printed("currentlinewidth = currentlinecap = currentlinejoin = currentmiterlimit = currentdash == == "
                "currentoverprint = {currentpoint} stopped ="),
        "1.0\n0\n0\n10.0\n0.0\n[]\nfalse\ntrue\n");
    EXPECT_EQ(PrologJob()
                  .Page("7 w 1 J 2 j 3 M [1] 0 d 1 0 0 rg 0 1 0 RG")
                  .Page("currentlinewidth = currentlinecap = currentdash == == sfc currentrgbcolor == == ==")
                  .Run()
                  .text,
              "1.0\n0\n0.0\n[]\n0.0\n0.0\n0.0\n");
}

TEST(GraphicsState, TakesTheOperandsOfPdf) {
    EXPECT_EQ(
        Printed("2.5 w 1 J 2 j 4 M 3 i [3 2 ] 1 d currentlinewidth = currentlinecap = currentlinejoin = "
                "currentmiterlimit = currentflat = currentdash == =="),
        "2.5\n1\n2\n4.0\n3.0\n1.0\n[3 2]\n");
}

TEST(GraphicsState, TakesWholeNumbersWrittenAsReals) {
    EXPECT_EQ(Printed("1.5 J 2.7 j currentlinecap = currentlinejoin ="), "1\n2\n");
}

TEST(GraphicsState, KeepsWhatItHasWhenAnOperandIsOutOfRange) {
    EXPECT_EQ(Printed("1 J 1 j 3 J 9 j -1 J -4 j currentlinecap = currentlinejoin = count ="), "1\n1\n0\n");
}

TEST(GraphicsState, TakesTheNearestValueWhereThereIsOne) {
    EXPECT_EQ(
        Printed(
            "-3 w currentlinewidth = 0.2 M currentmiterlimit = -4 M currentmiterlimit = 900 i -9 i count ="),
        "3.0\n1.0\n1.0\n0\n");
}

TEST(GraphicsState, RestoresTheDevicesFlatnessForZero) {
    EXPECT_EQ(Printed("currentflat 7 i currentflat exch 0 i currentflat eq = ="), "true\n7.0\n");
}

TEST(GraphicsState, DrawsSolidWhereADashCannotBe) {
    for (const std::string dash : {"[0 0 ] 0", "[-1 2 ] 0", "[(a) ] 0", "[1 null ] 0", "5 0"}) {
        EXPECT_EQ(Printed("[9 ] 0 d " + dash + " d currentdash == == count ="), "0.0\n[]\n0\n") << dash;
    }
}

TEST(GraphicsState, MovesANegativeDashPhaseIntoTheFirstPeriod) {
    EXPECT_EQ(
        Printed("[1 2 ] -1 d currentdash == pop [1 2 3 ] -13 d currentdash == pop [] -1 d currentdash == =="),
        "5.0\n11.0\n0.0\n[]\n");
}

TEST(Matrix, IsConcatenated) {
    const Picture page = Painted("1 0 0 rg q 2 0 0 3 10 20 cm 0 0 10 10 re f Q 60 60 5 5 re f");
    EXPECT_EQ(page.At(28, 48), kRed);
    EXPECT_EQ(page.At(32, 48), kWhite);
    EXPECT_EQ(page.At(62, 62), kRed);
}

// Every operator that needs the inverse of the matrix, and all that the content paints afterwards, must live
// with it.
TEST(Matrix, MayBeFlat) {
    for (const std::string flat :
         {"0 0 0 0 5 5", "1 0 0 0 5 5", "0 0 1 0 5 5", "0 1 0 0 5 5", "2 1 4 2 5 5", "0 0 0 1 5 5"}) {
        EXPECT_EQ(Printed("q " + flat +
                          " cm 5 5 m 6 6 l 7 7 8 8 v 1 1 1 1 re currentpoint pop pop [3 1] 0 d S "
                          "1 1 5 5 RC 5 5 5 5 re W f Q count = {1 1 idtransform pop pop} stopped ="),
                  "0\nfalse\n")
            << flat;
    }
}

TEST(Matrix, PaintsNoMoreThanALineWhenItIsFlat) {
    const Picture page = Painted("1 0 0 rg q 80 0 0 0 10 50.5 cm 0 0 1 1 re f Q");
    EXPECT_EQ(page.At(50, 55), kWhite);
    EXPECT_EQ(page.At(50, 45), kWhite);
    EXPECT_EQ(page.At(50, 50), kRed);
}

TEST(Matrix, MayGoBeyondWhatNumbersHold) {
    EXPECT_EQ(Printed("q 1e30 0 0 1e30 0 0 cm 1e30 0 0 1e30 0 0 cm 1 1 m 2 2 l S Q q 1e-30 0 0 1e-30 0 0 cm "
                      "1e-30 0 0 1e-30 0 0 cm 1 1 m 2 2 l S Q count ="),
              "0\n");
}

TEST(Matrix, PaintsNothingToSpeakOfWhenItIsTiny) {
    EXPECT_EQ(Painted("1 0 0 rg 1e-30 0 0 1e-30 50 50 cm 0 0 100 100 re f").At(75, 75), kWhite);
}

TEST(Saving, TakesStateColorAndClipBack) {
    const Picture page =
        Painted("1 0 0 rg q 0 0 1 rg 10 10 20 20 re W n 0 0 100 100 re f Q 60 60 20 20 re f");
    EXPECT_EQ(page.At(20, 20), kBlue);
    EXPECT_EQ(page.At(70, 70), kRed);
    EXPECT_EQ(page.At(40, 40), kWhite);
}

TEST(Saving, TakesColorsBackThatWereNamedButNotYetSet) {
    EXPECT_EQ(Painted("1 0 0 rg q 0 0 1 rg Q 10 10 20 20 re f").At(20, 20), kRed);
    EXPECT_EQ(Painted("q 0 0 1 rg 0 0 5 5 re f Q 10 10 20 20 re f").At(20, 20), kBlack);
    EXPECT_EQ(Painted("1 0 0 rg 0 0 5 5 re f q 0 1 0 rg 0 0 5 5 re f 0 0 1 rg Q 10 10 20 20 re f").At(20, 20),
              kRed);
}

TEST(Saving, NestsDeeply) {
    std::string content;
    for (int depth = 1; depth <= 200; ++depth) {
        content += std::to_string(depth) + " w q\n";
    }
    for (int depth = 1; depth <= 200; ++depth) {
        content += "Q\n";
    }
    EXPECT_EQ(Printed(content + "currentlinewidth = count ="), "1.0\n0\n");
}

TEST(Marked, ContentLeavesItsOperandsNowhere) {
    EXPECT_EQ(Printed("/Span BMC EMC /Span << >> BDC EMC /P MP /P null DP BX EX count ="), "0\n");
}

TEST(PostScriptString, IsRunAndMayChangeTheColor) {
    EXPECT_EQ(Painted("1 0 0 rg 0 0 5 5 re f (0 0 1 setrgbcolor 60 60 5 5 rectfill) PS 10 10 20 20 re f")
                  .At(20, 20),
              kRed);
    EXPECT_EQ(Printed("((ran) =) PS"), "ran\n");
}

TEST(Intent, TakesEveryNameAndKeepsTheStack) {
    EXPECT_EQ(Printed("/Perceptual ri /Saturation ri /RelativeColorimetric ri /AbsoluteColorimetric ri "
                      "/Other ri count ="),
              "0\n");
}

TEST(Intent, AsksForColorimetricRenderingWhenTheNameIsUnknown) {
    const std::string watched = "/findcolorrendering {(asked for ) print = /Mine false} def\n";
    EXPECT_EQ(PrologJob().Before(watched).Page("/Saturation ri /Other ri").Run().text,
              "asked for Saturation\nasked for RelativeColorimetric\n");
}

}  // namespace
}  // namespace zorvan::test
