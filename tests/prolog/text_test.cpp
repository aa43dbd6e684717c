// The text state, where text lands and how it is painted.
#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"
#include "prolog/square_font.h"

namespace zorvan::test {
namespace {

/// A rectangle of pixels, its right and top side not included.
struct Box {
    int left = 100;
    int bottom = 100;
    int right = 0;
    int top = 0;
};

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top;
}

/// As good as equal: an interpreter may lay an edge one pixel further.
bool operator==(const Box& one, const Box& other) {
    const auto near = [](int a, int b) { return std::abs(a - b) <= 1; };
    return near(one.left, other.left) && near(one.bottom, other.bottom) && near(one.right, other.right) &&
           near(one.top, other.top);
}

const Box kNothing;
const Box kAll{0, 0, 100, 100};

/// What of a page between two columns is not white.
Box Ink(const Picture& page, int from = 0, int to = 100) {
    Box box;
    for (int y = 0; y < 100; ++y) {
        for (int x = from; x < to; ++x) {
            if (page.At(x, y) != kWhite) {
                box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x + 1),
                       std::max(box.top, y + 1)};
            }
        }
    }
    return box;
}

/// A page with the squares at a size: each is six tenths of it high, each advances by it.
Picture Shown(int size, const std::string& content) {
    return PrologJob()
        .Page("BT /Squares " + std::to_string(size) + " Tf 10 10 Td " + content + "\nET\n", kSquares)
        .Paint()
        .at(0);
}

Box InkOf(int size, const std::string& content) {
    return Ink(Shown(size, content));
}

constexpr std::string_view kRedInBlue = "1 0 0 rg 0 0 1 RG 6 w ";

Picture InMode(int mode) {
    return Shown(50, std::string(kRedInBlue) + std::to_string(mode) + " Tr (A) Tj");
}

TEST(TextRendering, FillsInModeZero) {
    const Picture page = InMode(0);
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(Ink(page), (Box{10, 10, 40, 40}));
}

TEST(TextRendering, StrokesInModeOne) {
    const Picture page = InMode(1);
    EXPECT_EQ(page.At(25, 25), kWhite);
    EXPECT_EQ(page.At(10, 25), kBlue);
    EXPECT_EQ(Ink(page), (Box{7, 7, 43, 43}));
}

TEST(TextRendering, FillsAndStrokesInModeTwo) {
    const Picture page = InMode(2);
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(page.At(11, 25), kBlue);
    EXPECT_EQ(Ink(page), (Box{7, 7, 43, 43}));
}

TEST(TextRendering, PaintsNothingInModeThree) {
    EXPECT_EQ(Ink(InMode(3)), kNothing);
    EXPECT_EQ(InkOf(50, "3 Tr (A) Tj 0 Tr (A) Tj"), (Box{60, 10, 90, 40}));
}

TEST(TextRendering, TakesModesThatThereAreNotForFilling) {
    for (const int mode : {-1, 8, 99}) {
        EXPECT_EQ(InMode(mode).At(25, 25), kRed) << mode;
    }
}

TEST(TextRendering, StrokesWithTheLineWidthOfThePageNotOfTheText) {
    EXPECT_EQ(InkOf(50, "4 w 1 Tr 2 0 0 1 10 10 Tm (A) Tj"), (Box{8, 8, 72, 42}));
    EXPECT_EQ(InkOf(50, "4 w 1 Tr 50 Tz (A) Tj"), (Box{8, 8, 27, 42}));
}

TEST(TextRendering, DashesOutlinesByThePagesMeasure) {
    const Picture page =
        Shown(50, "4 w [15 15] 0 d 1 Tr 2 0 0 2 10 10 Tm (A) Tj");  // from 10 10, counter-clockwise
    EXPECT_EQ(page.At(17, 10), kBlack);
    EXPECT_EQ(page.At(32, 10), kWhite);
    EXPECT_EQ(page.At(47, 10), kBlack);
}

/// A page that fills its left quarter in green once the text has clipped it, and a corner after the Q.
Picture Clipped(int mode) {
    return PrologJob()
        .Page("q\nBT /Squares 50 Tf 10 10 Td " + std::string(kRedInBlue) + std::to_string(mode) +
                  " Tr (A) Tj ET 0 1 0 rg 0 0 25 100 re f Q 0 1 0 rg 90 90 10 10 re f",
              kSquares)
        .Paint()
        .at(0);
}

TEST(TextClipping, PaintsAsTheModesWithoutItDo) {
    const std::vector<Color> inside{kRed, kWhite, kRed, kWhite};
    const std::vector<Color> outside{kWhite, kBlue, kBlue, kWhite};
    for (int mode = 4; mode < 8; ++mode) {
        const Picture page = Clipped(mode);
        const auto at = static_cast<std::size_t>(mode - 4);
        EXPECT_EQ(page.At(33, 25), inside.at(at)) << mode;
        EXPECT_EQ(page.At(8, 25), outside.at(at)) << mode;
        EXPECT_EQ(page.At(20, 25), kGreen) << mode;
        EXPECT_EQ(page.At(20, 60), kWhite) << mode;
    }
}

TEST(TextClipping, EndsWithItsQ) {
    for (int mode = 4; mode < 8; ++mode) {
        EXPECT_EQ(Clipped(mode).At(95, 95), kGreen) << mode;
    }
}

TEST(TextClipping, BeginsAtTheEndOfTheText) {
    EXPECT_EQ(InkOf(50, "7 Tr (A) Tj 0 Tr 0 45 Td (A) Tj ET 0 0 100 100 re f BT"), (Box{10, 10, 40, 85}));
    const Picture page = Shown(50, "7 Tr (A) Tj 0 Tr 45 0 Td (A) Tj ET 1 0 0 rg 0 0 100 100 re f BT");
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(page.At(70, 25), kBlack);
}

TEST(TextClipping, ClipsWithAllThatATextObjectHasShown) {
    const Picture page = Shown(50, "7 Tr (A) Tj 4 Tr 0 45 Td (A) Tj ET 1 0 0 rg 0 0 100 100 re f BT");
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(page.At(25, 70), kRed);
    EXPECT_EQ(page.At(25, 47), kWhite);
    EXPECT_EQ(page.At(60, 25), kWhite);
}

TEST(TextClipping, LetsShowWhatTwoGlyphsCoverToo) {
    EXPECT_EQ(Shown(50, "7 Tr (A) Tj 10 0 Td (A) Tj ET 0 0 100 100 re f BT").At(30, 25), kBlack);
}

TEST(TextClipping, ClipsTheTextAfterItToo) {
    EXPECT_EQ(InkOf(50, "7 Tr (A) Tj ET BT 0 Tr 0 25 Td (A) Tj"), (Box{10, 25, 30, 40}));
}

TEST(TextClipping, NarrowsTheClipThatThereIs) {
    EXPECT_EQ(Ink(PrologJob()
                      .Page("0 0 20 100 re W n BT /Squares 50 Tf 10 10 Td 7 Tr (A) Tj ET 0 0 100 100 re f",
                            kSquares)
                      .Paint()
                      .at(0)),
              (Box{10, 10, 20, 40}));
}

TEST(TextClipping, LeavesThePageAloneWhenNothingWasShown) {
    EXPECT_EQ(InkOf(50, "7 Tr ET 0 0 100 100 re f BT"), kAll);
    EXPECT_EQ(InkOf(50, "7 Tr () Tj [] TJ ET 0 0 100 100 re f BT"), kAll);
}

// ISO 32000-1, 9.3.6: glyphs without outlines, as those of blanks, do not clip.
TEST(TextClipping, ClipsAllAwayWhenOnlyBlanksWereShown) {
    EXPECT_EQ(InkOf(50, "7 Tr ( ) Tj ET 0 0 100 100 re f BT"), kNothing);
}

TEST(TextPosition, IsTheSameInEveryMode) {
    for (int mode = 0; mode < 8; ++mode) {
        const Picture page = Shown(20, "5 Tc 3 Tw 1 w " + std::to_string(mode) + " Tr (A A) Tj 0 Tr (A) Tj");
        EXPECT_EQ(Ink(page, 70), (Box{78, 10, 90, 22})) << mode;
        if (mode != 3 && mode != 7) {
            EXPECT_EQ(Ink(page, 30, 70), (Box{53, 10, 65, 22})) << mode;
        }
    }
}

TEST(HorizontalScale, StretchesGlyphsAndTheirAdvance) {
    EXPECT_EQ(InkOf(50, "50 Tz (A) Tj"), (Box{10, 10, 25, 40}));
    EXPECT_EQ(InkOf(50, "150 Tz (A) Tj"), (Box{10, 10, 55, 40}));
    EXPECT_EQ(Ink(Shown(50, "50 Tz (AA) Tj"), 28), (Box{35, 10, 50, 40}));
    EXPECT_EQ(Ink(Shown(20, "150 Tz (AA) Tj"), 32), (Box{40, 10, 58, 22}));
}

TEST(HorizontalScale, StretchesSpacingAndDisplacement) {
    EXPECT_EQ(Ink(Shown(20, "50 Tz 20 Tc (AA) Tj"), 20), (Box{30, 10, 36, 22}));   // 10 + (20 + 20) / 2
    EXPECT_EQ(Ink(Shown(20, "50 Tz 30 Tw (A A) Tj"), 20), (Box{40, 10, 46, 22}));  // 10 + (20 + 10 + 30) / 2
    EXPECT_EQ(Ink(Shown(20, "50 Tz [(A) -1000 (A)] TJ"), 20), (Box{30, 10, 36, 22}));  // 10 + (20 + 20) / 2
}

TEST(HorizontalScale, LeavesTdAlone) {
    EXPECT_EQ(InkOf(20, "50 Tz 40 0 Td (A) Tj"), (Box{50, 10, 56, 22}));
}

TEST(HorizontalScale, OfNothingShowsNothing) {
    EXPECT_EQ(InkOf(50, "0 Tz (A) Tj [(A) -500 (A)] TJ"), kNothing);
    EXPECT_EQ(InkOf(50, "0 Tz (AA) Tj 100 Tz (A) Tj"), (Box{10, 10, 40, 40}));
}

TEST(HorizontalScale, BelowNothingMirrors) {
    EXPECT_EQ(InkOf(20, "50 0 Td -100 Tz (A) Tj"), (Box{48, 10, 60, 22}));
    EXPECT_EQ(Ink(Shown(20, "50 0 Td -100 Tz (AA) Tj"), 0, 44), (Box{28, 10, 40, 22}));
}

TEST(Rise, RaisesGlyphsAndNothingElse) {
    EXPECT_EQ(InkOf(50, "20 Ts (A) Tj"), (Box{10, 30, 40, 60}));
    EXPECT_EQ(InkOf(50, "-5 Ts (A) Tj"), (Box{10, 5, 40, 35}));
    EXPECT_EQ(Ink(Shown(20, "20 Ts (A) Tj 0 Ts (A) Tj"), 28), (Box{30, 10, 42, 22}));
    EXPECT_EQ(InkOf(20, "20 Ts (A) Tj 30 0 Td 3 Ts (A) Tj 0 0 Td"), (Box{10, 13, 52, 42}));
}

TEST(Rise, GoesWithTheTextMatrix) {
    EXPECT_EQ(InkOf(20, "10 Ts 2 0 0 2 10 10 Tm (A) Tj"), (Box{10, 30, 34, 54}));
    EXPECT_EQ(InkOf(20, "10 Ts 0 1 -1 0 60 10 Tm (A) Tj"), (Box{38, 10, 50, 22}));
}

TEST(Rise, HoldsForOutlinesToo) {
    EXPECT_EQ(InkOf(50, "20 Ts 2 w 1 Tr (A) Tj"), (Box{9, 29, 41, 61}));
    EXPECT_EQ(InkOf(50, "20 Ts 7 Tr (A) Tj ET 0 0 100 100 re f BT"), (Box{10, 30, 40, 60}));
}

TEST(CharacterSpacing, FollowsEveryGlyph) {
    EXPECT_EQ(Ink(Shown(20, "5 Tc (AA) Tj"), 25), (Box{35, 10, 47, 22}));
    EXPECT_EQ(Ink(Shown(20, "5 Tc (A) Tj (A) Tj"), 25), (Box{35, 10, 47, 22}));
    EXPECT_EQ(Ink(Shown(20, "-5 Tc (AA) Tj"), 23), (Box{25, 10, 37, 22}));
    EXPECT_EQ(Ink(Shown(20, "5 Tc 2 0 0 1 10 10 Tm (AA) Tj"), 40), (Box{60, 10, 84, 22}));  // 10 + 2 * 25
}

TEST(WordSpacing, FollowsCode32Alone) {
    EXPECT_EQ(Ink(Shown(20, "5 Tw (A A) Tj"), 25), (Box{45, 10, 57, 22}));
    EXPECT_EQ(Ink(Shown(20, "5 Tw (A\\040A) Tj"), 25), (Box{45, 10, 57, 22}));
    EXPECT_EQ(Ink(Shown(20, "5 Tw (AA) Tj"), 25), (Box{30, 10, 42, 22}));
    EXPECT_EQ(Ink(Shown(20, "5 Tw <41A041> Tj"), 25), (Box{50, 10, 62, 22}));  // A0 has no glyph, 1,000 units
}

TEST(WordSpacing, IsNotForTheLastByteOfALongerCode) {
    const std::string composite =
        kSquares +
        "/Pairs 8 dict dup begin /FontType 0 def /FontName /Pairs def /FMapType 2 def /WMode 0 def\n"
        "/FontMatrix matrix def /Encoding [0] def /FDepVector [/Squares findfont] def end definefont pop\n";
    const std::vector<Picture> pages =
        PrologJob()
            .Page("BT /Pairs 20 Tf 10 10 Td 30 Tw <004100200041> Tj ET", composite)
            .Page("BT /Pairs 20 Tf 10 10 Td 30 Tw 1 w 1 Tr <004100200041> Tj ET", composite)
            .Paint();
    EXPECT_EQ(Ink(pages.at(0)), (Box{10, 10, 52, 22}));  // 10 + 20 + 10 + 12
    EXPECT_EQ(Ink(pages.at(1)), (Box{9, 9, 53, 23}));
}

TEST(Leading, MovesTheNextLineDown) {
    EXPECT_EQ(InkOf(20, "0 60 Td 15 TL T* (A) Tj"), (Box{10, 55, 22, 67}));
    EXPECT_EQ(InkOf(20, "0 60 Td 15 TL T* T* (A) Tj"), (Box{10, 40, 22, 52}));
    EXPECT_EQ(InkOf(20, "0 60 Td (A) Tj 30 TL T* (A) Tj"), (Box{10, 40, 22, 82}));
    EXPECT_EQ(InkOf(20, "0 60 Td T* (A) Tj"), (Box{10, 70, 22, 82}));
}

TEST(Leading, IsFollowedByTheOperatorsThatShowOnANewLine) {
    EXPECT_EQ(InkOf(20, "0 60 Td 15 TL (A) '"), (Box{10, 55, 22, 67}));
    EXPECT_EQ(InkOf(20, "0 60 Td 15 TL 3 5 (A A) \""), (Box{10, 55, 65, 67}));  // as for 5 Tc 3 Tw
    EXPECT_EQ(InkOf(20, "0 60 Td 15 TL 3 5 () \" (A A) '"), (Box{10, 40, 65, 52}));
}

TEST(Leading, IsSetByTD) {
    EXPECT_EQ(InkOf(20, "0 60 Td 10 -20 TD (A) Tj"), (Box{20, 50, 32, 62}));
    EXPECT_EQ(InkOf(20, "0 60 Td 0 -20 TD T* (A) Tj"), (Box{10, 30, 22, 42}));
    EXPECT_EQ(InkOf(20, "0 20 TD T* T* (A) Tj"), (Box{10, 70, 22, 82}));
}

TEST(Displacement, GoesBackByThousandthsOfTheSize) {
    EXPECT_EQ(Ink(Shown(20, "[(A) -1000 (A)] TJ"), 30), (Box{50, 10, 62, 22}));
    EXPECT_EQ(Ink(Shown(20, "[(A) 250.0 (A)] TJ"), 24), (Box{25, 10, 37, 22}));
    EXPECT_EQ(InkOf(20, "[-500 -500 (A) ] TJ"), (Box{30, 10, 42, 22}));
    EXPECT_EQ(Ink(Shown(20, "[(A) -1000 ] TJ (A) Tj"), 30), (Box{50, 10, 62, 22}));
    EXPECT_EQ(InkOf(20, "[] TJ (A) Tj"), (Box{10, 10, 22, 22}));
}

TEST(Displacement, HoldsInEveryMode) {
    for (int mode = 0; mode < 8; ++mode) {
        const Picture page = Shown(20, "1 w " + std::to_string(mode) + " Tr [(A) -1000 (A)] TJ 0 Tr (A) Tj");
        EXPECT_EQ(Ink(page, 66), (Box{70, 10, 82, 22})) << mode;
    }
}

TEST(TextMatrix, TurnsSkewsAndMirrors) {
    EXPECT_EQ(InkOf(50, "0 1 -1 0 60 20 Tm (A) Tj"), (Box{30, 20, 60, 50}));
    EXPECT_EQ(InkOf(20, "0 1 -1 0 60 20 Tm (AA) Tj"), (Box{48, 20, 60, 52}));
    EXPECT_EQ(InkOf(50, "1 0 1 1 20 20 Tm (A) Tj"), (Box{20, 20, 80, 50}));
    EXPECT_EQ(InkOf(50, "-1 0 0 -1 60 60 Tm (A) Tj"), (Box{30, 30, 60, 60}));
}

TEST(TextMatrix, ReplacesTheOneBefore) {
    EXPECT_EQ(InkOf(20, "2 0 0 2 50 50 Tm (A) Tj 1 0 0 1 10 10 Tm"), (Box{50, 50, 74, 74}));
    EXPECT_EQ(InkOf(20, "2 0 0 2 50 50 Tm 1 0 0 1 10 10 Tm (A) Tj"), (Box{10, 10, 22, 22}));
    EXPECT_EQ(InkOf(20, "2 0 0 2 50 50 Tm ET BT (A) Tj"), (Box{0, 0, 12, 12}));
}

TEST(TextMatrix, ThatFlattensEverythingShowsNothing) {
    for (const std::string flat : {"0 0 0 0 20 20", "1 0 0 0 20 20", "1 1 1 1 20 20"}) {
        EXPECT_EQ(InkOf(20, flat + " Tm 3 Tc 1 Tr (A) Tj 0 Tr [(A) 5 (A)] TJ 1 0 0 1 30 30 Tm (A) Tj"),
                  (Box{30, 30, 42, 42}))
            << flat;
    }
}

TEST(NextLine, BeginsRelativeToTheLineNotToTheGlyphs) {
    EXPECT_EQ(InkOf(20, "(AAA) Tj 0 50 Td (A) Tj 20 10 Td"), (Box{10, 10, 62, 72}));
    EXPECT_EQ(Ink(Shown(20, "(AAA) Tj 5 40 Td (A) Tj"), 0, 30), (Box{10, 10, 27, 62}));
    EXPECT_EQ(InkOf(20, "2 0 0 2 10 10 Tm (A) Tj 10 20 Td (A) Tj"), (Box{10, 10, 54, 74}));
    EXPECT_EQ(InkOf(20, "0 1 -1 0 60 10 Tm 10 20 Td (A) Tj"), (Box{28, 20, 40, 32}));
}

TEST(NextGlyph, FollowsTheOneBeforeAcrossStrings) {
    EXPECT_EQ(Ink(Shown(20, "(A) Tj (A) Tj [(A)] TJ"), 46), (Box{50, 10, 62, 22}));
    EXPECT_EQ(Ink(Shown(20, "0 1 -1 0 60 10 Tm (A) Tj (A) Tj"), 0), (Box{48, 10, 60, 42}));
}

TEST(TextState, IsTakenBackByQ) {
    EXPECT_EQ(InkOf(50, "q /Squares 10 Tf 50 Tz 20 Ts 1 Tr 9 Tc 9 Tw 30 TL 1 0 0 1 50 50 Tm Q (A) Tj"),
              (Box{10, 10, 40, 40}));
    EXPECT_EQ(InkOf(20, "q /Squares 40 Tf (A) Tj 50 Tz Q 1 0 0 1 10 10 Tm (A) Tj"), (Box{10, 10, 34, 34}));
    EXPECT_EQ(InkOf(20, "ET q 3 Tr 20 TL Q BT 10 10 Td T* (A) Tj"), (Box{10, 10, 22, 22}));
}

TEST(TextState, OutlivesItsTextObject) {
    EXPECT_EQ(InkOf(20, "50 Tz 10 Ts 10 TL ET BT 10 20 Td T* (A) Tj"), (Box{10, 20, 16, 32}));
}

TEST(TextState, IsNewOnEveryPage) {
    const std::vector<Picture> pages = PrologJob()
                                           .Setup(kSquares)
                                           .Page("BT /Squares 50 Tf 50 Tz 20 Ts 1 Tr 9 Tc 9 Tw 30 TL (A) Tj")
                                           .Page("BT 10 10 Td (A) Tj ET")
                                           .Page("BT /Squares 20 Tf 10 10 Td T* (A A) Tj ET")
                                           .Paint();
    EXPECT_EQ(Ink(pages.at(1)), kNothing);
    EXPECT_EQ(Ink(pages.at(2)), (Box{10, 10, 52, 22}));
}

TEST(TextColor, IsThatOfTheMomentOfShowing) {
    const Picture page = Shown(20, "1 0 0 rg (A) Tj 0 0 1 rg (A) Tj q 0 1 0 rg Q (A) Tj");
    EXPECT_EQ(page.At(15, 15), kRed);
    EXPECT_EQ(page.At(35, 15), kBlue);
    EXPECT_EQ(Shown(20, "1 0 0 rg q 0 1 0 rg (A) Tj Q 20 0 Td (A) Tj").At(35, 15), kRed);
}

TEST(Text, LeavesThePagesMatrixAsItWas) {
    EXPECT_EQ(InkOf(20, "2 0 0 2 10 10 Tm (A) Tj 3 Tr (A) Tj 0 Tz (A) Tj ET 60 60 10 10 re f BT"),
              (Box{10, 10, 70, 70}));
    EXPECT_EQ(Ink(PrologJob()
                      .Page("2 0 0 2 10 10 cm BT /Squares 20 Tf (A) Tj ET 30 30 5 5 re f", kSquares)
                      .Paint()
                      .at(0)),
              (Box{10, 10, 80, 80}));
}

/// Expects a page to go on after this, in its own text object, and to show a square as if nothing had been.
void ExpectPassedOver(const std::string& hostile) {
    const std::string content = "BT /Squares 50 Tf 10 10 Td " + hostile +
                                "\nET BT 0 Tr 100 Tz 0 Ts 0 Tc 0 Tw /Squares 50 Tf 10 10 Td (A) Tj ET\n";
    ASSERT_EQ(PrologJob().Page(content, kSquares).Run().text, "") << hostile;
    EXPECT_EQ(Ink(Painted(kSquares + content)), (Box{10, 10, 40, 40})) << hostile;
}

TEST(TextSurvival, ShowsNothingWithoutAFont) {
    ExpectPassedOver(" 12 Tf (A) Tj [(A) -100 (A)] TJ (A) ' 1 2 (A) \"");
    ExpectPassedOver("/NoSuchFont 12 Tf (A) Tj 1 Tr (A) Tj 7 Tr (A) Tj ET 0 0 0 0 re n BT");
    ExpectPassedOver("q 12 Tf (A) Tj Q");
    EXPECT_EQ(Ink(Painted("BT 10 10 Td (A) Tj [(A) 5 (A)] TJ (A) ' 1 2 (A) \" ET")), kNothing);
}

TEST(TextSurvival, ShowsNothingAtASizeOfNothing) {
    for (const std::string mode : {"0", "1", "2", "3"}) {
        ExpectPassedOver(mode + " Tr /Squares 0 Tf (A) Tj [(A) -100 (A)] TJ 3 Tc (A A) Tj");
    }
}

TEST(TextSurvival, PassesOverOperandsThatAreMissing) {
    for (const std::string name :
         {"Tc", "Tw", "Tz", "TL", "Ts", "Tr", "Td", "TD", "Tm", "Tf", "Tj", "TJ", "'", "\"", "PS"}) {
        ExpectPassedOver(name);
        ExpectPassedOver("q " + name + " Q");
    }
}

TEST(TextSurvival, PassesOverOperandsOfTheWrongType) {
    for (const std::string line :
         {"(a) Tc (A) Tj", "/x Tw (A) Tj", "(a) Tz (A) Tj", "null TL T*", "(a) Ts (A) Tj", "(a) Tr (A) Tj",
          "(a) 5 Td", "5 (a) TD", "(a) 2 3 4 5 6 Tm", "(a) 5 Tf", "/Squares (a) Tf (A) Tj", "5 Tj", "/x Tj",
          "(A) TJ", "[/x null] TJ", "5 '", "1 2 3 \""}) {
        ExpectPassedOver(line);
    }
}

TEST(TextSurvival, PassesOverOperandsTooMany) {
    ExpectPassedOver(
        "1 (x) /y 0 Tc 2 [3] 0 Tw null 0 Ts 4 100 Tz (z) 0 Tr 5 6 7 0 0 Td 8 9 1 0 0 1 10 10 Tm");
    ExpectPassedOver("q 1 (x) () Tj Q q /y 5 [] TJ Q");
}

TEST(TextSurvival, GoesOnAfterNumbersThatNoDeviceHas) {
    ExpectPassedOver("/Squares 1000000000000000019884624838656 Tf (A) Tj");
    ExpectPassedOver("1000000000000000019884624838656 Tz 3 Tr (A) Tj");
    ExpectPassedOver("1000000000000000019884624838656 0 Td (A) Tj");
    ExpectPassedOver("1000000000000000019884624838656 0 0 1 0 0 Tm 0 0 m (A) Tj");
    ExpectPassedOver("3 Tr [(A) 1000000000000000019884624838656 (A)] TJ");
}

TEST(TextSurvival, EndsTextThatWasNeverBegun) {
    EXPECT_EQ(Ink(Painted(kSquares + "ET /Squares 50 Tf ET BT BT 10 10 Td (A) Tj")), (Box{10, 10, 40, 40}));
}

}  // namespace
}  // namespace zorvan::test
