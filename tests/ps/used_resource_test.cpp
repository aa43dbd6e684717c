// A resource that another one uses: registered, written once, and found again by its name.
#include "ps/used_resource.h"

#include <string>

#include <gmock/gmock.h>

#include "api/current_job.h"
#include "pdf/object_parser.h"
#include "ps/fake_resources.h"
#include "ps/resource_registry.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

/// A file whose object 10 is a resource and whose object 11 is none.
class UsedResourceTest : public FakeResourceTest {
protected:
    void SetUp() override {
        FakeResourceTest::SetUp();
        PdfBuilder pdf;
        pdf.Object(1, "<< >>").Object(10, "<< /A 1 >>").Object(11, "<< /Broken true >>");
        ASSERT_EQ(Open(pdf.Object(12, "<< /A 1 >>", 3).Bytes()), Status::kOk);
        CurrentRegistry().SetCurrentPage(1);
        Pieces::Reset();
    }

    static UsedResource Function(std::uint32_t number, std::uint16_t generation = 0) {
        return {ResourceCategory::kFunction, MakeReference(number, generation)};
    }
    static std::string UseOf(const UsedResource& used) {
        OutputPiece piece;
        used.AppendUse(piece);
        return std::string(piece.View());
    }
};

TEST_F(UsedResourceTest, IsMissingUntilItIsRegistered) {
    UsedResource used = Function(10);
    EXPECT_EQ(used.Get(), nullptr);
    EXPECT_EQ(UseOf(used), "");
    EXPECT_EQ(used.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), "");
    used.Register();
    EXPECT_NE(used.Get(), nullptr);
    EXPECT_EQ(UseOf(used), "/N10 /Function findRes ");
}

TEST_F(UsedResourceTest, IsWrittenOnce) {
    UsedResource used = Function(10);
    used.Register();
    UsedResource again = Function(10);
    again.Register();
    EXPECT_EQ(used.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(used.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(again.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), "%define Function /N10\n");
}

TEST_F(UsedResourceTest, IsFoundByItsGenerationToo) {
    UsedResource used = Function(12, 3);
    used.Register();
    EXPECT_EQ(UseOf(used), "/N12-3 /Function findRes ");
    UsedResource other = Function(12, 2);
    other.Register();
    EXPECT_EQ(UseOf(other), "");
}

TEST_F(UsedResourceTest, WithoutANumberGetsOneAndKeepsIt) {
    const Resolved object(MakeReference(10, 0));
    UsedResource first(ResourceCategory::kFunction, object.Get());
    UsedResource second(ResourceCategory::kFunction, object.Get());
    first.Register();
    second.Register();
    CurrentRegistry().SetCurrentPage(2);
    first.Register();
    EXPECT_EQ(UseOf(first), "/N589823 /Function findRes ");
    EXPECT_EQ(UseOf(second), "/N589824 /Function findRes ");
}

TEST_F(UsedResourceTest, CountsThePagesThatUseIt) {
    UsedResource used(ResourceCategory::kHalftone, MakeReference(10, 0));
    used.Register();
    used.Register();
    EXPECT_FALSE(CurrentRegistry().IsGlobal(ResourceCategory::kHalftone, {10, 0}));
    CurrentRegistry().SetCurrentPage(2);
    used.Register();
    EXPECT_TRUE(CurrentRegistry().IsGlobal(ResourceCategory::kHalftone, {10, 0}));
}

TEST_F(UsedResourceTest, ThatCannotBeBuiltIsRecordedAndMissing) {
    UsedResource used = Function(11);
    used.Register();
    EXPECT_EQ(Error().Code(), Status::kIllegalFunction);
    EXPECT_EQ(used.Get(), nullptr);
    EXPECT_EQ(UseOf(used), "");
    EXPECT_EQ(used.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), "");
}

TEST_F(UsedResourceTest, OfNothingIsMissingAndNotRecorded) {
    UsedResource nothing;
    UsedResource null(ResourceCategory::kFont, MakeNull());
    for (UsedResource* used : {&nothing, &null}) {
        used->Register();
        EXPECT_EQ(used->Get(), nullptr);
        EXPECT_EQ(UseOf(*used), "");
        EXPECT_EQ(used->EmitIfNeeded(), Status::kOk);
    }
    EXPECT_EQ(Error().Code(), Status::kOk);
    EXPECT_EQ(CurrentJob()->nextGeneratedNumber, 589823U);
}

TEST_F(UsedResourceTest, MayStandForWhatIsRegisteredAlready) {
    UsedResource first = Function(10);
    first.Register();
    const UsedResource second(ResourceCategory::kFunction, ResourceKey{10, 0});
    EXPECT_EQ(second.Get(), first.Get());
    EXPECT_EQ(UseOf(second), "/N10 /Function findRes ");
    EXPECT_EQ(second.EmitIfNeeded(), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), "%define Function /N10\n");
}

TEST_F(UsedResourceTest, PassesOnWhatTheHostRefusesWith) {
    UsedResource used = Function(10);
    used.Register();
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(ToNumber(used.EmitIfNeeded()), 7);
}

}  // namespace
}  // namespace zorvan::test
