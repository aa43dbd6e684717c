// The text of the page size request.
#include "cli/page_size_feature.h"

#include <limits>

#include <gtest/gtest.h>

#include "cli/number_text.h"

namespace zorvan::cli {
namespace {

TEST(PageSizeFeature, AsksForTheSize) {
    EXPECT_EQ(PageSizeFeature({0, 0, 595.276001, 841.89}),
              R"(%%BeginFeature: *PageSize 595.276x841.89
[{<</PageSize[595.276 841.89]/ImagingBBox null>>setpagedevice}stopped cleartomark
%%EndFeature
)");
}

TEST(PageSizeFeature, MovesTheCornerToTheOrigin) {
    EXPECT_EQ(PageSizeFeature({-10, 20.5, 190, 320.5}),
              R"(%%BeginFeature: *PageSize 200x300
[{<</PageSize[200 300]/ImagingBBox null>>setpagedevice}stopped cleartomark
10 -20.5 translate
%%EndFeature
)");
}

TEST(PageSizeFeature, AsksForNothingThatIsNoPage) {
    EXPECT_EQ(PageSizeFeature({0, 0, 0, 0}), "");
    EXPECT_EQ(PageSizeFeature({0, 0, 0.9, 100}), "");
    EXPECT_EQ(PageSizeFeature({0, 0, 100, 14400.1}), "");
    EXPECT_NE(PageSizeFeature({0, 0, 1, 14400}), "");
}

TEST(NumberText, RoundsToThousandthsWithoutTrailingZeros) {
    EXPECT_EQ(NumberText(612), "612");
    EXPECT_EQ(NumberText(0.12345), "0.123");
    EXPECT_EQ(NumberText(-0.5), "-0.5");
    EXPECT_EQ(NumberText(100), "100");
}

TEST(NumberText, NeverWritesMinusZero) {
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(-0.0001), "0");
}

TEST(NumberText, HoldsTheLargestNumber) {
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::max()).size(), 310U);
}

}  // namespace
}  // namespace zorvan::cli
