// From a reference to its object.
#include <string>

#include "api/current_job.h"
#include "pdf/allocation_registry.h"
#include "pdf/describe.h"
#include "pdf/object_parser.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

class Resolver : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        pdf.Object(1, "<< >>");
    }

    std::string ResolvedAs(std::uint32_t number, std::uint16_t generation = 0) {
        EXPECT_EQ(Open(pdf.Bytes()), Status::kOk);
        return Describe(OwnedObject(ResolveReference(File(), MakeReference(number, generation))).Get());
    }
    std::uint32_t LengthOf(std::uint32_t number) {
        EXPECT_EQ(Open(pdf.Bytes()), Status::kOk);
        return StreamLength(OwnedObject(ResolveReference(File(), MakeReference(number, 0))).Get());
    }
    /// Adds objects 10 to 10 + `references`, of which each but the last leads to the next.
    void AddChain(unsigned references) {
        for (unsigned i = 0; i < references; ++i) {
            pdf.Object(10 + i, std::to_string(11 + i) + " 0 R");
        }
        pdf.Object(10 + references, "(reached)");
    }

    PdfBuilder pdf;
};

TEST_F(Resolver, FetchesAnObject) {
    pdf.Object(7, "[1 2 0 R]");
    EXPECT_EQ(ResolvedAs(7), "[1 2 0 R]");
}

TEST_F(Resolver, TellsGenerationsApart) {
    pdf.Object(7, "(old)").Object(7, "(third)", 3);
    EXPECT_EQ(ResolvedAs(7, 3), "(third)");
    EXPECT_EQ(ResolvedAs(7, 0), "(old)");
    EXPECT_EQ(ResolvedAs(7, 1), "null");
}

TEST_F(Resolver, GivesNullForAnObjectThatIsFreeAbsentOrBeyondTheTable) {
    pdf.Object(7, "(s)");
    EXPECT_EQ(ResolvedAs(5), "null");
    EXPECT_EQ(ResolvedAs(8), "null");
    EXPECT_EQ(ResolvedAs(4000000), "null");
    EXPECT_EQ(ResolvedAs(0xFFFFFFFF, 0xFFFF), "null");
    EXPECT_EQ(ResolvedAs(0), "null");
}

TEST_F(Resolver, FollowsAReferenceToAReference) {
    AddChain(2);
    EXPECT_EQ(ResolvedAs(10), "(reached)");
}

TEST_F(Resolver, FollowsUpTo63References) {
    AddChain(63);
    EXPECT_EQ(ResolvedAs(10), "(reached)");
}

TEST_F(Resolver, GivesNullBehindMoreReferences) {
    AddChain(64);
    EXPECT_EQ(ResolvedAs(10), "null");
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(Resolver, GivesNullForReferencesInACircle) {
    pdf.Object(7, "7 0 R").Object(8, "9 0 R").Object(9, "8 0 R");
    EXPECT_EQ(ResolvedAs(7), "null");
    EXPECT_EQ(ResolvedAs(8), "null");
}

TEST_F(Resolver, FollowsReferencesToALength) {
    pdf.Object(5, "6 0 R").Object(6, "3").Object(7, "<< /Length 5 0 R >> stream\nabc\nendstream");
    EXPECT_EQ(LengthOf(7), 3U);
}

TEST_F(Resolver, TakesALengthThatRefersToItsOwnStreamForNone) {
    pdf.Object(7, "<< /Length 7 0 R >> stream\nabc\nendstream");
    EXPECT_EQ(LengthOf(7), 0U);
}

TEST_F(Resolver, TakesLengthsThatReferToEachOtherForNone) {
    pdf.Object(7, "<< /Length 8 0 R >> stream\nabc\nendstream")
        .Object(8, "<< /Length 7 0 R >> stream\nabc\nendstream");
    EXPECT_EQ(LengthOf(7), 0U);
    EXPECT_EQ(LengthOf(8), 0U);
}

TEST_F(Resolver, ReadsAnObjectAfreshEachTime) {
    pdf.Object(7, "[1]");
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    const OwnedObject first(ResolveReference(File(), MakeReference(7, 0)));
    const OwnedObject second(ResolveReference(File(), MakeReference(7, 0)));
    EXPECT_NE(first.Get(), second.Get());
    ASSERT_TRUE(ArraySet(first.Get(), 0, MakeInteger(2)));
    EXPECT_EQ(Describe(second.Get()), "[1]");
}

TEST_F(Resolver, LendsADirectValueAndOwnsAResolvedOne) {
    pdf.Object(7, "[1]");
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    const OwnedObject direct(NewArray(3));
    const std::size_t before = CurrentAllocations().LiveBlocks();
    {
        const Resolved lent(direct.Get());
        const Resolved owned(MakeReference(7, 0));
        EXPECT_EQ(lent.Get(), direct.Get());
        EXPECT_EQ(Describe(owned.Get()), "[1]");
        EXPECT_EQ(CurrentAllocations().LiveBlocks(), before + 1);
    }
    EXPECT_EQ(CurrentAllocations().LiveBlocks(), before);
    EXPECT_EQ(ArrayCount(direct.Get()), 3U);
}

}  // namespace
}  // namespace zorvan::test
