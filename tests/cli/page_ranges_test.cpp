// Which pages a range text means.
#include "cli/page_ranges.h"

#include <gmock/gmock.h>

#include "cli/failure.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<unsigned> Pages(std::string_view text, unsigned pageCount) {
    return PageRanges(text).Resolve(pageCount);
}

std::string UsageError(std::string_view text, unsigned pageCount) {
    try {
        Pages(text, pageCount);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Code(), ExitCode::kUsage);
        return failure.what();
    }
    return "no failure";
}

TEST(PageRanges, MeanTheWholeDocumentUnlessGiven) {
    EXPECT_THAT(PageRanges().Resolve(3), ElementsAre(1, 2, 3));
    EXPECT_THAT(PageRanges().Resolve(0), ElementsAre());
}

TEST(PageRanges, TakeNumbersRangesAndAnOpenEnd) {
    EXPECT_THAT(Pages("1-3,7,9-", 11), ElementsAre(1, 2, 3, 7, 9, 10, 11));
    EXPECT_THAT(Pages("2-2", 2), ElementsAre(2));
    EXPECT_THAT(Pages("5-", 5), ElementsAre(5));
}

TEST(PageRanges, AreSortedAndUnited) {
    EXPECT_THAT(Pages("4,1-3,2-5,4", 9), ElementsAre(1, 2, 3, 4, 5));
}

TEST(PageRanges, RefuseAPageOutsideTheDocument) {
    EXPECT_THAT(UsageError("4", 3), HasSubstr("page 4 is outside the document, which has 3 page(s)"));
    EXPECT_THAT(UsageError("1-9", 3), HasSubstr("page 9 is outside"));
    EXPECT_THAT(UsageError("7-", 3), HasSubstr("page 7 is outside"));
    EXPECT_THAT(UsageError("1-4294967295", 3), HasSubstr("page 4294967295 is outside"));
}

TEST(PageRanges, RefuseWhatIsNoRange) {
    for (const char* text : {"", "0", "a", "1,", ",1", "1,,2", "-3", "3-1", "1-2-3", "1 ", "+1", "1.5", "0-2",
                             "4294967296", "1--"}) {
        EXPECT_THAT(UsageError(text, 9), HasSubstr("is no page range")) << text;
    }
}

}  // namespace
}  // namespace zorvan::cli
