// Paths, painting and clipping.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

// Names that stand for path operators while a path is written out.
constexpr std::string_view kShowPath =
    " {exch cvi =only ( ) print cvi =only ( m\\n) print} {exch cvi =only ( ) print cvi =only ( l\\n) print}"
    " {6 -1 1 {-1 roll cvi =only ( ) print} for (c\\n) print} {(h\\n) print} pathforall\n";

std::string PathOf(std::string_view content) {
    return Printed("initmatrix " + std::string(content) + std::string(kShowPath));
}

TEST(Path, IsBuiltByTheOperatorsOfPdf) {
    EXPECT_EQ(PathOf("1 2 m 3 4 l 5 6 7 8 9 10 c h"), "1 2 m\n3 4 l\n5 6 7 8 9 10 c\nh\n");
}

TEST(Path, TakesTheCurrentPointAsFirstControlPointOfV) {
    EXPECT_EQ(PathOf("1 2 m 3 4 5 6 v"), "1 2 m\n1 2 3 4 5 6 c\n");
}

TEST(Path, TakesTheEndPointAsSecondControlPointOfY) {
    EXPECT_EQ(PathOf("1 2 m 3 4 5 6 y"), "1 2 m\n3 4 5 6 5 6 c\n");
}

TEST(Path, MakesAClosedRectangleAlsoOfNegativeSizes) {
    EXPECT_EQ(PathOf("10 20 30 40 re"), "10 20 m\n40 20 l\n40 60 l\n10 60 l\nh\n");
    EXPECT_EQ(PathOf("10 20 -3 -4 re"), "10 20 m\n7 20 l\n7 16 l\n10 16 l\nh\n");
}

TEST(Path, IgnoresSegmentsBeforeTheFirstPoint) {
    EXPECT_EQ(PathOf("3 4 l 1 2 3 4 5 6 c 1 2 3 4 v 1 2 3 4 y 7 8 m 9 9 l"), "7 8 m\n9 9 l\n");
}

TEST(Path, LeavesNoOperandBehindWhenASegmentIsIgnored) {
    EXPECT_EQ(Printed("3 4 l 1 2 3 4 5 6 c 1 2 3 4 v count ="), "0\n");
}

TEST(Path, EndsWithEveryPaintingOperator) {
    for (const std::string op :
         {"n", "f", "f*", "S", "s", "B", "B*", "b", "b*", "W n", "W f", "W* S", "W B", "W* b*"}) {
        EXPECT_EQ(Printed("10 10 20 20 re " + op + " {currentpoint} stopped = count ="), "true\n0\n") << op;
    }
}

// Two squares, one inside the other, in the same direction: the inner one is a hole for the even-odd rule
// only.
constexpr std::string_view kNested = "1 0 0 rg 0 0 1 RG 6 w 10 10 60 60 re 30 30 20 20 re ";

struct PaintCase {
    const char* op;
    Color hole;
    Color edge;
};

class Painting : public testing::TestWithParam<PaintCase> {};

TEST_P(Painting, FillsAndStrokesAsItsOperatorSays) {
    const Picture page = Painted(std::string(kNested) + GetParam().op);
    EXPECT_EQ(page.At(40, 40), GetParam().hole);
    EXPECT_EQ(page.At(8, 40), GetParam().edge);
}

INSTANTIATE_TEST_SUITE_P(Operators, Painting,
                         testing::Values(PaintCase{"f", kRed, kWhite}, PaintCase{"f*", kWhite, kWhite},
                                         PaintCase{"S", kWhite, kBlue}, PaintCase{"s", kWhite, kBlue},
                                         PaintCase{"B", kRed, kBlue}, PaintCase{"B*", kWhite, kBlue},
                                         PaintCase{"b", kRed, kBlue}, PaintCase{"b*", kWhite, kBlue},
                                         PaintCase{"n", kWhite, kWhite}));

TEST(Path, IsClosedByTheSmallLetters) {
    const std::string angle = "0 0 1 RG 6 w 10 10 m 80 10 l 80 80 l ";
    EXPECT_EQ(Painted(angle + "S").At(45, 45), kWhite);
    EXPECT_EQ(Painted(angle + "s").At(45, 45), kBlue);
    EXPECT_EQ(Painted("1 1 1 rg " + angle + "b").At(45, 45), kBlue);
    EXPECT_EQ(Painted("1 1 1 rg " + angle + "b*").At(45, 45), kBlue);
}

TEST(Clip, WaitsForTheNextN) {
    const Picture page = Painted("10 10 20 20 re W n 1 0 0 rg 0 0 100 100 re f");
    EXPECT_EQ(page.At(20, 20), kRed);
    EXPECT_EQ(page.At(40, 40), kWhite);
}

TEST(Clip, TakesTheRuleThatItWasAskedFor) {
    const std::string rest = " n 0 1 0 rg 0 0 100 100 re f";
    EXPECT_EQ(Painted(std::string(kNested) + "W" + rest).At(40, 40), kGreen);
    EXPECT_EQ(Painted(std::string(kNested) + "W*" + rest).At(40, 40), kWhite);
    EXPECT_EQ(Painted(std::string(kNested) + "W*" + rest).At(15, 15), kGreen);
}

TEST(Clip, FollowsThePaintOfTheSamePath) {
    for (const std::string op : {"f", "f*", "S", "B", "B*", "b", "b*", "s"}) {
        const Picture page =
            Painted("0 0 1 rg 0 0 1 RG 10 10 20 20 re W " + op + " 1 0 0 rg 0 0 100 100 re f");
        EXPECT_EQ(page.At(20, 20), kRed) << op;
        EXPECT_EQ(page.At(40, 40), kWhite) << op;
    }
}

TEST(Clip, PaintsBeforeItClips) {
    const Picture page = Painted("0 0 1 RG 10 w 30 30 40 40 re W S");
    EXPECT_EQ(page.At(27, 50), kBlue);
    EXPECT_EQ(page.At(33, 50), kBlue);
}

TEST(Clip, IsAppliedOnce) {
    const Picture page = Painted("q 10 10 20 20 re W n Q 1 0 0 rg 0 0 100 100 re f");
    EXPECT_EQ(page.At(60, 60), kRed);
}

TEST(Clip, StaysWhenThereIsNoPathToClipWith) {
    EXPECT_EQ(Painted("W n W* n W f 1 0 0 rg 0 0 100 100 re f").At(60, 60), kRed);
}

TEST(Clip, IsForgottenByQWhenItWasPendingSinceTheQ) {
    EXPECT_EQ(Painted("q 10 10 20 20 re W Q 1 0 0 rg 0 0 100 100 re f").At(60, 60), kRed);
}

TEST(Clip, TakesARectangleAtOnce) {
    const Picture page = Painted("30 30 -20 -20 RC 1 0 0 rg 0 0 100 100 re f");
    EXPECT_EQ(page.At(20, 20), kRed);
    EXPECT_EQ(page.At(40, 40), kWhite);
    EXPECT_EQ(Printed("5 5 m 1 1 5 5 RC {currentpoint} stopped ="), "true\n");
}

}  // namespace
}  // namespace zorvan::test
