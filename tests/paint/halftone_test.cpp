// Halftones: the dictionary of each type, what it refers to, and where it is defined.
#include <string>
#include <tuple>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "paint/paint_page.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class Halftone : public PaintTest {
protected:
    /// What is written for object 10; all must go well. 20 is a function, 30 a name, 21 a number.
    std::string Written(PdfBuilder pdf) {
        pdf.Stream(20, "{ pop }", "/FunctionType 4 /Domain [-1 1 -1 1] /Range [-1 1]");
        Prepare(pdf.Object(21, "7").Object(30, "/Round"));
        EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
        EXPECT_EQ(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}), Status::kOk);
        EXPECT_EQ(Error().Code(), Status::kOk);
        return Pieces::Joined();
    }
    std::string Written(const std::string& entries) { return Written(File("<< " + entries + " >>")); }
};

constexpr const char* kFunction = "/N20 { pop } bind\n/Function defineRes pop\n";

std::string Defined(const std::string& kind, const std::string& lines, const std::string& name = "/N10") {
    return name + " <</HalftoneType " + kind + "\n" + lines + ">> /Halftone defineRes pop\n";
}

// --- type 1 ---

TEST_F(Halftone, OfAScreenHasFrequencyAngleAndPredefinedSpotFunction) {
    EXPECT_EQ(Written("/HalftoneType 1 /SpotFunction /Round /Angle 45.5 /Frequency 60"),
              Defined("1", "/Frequency 60\n/Angle 45.5\n/SpotFunction /Round /Function findRes\n"));
}

TEST_F(Halftone, OfAScreenWritesItsNumbersByTheRule) {
    EXPECT_EQ(Written("/HalftoneType 1 /Angle -0.0"), Defined("1", "/Angle 0\n"));
    // The number that 32 bits have for 133.333333.
    EXPECT_EQ(Written("/HalftoneType 1 /Frequency 133.333333"), Defined("1", "/Frequency 133.333328\n"));
    EXPECT_EQ(Written("/HalftoneType 1 /Frequency 60.50 /Angle -45"),
              Defined("1", "/Frequency 60.5\n/Angle -45\n"));
    EXPECT_EQ(Written("/HalftoneType 1 /Frequency 21 0 R"), Defined("1", "/Frequency 7\n"));
    EXPECT_EQ(Written("/HalftoneType 1"), Defined("1", ""));
}

TEST_F(Halftone, OfAScreenNeverAsksForAccuracy) {
    EXPECT_EQ(Written("/HalftoneType 1 /Frequency 60 /AccurateScreens true"),
              Defined("1", "/Frequency 60\n"));
}

TEST_F(Halftone, OfAScreenDefinesTheFunctionsThatItRefersToFirst) {
    EXPECT_EQ(Written("/HalftoneType 1 /SpotFunction 20 0 R"),
              kFunction + Defined("1", "/SpotFunction /N20 /Function findRes \n"));
    EXPECT_EQ(Written("/HalftoneType 1 /TransferFunction 20 0 R /SpotFunction 20 0 R"),
              kFunction + Defined("1",
                                  "/SpotFunction /N20 /Function findRes \n"
                                  "/TransferFunction /N20 /Function findRes \n"));
}

TEST_F(Halftone, WritesNoFunctionThatItHoldsAndNoListOfNames) {
    const std::string direct = "<< /FunctionType 2 /Domain [0 1] /N 1 >>";
    for (const std::string& value : {direct, std::string("[/Round /Line]"), std::string("(Round)"),
                                     std::string("5"), std::string("null")}) {
        EXPECT_EQ(Written("/HalftoneType 1 /SpotFunction " + value), Defined("1", "")) << value;
        EXPECT_EQ(Written("/HalftoneType 1 /TransferFunction " + value), Defined("1", "")) << value;
        EXPECT_EQ(Written("/HalftoneType 6 /TransferFunction " + value), Defined("6", "")) << value;
    }
    EXPECT_EQ(Written("/HalftoneType 1 /TransferFunction /Identity"), Defined("1", ""));
    EXPECT_EQ(Written("/HalftoneType 1 /TransferFunction 30 0 R"), Defined("1", ""));
}

TEST_F(Halftone, WritesTheNameOfASpotFunctionAsOneToken) {
    EXPECT_EQ(Written("/HalftoneType 1 /SpotFunction /" + std::string(126, 'x')),
              Defined("1", "/SpotFunction /" + std::string(126, 'x') + " /Function findRes\n"));
    const std::string written = Written("/HalftoneType 1 /SpotFunction /A#20quit#28");
    EXPECT_THAT(written, Not(HasSubstr(" quit")));
    EXPECT_THAT(written, Not(HasSubstr("(")));
}

TEST_F(Halftone, LeavesOutAFunctionThatCannotBeBuilt) {
    PdfBuilder pdf =
        File("<< /HalftoneType 1 /Frequency 60 /SpotFunction 22 0 R /TransferFunction 22 0 R >>");
    Prepare(pdf.Object(22, "<< /FunctionType 9 >>"));
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), Defined("1", "/Frequency 60\n"));
    EXPECT_EQ(Error().Code(), Status::kIllegalFunction);
}

TEST_F(Halftone, IsNotWrittenWhenItsFunctionCannotBe) {
    for (const std::string entry : {"/HalftoneType 1 /SpotFunction", "/HalftoneType 10 /TransferFunction"}) {
        PdfBuilder pdf = File("<< " + entry + " 22 0 R >>");
        Prepare(pdf.Object(22, "<< /FunctionType 2 >>"));
        EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
        EXPECT_EQ(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}),
                  Status::kInvalidDataType);
        EXPECT_EQ(Pieces::Joined(), "");
    }
}

// --- type 5 ---

TEST_F(Halftone, OfASetNamesItsPartsByStrings) {
    PdfBuilder pdf = File("<< /Type 30 0 R /HalftoneType 5 /Default 11 0 R /Cyan 12 2 R /A#28b#29 11 0 R >>");
    pdf.Object(11, "<< /HalftoneType 1 /Frequency 60 >>").Object(12, "<< /HalftoneType 1 /Angle 15 >>", 2);
    EXPECT_EQ(Written(pdf), Defined("1", "/Frequency 60\n", "/N11") + Defined("1", "/Angle 15\n", "/N12-2") +
                                Defined("5",
                                        "(Default) /N11 /Halftone findRes \n"
                                        "(Cyan) /N12-2 /Halftone findRes \n"
                                        "(A\\(b\\)) /N11 /Halftone findRes \n"));
}

TEST_F(Halftone, OfASetWritesNoPartThatItHolds) {
    EXPECT_EQ(Written("/HalftoneType 5 /Default << /HalftoneType 1 /Frequency 60 >>"), Defined("5", ""));
}

TEST_F(Halftone, OfASetTakesItsOwnEntriesForNoParts) {
    PdfBuilder pdf = File("<< /HalftoneType 11 0 R /Type 12 0 R /HalftoneName 13 0 R >>");
    EXPECT_EQ(Written(pdf.Object(11, "5").Object(12, "/Halftone").Object(13, "(Set)")),
              Defined("5", "/HalftoneName (Set)\n"));
}

TEST_F(Halftone, OfASetLeavesOutAPartThatIsNone) {
    PdfBuilder pdf = File("<< /HalftoneType 5 /Default 11 0 R /Cyan 12 0 R >>");
    Prepare(pdf.Object(11, "<< /HalftoneType 1 >>").Object(12, "<< /HalftoneType 7 >>"));
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}), Status::kOk);
    EXPECT_EQ(Pieces::Joined(),
              Defined("1", "", "/N11") + Defined("5", "(Default) /N11 /Halftone findRes \n"));
    EXPECT_EQ(Error().Code(), Status::kIllegalHalftone);
    EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(12));
}

TEST_F(Halftone, OfASetEndsWithTheFailureOfAPart) {
    PdfBuilder pdf = File("<< /HalftoneType 5 /Default 11 0 R >>");
    pdf.Object(11, "<< /HalftoneType 1 /SpotFunction 22 0 R >>").Object(22, "<< /FunctionType 2 >>");
    Prepare(pdf);
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}), Status::kInvalidDataType);
    EXPECT_EQ(Pieces::Joined(), "");
}

TEST_F(Halftone, OfASetThatContainsItselfEndsWithTheErrorRecorded) {
    PdfBuilder pdf = File("<< /HalftoneType 5 /Default 10 0 R /Cyan 11 0 R >>");
    Prepare(pdf.Object(11, "<< /HalftoneType 5 /Default 10 0 R >>"));
    static_cast<void>(Register(ResourceCategory::kHalftone));
    static_cast<void>(CurrentRegistry().EmitIfNeeded(ResourceCategory::kHalftone, {10, 0}));
    EXPECT_EQ(Error().Code(), Status::kIllegalHalftone);
}

// --- types 6, 10 and 16 ---

TEST_F(Halftone, OfThresholdsHasItsSizesAndNoData) {
    const auto written = [this](const std::string& entries) {
        return Written(File().Stream(10, "the thresholds", entries));
    };
    EXPECT_EQ(written("/HalftoneType 6 /Height 3 /Width 2"), Defined("6", "/Width 2\n/Height 3\n"));
    EXPECT_EQ(written("/HalftoneType 10 /Ysquare 5 /Xsquare 4"), Defined("10", "/Xsquare 4\n/Ysquare 5\n"));
    EXPECT_EQ(written("/HalftoneType 16 /Height2 4 /Width2 3 /Height 2 /Width 1"),
              Defined("16", "/Width 1\n/Height 2\n/Width2 3\n/Height2 4\n"));
    EXPECT_EQ(written("/HalftoneType 16 /Width 1 /Height 2"), Defined("16", "/Width 1\n/Height 2\n"));
    EXPECT_EQ(written("/HalftoneType 6 /Width 21 0 R"), Defined("6", "/Width 7\n"));
    EXPECT_EQ(written("/HalftoneType 6"), Defined("6", ""));
    EXPECT_EQ(written("/HalftoneType 6 /Xsquare 1 /Width2 3"), Defined("6", ""));
}

TEST_F(Halftone, OfThresholdsHasItsTransferFunctionBehindTheSizes) {
    for (const auto& [kind, sizes, lines] :
         {std::tuple{"6", "/Width 2", "/Width 2\n"}, std::tuple{"10", "/Xsquare 2", "/Xsquare 2\n"},
          std::tuple{"16", "/Width2 2", "/Width2 2\n"}}) {
        const std::string type = kind;
        EXPECT_EQ(
            Written(File().Stream(10, "the thresholds",
                                  "/TransferFunction 20 0 R /HalftoneType " + type + " " + sizes)),
            kFunction + Defined(kind, lines + std::string("/TransferFunction /N20 /Function findRes \n")));
    }
}

// --- all of them ---

TEST_F(Halftone, HasItsNameAsItStandsWhenThatIsOneString) {
    const auto name = [this](const std::string& string) {
        const std::string written = Written("/HalftoneType 6 /HalftoneName " + string);
        EXPECT_THAT(written, StartsWith("/N10 <</HalftoneType 6\n/HalftoneName (")) << string;
        EXPECT_THAT(written, ::testing::EndsWith(")\n>> /Halftone defineRes pop\n")) << string;
        return Between(written, "/HalftoneName ", ">> /Halftone defineRes");
    };
    EXPECT_EQ(name("(Fine (60))"), "(Fine (60))\n");
    EXPECT_EQ(name("(a\\)b\\\\)"), "(a\\)b\\\\)\n");
    EXPECT_EQ(name("()"), "()\n");
    EXPECT_EQ(name("<46696E65>"), "(Fine)\n");
    EXPECT_EQ(name("<2829>"), "(())\n");
    EXPECT_EQ(name("<2928>"), "(\\)\\()\n");
    EXPECT_EQ(name("<5C>"), "(\\\\)\n");
    EXPECT_EQ(name("(" + std::string(200, 'x') + ")"), "(" + std::string(127, 'x') + ")\n");
    EXPECT_EQ(name("(" + std::string(126, 'x') + "(y))"), "(" + std::string(126, 'x') + "\\()\n");
    EXPECT_EQ(name("(" + std::string(126, 'x') + "\\)y)"), "(" + std::string(126, 'x') + "\\\\)\n");
}

TEST_F(Halftone, HasNoNameThatIsNoString) {
    EXPECT_EQ(Written("/HalftoneType 6 /HalftoneName /Fine"), Defined("6", ""));
    EXPECT_EQ(Written("/HalftoneType 6 /HalftoneName 5"), Defined("6", ""));
}

TEST_F(Halftone, HasANameForEachType) {
    for (const std::string kind : {"1", "5", "6", "10", "16"}) {
        EXPECT_EQ(Written("/HalftoneType " + kind + " /HalftoneName (Fine)"),
                  Defined(kind, "/HalftoneName (Fine)\n"));
    }
}

TEST_F(Halftone, OfAnotherTypeIsNone) {
    for (const std::string object :
         {"<< /HalftoneType 0 >>", "<< /HalftoneType 2 >>", "<< /HalftoneType 4 >>", "<< /HalftoneType 9 >>",
          "<< /HalftoneType 17 >>", "<< /HalftoneType -1 >>", "<< /HalftoneType 4294967297 >>",
          "<< /HalftoneType /One >>", "<< /HalftoneType (1) >>", "<< >>", "[1]", "1", "/Default", "null"}) {
        PdfBuilder pdf = File(object);
        Prepare(pdf);
        EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kIllegalHalftone) << object;
        EXPECT_EQ(Error().Code(), Status::kIllegalHalftone) << object;
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << object;
    }
}

TEST_F(Halftone, IsDefinedInTheSetupByTheStateThatUsesIt) {
    PdfBuilder pdf = Pages({"/Resources << /ExtGState << /GS 11 0 R >> >>"});
    pdf.Object(11, "<< /HT 10 0 R >>").Object(10, "<< /HalftoneType 1 /Frequency 60 >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_THAT(SetupOf(run.output), StartsWith(Defined("1", "/Frequency 60\n") + "/N11 <<\n"));
    EXPECT_EQ(PageSetupOf(run.output), "");
}

TEST_F(Halftone, BecomesGlobalOnItsSecondPage) {
    Prepare(File("<< /HalftoneType 1 >>"));
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_FALSE(CurrentRegistry().IsGlobal(ResourceCategory::kHalftone, {10, 0}));
    CurrentRegistry().SetCurrentPage(2);
    EXPECT_EQ(Register(ResourceCategory::kHalftone), Status::kOk);
    EXPECT_TRUE(CurrentRegistry().IsGlobal(ResourceCategory::kHalftone, {10, 0}));
}

TEST_F(Halftone, WithoutSenseLeavesAProgramThatTheDeviceRuns) {
    const std::vector<std::string> hostile = {
        "/HalftoneType 1",
        "/HalftoneType 1 /Frequency nan /Angle 1e999 /SpotFunction /Round",
        "/HalftoneType 1 /Frequency 0 /Angle -1e38 /SpotFunction /Unheard",
        "/HalftoneType 1 /Frequency (x) /Angle /y /SpotFunction 20 0 R",
        "/HalftoneType 1 /Frequency 60 /Angle 0 /SpotFunction /#28#28",
        "/HalftoneType 5",
        "/HalftoneType 5 /Cyan 30 0 R",
        "/HalftoneType 5 /Default 400 0 R /#28 30 0 R",
        "/HalftoneType 5 /Default 405 0 R",
        "/HalftoneType 6 /Width -5 /Height 2147483648 /HalftoneName <5C>",
        "/HalftoneType 6 /Width 2147483647 /Height 2147483647",
        "/HalftoneType 10 /Xsquare (x) /Ysquare 0 /HalftoneName (\\200\xFF\\))",
        "/HalftoneType 16 /Width 1 /TransferFunction 20 0 R",
    };
    std::vector<std::string> pages;
    for (std::size_t i = 0; i < hostile.size(); ++i) {
        pages.push_back("/Contents 304 0 R /Resources << /ExtGState << /GS << /HT " +
                        std::to_string(400 + i) + " 0 R >> >> >>");
    }
    PdfBuilder pdf = Pages(pages);
    for (std::size_t i = 0; i < hostile.size(); ++i) {
        pdf.Object(static_cast<unsigned>(400 + i), "<< " + hostile[i] + " >>");
    }
    pdf.Stream(20, "{ pop }", "/FunctionType 4 /Domain [-1 1 -1 1] /Range [-1 1]").Object(30, "/Round");
    const FileRun run = RunFile(pdf.Stream(304, "q /GS gs 0.5 g 0 0 9 9 re f Q 1 w").Bytes());
    EXPECT_EQ(run.global, 0);
    EXPECT_THAT(run.pages, Each(0));
    const Outcome outcome = Interpret("-sDEVICE=nullpage", run.output);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "");
}

}  // namespace
}  // namespace zorvan::test
