// Extended graphics states: each key, what stands for functions, halftones and fonts, and where it is
// defined.
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "content/xobject_page.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;

/// A document of one page with these graphics states; the objects from 10 on are the test's.
PdfBuilder StatePage(std::string_view content = "n", std::string_view states = "/GS 10 0 R") {
    return OnePage(content, "/Resources << /ExtGState << " + std::string(states) + " >> >>");
}

/// What the document's setup defines; everything must go well.
std::string Defined(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    EXPECT_EQ(PageSetupOf(conversion.output), "");
    return SetupOf(conversion.output);
}

std::string State(std::string_view lines, std::string_view overprint = "/OP false\n/op false\n") {
    return "/N10 <<\n" + std::string(overprint) + std::string(lines) + ">> /ExtGState defineRes pop\n";
}

/// Functions and halftones that states use: 20 and 21 are functions, 30 is a halftone and 40 a font.
PdfBuilder WithUsed(PdfBuilder pdf) {
    pdf.Object(20, "<< /FunctionType 2 /Domain [0 1] /N 2 >>");
    pdf.Stream(21, "{ 1 exch sub }", "/FunctionType 4 /Domain [0 1] /Range [0 1]");
    pdf.Object(30, "<< /Type /Halftone /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction /Round >>");
    return pdf.Object(40, "<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>");
}

constexpr const char* kSquare =
    "/N20 [7 dict begin\n/Domain [0 1 ] def\n/C0 [0] def\n/C1 [1] def\n/N 2 def\n/DimOut 1 def\n"
    "currentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n"
    "/Function defineRes pop\n";
constexpr const char* kNegative = "/N21 { 1 exch sub } bind\n/Function defineRes pop\n";
constexpr const char* kScreen =
    "/N30 <</HalftoneType 1\n/Frequency 60\n/Angle 45\n/SpotFunction /Round /Function findRes\n"
    ">> /Halftone defineRes pop\n";

/// What becomes of a state with these entries, object 10, and of what it uses.
std::string Defined(const std::string& entries) {
    return Defined(WithUsed(StatePage().Object(10, "<< " + entries + " >>")));
}

// --- the simple keys ---

TEST(ExtGState, OfALineWidthAloneTellsOverprintToo) {
    EXPECT_EQ(Defined("/Type /ExtGState /LW 2"),
              "/N10 <<\n/OP false\n/op false\n/LW 2\n>> /ExtGState defineRes pop\n");
}

TEST(ExtGState, HasItsKeysInOneOrder) {
    EXPECT_EQ(
        Defined("/RI /Perceptual /FL 0.5 /D [[3 2] 0] /ML 10 /LJ 1 /LC 2 /LW 1.5 /Font [40 0 R 12] "
                "/SM 0.02 /HT 30 0 R /TR 20 0 R /UCR 21 0 R /BG 20 0 R /OPM 1 /op true /OP true /SA true"),
        std::string(kSquare) + kNegative + kScreen + "[/N40 /Courier -1 TZ\n" +
            "/N10 <<\n"
            "/SA true\n"
            "/OP true\n"
            "/op true\n"
            "/OPM 1\n"
            "/BG /N20 /Function findRes \n"
            "/UCR /N21 /Function findRes \n"
            "/TR /N20 /Function findRes  \n"
            "/HT /N30 /Halftone findRes \n"
            "/SM 0.02\n"
            "/Font [/N40 12]\n"
            "/LW 1.5\n"
            "/LC 2\n"
            "/LJ 1\n"
            "/ML 10\n"
            "/D [ [3 2 ] 0 ]\n"
            "/FL 0.5\n"
            "/RI /Perceptual\n"
            ">> /ExtGState defineRes pop\n");
}

TEST(ExtGState, TellsStrokeAdjustmentOnlyWhereItIsGiven) {
    EXPECT_EQ(Defined("/SA true"), "/N10 <<\n/SA true\n/OP false\n/op false\n>> /ExtGState defineRes pop\n");
    EXPECT_EQ(Defined("/SA false"),
              "/N10 <<\n/SA false\n/OP false\n/op false\n>> /ExtGState defineRes pop\n");
    EXPECT_EQ(Defined(""), State(""));
    EXPECT_EQ(Defined("/SA null"), State(""));
}

TEST(ExtGState, HasAnOverprintFlagForEachKindOfPainting) {
    EXPECT_EQ(Defined("/OP true"), State("", "/OP true\n/op false\n"));
    EXPECT_EQ(Defined("/op true"), State("", "/OP false\n/op true\n"));
    EXPECT_EQ(Defined("/OP true /op false /OPM 0"), State("/OPM 0\n", "/OP true\n/op false\n"));
}

TEST(ExtGState, ThatMultipliesOverprintsWhateverItsFlags) {
    for (const std::string entries : {"/BM /Multiply", "/BM /Multiply /OP false", "/op false /BM 22 0 R"}) {
        PdfBuilder pdf = StatePage("/GS gs").Object(10, "<< " + entries + " >>").Object(22, "/Multiply");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(SetupOf(conversion.output), State("", "/OP true\n/op true\n")) << entries;
        EXPECT_EQ(ContentOf(conversion.output), "/N10 /ExtGState findRes  gs\ntrue setoverprint\n")
            << entries;
    }
    EXPECT_EQ(Defined("/BM /Screen"), State(""));
    EXPECT_EQ(Defined("/BM /Normal /OP true"), State("", "/OP true\n/op false\n"));
}

TEST(ExtGState, TellsTheOperatorOnlyOfFills) {
    for (const auto& [entries, word] :
         {std::tuple{"/OP true", "false"}, std::tuple{"/op true", "true"}, std::tuple{"/LW 1", "false"}}) {
        PdfBuilder pdf = StatePage("/GS gs").Object(10, "<< " + std::string(entries) + " >>");
        const std::string overprint = word;
        EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output),
                  "/N10 /ExtGState findRes  gs\n" + overprint + " setoverprint\n");
    }
}

TEST(ExtGState, WritesWholeAndOtherNumbers) {
    EXPECT_EQ(Defined("/LW 0.0 /ML 2.50 /FL -0.0 /SM 1"), State("/SM 1\n/LW 0\n/ML 2.5\n/FL 0\n"));
    EXPECT_EQ(Defined("/LW 123.456"), State("/LW 123.456001\n"));
    EXPECT_EQ(Defined("/LC 0 /LJ 2 /OPM 1"), State("/OPM 1\n/LC 0\n/LJ 2\n"));
}

TEST(ExtGState, WritesItsDash) {
    EXPECT_EQ(Defined("/D [[3 2] 0]"), State("/D [ [3 2 ] 0 ]\n"));
    EXPECT_EQ(Defined("/D [[] 0]"), State("/D [ [] 0 ]\n"));
    EXPECT_EQ(Defined("/D [[1.5] 0.25]"), State("/D [ [1.5 ] 0.25 ]\n"));
    EXPECT_EQ(Defined("/D /Solid"), State(""));
    EXPECT_EQ(Defined("/D 3"), State(""));
}

TEST(ExtGState, WritesItsIntentAsOneToken) {
    EXPECT_EQ(Defined("/RI /RelativeColorimetric"), State("/RI /RelativeColorimetric\n"));
    EXPECT_EQ(Defined("/RI /" + std::string(126, 'x')), State("/RI /" + std::string(126, 'x') + "\n"));
    EXPECT_THAT(Defined("/RI /A#20quit#20B"), Not(HasSubstr("A quit B")));
    EXPECT_EQ(Defined("/RI (Perceptual)"), State(""));
}

TEST(ExtGState, TakesItsEntriesByReference) {
    PdfBuilder pdf = StatePage().Object(10, "<< /LW 22 0 R /SA 23 0 R /D 24 0 R /RI 25 0 R /op 23 0 R >>");
    pdf.Object(22, "2.5").Object(23, "true").Object(24, "[26 0 R 22 0 R]").Object(25, "/Saturation");
    EXPECT_EQ(Defined(pdf.Object(26, "[22 0 R 1]")),
              "/N10 <<\n/SA true\n/OP false\n/op true\n/LW 2.5\n/D [ [2.5 1 ] 2.5 ]\n/RI /Saturation\n"
              ">> /ExtGState defineRes pop\n");
}

TEST(ExtGState, PassesOverKeysThatPostScriptLacks) {
    EXPECT_EQ(Defined("/CA 0.5 /ca 0.5 /SMask /None /AIS false /TK true /Type /ExtGState /XYZ 5"), State(""));
}

TEST(ExtGState, WritesNumbersOfAnotherKindByTheNumberRule) {
    EXPECT_EQ(Defined("/LW /Wide /ML (x) /LC [1]"), State("/LW 0\n/LC 0\n/ML 0\n"));
}

// --- functions ---

TEST(ExtGState, HasItsFunctionsAsProcedures) {
    EXPECT_EQ(Defined("/BG 20 0 R"), kSquare + State("/BG /N20 /Function findRes \n"));
    EXPECT_EQ(Defined("/BG2 21 0 R"), kNegative + State("/BG /N21 /Function findRes \n"));
    EXPECT_EQ(Defined("/UCR 20 0 R"), kSquare + State("/UCR /N20 /Function findRes \n"));
    EXPECT_EQ(Defined("/UCR2 21 0 R"), kNegative + State("/UCR /N21 /Function findRes \n"));
    EXPECT_EQ(Defined("/TR 20 0 R"), kSquare + State("/TR /N20 /Function findRes  \n"));
    EXPECT_EQ(Defined("/TR2 21 0 R"), kNegative + State("/TR /N21 /Function findRes  \n"));
}

TEST(ExtGState, NumbersAFunctionOfItsOwn) {
    const std::string negative = "<< /FunctionType 2 /Domain [0 1] /C0 [1] /C1 [0] /N 1 >>";
    const std::string function =
        "[7 dict begin\n/Domain [0 1 ] def\n/C0 [1 ] def\n/C1 [0 ] def\n/N 1 def\n/DimOut 1 def\n"
        "currentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n"
        "/Function defineRes pop\n";
    EXPECT_EQ(Defined("/BG " + negative),
              "/N589823 " + function + State("/BG /N589823 /Function findRes \n"));
    EXPECT_EQ(Defined("/TR [" + negative + " /Identity /Identity " + negative + "]"),
              "/N589823 " + function + "/N589824 " + function +
                  State("/TR [/N589823 /Function findRes  {} {} /N589824 /Function findRes  ]\n"));
}

TEST(ExtGState, HasOneTransferFunctionOrFour) {
    EXPECT_EQ(
        Defined("/TR [20 0 R 21 0 R 20 0 R /Identity]"),
        std::string(kSquare) + kNegative +
            State("/TR [/N20 /Function findRes  /N21 /Function findRes  /N20 /Function findRes  {} ]\n"));
    EXPECT_EQ(Defined("/TR2 [/Identity /Default 21 0 R /Identity]"),
              kNegative + State("/TR [{} /_defaulttransfer load /N21 /Function findRes  {} ]\n"));
}

TEST(ExtGState, HasAnEmptyProcedureForTheIdentity) {
    EXPECT_EQ(Defined("/TR /Identity"), State("/TR {} \n"));
    EXPECT_EQ(Defined("/TR2 /Identity"), State("/TR {} \n"));
}

TEST(ExtGState, KnowsTheDeviceDefaultsOfTheSecondKeys) {
    EXPECT_EQ(Defined("/BG2 /Default"), State("/BG /_defaultblackgeneration load\n"));
    EXPECT_EQ(Defined("/UCR2 /Default"), State("/UCR /_defaultundercolorremoval load\n"));
    EXPECT_EQ(Defined("/TR2 /Default"), State("/TR /_defaulttransfer load\n"));
    EXPECT_EQ(Defined("/HT /Default"), State("/HT /_defaulthalftone load\n"));
}

TEST(ExtGState, KnowsNoDefaultOfTheFirstKeys) {
    EXPECT_EQ(Defined("/BG /Default"), State(""));
    EXPECT_EQ(Defined("/UCR /Default"), State(""));
    EXPECT_EQ(Defined("/TR /Default"), State(""));
}

TEST(ExtGState, PrefersTheSecondKeys) {
    EXPECT_EQ(Defined("/BG 20 0 R /BG2 21 0 R"), kNegative + State("/BG /N21 /Function findRes \n"));
    EXPECT_EQ(Defined("/UCR2 21 0 R /UCR 20 0 R"), kNegative + State("/UCR /N21 /Function findRes \n"));
    EXPECT_EQ(Defined("/TR 20 0 R /TR2 21 0 R"), kNegative + State("/TR /N21 /Function findRes  \n"));
    EXPECT_EQ(Defined("/BG 20 0 R /BG2 /Default"), State("/BG /_defaultblackgeneration load\n"));
    EXPECT_EQ(Defined("/UCR 20 0 R /UCR2 /Default"), State("/UCR /_defaultundercolorremoval load\n"));
    EXPECT_EQ(Defined("/TR 20 0 R /TR2 /Default"), State("/TR /_defaulttransfer load\n"));
    EXPECT_EQ(Defined("/TR 20 0 R /TR2 /Identity"), State("/TR {} \n"));
}

TEST(ExtGState, LeavesOutWhatCannotBeBuilt) {
    const std::string bad = "<< /FunctionType 9 >>";
    for (const auto& [entries, code] :
         {std::tuple{"/BG 22 0 R", -4078}, std::tuple{"/UCR2 22 0 R", -4078}, std::tuple{"/TR 22 0 R", -4078},
          std::tuple{"/TR [20 0 R 20 0 R 22 0 R 20 0 R]", -4078}, std::tuple{"/HT 22 0 R", -4076},
          std::tuple{"/Font [22 0 R 12]", -4084}}) {
        PdfBuilder pdf = WithUsed(StatePage().Object(10, "<< /LW 2 " + std::string(entries) + " >>"));
        const Conversion conversion = Convert(pdf.Object(22, bad).Bytes());
        EXPECT_EQ(conversion.global, 0) << entries;
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << entries;
        EXPECT_EQ(conversion.error.code, code) << entries;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(22)) << entries;
        EXPECT_THAT(SetupOf(conversion.output), ::testing::EndsWith(State("/LW 2\n"))) << entries;
    }
}

TEST(ExtGState, LeavesOutWhatIsNoFunctionAtAll) {
    for (const std::string entries :
         {"/BG 5", "/BG /Foo", "/UCR null", "/TR /Foo", "/TR 5", "/TR []", "/TR [20 0 R]", "/TR [5 5 5 5]",
          "/HT 5", "/HT /Foo", "/Font 5", "/Font []", "/Font [null 12]", "/BG2 /Identity", "/BG 99 0 R",
          "/TR 99 0 R", "/HT 99 0 R"}) {
        const Conversion conversion =
            Convert(WithUsed(StatePage().Object(10, "<< " + entries + " >>")).Bytes());
        EXPECT_EQ(conversion.global, 0) << entries;
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << entries;
        EXPECT_THAT(SetupOf(conversion.output), ::testing::EndsWith(State(""))) << entries;
    }
}

// --- halftones and fonts ---

TEST(ExtGState, DefinesItsHalftoneFirst) {
    EXPECT_EQ(Defined("/HT 30 0 R"), kScreen + State("/HT /N30 /Halftone findRes \n"));
}

TEST(ExtGState, NumbersAHalftoneOfItsOwn) {
    EXPECT_EQ(Defined("/HT << /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction /Round >>"),
              "/N589823 <</HalftoneType 1\n/Frequency 60\n/Angle 45\n"
              "/SpotFunction /Round /Function findRes\n>> /Halftone defineRes pop\n" +
                  State("/HT /N589823 /Halftone findRes \n"));
}

TEST(ExtGState, DefinesItsFontFirstAndKeepsNameAndSizeApart) {
    EXPECT_EQ(Defined("/Font [40 0 R 12]"), "[/N40 /Courier -1 TZ\n" + State("/Font [/N40 12]\n"));
    EXPECT_EQ(Defined("/Font [40 0 R 9.50]"), "[/N40 /Courier -1 TZ\n" + State("/Font [/N40 9.5]\n"));
    EXPECT_EQ(Defined("/Font [40 0 R]"), "[/N40 /Courier -1 TZ\n" + State("/Font [/N40 0]\n"));
}

// --- where they are defined ---

TEST(ExtGStateRegistry, DefinesAStateOfOnePageInTheSetup) {
    PdfBuilder pdf = Pages({"", "/Resources << /ExtGState << /A 10 0 R /B 11 2 R /C 10 0 R >> >>"});
    const Conversion conversion = Convert(pdf.Object(10, "<< /LW 2 >>").Object(11, "<< /LW 3 >>", 2).Bytes());
    EXPECT_EQ(SetupOf(conversion.output),
              "/N10 <<\n/OP false\n/op false\n/LW 2\n>> /ExtGState defineRes pop\n"
              "/N11-2 <<\n/OP false\n/op false\n/LW 3\n>> /ExtGState defineRes pop\n");
    EXPECT_EQ(PageSetupOf(conversion.output, 2), "");
}

TEST(ExtGStateRegistry, DefinesWhatTwoStatesUseOnce) {
    PdfBuilder pdf = StatePage("n", "/A 10 0 R /B 11 0 R");
    pdf.Object(10, "<< /BG 20 0 R /HT 30 0 R >>").Object(11, "<< /TR 20 0 R /HT 30 0 R >>");
    const std::string setup = Defined(WithUsed(pdf));
    EXPECT_EQ(CountOf(setup, kSquare), 1);
    EXPECT_EQ(CountOf(setup, kScreen), 1);
    EXPECT_EQ(CountOf(setup, " /ExtGState defineRes pop\n"), 2);
}

TEST(ExtGStateRegistry, TakesAFunctionInTheFormOfItsFirstUser) {
    PdfBuilder pdf = OnePage("n",
                             "/Resources << /ExtGState << /GS 10 0 R >> "
                             "/ColorSpace << /CS [/Separation /A /DeviceGray 20 0 R] >> >>");
    EXPECT_THAT(SetupOf(Convert(WithUsed(pdf.Object(10, "<< /TR 20 0 R >>")).Bytes()).output),
                HasSubstr("/TR /N20 /FunctionDictionary findRes  \n"));
}

TEST(ExtGStateRegistry, RecordsWhatIsNoDictionary) {
    for (const std::string state : {"/Default", "5", "[/LW 2]", "(x)", "null"}) {
        const Conversion conversion = Convert(StatePage("/GS gs").Object(10, state).Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << state;
        EXPECT_EQ(conversion.error.code, -4082) << state;
        EXPECT_EQ(SetupOf(conversion.output), "") << state;
        EXPECT_EQ(ContentOf(conversion.output), " gs\n") << state;
    }
}

TEST(ExtGStateRegistry, NumbersADirectState) {
    PdfBuilder pdf = StatePage("/GS gs", "/GS << /LW 2 >>");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(SetupOf(conversion.output),
              "/N589823 <<\n/OP false\n/op false\n/LW 2\n>> /ExtGState defineRes pop\n");
    EXPECT_EQ(ContentOf(conversion.output), "/N589823 /ExtGState findRes  gs\nfalse setoverprint\n");
}

// --- files that mean harm ---

const std::vector<std::string> kHostile = {
    "/LW nan /ML inf /FL 1e999 /SM -1e999",
    "/LW 1e38 /ML -1e38 /LC 99999999999 /LJ -7 /FL 3.4e38",
    "/LW (x) /LC /Round /LJ [1] /ML << >> /FL true /SM null",
    "/D [5 5]",
    "/D [[(x) /y null] /z]",
    "/D [[-1 -2] -3]",
    "/D [[0 0 0] 0]",
    "/D []",
    "/D [[" + std::string(2000, '1') + "] 0]",
    "/SA 5 /OP /true /op (true) /OPM true",
    "/OPM 2147483648 /BM [/Multiply]",
    "/BG 20 0 R /UCR 20 0 R /TR [20 0 R 20 0 R 20 0 R 20 0 R /Identity]",
    "/TR [/Default /Default /Default /Default] /TR2 [/Identity]",
    "/HT 30 0 R /Font [40 0 R nan]",
    "/Font [40 0 R (x)]",
    "/Font [40 0 R 1e38]",
    "/Font [10 0 R 5]",
    "/RI /#28#28",
    "/RI /#00#ff#0a",
    "/HT << /HalftoneType 5 /Default 30 0 R /Cyan 30 0 R >>",
    "/BG << /FunctionType 2 /Domain [0 1] /C0 [] /C1 [] /N nan >>",
    "/UCR << /FunctionType 3 /Domain [0 1] /Functions [] /Bounds [] /Encode [] >>",
};

/// Runs a document with a page for each of these states, which is to pass without a word.
void ExpectToRun(const std::vector<std::string>& states) {
    std::vector<std::string> pages;
    for (std::size_t i = 0; i < states.size(); ++i) {
        pages.push_back("/Contents 304 0 R /Resources << /ExtGState << /GS " + std::to_string(400 + i) +
                        " 0 R >> >>");
    }
    PdfBuilder pdf = WithUsed(Pages(pages));
    for (std::size_t i = 0; i < states.size(); ++i) {
        pdf.Object(static_cast<unsigned>(400 + i), "<< " + states[i] + " >>");
    }
    const Conversion conversion = Convert(pdf.Stream(304, "q /GS gs 0 0 m 10 10 l S Q 1 w").Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_THAT(conversion.pages, Each(0));
    const Outcome outcome = Interpret("-sDEVICE=nullpage", conversion.output);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "");
}

TEST(ExtGState, WithoutSenseLeavesAProgramThatTheDeviceRuns) {
    ExpectToRun(kHostile);
}

TEST(ExtGState, WithAFunctionThatFailsLeavesAProgramThatTheDeviceRuns) {
    std::vector<std::string> states;
    for (const std::string key : {"/BG ", "/UCR ", "/TR "}) {
        for (const std::string entries :
             {"/Domain [] /N 1", "/Domain [0] /N 1", "/Domain [(x) /y] /N 1", "/Domain [0 1] /C0 [] /N 1",
              "/Domain [0 1] /C1 [] /N 1", "/Domain [0 1] /N -1", "/Domain [0 1]"}) {
            states.push_back(key + "<< /FunctionType 2 " + entries + " >>");
        }
    }
    ExpectToRun(states);
}

TEST(ExtGState, ThatContainsItselfEndsWithTheErrorRecorded) {
    for (const auto& [entries, code] : {std::tuple{"/HT 10 0 R", -4076}, std::tuple{"/BG 10 0 R", -4078}}) {
        const Conversion conversion =
            Convert(StatePage().Object(10, "<< " + std::string(entries) + " >>").Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{0});
        EXPECT_EQ(conversion.error.code, code);
    }
}

}  // namespace
}  // namespace zorvan::test
