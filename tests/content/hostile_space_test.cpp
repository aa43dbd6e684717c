// Colour spaces of files that mean harm: cycles, nesting, and what makes no sense.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "content/space_page.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::StartsWith;

/// The objects of a space that contains itself.
struct Cycle {
    const char* space;
    const char* other;
};

TEST(ColorSpaceCycle, EndsWithTheErrorRecorded) {
    for (const Cycle& cycle : {
             Cycle{"[/Separation /A 10 0 R 20 0 R]", "null"},
             Cycle{"[/DeviceN [/A] 10 0 R 20 0 R]", "null"},
             Cycle{"[/Indexed 10 0 R 1 11 0 R]", "null"},
             Cycle{"[/Pattern 10 0 R]", "null"},
             Cycle{"[/Separation /A [/Pattern 10 0 R] 20 0 R]", "null"},
             Cycle{"[/Separation /A 12 0 R 20 0 R]", "[/Separation /B 10 0 R 20 0 R]"},
             Cycle{"[/ICCBased 13 0 R]", "null"},
         }) {
        for (const std::size_t count : {1U, 2U}) {
            PdfBuilder pdf = Pages(std::vector<std::string>(
                count, "/Contents 15 0 R /Resources << /ColorSpace << /A 10 0 R >> >>"));
            pdf.Stream(15, "/A cs 0 0 0 scn 0 0 9 9 re f");
            pdf.Object(10, cycle.space).Object(12, cycle.other).Object(20, kInk).Stream(11, "abcdef");
            const Conversion conversion =
                Convert(pdf.Stream(13, "profile", "/N 3 /Alternate 10 0 R").Bytes());
            EXPECT_EQ(conversion.global, 0) << cycle.space;
            EXPECT_THAT(conversion.pages, Each(0)) << cycle.space;
            EXPECT_EQ(conversion.error.code, -4083) << cycle.space;
        }
    }
}

TEST(ColorSpaceCycle, OfAProfileThatIsItsOwnAlternateDirectlyEndsWithTheErrorRecorded) {
    PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]");
    const Conversion conversion =
        Convert(pdf.Stream(11, "profile", "/N 3 /Alternate [/ICCBased 11 0 R]").Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, -4083);
}

TEST(ColorSpaceCycle, OfAnArrayThatIsItsOwnBaseEndsWithTheErrorRecorded) {
    PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]");
    pdf.Stream(11, "profile", "/N 3 /Alternate [/Separation /A [/ICCBased 11 0 R] 20 0 R]").Object(20, kInk);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, -4083);
}

/// So many names.
std::string Colorants(std::size_t count) {
    std::string names;
    for (std::size_t i = 0; i < count; ++i) {
        names += "/Ink" + std::to_string(i) + " ";
    }
    return names;
}

/// So many spaces around a device space.
std::string Nested(std::size_t count) {
    std::string space = "/DeviceCMYK";
    for (std::size_t i = 0; i < count; ++i) {
        space = "[/Separation /A " + space + " " + kInk + "]";
    }
    return space;
}

TEST(ColorSpace, OfManyColorantsNamesEachOfThoseThatADeviceMayHave) {
    PdfBuilder pdf = SpacePage().Object(10, "[/DeviceN [" + Colorants(32) + "] /DeviceCMYK 20 0 R]");
    const std::string page = Defined(pdf.Object(20, kInk)).page;
    EXPECT_THAT(page, StartsWith("/N10 [/DeviceN [(Ink0) (Ink1) "));
    EXPECT_EQ(CountOf(page, "(Ink"), 32);
}

TEST(ColorSpace, NestedWithoutEndIsNoReasonToCrash) {
    for (const std::size_t depth : {63U, 64U, 65U, 200U}) {
        const Conversion conversion = Convert(SpacePage().Object(10, Nested(depth)).Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << depth;
    }
}

/// Spaces that make no sense; the objects that they name stand in HostileSpaces.
const std::vector<std::string> kHostile = {
    "[/CalGray]",
    "[/CalGray 5]",
    "[/CalGray << >>]",
    "[/CalGray << /WhitePoint [] >>]",
    "[/CalGray << /WhitePoint [0 0 0] /Gamma 0 >>]",
    "[/CalGray << /WhitePoint [1 1 1] /Gamma /Two >>]",
    "[/CalGray << /WhitePoint [1 1 1] /Gamma -1e38 >>]",
    "[/CalGray << /WhitePoint [-1 1e38 (x)] /Gamma 1e38 >>]",
    "[/CalGray << /WhitePoint [1 1 1] /Gamma [2.2] >>]",
    "[/CalRGB]",
    "[/CalRGB << /WhitePoint /D50 >>]",
    "[/CalRGB << /WhitePoint [1] /Gamma [] /Matrix [] >>]",
    "[/CalRGB << /WhitePoint [1 1 1] /Gamma 2 /Matrix 3 >>]",
    "[/CalRGB << /WhitePoint [1 1 1] /Gamma [-1 0 1e38] /Matrix [1e38 -1e38 1e38] >>]",
    "[/Lab]",
    "[/Lab << /WhitePoint 5 /Range 5 >>]",
    "[/Lab << /WhitePoint [1 1 1] /Range [100 -100] >>]",
    "[/Lab << /WhitePoint [1 1 1] /Range [(a) /b null true] >>]",
    "[/Lab << /WhitePoint [nan inf NaN] /Range [1e999 -1e999 . -] >>]",
    "[/ICCBased]",
    "[/ICCBased 99 0 R]",
    "[/ICCBased 301 0 R]",
    "[/ICCBased 302 0 R]",
    "[/Indexed /DeviceRGB -1 300 0 R]",
    "[/Indexed /DeviceRGB 2147483647 300 0 R]",
    "[/Indexed /DeviceRGB 2147483648 300 0 R]",
    "[/Indexed /DeviceRGB 256 300 0 R]",
    "[/Indexed /Unheard 1 300 0 R]",
    "[/Indexed null 1 300 0 R]",
    "[/Indexed [] 1 300 0 R]",
    "[/Indexed 99 0 R 1 300 0 R]",
    "[/Indexed [/Indexed /DeviceRGB 1 300 0 R] 1 300 0 R]",
    "[/Indexed [/Pattern /DeviceRGB] 1 300 0 R]",
    "[/Indexed [/CalRGB << /WhitePoint [1 1 1] >>] 1 300 0 R]",
    "[/Indexed [/Separation /A /DeviceCMYK 303 0 R] 5 300 0 R]",
    "[/Indexed [/ICCBased 301 0 R] 1 300 0 R]",
    "[/Separation]",
    "[/Separation /A]",
    "[/Separation /A /DeviceCMYK]",
    "[/Separation /A /DeviceCMYK /Identity]",
    "[/Separation /A /Unheard 303 0 R]",
    "[/Separation /A null 303 0 R]",
    "[/Separation (A) /DeviceCMYK 303 0 R]",
    "[/Separation 5 /DeviceCMYK 99 0 R]",
    "[/Separation /A [/Indexed /DeviceRGB 1 300 0 R] 303 0 R]",
    "[/Separation /A [/Pattern] 303 0 R]",
    "[/Separation /#28#28#28 /DeviceCMYK 303 0 R]",
    "[/Separation /A 10 0 R 303 0 R]",
    "[/DeviceN]",
    "[/DeviceN [] /DeviceCMYK 303 0 R]",
    "[/DeviceN /A /DeviceCMYK 303 0 R]",
    "[/DeviceN [5 (x) null [/A]] /DeviceCMYK 303 0 R]",
    "[/DeviceN [/A] /DeviceCMYK 5]",
    "[/DeviceN [" + Colorants(1000) + "] /DeviceCMYK 303 0 R]",
    "[/DeviceN [/A] [/DeviceN [/B] [/DeviceN [/C] /DeviceCMYK 303 0 R] 303 0 R] 303 0 R]",
    "[/Pattern]",
    "[/Pattern [/Pattern]]",
    "[/Pattern 99 0 R]",
    "[/Unheard]",
    "[null]",
    "5",
    Nested(100),
};

PdfBuilder HostileSpaces() {
    std::vector<std::string> pages;
    for (std::size_t i = 0; i < kHostile.size(); ++i) {
        pages.push_back("/Contents 304 0 R /Resources << /ColorSpace << /CS " + std::to_string(400 + i) +
                        " 0 R >> >>");
    }
    PdfBuilder pdf = Pages(pages);
    for (std::size_t i = 0; i < kHostile.size(); ++i) {
        pdf.Object(static_cast<unsigned>(400 + i), kHostile[i]);
    }
    pdf.Stream(300, "abcdef").Stream(301, "profile", "/N 1000000").Object(303, kInk);
    pdf.Stream(302, "profile", "/N 3 /Alternate [/ICCBased 302 0 R]");
    std::string numbers;
    for (int i = 0; i < 256; ++i) {
        numbers += "0.5 ";
    }
    return pdf.Stream(304,
                      "q /CS cs " + numbers + "scn 0 0 9 9 re f /CS CS " + numbers + "SCN 0 0 9 9 re S Q");
}

TEST(ColorSpace, WithoutSenseLeavesAProgramThatTheDeviceRuns) {
    const Conversion conversion = Convert(HostileSpaces().Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_THAT(conversion.pages, Each(0));
    EXPECT_EQ(conversion.pages.size(), kHostile.size());
    const Outcome outcome = Interpret("-sDEVICE=nullpage", conversion.output);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "");
}

}  // namespace
}  // namespace zorvan::test
