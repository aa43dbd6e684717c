// The procsets' dictionaries: their sizes, what may change, and what stands where.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

// A device may refuse to enlarge a dictionary, so def and put say when one is full.
constexpr std::string_view kStrict =
    "/def {currentdict dup length exch maxlength ge currentdict 3 index known not and\n"
    "{(full at ) print 1 index =} if systemdict /def get exec} bind def\n"
    "/put {2 index type /dicttype eq {2 index dup length exch maxlength ge 3 index 3 index known not and\n"
    "{(full at ) print 1 index =} if} if systemdict /put get exec} bind def\n";

TEST(Dictionaries, HaveTheirFixedSizes) {
    EXPECT_EQ(Printed("PDF maxlength = PDFVars maxlength = PDFText maxlength = PDFImage maxlength = PDFIVars "
                      "maxlength ="),
              "150\n86\n75\n38\n20\n");
}

TEST(Dictionaries, StandInUserdictAndInPdf) {
    EXPECT_EQ(
        Printed("[userdict /PDF known userdict /PDFVars known PDF /PDFText known PDF /PDFImage known PDF "
                "/PDFIVars known] =="),
        "[true true true true true]\n");
}

TEST(Dictionaries, NeverOutgrowTheSizeTheyWereMadeWith) {
    const Outcome outcome = PrologJob().Before(kStrict).Page("1 0 0 rg 10 10 20 20 re B /x 1 def q Q").Run();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "");
}

TEST(Dictionaries, OfFunctionsNeverOutgrowTheirSizesEither) {
    const std::string sampled =
        "<</FunctionType 0 /Domain [0 1] /Range [0 1] /Encode [0 1] /Decode [0 1] /Size [2] /BitsPerSample "
        "12 "
        "/DataSource <000fff>>> ";
    const std::string power = "<</FunctionType 2 /Domain [0 1] /N 2 /C0 [0] /C1 [1] /Range [0 1]>> ";
    const std::string stitched =
        "<</FunctionType 3 /Domain [0 1] /Range [0 1] /Bounds [0.5] /Encode [0 1 0 1] /Functions [" +
        sampled + power + "]>> ";
    const std::string lab = "[/CIEBasedABC <</RangeABC [0 100 -9 9 -9 9] /WhitePoint [1 1 1]>>] ";
    const Outcome outcome =
        PrologJob()
            .Before(kStrict)
            .Page("[/Separation (x) DefaultGray " + stitched + "] cs 0.5 sc 0 0 5 5 re f " + lab + "cs " +
                  "<</ShadingType 1 /ColorSpace DefaultGray /Function {add 2 div}>> sh " +
                  "<</ShadingType 2 /Coords [0 0 1 1] /ColorSpace DefaultGray /Function " + stitched +
                  ">> sh " + "<</TR " + stitched + ">> gs")
            .Run();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "");
}

TEST(Dictionaries, AreWatchedByATestThatSeesAFullOne) {
    EXPECT_EQ(
        Interpret("-sDEVICE=nullpage", std::string(kStrict) + "1 dict begin /a 1 def /b 2 def /a 3 def").text,
        "full at b\n");
}

TEST(Dictionaries, KeepNoStateInTheReadOnlyOne) {
    EXPECT_EQ(Printed("PDFVars gcheck == PDFVars wcheck == PDF wcheck =="), "false\ntrue\nfalse\n");
    EXPECT_EQ(Printed("[/DefaultGray /DefaultRGB /DefaultCMYK /sfc /ssc /Clip /LastPaint /QDepth] "
                      "{dup PDF exch known {(in PDF ) print =} {PDFVars exch known not {(missing) =} if} "
                      "ifelse} forall"),
              "");
}

TEST(Dictionaries, HaveTheHelpersOfTheUtilityProcset) {
    EXPECT_EQ(Printed("Level = << /a 1 >> /a getifknown == == << >> /a getifknown == "
                      "/f isdefined? == /nosuch isdefined? == /f here == /x 1 def /x here =="),
              "3\ntrue\n1\nfalse\ntrue\nfalse\nfalse\ntrue\n");
    EXPECT_EQ(Printed("/a 7 dd 8 /b xdd PDFVars /a get = PDFVars /b get = /add2 {1 add} bd 1 add2 = /x /add "
                      "ld 2 3 x ="),
              "7\n8\n2\n5\n");
    EXPECT_EQ(Printed("StartLoad 1 array gcheck == EndLoad 1 array gcheck =="), "true\nfalse\n");
}

TEST(Dictionaries, DefineInLocalMemoryAlsoWhenTheJobAllocatesInGlobalMemory) {
    const Outcome outcome =
        PrologJob().Before("true setglobal\n").Page("PDFVars gcheck = PDF gcheck = currentglobal =").Run();
    EXPECT_EQ(outcome.text, "false\nfalse\nfalse\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Dictionaries, LeavePackingAsTheyFoundIt) {
    EXPECT_EQ(Printed("currentpacking ="), "false\n");
}

}  // namespace
}  // namespace zorvan::test
