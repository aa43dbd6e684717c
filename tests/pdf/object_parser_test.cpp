// What the tokens of an object become.
#include "pdf/object_parser.h"

#include <string>

#include "api/current_job.h"
#include "pdf/allocation_registry.h"
#include "pdf/describe.h"
#include "pdf/name_table.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

std::string Repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

/// A file in which object 5 is 120 and object 6 is no object at all.
std::string FileBeforeTheText() {
    return PdfBuilder().Object(1, "<< >>").Object(5, "120").Object(6, ">x").Bytes();
}

class ObjectParser : public JobTest {
protected:
    /// Parses text that stands at the very end of the file.
    OwnedObject Parse(std::string_view text) {
        EXPECT_EQ(Open(file + std::string(text)), Status::kOk);
        blocksBefore = LiveBlocks();
        return OwnedObject(ParseObjectAt(File(), start));
    }
    std::string Parsed(std::string_view text) { return Describe(Parse(text).Get()); }
    /// The data's place behind the start of the text.
    std::uint32_t DataPlace(std::string_view text) { return StreamDataOffset(Parse(text).Get()) - start; }

    static std::size_t LiveBlocks() { return CurrentAllocations().LiveBlocks(); }

    const std::string file = FileBeforeTheText();
    const std::uint32_t start = static_cast<std::uint32_t>(file.size());
    std::size_t blocksBefore = 0;
};

TEST_F(ObjectParser, TakesTheValueBetweenObjAndEndobj) {
    EXPECT_EQ(Parsed("7 0 obj << /Type /Page >> endobj 8 0 obj"), "<</Type /Page>>");
    EXPECT_EQ(Parsed("7 0 obj\n-12.5\nendobj"), "-12.5r");
    EXPECT_EQ(Parsed("7 0 obj (a) endobj"), "(a)");
    EXPECT_EQ(Parsed("7 0 obj /N endobj"), "/N");
}

TEST_F(ObjectParser, EndsATrailerAtStartxref) {
    EXPECT_EQ(Parsed("<< /Size 5 /Root 1 0 R >> startxref 99"), "<</Size 5 /Root 1 0 R>>");
}

TEST_F(ObjectParser, DropsALoneKey) {
    EXPECT_EQ(Parsed("<< /A 1 /B >> endobj"), "<</A 1>>");
    EXPECT_EQ(Parsed("<< /A >> endobj"), "<<>>");
    EXPECT_EQ(Parsed("<< /A 1 (odd) >> endobj"), "<</A 1>>");
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

TEST_F(ObjectParser, OverwritesTheFirstSlotOfAKeyThatIsMetTwice) {
    const OwnedObject object = Parse("<< /A 1 /A 2 >> endobj");
    EXPECT_EQ(Describe(object.Get()), "<</A 2 ->>");
    EXPECT_EQ(DictSlotCount(object.Get()), 2U);
}

TEST_F(ObjectParser, FreesAValueThatIsOverwritten) {
    EXPECT_EQ(Parsed("<< /A [(x)] /B (y) /A (z) >> endobj"), "<</A (z) /B (y) ->>");
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

TEST_F(ObjectParser, NestsArrays) {
    EXPECT_EQ(Parsed("[1 [2 3] /N] endobj"), "[1 [2 3] /N]");
    EXPECT_EQ(Parsed("[[][[]]] endobj"), "[[] [[]]]");
}

TEST_F(ObjectParser, NestsDictionariesAndArrays) {
    EXPECT_EQ(Parsed("<</A<</B[1<</C(c)>>]>>>> endobj"), "<</A <</B [1 <</C (c)>>]>>>>");
}

TEST_F(ObjectParser, MakesReferences) {
    EXPECT_EQ(Parsed("[12 0 R 7 3 R] endobj"), "[12 0 R 7 3 R]");
    EXPECT_EQ(Parsed("12 0 R endobj"), "12 0 R");
}

TEST_F(ObjectParser, KeepsSixteenBitsOfAGeneration) {
    EXPECT_EQ(Parsed("5 65537 R endobj"), "5 1 R");
}

TEST_F(ObjectParser, MakesAReferenceOfWhatIsThere) {
    EXPECT_EQ(Parsed("9 R endobj"), "0 9 R");
    EXPECT_EQ(Parsed("R endobj"), "0 0 R");
}

TEST_F(ObjectParser, LetsNoHandleOutAsAnObjectNumber) {
    EXPECT_EQ(Parsed("(s) 0 R endobj"), "0 0 R");
    EXPECT_EQ(Parsed("[1] << >> R endobj"), "0 0 R");
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

TEST_F(ObjectParser, MakesBooleansAndNull) {
    EXPECT_EQ(Parsed("[true false null] endobj"), "[true false null]");
}

TEST_F(ObjectParser, TakesThePayloadOfAnyKeyForItsName) {
    EXPECT_EQ(Parsed("<< 1 2 >> endobj"), "<</Length 2>>");
    EXPECT_EQ(Parsed("<< 2 0 R 3 >> endobj"), "<</Filter 3>>");
    EXPECT_EQ(Parsed("<< true 3 >> endobj"), "<</Length 3>>");
}

TEST_F(ObjectParser, LetsTheNextPairOverwriteOneWhoseKeyIsWorthNothing) {
    EXPECT_EQ(Parsed("<< (s) (lost) /A 1 >> endobj"), "<</A 1 ->>");
    EXPECT_EQ(Parsed("<< null 1 [2] 3 /A 4 >> endobj"), "<</A 4 - ->>");
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

TEST_F(ObjectParser, TellsArraysFromDictionariesByTheirEndAlone) {
    EXPECT_EQ(Parsed("[/A 1 >> endobj"), "<</A 1>>");
    EXPECT_EQ(Parsed("<< /A 1 ] endobj"), "[/A 1]");
}

TEST_F(ObjectParser, IgnoresAClosingBracketWithoutAMark) {
    EXPECT_EQ(Parsed("] >> 5 ] >> endobj"), "5");
    EXPECT_EQ(Parsed("1 2 ] 3 endobj"), "3");
}

TEST_F(ObjectParser, SkipsStrayBrackets) {
    EXPECT_EQ(Parsed("[1 ) 2 } 3 { 4)}{] endobj"), "[1 2 3 4]");
    EXPECT_EQ(Parsed("5 )"), "op:");
}

TEST_F(ObjectParser, IgnoresOtherOperators) {
    EXPECT_EQ(Parsed("foo [1 bar 2] Tj endobj"), "[1 2]");
}

TEST_F(ObjectParser, SkipsComments) {
    EXPECT_EQ(Parsed("[1 % ] endobj\n2 %\r3] % (\nendobj"), "[1 2 3]");
}

TEST_F(ObjectParser, GivesNullForAnObjectWithoutAValue) {
    EXPECT_EQ(Parsed("7 0 obj endobj"), "null");
    EXPECT_EQ(Parsed("endobj"), "null");
    EXPECT_EQ(Parsed(""), "null");
    EXPECT_EQ(Parsed(" \n"), "null");
}

TEST_F(ObjectParser, GivesTheLastValueAtTheEndOfTheFile) {
    EXPECT_EQ(Parsed("<< /A 1 >>"), "<</A 1>>");
    EXPECT_EQ(Parsed("1 2"), "2");
    EXPECT_EQ(Parsed("[1 (s)"), "(s)");
    EXPECT_EQ(Parsed("[1 (s)\n"), "(s)");
    EXPECT_EQ(Parsed("<< /A ["), "mark");
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(ObjectParser, GivesNullForAnOffsetAtOrBehindTheEndOfTheFile) {
    static_cast<void>(Parse(""));
    EXPECT_EQ(ParseObjectAt(File(), start), MakeNull());
    EXPECT_EQ(ParseObjectAt(File(), 0xFFFFFFFF), MakeNull());
}

// --- streams ---

TEST_F(ObjectParser, FindsStreamDataBehindOneLineEnd) {
    EXPECT_EQ(DataPlace("<<>>stream\r\n\nx"), 12U);
    EXPECT_EQ(DataPlace("<<>>stream\n\nx"), 11U);
    EXPECT_EQ(DataPlace("<<>>stream\rx"), 11U);
    EXPECT_EQ(DataPlace("<<>>stream x"), 10U);
    EXPECT_EQ(DataPlace("<<>>stream"), 10U);
}

TEST_F(ObjectParser, TakesTheLengthOfAStream) {
    EXPECT_EQ(Parsed("<< /Length 33 >> stream\n"),
              "stream@" + std::to_string(start + 24) + "+33<</Length 33>>");
}

TEST_F(ObjectParser, ResolvesTheLengthOfAStream) {
    EXPECT_EQ(StreamLength(Parse("<< /Length 5 0 R >> stream\n").Get()), 120U);
}

TEST_F(ObjectParser, TakesALengthThatIsNoIntegerForNone) {
    EXPECT_EQ(StreamLength(Parse("<< /Length /Name >> stream\n").Get()), 0U);
    EXPECT_EQ(StreamLength(Parse("<< /Length 1.5 >> stream\n").Get()), 0U);
    EXPECT_EQ(StreamLength(Parse("<< /Length 99 0 R >> stream\n").Get()), 0U);
    EXPECT_EQ(StreamLength(Parse("<< >> stream\n").Get()), 0U);
}

TEST_F(ObjectParser, MakesAStreamOfWhateverStandsBeforeTheKeyword) {
    EXPECT_EQ(Parsed("stream\n"), "stream@" + std::to_string(start + 7) + "+0null");
    EXPECT_EQ(Parsed("(s) stream\n"), "stream@" + std::to_string(start + 11) + "+0(s)");
}

TEST_F(ObjectParser, KeepsItsOwnStackWhenAnInnerObjectFails) {
    EXPECT_EQ(Parsed("1 (kept) << /A [2] /Length 6 0 R >> stream\n"),
              "stream@" + std::to_string(start + 43) + "+0<</A [2] /Length 6 0 R>>");
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

// --- errors and limits ---

TEST_F(ObjectParser, RecordsTextThatIsNoTokenWithWhatFollows) {
    EXPECT_EQ(Parsed("[1 (s) >x0123456789abcdefghijklmnopqrstuvwxyz"), "(s)");
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
    EXPECT_EQ(Error().Offset(), 0U);
    EXPECT_EQ(TextOf(Error().Excerpt()), "0123456789abcdefghijklmnopqrstuv");
}

TEST_F(ObjectParser, RecordsNoMoreThanTheFileHoldsBehindTheError) {
    static_cast<void>(Parse("/A >xyz"));
    EXPECT_EQ(TextOf(Error().Excerpt()), "yz");
}

TEST_F(ObjectParser, FailsOnAStringThatTheFileCutsShort) {
    EXPECT_EQ(Parsed("<< /A 1 /B (abc"), "/B");
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
    EXPECT_EQ(Error().Excerpt().size(), 0U);
}

TEST_F(ObjectParser, FailsOnANameOf128Bytes) {
    EXPECT_EQ(Parsed("[/" + std::string(126, 'n') + "] endobj"), "[/" + std::string(126, 'n') + "]");
    EXPECT_EQ(Error().Code(), Status::kOk);
    static_cast<void>(Parse("[/" + std::string(128, 'n') + "] endobj"));
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
}

TEST_F(ObjectParser, NestsUpTo512Levels) {
    const std::string text = Repeated("[", 512) + Repeated("]", 512);
    EXPECT_EQ(Parsed(text + " endobj").size(), text.size());
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(ObjectParser, FailsOnDeeperNesting) {
    static_cast<void>(Parse(Repeated("<</A[", 257) + Repeated("]>>", 257) + " endobj"));
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
}

TEST_F(ObjectParser, FailsOnAHundredThousandNestedArrays) {
    static_cast<void>(Parse(Repeated("[", 100000) + Repeated("]", 100000) + " endobj"));
    EXPECT_EQ(Error().Code(), Status::kScanTokenError);
    EXPECT_EQ(LiveBlocks(), blocksBefore);
}

TEST_F(ObjectParser, CountsOnlyOpenBracketsAsNesting) {
    EXPECT_EQ(ArrayCount(Parse("[" + Repeated("[]", 2000) + "] endobj").Get()), 2000U);
    EXPECT_EQ(Parsed(Repeated("[ R ", 2000) + "5 endobj"), "5");
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(ObjectParser, KeepsEveryElementOfAnArrayOfMoreThan65535) {
    const OwnedObject array = Parse("[" + Repeated("7 ", 70000) + "(last)] endobj");
    EXPECT_EQ(ArrayCount(array.Get()), 70001U);
    EXPECT_EQ(Describe(ArrayGet(array.Get(), 70000)), "(last)");
    EXPECT_EQ(ArrayGet(array.Get(), 65536), MakeInteger(7));
}

TEST_F(ObjectParser, KeepsEveryEntryOfADictionaryOfMoreThan65535) {
    std::string text = "<< ";
    for (int i = 0; i < 70000; ++i) {
        text += "/K" + std::to_string(i) + " " + std::to_string(i) + " ";
    }
    const OwnedObject dictionary = Parse(text + "/K3 -3 >> endobj");
    EXPECT_EQ(DictSlotCount(dictionary.Get()), 70001U);
    EXPECT_EQ(DictGet(dictionary.Get(), CurrentNames().InternName("K69999")), MakeInteger(69999));
    EXPECT_EQ(DictGet(dictionary.Get(), CurrentNames().InternName("K3")), MakeInteger(-3));
    EXPECT_EQ(DictSlot(dictionary.Get(), 70000).key, 0U);
}

TEST_F(ObjectParser, KeepsEveryByteOfAStringOfMoreThan65535) {
    EXPECT_EQ(StringBytes(Parse("(" + std::string(70000, 's') + ") endobj").Get()).size(), 70000U);
    EXPECT_EQ(StringBytes(Parse("<" + std::string(70000, '4') + "> endobj").Get()).size(), 70000U);
}

TEST_F(ObjectParser, TakesNoTimeForClosingBracketsWithoutAMark) {
    // To search a stack of a million values for each would take hours.
    EXPECT_EQ(Parsed(Repeated("1 ", 1000000) + Repeated("] ", 1000000) + "endobj"), "1");
}

TEST_F(ObjectParser, OwnsNothingAfterBrokenText) {
    for (const char* text :
         {"[(a) [(b) << /C (c)", "<< /A (a) /B [(b)] R", "(a) (b) (c) endobj", "(a) (b) obj (c)",
          "[(a)] [(b)] R [(c)] >x", "<< [(k)] (v) ", "(a) stream", "[(a) ( "}) {
        static_cast<void>(Parse(text));
        EXPECT_EQ(LiveBlocks(), blocksBefore) << text;
    }
}

}  // namespace
}  // namespace zorvan::test
