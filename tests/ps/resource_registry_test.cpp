// Naming, counting, promotion and the order of emission, on resource classes that only say what is written.
#include "ps/resource_registry.h"

#include <ctime>

#include <gmock/gmock.h>

#include "api/current_job.h"
#include "api/session.h"
#include "content/resource_uses.h"
#include "ps/fake_resources.h"

namespace zorvan::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

using Registry = FakeResourceTest;

std::string Name(std::uint32_t number, std::uint16_t generation) {
    OutputPiece piece;
    AppendResourceName(piece, {number, generation});
    return std::string(piece.View());
}

TEST(ResourceName, IsTheObjectNumberAndAGenerationOtherThanZero) {
    EXPECT_EQ(Name(12, 0), "/N12");
    EXPECT_EQ(Name(12, 1), "/N12-1");
    EXPECT_EQ(Name(7, 65535), "/N7-65535");
}

TEST(ResourceCategories, StandInTheOrderOfTheListsWithTheirErrors) {
    std::vector<std::pair<std::uint32_t, std::int32_t>> rows;
    for (const CategoryRow& row : kCategoryRows) {
        rows.emplace_back(static_cast<std::uint32_t>(row.category), ToNumber(row.error));
    }
    using Row = std::pair<std::uint32_t, std::int32_t>;
    EXPECT_THAT(rows, ElementsAre(Row(1, -4084), Row(2, -4083), Row(3, -4082), Row(4, -4081), Row(5, -4080),
                                  Row(6, -4079), Row(256, -4078), Row(512, -4077), Row(768, -4070),
                                  Row(1024, -4076)));
}

TEST_F(Registry, NamesAnObjectOfAnotherGenerationInTheLongForm) {
    auto pdf = Pages({"/Resources << /ColorSpace << /CS0 12 1 R >> >>"});
    const FileRun run = RunFile(pdf.Object(12, "<< /N 1 >>", 1).Bytes());
    EXPECT_EQ(PageSetupOf(run.output), "%define ColorSpace /N12-1\n");
}

TEST_F(Registry, DefinesAFontOfTwoPagesInTheSetupAndOfOnePageThere) {
    auto pdf = Pages(
        {"/Resources << /Font << /F1 10 0 R /F2 11 0 R >> >>", "/Resources << /Font << /X 10 0 R >> >>"});
    const FileRun run = RunFile(pdf.Object(10, "<< /A 1 >>").Object(11, "<< /A 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define Font /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 1), "%define Font /N11\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "");
}

TEST_F(Registry, DefinesAFontThatStaysWithItsPageInsideEachPage) {
    const std::string entries = "/Resources << /Font << /F1 10 0 R >> >>";
    const FileRun run = RunFile(Pages({entries, entries}).Object(10, "<< /Subtype /Type3 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "");
    EXPECT_EQ(PageSetupOf(run.output, 1), "%define Font /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "%define Font /N10\n");
}

TEST_F(Registry, DefinesAColorSpaceUsedTwiceOnOnePageInThatPageOnce) {
    auto pdf = Pages({"/Resources << /ColorSpace << /A 10 0 R /B 10 0 R >> >>", ""});
    const FileRun run = RunFile(pdf.Object(10, "<< /N 3 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "");
    EXPECT_EQ(PageSetupOf(run.output, 1), "%define ColorSpace /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "");
}

TEST_F(Registry, DefinesAColorSpaceOfTwoPagesInTheSetup) {
    const std::string entries = "/Resources << /ColorSpace << /A 10 0 R >> >>";
    const FileRun run = RunFile(Pages({entries, entries, entries}).Object(10, "<< /N 3 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define ColorSpace /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 1), "");
    EXPECT_EQ(PageSetupOf(run.output, 3), "");
}

TEST_F(Registry, DefinesAGraphicsStateOfOnePageInTheSetup) {
    auto pdf = Pages({"", "/Resources << /ExtGState << /GS0 10 0 R /GS1 << /op true >> >> >>"});
    const FileRun run = RunFile(pdf.Object(10, "<< /op true >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define ExtGState /N10\n%define ExtGState /N589823\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "");
}

TEST_F(Registry, NeverDefinesXObjectsAndPatternsInTheSetup) {
    const std::string entries = "/Resources << /XObject << /X 10 0 R >> /Pattern << /P 11 0 R >> >>";
    auto pdf = Pages({entries, entries});
    const FileRun run = RunFile(pdf.Object(10, "<< /A 1 >>").Object(11, "<< /A 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "");
    for (const unsigned page : {1U, 2U}) {
        EXPECT_EQ(PageSetupOf(run.output, page), "%define XObject /N10\n%define Pattern /N11\n");
    }
}

TEST_F(Registry, DefinesWhatShadingsNameInTheSetupOfEachPage) {
    const std::string entries = "/Resources << /Shading << /S 10 0 R >> >>";
    const FileRun run = RunFile(Pages({entries, entries}).Object(10, "<< /A 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "");
    EXPECT_EQ(PageSetupOf(run.output, 1), "%define Shading /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "%define Shading /N10\n");
}

TEST_F(Registry, PromotesTheCategoriesThatAreNeverNamedByTheSameTable) {
    const std::string used =
        "<< /UsedFunction 20 0 R /UsedEncoding 21 0 R /UsedCMap 22 0 R /UsedHalftone 23 0 R >>";
    const std::string entries = "/Resources << /XObject << /X 10 0 R >> >>";
    auto pdf = Pages({entries, entries});
    pdf.Object(10, used).Object(20, "<< /A 1 >>").Object(21, "<< /A 1 >>");
    pdf.Object(22, "<< /A 1 >>").Object(23, "<< /A 1 >>");
    ASSERT_EQ(OpenFile(pdf.Bytes()), 0);
    const ResourceRegistry& registry = CurrentRegistry();
    EXPECT_TRUE(registry.IsGlobal(ResourceCategory::kFunction, {20, 0}));
    EXPECT_FALSE(registry.IsGlobal(ResourceCategory::kEncoding, {21, 0}));
    EXPECT_TRUE(registry.IsGlobal(ResourceCategory::kCMap, {22, 0}));
    EXPECT_TRUE(registry.IsGlobal(ResourceCategory::kHalftone, {23, 0}));
    ZORVAN_OneFileEnd();
}

TEST_F(Registry, PromotesAFunctionAtOnceAndAHalftoneNot) {
    auto pdf = Pages({"/Resources << /XObject << /X 10 0 R >> >>"});
    pdf.Object(10, "<< /UsedFunction 20 0 R /UsedHalftone 23 0 R >>");
    const FileRun run = RunFile(pdf.Object(20, "<< /A 1 >>").Object(23, "<< /A 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define Function /N20\n");
    EXPECT_EQ(PageSetupOf(run.output), "%define Halftone /N23\n%define XObject /N10\n");
}

TEST_F(Registry, EmitsTheSetupCategoryByCategory) {
    const std::string entries =
        "/Resources << /ExtGState << /G 12 0 R >> /ColorSpace << /C 11 0 R >> /Font << /F 10 0 R >> "
        "/XObject << /X 13 0 R >> >>";
    auto pdf = Pages({entries, entries});
    pdf.Object(10, "<< /A 1 >>").Object(11, "<< /N 1 >>").Object(12, "<< /op true >>");
    pdf.Object(13, "<< /UsedFunction 20 0 R /UsedHalftone 21 0 R >>").Object(20, "<< /A 1 >>");
    const FileRun run = RunFile(pdf.Object(21, "<< /A 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output),
              "%define Font /N10\n"
              "%define ColorSpace /N11\n"
              "%define ExtGState /N12\n"
              "%define Function /N20\n"
              "%define Halftone /N21\n");
}

TEST_F(Registry, EmitsAPageDirectSpacesFirstThenSpacesXObjectsFontsAndPatterns) {
    auto pdf =
        Pages({"/Resources << /Pattern << /P 14 0 R >> /Font << /F 13 0 R >> /XObject << /X 12 0 R >> "
               "/ColorSpace << /A 11 0 R /B << /N 1 >> >> >>"});
    pdf.Object(11, "<< /N 1 >>").Object(12, "<< /A 1 >>").Object(13, "<< /A 1 >>").Object(14, "<< /A 1 >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_EQ(PageSetupOf(run.output),
              "%define ColorSpace /N589823\n"
              "%define ColorSpace /N11\n"
              "%define XObject /N12\n"
              "%define Font /N13\n"
              "%define Pattern /N14\n");
}

TEST_F(Registry, WritesWhatAResourceNamesBeforeIt) {
    auto pdf = Pages({"/Resources << /XObject << /X 10 0 R >> >>"});
    pdf.Object(
        10,
        "<< /Resources << /Font << /F 11 0 R >> /XObject << /Y 12 0 R >> /ColorSpace << /C 13 0 R >> >> >>");
    pdf.Object(11, "<< /A 1 >>").Object(12, "<< /UsedHalftone 14 0 R >>").Object(13, "<< /N 1 >>");
    const FileRun run = RunFile(pdf.Object(14, "<< /A 1 >>").Bytes());
    EXPECT_EQ(PageSetupOf(run.output),
              "%define Font /N11\n"
              "%define ColorSpace /N13\n"
              "%define Halftone /N14\n"
              "%define XObject /N12\n"
              "%define XObject /N10\n");
}

TEST_F(Registry, PassesAPagesRegistrationOnToWhatAResourceUses) {
    const std::string entries = "/Resources << /XObject << /X 10 0 R >> >>";
    auto pdf = Pages({entries, entries});
    pdf.Object(10, "<< /Resources << /Font << /F 11 0 R >> /ColorSpace << /C 12 0 R >> >> >>");
    const FileRun run = RunFile(pdf.Object(11, "<< /A 1 >>").Object(12, "<< /N 1 >>").Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define Font /N11\n%define ColorSpace /N12\n");
    EXPECT_EQ(PageSetupOf(run.output, 1), "%define XObject /N10\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "%define XObject /N10\n");
}

TEST_F(Registry, WritesAnXObjectThatAnotherOneUsedBeforeOnlyOnceAPage) {
    auto pdf = Pages({"/Resources << /XObject << /X 10 0 R /Y 11 0 R >> >>"});
    pdf.Object(10, "<< /Resources << /XObject << /Y 11 0 R >> >> >>").Object(11, "<< /A 1 >>");
    EXPECT_EQ(PageSetupOf(RunFile(pdf.Bytes()).output), "%define XObject /N11\n%define XObject /N10\n");
}

TEST_F(Registry, WritesGlobalResourcesOnceWhenTheyAreAskedForTwice) {
    auto pdf = Pages({"/Resources << /ExtGState << /GS0 10 0 R >> >>"});
    ASSERT_EQ(OpenFile(pdf.Object(10, "<< /op true >>").Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    const std::size_t once = Pieces::Joined().size();
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(Pieces::Joined().substr(once), "PDFVars/TermAll get exec end end\n%%EndSetup\n");
    ZORVAN_OneFileEnd();
}

TEST_F(Registry, WritesXObjectsPatternsAndPageFontsAgainWhenAPageIsWrittenTwiceButNoColorSpace) {
    auto pdf =
        Pages({"/Resources << /ColorSpace << /C 10 0 R >> /XObject << /X 11 0 R >> /Font << /F 12 0 R >> "
               "/Pattern << /P 13 0 R >> >>"});
    pdf.Object(10, "<< /N 1 >>").Object(11, "<< /A 1 >>").Object(12, "<< /A 1 >>").Object(13, "<< /A 1 >>");
    ASSERT_EQ(OpenFile(pdf.Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    const std::size_t once = Pieces::Joined().size();
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    EXPECT_EQ(PageSetupOf(Pieces::Joined().substr(once)),
              "%define XObject /N11\n%define Font /N12\n%define Pattern /N13\n");
    ZORVAN_OneFileEnd();
}

TEST_F(Registry, GivesDirectObjectsNumbersFrom589823OnAcrossTheFilesOfAJob) {
    auto pdf = Pages({"/Resources << /ColorSpace << /A << /N 1 >> /B << /N 1 >> >> >>"});
    EXPECT_EQ(PageSetupOf(RunFile(pdf.Bytes()).output),
              "%define ColorSpace /N589823\n%define ColorSpace /N589824\n");
    EXPECT_EQ(PageSetupOf(RunFile(pdf.Bytes()).output),
              "%define ColorSpace /N589825\n%define ColorSpace /N589826\n");
}

TEST_F(Registry, NumbersDirectFunctionsLikewise) {
    auto pdf = Pages({"/Resources << /XObject << /X 10 0 R /Y 11 0 R >> >>"});
    pdf.Object(10, "<< /UsedFunction << /A 1 >> >>").Object(11, "<< /UsedFunction << /A 1 >> >>");
    EXPECT_EQ(SetupOf(RunFile(pdf.Bytes()).output), "%define Function /N589823\n%define Function /N589824\n");
    EXPECT_EQ(SetupOf(RunFile(pdf.Bytes()).output), "%define Function /N589825\n%define Function /N589826\n");
}

TEST_F(Registry, KeepsTheNumberOfADirectObjectThatPagesInherit) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Resources << /ColorSpace << /A << /N 1 >> >> >> >>");
    pdf.Object(3, "<< /Type /Page >>").Object(4, "<< /Type /Page >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_EQ(SetupOf(run.output), "%define ColorSpace /N589823\n");
    EXPECT_EQ(PageSetupOf(run.output, 2), "");
}

TEST_F(Registry, MakesThePatternsAfterThePagesClip) {
    auto pdf = Pages({"/Resources << /Pattern << /P 10 0 R /Q 12 3 R >> >>"});
    pdf.Object(10, "<< /A 1 >>").Object(12, "<< /A 1 >>", 3);
    EXPECT_EQ(ContentOf(RunFile(pdf.Bytes()).output),
              "/N10 /N10 /PatternPrototype findRes makePat\n"
              "/N12-3 /N12-3 /PatternPrototype findRes makePat\n");
}

TEST_F(Registry, FailsAPageWhosePatternNameIsNotRegistered) {
    auto pdf = Pages({"/Resources << /Pattern << /P 5 >> >>", ""});
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_THAT(run.pages, ElementsAre(-4075, 0));
    EXPECT_EQ(GetErrorInfo().code, -4075);
    EXPECT_EQ(GetErrorInfo().message, "Unregistered resources.");
}

TEST_F(Registry, RecordsAResourceThatCannotBeBuiltAndLeavesItOut) {
    constexpr std::pair<const char*, int> kNamed[] = {{"Font", -4084},      {"ColorSpace", -4083},
                                                      {"ExtGState", -4082}, {"XObject", -4081},
                                                      {"Pattern", -4080},   {"Shading", -4079}};
    for (const auto& [category, error] : kNamed) {
        DestroyJob();
        SetUp();
        const std::string entries = "/Resources << /" + std::string(category) + " << /A 10 0 R >> >>";
        auto pdf = Pages({entries, entries});
        const FileRun run = RunFile(pdf.Object(10, "<< /Broken true >>").Bytes());
        EXPECT_EQ(run.begin, 0) << category;
        // The patterns of a page are made whether or not they are used, so that none may be missing.
        const int page = error == -4080 ? -4075 : 0;
        EXPECT_THAT(run.pages, ElementsAre(page, page)) << category;
        EXPECT_THAT(run.output, Not(HasSubstr("N10"))) << category;
        const ErrorInfo info = GetErrorInfo();
        EXPECT_EQ(info.code, error) << category;
        EXPECT_EQ(info.offset, pdf.OffsetOf(10)) << category;
        EXPECT_THAT(info.excerpt, ::testing::StartsWith("10 0 obj\n<< /Broken")) << category;
    }
}

TEST_F(Registry, RecordsAnUnusableResourceOfTheCategoriesThatAreNeverNamed) {
    constexpr std::pair<const char*, int> kUsed[] = {
        {"Function", -4078}, {"Encoding", -4077}, {"CMap", -4070}, {"Halftone", -4076}};
    for (const auto& [category, error] : kUsed) {
        DestroyJob();
        SetUp();
        auto pdf = Pages({"/Resources << /XObject << /X 11 0 R >> >>"});
        pdf.Object(11, "<< /Used" + std::string(category) + " 10 0 R >>").Object(10, "<< /Broken true >>");
        EXPECT_THAT(RunFile(pdf.Bytes()).pages, ElementsAre(0)) << category;
        EXPECT_EQ(GetErrorInfo().code, error);
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << category;
    }
}

TEST_F(Registry, ReportsAResourceThatContainsItselfAndGoesOn) {
    const std::string entries = "/Resources << /ColorSpace << /C 10 0 R >> >>";
    auto pdf = Pages({entries, entries});
    pdf.Object(10, "<< /Resources << /ColorSpace << /Self 10 0 R >> >> >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_EQ(run.begin, 0);
    EXPECT_THAT(run.pages, ::testing::Each(0));
    EXPECT_EQ(GetErrorInfo().code, -4083);
    EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10));
}

TEST_F(Registry, ReportsResourcesThatContainEachOther) {
    auto pdf = Pages({"/Resources << /ColorSpace << /C 10 0 R >> >>"});
    pdf.Object(10, "<< /Resources << /ExtGState << /G 11 0 R >> >> >>");
    pdf.Object(11, "<< /Resources << /ColorSpace << /C 10 0 R >> >> >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_EQ(run.begin, 0);
    EXPECT_THAT(run.pages, ::testing::Each(0));
    EXPECT_EQ(GetErrorInfo().code, -4083);
}

// Many files give every form, pattern and glyph font the resources of its page: naming is not using.
TEST_F(Registry, LetsWhatHasAContentNameItself) {
    for (const std::string category : {"XObject", "Pattern", "Font"}) {
        DestroyJob();
        SetUp();
        const std::string resources = "/Resources << /" + category + " << /R 10 0 R >> >>";
        auto pdf = Pages({resources, resources});
        EXPECT_THAT(RunFile(pdf.Object(10, "<< " + resources + " >>").Bytes()).pages, ::testing::Each(0));
        EXPECT_EQ(GetErrorInfo().code, 0) << category;
    }
}

TEST_F(Registry, WritesAChainOfResourcesWithoutFollowingItBeyondTheFixedDepth) {
    // Every 64th of the chain is named by the page, so that all of it is registered.
    std::string named;
    constexpr unsigned kFirst = 1000;
    constexpr unsigned kCount = 20000;
    for (unsigned number = kFirst; number < kFirst + kCount; number += 64) {
        named += " /X" + std::to_string(number) + " " + std::to_string(number) + " 0 R";
    }
    auto pdf = Pages({"/Resources << /XObject <<" + named + " >> >>"});
    for (unsigned number = kFirst; number < kFirst + kCount; ++number) {
        pdf.Object(number, "<< /Resources << /XObject << /X " + std::to_string(number + 1) + " 0 R >> >> >>");
    }
    const FileRun run = RunFile(pdf.Object(kFirst + kCount, "<< /A 1 >>").Bytes());
    EXPECT_EQ(run.begin, 0);
    EXPECT_THAT(run.pages, ::testing::Each(0));
    EXPECT_EQ(GetErrorInfo().code, -4081);
}

TEST_F(Registry, NestsResourcesToAFixedDepthAndLeavesOutTheRest) {
    auto pdf = Pages({"/Resources << /XObject << /X 1000 0 R >> >>"});
    for (unsigned number = 1000; number < 1100; ++number) {
        pdf.Object(number, "<< /Resources << /XObject << /X " + std::to_string(number + 1) + " 0 R >> >> >>");
    }
    const FileRun run = RunFile(pdf.Object(1100, "<< /A 1 >>").Bytes());
    EXPECT_EQ(run.begin, 0);
    EXPECT_EQ(GetErrorInfo().code, -4081);
    EXPECT_THAT(run.output, HasSubstr("%define XObject /N1063\n%define XObject /N1062\n"));
    EXPECT_THAT(run.output, Not(HasSubstr("/N1064\n")));
}

TEST_F(Registry, StopsTheEmissionAtTheFirstRefusedPiece) {
    auto pdf = Pages({"/Resources << /ExtGState << /A 10 0 R /B 11 0 R >> >>"});
    ASSERT_EQ(OpenFile(pdf.Object(10, "<< /A 1 >>").Object(11, "<< /A 1 >>").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    Pieces::Refuse(before + 2, 7, false);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 7);
    EXPECT_EQ(Pieces::Calls(), before + 2);
    EXPECT_EQ(Pieces::Taken().back(), "%define ExtGState /N10\n");
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(SetupOf(Pieces::Joined()), "%define ExtGState /N10\n%define ExtGState /N11\n");
    ZORVAN_OneFileEnd();
}

/// A resource that costs nothing, so that the registry's own time shows.
class CheapResource : public Resource {
public:
    explicit CheapResource(const ResourceRequest& request) : Resource(request.key, 0) {}
    Status WriteResource() override { return Status::kOk; }
    void AppendUse(OutputPiece& /*piece*/) const override {}

    static std::unique_ptr<Resource> Make(const ResourceRequest& request) {
        return std::make_unique<CheapResource>(request);
    }
};

/// The processor time that registering this many and emitting them takes.
double SecondsFor(std::uint32_t count) {
    ResourceFactories factories{};
    factories[ListOf(ResourceCategory::kExtGState)] = CheapResource::Make;
    ResourceRegistry registry(factories);
    const std::clock_t begin = std::clock();
    for (std::uint32_t number = 1; number <= count; ++number) {
        const ResourceRequest request{.key = {number, 0}, .value = MakeNull()};
        EXPECT_EQ(registry.Register(ResourceCategory::kExtGState, request), Status::kOk);
    }
    EXPECT_EQ(registry.EmitGlobal(), Status::kOk);
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST(RegistrySpeed, RegistersAndEmitsInLinearTime) {
    // Ten times the resources: about ten times the time where it grows with their number, a hundred times
    // where with its square.
    const double few = SecondsFor(20000);
    EXPECT_LT(SecondsFor(200000), 30 * few + 0.1);
}

TEST_F(Registry, IsEmptyAgainForTheNextFile) {
    auto first = Pages({"/Resources << /ColorSpace << /A 10 0 R >> >>"});
    EXPECT_THAT(RunFile(first.Object(10, "<< /N 1 >>").Bytes()).output,
                HasSubstr("%define ColorSpace /N10\n"));
    auto second = Pages({"/Resources << /Font << /A 10 0 R >> >>"});
    const FileRun run = RunFile(second.Object(10, "<< /N 1 >>").Bytes());
    EXPECT_THAT(run.output, Not(HasSubstr("%define ColorSpace")));
    EXPECT_EQ(PageSetupOf(run.output), "%define Font /N10\n");
}

TEST_F(Registry, GivesNothingForWhatIsAbsent) {
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    EXPECT_EQ(CurrentRegistry().GetObject(ResourceCategory::kFont, {10, 0}), nullptr);
    EXPECT_FALSE(CurrentRegistry().IsGlobal(ResourceCategory::kFont, {10, 0}));
    EXPECT_EQ(CurrentRegistry().EmitAndMark(ResourceCategory::kFont, {10, 0}), Status::kOk);
    ZORVAN_OneFileEnd();
}

TEST_F(Registry, KeepsObjectsOfOneNumberAndOtherGenerationsApart) {
    auto pdf = Pages({"/Resources << /ColorSpace << /A 10 0 R /B 10 1 R >> >>"});
    pdf.Object(10, "<< /N 1 >>").Object(10, "<< /N 3 >>", 1);
    ASSERT_EQ(OpenFile(pdf.Bytes()), 0);
    const auto components = [](ResourceKey key) {
        return static_cast<ColorSpaceUse*>(CurrentRegistry().GetObject(ResourceCategory::kColorSpace, key))
            ->Components();
    };
    EXPECT_EQ(components({10, 0}), 1U);
    EXPECT_EQ(components({10, 1}), 3U);
    ZORVAN_OneFileEnd();
}

}  // namespace
}  // namespace zorvan::test
