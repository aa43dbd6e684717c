// Functions by a formula and by a program, as dictionaries and as procedures.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "paint/paint_page.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

class FunctionText : public PaintTest {};

constexpr const char* kDictionaryEnd = ">>\n/FunctionDictionary defineRes pop\n";
constexpr const char* kProcedureEnd =
    "currentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n"
    "/Function defineRes pop\n";

std::string Exponential(const std::string& entries) {
    return "<< /FunctionType 2 " + entries + " >>";
}

// --- by a formula ---

TEST_F(FunctionText, WithoutResultsGoesFromZeroToOne) {
    EXPECT_EQ(
        Function(kDictionary, Exponential("/Domain [0 1] /N 1")),
        std::string("/N10 <</FunctionType 2\n/Domain [0 1 ]\n/C0 [0]\n/C1 [1]\n/N 1\n") + kDictionaryEnd);
    EXPECT_EQ(Function(kProcedure, Exponential("/Domain [0 1] /N 1")),
              std::string("/N10 [7 dict begin\n/Domain [0 1 ] def\n/C0 [0] def\n/C1 [1] def\n/N 1 def\n"
                          "/DimOut 1 def\n") +
                  kProcedureEnd);
}

TEST_F(FunctionText, HasItsArraysNumberByNumber) {
    const std::string function =
        Exponential("/N 2.5 /C1 [1 0.50 -1] /C0 [0 .25 1.0] /Range [0 1 0 1 -1 1] /Domain [0.0 2]");
    EXPECT_EQ(Function(kDictionary, function),
              std::string("/N10 <</FunctionType 2\n/Domain [0 2 ]\n/Range [0 1 0 1 -1 1 ]\n"
                          "/C0 [0 0.25 1 ]\n/C1 [1 0.5 -1 ]\n/N 2.5\n") +
                  kDictionaryEnd);
    EXPECT_EQ(Function(kProcedure, function),
              std::string("/N10 [7 dict begin\n/Domain [0 2 ] def\n/Range [0 1 0 1 -1 1 ] def\n"
                          "/C0 [0 0.25 1 ] def\n/C1 [1 0.5 -1 ] def\n/N 2.5 def\n/DimOut 3 def\n") +
                  kProcedureEnd);
}

TEST_F(FunctionText, CountsItsResultsByTheFirstOfTheTwo) {
    EXPECT_THAT(Function(kProcedure, Exponential("/Domain [0 1] /C1 [1 1] /N 1")),
                HasSubstr("/C0 [0] def\n/C1 [1 1 ] def\n/N 1 def\n/DimOut 1 def\n"));
    EXPECT_THAT(Function(kProcedure, Exponential("/Domain [0 1] /C0 [1 1] /N 1")),
                HasSubstr("/C0 [1 1 ] def\n/C1 [1] def\n/N 1 def\n/DimOut 2 def\n"));
    EXPECT_THAT(Function(kProcedure, Exponential("/Domain [0 1] /C0 [] /N 1")),
                HasSubstr("/C0 [] def\n/C1 [1] def\n/N 1 def\n/DimOut 0 def\n"));
}

TEST_F(FunctionText, HasItsExponentAsItIsOrNotAtAll) {
    const auto exponent = [this](const std::string& number) {
        const std::string text = Function(kDictionary, Exponential("/Domain [0 1] " + number));
        return text.substr(text.find("/C1 [1]\n") + 8);
    };
    EXPECT_EQ(exponent("/N 1"), std::string("/N 1\n") + kDictionaryEnd);
    EXPECT_EQ(exponent("/N 1.0"), std::string("/N 1\n") + kDictionaryEnd);
    EXPECT_EQ(exponent("/N 2.5"), std::string("/N 2.5\n") + kDictionaryEnd);
    EXPECT_EQ(exponent("/N -0.5"), std::string("/N -0.5\n") + kDictionaryEnd);
    EXPECT_EQ(exponent(""), kDictionaryEnd);
}

TEST_F(FunctionText, TakesItsEntriesByReference) {
    PdfBuilder pdf = File("<< /FunctionType 11 0 R /Domain 12 0 R /C0 13 0 R /N 14 0 R >>");
    pdf.Object(11, "2").Object(12, "[14 0 R 1]").Object(13, "[0.5]").Object(14, "0");
    EXPECT_EQ(
        Function(kDictionary, pdf),
        std::string("/N10 <</FunctionType 2\n/Domain [0 1 ]\n/C0 [0.5 ]\n/C1 [1]\n/N 0\n") + kDictionaryEnd);
}

TEST_F(FunctionText, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = File();
    Prepare(pdf.Object(12, Exponential("/Domain [0 1] /N 1"), 1));
    EXPECT_EQ(Register(ResourceCategory::kFunction, 0, 12, 1), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
    EXPECT_THAT(Pieces::Joined(), ::testing::StartsWith("/N12-1 <</FunctionType 2\n"));
}

TEST_F(FunctionText, FailsWithoutAnArrayThatItNeeds) {
    for (const std::string entries :
         {"/N 1", "/Domain 5 /N 1", "/Domain (01) /N 1", "/Domain << >> /N 1", "/Domain 99 0 R /N 1",
          "/Domain [0 1] /Range 5", "/Domain [0 1] /Range /R", "/Domain [0 1] /C0 0", "/Domain [0 1] /C1 1",
          "/Domain [0 1] /C0 (x)", "/Domain [0 1] /C1 << >>"}) {
        for (const FunctionForm form : {kDictionary, kProcedure}) {
            PdfBuilder pdf = File(Exponential(entries));
            EXPECT_EQ(StatusOf(form, pdf), Status::kInvalidDataType) << entries;
            EXPECT_EQ(Error().Code(), Status::kInvalidDataType) << entries;
            EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << entries;
            EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("defineRes"))) << entries;
        }
    }
}

TEST_F(FunctionText, TakesNullForAMissingEntry) {
    EXPECT_EQ(Function(kDictionary, Exponential("/Domain [0 1] /Range null /C0 null /C1 99 0 R /N null")),
              std::string("/N10 <</FunctionType 2\n/Domain [0 1 ]\n/C0 [0]\n/C1 [1]\n") + kDictionaryEnd);
}

TEST_F(FunctionText, StopsWhenTheHostRefuses) {
    Prepare(File(Exponential("/Domain [0 1] /N 1")));
    EXPECT_EQ(RegisterFunction(kDictionary), Status::kOk);
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(ToNumber(CurrentRegistry().EmitGlobal()), 7);
    EXPECT_EQ(Error().Code(), Status::kOk);
}

// --- by a program ---

PdfBuilder Calculator(std::string_view program, std::string_view filter = "") {
    return PdfBuilder()
        .Object(1, "<< >>")
        .Stream(10, program, "/FunctionType 4 /Domain [0 1] /Range [0 1] " + std::string(filter));
}

TEST_F(FunctionText, OfAProgramIsThatProgramInBothForms) {
    EXPECT_EQ(Function(kDictionary, Calculator("{ dup mul }")),
              "/N10 { dup mul } bind\n/FunctionDictionary defineRes pop\n");
    EXPECT_EQ(Function(kProcedure, Calculator("{ dup mul }")),
              "/N10 { dup mul } bind\n/Function defineRes pop\n");
    EXPECT_EQ(Function(kProcedure, Calculator("{\n 0.5 gt\r\n {1}\t{0} ifelse\n}\n")),
              "/N10 {\n 0.5 gt\r\n {1}\t{0} ifelse\n}\n bind\n/Function defineRes pop\n");
}

TEST_F(FunctionText, OfAProgramIsDecoded) {
    EXPECT_EQ(Function(kProcedure, Calculator("7B 64 75 70 20 6D 75 6C 7D>", "/Filter /ASCIIHexDecode")),
              "/N10 {dup mul} bind\n/Function defineRes pop\n");
}

TEST_F(FunctionText, OfADamagedProgramFailsToDecode) {
    for (const FunctionForm form : {kDictionary, kProcedure}) {
        PdfBuilder pdf = Calculator("no such data", "/Filter /FlateDecode");
        EXPECT_EQ(StatusOf(form, pdf), Status::kDecodeError);
        EXPECT_EQ(Error().Code(), Status::kDecodeError);
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10));
        EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("defineRes")));
    }
}

TEST_F(FunctionText, OfAProgramThatIsNoStreamFails) {
    EXPECT_EQ(StatusOf(kProcedure, File("<< /FunctionType 4 /Domain [0 1] /Range [0 1] >>")),
              Status::kDecodeError);
    EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("defineRes")));
}

// What stands between the braces is the device's affair, but the braces must be there.
TEST_F(FunctionText, OfAProgramWithoutItsBracesLeavesAProgramThatTheDeviceRuns) {
    for (const std::string program :
         {"", " ", "dup mul", "{ dup", "{ } }", "{ } 1 {", "(", "{ } quit {", "% { }"}) {
        for (const FunctionForm form : {kDictionary, kProcedure}) {
            Prepare(Calculator(program));
            static_cast<void>(RegisterFunction(form));
            static_cast<void>(CurrentRegistry().EmitGlobal());
            const Outcome outcome = PrologJob().Setup(Pieces::Joined()).Page("(reached) =").Run();
            EXPECT_EQ(outcome.text.substr(0, 60), "reached\n") << program;
        }
    }
}

// A form feed ends a comment, and a binary token may hide a brace.
TEST_F(FunctionText, OfAProgramWhoseBracesOnlySeemToMatchFails) {
    for (const std::string program : {"{%\f} quit {\n}", "{ \x8E\x01{ } quit }", "{ \x80 }"}) {
        EXPECT_EQ(StatusOf(kProcedure, Calculator(program)), Status::kDecodeError) << program;
        EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("defineRes")));
    }
    EXPECT_EQ(Function(kProcedure, Calculator("{ dup%\x80}\f mul }")),
              "/N10 { dup%\x80}\f mul } bind\n/Function defineRes pop\n");
}

// --- which function it is ---

TEST_F(FunctionText, OfAnotherTypeIsNone) {
    for (const std::string object :
         {"<< /FunctionType 1 >>", "<< /FunctionType 5 >>", "<< /FunctionType -1 >>",
          "<< /FunctionType 2147483647 >>", "<< /FunctionType 4294967298 >>", "<< /FunctionType /Two >>",
          "<< /FunctionType (2) >>", "<< /FunctionType null >>", "<< >>", "[2]", "2", "/Identity", "null",
          "(x)"}) {
        PdfBuilder pdf = File(object);
        Prepare(pdf);
        EXPECT_EQ(RegisterFunction(kDictionary), Status::kIllegalFunction) << object;
        EXPECT_EQ(Error().Code(), Status::kIllegalFunction) << object;
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << object;
        EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk) << object;
        EXPECT_EQ(Pieces::Joined(), "") << object;
    }
}

TEST_F(FunctionText, HasTheFormOfItsFirstUser) {
    for (const FunctionForm first : {kDictionary, kProcedure}) {
        Prepare(File(Exponential("/Domain [0 1] /N 1")));
        EXPECT_EQ(RegisterFunction(first), Status::kOk);
        EXPECT_EQ(RegisterFunction(first == kDictionary ? kProcedure : kDictionary), Status::kOk);
        EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
        EXPECT_THAT(Pieces::Joined(), EndsWith(first == kDictionary ? kDictionaryEnd : kProcedureEnd));
        OutputPiece use;
        CurrentRegistry().GetObject(ResourceCategory::kFunction, {10, 0})->AppendUse(use);
        EXPECT_EQ(use.View(),
                  first == kDictionary ? "/N10 /FunctionDictionary findRes " : "/N10 /Function findRes ");
    }
}

TEST_F(FunctionText, IsWrittenOnce) {
    Prepare(File(Exponential("/Domain [0 1] /N 1")));
    EXPECT_EQ(RegisterFunction(kDictionary), Status::kOk);
    CurrentRegistry().SetCurrentPage(2);
    EXPECT_EQ(RegisterFunction(kDictionary), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
    EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
    EXPECT_EQ(CountOf(Pieces::Joined(), "defineRes"), 1);
}

TEST_F(FunctionText, OfSenselessNumbersIsNoReasonToCrash) {
    const std::string many = "[" + [] {
        std::string numbers;
        for (int i = 0; i < 20000; ++i) {
            numbers += "0.5 ";
        }
        return numbers;
    }() + "]";
    for (const std::string& entries :
         {std::string("/Domain [] /N nan"), std::string("/Domain [null (x) /y [1]] /C0 [<< >>] /N 1e999"),
          std::string("/Domain [1 0] /C0 [1e38] /C1 [-1e38] /N -1e38"),
          std::string("/Domain [0] /Range [5] /N 2147483648"), "/Domain " + many + " /C0 " + many}) {
        for (const FunctionForm form : {kDictionary, kProcedure}) {
            EXPECT_THAT(Function(form, Exponential(entries)), HasSubstr(" defineRes pop\n"));
        }
    }
}

TEST(FunctionRegistry, NumbersDirectFunctionsAcrossTheFilesOfAJob) {
    const std::string direct = "<< /FunctionType 2 /Domain [0 1] /N 1 >>";
    PdfBuilder pdf = OnePage("n", "/Resources << /ExtGState << /GS 10 0 R >> >>");
    pdf.Object(10, "<< /BG " + direct + " /UCR " + direct + " >>");
    const Job job;
    const std::string first = SetupOf(RunFile(pdf.Bytes()).output);
    EXPECT_THAT(first, HasSubstr("\n/BG /N589823 /Function findRes \n/UCR /N589824 /Function findRes \n"));
    const std::string second = SetupOf(RunFile(pdf.Bytes()).output);
    EXPECT_THAT(second, HasSubstr("\n/BG /N589825 /Function findRes \n/UCR /N589826 /Function findRes \n"));
}

}  // namespace
}  // namespace zorvan::test
