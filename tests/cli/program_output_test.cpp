// The program and its output: files and streams.
#include <string>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::HasSubstr;

class ProgramOutput : public testing::Test {
protected:
    ScratchFolder scratch_;
    std::string pdf_ = scratch_.Write("a.pdf", SamplePdf(3));
};

TEST_F(ProgramOutput, IsTheSameInAFileAndOnStandardOutput) {
    ASSERT_EQ(RunZorvan({pdf_, scratch_.Path("b.ps")}).exitCode, 0);
    ASSERT_EQ(RunZorvan({pdf_, "-o", scratch_.Path("c.ps")}).exitCode, 0);
    const RunResult run = RunZorvan({pdf_, "-"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, FileText(scratch_.Path("b.ps")));
    EXPECT_EQ(run.out, FileText(scratch_.Path("c.ps")));
}

TEST_F(ProgramOutput, ReplacesAnEarlierFile) {
    const std::string earlier = scratch_.Write("a.ps", "earlier");
    EXPECT_EQ(RunZorvan({pdf_}).exitCode, 0);
    EXPECT_TRUE(FileText(earlier).starts_with("%!PS-Adobe-3.0\n"));
}

TEST_F(ProgramOutput, CannotBeAFolderOrInAMissingOne) {
    const RunResult folder = RunZorvan({pdf_, scratch_.Path("")});
    EXPECT_EQ(folder.exitCode, 2);
    EXPECT_THAT(folder.err, HasSubstr("Is a directory"));
    EXPECT_EQ(RunZorvan({pdf_, scratch_.Path("no/a.ps")}).exitCode, 2);
}

TEST_F(ProgramOutput, IsThereWhenItIsDoneBeforeItsTimeIsUp) {
    EXPECT_EQ(RunZorvan({"--timeout=1000", pdf_}).exitCode, 0);
}

}  // namespace
}  // namespace zorvan::cli
