// Functions as dictionaries and as procedures, and what their users make of either.
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"
#include "prolog/sample_functions.h"

namespace zorvan::test {
namespace {

Values Numbers(const std::string& text) {
    std::istringstream stream(text);
    Values numbers;
    for (double number = 0; stream >> number;) {
        numbers.push_back(number);
    }
    return numbers;
}

testing::Matcher<Values> Are(const Values& values, double precision = 1e-5) {
    return testing::Pointwise(testing::DoubleNear(precision), values);
}

/// Leaves the tint transform that a space gets for a function of so many inputs and outputs.
std::string TintOf(const std::string& function, std::size_t inputs = 1, std::size_t outputs = 3) {
    const std::string alternates[] = {"DefaultGray", "[/DeviceN [(a) (b)] DefaultGray {add}]", "DefaultRGB",
                                      "DefaultCMYK"};
    std::string names;
    for (std::size_t input = 0; input < inputs; ++input) {
        names += "(ink" + std::to_string(input) + ") ";
    }
    return "[/DeviceN [" + names + "] " + alternates[outputs - 1] + " " + function +
           " ] /Space exch /ColorSpace defineRes 3 get\n";
}

/// Prints what a procedure, the topmost operand, gives at these places.
std::string ValuesAt(const std::vector<Values>& places, const std::string& procedure = "/Tint exch def\n") {
    std::string text = procedure;
    for (const Values& place : places) {
        const std::string inputs = ArrayText(place);
        text += "[ " + inputs.substr(1, inputs.size() - 2) + "Tint ] {=} forall\n";
    }
    return text;
}

std::string Defined(const std::string& name, const std::string& function,
                    const std::string& category = "FunctionDictionary") {
    return name + " " + function + " /" + category + " defineRes pop\n";
}

const std::string kRamp = "<</FunctionType 2\n/Domain [0 1 ]\n/C0 [0 0 0 ]\n/C1 [1 0.5 0.25 ]\n/N 1\n>>\n";
const std::string kAxial = "/ShadingType 2 /Coords [0 0 100 0]";
const std::string kFetched = "/N5 /FunctionDictionary findRes ";

TEST(TintTransform, IsAProcedureMadeOfADictionary) {
    EXPECT_THAT(Numbers(Printed(Defined("/N5", kRamp) + TintOf(kFetched) + ValuesAt({{0.5}, {1}, {9}}))),
                Are({0.5, 0.25, 0.125, 1, 0.5, 0.25, 1, 0.5, 0.25}));
}

// Both sides read the same text. The difference is measured against the widest output, which is between -2
// and 2.
TEST(TintTransform, AgreesWithTheFormulasForFunctionsMadeByChance) {
    FunctionMaker maker(20240607);
    std::string content;
    Values expected;
    std::vector<std::string> sources;
    for (int count = 0; count < 400; ++count) {
        const SampleFunction function = maker.Any();
        const std::vector<Values> places = maker.Places(function);
        content +=
            "q\n" + TintOf(function.text, function.inputs, function.outputs) + ValuesAt(places) + "Q\n";
        for (const Values& place : places) {
            const Values values = function.at(place);
            expected.insert(expected.end(), values.begin(), values.end());
            sources.insert(sources.end(), values.size(), function.text + ArrayText(place));
        }
    }
    const Values values = Numbers(Printed(content));
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t index = 0; index < values.size(); ++index) {
        ASSERT_NEAR(values[index], expected[index], 1.0 / 4096) << sources[index];
    }
}

/// A function of type 2 as a procedure, in the words of its writer.
const std::string kRampProcedure =
    "[7 dict begin\n/Domain [0 1 ] def\n/C0 [0 0 0 ] def\n/C1 [1 0.5 0.25 ] def\n/N 1 def\n/DimOut 3 def\n"
    "currentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n";
const std::string kCalculator = "{dup 0.5 mul dup 0.5 mul} bind\n";

TEST(TintTransform, TakesProceduresFromEitherCategory) {
    for (const std::string& procedure : {kRampProcedure, kCalculator}) {
        for (const std::string category : {"Function", "FunctionDictionary"}) {
            EXPECT_THAT(Numbers(Printed(Defined("/N5", procedure, category) +
                                        TintOf("/N5 /" + category + " findRes ") + ValuesAt({{0.5}, {1}}))),
                        Are({0.5, 0.25, 0.125, 1, 0.5, 0.25}))
                << category << procedure;
        }
    }
}

std::string StitchedText(const std::string& parts) {
    return "<</FunctionType 3\n/Domain [0 1 ]\n/Functions [" + parts +
           "]\n/Bounds [0.25 0.5 ]\n/Encode [0 1 1 0 0 1 ]\n>>\n";
}

TEST(StitchedFunction, MayHavePartsInEitherForm) {
    const std::string parts = Defined("/N5", kRamp) + Defined("/N6", kRampProcedure, "Function") +
                              Defined("/N7", kCalculator, "Function");
    const std::string stitched =
        StitchedText("/N5 /FunctionDictionary findRes /N6 /Function findRes /N7 /Function findRes ");
    for (const std::string category : {"Function", "FunctionDictionary"}) {
        EXPECT_THAT(Numbers(Printed(parts + Defined("/N8", stitched, category) +
                                    TintOf("/N8 /" + category + " findRes ") +
                                    ValuesAt({{0.125}, {0.25}, {0.375}, {0.75}}))),
                    Are({0.5, 0.25, 0.125, 1, 0.5, 0.25, 0.5, 0.25, 0.125, 0.5, 0.25, 0.125}))
            << category;
    }
}

constexpr std::string_view kPage = "10 10 20 20 re f\n";

TEST(StitchedFunction, WithAMissingPartLeavesThePageAlone) {
    const std::string stitched = StitchedText("/N5 /FunctionDictionary findRes {} {} ");
    const Picture page =
        Painted(Defined("/N8", stitched) +
                "1 0 0 rg 0 0 5 5 re f q [/Separation (x) DefaultGray /N8 /FunctionDictionary findRes ] "
                "cs 0.5 sc 0 0 5 5 re f Q " +
                std::string(kPage));
    EXPECT_EQ(page.At(20, 20), kRed);
}

TEST(Function, MayBeMissingOrSenselessOrDefinedTwice) {
    EXPECT_EQ(Printed("/N5  /FunctionDictionary defineRes pop /N5 null /FunctionDictionary defineRes pop "
                      "/N5 7 /Function defineRes pop /N5 << >> /Function defineRes pop "
                      "/N5 << /FunctionType 0 >> /FunctionDictionary defineRes pop "
                      "/N5 << /FunctionType (x) >> /FunctionDictionary defineRes pop count ="),
              "0\n");
    EXPECT_THAT(Numbers(Printed(Defined("/N5", "<</FunctionType 2 /Domain [0 1] /N 1>>\n") +
                                Defined("/N5", kRamp) + TintOf(kFetched) + ValuesAt({{0.5}}))),
                Are({0.5, 0.25, 0.125}));
}

// What the device has on its stacks and calls its operators is its own affair.
TEST(TintTransform, WorksInsideOtherDictionariesAndLeavesTheStacksClean) {
    const std::string sampled =
        "<</FunctionType 0 /Domain [0 1 0 1] /Range [0 1] /Size [2 2] /BitsPerSample 8 /DataSource "
        "<00ff8040>>>";
    const std::string hostile =
        "12 dict begin /dup {pop} def /mul /add load def /x 5 def /Domain null def /Samples 3 def /Low {} "
        "def\n";
    EXPECT_EQ(Printed(TintOf(sampled, 2, 1) + "/a exch def " + TintOf(StitchedText("{} {} {} "), 1, 1) +
                      "/b exch def " + hostile + "7 0 1 a 1 b count = countdictstack = "),
              "3\n9\n");
}

TEST(TintTransform, TakesNoMemoryWhenItRuns) {
    FunctionMaker maker(7);
    const std::string content = TintOf(maker.Sampled(3, 4, 12).text, 3, 4) + "/a exch def " +
                                TintOf(maker.Stitched(1, 2).text, 1, 1) +
                                "/b exch def 0.3 0.6 0.9 a 0.3 b clear "
                                "vmstatus pop exch pop 2000 {0.3 0.6 0.9 a 0.3 b 5 {pop} repeat} repeat "
                                "vmstatus pop exch pop exch sub 2000 idiv =";
    EXPECT_EQ(Printed(content), "0\n");
}

/// So many times this text.
std::string Times(std::size_t count, const std::string& text) {
    std::string all;
    while (count-- > 0) {
        all += text;
    }
    return all;
}

/// A function with so many samples of 0 as one string can hold, and as many of 255.
std::string LongTable() {
    constexpr std::size_t kGroups = 65536 / 4;
    return "<</FunctionType 0\n/Domain [0 1 ]\n/Range [0 1 ]\n/Size [131072 ]\n/BitsPerSample 8\n/Order "
           "1\n/DataSource{{<~" +
           Times(kGroups, "z") + "~><~" + Times(kGroups, "s8W-!") +
           "~>\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n >>\n";
}

TEST(LongTable, IsAFileThatBothWaysOfUseCanRead) {
    EXPECT_EQ(Printed(Defined("/N5", LongTable()) + kFetched + "/DataSource get type = count ="),
              "filetype\n0\n");
    EXPECT_THAT(Numbers(Printed(Defined("/N5", LongTable()) +
                                Times(2, TintOf(kFetched, 1, 1) + ValuesAt({{0.49}, {0.51}})))),
                Are({0, 1, 0, 1}));
    const Picture page = Painted(
        Defined("/N5", LongTable()) + TintOf(kFetched) +
        "pop <</ShadingType 2 /ColorSpace DefaultGray /Coords [0 0 100 0] /Function " + kFetched + ">> sh");
    EXPECT_EQ(page.At(48, 50), kBlack);
    EXPECT_EQ(page.At(51, 50), kWhite);
}

// What the setup defines stays over the pages' restores, files among it.
TEST(LongTable, OfTheSetupServesEveryPage) {
    const std::string space =
        "/N6 [/Separation (a) DefaultGray " + kFetched + "] /ColorSpace defineRes pop\n";
    const std::string page = "q /N6 /ColorSpace findRes cs 0.51 sc 0 0 30 30 re f Q <<" + kAxial +
                             " /ColorSpace DefaultGray /Function " + kFetched +
                             ">> sh 1 0 0 rg 0 0 30 30 re f "
                             "/N6 /ColorSpace findRes cs 0.51 sc 0 0 20 20 re f";
    const std::vector<Picture> pages =
        PrologJob().Setup(Defined("/N5", LongTable()) + space).Page(page).Page(page).Paint();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0], pages[1]);
    EXPECT_EQ(pages[1].At(10, 10), kWhite);
    EXPECT_EQ(pages[1].At(25, 25), kRed);
    EXPECT_EQ(pages[1].At(40, 50), kBlack);
    EXPECT_EQ(pages[1].At(60, 50), kWhite);
}

TEST(SampledFunction, MayLackEncodeDecodeAndRange) {
    const std::string bare =
        "<</FunctionType 0 /Domain [0 1] /Size [2] /BitsPerSample 8 /DataSource <0080ff40>>>\n";
    EXPECT_THAT(Numbers(Printed(Defined("/N5", bare) + TintOf(kFetched, 1, 2) + ValuesAt({{0}, {1}, {0.5}}))),
                Are({0, 128.0 / 255, 1, 64.0 / 255, 0.5, 96.0 / 255}));
    EXPECT_EQ(Printed(Defined("/N5", bare) + kFetched + "/Range get ==" +
                      Defined("/N6",
                              "<</FunctionType 0 /Domain [0 1] /Decode [2 3] /Size [2] /BitsPerSample 8 "
                              "/DataSource <0080>>>\n") +
                      "/N6 /FunctionDictionary findRes /Range get =="),
              "[0 1 0 1]\n[2 3]\n");
}

TEST(SampledFunction, ThatLacksSamplesHasZerosThere) {
    EXPECT_THAT(
        Numbers(Printed(TintOf("<</FunctionType 0 /Domain [0 1] /Range [0 1] /Size [40000] /BitsPerSample 16 "
                               "/DataSource <ffff>>>",
                               1, 1) +
                        ValuesAt({{0}, {0.5}, {1}}))),
        Are({1, 0, 0}));
    EXPECT_THAT(
        Numbers(Printed(TintOf("<</FunctionType 0 /Domain [0 1] /Range [0 1] /Size [9] /BitsPerSample 4 "
                               "/DataSource <ff>>>",
                               1, 1) +
                        ValuesAt({{0}, {0.125}, {0.25}, {1}}))),
        Are({1, 1, 0, 0}));
}

// A space of tints stands wherever another space has one.
TEST(TintTransform, IsFoundInsideOtherSpaces) {
    const std::string spot = "[/Separation (a) DefaultRGB " + kFetched + "] ";
    const std::string tint =
        Defined("/N5", "<</FunctionType 2 /Domain [0 1] /C0 [0 0 0] /C1 [1 0.2 0.6] /N 1>>");
    const std::string painted = "cs 1 sc 10 10 20 20 re f";
    for (const std::string& space :
         {"[/Indexed " + spot + "1 <00ff>]", "[/Indexed [/DeviceN [(b)] " + spot + "{} bind] 1 <00ff>]"}) {
        for (const std::string& defined :
             {space, "/N9 " + space + " /ColorSpace defineRes pop /N9 /ColorSpace findRes "}) {
            EXPECT_EQ(Painted(tint + defined + painted).At(20, 20), (Color{255, 51, 153})) << defined;
        }
    }
    EXPECT_EQ(Printed(tint + "[/Pattern " + spot + "] cs Fill /Space get 1 get 3 get xcheck ="), "true\n");
}

/// Defines a shading with this function and leaves what the device is given for it.
std::string FunctionOf(const std::string& function, const std::string& entries) {
    return "/N7 << " + entries + " /ColorSpace DefaultRGB /Function " + function +
           " >> /Shading defineRes pop /N7 /Shading findRes /Function get\n";
}

TEST(ShadingFunction, IsADictionaryMadeOfAProcedure) {
    for (const std::string& function : {kRampProcedure, kCalculator}) {
        EXPECT_EQ(Printed(FunctionOf(function, kAxial) +
                          "dup type = dup /FunctionType get = dup /Domain get == /Size get =="),
                  "dicttype\n0\n[0 1]\n[257]\n");
        EXPECT_EQ(Printed(FunctionOf("[" + Times(3, "{0.5 mul} ") + "]", kAxial) + "{type =} forall"),
                  "dicttype\ndicttype\ndicttype\n");
    }
}

TEST(ShadingFunction, TakesItsDomainFromTheShading) {
    const auto domain = [](const std::string& entries) {
        return Printed(FunctionOf("{pop 0.5 0.5 0.5}", entries) + "/Domain get ==");
    };
    EXPECT_EQ(domain(kAxial + " /Domain [-1 3]"), "[-1 3]\n");
    EXPECT_EQ(domain("/ShadingType 3 /Coords [0 0 0 9 9 9]"), "[0 1]\n");
    EXPECT_EQ(domain("/ShadingType 4 /Decode [0 100 0 100 2 5]"), "[2 5]\n");
    EXPECT_EQ(domain("/ShadingType 7 /Decode [0 100 0 100 2 5]"), "[2 5]\n");
    const auto domains = [](const std::string& entries) {
        return Printed(FunctionOf("{pop pop 0.5 0.5 0.5}", entries) + "/Domain get ==");
    };
    EXPECT_EQ(domains("/ShadingType 1"), "[0 1 0 1]\n");
    EXPECT_EQ(domains("/ShadingType 1 /Domain [0 2 -1 1]"), "[0 2 -1 1]\n");
}

/// The values of a procedure after it has been made a dictionary and a procedure again.
Values Resampled(const std::string& procedure, const std::vector<Values>& places,
                 const std::string& entries = kAxial, std::size_t outputs = 1) {
    return Numbers(Printed(FunctionOf(procedure, entries) + "/d exch def " +
                           TintOf("d", places[0].size(), outputs) + ValuesAt(places)));
}

constexpr double kClose = 1.0 / 4096;

TEST(ShadingFunction, GoesThroughTheValuesOfTheProcedure) {
    EXPECT_THAT(Resampled("{dup dup mul 10 mul exch 1 exch sub}", {{0}, {0.5}, {1}, {0.3}}, kAxial, 2),
                Are({0, 1, 2.5, 0.5, 10, 0, 0.9, 0.7}, 10 * kClose));
    EXPECT_THAT(Resampled("{90 mul sin}", {{1.0 / 3}}), Are({0.5}, kClose));
    EXPECT_THAT(Resampled("{pop 7}", {{0}, {1}}), Are({7, 7}, kClose));
    EXPECT_THAT(Resampled("{add}", {{0, 0}, {0.25, 0.5}, {2, 1}}, "/ShadingType 1 /Domain [0 2 0 1]"),
                Are({0, 0.75, 3}, 3 * kClose));
}

TEST(ShadingFunction, HasMoreStepsWhereItBendsSharply) {
    const std::string step = "{0.3 lt {0} {1} ifelse}";
    EXPECT_THAT(Resampled(step, {{0.2995}, {0.3005}}), Are({0, 1}, kClose));
    const std::string diagonal = "{lt {0} {1} ifelse}";
    EXPECT_THAT(Resampled(diagonal, {{0.305, 0.3}, {0.3, 0.305}}, "/ShadingType 1"), Are({1, 0}, kClose));
    const std::string corner = "{0.3 lt exch 0.7 lt and {1} {0} ifelse}";
    EXPECT_THAT(Resampled(corner, {{0.69, 0.29}, {0.71, 0.29}, {0.69, 0.31}}, "/ShadingType 1"),
                Are({1, 0, 0}, kClose));
}

TEST(ShadingFunction, IsNoughtWhereTheProcedureFails) {
    EXPECT_THAT(Resampled("{0.5 sub 1 exch div}", {{0.5}}), Are({0}, kClose * 512));
    EXPECT_EQ(Printed("1 0 0 rg <<" + kAxial +
                      " /ColorSpace DefaultGray /Function {pop pop pop stop} >> sh "
                      "<<" +
                      kAxial +
                      " /ColorSpace DefaultGray /Function null >> sh "
                      "<<" +
                      kAxial +
                      " /ColorSpace DefaultGray /Function [null] >> sh "
                      "<<" +
                      kAxial + " /ColorSpace DefaultGray /Function {(x)} >> sh count ="),
              "0\n");
}

TEST(ShadingFunction, StitchedOfProceduresIsSampledOverTheEncodedDomainOfEachPart) {
    const std::string stitched =
        "<</FunctionType 3 /Domain [0 1] /Functions [{2 div} {10 mul}] /Bounds [0.5] /Encode [1 0 0 0.1]>>";
    EXPECT_EQ(Printed(FunctionOf(stitched, kAxial) +
                      "/Functions get {dup /Domain get == /FunctionType get =} forall"),
              "[0 1]\n0\n[0 0.1]\n0\n");
    EXPECT_THAT(Resampled(stitched, {{0}, {0.25}, {0.5}, {0.75}, {1}}), Are({0.5, 0.25, 0, 0.5, 1}, kClose));
}

// Given to the device, each of these would take away what stands below on the stack, or fail while something
// is painted.
TEST(Function, ThatTakesOrMakesTooMuchIsNotGivenToTheDevice) {
    for (const std::string function :
         {"{pop pop pop}", "{dup}", "{stop}", "{pop (x)}", "{9 3 roll 7}", "{pop}"}) {
        EXPECT_EQ(Painted("1 0 0 rg 0 0 5 5 re f 1 2 3 4 <</TR " + function + "/BG " + function + "/UCR " +
                          function + ">> gs [/Separation (x) DefaultCMYK " + function +
                          "] cs 0.5 sc 0 0 5 5 re f " +
                          "<</HT <</HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction " + function +
                          "/TransferFunction " + function + ">> >> gs <<" + kAxial +
                          " /ColorSpace DefaultGray /Function " + function +
                          ">> sh 4 eq exch 3 eq and exch 2 eq and exch 1 eq and count 1 eq and "
                          "{0 1 0 rg 10 10 20 20 re f} if")
                      .At(20, 20),
                  kGreen)
            << function;
    }
}

const std::string kTwoColors = "{0.5 lt {1 0 0} {0 0 1} ifelse}";

TEST(ShadingFunction, PaintsWithProcedures) {
    const std::string space = "/ColorSpace DefaultRGB /Function " + kTwoColors;
    for (const std::string& painted :
         {"<<" + kAxial + space + ">> sh", "<<" + kAxial + space + ">> shfill",
          "/N7 <</PatternType 2 /Matrix [1 0 0 1 0 0] /Shading <<" + kAxial + space +
              ">> >> /PatternPrototype defineRes pop "
              "/N7 /N7 /PatternPrototype findRes makePat /Pattern cs /N7 /MadePattern findRes scn 0 0 100 "
              "100 re f"}) {
        const Picture page = Painted(painted);
        EXPECT_EQ(page.At(47, 50), kRed) << painted;
        EXPECT_EQ(page.At(52, 50), kBlue) << painted;
    }
}

TEST(ShadingFunction, PaintsTwoInputsAndMeshes) {
    const Picture based = Painted(
        "<</ShadingType 1 /Matrix [100 0 0 100 0 0] /ColorSpace DefaultRGB "
        "/Function {0.5 lt exch 0.5 lt and {1 0 0} {0 0 1} ifelse}>> sh");
    EXPECT_EQ(based.At(47, 47), kRed);
    EXPECT_EQ(based.At(52, 47), kBlue);
    const Picture mesh = Painted(
        "<</ShadingType 5 /VerticesPerRow 2 /BitsPerCoordinate 8 /BitsPerComponent 8 "
        "/Decode [0 100 0 100 0 1] /ColorSpace DefaultRGB /Function " +
        kTwoColors + " /DataSource <000000 ff00ff 00ff00 ffffff>>> sh");
    EXPECT_EQ(mesh.At(40, 50), kRed);
    EXPECT_EQ(mesh.At(60, 50), kBlue);
}

TEST(MeshData, OfAFileIsReadFromItsBeginningEachTime) {
    const std::string mesh =
        "/N7 <</ShadingType 5 /VerticesPerRow 2 /BitsPerCoordinate 8 /BitsPerComponent 8 /Decode [0 50 0 "
        "50 0 1] /ColorSpace DefaultRGB /Function " +
        kTwoColors +
        " /DataSource <000000ff00ff00ff00ffffff> 0 () /SubFileDecode filter <</Intent 3>> "
        "/ReusableStreamDecode filter >> /Shading defineRes pop /N7 /Shading findRes sh "
        "1 0 0 1 50 50 cm /N7 /Shading findRes sh";
    const Picture page = Painted(mesh);
    EXPECT_EQ(page.At(20, 25), kRed);
    EXPECT_EQ(page.At(70, 75), kRed);
    EXPECT_EQ(page.At(80, 75), kBlue);
}

/// The digits of digits.
std::string Twice(const std::string& hex) {
    std::ostringstream digits;
    for (const char each : hex) {
        digits << std::hex << static_cast<int>(each);
    }
    return digits.str();
}

/// LZW with codes of nine bits: clear, each byte, end.
std::string Lzw(const std::string& hex) {
    std::vector<unsigned> codes{256};
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        codes.push_back(static_cast<unsigned>(std::stoi(hex.substr(at, 2), nullptr, 16)));
    }
    codes.push_back(257);
    std::string bytes;
    unsigned held = 0;
    unsigned count = 0;
    for (const unsigned code : codes) {
        held = held << 9U | code;
        for (count += 9; count >= 8; count -= 8) {
            bytes += static_cast<char>(held >> (count - 8));
        }
    }
    return bytes + static_cast<char>(held << (8 - count));
}

/// Two triangles from the left to the right of the page, in the words of the writer, and something behind
/// them.
std::string MeshWith(const std::string& dataSource) {
    return "q <</ShadingType 5\n/ColorSpace DefaultRGB \n/BitsPerCoordinate 8\n/BitsPerComponent "
           "8\n/VerticesPerRow 2\n"
           "/Decode [0 100 0 100 0 1 ]\n/Function " +
           kTwoColors + " bind\n/DataSource  currentfile" + dataSource +
           "\nQ 0 1 0 rg 90 90 10 10 re f count =";
}

// The bytes 00 00 00, ff 00 ff, 00 ff 00, ff ff ff.
const std::string kMeshBytes = "000000ff00ff00ff00ffffff";

TEST(MeshData, IsReadFromTheDictionaryThatItStandsIn) {
    const std::string hex = kMeshBytes + ">";
    const std::string forms[] = {
        "/ASCIIHexDecode filter\n%%BeginData:25 Bytes\n" + hex + "\n%%EndData\n>> shfill\n",
        // Without its end, and with something behind it.
        "/ASCIIHexDecode filter\n%%BeginData:24 Bytes\n" + kMeshBytes + "\n%%EndData\n>> shfill\n",
        "/ASCIIHexDecode filter\n%%BeginData:30 Bytes\n" + hex + "((){\n%%EndData\n>> shfill\n",
        "/ASCIIHexDecode filter/ASCIIHexDecode filter\n%%BeginData:99 Bytes\n" + Twice(hex) +
            ">\n%%EndData\n>> shfill\n",
        " /ASCIIHexDecode filter /ASCIIHexDecode filter\n%%BeginData:99 Bytes\n" + Twice(hex) +
            ">\n%%EndData\n>> shfill\n",
        // As the writer encodes it.
        "/LZWDecode filter\n%%BeginData: 256 Bytes\n" + Lzw(kMeshBytes) + ">> shfill\n\n%%EndData\n",
    };
    for (const std::string& form : forms) {
        const Picture page = Painted(MeshWith(form));
        EXPECT_EQ(page.At(40, 50), kRed) << form;
        EXPECT_EQ(page.At(60, 50), kBlue) << form;
        EXPECT_EQ(page.At(95, 95), kGreen) << form;
    }
}

TEST(MeshData, IsNotLookedForInAnotherProgramsImage) {
    const std::string image =
        "gsave 100 100 scale /DeviceGray setcolorspace\n<< /ImageType 1 /Width 1 /Height 1 /BitsPerComponent "
        "8 "
        "/ImageMatrix [1 0 0 1 0 0] /Decode [0 1] /DataSource currentfile /ASCIIHexDecode filter >> "
        "image\n33>\n"
        "grestore 0 1 0 rg 90 90 10 10 re f";
    EXPECT_EQ(Painted(image).At(50, 50), (Color{51, 51, 51}));
    EXPECT_EQ(Painted(image).At(95, 95), kGreen);
    EXPECT_EQ(Printed("/DataSource currentfile /ASCIIHexDecode filter 2 string readstring\n4142>\n== = ="),
              "true\nAB\nDataSource\n");
}

TEST(MeshData, ThatIsDamagedPaintsNothing) {
    for (const std::string form : {"/ASCIIHexDecode filter\n%%BeginData:3 Bytes\nxyz\n%%EndData\n>> shfill\n",
                                   "/NoSuchDecode filter\n%%BeginData:3 Bytes\n(((\n%%EndData\n>> shfill\n",
                                   "/LZWDecode filter\n%%BeginData: 256 Bytes\n>> shfill\n\n%%EndData\n"}) {
        const Picture page = Painted(MeshWith(form));
        EXPECT_EQ(page.At(40, 50), kWhite) << form;
        EXPECT_EQ(page.At(95, 95), kGreen) << form;
    }
}

}  // namespace
}  // namespace zorvan::test
