// Every operator that needs no resource, and what it becomes.
#include <string>

#include <gtest/gtest.h>

#include "api/session.h"
#include "support/host.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

struct Translated {
    const char* content;
    const char* output;
};

void ExpectEach(std::initializer_list<Translated> cases) {
    for (const Translated& each : cases) {
        const Conversion conversion = Convert(OnePage(each.content).Bytes());
        EXPECT_EQ(ContentOf(conversion.output), each.output) << each.content;
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << each.content;
        EXPECT_EQ(conversion.error.code, 0) << each.content;
    }
}

/// Converts content that must fail; what was written before the failure stays.
void ExpectFailure(int code, std::string_view content, std::string_view written) {
    const PdfBuilder pdf = OnePage(content);
    const Conversion conversion = Convert(PdfBuilder(pdf).Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{code}) << content;
    EXPECT_EQ(conversion.error.code, code) << content;
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(4)) << content;
    EXPECT_EQ(Between(conversion.output, " RC\n", "%%Trailer"), written) << content;
}

TEST(Operators, OfOneNumberWriteIntegersAndRealsAlike) {
    ExpectEach({{"0.50 w", "0.5 w\n"}, {"2 w", "2 w\n"}, {"2.0 w", "2 w\n"}, {"-0.0 w", "0 w\n"}});
    for (const std::string op : {"w", "J", "j", "M", "i", "g", "G"}) {
        EXPECT_EQ(Translate("1 " + op + " 0.25 " + op + " -3 " + op),
                  "1 " + op + "\n0.25 " + op + "\n-3 " + op + "\n");
    }
}

TEST(Operators, OfSeveralNumbersWriteThemInTheirOrder) {
    ExpectEach({{"1 2 m", "1 2 m\n"},
                {"1.5 2 l", "1.5 2 l\n"},
                {"1 2 3 4 5 6 c", "1 2 3 4 5 6 c\n"},
                {"1 2 3 4 v", "1 2 3 4 v\n"},
                {"1 2 3 4 y", "1 2 3 4 y\n"},
                {"-1 .5 3 4 re", "-1 0.5 3 4 re\n"},
                {"1 0 0 1 72 72 cm", "1 0 0 1 72 72 cm\n"},
                {"1 0.5 0 rg", "1 0.5 0 rg\n"},
                {"1 0.5 0 RG", "1 0.5 0 RG\n"},
                {"0 0 0 1 k", "0 0 0 1 k\n"},
                {"0 0 0 1 K", "0 0 0 1 K\n"},
                {"500 0 d0", "500 0 d0\n"},
                {"500 0 1 2 3 4 d1", "500 0 1 2 3 4 d1\n"}});
}

TEST(Operators, WithoutOperandsAreWrittenAsTheyAre) {
    for (const std::string op : {"q", "Q", "h", "n", "S", "s", "f", "f*", "B", "B*", "b", "b*", "W", "W*"}) {
        EXPECT_EQ(Translate(op), op + "\n");
    }
}

TEST(Operators, WriteTheObsoleteFillAsFill) {
    ExpectEach({{"F", "f\n"}});
}

TEST(Operators, TakeTheTopmostOperandsAndLeaveTheRest) {
    ExpectEach({{"9 8 1 2 m 3 l", "1 2 m\n8 3 l\n"}, {"9 8 7 0.5 rg w", "8 7 0.5 rg\n9 w\n"}});
}

TEST(Operators, WriteDashesWithEveryElementFollowedByABlank) {
    ExpectEach({{"[3 2] 0 d", "[3 2 ] 0 d\n"},
                {"[] 0 d", "[] 0 d\n"},
                {"[0.5 1.0] 1.5 d", "[0.5 1 ] 1.5 d\n"},
                {"[1 (a) /B] 0 d", "[1 0 0 ] 0 d\n"}});
}

TEST(Operators, CountADashThatIsNoArrayAsEmpty) {
    ExpectEach({{"5 1 d", "[] 1 d\n"}, {"/A 1 d", "[] 1 d\n"}, {"<< /A 1 >> 1 d", "[] 1 d\n"}});
}

TEST(Operators, WriteTheIntentsName) {
    ExpectEach(
        {{"/Perceptual ri", "/Perceptual ri\n"}, {"/My#20Own ri", "/My$Own ri\n"}, {"5 ri", "/ ri\n"}});
}

TEST(Operators, WriteAnIntentsWholeNameAsOneToken) {
    const std::string name(126, 'x');
    EXPECT_EQ(Translate("/" + name + " ri"), "/" + name + " ri\n");
    EXPECT_EQ(Translate("/A#28#29#3C#3E#5B#5D#7B#7D#2F#25 ri"), "/A$$$$$$$$$$ ri\n");
    EXPECT_EQ(Translate("/A#5B#28x#29print#5D ri"), "/A$$x$print$ ri\n");
}

TEST(Operators, CountWhatIsNoNumberAsZero) {
    ExpectEach({{"/A w", "0 w\n"},
                {"(x) w", "0 w\n"},
                {"true 1 m", "0 1 m\n"},
                {"null w", "0 w\n"},
                {"[1] w", "0 w\n"},
                {"<< /A 1 >> w", "0 w\n"}});
}

TEST(Operators, CutNumbersOfTheFileToFloats) {
    ExpectEach({{"123.456 w", "123.456001 w\n"}, {"0.3333333 w", "0.333333 w\n"}, {"-0.0000001 w", "0 w\n"}});
}

TEST(Operators, WithTooFewOperandsWriteNothingAndEndTheContent) {
    constexpr std::pair<int, const char*> kNeeded[] = {
        {6, "cm"}, {1, "w"},   {1, "J"},   {1, "j"},   {1, "M"},  {1, "i"},  {2, "d"},  {1, "ri"}, {1, "gs"},
        {1, "g"},  {1, "G"},   {3, "rg"},  {3, "RG"},  {4, "k"},  {4, "K"},  {1, "cs"}, {1, "CS"}, {1, "sc"},
        {1, "SC"}, {1, "scn"}, {1, "SCN"}, {1, "sh"},  {2, "m"},  {2, "l"},  {6, "c"},  {4, "v"},  {4, "y"},
        {4, "re"}, {2, "d0"},  {6, "d1"},  {1, "Do"},  {1, "Tc"}, {1, "Tw"}, {1, "Tz"}, {1, "TL"}, {1, "Ts"},
        {1, "Tr"}, {2, "Tf"},  {2, "Td"},  {2, "TD"},  {6, "Tm"}, {1, "Tj"}, {1, "'"},  {3, "\""}, {1, "TJ"},
        {1, "PS"}, {1, "BMC"}, {1, "MP"},  {2, "BDC"}, {2, "DP"}};
    for (const auto& [needed, op] : kNeeded) {
        std::string content = "n ";
        for (int operand = 1; operand < needed; ++operand) {
            content += "1 ";
        }
        ExpectFailure(-4093, content + op + " S", "n\n");
    }
}

TEST(Operators, OfMarkedContentAreDroppedWithTheirOperands) {
    ExpectEach({{"/Span << /MCID 0 >> BDC /Artifact BMC 1 w EMC EMC", "1 w\n"},
                {"/A MP /A << /B [1 2] >> DP 2 w", "2 w\n"},
                {"/OC /Layer BDC 1 0 0 1 5 5 cm EMC", "1 0 0 1 5 5 cm\n"},
                {"BX EX BX 1 w EX", "1 w\n"}});
}

TEST(Operators, OfFormsAndShadingsWantAName) {
    ExpectFailure(-4095, "n 5 Do S", "n\n");
    ExpectFailure(-4095, "n (x) Do S", "n\n");
}

TEST(DeviceColors, AreWrittenByTheirDefaultNames) {
    ExpectEach({{"/DeviceGray cs 0.5 sc", "DefaultGray cs\n0.5 sc\n"},
                {"/DeviceRGB cs 1 0 0 sc", "DefaultRGB cs\n1 0 0 sc\n"},
                {"/DeviceCMYK CS 0 0 0 1 SC", "DefaultCMYK CS\n0 0 0 1 SC\n"},
                {"/DeviceRGB cs 1 0 0 scn /DeviceGray CS 1 SCN",
                 "DefaultRGB cs\n1 0 0 scn\nDefaultGray CS\n1 SCN\n"}});
}

TEST(DeviceColors, CountByTheSpaceOfFillAndStrokeEach) {
    ExpectEach({{"1 0 0 rg 0 0 0 1 K 1 2 3 sc 1 2 3 4 SC", "1 0 0 rg\n0 0 0 1 K\n1 2 3 sc\n1 2 3 4 SC\n"},
                {"0 0 0 1 k 0.5 G 1 2 3 4 sc 1 SC", "0 0 0 1 k\n0.5 G\n1 2 3 4 sc\n1 SC\n"},
                {"1 1 1 RG 0 g 0 0 1 SC 1 sc", "1 1 1 RG\n0 g\n0 0 1 SC\n1 sc\n"}});
}

TEST(DeviceColors, BeginAsGray) {
    ExpectEach({{"0.5 sc 0.25 SC", "0.5 sc\n0.25 SC\n"}});
}

TEST(DeviceColors, AreSavedAndRestoredWithTheState) {
    ExpectEach({{"q 1 0 0 rg 1 0 0 sc Q 0.5 sc", "q\n1 0 0 rg\n1 0 0 sc\nQ\n0.5 sc\n"},
                {"1 0 0 RG q 0 G q 0 0 0 1 K Q 1 SC Q 1 2 3 SC",
                 "1 0 0 RG\nq\n0 G\nq\n0 0 0 1 K\nQ\n1 SC\nQ\n1 2 3 SC\n"}});
}

TEST(DeviceColors, OutliveARestoreTooMany) {
    ExpectEach({{"1 0 0 rg Q Q 0 1 0 sc", "1 0 0 rg\nQ\nQ\n0 1 0 sc\n"}});
}

TEST(DeviceColors, FailWithFewerOperandsThanTheSpaceHasComponents) {
    ExpectFailure(-4093, "/DeviceRGB cs 1 0 sc S", "DefaultRGB cs\n");
    ExpectFailure(-4093, "/DeviceCMYK CS 1 0 0 SCN S", "DefaultCMYK CS\n");
}

TEST(PatternSpace, TakesNoNumbersAndLeavesThemOnTheStack) {
    ExpectEach({{"/Pattern cs 0.5 sc w", "/Pattern cs\n0.5 w\n"},
                {"/Pattern CS 0.25 SC w", "/Pattern CS\n0.25 w\n"}});
}

}  // namespace
}  // namespace zorvan::test
