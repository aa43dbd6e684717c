// The program and its output on Windows: the null device, a file that others hold, pipes and interruptions.
#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <windows.h>

#include "support/system.h"
#include "tests/cli/program_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ProgramOutputOnWindows : public testing::Test {
protected:
    [[nodiscard]] std::string Zorvan(const std::string& options) const {
        return ZORVAN_PROGRAM " " + options + " " + test::ShellWord(pdf_);
    }
    /// What a command ends with that finds its standard error full and unread, while `meanwhile` runs, which
    /// takes some seconds: then what the program has to say of its first, broken page holds it up.
    [[nodiscard]] std::string RunStuck(const std::string& command, const std::string& meanwhile) const {
        const std::string status = test::ShellWord(scratch_.Path("status"));
        const std::string full = "head -c 65536 /dev/zero >&2; " + command + "; echo $? >" + status;
        return test::RunShell("{ " + full + "; } 2>&1 >/dev/null | { " + meanwhile + "; cat " + status +
                              "; rm " + status + "; }")
            .text;
    }

    ScratchFolder scratch_;
    std::string pdf_ = scratch_.Write("a.pdf", SamplePdf({BrokenPage(), {}}));
};

TEST_F(ProgramOutputOnWindows, MayBeTheNullDevice) {
    EXPECT_EQ(RunZorvan({"--keep-going", pdf_, "NUL"}).exitCode, 3);
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

TEST_F(ProgramOutputOnWindows, StaysWhatItWasWhileAnotherProcessHoldsIt) {
    const std::string earlier = scratch_.Write("a.ps", "earlier");
    const HANDLE holder = CreateFileA(earlier.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    const RunResult run = RunZorvan({"--keep-going", pdf_});
    CloseHandle(holder);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("a.ps: "));
    EXPECT_EQ(FileText(earlier), "earlier");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "a.ps"));
}

TEST_F(ProgramOutputOnWindows, MayBeNamedInFull) {
    std::string path = R"(\\?\Z:)" + scratch_.Path("b.ps");
    std::replace(path.begin(), path.end(), '/', '\\');
    EXPECT_EQ(RunZorvan({"--keep-going", pdf_, path}).exitCode, 3);
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "b.ps"));
}

TEST_F(ProgramOutputOnWindows, ReplacesWhatASymbolicLinkLeadsTo) {
    const std::string real = scratch_.Write("real.ps", "old");
    const std::string link = test::ShellWord(scratch_.Path("link.ps"));
    ASSERT_EQ(test::RunShell("ln -s real.ps " + link).status, 0);
    EXPECT_EQ(RunZorvan({"--keep-going", pdf_, scratch_.Path("link.ps")}).exitCode, 3);
    EXPECT_THAT(FileText(real), HasSubstr("%!PS-Adobe-3.0"));
    // The C++ library finds no end in removing a folder with a link of the machine in it.
    EXPECT_EQ(test::RunShell("readlink " + link + " && rm " + link).text, "real.ps\n");
}

TEST_F(ProgramOutputOnWindows, EndsWithTheReaderOfThePipe) {
    const std::string status = scratch_.Path("status");
    const test::Outcome outcome = test::RunShell("{ sleep 1; " + Zorvan("--quiet --keep-going") +
                                                 " -; echo $? >" + test::ShellWord(status) + "; } | true");
    EXPECT_EQ(FileText(status), "141\n") << outcome.text;
}

TEST_F(ProgramOutputOnWindows, OfAJobWhoseTimeIsUpIsNotLeft) {
    EXPECT_EQ(RunStuck(Zorvan("--keep-going --timeout 2"), "sleep 6"), "124\n");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

// Wine makes of the signal what a console makes of the keys.
TEST_F(ProgramOutputOnWindows, OfAJobThatIsInterruptedIsNotLeft) {
    const std::string interrupt = "sleep 3; pkill -INT -f '[z]orvan.exe --keep-going --pages 1-'; sleep 1";
    EXPECT_EQ(RunStuck(Zorvan("--keep-going --pages 1-"), interrupt), "130\n");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

}  // namespace
}  // namespace zorvan::cli
