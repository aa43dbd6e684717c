// Page size requests as a device obeys them.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/cli/device_page.h"
#include "tests/cli/program_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

struct Corner {
    unsigned x;
    unsigned y;
};

// Prints pages that each show one black square of ten points in their box's lower left corner.
std::vector<DevicePage> Printed(const std::vector<SamplePage>& pages) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(pages));
    EXPECT_EQ(RunZorvan({pdf}).exitCode, 0);
    return PrintedPages(scratch.Path("a.ps"));
}

SamplePage PageWithSquareAt(const std::string& corner, const std::string& box, int rotate = 0) {
    return {corner + " 10 10 re f\n", box, rotate, 0};
}

void ExpectSquare(const DevicePage& page, unsigned width, unsigned height, const Corner& corner) {
    EXPECT_EQ(page.width, width);
    EXPECT_EQ(page.height, height);
    EXPECT_EQ(page.BlackPixels(), 100U);
    EXPECT_TRUE(page.IsBlack(corner.x, corner.y));
    EXPECT_TRUE(page.IsBlack(corner.x + 9, corner.y + 9));
}

TEST(PageSizeOnDevice, FollowsEachPageOfAnySize) {
    const auto pages =
        Printed({PageWithSquareAt("0 0", "0 0 200 300"), PageWithSquareAt("50 60", "50 60 150 360"),
                 PageWithSquareAt("-50 -20", "-50 -20 350 80")});
    ASSERT_EQ(pages.size(), 3U);
    ExpectSquare(pages[0], 200, 300, {0, 0});
    ExpectSquare(pages[1], 100, 300, {0, 0});
    ExpectSquare(pages[2], 400, 100, {0, 0});
}

TEST(PageSizeOnDevice, DoesNotAddUpOverPagesOfOneSize) {
    const SamplePage moved = PageWithSquareAt("50 60", "50 60 250 360");
    const auto pages = Printed({moved, moved, PageWithSquareAt("0 0", "0 0 200 300"), moved});
    ASSERT_EQ(pages.size(), 4U);
    for (const DevicePage& page : pages) {
        ExpectSquare(page, 200, 300, {0, 0});
    }
}

TEST(PageSizeOnDevice, FollowsTurnedPages) {
    // Turned clockwise by a quarter, the lower left corner comes to lie at the upper left.
    const auto pages = Printed({PageWithSquareAt("50 60", "50 60 250 360", 90),
                                PageWithSquareAt("50 60", "50 60 250 360", 180),
                                PageWithSquareAt("50 60", "50 60 250 360", 270)});
    ASSERT_EQ(pages.size(), 3U);
    ExpectSquare(pages[0], 300, 200, {0, 190});
    ExpectSquare(pages[1], 200, 300, {190, 290});
    ExpectSquare(pages[2], 300, 200, {290, 0});
}

TEST(PageSizeOnDevice, FollowsABoxWithItsCornersInAnyOrder) {
    const auto pages = Printed({PageWithSquareAt("50 60", "250 360 50 60")});
    ASSERT_EQ(pages.size(), 1U);
    ExpectSquare(pages[0], 200, 300, {0, 0});
}

TEST(PageSizeOnDevice, LeavesTheDevicesPageForABoxThatIsNoPage) {
    const auto pages =
        Printed({PageWithSquareAt("0 0", "0 0 0 0"), PageWithSquareAt("20 20", "0 0 99999 99999")});
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].width, pages[1].width);
    ExpectSquare(pages[1], pages[0].width, pages[0].height, {20, 20});
}

}  // namespace
}  // namespace zorvan::cli
