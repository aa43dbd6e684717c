// The program and its pages: which are converted, and what becomes of those that fail.
#include <string>
#include <string_view>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The labels of the pages in a PostScript document, in order.
std::string PageLabels(const std::string& document) {
    constexpr std::string_view kComment = "\n%%Page: ";
    std::string labels;
    for (std::size_t at = 0; (at = document.find(kComment, at)) != std::string::npos;) {
        at += kComment.size();
        labels += document.substr(at, document.find(' ', at) + 1 - at);
    }
    return labels;
}

std::string WithoutFeatures(std::string document) {
    constexpr std::string_view kEnd = "%%EndFeature\n";
    for (std::size_t at = 0; (at = document.find("%%BeginFeature: *PageSize ")) != std::string::npos;) {
        document.erase(at, document.find(kEnd, at) + kEnd.size() - at);
    }
    return document;
}

class ProgramPages : public testing::Test {
protected:
    std::string WritePdf(const std::vector<SamplePage>& pages) const {
        return scratch_.Write("a.pdf", SamplePdf(pages));
    }
    std::string Output() const { return FileText(scratch_.Path("a.ps")); }

    ScratchFolder scratch_;
};

TEST_F(ProgramPages, AreAllConvertedByDefault) {
    const RunResult run = RunZorvan({WritePdf({{}, {}, {}})});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(PageLabels(Output()), "1 2 3 ");
    EXPECT_TRUE(Output().ends_with("%%Trailer\n%%EOF\n"));
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "a.ps"));
}

TEST_F(ProgramPages, AreChosenSortedAndUnitedUnderTheDocumentsCount) {
    EXPECT_EQ(RunZorvan({"--pages", "4-,2,2-2", WritePdf({{}, {}, {}, {}, {}})}).exitCode, 0);
    EXPECT_EQ(PageLabels(Output()), "2 4 5 ");
    EXPECT_THAT(Output(), HasSubstr("\n%%Pages: 5\n"));
}

TEST_F(ProgramPages, OutsideTheDocumentAreAnErrorAndLeaveNothing) {
    const RunResult run = RunZorvan({"--pages", "2-4", WritePdf({{}, {}, {}})});
    EXPECT_EQ(run.exitCode, 64);
    EXPECT_THAT(run.err, HasSubstr("page 4 is outside the document, which has 3 page(s)"));
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

TEST_F(ProgramPages, AskForTheirSizeAndAreOtherwiseTheLibrarysBytes) {
    const std::string pdf = WritePdf({{}, {"0 0 9 9 re f\n", "10 10 110 210", 90, 0}});
    ASSERT_EQ(RunZorvan({pdf}).exitCode, 0);
    const std::string withSizes = Output();
    ASSERT_EQ(RunZorvan({"--page-size=none", pdf}).exitCode, 0);
    EXPECT_THAT(withSizes, HasSubstr("%%BeginPageSetup\n%%BeginFeature: *PageSize 200x300\n"));
    EXPECT_THAT(withSizes, HasSubstr("%%BeginPageSetup\n%%BeginFeature: *PageSize 200x100\n"));
    EXPECT_THAT(Output(), Not(HasSubstr("%%BeginFeature")));
    EXPECT_EQ(WithoutFeatures(withSizes), Output());
}

TEST_F(ProgramPages, EndTheJobWhenOneFails) {
    const std::string earlier = scratch_.Write("a.ps", "earlier");
    const RunResult run = RunZorvan({WritePdf({{}, BrokenPage(), {}})});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.err, HasSubstr("page 2 cannot be converted: error -4093: "));
    EXPECT_EQ(FileText(earlier), "earlier");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "a.ps"));
}

TEST_F(ProgramPages, ThatFailLeaveNoTrailerOnAStream) {
    const RunResult run = RunZorvan({WritePdf({{}, BrokenPage()}), "-"});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.out, Not(HasSubstr("%%Trailer")));
}

// The document with a page missing is the document that was converted without that page.
TEST_F(ProgramPages, ThatFailAreCutOffAgainWhenTheJobGoesOn) {
    const std::string pdf = WritePdf({{}, BrokenPage(), {}});
    for (const char* pageSize : {"--page-size=auto", "--page-size=none"}) {
        ASSERT_EQ(RunZorvan({pageSize, "--pages=1,3", pdf}).exitCode, 0);
        const std::string expected = Output();
        const RunResult inFile = RunZorvan({pageSize, "--keep-going", pdf});
        EXPECT_EQ(inFile.exitCode, 3);
        EXPECT_THAT(inFile.err, HasSubstr("page 2 is left out: error -4093"));
        EXPECT_EQ(Output(), expected);
        const RunResult inPipe = RunZorvan({pageSize, "--keep-going", pdf, "-"});
        EXPECT_EQ(inPipe.exitCode, 3);
        EXPECT_EQ(inPipe.out, expected);
    }
}

TEST_F(ProgramPages, ThatFailAreNamedEvenQuietly) {
    const RunResult run = RunZorvan({"--quiet", "--keep-going", WritePdf({{}, BrokenPage()})});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("page 2 is left out"));
    EXPECT_THAT(run.err, Not(HasSubstr("warning")));
}

TEST_F(ProgramPages, AreDoneWithAWarningWhenAnErrorIsRecorded) {
    const std::string pdf = WritePdf({OverlongPage()});
    const RunResult run = RunZorvan({pdf});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("warning: error -4094: "));
    EXPECT_THAT(run.err, HasSubstr("at byte "));
    EXPECT_EQ(PageLabels(Output()), "1 ");
    const RunResult quiet = RunZorvan({"--quiet", pdf});
    EXPECT_EQ(quiet.exitCode, 3);
    EXPECT_EQ(quiet.err, "");
}

// 12 MB of one page pass through the temporary file when the page must be held back whole.
TEST_F(ProgramPages, LargerThanTheMemoryForThemAreHeldBackInAFile) {
    SamplePage large;
    for (int i = 0; i < 800000; ++i) {
        large.content += "1 2 30 40 re f\n";
    }
    const std::string pdf = WritePdf({large, BrokenPage()});
    ASSERT_EQ(RunZorvan({"--pages=1", pdf}).exitCode, 0);
    const RunResult run = RunZorvan({"--keep-going", pdf, "-"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.out == Output()) << run.out.size() << " bytes, not " << Output().size();
}

}  // namespace
}  // namespace zorvan::cli
