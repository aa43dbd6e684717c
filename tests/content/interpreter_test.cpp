// The token loop, the stack, the keywords that build objects, and which streams a content is made of.
#include "content/interpreter.h"

#include <new>
#include <string>

#include <gmock/gmock.h>

#include "api/session.h"
#include "content/color_state.h"
#include "pdf/operand_stack.h"
#include "platform/limits.h"
#include "support/host.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;

Conversion ConvertContent(std::string_view content) {
    return Convert(OnePage(content).Bytes());
}

/// One page whose `Contents` is this value; objects 10, 11 and 12 are streams of "1 w", "2 w" and "3 w".
Conversion ConvertContents(const std::string& contents) {
    auto pdf = Pages({"/Contents " + contents});
    return Convert(pdf.Stream(10, "1 w").Stream(11, "2 w").Stream(12, "3 w").Bytes());
}

std::string ContentsBecome(const std::string& contents) {
    return ContentOf(ConvertContents(contents).output);
}

TEST(Contents, AreAStreamOrAnArrayOfReferencedStreams) {
    EXPECT_EQ(ContentsBecome("10 0 R"), "1 w\n");
    EXPECT_EQ(ContentsBecome("[10 0 R 12 0 R 11 0 R]"), "1 w\n3 w\n2 w\n");
    EXPECT_EQ(ContentsBecome("[10 0 R 10 0 R]"), "1 w\n1 w\n");
}

TEST(Contents, MayBeAReferenceToAnArray) {
    auto pdf = Pages({"/Contents 20 0 R"});
    pdf.Object(20, "[10 0 R 11 0 R]").Stream(10, "1 w").Stream(11, "2 w");
    EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output), "1 w\n2 w\n");
}

TEST(Contents, OfAnotherKindWriteNothing) {
    EXPECT_EQ(ContentsBecome("5"), "");
    EXPECT_EQ(ContentsBecome("<< /A 1 >>"), "");
    EXPECT_EQ(ContentsBecome("[]"), "");
    EXPECT_EQ(ContentsBecome("99 0 R"), "");
    EXPECT_EQ(ContentsBecome("[99 0 R 2 0 R 5 (x) [10 0 R] 11 0 R]"), "2 w\n");
}

TEST(Contents, PassOverDirectDictionariesInAnArray) {
    EXPECT_EQ(ContentsBecome("[<< /Length 3 >> 10 0 R << /Length 3 >>]"), "1 w\n");
}

TEST(Contents, ThatAreEmptySucceed) {
    const Conversion conversion = ConvertContent("");
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(ContentOf(conversion.output), "");
    EXPECT_EQ(ContentOf(ConvertContent("  \n% only a comment").output), "");
}

TEST(Contents, PassOperandsFromOneStreamToTheNext) {
    auto pdf = Pages({"/Contents [10 0 R 11 0 R 12 0 R]"});
    pdf.Stream(10, "1 0 0 rg (text) [1 2").Stream(11, "3] 7").Stream(12, "d 0 1 0 sc");
    EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output), "1 0 0 rg\n[1 2 3 ] 7 d\n0 1 0 sc\n");
}

TEST(Contents, KeepStringsAndDictionariesAliveFromOneStreamToTheNext) {
    auto pdf = Pages({"/Contents [10 0 R 11 0 R]"});
    pdf.Stream(10, "/Span << /ActualText (a long text that stands in a block of its own) /K [1 2 3] >>");
    pdf.Stream(11, "BDC 1 w EMC");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(ContentOf(conversion.output), "1 w\n");
    EXPECT_EQ(conversion.error.code, 0);
}

TEST(Contents, DoNotJoinATokenSplitBetweenStreams) {
    auto pdf = Pages({"/Contents [10 0 R 11 0 R]"});
    pdf.Stream(10, "1 2").Stream(11, "3 m");
    EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output), "2 3 m\n");
}

TEST(Contents, EndWithTheFirstStreamThatFails) {
    auto pdf = Pages({"/Contents [10 0 R 11 0 R 12 0 R]", "/Contents 12 0 R"});
    pdf.Stream(10, "1 w").Stream(11, "2 w m").Stream(12, "3 w");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{-4093, 0}));
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(11));
    EXPECT_EQ(Between(conversion.output, " RC\n", "\n%%Page"), "1 w\n2 w\n");
    EXPECT_EQ(ContentOf(conversion.output, 2), "3 w\n");
}

TEST(Contents, ThatReachBeyondTheFileAreRecordedAndStillRun) {
    auto pdf = Pages({"/Contents 10 0 R"});
    pdf.Section();
    // The stream stands behind its own section's table, as the last thing of the file.
    std::string bytes = pdf.Object(10, "<< /Length 100000 >>\nstream\n1 w\n2 w\n%").Bytes();
    const Conversion conversion = Convert(bytes);
    EXPECT_EQ(conversion.error.code, -4094);
    EXPECT_EQ(conversion.error.message, "Data is not enough.");
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
    EXPECT_THAT(conversion.output, HasSubstr(" RC\n1 w\n2 w\n"));
}

TEST(Contents, OfADamagedStreamPrintUpToTheDamage) {
    auto pdf = Pages({"/Contents 10 0 R"});
    // A stored block of "1 w", and a block of the type that does not exist.
    const std::string_view data(
        "\x78\x01\x00\x03\x00\xFC\xFF"
        "1 w"
        "\x06",
        11);
    pdf.Stream(10, data, "/Filter /FlateDecode");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.error.code, -4092);
    EXPECT_THAT(conversion.output, HasSubstr(" RC\n1 w\n"));
}

TEST(Stack, ReadsTheMatrixFromItsBottomAndDropsItsTop) {
    EXPECT_EQ(Translate("8 9 1 0 0 1 0 0 cm"), "8 9 1 0 0 1 cm\n");
    EXPECT_EQ(Translate("8 9 1 0 0 1 0 0 cm m"), "8 9 1 0 0 1 cm\n8 9 m\n");
    EXPECT_EQ(Translate("8 9 unknown 1 0 0 1 0 0 cm m"), "8 9 1 0 0 1 cm\n8 9 m\n");
}

TEST(Stack, KeepsTheOperandsOfUnknownOperators) {
    EXPECT_EQ(Translate("1 2 foo 3 w m"), "3 w\n1 2 m\n");
    EXPECT_EQ(Translate("foo bar* BXX"), "");
}

TEST(Stack, GrowsWithoutALimit) {
    std::string content;
    for (int i = 0; i < 100000; ++i) {
        content += "7 ";
    }
    EXPECT_EQ(Translate(content + "w"), "7 w\n");
}

TEST(Keywords, CountByTheirFirstFourBytes) {
    EXPECT_EQ(Translate("[false falsehood fals] 0 d"), "[0 0 0 ] 0 d\n");
    EXPECT_EQ(Translate("falseX 1 m"), "0 1 m\n");
    EXPECT_EQ(Translate("fal 1 w"), "1 w\n");
    EXPECT_EQ(Translate("true truest nullify 1 2 3 re"), "0 1 2 3 re\n");
}

TEST(Keywords, AreCaseSensitive) {
    EXPECT_EQ(Translate("1 2 M 3 4 m"), "2 M\n3 4 m\n");
}

TEST(Arrays, TakeWhatStandsAboveTheNearestMark) {
    EXPECT_EQ(Translate("[1 [2 3] 4] 0 d"), "[1 0 4 ] 0 d\n");
    EXPECT_EQ(Translate("5 [1 2] 0 d w"), "[1 2 ] 0 d\n5 w\n");
}

TEST(Arrays, WithoutAMarkDropOneOperandAndLeaveTheKeyword) {
    EXPECT_EQ(Translate("1 2 3 ] m"), "2 0 m\n");
    EXPECT_EQ(Translate("] w"), "0 w\n");
}

TEST(Dictionaries, WithoutAMarkDropTheWholeStackAndLeaveTheKeyword) {
    EXPECT_EQ(Translate("1 2 3 >> w"), "0 w\n");
    const Conversion conversion = ConvertContent("1 2 3 >> m");
    EXPECT_EQ(conversion.pages, std::vector<int>{-4093});
}

TEST(Dictionaries, TakeTheirPairsAndDropAnOddLastValue) {
    EXPECT_EQ(Translate("7 << /A 1 /B >> /X BMC w"), "0 w\n");
    EXPECT_EQ(Translate("7 << /A 1 /B 2 >> /X exch BDC w"), "7 w\n");
}

TEST(Strings, AreTakenAsOneOperandWithWhatLooksLikeOperators) {
    EXPECT_EQ(Translate("(1 w) <31> (a\\)b (c) d) BMC BMC BMC 2 w"), "2 w\n");
}

TEST(Tokens, ThatAreNoneEndTheContent) {
    for (const char* const content : {"n (never closed", "n > S", "n (a", "n >x S"}) {
        const Conversion conversion = ConvertContent(content);
        EXPECT_EQ(conversion.pages, std::vector<int>{-4071}) << content;
        EXPECT_EQ(conversion.error.code, -4071) << content;
        EXPECT_EQ(conversion.error.message, "Scan token error.");
        EXPECT_EQ(Between(conversion.output, " RC\n", "%%Trailer"), "n\n") << content;
    }
}

TEST(Tokens, OfNamesThatAreTooLongEndTheContent) {
    EXPECT_EQ(ConvertContent("/" + std::string(128, 'x') + " ri").pages, std::vector<int>{-4071});
}

TEST(Tokens, ThatAreStrayDelimitersArePassedOver) {
    EXPECT_EQ(Translate("1 w ) 2 w { 3 w } 4 w"), "1 w\n2 w\n3 w\n4 w\n");
    EXPECT_EQ(Translate("1 w }"), "1 w\n");
    EXPECT_EQ(Translate("{{{{)))"), "");
}

TEST(Tokens, MayStandWithoutBlanksBetweenThem) {
    EXPECT_EQ(Translate("[3]0 d/Perceptual ri"), "[3 ] 0 d\n/Perceptual ri\n");
    EXPECT_EQ(Translate("1 w%comment\n2 w\r3 w%"), "1 w\n2 w\n3 w\n");
}

TEST(Nesting, OfArraysIsCapped) {
    const auto nested = [](int depth) {
        return std::string(static_cast<std::size_t>(depth), '[') +
               std::string(static_cast<std::size_t>(depth), ']');
    };
    EXPECT_EQ(ConvertContent(nested(512) + " 1 d").pages, std::vector<int>{0});
    EXPECT_EQ(ConvertContent(nested(513) + " 1 d").pages, std::vector<int>{-4071});
    EXPECT_EQ(ConvertContent(nested(100000)).pages, std::vector<int>{-4071});
}

TEST(Nesting, OfManyArraysSideBySideIsNotCapped) {
    std::string content;
    for (int i = 0; i < 2000; ++i) {
        content += "[1] 0 d /A << /B << >> >> BDC EMC ";
    }
    EXPECT_EQ(ConvertContent(content).pages, std::vector<int>{0});
}

TEST(Nesting, OfInlineImagesSideBySideIsNotCapped) {
    std::string content;
    for (int i = 0; i < 2000; ++i) {
        content += "BI /W 1 /H 1 ID x EI ";
    }
    EXPECT_EQ(ConvertContent(content).pages, std::vector<int>{0});
}

/// Contents that hold a stream itself, which no parser delivers inside an array, but users of the interpreter
/// do.
class DirectContents : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        const std::string bytes = OnePage("1 w").Bytes();
        ASSERT_EQ(Open(bytes), Status::kOk);
        const auto offset = static_cast<std::uint32_t>(bytes.find("1 w"));
        stream_ = OwnedObject(NewStream(offset, 3, NewDictionary(0)));
    }
    void TearDown() override {
        stream_ = {};
        JobTest::TearDown();
    }

    static std::string Become(PdfObject contents) {
        EXPECT_EQ(ContentInterpreter(nullptr, contents, ContentKind::kPage).Run(), Status::kOk);
        return Pieces::Joined();
    }

    OwnedObject stream_;
};

TEST_F(DirectContents, OfOneStreamAreThatStream) {
    EXPECT_EQ(Become(stream_.Get()), "1 w\n");
}

TEST_F(DirectContents, InsideAnArrayAreNothing) {
    const OwnedObject array(NewArray(1));
    ASSERT_TRUE(ArraySet(array.Get(), 0, stream_.Release()));
    EXPECT_EQ(Become(array.Get()), "");
}

class OperandStackTest : public JobTest {};

TEST_F(OperandStackTest, PopsNullWhenItIsEmptyAndStaysEmpty) {
    OperandStack stack;
    EXPECT_TRUE(IsNull(stack.Pop().Get()));
    EXPECT_EQ(stack.Count(), 0U);
    stack.Drop(3);
    stack.Clear();
    EXPECT_EQ(stack.Count(), 0U);
}

TEST_F(OperandStackTest, ReadsFromItsBottomAndNullOutside) {
    OperandStack stack;
    stack.Push(OwnedObject(MakeInteger(1)));
    stack.Push(OwnedObject(MakeInteger(2)));
    EXPECT_EQ(stack.At(0), MakeInteger(1));
    EXPECT_EQ(stack.At(1), MakeInteger(2));
    EXPECT_TRUE(IsNull(stack.At(2)));
    EXPECT_TRUE(IsNull(stack.At(0xFFFFFFFF)));
}

TEST_F(OperandStackTest, DropsNoMoreThanItHolds) {
    OperandStack stack;
    stack.Push(OwnedObject(MakeInteger(1)));
    stack.Push(OwnedObject(MakeInteger(2)));
    stack.Drop(1);
    EXPECT_EQ(stack.At(0), MakeInteger(1));
    stack.Drop(5);
    EXPECT_EQ(stack.Count(), 0U);
}

TEST_F(OperandStackTest, FreesWhatItDrops) {
    const auto live = [] { return CurrentJob()->allocations.LiveBlocks(); };
    const std::size_t before = live();
    {
        OperandStack stack;
        for (int i = 0; i < 5; ++i) {
            stack.Push(OwnedObject(NewArray(3)));
        }
        stack.Drop(2);
        static_cast<void>(stack.Pop());
        EXPECT_EQ(live(), before + 2);
    }
    EXPECT_EQ(live(), before);
}

TEST_F(OperandStackTest, ClosesAtTheNearestMarkAndPutsTheValueInItsPlace) {
    OperandStack stack;
    EXPECT_FALSE(stack.Close(MakeArray));
    stack.Push(OwnedObject(MakeInteger(7)));
    stack.PushMark();
    stack.PushMark();
    stack.Push(OwnedObject(MakeInteger(1)));
    stack.Push(OwnedObject(MakeInteger(2)));
    EXPECT_EQ(stack.Marks(), 2U);
    EXPECT_TRUE(stack.Close(MakeArray));
    EXPECT_EQ(stack.Count(), 3U);
    EXPECT_EQ(ArrayCount(stack.At(2)), 2U);
    EXPECT_TRUE(stack.Close(MakeArray));
    EXPECT_EQ(stack.Count(), 2U);
    EXPECT_EQ(stack.Marks(), 0U);
    EXPECT_FALSE(stack.Close(MakeArray));
}

TEST_F(OperandStackTest, ForgetsAMarkThatIsDropped) {
    OperandStack stack;
    stack.PushMark();
    stack.PushMark();
    stack.Drop(1);
    EXPECT_EQ(stack.Marks(), 1U);
    static_cast<void>(stack.Pop());
    EXPECT_EQ(stack.Marks(), 0U);
    EXPECT_FALSE(stack.Close(MakeDictionary));
    stack.PushMark();
    stack.Push(OwnedObject(MakeInteger(1)));
    stack.DropToMark();
    stack.DropToMark();
    EXPECT_EQ(stack.Count(), 0U);
    EXPECT_EQ(stack.Marks(), 0U);
}

// A content of many megabytes could otherwise ask for gigabytes.
TEST(OperandStack, HoldsNoMoreThanItsLimit) {
    OperandStack stack;
    for (std::uint32_t i = 0; i < limits::kOperands; ++i) {
        stack.Push(OwnedObject(MakeInteger(1)));
    }
    EXPECT_THROW(stack.Push(OwnedObject(MakeInteger(1))), std::bad_alloc);
    EXPECT_EQ(stack.Count(), limits::kOperands);
}

TEST(ColorStateStack, HoldsNoMoreThanItsLimit) {
    ColorStateStack states;
    for (std::uint32_t i = 1; i < limits::kSavedColorStates; ++i) {
        states.Push();
    }
    EXPECT_THROW(states.Push(), std::bad_alloc);
}

class ContentMemory : public JobTest {};

TEST_F(ContentMemory, IsGivenBackAfterEachPage) {
    ASSERT_EQ(OpenFile(OnePage("[1 [2 (x)] << /A (b) >>] (left) << /C [ >> ] (over) [ [").Bytes()), 0);
    const std::size_t before = CurrentJob()->allocations.LiveBlocks();
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    EXPECT_EQ(CurrentJob()->allocations.LiveBlocks(), before);
    ZORVAN_OneFileEnd();
}

}  // namespace
}  // namespace zorvan::test
