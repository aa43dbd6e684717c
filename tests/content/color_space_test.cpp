// Colour spaces that stand for themselves or for another, and where a space is defined.
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "content/space_page.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::StartsWith;

// --- device spaces ---

TEST(ColorSpace, OfADeviceFamilyIsDefinedNowhereAndUsedByItsStandIn) {
    for (const auto& [family, text, numbers] :
         {std::tuple{"/DeviceGray", "DefaultGray", "0.4 "},
          std::tuple{"/DeviceRGB", "DefaultRGB", "0.2 0.3 0.4 "},
          std::tuple{"/DeviceCMYK", "DefaultCMYK", "0.1 0.2 0.3 0.4 "}}) {
        const std::string name = family;
        for (const std::string& space : {name, "[" + name + "]"}) {
            for (const std::string& spaces : {std::string("/CS 10 0 R"), "/CS " + space}) {
                const Drawing page = Draw(SpacePage("/CS cs 0.1 0.2 0.3 0.4 sc", spaces).Object(10, space));
                EXPECT_EQ(page.setup, "") << spaces;
                const std::string color = numbers;
                EXPECT_EQ(page.content, std::string(text) + "  cs\n" + color + "sc\n") << spaces;
            }
        }
    }
}

TEST(ColorSpace, OfThePageTakesThePlaceOfADeviceSpace) {
    PdfBuilder pdf = SpacePage("/DeviceRGB cs", "/DefaultRGB 12 0 R");
    const Drawing page = Draw(pdf.Object(12, kCalRgb));
    EXPECT_EQ(page.setup, Definition("N12", kCalRgbText));
    EXPECT_EQ(page.content, "/DefaultRGB /N12 /ColorSpace findRes  dd\nDefaultRGB cs\n");
}

TEST(ColorSpace, OfAnUnknownFamilyIsRecordedAndDefinedNowhere) {
    for (const std::string space :
         {"[/Unheard 1]", "/Unheard", "[]", "[5]", "<< /A 1 >>", "[(DeviceRGB)]", "(DeviceRGB)"}) {
        const Drawing page = DrawRecording(-4083, SpacePage("/CS cs 0.5 sc").Object(10, space), 10);
        EXPECT_EQ(page.setup, "") << space;
        EXPECT_EQ(page.content, " cs\n0.5 sc\n") << space;
    }
}

TEST(ColorSpace, IsNamedByItsGenerationToo) {
    EXPECT_EQ(Defined(SpacePage("n", "/CS 7 2 R").Object(7, kCalGray, 2)).page,
              Definition("N7-2", kCalGrayText));
    EXPECT_EQ(Defined(SpacePage("n", "/CS 7 0 R").Object(7, kCalGray)).page, Definition("N7", kCalGrayText));
}

TEST(ColorSpace, TakesItsNumbersFromTheStackByItsFamily) {
    PdfBuilder objects = SpacePage();
    for (const auto& [space, taken] : {std::tuple{kCalGray, "0.4"}, std::tuple{kCalRgb, "0.2 0.3 0.4"},
                                       std::tuple{"[/Lab << /WhitePoint [1 1 1] >>]", "0.2 0.3 0.4"},
                                       std::tuple{"[/ICCBased 11 0 R]", "0.1 0.2 0.3 0.4"},
                                       std::tuple{"[/Indexed /DeviceRGB 0 12 0 R]", "0.4"},
                                       std::tuple{"[/Separation /X /DeviceCMYK 13 0 R]", "0.4"},
                                       std::tuple{"[/DeviceN [/X /Y] /DeviceCMYK 14 0 R]", "0.3 0.4"}}) {
        PdfBuilder pdf = SpacePage("/CS cs 0.1 0.2 0.3 0.4 scn");
        pdf.Object(10, space).Stream(11, "", "/N 4").Stream(12, "abc").Object(13, kInk);
        pdf.Stream(14, "{ 0 0 }", "/FunctionType 4 /Domain [0 1 0 1] /Range [0 1 0 1 0 1 0 1]");
        const std::string numbers = taken;
        EXPECT_EQ(Draw(pdf).content, "/N10 /ColorSpace findRes  cs\n" + numbers + " scn\n") << space;
    }
}

// --- calibrated spaces ---

TEST(CalGraySpace, HasItsWhitePointAsMatrixAndRange) {
    EXPECT_EQ(Defined("[/CalGray << /WhitePoint [0.9505 1 1.089] /BlackPoint [0.1 0.1 0.1] /Gamma 2.2 >>]"),
              Definition("N10",
                         "[/CIEBasedA <<\n"
                         "/MatrixA [0.9505 1 1.089]\n"
                         "/RangeLMN [0 0.9505 0 1 0 1.089]\n"
                         "/WhitePoint [0.9505 1 1.089]\n"
                         "/DecodeA {2.2 exp}bind\n"
                         ">>]"));
}

TEST(CalGraySpace, HasNoDecodingWithoutGamma) {
    EXPECT_EQ(Defined(kCalGray), Definition("N10", kCalGrayText));
}

TEST(CalRgbSpace, HasGammaAndMatrixInTheSecondStage) {
    EXPECT_EQ(Defined("[/CalRGB << /WhitePoint [0.9505 1 1.089] /BlackPoint [0 0 0] /Gamma [1.8 2 2.2] "
                      "/Matrix [0.4124 0.2126 0.0193 0.3576 0.7152 0.1192 0.1805 0.0722 0.9505] >>]"),
              Definition("N10",
                         "[/CIEBasedABC <<\n"
                         "/WhitePoint [0.9505 1 1.089]\n"
                         "/DecodeLMN  [{1.8 exp}bind {2 exp}bind {2.2 exp}bind ]\n"
                         "/MatrixLMN  [0.4124 0.2126 0.0193 0.3576 0.7152 0.1192 0.1805 0.0722 0.9505]\n"
                         ">>]"));
}

TEST(CalRgbSpace, HasNeitherWithoutThem) {
    EXPECT_EQ(Defined(kCalRgb), Definition("N10", kCalRgbText));
}

TEST(CalRgbSpace, WithoutAWhitePointIsRecordedAndWritten) {
    for (const std::string entries : {"", "/WhitePoint 5", "/WhitePoint /D65", "/WhitePoint << >>"}) {
        const Drawing page =
            DrawRecording(-4095, SpacePage().Object(10, "[/CalRGB << " + entries + " >>]"), 10);
        EXPECT_THAT(page.setup, StartsWith("/N10 [/CIEBasedABC <<\n/WhitePoint [")) << entries;
        EXPECT_THAT(page.setup, ::testing::EndsWith(">>] /ColorSpace defineRes pop\n")) << entries;
    }
}

TEST(CalRgbSpace, TakesItsEntriesByReference) {
    PdfBuilder pdf = SpacePage();
    pdf.Object(10, "[11 0 R 12 0 R]").Object(11, "/CalRGB");
    pdf.Object(12, "<< /WhitePoint 13 0 R /Gamma 14 0 R >>").Object(13, "[15 0 R 1 1.5]");
    EXPECT_EQ(Defined(pdf.Object(14, "[1 1 15 0 R]").Object(15, "0.25")).page,
              Definition("N10",
                         "[/CIEBasedABC <<\n/WhitePoint [0.25 1 1.5]\n"
                         "/DecodeLMN  [{1 exp}bind {1 exp}bind {0.25 exp}bind ]\n>>]"));
}

std::string LabText(const std::string& range) {
    const std::string stage = "{dup 6 29 div ge {dup dup mul mul}\n{4 29 div sub 108 841 div mul} ifelse ";
    return "[/CIEBasedABC <<\n"
           "/RangeABC [0 100 " +
           range +
           " ]\n"
           "/DecodeABC [{16 add 116 div} bind {500 div} bind {200 div} bind]\n"
           "/MatrixABC [1 1 1 1 0 0 0 0 -1]\n"
           "/DecodeLMN [\n" +
           stage + "0.9505 mul} bind\n" + stage + "1 mul} bind\n" + stage +
           "1.089 mul} bind]\n"
           "/WhitePoint [0.9505 1 1.089]\n"
           ">>]";
}

TEST(LabSpace, HasItsRangesBehindThatOfLightness) {
    EXPECT_EQ(Defined("[/Lab << /WhitePoint [0.9505 1 1.089] /Range [-50 60 -70.5 80] >>]"),
              Definition("N10", LabText("-50 60 -70.5 80")));
}

TEST(LabSpace, WithoutRangesGoesFromMinusAHundredToAHundred) {
    EXPECT_EQ(Defined("[/Lab << /WhitePoint [0.9505 1 1.089] >>]"),
              Definition("N10", LabText("-100 100 -100 100")));
}

// --- profiles ---

TEST(IccSpace, IsTheDeviceSpaceOfAsManyComponents) {
    for (const auto& [count, text] :
         {std::tuple{"1", "DefaultGray "}, std::tuple{"3", "DefaultRGB "}, std::tuple{"4", "DefaultCMYK "}}) {
        PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]");
        pdf.Stream(11, "the profile", "/N " + std::string(count));
        EXPECT_EQ(Defined(pdf).page, Definition("N10", text)) << count;
    }
}

TEST(IccSpace, OfAnotherCountIsRecordedAndWritesNothing) {
    for (const std::string entries : {"/N 2", "/N 0", "/N -3", "/N 2147483647", "/N /Three", ""}) {
        PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]").Stream(11, "profile", entries);
        EXPECT_EQ(DrawRecording(-4083, pdf, 10).setup, Definition("N10", "")) << entries;
    }
}

TEST(IccSpace, WithoutItsStreamIsRecordedAndWritesNothing) {
    for (const std::string space : {"[/ICCBased]", "[/ICCBased 11 0 R]", "[/ICCBased (profile)]"}) {
        EXPECT_EQ(DrawRecording(-4083, SpacePage().Object(10, space), 10).setup, Definition("N10", ""));
    }
}

TEST(IccSpace, IsItsAlternateWhereItHasOne) {
    const auto defined = [](const std::string& alternate) {
        PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]");
        return Defined(pdf.Stream(11, "profile", "/N 3 /Alternate " + alternate).Object(12, kCalRgb)).page;
    };
    EXPECT_EQ(defined(kCalRgb), Definition("N10", kCalRgbText));
    EXPECT_EQ(defined("12 0 R"),
              Definition("N12", kCalRgbText) + Definition("N10", "/N12 /ColorSpace findRes "));
    EXPECT_EQ(defined("/DeviceRGB"), Definition("N10", "DefaultRGB "));
    EXPECT_EQ(defined("[/DeviceRGB]"), Definition("N10", "DefaultRGB "));
}

TEST(IccSpace, WithADeviceSpaceByReferenceIsThatOne) {
    PdfBuilder pdf = SpacePage().Object(10, "[/ICCBased 11 0 R]").Object(12, "/DeviceGray");
    EXPECT_EQ(Defined(pdf.Stream(11, "profile", "/N 1 /Alternate 12 0 R")).page,
              Definition("N10", "DefaultGray "));
}

// --- patterns ---

TEST(PatternSpace, IsDefinedOverItsBase) {
    EXPECT_EQ(Defined("[/Pattern /DeviceRGB]"), Definition("N10", "[/Pattern DefaultRGB ]"));
    EXPECT_EQ(Defined(SpacePage().Object(10, "[/Pattern 12 0 R]").Object(12, kCalGray)).page,
              Definition("N12", kCalGrayText) + Definition("N10", "[/Pattern /N12 /ColorSpace findRes ]"));
}

TEST(PatternSpace, HoldsABaseThatStandsInIt) {
    EXPECT_EQ(Defined("[/Pattern " + std::string(kCalRgb) + "]"),
              Definition("N10", "[/Pattern " + std::string(kCalRgbText) + "]"));
}

TEST(PatternSpace, WithoutABaseTakesNoNumbers) {
    for (const std::string space : {"[/Pattern]", "/Pattern"}) {
        const Drawing page = Draw(SpacePage("/CS cs 5 w").Object(10, space));
        EXPECT_EQ(page.setup, Definition("N10", "[/Pattern ]")) << space;
        EXPECT_EQ(page.content, "/N10 /ColorSpace findRes  cs\n5 w\n") << space;
    }
}

TEST(PatternSpace, TakesTheNumbersOfItsBase) {
    PdfBuilder pdf = SpacePage("/CS cs 0.1 0.2 0.3 0.4 sc").Object(10, "[/Pattern /DeviceRGB]");
    EXPECT_EQ(Draw(pdf).content, "/N10 /ColorSpace findRes  cs\n0.2 0.3 0.4 sc\n");
}

// --- where they are defined ---

TEST(ColorSpaceRegistry, DefinesASpaceOfOnePageThereAndOfTwoPagesInTheSetup) {
    PdfBuilder pdf = Pages({"/Resources << /ColorSpace << /A 10 0 R /B 11 0 R /C 11 0 R >> >>",
                            "/Resources << /ColorSpace << /X 10 0 R >> >>"});
    const Conversion conversion = Convert(pdf.Object(10, kCalGray).Object(11, kCalRgb).Bytes());
    EXPECT_EQ(SetupOf(conversion.output), Definition("N10", kCalGrayText));
    EXPECT_EQ(PageSetupOf(conversion.output, 1), Definition("N11", kCalRgbText));
    EXPECT_EQ(PageSetupOf(conversion.output, 2), "");
}

TEST(ColorSpaceRegistry, DefinesWhatASpaceOfTwoPagesNamesInTheSetupToo) {
    const std::string entries = "/Resources << /ColorSpace << /A 10 0 R >> >>";
    PdfBuilder pdf = Pages({entries, entries, entries});
    pdf.Object(10, "[/Separation /Spot 12 0 R 20 0 R]").Object(12, kCalRgb).Object(20, kInk);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_THAT(conversion.pages, Each(0));
    const std::string setup = SetupOf(conversion.output);
    EXPECT_EQ(CountOf(setup, " /ColorSpace defineRes pop\n"), 2);
    EXPECT_EQ(CountOf(setup, "/FunctionDictionary defineRes pop\n"), 1);
    EXPECT_LT(setup.find("/N12 ["), setup.find("/N10 ["));
    EXPECT_LT(setup.find("/N20 <<"), setup.find("/N10 ["));
    for (const unsigned page : {1U, 2U, 3U}) {
        EXPECT_EQ(PageSetupOf(conversion.output, page), "");
    }
}

TEST(ColorSpaceRegistry, DefinesABaseOfTwoPagesInTheSetupWhenItsUsersAreOfOnePageEach) {
    PdfBuilder pdf = Pages(
        {"/Resources << /ColorSpace << /A 10 0 R >> >>", "/Resources << /ColorSpace << /A 11 0 R >> >>"});
    pdf.Object(10, "[/Pattern 12 0 R]").Object(11, "[/Pattern 12 0 R]").Object(12, kCalGray);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(SetupOf(conversion.output), Definition("N12", kCalGrayText));
    EXPECT_EQ(PageSetupOf(conversion.output, 1), Definition("N10", "[/Pattern /N12 /ColorSpace findRes ]"));
    EXPECT_EQ(PageSetupOf(conversion.output, 2), Definition("N11", "[/Pattern /N12 /ColorSpace findRes ]"));
}

TEST(ColorSpaceRegistry, NumbersADirectSpaceAndDefinesItFirst) {
    PdfBuilder pdf = SpacePage("/B cs 0.5 sc", "/A 10 0 R /B " + std::string(kCalGray));
    const Drawing page = Draw(pdf.Object(10, kCalRgb));
    EXPECT_EQ(page.setup, Definition("N589823", kCalGrayText) + Definition("N10", kCalRgbText));
    EXPECT_EQ(page.content, "/N589823 /ColorSpace findRes  cs\n0.5 sc\n");
}

// Every piece of the page is refused once.
TEST(ColorSpaceRegistry, StopsAtTheFirstPieceThatTheHostRefuses) {
    PdfBuilder pdf = SpacePage("1 w", "/A 10 0 R /B 11 0 R /C 12 0 R");
    pdf.Object(10, "[/Indexed /DeviceRGB 1 13 0 R]").Stream(13, kTable);
    pdf.Object(11, "[/Separation /A " + std::string(kCalRgb) + " " + kInk + "]");
    pdf.Object(12, "[/Indexed 11 0 R 1 14 0 R]").Stream(14, "00FF>", "/Filter /ASCIIHexDecode");
    const std::string bytes = pdf.Bytes();
    std::uint64_t refused = 0;
    for (int status = 7; status == 7; ++refused) {
        const Job job;
        Pieces::Reset();
        ASSERT_EQ(OpenFile(bytes), 0);
        ASSERT_EQ(ZORVAN_OutputGlobalResources(), 0);
        Pieces::Refuse(Pieces::Calls() + 1 + refused, 7, false);
        status = ZORVAN_OutputOnePage(1);
        EXPECT_TRUE(status == 7 || status == 0) << status;
        EXPECT_EQ(Pieces::CallsAfterRefusal(), 0U) << refused;
        EXPECT_EQ(GetErrorInfo().code, 0) << refused;
        ZORVAN_OneFileEnd();
    }
    EXPECT_GT(refused, 8U);
}

}  // namespace
}  // namespace zorvan::test
