// The page list: which pages there are, and what each inherits.
#include "pdf/page_tree.h"

#include <string>
#include <vector>

#include "pdf/describe.h"
#include "pdf/name_table.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

struct SeenPage {
    PdfObject reference;
    Box box{};
    std::int32_t rotation = 0;
    std::string resources;
    std::shared_ptr<const OwnedObject> inheritedResources;
};

class Collector : public PageReceiver {
public:
    void AddPage(const PageAttributes& page) override {
        pages.push_back(
            {page.reference, page.box, page.rotation, Describe(page.resources), page.inheritedResources});
    }
    std::vector<SeenPage> pages;
};

class Counter : public PageReceiver {
public:
    void AddPage(const PageAttributes& /*page*/) override { ++pages; }
    std::size_t pages = 0;
};

std::string Reference(unsigned number) {
    return std::to_string(number) + " 0 R ";
}

/// The tree's root is object 2; the objects below it are the test's.
class PageTree : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    }

public:  // chained calls come from outside, as far as the language sees
    PageTree& Pages(unsigned number, std::string_view kids, std::string_view entries = "") {
        return Add(number, "/Pages /Kids [" + std::string(kids) + "] " + std::string(entries));
    }
    PageTree& Page(unsigned number, std::string_view entries = "") {
        return Add(number, "/Page " + std::string(entries));
    }

protected:
    /// One page, with these entries of its own and of the node above it.
    SeenPage OnlyPage(std::string_view own, std::string_view above = "") {
        Pages(2, "3 0 R", above).Page(3, own);
        const std::vector<SeenPage> pages = Walk();
        EXPECT_EQ(pages.size(), 1U);
        return pages.empty() ? SeenPage() : pages[0];
    }

    std::vector<SeenPage> Walk(Status expected = Status::kOk) {
        EXPECT_EQ(Open(pdf.Bytes()), Status::kOk);
        Collector collector;
        EXPECT_EQ(WalkPageTree(File(), File().Pages(), collector), expected);
        return collector.pages;
    }
    /// The object numbers of the pages, in order.
    std::vector<std::uint32_t> Numbers(Status expected = Status::kOk) {
        std::vector<std::uint32_t> numbers;
        for (const SeenPage& page : Walk(expected)) {
            numbers.push_back(page.reference.payload);
        }
        return numbers;
    }

    PdfBuilder pdf;

private:
    PageTree& Add(unsigned number, const std::string& entries) {
        pdf.Object(number, "<< /Type " + entries + " >>");
        return *this;
    }
};

using Numbers = std::vector<std::uint32_t>;

// --- which pages ---

TEST_F(PageTree, CountsTheLeavesAndNotTheirCount) {
    Pages(2, "3 0 R 4 0 R 10 0 R", "/Count 10");
    Pages(3, "5 0 R 6 0 R 7 0 R", "/Count -1").Pages(4, "8 0 R 9 0 R 11 0 R", "/Count (s)");
    for (const unsigned number : {5U, 6U, 7U, 8U, 9U, 10U, 11U}) {
        Page(number);
    }
    EXPECT_EQ(Numbers(), (test::Numbers{5, 6, 7, 8, 9, 11, 10}));
}

TEST_F(PageTree, MayBeASinglePage) {
    Page(2);
    EXPECT_EQ(Numbers(), (test::Numbers{2}));
}

TEST_F(PageTree, TakesAPageAsOftenAsItIsNamed) {
    Pages(2, "3 0 R 3 0 R 4 0 R").Page(3).Pages(4, "3 0 R");
    EXPECT_EQ(Numbers(), (test::Numbers{3, 3, 3}));
}

TEST_F(PageTree, SkipsAKidThatIsADirectDictionary) {
    Pages(2, "<< /Type /Page >> 3 0 R 7 (s) null").Page(3);
    EXPECT_EQ(Numbers(), (test::Numbers{3}));
}

TEST_F(PageTree, SkipsANodeThatIsNoDictionary) {
    Pages(2, "3 0 R 4 0 R 99 0 R 5 0 R").Page(5);
    pdf.Object(3, "[1]").Object(4, "null");
    EXPECT_EQ(Numbers(), (test::Numbers{5}));
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(PageTree, HasNoPagesWithoutARoot) {
    EXPECT_TRUE(Walk().empty());
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(PageTree, ResolvesKidsAndTypes) {
    pdf.Object(2, "<< /Type 5 0 R /Kids 4 0 R >>").Object(4, "[3 0 R]").Object(5, "/Pages");
    pdf.Object(3, "<< /Type 6 0 R >>").Object(6, "/Page");
    EXPECT_EQ(Numbers(), (test::Numbers{3}));
}

TEST_F(PageTree, EndsWithAnErrorAtANodeOfAnotherType) {
    for (const char* entries : {"/Type /Catalog", "/Type 3", "", "/Type (Page)"}) {
        pdf = PdfBuilder();
        pdf.Object(1, "<< /Pages 2 0 R >>").Object(4, "<< " + std::string(entries) + " >>");
        Pages(2, "3 0 R 4 0 R 5 0 R").Page(3).Page(5);
        EXPECT_EQ(Numbers(Status::kInvalidDataType), (test::Numbers{3})) << entries;
        EXPECT_EQ(Error().Code(), Status::kInvalidDataType);
        EXPECT_EQ(Error().Offset(), pdf.OffsetOf(4));
        EXPECT_TRUE(TextOf(Error().Excerpt()).starts_with("4 0 obj\n<<"));
        TearDown();
        JobTest::SetUp();
    }
}

TEST_F(PageTree, EndsWithAnErrorAtKidsThatAreNoArray) {
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R 3 0 R] >>").Object(4, "<< /Type /Pages /Kids 3 0 R >>");
    Page(3);
    EXPECT_EQ(Numbers(Status::kInvalidDataType), (test::Numbers{3}));
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(4));
}

TEST_F(PageTree, EndsWithAnErrorAtMissingKids) {
    pdf.Object(2, "<< /Type /Pages >>");
    EXPECT_TRUE(Walk(Status::kInvalidDataType).empty());
}

// --- loops and caps ---

TEST_F(PageTree, EndsABranchThatIsItsOwnDescendant) {
    Pages(2, "3 0 R 4 0 R 2 0 R 5 0 R").Page(3).Pages(4, "6 0 R 2 0 R 4 0 R 7 0 R").Page(5).Page(6).Page(7);
    EXPECT_EQ(Numbers(), (test::Numbers{3, 6, 7, 5}));
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(PageTree, ReachesAPageBelow1024NodesAndNoneBelowMore) {
    for (unsigned level = 0; level < 1023; ++level) {
        Pages(level == 0 ? 2 : 100 + level, Reference(101 + level));
    }
    Pages(1123, "1124 0 R 5000 0 R 1125 0 R").Page(1124).Page(1125).Pages(5000, "5001 0 R").Page(5001);
    EXPECT_EQ(Numbers(), (test::Numbers{1124, 1125}));
}

TEST_F(PageTree, SurvivesATreeOfAHundredThousandLevels) {
    for (unsigned level = 0; level < 100000; ++level) {
        Pages(level == 0 ? 2 : 100 + level, Reference(101 + level) + Reference(3));
    }
    Page(3).Page(100100);
    EXPECT_EQ(Walk().size(), 1024U);
}

TEST_F(PageTree, EndsATreeOfABillionPagesInThirtyObjects) {
    constexpr unsigned kLevels = 30;
    for (unsigned level = 0; level < kLevels; ++level) {
        const std::string next = level + 1 == kLevels ? Reference(3) : Reference(101 + level);
        Pages(level == 0 ? 2 : 100 + level, next + next);
    }
    Page(3);
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    Counter counter;
    EXPECT_EQ(WalkPageTree(File(), File().Pages(), counter), Status::kInvalidDataType);
    EXPECT_GT(counter.pages, 100000U);
    EXPECT_LE(counter.pages, std::size_t{1} << 20);
}

// --- boxes ---

TEST_F(PageTree, GivesAPageTheMediaBoxOfTheNodeAboveIt) {
    EXPECT_EQ(OnlyPage("", "/MediaBox [0 0 595 842]").box, (Box{0, 0, 595, 842}));
}

TEST_F(PageTree, PrefersAPagesOwnMediaBox) {
    EXPECT_EQ(OnlyPage("/MediaBox [1 2 3 4]", "/MediaBox [0 0 595 842]").box, (Box{1, 2, 3, 4}));
}

TEST_F(PageTree, PrefersTheNearestNodeAbove) {
    Pages(2, "3 0 R 7 0 R", "/MediaBox [0 0 1 1]").Pages(3, "4 0 R 6 0 R", "/MediaBox [0 0 2 2]");
    Pages(4, "5 0 R").Page(5).Page(6).Page(7);
    const std::vector<SeenPage> pages = Walk();
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0].box, (Box{0, 0, 2, 2}));
    EXPECT_EQ(pages[1].box, (Box{0, 0, 2, 2}));
    EXPECT_EQ(pages[2].box, (Box{0, 0, 1, 1})) << "a node's values end with it";
}

TEST_F(PageTree, PrefersTheBleedBoxToTheCropBox) {
    EXPECT_EQ(OnlyPage("/MediaBox [0 0 1 1] /CropBox [0 0 2 2] /BleedBox [0 0 3 3]").box, (Box{0, 0, 3, 3}));
}

TEST_F(PageTree, PrefersTheCropBoxToTheMediaBox) {
    EXPECT_EQ(OnlyPage("/MediaBox [0 0 1 1] /CropBox [0 0 2 2]").box, (Box{0, 0, 2, 2}));
}

TEST_F(PageTree, PrefersAnInheritedBleedBoxToAPagesOwnCropBox) {
    EXPECT_EQ(OnlyPage("/MediaBox [0 0 1 1] /CropBox [0 0 2 2]", "/BleedBox [0 0 3 3]").box,
              (Box{0, 0, 3, 3}));
}

TEST_F(PageTree, PrefersAnInheritedCropBoxToAPagesOwnMediaBox) {
    EXPECT_EQ(OnlyPage("/MediaBox [0 0 1 1]", "/CropBox [0 0 2 2]").box, (Box{0, 0, 2, 2}));
}

TEST_F(PageTree, DoesNotLookAtOtherBoxes) {
    EXPECT_EQ(OnlyPage("/MediaBox [0 0 1 1] /TrimBox [0 0 2 2] /ArtBox [0 0 3 3]").box, (Box{0, 0, 1, 1}));
}

TEST_F(PageTree, HasAnEmptyBoxWithoutAny) {
    EXPECT_EQ(OnlyPage("").box, Box{});
}

TEST_F(PageTree, ResolvesBoxesAndTheirNumbers) {
    pdf.Object(10, "[0 11 0 R 12.5 8 0 R]").Object(11, "-7").Object(8, "(s)");
    EXPECT_EQ(OnlyPage("/MediaBox 10 0 R").box, (Box{0, -7, 12.5F, 0}));
}

TEST_F(PageTree, TakesWhatIsNoNumberInABoxForZero) {
    EXPECT_EQ(OnlyPage("/MediaBox [/A (5) 3]").box, (Box{0, 0, 3, 0}));
}

TEST_F(PageTree, InheritsAReferenceUnresolved) {
    pdf.Object(10, "[0 0 9 9]");
    EXPECT_EQ(OnlyPage("", "/MediaBox 10 0 R").box, (Box{0, 0, 9, 9}));
}

// --- rotation ---

TEST_F(PageTree, ReducesARotationToLessThanATurnAndKeepsItsSign) {
    EXPECT_EQ(OnlyPage("/Rotate 450").rotation, 90);
}

TEST_F(PageTree, KeepsANegativeRotation) {
    EXPECT_EQ(OnlyPage("/Rotate -90").rotation, -90);
}

TEST_F(PageTree, ReducesANegativeRotation) {
    EXPECT_EQ(OnlyPage("/Rotate -810").rotation, -90);
}

TEST_F(PageTree, ReducesWholeTurnsToNone) {
    EXPECT_EQ(OnlyPage("/Rotate 720").rotation, 0);
}

TEST_F(PageTree, SurvivesTheLeastIntegerAsARotation) {
    EXPECT_EQ(OnlyPage("/Rotate -2147483648").rotation, static_cast<std::int32_t>(-2147483648LL % 360));
}

TEST_F(PageTree, InheritsARotation) {
    EXPECT_EQ(OnlyPage("", "/Rotate 450").rotation, 90);
}

TEST_F(PageTree, PrefersAPagesOwnRotation) {
    EXPECT_EQ(OnlyPage("/Rotate 0", "/Rotate 90").rotation, 0);
}

TEST_F(PageTree, ResolvesAPagesOwnRotation) {
    pdf.Object(10, "270");
    EXPECT_EQ(OnlyPage("/Rotate 10 0 R").rotation, 270);
}

TEST_F(PageTree, TakesThePayloadOfAnInheritedRotationAsItStands) {
    pdf.Object(10, "270");
    EXPECT_EQ(OnlyPage("", "/Rotate 10 0 R").rotation, 10);
}

TEST_F(PageTree, TakesARotationThatIsNoNumberForNone) {
    for (const char* rotation : {"(s)", "<< /A 1 >>", "[90]", "(s) 0 R", "<6162>"}) {
        const std::string entry = "/Rotate " + std::string(rotation);
        pdf = PdfBuilder();
        pdf.Object(1, "<< /Pages 2 0 R >>");
        Pages(2, "3 0 R 4 0 R", entry).Page(3).Page(4, entry);
        for (const SeenPage& page : Walk()) {
            EXPECT_EQ(page.rotation, 0) << rotation;
        }
    }
}

// --- resources ---

TEST_F(PageTree, TakesAPagesOwnResources) {
    EXPECT_EQ(OnlyPage("/Resources << /A 1 >>", "/Resources << /B 2 >>").resources, "<</A 1>>");
}

TEST_F(PageTree, TakesTheInheritedResourcesForEmptyOnes) {
    EXPECT_EQ(OnlyPage("/Resources << >>", "/Resources << /B 2 >>").resources, "<</B 2>>");
}

TEST_F(PageTree, TakesTheInheritedResourcesForMissingOnes) {
    EXPECT_EQ(OnlyPage("", "/Resources << /B 2 >>").resources, "<</B 2>>");
}

TEST_F(PageTree, TakesTheInheritedResourcesForAReferenceToEmptyOnes) {
    pdf.Object(10, "<< >>");
    EXPECT_EQ(OnlyPage("/Resources 10 0 R", "/Resources << /B 2 >>").resources, "<</B 2>>");
}

TEST_F(PageTree, HandsAReferenceToResourcesOnAsItStands) {
    pdf.Object(10, "<< /A 1 >>");
    EXPECT_EQ(OnlyPage("/Resources 10 0 R").resources, "10 0 R");
}

TEST_F(PageTree, HandsAnInheritedReferenceToResourcesOnAsItStands) {
    pdf.Object(10, "<< /A 1 >>");
    EXPECT_EQ(OnlyPage("", "/Resources 10 0 R").resources, "10 0 R");
}

TEST_F(PageTree, HasNoResourcesWhenAPagesOwnAreNoDictionary) {
    EXPECT_EQ(OnlyPage("/Resources [1]", "/Resources << /B 2 >>").resources, "null");
}

TEST_F(PageTree, SharesAnInheritedDictionaryBetweenItsPages) {
    Pages(2, "3 0 R 4 0 R 5 0 R", "/Resources << /B 2 >>").Page(3).Page(4).Page(5, "/Resources << /A 1 >>");
    const std::vector<SeenPage> pages = Walk();
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_NE(pages[0].inheritedResources, nullptr);
    EXPECT_EQ(pages[0].inheritedResources, pages[1].inheritedResources);
    EXPECT_EQ(pages[2].inheritedResources, nullptr);
}

TEST_F(PageTree, InheritsALargeValueThroughManyLevelsWithoutCopyingIt) {
    std::string resources = "/Resources << ";
    for (int i = 0; i < 20000; ++i) {
        resources += "/K" + std::to_string(i) + " (value) ";
    }
    for (unsigned level = 0; level < 1000; ++level) {
        Pages(level == 0 ? 2 : 100 + level, Reference(101 + level), level == 0 ? resources + ">>" : "");
    }
    Page(1100);
    const std::vector<SeenPage> pages = Walk();
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_NE(pages[0].inheritedResources, nullptr);
    EXPECT_LT(CurrentJob()->allocations.LiveBlocks(), 50000U);
}

}  // namespace
}  // namespace zorvan::test
