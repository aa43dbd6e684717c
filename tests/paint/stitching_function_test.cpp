// Functions of several parts: the parts are defined first, and found by their names.
#include <cstdlib>
#include <string>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "paint/paint_page.h"
#include "support/system.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class StitchingFunction : public PaintTest {};

constexpr const char* kPart = "<< /FunctionType 2 /Domain [0 1] /N 1 >>";

std::string PartDefined(const std::string& name) {
    return "/" + name +
           " <</FunctionType 2\n/Domain [0 1 ]\n/C0 [0]\n/C1 [1]\n/N 1\n>>\n/FunctionDictionary defineRes "
           "pop\n";
}

std::string Stitched(const std::string& functions,
                     const std::string& rest = "/Bounds [0.5] /Encode [0 1 1 0]") {
    return "<< /FunctionType 3 /Domain [0 1] /Functions " + functions + " " + rest + " >>";
}

TEST_F(StitchingFunction, DefinesThreePartsBeforeItself) {
    PdfBuilder pdf = File(
        "<< /FunctionType 3 /Domain [0 1] /Functions [21 0 R 22 0 R 23 0 R] "
        "/Bounds [0.25 0.5] /Encode [0 1 1 0 0 .5] >>");
    EXPECT_EQ(Function(kDictionary, pdf.Object(21, kPart).Object(22, kPart).Object(23, kPart)),
              PartDefined("N21") + PartDefined("N22") + PartDefined("N23") +
                  "/N10 <</FunctionType 3\n"
                  "/Domain [0 1 ]\n"
                  "/Functions [/N21 /FunctionDictionary findRes  /N22 /FunctionDictionary findRes  "
                  "/N23 /FunctionDictionary findRes  ]\n"
                  "/Bounds [0.25 0.5 ]\n"
                  "/Encode [0 1 1 0 0 0.5 ]\n"
                  ">>\n"
                  "/FunctionDictionary defineRes pop\n");
}

TEST_F(StitchingFunction, NumbersThePartsThatItHolds) {
    const std::string part = kPart;
    PdfBuilder pdf = File(Stitched("[" + part + " 21 0 R " + part + "]", "/Bounds [] /Encode []"));
    const std::string written = Function(kDictionary, pdf.Object(21, kPart));
    EXPECT_THAT(written, HasSubstr(PartDefined("N589823")));
    EXPECT_THAT(written, HasSubstr(PartDefined("N21")));
    EXPECT_THAT(written, HasSubstr(PartDefined("N589824")));
    EXPECT_THAT(written, ::testing::EndsWith(
                             "/N10 <</FunctionType 3\n/Domain [0 1 ]\n"
                             "/Functions [/N589823 /FunctionDictionary findRes  "
                             "/N21 /FunctionDictionary findRes  /N589824 /FunctionDictionary findRes  ]\n"
                             "/Bounds []\n/Encode []\n>>\n/FunctionDictionary defineRes pop\n"));
}

TEST_F(StitchingFunction, IsADictionaryOfProceduresForWhoAsksForAProcedure) {
    const std::string written = Function(kProcedure, File(Stitched("[21 0 R 21 0 R]")).Object(21, kPart));
    EXPECT_THAT(written, StartsWith("/N21 [7 dict begin\n"));
    EXPECT_THAT(written,
                ::testing::EndsWith("\n/Function defineRes pop\n/N10 <</FunctionType 3\n/Domain [0 1 ]\n"
                                    "/Functions [/N21 /Function findRes  /N21 /Function findRes  ]\n"
                                    "/Bounds [0.5 ]\n/Encode [0 1 1 0 ]\n>>\n/Function defineRes pop\n"));
    EXPECT_EQ(CountOf(written, "defineRes"), 2);
}

TEST_F(StitchingFunction, HasItsRangeWhereItIsGiven) {
    PdfBuilder pdf = File(Stitched("[21 0 R]", "/Range [0 1] /Bounds [] /Encode [0 1]"));
    EXPECT_THAT(Function(kDictionary, pdf.Object(21, kPart)),
                HasSubstr("/N10 <</FunctionType 3\n/Domain [0 1 ]\n/Range [0 1 ]\n/Functions ["));
}

TEST_F(StitchingFunction, TakesAPartInTheFormThatItHasAlready) {
    Prepare(File(Stitched("[21 0 R 21 0 R]")).Object(21, kPart));
    EXPECT_EQ(RegisterFunction(kProcedure, 21), Status::kOk);
    EXPECT_EQ(RegisterFunction(kDictionary), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
    EXPECT_THAT(Pieces::Joined(),
                HasSubstr("/Functions [/N21 /Function findRes  /N21 /Function findRes  ]\n"));
    EXPECT_THAT(Pieces::Joined(), ::testing::EndsWith(">>\n/FunctionDictionary defineRes pop\n"));
}

TEST_F(StitchingFunction, MayHoldStitchedParts) {
    PdfBuilder pdf = File(Stitched("[11 0 R " + Stitched("[21 0 R 21 0 R]") + "]"));
    const std::string written =
        Function(kDictionary, pdf.Object(11, Stitched("[21 0 R 21 0 R]")).Object(21, kPart));
    EXPECT_EQ(CountOf(written, PartDefined("N21")), 1);
    EXPECT_LT(written.find("/N11 <<"), written.find("/N10 <<"));
    EXPECT_LT(written.find("/N589823 <<"), written.find("/N10 <<"));
    EXPECT_THAT(written, HasSubstr("/Functions [/N11 /FunctionDictionary findRes  "
                                   "/N589823 /FunctionDictionary findRes  ]\n"));
}

TEST_F(StitchingFunction, FailsWithoutAnArrayThatItNeeds) {
    for (const std::string object :
         {"<< /FunctionType 3 /Functions [21 0 R] /Bounds [] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain 5 /Functions [21 0 R] /Bounds [] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Range 5 /Functions [21 0 R] /Bounds [] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Bounds [] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Functions 21 0 R /Bounds [] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Functions [21 0 R] /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Functions [21 0 R] /Bounds 0.5 /Encode [0 1] >>",
          "<< /FunctionType 3 /Domain [0 1] /Functions [21 0 R] /Bounds [] >>",
          "<< /FunctionType 3 /Domain [0 1] /Functions [21 0 R] /Bounds [] /Encode << >> >>"}) {
        PdfBuilder pdf = File(object).Object(21, kPart);
        EXPECT_EQ(StatusOf(kDictionary, pdf), Status::kInvalidDataType) << object;
        EXPECT_EQ(Error().Code(), Status::kInvalidDataType) << object;
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << object;
        EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("/FunctionType 3"))) << object;
    }
}

TEST_F(StitchingFunction, IsIllegalWithAPartThatCannotBeWritten) {
    const std::string bad = "<< /FunctionType 2 /N 1 >>";
    for (const std::string& functions : {std::string("[21 0 R 22 0 R]"), "[21 0 R " + bad + "]"}) {
        PdfBuilder pdf = File(Stitched(functions)).Object(21, kPart).Object(22, bad);
        EXPECT_EQ(StatusOf(kDictionary, pdf), Status::kIllegalFunction) << functions;
        EXPECT_EQ(Error().Code(), Status::kInvalidDataType)
            << functions;  // that of the part is the first one
        EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("/N10 "))) << functions;
    }
}

TEST_F(StitchingFunction, PassesOnWhatTheHostRefusesWith) {
    Prepare(File(Stitched("[21 0 R 21 0 R]")).Object(21, kPart));
    EXPECT_EQ(RegisterFunction(kDictionary), Status::kOk);
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(ToNumber(CurrentRegistry().EmitGlobal()), 7);
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(StitchingFunction, OfPartsThatAreNoneRecordsThat) {
    for (const std::string functions : {"[22 0 R 21 0 R]", "[99 0 R 21 0 R]"}) {
        Prepare(File(Stitched(functions)).Object(21, kPart).Object(22, "/Identity"));
        static_cast<void>(RegisterFunction(kDictionary));
        EXPECT_EQ(Error().Code(), Status::kIllegalFunction) << functions;
        static_cast<void>(CurrentRegistry().EmitGlobal());
    }
}

TEST_F(StitchingFunction, OfThreeHundredPartsHasThemAll) {
    std::string functions;
    std::string bounds;
    std::string encode;
    for (int i = 0; i < 300; ++i) {
        functions += i % 2 == 0 ? std::string(kPart) : std::string("21 0 R");
        functions += " ";
        bounds += i == 0 ? "" : std::to_string(i) + " ";
        encode += "0 1 ";
    }
    PdfBuilder pdf = File("<< /FunctionType 3 /Domain [0 300] /Functions [" + functions + "] /Bounds [" +
                          bounds + "] /Encode [" + encode + "] >>");
    const std::string written = Function(kDictionary, pdf.Object(21, kPart));
    EXPECT_EQ(CountOf(written, " findRes "), 300);
    EXPECT_EQ(CountOf(written, " defineRes pop\n"), 152);
    EXPECT_THAT(written, HasSubstr("\n/Bounds [" + bounds + "]\n/Encode [" + encode + "]\n"));
}

TEST_F(StitchingFunction, ThatIsItsOwnPartEndsWithTheErrorRecorded) {
    for (const std::string& functions : {std::string("[10 0 R]"), std::string("[21 0 R 10 0 R 21 0 R]"),
                                         Stitched("[21 0 R 10 0 R]").insert(0, "[") + "]"}) {
        Prepare(File(Stitched(functions)).Object(21, kPart));
        static_cast<void>(RegisterFunction(kDictionary));
        static_cast<void>(CurrentRegistry().EmitGlobal());
        EXPECT_EQ(Error().Code(), Status::kIllegalFunction) << functions;
    }
}

TEST_F(StitchingFunction, ThatIsAPartOfItsPartEndsWithTheErrorRecorded) {
    PdfBuilder pdf = File(Stitched("[11 0 R 21 0 R]")).Object(21, kPart);
    Prepare(pdf.Object(11, Stitched("[10 0 R 21 0 R]")));
    static_cast<void>(RegisterFunction(kDictionary));
    static_cast<void>(CurrentRegistry().EmitGlobal());
    EXPECT_EQ(Error().Code(), Status::kIllegalFunction);
}

/// Converts a document and tells whether the error was recorded. In a process of its own, which may die.
[[noreturn]] void EndByRecordedError(PdfBuilder pdf) {
    std::_Exit(Convert(pdf.Bytes()).error.code == -4078 ? 0 : 1);
}

// The dictionary that the array holds has this array itself for its parts.
TEST(StitchingFunctionDeathTest, ThatHoldsTheArrayThatItIsInEndsWithTheErrorRecorded) {
    PdfBuilder pdf =
        OnePage("n", "/Resources << /ColorSpace << /CS [/Separation /A /DeviceGray 10 0 R] >> >>");
    pdf.Object(10, Stitched("11 0 R")).Object(21, kPart);
    pdf.Object(11, "[" + Stitched("11 0 R") + " 21 0 R]");
    EXPECT_EXIT(EndByRecordedError(pdf), ::testing::ExitedWithCode(0), "");
}

/// An array of two functions, each of which has the next array for its parts: two to the power of so many.
TEST(StitchingFunctionDeathTest, ThatGrowsWithEachStepEnds) {
    PdfBuilder pdf =
        OnePage("n", "/Resources << /ColorSpace << /CS [/Separation /A /DeviceGray 10 0 R] >> >>");
    pdf.Object(10, Stitched("100 0 R"));
    for (unsigned i = 0; i < 40; ++i) {
        const std::string next = Stitched(std::to_string(101 + i) + " 0 R");
        pdf.Object(100 + i, "[" + next + " " + next + "]");
    }
    pdf.Object(140, "[]");
    EXPECT_EXIT(
        {
            EndAfter(10);
            static_cast<void>(Convert(pdf.Bytes()));
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zorvan::test
