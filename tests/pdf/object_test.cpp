// Values, their blocks, and who may read what out of them.
#include "pdf/object.h"

#include <cmath>
#include <limits>
#include <string>

#include "api/current_job.h"
#include "pdf/allocation_registry.h"
#include "pdf/describe.h"
#include "pdf/name_table.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

PdfObject Literal(std::string_view text) {
    return MakeString(BytesOf(text), StringKind::kLiteral);
}

/// Arrays of one element inside each other.
PdfObject DeepArray(int levels) {
    PdfObject inner = MakeInteger(1);
    for (int level = 0; level < levels; ++level) {
        const PdfObject outer = NewArray(1);
        EXPECT_TRUE(ArraySet(outer, 0, inner));
        inner = outer;
    }
    return inner;
}

/// One of every type that lives in a block, inside each other: 6 blocks.
PdfObject Nested() {
    const PdfObject dictionary = NewDictionary(3);
    EXPECT_TRUE(DictPut(dictionary, names::kType, MakeName(names::kPage)));
    EXPECT_TRUE(DictPut(dictionary, names::kKids, NewArray(2)));
    EXPECT_TRUE(ArraySet(DictGet(dictionary, names::kKids), 0, Literal("text")));
    EXPECT_TRUE(ArraySet(DictGet(dictionary, names::kKids), 1, MakeReference(12, 3)));
    const PdfObject outer = NewArray(3);
    EXPECT_TRUE(ArraySet(outer, 0, NewStream(100, 50, dictionary)));
    EXPECT_TRUE(ArraySet(outer, 2, MakeString(BytesOf("4142"), StringKind::kHexadecimal)));
    return outer;
}

class Objects : public JobTest {
protected:
    static std::size_t LiveBlocks() { return CurrentAllocations().LiveBlocks(); }
};

TEST_F(Objects, GiveNothingThroughAccessorsOfAnotherType) {
    for (const PdfObject object :
         {MakeNull(), MakeInteger(7), MakeReference(7, 0), MakeName(7), Literal("s")}) {
        EXPECT_EQ(DictGet(object, 7), MakeNull());
        EXPECT_FALSE(DictHas(object, 7));
        EXPECT_EQ(DictSlotCount(object), 0U);
        EXPECT_EQ(DictSlot(object, 0).key, 0U);
        EXPECT_FALSE(DictPut(object, 7, MakeNull()));
        EXPECT_EQ(ArrayCount(object), 0U);
        EXPECT_EQ(ArrayGet(object, 0), MakeNull());
        EXPECT_FALSE(ArraySet(object, 0, MakeNull()));
        EXPECT_EQ(StreamDataOffset(object), 0U);
        EXPECT_EQ(StreamLength(object), 0U);
        EXPECT_EQ(StreamDictionary(object), MakeNull());
    }
    EXPECT_EQ(StringBytes(NewArray(1)).data(), nullptr);
    EXPECT_EQ(StringBytes(NewArray(1)).size(), 0U);
    EXPECT_EQ(StringKindOf(NewArray(1)), StringKind::kLiteral);
}

TEST_F(Objects, NeverLetAHandleOutAsANumber) {
    for (const PdfObject object :
         {Literal("s"), NewDictionary(1), NewArray(1), NewStream(1, 1, MakeNull())}) {
        ASSERT_NE(object.payload, 0U);
        EXPECT_EQ(PayloadOf(object), 0U);
        EXPECT_EQ(NameOf(object), 0U);
        EXPECT_EQ(IntegerOf(object), 0);
        EXPECT_EQ(NumberOf(object), 0.0F);
        EXPECT_FALSE(BooleanOf(object));
    }
}

TEST_F(Objects, ReadNumbersOfBothKinds) {
    EXPECT_EQ(NumberOf(MakeInteger(-3)), -3.0F);
    EXPECT_EQ(NumberOf(MakeReal(0.5F)), 0.5F);
    EXPECT_EQ(IntegerOf(MakeReal(-2.75F)), -2);
    EXPECT_EQ(IntegerOf(MakeReal(3e9F)), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(NumberOf(MakeReference(5, 1)), 0.0F);
}

TEST_F(Objects, TruncateOnlyWhatFitsIntoAnInteger) {
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(TruncateToInteger(2147483647.9), 2147483647);
    EXPECT_EQ(TruncateToInteger(-2147483648.9), kLeast);
    EXPECT_EQ(TruncateToInteger(2147483648.0), kLeast);
    EXPECT_EQ(TruncateToInteger(std::nan("")), kLeast);
    EXPECT_EQ(TruncateToInteger(std::numeric_limits<double>::infinity()), kLeast);
    EXPECT_EQ(TruncateToInteger(-1e300), kLeast);
    EXPECT_EQ(TruncateToInteger(-0.9), 0);
}

TEST_F(Objects, AreOfNoTypeAsReferences) {
    const PdfObject reference = MakeReference(12, static_cast<std::uint16_t>(ObjectType::kDictionary));
    EXPECT_TRUE(IsReference(reference));
    EXPECT_EQ(TypeOf(reference), ObjectType::kNull);
    EXPECT_FALSE(HasBlock(reference));
    EXPECT_FALSE(IsNull(reference));
    EXPECT_EQ(StripTag(reference), (PdfObject{0, 12, 12}));
}

TEST_F(Objects, PutIntoTheFirstSlotThatIsFreeOrHasTheKey) {
    const PdfObject dictionary = NewDictionary(2);
    EXPECT_TRUE(DictPut(dictionary, names::kKids, MakeInteger(1)));
    EXPECT_TRUE(DictPut(dictionary, names::kCount, MakeInteger(2)));
    EXPECT_TRUE(DictPut(dictionary, names::kKids, MakeInteger(3)));
    EXPECT_EQ(Describe(dictionary), "<</Kids 3 /Count 2>>");
}

TEST_F(Objects, TakeNothingIntoAFullDictionary) {
    const PdfObject dictionary = NewDictionary(1);
    EXPECT_TRUE(DictPut(dictionary, names::kKids, MakeInteger(1)));
    EXPECT_FALSE(DictPut(dictionary, names::kCount, MakeInteger(2)));
    EXPECT_EQ(Describe(dictionary), "<</Kids 1>>");
    EXPECT_FALSE(DictPut(NewDictionary(0), names::kKids, MakeInteger(1)));
}

TEST_F(Objects, CountEmptySlotsOfADictionary) {
    EXPECT_EQ(DictSlotCount(NewDictionary(5)), 5U);
    EXPECT_EQ(Describe(NewDictionary(2)), "<<- ->>");
}

TEST_F(Objects, IgnoreAnIndexAtOrBeyondTheCount) {
    const PdfObject array = NewArray(2);
    EXPECT_FALSE(ArraySet(array, 2, MakeInteger(1)));
    EXPECT_FALSE(ArraySet(array, 0xFFFFFFFF, MakeInteger(1)));
    EXPECT_EQ(ArrayGet(array, 2), MakeNull());
    EXPECT_EQ(Describe(array), "[null null]");
}

TEST_F(Objects, FreeAValueThatAnotherReplaces) {
    const std::size_t before = LiveBlocks();
    const PdfObject array = NewArray(1);
    EXPECT_TRUE(ArraySet(array, 0, Literal("old")));
    EXPECT_TRUE(ArraySet(array, 0, Literal("new")));
    EXPECT_EQ(LiveBlocks(), before + 2);
    const PdfObject dictionary = NewDictionary(1);
    EXPECT_TRUE(DictPut(dictionary, names::kKids, array));
    EXPECT_TRUE(DictPut(dictionary, names::kKids, MakeNull()));
    EXPECT_EQ(LiveBlocks(), before + 1);
}

TEST_F(Objects, FreeEverythingInsideAValue) {
    const std::size_t before = LiveBlocks();
    const PdfObject object = Nested();
    EXPECT_EQ(LiveBlocks(), before + 6);
    FreeObject(object);
    EXPECT_EQ(LiveBlocks(), before);
}

TEST_F(Objects, LeaveABlockAloneThatIsGoneAlready) {
    const PdfObject string = Literal("text");
    const PdfObject dictionary = NewDictionary(1);
    FreeObject(string);
    FreeObject(string);
    EXPECT_EQ(StringBytes(string).size(), 0U);
    EXPECT_EQ(CloneObject(string), MakeNull());
    EXPECT_EQ(DictSlotCount(dictionary), 1U);
}

TEST_F(Objects, CloneEverythingInsideAValue) {
    const OwnedObject original(Nested());
    const std::string text = Describe(original.Get());
    EXPECT_EQ(text, "[stream@100+50<</Type /Page /Kids [(text) 12 3 R] ->> null <4142>]");
    const std::size_t before = LiveBlocks();
    const OwnedObject copy(CloneObject(original.Get()));
    EXPECT_EQ(LiveBlocks(), before + 6);
    EXPECT_EQ(Describe(copy.Get()), text);
    EXPECT_EQ(Describe(original.Get()), text);
}

TEST_F(Objects, KeepACloneWhenTheOriginalGoes) {
    const PdfObject original = Nested();
    const OwnedObject copy(CloneObject(original));
    const std::string text = Describe(original);
    FreeObject(original);
    EXPECT_EQ(Describe(copy.Get()), text);
}

TEST_F(Objects, CloneScalarsAndReferencesAsTheyAre) {
    for (const PdfObject object :
         {MakeNull(), MakeInteger(-1), MakeReal(2.5F), MakeBoolean(true), MakeName(9), MakeMark(),
          MakeOperator(77), MakeReference(0xFFFFFFFF, 0xFFFF)}) {
        EXPECT_EQ(CloneObject(object), object);
    }
}

TEST_F(Objects, CloneAndFreeAHundredThousandLevels) {
    const std::size_t before = LiveBlocks();
    const PdfObject original = DeepArray(100000);
    const PdfObject copy = CloneObject(original);
    EXPECT_EQ(LiveBlocks(), before + 200000);
    FreeObject(original);
    EXPECT_EQ(LiveBlocks(), before + 100000);
    FreeObject(copy);
    EXPECT_EQ(LiveBlocks(), before);
}

TEST_F(Objects, MakeADictionaryOfPairsInOrder) {
    const PdfObject values[] = {MakeName(names::kKids), MakeInteger(1), MakeName(names::kCount),
                                MakeInteger(2), MakeName(names::kType)};
    EXPECT_EQ(Describe(MakeDictionary(values)), "<</Kids 1 /Count 2>>");
    EXPECT_EQ(Describe(MakeDictionary({})), "<<>>");
}

TEST_F(Objects, FreeWhatADictionaryDoesNotTake) {
    const std::size_t before = LiveBlocks();
    const PdfObject values[] = {NewArray(1),     MakeInteger(1),         MakeName(names::kKids),
                                Literal("lost"), MakeName(names::kKids), Literal("kept"),
                                Literal("odd")};
    const PdfObject dictionary = MakeDictionary(values);
    EXPECT_EQ(Describe(dictionary), "<</Kids (kept) - ->>");
    EXPECT_EQ(LiveBlocks(), before + 2);
}

TEST_F(Objects, HandAnOwnedValueOver) {
    const std::size_t before = LiveBlocks();
    PdfObject released;
    {
        OwnedObject owner(Literal("text"));
        OwnedObject other(std::move(owner));
        owner = OwnedObject(Literal("freed with its owner"));
        released = other.Release();
    }
    EXPECT_EQ(LiveBlocks(), before + 1);
    EXPECT_EQ(Describe(released), "(text)");
}

TEST_F(Objects, AreDroppedWithTheirFile) {
    static_cast<void>(Nested());
    CurrentJob()->CloseFile();
    EXPECT_EQ(LiveBlocks(), 0U);
}

TEST_F(Objects, KeepTheirNamesFromFileToFileOfAJobAndNotBeyond) {
    const std::uint32_t name = CurrentNames().InternName("Wanted");
    EXPECT_EQ(name, 351U);
    CurrentJob()->CloseFile();
    EXPECT_EQ(CurrentNames().InternName("Another"), 352U);
    EXPECT_EQ(CurrentNames().InternName("Wanted"), 351U);
    TearDown();
    SetUp();
    EXPECT_EQ(CurrentNames().InternName("Another"), 351U);
}

}  // namespace
}  // namespace zorvan::test
