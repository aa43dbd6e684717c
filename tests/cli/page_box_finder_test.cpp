// Finding the visible box in a page, however its bytes are cut.
#include "cli/page_box_finder.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvan::cli {
namespace {

const std::string kPageHead =
    "\n%%Page: 3 3\n%%BeginPageSetup\nuserdict /pgsave save put\n"
    "PDFVars begin PDF begin PDFVars/InitAll get exec\n";

std::string Page(const std::string& rotation, const std::string& resources, const std::string& clip) {
    return kPageHead + rotation + resources + "%%EndPageSetup\n" + clip + " RC\n1 0 0 rg\n";
}

PageBoxFinder Find(const std::string& page, std::size_t pieceSize = 15) {
    PageBoxFinder finder;
    for (std::size_t at = 0; at < page.size(); at += pieceSize) {
        finder.Take(std::string_view(page).substr(at, pieceSize));
    }
    return finder;
}

void ExpectBox(const PageBoxFinder& finder, const Box& expected) {
    const std::optional<Box> box = finder.VisibleBox();
    ASSERT_TRUE(box.has_value());
    EXPECT_DOUBLE_EQ(box->x0, expected.x0);
    EXPECT_DOUBLE_EQ(box->y0, expected.y0);
    EXPECT_DOUBLE_EQ(box->x1, expected.x1);
    EXPECT_DOUBLE_EQ(box->y1, expected.y1);
}

const std::string kClip = "10.000000 20.000000 200.000000 300.000000";

TEST(PageBoxFinder, TakesTheClipOfAnUprightPage) {
    ExpectBox(Find(Page("", "", kClip)), {10, 20, 210, 320});
}

TEST(PageBoxFinder, FindsTheSameHoweverThePiecesAreCut) {
    const std::string page = Page("[0 -1 1 0 -10.000000 230.000000] concat\n", "/N4 [] defineRes\n", kClip);
    const std::size_t setup = page.find("userdict");
    for (std::size_t size = 1; size <= page.size(); ++size) {
        const PageBoxFinder finder = Find(page, size);
        ExpectBox(finder, {10, 20, 310, 220});
        EXPECT_EQ(finder.SetupOffset(), setup) << size;
    }
}

TEST(PageBoxFinder, TurnsTheBoxAsThePageIsTurned) {
    // Box 10 20 210 320; the matrices are those of pages turned by 180 and 270 degrees.
    ExpectBox(Find(Page("[-1 0 0 -1 220.000000 340.000000] concat\n", "", kClip)), {10, 20, 210, 320});
    ExpectBox(Find(Page("[0 1 -1 0 330.000000 10.000000] concat\n", "", kClip)), {10, 20, 310, 220});
}

TEST(PageBoxFinder, PutsTheCornersInOrder) {
    ExpectBox(Find(Page("", "", "210.000000 320.000000 -200.000000 -300.000000")), {10, 20, 210, 320});
}

TEST(PageBoxFinder, KeepsAnEmptyBox) {
    ExpectBox(Find(Page("", "", "0.000000 0.000000 0.000000 0.000000")), {0, 0, 0, 0});
}

TEST(PageBoxFinder, GivesNoBoxForNumbersThatAreNotFinite) {
    const PageBoxFinder finder = Find(Page("", "", "0.000000 0.000000 inf nan"));
    EXPECT_TRUE(finder.Found());
    EXPECT_FALSE(finder.VisibleBox().has_value());
}

TEST(PageBoxFinder, TakesARotationOnlyRightBehindTheInitialisation) {
    const std::string stray = "/x 1 def\n[0 -1 1 0 0.000000 0.000000] concat\n";
    ExpectBox(Find(Page("", stray, kClip)), {10, 20, 210, 320});
}

TEST(PageBoxFinder, PassesOverBinaryDataThatLooksLikeTheEndOfTheSetup) {
    const std::string data = std::string("\0\n%%EndPageSetup\nzz RC\n%%EndPageSetup\n%%EndPageSetup", 51) +
                             "x\n" + std::string(3000, 'y') + "\n";
    ExpectBox(Find(Page("", data, kClip)), {10, 20, 210, 320});
}

TEST(PageBoxFinder, TakesAClipBehindTwoEndsOfTheSetup) {
    ExpectBox(Find(Page("", "%%EndPageSetup\n", kClip)), {10, 20, 210, 320});
}

TEST(PageBoxFinder, FindsNothingInAPageThatBreaksOff) {
    const std::string page = Page("", "", kClip);
    const std::size_t clipEnd = page.find("1 0 0 rg");
    for (std::size_t size = 0; size < clipEnd; ++size) {
        EXPECT_FALSE(Find(page.substr(0, size)).VisibleBox().has_value()) << size;
    }
    EXPECT_TRUE(Find(page.substr(0, clipEnd)).VisibleBox().has_value());
}

TEST(PageBoxFinder, TakesNoLineThatOnlyResemblesTheClip) {
    for (const char* line :
         {"1 2 3 RC", "1 2 3 4 5 RC", "1 2 3 4 RCx", "1 2 3 4RC", "x1 2 3 4 RC", "1  2 3 4 RC"}) {
        EXPECT_FALSE(Find(kPageHead + "%%EndPageSetup\n" + line + "\n").Found()) << line;
    }
}

}  // namespace
}  // namespace zorvan::cli
