// Named resources and extended graphics states.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

constexpr std::string_view kCategories =
    "[/Function /ExtGState /Form /Shading /FunctionDictionary /MadePattern /PatternPrototype /DataSource] ";

TEST(Resources, HaveTheCategoriesOfTheProcset) {
    EXPECT_EQ(
        Printed(std::string(kCategories) + "{/Category resourcestatus {pop pop 1} {0} ifelse =only} forall"),
        "11111111");
}

TEST(Resources, HoldDictionariesAndProceduresInTheSameCategory) {
    EXPECT_EQ(Printed("/N1 {1 add} /Function defineRes pop /N2 << /FunctionType 2 >> /Function defineRes pop "
                      "2 /N1 /Function findRes exec = /N2 /Function findRes /FunctionType get ="),
              "3\n2\n");
}

TEST(Resources, KeepCategoriesInGlobalAndInstancesInLocalMemory) {
    EXPECT_EQ(
        Printed("/ExtGState /Category findresource gcheck = /N1 << /LW 1 >> /ExtGState defineRes gcheck ="),
        "true\nfalse\n");
}

TEST(Resources, OfAPageGoWithThePage) {
    const std::string text =
        PrologJob()
            .Setup("/N1 << /LW 1 >> /ExtGState defineRes pop\n")
            .Page("/N2 /ExtGState findRes type =", "/N2 << /LW 2 >> /ExtGState defineRes pop\n")
            .Page("/N2 /ExtGState findRes type = /N1 /ExtGState findRes type =")
            .Run()
            .text;
    EXPECT_EQ(text, "dicttype\nnulltype\ndicttype\n");
}

TEST(Resources, ThatAreMissingAreNull) {
    EXPECT_EQ(Printed(std::string(kCategories) +
                      "{dup /PatternPrototype ne {/N9 exch findRes null eq =} {pop} ifelse} forall"
                      " /N9 /NoSuchCategory findRes null eq = count ="),
              "true\ntrue\ntrue\ntrue\ntrue\ntrue\ntrue\ntrue\n0\n");
}

TEST(Resources, WithoutAnInstanceAreNotDefined) {
    EXPECT_EQ(Printed("q /N9  /ColorSpace defineRes pop count = Q /N9 5 /ColorSpace defineRes pop /N9 "
                      "/ColorSpace findRes null eq = count ="),
              "1\ntrue\n0\n");
    EXPECT_EQ(Printed("/N9  /ColorSpace defineRes pop count ="), "0\n");
}

TEST(Resources, ReplaceNoCategoryThatTheDeviceHas) {
    const std::string mine =
        "currentglobal true setglobal /Generic /Category findresource dup length 1 add dict copy dup /Mine 1 "
        "put\n"
        "/DataSource exch /Category defineresource pop setglobal\n";
    EXPECT_EQ(PrologJob().Before(mine).Page("/DataSource /Category findresource /Mine known =").Run().text,
              "true\n");
}

TEST(ExtGState, AppliesItsEntries) {
    EXPECT_EQ(
        Printed(
            "/N1 <<\n/SA true\n/OP false\n/op false\n/SM 0.5\n/LW 2.5\n/LC 1\n/LJ 2\n/ML 3\n/D [ [3 2 ] 1 "
            "]\n/FL 4\n"
            "/RI /Saturation\n>> /ExtGState defineRes pop\n/N1 /ExtGState findRes  gs\nfalse setoverprint\n"
            "currentlinewidth = currentlinecap = currentlinejoin = currentmiterlimit = currentdash == == "
            "currentflat = currentstrokeadjust = currentsmoothness = count ="),
        "2.5\n1\n2\n3.0\n1.0\n[3 2]\n4.0\ntrue\n0.5\n0\n");
}

TEST(ExtGState, AppliesTheDevicesEntries) {
    EXPECT_EQ(Printed("<< /TR {1 exch sub} /BG {pop 0} /UCR {pop 0.5} >> gs 0.25 currenttransfer exec = "
                      "1 currentblackgeneration exec = 1 currentundercolorremoval exec ="),
              "0.75\n0\n0.5\n");
    EXPECT_EQ(Printed("<< /TR [{pop 0.1} {pop 0.2} {pop 0.3} {pop 0.4}] >> gs currentcolortransfer 4 {1 exch "
                      "exec =} repeat"),
              "0.4\n0.3\n0.2\n0.1\n");
}

TEST(ExtGState, TakesTheDevicesDefaultsByTheirNames) {
    EXPECT_EQ(
        Printed("<< /TR {pop 0.5} >> gs << /TR /_defaulttransfer load /BG /_defaultblackgeneration load /UCR "
                "/_defaultundercolorremoval load /HT /_defaulthalftone load >> gs 0.25 currenttransfer exec "
                "= count ="),
        "0.25\n0\n");
}

TEST(ExtGState, PassesOverEntriesThatTheDeviceRefuses) {
    EXPECT_EQ(Printed("<< /LC 9 /LJ (x) /ML null /D [ [0 0 ] 1 ] /TR 5 /HT (x) /BG null /UCR [] /OP true "
                      "/OPM 1 /FL (x) /RI 7 "
                      "/SM 3 /SA 0 /Other 5 /LW 4 >> gs currentlinewidth = count ="),
              "4.0\n0\n");
}

TEST(ExtGState, LeavesTheDeviceAloneInsideAPatternsCell) {
    EXPECT_EQ(Printed("<< /TR {pop 0.5} /LW 3 >> gsDI 0.25 currenttransfer exec = currentlinewidth ="),
              "0.25\n3.0\n");
}

const std::string kHalf = "<</FunctionType 2 /Domain [0 1] /C0 [0] /C1 [0.5] /N 1>> ";

TEST(ExtGState, TakesFunctionsAsDictionaries) {
    const std::string told =
        "1 currenttransfer exec = 1 currentblackgeneration exec = 1 currentundercolorremoval exec = count =";
    const std::string entries = "<< /TR " + kHalf + "/BG " + kHalf + "/UCR " + kHalf + ">> ";
    EXPECT_EQ(Printed(entries + "gs " + told), "0.5\n0.5\n0.5\n0\n");
    EXPECT_EQ(Printed("/N1 " + entries + "/ExtGState defineRes pop /N1 /ExtGState findRes gs " + told),
              "0.5\n0.5\n0.5\n0\n");
    EXPECT_EQ(Printed("<< /TR [" + kHalf +
                      "{} null {0.1 mul} ] >> gs currentcolortransfer 4 {1 exch exec =} repeat"),
              "0.1\n1\n1\n0.5\n");
    EXPECT_EQ(Printed("<< /TR [" + kHalf +
                      "/_defaulttransfer load {} {} ] >> gs currentcolortransfer pop pop pop 1 exch "
                      "exec ="),
              "0.5\n");
}

TEST(ExtGState, KeepsWhatItHasWhereAFunctionIsMissing) {
    EXPECT_EQ(
        Printed("/N1 << /TR {0.5 mul} /BG {pop 0} >> /ExtGState defineRes gs "
                "/N2 << /TR null /BG /N9 /FunctionDictionary findRes /UCR << >> /HT null /Font [null 5] "
                "/Font (x) /LW 7 >> /ExtGState defineRes gs "
                "1 currenttransfer exec = 1 currentblackgeneration exec = currentlinewidth = count ="),
        "0.5\n0\n7.0\n0\n");
}

// The device's own may do what they like: here they are no functions at all.
TEST(ExtGState, LooksIntoNoneOfTheDevicesDefaults) {
    const std::string own =
        "{dup pop (own) pop pop 0} dup setblackgeneration setundercolorremoval\n"
        "<</HalftoneType 1 /Frequency 33 /Angle 0 /SpotFunction {pop}>> sethalftone\n"
        "currenthalftone /SpotFunction {stop} put\n";
    const std::string page =
        "<< /TR /_defaulttransfer load /BG /_defaultblackgeneration load /UCR "
        "/_defaultundercolorremoval load /HT /_defaulthalftone load >> gs "
        "PDFVars /_defaulthalftone get /SpotFunction known = count =";
    EXPECT_EQ(PrologJob().Before(own).Page(page).Run().text, "true\n0\n");
}

TEST(ExtGState, SetsItsFontAsTfDoes) {
    EXPECT_EQ(Printed("/N12 /Courier findfont definefont pop << /Font [/N12 7] >> gs TextFont = TextSize = "
                      "FontReady = count ="),
              "N12\n7\nfalse\n0\n");
    EXPECT_EQ(Printed("<< /Font [/NoSuchFont 7] >> gs TextFont == << /Font [ 5] >> gs << /Font [] >> gs << "
                      "/Font 5 >> gs "
                      "count ="),
              "null\n0\n");
}

TEST(DeviceDefaults, AreReinstatedByEveryPage) {
    const std::string changed =
        "{pop 0.5} settransfer {pop 0} setblackgeneration {pop 0} setundercolorremoval\n";
    const std::string told =
        "0.25 currenttransfer exec = currentblackgeneration /_defaultblackgeneration load eq =";
    EXPECT_EQ(PrologJob().Before("/mark0 0 def\n").Setup(changed).Page(told).Run().text, "0.25\ntrue\n");
    EXPECT_EQ(PrologJob().Page(changed).Page(told).Run().text, "0.25\ntrue\n");
}

constexpr std::string_view kAxial =
    "<</ShadingType 2\n/ColorSpace DefaultRGB \n/Coords [0 0 100 0 ]\n/Function << /FunctionType 2 /Domain "
    "[0 1] /C0 [1 0 0] "
    "/C1 [0 0 1] /N 1 >>\n/Extend [true false ]\n>>\n";

TEST(Shading, PaintsTheClipAndKeepsTheColor) {
    const Picture page =
        Painted("0 1 0 rg 0 0 5 5 re f q 20 20 60 60 re W n " + std::string(kAxial) + " sh\nQ 0 90 5 5 re f");
    EXPECT_GT(page.At(25, 50).at(0), 150);
    EXPECT_GT(page.At(75, 50).at(2), 150);
    EXPECT_EQ(page.At(10, 50), kWhite);
    EXPECT_EQ(page.At(2, 92), kGreen);
}

TEST(Shading, ThatIsIncompletePaintsNothing) {
    EXPECT_EQ(Painted("<</ShadingType 2\n>>\n sh << >> sh 1 0 0 rg 10 10 20 20 re f").At(20, 20), kRed);
}

TEST(Form, IsPaintedInTheColorInForce) {
    const std::string setup =
        "/N5 <<\n/FormType 1\n/BBox [0 0 50 50 ]\n/Matrix [1 0 0 1 5 5 ]\n/PaintProc {pop save {\n0 0 10 10 "
        "re\nf\n"
        "0 0 1 rg\n20 0 10 10 re\nf\n40 0 90 10 re\nf\n} exec restore} bind >> /Form defineRes pop\n";
    const Picture page = PrologJob()
                             .Page(
                                 "1 0 0 rg /N5 /Form findRes EF\n0 80 10 10 re f 1 0 0 1 0 40 cm 0 1 0 rg "
                                 "/N5 /Form findRes EF\n",
                                 setup)
                             .Paint()
                             .at(0);
    EXPECT_EQ(page.At(8, 8), kRed);
    EXPECT_EQ(page.At(28, 8), kBlue);
    EXPECT_EQ(page.At(60, 8), kWhite);
    EXPECT_EQ(page.At(5, 85), kRed);
    EXPECT_EQ(page.At(8, 48), kGreen);
}

}  // namespace
}  // namespace zorvan::test
