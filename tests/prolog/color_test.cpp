// Colours, their spaces and overprint.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

constexpr std::string_view kFill = " 10 10 20 20 re f\n";
constexpr std::string_view kStroke = " 20 w 10 20 m 30 20 l S\n";

Color Filled(const std::string& content) {
    return Painted(content + std::string(kFill)).At(20, 20);
}
Color Stroked(const std::string& content) {
    return Painted(content + std::string(kStroke)).At(20, 20);
}

TEST(Color, IsSetByTheDeviceOperators) {
    EXPECT_EQ(Filled("0.2 g"), (Color{51, 51, 51}));
    EXPECT_EQ(Filled("0 1 0 rg"), kGreen);
    EXPECT_EQ(Stroked("0.2 G"), (Color{51, 51, 51}));
    EXPECT_EQ(Stroked("0 1 0 RG"), kGreen);
    EXPECT_EQ(Painted("0 0.2 0.4 0.6 k" + std::string(kFill), "pamcmyk32").At(20, 20),
              (Color{0, 51, 102, 153}));
    EXPECT_EQ(Painted("0 0.2 0.4 0.6 K" + std::string(kStroke), "pamcmyk32").At(20, 20),
              (Color{0, 51, 102, 153}));
}

TEST(Color, IsKeptApartForFillAndStroke) {
    const Picture page =
        Painted("1 0 0 rg 0 0 1 RG 6 w 10 10 20 20 re B 50 50 20 20 re f 10 80 m 90 80 l S 80 50 10 10 re f");
    EXPECT_EQ(page.At(20, 20), kRed);
    EXPECT_EQ(page.At(10, 20), kBlue);
    EXPECT_EQ(page.At(60, 60), kRed);
    EXPECT_EQ(page.At(50, 80), kBlue);
    EXPECT_EQ(page.At(85, 55), kRed);
}

TEST(Color, IsSetOnlyWhenSomethingIsPainted) {
    EXPECT_EQ(Printed("0 0 1 setrgbcolor 1 0 0 rg 0 1 0 RG currentrgbcolor 3 array astore == 0 0 5 5 re f "
                      "currentrgbcolor 3 array astore =="),
              "[0.0 0.0 1.0]\n[1.0 0.0 0.0]\n");
}

TEST(Color, OutOfRangeTakesTheNearestValue) {
    EXPECT_EQ(Filled("-1 5 -2 rg"), kGreen);
    EXPECT_EQ(Filled("7 g"), kWhite);
}

TEST(Color, OfTheWrongTypeIsPassedOver) {
    EXPECT_EQ(Filled("1 0 0 rg (a) g"), kRed);
    EXPECT_EQ(Filled("1 0 0 rg 0 (a) 1 rg"), kRed);
    EXPECT_EQ(Filled("1 0 0 rg 0 0 0 /x k"), kRed);
    EXPECT_EQ(Printed("1 0 0 rg (a) g 0 (a) 1 rg 0 0 0 /x k count ="), "0\n");
}

TEST(ColorSpace, StartsWithItsInitialColor) {
    EXPECT_EQ(Filled("1 0 0 rg DefaultGray cs"), kBlack);
    EXPECT_EQ(Painted("1 0 0 rg DefaultCMYK cs" + std::string(kFill), "pamcmyk32").At(20, 20),
              (Color{0, 0, 0, 255}));
    EXPECT_EQ(Stroked("1 0 0 RG DefaultRGB CS"), kBlack);
}

TEST(ColorSpace, TakesItsColorsFromScAndScn) {
    EXPECT_EQ(Filled("DefaultRGB cs 0 1 0 sc"), kGreen);
    EXPECT_EQ(Filled("DefaultRGB cs 0 1 0 scn"), kGreen);
    EXPECT_EQ(Stroked("DefaultRGB CS 0 1 0 SC"), kGreen);
    EXPECT_EQ(Stroked("DefaultRGB CS 0 1 0 SCN"), kGreen);
}

TEST(ColorSpace, MayHaveAnyNumberOfComponents) {
    const std::string deviceN =
        "[/DeviceN [/A /B /C /D /E] /DeviceRGB {5 1 roll pop pop pop pop 0 exch 0}] cs 0 0 0 0 1 sc";
    EXPECT_EQ(Filled("[/Indexed /DeviceRGB 1 <ff000000ff00>] cs 1 sc"), kGreen);
    EXPECT_EQ(Filled("[/Separation /Spot /DeviceRGB {0 exch 0}] cs 1 scn"), kGreen);
    EXPECT_EQ(
        Printed(
            "[/DeviceN [/A /B /C /D /E] /DeviceRGB {pop pop}] cs 1 2 3 4 5 sc count = Fill /Color get =="),
        "0\n[1 2 3 4 5]\n");
    EXPECT_EQ(Filled(deviceN), kGreen);
}

TEST(ColorSpace, KnowsHowManyNumbersAColorHas) {
    EXPECT_EQ(Printed("[/DeviceGray [/DeviceRGB] /DeviceCMYK [/CIEBasedA << >>] [/CIEBasedABC << >>] "
                      "[/CIEBasedDEF << >>]"
                      "[/CIEBasedDEFG << >>] [/Indexed /DeviceRGB 1 ()] [/Separation (x) /DeviceGray {}]"
                      "[/DeviceN [(a) (b)] /DeviceGray {}] /Pattern [/Pattern] [/Pattern [/DeviceRGB]] "
                      "/Other null 5 [] (s)]"
                      "{GetComps =only ( ) print} forall"),
              "1 3 4 1 3 3 4 1 1 2 0 0 3 0 0 0 0 0 ");
    EXPECT_EQ(Printed("[/DeviceRGB] GetCSFamily = /Pattern GetCSFamily = [] GetCSFamily = 5 GetCSFamily ="),
              "DeviceRGB\nPattern\nnone\nnone\n");
}

TEST(ColorSpace, KeepsItsColorWhenTheNumbersDoNotFit) {
    EXPECT_EQ(Filled("DefaultRGB cs 1 0 0 sc q 0.5 sc"), kRed);
    EXPECT_EQ(Filled("1 0 0 rg /N9 /ColorSpace findRes  cs 0.5 sc"), kRed);
    EXPECT_EQ(Printed("q DefaultRGB cs 0.5 sc count = Q"), "1\n");
}

TEST(ColorSpace, ThatTheDeviceRefusesLeavesTheColorItHas) {
    EXPECT_EQ(Filled("1 0 0 rg 0 0 5 5 re f [/Separation (x) /DeviceRGB 5] cs 1 scn"), kRed);
    EXPECT_EQ(Filled("[/Separation (x) /DeviceRGB 5] cs 1 scn 0 0 5 5 re f 0 1 0 rg"), kGreen);
}

// The writer gives a base of its own as its definition and as its use, one of which may be missing.
TEST(IndexedSpace, TakesTheFirstBaseThatIsOne) {
    for (const std::string base : {"DefaultRGB DefaultRGB", "[/DeviceRGB] null", "null DefaultRGB",
                                   "null [/DeviceRGB]", "/N9 /ColorSpace findRes DefaultRGB"}) {
        const std::string space = "[/Indexed " + base + " 1\n<ff000000ff00>]";
        for (const std::string& used :
             {space + " cs 1 sc",
              "/N8 " + space + " /ColorSpace defineRes pop /N8 /ColorSpace findRes cs 1 sc",
              space + " setcolorspace 1 setcolor /sfc {} store"}) {
            EXPECT_EQ(Filled("0 0 1 rg " + used), kGreen) << used;
        }
    }
}

TEST(IndexedSpace, FillsUpAndCutsItsTable) {
    const auto table = [](const std::string& space) {
        return Printed(space + " cs Fill /Space get 3 get length =");
    };
    EXPECT_EQ(table("[/Indexed DefaultRGB 3 ()]"), "12\n");
    EXPECT_EQ(table("[/Indexed DefaultRGB DefaultRGB 3 <ff>]"), "12\n");
    EXPECT_EQ(table("[/Indexed DefaultCMYK 1 (0123456789)]"), "8\n");
    EXPECT_EQ(Filled("[/Indexed DefaultRGB 1 <00ff0000>] cs 0 sc"), kGreen);
    EXPECT_EQ(Filled("[/Indexed DefaultRGB 1 <00ff0000>] cs 1 sc"), kBlack);
    EXPECT_EQ(
        Filled(
            "/N8 [/Indexed DefaultGray 255 <~~>] /ColorSpace defineRes pop /N8 /ColorSpace findRes cs 9 sc"),
        kBlack);
}

TEST(IndexedSpace, OfNothingLeavesThePageAlone) {
    for (const std::string space : {"[/Indexed null null 1 <00ff>]", "[/Indexed]", "[/Indexed 1 <00>]",
                                    "[/Indexed DefaultGray null <00>]", "[/Indexed DefaultGray -5 <00>]"}) {
        EXPECT_EQ(Filled("0 1 0 rg 0 0 5 5 re f q /N8 " + space +
                         " /ColorSpace defineRes pop /N8 /ColorSpace findRes cs 1 sc 0 0 5 5 re f Q"),
                  kGreen)
            << space;
    }
}

TEST(IndexedSpace, OfAnImageIsPutRightToo) {
    EXPECT_EQ(Painted("q 100 0 0 100 0 0 cm BI /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace "
                      "[/Indexed DefaultRGB DefaultRGB 1 <00000000ff>] /DataSource <01> ID EI Q")
                  .At(50, 50),
              kGreen);
}

TEST(DefaultSpaces, TakeASpaceOfAsManyComponents) {
    const std::string page = " /ColorSpace defineRes pop /DefaultRGB /N12 /ColorSpace findRes  dd\n0 0 1 rg";
    EXPECT_EQ(Filled("/N12 [/DeviceN [(a) (b) (c)] DefaultRGB {3 1 roll}]" + page), kRed);
    EXPECT_EQ(
        Filled("/N12 [/CIEBasedABC << /WhitePoint [0.9505 1 1.089] /DecodeABC [{pop 0} {pop 0} {pop 0}] >>]" +
               page),
        kBlack);
    EXPECT_EQ(Filled("/N12 [/Separation (a) DefaultRGB {0 0}]" + page), kBlue);
    EXPECT_EQ(Filled("/N12 [/DeviceN [(a) (b) (c) (d)] DefaultRGB {pop}]" + page), kBlue);
}

TEST(DefaultSpaces, AreArrays) {
    EXPECT_EQ(Printed("DefaultGray == DefaultRGB == DefaultCMYK =="),
              "[/DeviceGray]\n[/DeviceRGB]\n[/DeviceCMYK]\n");
}

constexpr std::string_view kSwapped = "[/DeviceN [/A /B /C] /DeviceRGB {3 1 roll}]";

TEST(DefaultSpaces, AreReplacedByAPagesOwnUntilThePageEnds) {
    const std::string page = "0 0 1 rg" + std::string(kFill);
    const auto pages =
        PrologJob().Page("/DefaultRGB " + std::string(kSwapped) + " dd\n" + page).Page(page).Paint();
    EXPECT_EQ(pages.at(0).At(20, 20), kRed);
    EXPECT_EQ(pages.at(1).At(20, 20), kBlue);
}

TEST(DefaultSpaces, RefuseASpaceOfTheWrongSizeOrNone) {
    for (const std::string line :
         {"/DefaultRGB DefaultGray dd", "/DefaultRGB  dd", "/DefaultRGB null dd",
          "/DefaultRGB /N9 /ColorSpace findRes  dd", "/DefaultRGB (x) dd", "q /DefaultRGB  dd"}) {
        EXPECT_EQ(Filled(line + "\n0 0 1 rg"), kBlue) << line;
    }
    EXPECT_EQ(Printed("q /DefaultRGB  dd /DefaultGray null dd count = Q count ="), "1\n0\n");
}

TEST(LazyColor, IsForgottenWhenSomethingElseSetsAColor) {
    EXPECT_EQ(Filled("1 0 0 rg 0 0 5 5 re f [/DeviceRGB] setcolorspace"), kRed);
    EXPECT_EQ(Filled("1 0 0 rg 0 0 5 5 re f true setoverprint false setoverprint"), kRed);
    EXPECT_EQ(
        Printed("1 0 0 rg 0 0 5 5 re f PDFVars /LastPaint get = true setoverprint PDFVars /LastPaint get ="),
        "1\n0\n");
    EXPECT_EQ(Printed("sfc << /OP true >> gs PDFVars /LastPaint get = ssc [/DeviceRGB] setcolorspace PDFVars "
                      "/LastPaint get = "
                      "sfc q Q PDFVars /LastPaint get ="),
              "0\n0\n0\n");
}

TEST(LazyColor, IsSilencedWithStore) {
    EXPECT_EQ(Filled("1 0 0 rg 0 0 5 5 re f /sfc {} store /ssc {} store 0 1 0 rg"), kRed);
}

std::vector<int> Plates(const std::string& content) {
    return Painted("0 0 0.4 0 k" + std::string(kFill) + content + std::string(kFill), "pamcmyk32").At(20, 20);
}

TEST(Overprint, GoesWithFillAndStrokeApart) {
    EXPECT_EQ(
        Printed("/N5 << /OP true /op false >> /ExtGState defineRes pop /N5 /ExtGState findRes  gs\nfalse "
                "setoverprint\n"
                "sfc currentoverprint = ssc currentoverprint = true setoverprint sfc currentoverprint ="),
        "false\ntrue\ntrue\n");
}

TEST(Overprint, KnocksOutWithoutIt) {
    EXPECT_EQ(Plates("0.2 0 0 0 k"), (Color{51, 0, 0, 0}));
}

TEST(Overprint, KnocksOutInModeZero) {
    EXPECT_EQ(Plates("<< /op true /OPM 0 >> gs true setoverprint 0.2 0 0 0 k"), (Color{51, 0, 0, 0}));
}

TEST(Overprint, LeavesThePlatesOfMissingInksInModeOne) {
    EXPECT_EQ(Plates("<< /op true /OPM 1 >> gs true setoverprint 0.2 0 0 0 k"), (Color{51, 0, 102, 0}));
    EXPECT_EQ(Plates("<< /op true /OPM 1 >> gs true setoverprint 0.2 0 0.8 0 k"), (Color{51, 0, 204, 0}));
    EXPECT_EQ(Plates("<< /op true /OPM 1 >> gs true setoverprint 0 0 0 0 k"), (Color{0, 0, 102, 0}));
}

/// Four components, each as full or not at all as the bits of a number say.
std::string Inks(int bits, const std::string& full, const std::string& none) {
    std::string text;
    for (const int bit : {8, 4, 2, 1}) {
        text += ((bits & bit) != 0 ? full : none) + " ";
    }
    return text;
}

TEST(Overprint, GivesEachOfTheSixteenSpacesItsInks) {
    std::string content;
    std::string expected;
    for (int bits = 0; bits < 16; ++bits) {
        content +=
            Inks(bits, "0.5", "0") +
            "DoNonZeroOverprint currentcolor currentcolorspace dup length 1 gt {3 get exec} {pop} ifelse\n"
            "[5 1 roll] {1.0 mul =only ( ) print} forall () =\n";
        expected += Inks(bits, "0.5", "0.0") + "\n";
    }
    EXPECT_EQ(Printed(content), expected);
}

TEST(Overprint, ChangesNoColorOnADeviceWithoutPlates) {
    EXPECT_EQ(Filled("<< /op true /OPM 1 >> gs true setoverprint 0 1 1 0 k"), Filled("0 1 1 0 k"));
}

TEST(Overprint, ModeOneLeavesOtherSpacesThanDeviceCmykAlone) {
    EXPECT_EQ(Filled("<< /op true /OPM 1 >> gs true setoverprint 0 1 0 rg"), kGreen);
}

}  // namespace
}  // namespace zorvan::test
