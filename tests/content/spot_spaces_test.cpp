// Separation and DeviceN spaces: colourants, alternates and tint transforms.
#include <string>

#include <gmock/gmock.h>

#include "content/space_page.h"

namespace zorvan::test {
namespace {

using ::testing::StartsWith;

TEST(SeparationSpace, AsksForItsFunctionAsADictionary) {
    PdfBuilder pdf = SpacePage().Object(10, "[/Separation /Spot /DeviceCMYK 20 0 R]").Object(20, kInk);
    const Definitions defined = Defined(pdf);
    EXPECT_EQ(defined.document,
              std::string("/N20 ") + kInkDictionary + "/FunctionDictionary defineRes pop\n");
    EXPECT_EQ(defined.page,
              Definition("N10", "[/Separation (Spot) DefaultCMYK  /N20 /FunctionDictionary findRes ]"));
}

TEST(SeparationSpace, HoldsAFunctionOfItsOwn) {
    const Definitions defined =
        Defined(SpacePage().Object(10, "[/Separation /Spot /DeviceCMYK " + std::string(kInk) + "]"));
    EXPECT_EQ(defined.document, "");
    EXPECT_EQ(defined.page,
              Definition("N10", std::string("[/Separation (Spot) DefaultCMYK  ") + kInkDictionary + "]"));
}

TEST(SeparationSpace, HoldsAStitchingFunctionOfItsOwnWhosePartsAreDefinedBefore) {
    PdfBuilder pdf = SpacePage().Object(
        10,
        "[/Separation /Spot /DeviceCMYK << /FunctionType 3 /Domain [0 1] /Functions [20 0 R 20 0 R] "
        "/Bounds [0.5] /Encode [0 1 1 0] >>]");
    const Definitions defined = Defined(pdf.Object(20, kInk));
    EXPECT_EQ(defined.document,
              std::string("/N20 ") + kInkDictionary + "/FunctionDictionary defineRes pop\n");
    EXPECT_EQ(defined.page,
              Definition("N10",
                         "[/Separation (Spot) DefaultCMYK  <</FunctionType 3\n/Domain [0 1 ]\n"
                         "/Functions [/N20 /FunctionDictionary findRes  /N20 /FunctionDictionary findRes  ]\n"
                         "/Bounds [0.5 ]\n/Encode [0 1 1 0 ]\n>>\n]"));
}

TEST(SeparationSpace, HasOneBlankBehindEachKindOfAlternate) {
    const auto alternate = [](const std::string& space) {
        PdfBuilder pdf = SpacePage().Object(10, "[/Separation /A " + space + " 20 0 R]").Object(20, kInk);
        return Between(Defined(pdf.Object(12, kCalRgb)).page, "/N10 [/Separation (A) ",
                       "/N20 /FunctionDictionary findRes ]");
    };
    EXPECT_EQ(alternate("/DeviceRGB"), "DefaultRGB  ");
    EXPECT_EQ(alternate("[/DeviceRGB]"), "DefaultRGB  ");
    EXPECT_EQ(alternate(kCalRgb), std::string(kCalRgbText) + " ");
    EXPECT_EQ(alternate("12 0 R"), "/N12 /ColorSpace findRes  ");
}

TEST(SeparationSpace, DefinesAReferencedAlternateFirst) {
    PdfBuilder pdf = SpacePage().Object(10, "[/Separation /A 12 0 R 20 0 R]").Object(20, kInk);
    EXPECT_THAT(Defined(pdf.Object(12, kCalRgb)).page, StartsWith(Definition("N12", kCalRgbText) + "/N10 "));
}

TEST(SeparationSpace, HasItsColorantAsAString) {
    const auto colorant = [](const std::string& name) {
        PdfBuilder pdf = SpacePage().Object(10, "[/Separation " + name + " /DeviceCMYK 20 0 R]");
        return Between(Defined(pdf.Object(20, kInk)).page, "[/Separation ", " DefaultCMYK");
    };
    EXPECT_EQ(colorant("/All"), "(All)");
    EXPECT_EQ(colorant("/None"), "(None)");
    EXPECT_EQ(colorant("/PANTONE#20186#20C"), "(PANTONE 186 C)");
    EXPECT_EQ(colorant("/A#28b#29#5Cc"), "(A\\(b\\)\\\\c)");
    EXPECT_EQ(colorant("/#29"), "(\\))");
    EXPECT_EQ(colorant("/" + std::string(126, 'a')), "(" + std::string(126, 'a') + ")");
    EXPECT_EQ(colorant("/" + std::string(120, 'a') + "#28#28"), "(" + std::string(120, 'a') + "\\(\\()");
}

TEST(DeviceNSpace, AsksForItsFunctionAsAProcedure) {
    PdfBuilder pdf = SpacePage().Object(10, "[/DeviceN [/Spot] /DeviceCMYK 20 0 R]").Object(20, kInk);
    const Definitions defined = Defined(pdf);
    EXPECT_EQ(defined.document, std::string("/N20 ") + kInkProcedure + "/Function defineRes pop\n");
    EXPECT_EQ(defined.page, Definition("N10", "[/DeviceN [(Spot) ] DefaultCMYK  /N20 /Function findRes ]"));
}

TEST(DeviceNSpace, NamesEachColorant) {
    PdfBuilder pdf = SpacePage().Object(10, "[/DeviceN [/Cyan /A#29 21 0 R] 12 0 R 20 0 R]");
    pdf.Object(12, kCalRgb).Object(21, "/Third");
    pdf.Stream(20, "{ pop }", "/FunctionType 4 /Domain [0 1 0 1 0 1] /Range [0 1 0 1]");
    const Definitions defined = Defined(pdf);
    EXPECT_EQ(defined.document, "/N20 { pop } bind\n/Function defineRes pop\n");
    EXPECT_EQ(defined.page, Definition("N12", kCalRgbText) +
                                Definition("N10",
                                           "[/DeviceN [(Cyan) (A\\)) (Third) ] /N12 /ColorSpace findRes  "
                                           "/N20 /Function findRes ]"));
}

TEST(DeviceNSpace, NumbersAFunctionOfItsOwn) {
    const Definitions defined =
        Defined(SpacePage().Object(10, "[/DeviceN [/Spot] /DeviceCMYK " + std::string(kInk) + "]"));
    EXPECT_EQ(defined.document, std::string("/N589823 ") + kInkProcedure + "/Function defineRes pop\n");
    EXPECT_EQ(defined.page,
              Definition("N10", "[/DeviceN [(Spot) ] DefaultCMYK  /N589823 /Function findRes ]"));
}

TEST(SpotSpaces, ShareAFunctionInTheFormOfItsFirstUser) {
    const std::string separation = "[/Separation /A /DeviceCMYK 20 0 R]";
    const std::string deviceN = "[/DeviceN [/A] /DeviceCMYK 20 0 R]";
    for (const bool separationFirst : {true, false}) {
        PdfBuilder pdf = SpacePage("n", "/A 10 0 R /B 11 0 R").Object(20, kInk);
        pdf.Object(10, separationFirst ? separation : deviceN);
        pdf.Object(11, separationFirst ? deviceN : separation);
        const Definitions defined = Defined(pdf);
        const std::string category = separationFirst ? "/FunctionDictionary" : "/Function";
        EXPECT_EQ(defined.document, std::string("/N20 ") +
                                        (separationFirst ? kInkDictionary : kInkProcedure) + category +
                                        " defineRes pop\n");
        EXPECT_EQ(CountOf(defined.page, "/N20 " + category + " findRes ]"), 2);
    }
}

TEST(SpotSpaces, RecordAFunctionThatIsNone) {
    for (const std::string space :
         {"[/Separation /A /DeviceCMYK 20 0 R]", "[/DeviceN [/A] /DeviceCMYK 20 0 R]"}) {
        for (const std::string function : {"<< /FunctionType 1 /Domain [0 1] >>", "/Identity", "<< >>", "[5]",
                                           "<< /FunctionType (2) >>"}) {
            const Conversion conversion = Convert(SpacePage().Object(10, space).Object(20, function).Bytes());
            EXPECT_EQ(conversion.pages, std::vector<int>{0}) << space << function;
            EXPECT_EQ(conversion.error.code, -4078) << space << function;
            EXPECT_EQ(SetupOf(conversion.output), "") << space << function;
        }
    }
}

}  // namespace
}  // namespace zorvan::test
