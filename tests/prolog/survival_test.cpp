// What must neither stop the job nor shift the next page.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using testing::HasSubstr;

constexpr std::string_view kStacks = "count = countdictstack =\n";
constexpr std::string_view kSquare = "1 0 0 rg\n10 10 20 20 re\nf\n";

/// Runs a page between two others and expects those to be alike, in stacks and in paint.
void ExpectNextPageUntouched(const std::string& hostile) {
    const std::string plain = std::string(kStacks) + std::string(kSquare);
    PrologJob job;
    job.Page(plain).Page(hostile).Page(plain);
    const Outcome outcome = job.Run();
    EXPECT_EQ(outcome.status, 0) << hostile << outcome.text;
    EXPECT_EQ(outcome.text, "0\n8\n0\n8\n") << hostile;
    const std::vector<Picture> pages = job.Paint();
    EXPECT_EQ(pages.at(2), pages.at(0)) << hostile;
    EXPECT_EQ(pages.at(2).At(15, 15), kRed) << hostile;
    EXPECT_EQ(pages.at(2).At(5, 5), kWhite) << hostile;
}

TEST(Survival, EndsAPageWhoseSavesAreStillOpen) {
    ExpectNextPageUntouched("q 2 0 0 2 0 0 cm q 1 0 0 1 5 5 cm q\n");
}

TEST(Survival, PassesOverAQTooMany) {
    ExpectNextPageUntouched("Q Q q Q Q\n");
    EXPECT_EQ(Printed("q Q Q Q (on) = count ="), "on\n0\n");
}

TEST(Survival, DropsOperandsThatAPageHasLeft) {
    ExpectNextPageUntouched("1 (two) /three q 4 [5] null q true\n");
}

TEST(Survival, ClosesDictionariesThatAPageHasLeftOpen) {
    ExpectNextPageUntouched("5 dict begin /f {} def q 5 dict begin /re {} def\n");
}

TEST(Survival, RestoresThroughOperandsAndDictionariesLeftSinceTheQ) {
    EXPECT_EQ(
        Printed("count q 7 w 1 2 (x) 5 dict begin 3 Q count 1 sub = currentlinewidth = countdictstack ="),
        "0\n1.0\n8\n");
}

TEST(Survival, StartsNoRestoreWhenTheSaveObjectIsGone) {
    EXPECT_EQ(Printed("q q pop pop Q Q count ="), "0\n");
    ExpectNextPageUntouched("q clear Q q Q\n");
}

TEST(Survival, KeepsAPageAliveInWhichPathOperatorsLackTheirCurrentPoint) {
    ExpectNextPageUntouched("5 5 l 1 2 3 4 5 6 c 1 2 3 4 v 1 2 3 4 y h S f B b* W n W* f s n\n");
}

TEST(Survival, PassesOverOperandsOfTheWrongType) {
    ExpectNextPageUntouched(
        "(a) 1 m 1 (b) l 1 2 3 4 (c) 6 c 1 (d) 3 4 re (e) w (f) J (g) j (h) M (i) i (j) g /k G (l) 2 3 rg\n"
        "1 2 3 null k [1] 2 3 K (m) (n) d (o) 1 RC (p) cs 5 CS (q) sc true SC (r) scn (s) gs 5 gs 6 sh 7 EF\n"
        "(t) ri 8 PS 9 setoverprint 10 setcolorspace (u) 0 0 1 0 0 cm\n");
}

TEST(Survival, PassesOverEmptyReferences) {
    const std::string empty =
        " gs\n  cs\n  CS\n scn\n SCN\n sh\n EF\n setcolorspace\n setoverprint\n ri\n PS\n";
    ExpectNextPageUntouched(empty + "q\n" + empty + "Q\n" + empty);
    EXPECT_EQ(Printed("q " + empty + " count = Q count ="), "1\n0\n");
}

TEST(Survival, GoesOnAfterCoordinatesThatNoDeviceHas) {
    ExpectNextPageUntouched(
        "1000000000000000019884624838656 0 m 0 0 l 0 1000000000000000019884624838656 l f\n"
        "0 0 1000000000000000019884624838656 5 re S 0 0 m 1 2 3 4 1000000000000000019884624838656 0 c B\n"
        "0 0 1000000000000000019884624838656 1000000000000000019884624838656 RC\n");
}

TEST(Survival, GoesOnAfterAPostScriptStringThatFails) {
    ExpectNextPageUntouched(
        "(1 0 div) PS (end end end end) PS 5 5 10 10 re f (stop) PS (exit) PS ({) PS (9 dict begin) PS\n");
    EXPECT_EQ(
        Printed(
            "(1 0 div) PS (end end end end end) PS (9 dict begin) PS countdictstack = PDFVars /Clip get ="),
        "8\n0\n");
}

TEST(Survival, LeavesMatrixAndClipToWhoeverPlacesThePage) {
    const std::vector<Picture> pages =
        PrologJob()
            .Before("/showpage {} def\n0 0 50 100 rectclip 50 10 translate 0.5 0.5 scale\n")
            .Page("1 0 0 rg\n-20 0 60 40 re\nf\n")
            .Page("gsave 1 0 0 rg\n0 0 100 100 re\nf\ngrestore systemdict /showpage get exec\n")
            .Paint();
    EXPECT_EQ(pages.at(0).At(49, 15), kWhite);
    const std::vector<Picture> placed =
        PrologJob().Before("30 10 translate 0.5 0.5 scale\n").Page(kSquare).Paint();
    EXPECT_EQ(placed.at(0).At(36, 16), kRed);
    EXPECT_EQ(placed.at(0).At(44, 24), kRed);
    EXPECT_EQ(placed.at(0).At(34, 14), kWhite);
    EXPECT_EQ(placed.at(0).At(46, 26), kWhite);
}

TEST(Survival, CallsNoOperatorThatWouldUndoThePlacing) {
    const Outcome outcome = PrologJob()
                                .Before(
                                    "/initgraphics {(reset) =} def /initmatrix {(reset) =} def\n"
                                    "/initclip {(reset) =} def /erasepage {(reset) =} def\n")
                                .Page(kSquare)
                                .Run();
    EXPECT_EQ(outcome.text, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Survival, LetsAContentDefineNamesAlthoughTheProcsetIsReadOnly) {
    EXPECT_EQ(Printed("/mine 5 def mine = PDF /mine known = PDF wcheck ="), "5\nfalse\nfalse\n");
    EXPECT_EQ(PrologJob().Page("/mine 5 def").Page("/mine where ==").Run().text, "false\n");
}

TEST(Survival, GivesAFormItsOwnSavesToBalance) {
    const std::string setup =
        "/N5 <<\n/FormType 1\n/BBox [0 0 100 100 ]\n/Matrix [1 0 0 1 0 0]\n/PaintProc {pop save {\n"
        "Q Q\nq\n0.5 0 0 0.5 0 0 cm\n1 2 (x) 5 dict begin\nq\n} exec restore} bind >> /Form defineRes pop\n";
    EXPECT_EQ(
        PrologJob()
            .Page(
                "q 3 w q 5 w /N5 /Form findRes EF currentlinewidth = count = Q currentlinewidth = Q count =",
                setup)
            .Run()
            .text,
        "5.0\n2\n3.0\n0\n");
}

TEST(Survival, EndsAFormAtItsErrorAndGoesOnWithThePage) {
    const std::string setup =
        "/N5 <<\n/FormType 1\n/BBox [0 0 100 100 ]\n/Matrix [1 0 0 1 0 0]\n/PaintProc {pop save {\n"
        "50 50 20 20 re\nf\nq\n5 dict begin\n9 w 2 0 0 2 0 0 cm\nnosuchoperator\n} exec restore} bind >> "
        "/Form defineRes pop\n";
    const std::vector<Picture> pages =
        PrologJob()
            .Page("/N5 /Form findRes EF\n" + std::string(kSquare) + "/N5 /Form findRes EF\n", setup)
            .Paint();
    EXPECT_EQ(pages.at(0).At(60, 60), kRed);
    EXPECT_EQ(pages.at(0).At(15, 15), kRed);
    EXPECT_EQ(pages.at(0).At(35, 35), kWhite);
}

TEST(Survival, RestoresTheSaveOfAProgramThatKeepsItInAVariable) {
    EXPECT_EQ(Printed("/mine save def 4 w 1 2 mine restore currentlinewidth = count ="), "1.0\n2\n");
}

TEST(Survival, BracketsPicturesBetweenSaveAndRestoreLinesInAContent) {
    EXPECT_EQ(Printed("q 2 w\nsave\n3 w q 4 w\nrestore\ncurrentlinewidth = Q currentlinewidth = count ="),
              "2.0\n1.0\n0\n");
}

TEST(Survival, LooksNamesUpWhenALineRuns) {
    EXPECT_EQ(Printed("/setcolorspace {pop (in front) =} def /p {[/DeviceRGB] setcolorspace} bind def p"),
              "in front\n");
}

TEST(Survival, FindsTheSetupOfTwoDocumentsInOneJob) {
    const std::string document = PrologJob().Page(std::string(kStacks)).Text();
    const Outcome outcome = Interpret("-sDEVICE=nullpage", document + document);
    EXPECT_EQ(outcome.text, "0\n8\n0\n8\n");
    EXPECT_EQ(outcome.status, 0);
}

}  // namespace
}  // namespace zorvan::test
