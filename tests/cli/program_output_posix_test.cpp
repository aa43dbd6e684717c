// The program and what only POSIX systems have for its output: devices, FIFOs, limits, pipes and signals.
#include <array>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/posix_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ProgramPosixOutput : public testing::Test {
protected:
    ScratchFolder scratch_;
    std::string pdf_ = scratch_.Write("a.pdf", SamplePdf(3));
};

TEST_F(ProgramPosixOutput, MayBeADevice) {
    EXPECT_EQ(RunZorvan({pdf_, "/dev/null"}).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(ProgramPosixOutput, MayBeAFifo) {
    const std::string fifo = scratch_.Path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = FileText(fifo); });
    EXPECT_EQ(RunZorvan({pdf_, fifo}).exitCode, 0);
    reader.join();
    EXPECT_EQ(read, RunZorvan({pdf_, "-"}).out);
    EXPECT_TRUE(std::filesystem::is_fifo(fifo));
}

TEST_F(ProgramPosixOutput, CannotBeAFullDevice) {
    const RunResult run = RunZorvan({pdf_, "/dev/full"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("/dev/full: No space left on device"));
}

TEST_F(ProgramPosixOutput, OfInfoAndHelpIsMissedOnAFullDevice) {
    const auto fullOutput = [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); };
    EXPECT_EQ(RunZorvan({"--info", pdf_}, fullOutput).exitCode, 2);
    EXPECT_EQ(RunZorvan({"--help"}, fullOutput).exitCode, 2);
}

TEST_F(ProgramPosixOutput, CannotBeAClosedStandardOutput) {
    EXPECT_EQ(RunZorvan({pdf_, "-"}, [] { ::close(STDOUT_FILENO); }).exitCode, 2);
}

// A limit on the file's size stands for a disk that fills up in the middle of the job.
TEST_F(ProgramPosixOutput, ThatDoesNotFitLeavesTheEarlierFile) {
    const std::string earlier = scratch_.Write("a.ps", "earlier");
    const RunResult run = RunZorvan({pdf_}, [] {
        const rlimit limit = {1024, 1024};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(FileText(earlier), "earlier");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "a.ps"));
}

TEST_F(ProgramPosixOutput, EndsWithTheReaderOfThePipe) {
    const RunResult run = RunZorvan({pdf_, "-"}, [] {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) == 0) {
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
            ::close(ends[1]);
        }
    });
    EXPECT_EQ(run.exitCode, 128 + SIGPIPE);
    EXPECT_EQ(run.err, "");
}

class ProgramUnderSignals : public testing::Test {
protected:
    // Waits until the job stands still behind its first, broken page, with its temporary file open.
    void WaitForTemporaryFile() const {
        while (scratch_.Names().size() < 2) {
            ::usleep(1000);
        }
    }

    ScratchFolder scratch_;
    std::string pdf_ = scratch_.Write("a.pdf", SamplePdf({BrokenPage(), {}}));
};

TEST_F(ProgramUnderSignals, EndsAtOnceAndLeavesNothing) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        StuckZorvan zorvan({"--keep-going", pdf_});
        WaitForTemporaryFile();
        zorvan.Send(signal);
        EXPECT_EQ(zorvan.Wait(), 128 + signal);
        EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
    }
}

TEST_F(ProgramUnderSignals, EndsWhenItsTimeIsUpAndLeavesNothing) {
    StuckZorvan zorvan({"--keep-going", "--timeout", "1", pdf_});
    EXPECT_EQ(zorvan.Wait(), 124);
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

TEST_F(ProgramUnderSignals, TellsWhyItsTimeWasNotEnough) {
    const std::string fifo = scratch_.Path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const RunResult run = RunZorvan({"--timeout", "1", pdf_, fifo});
    EXPECT_EQ(run.exitCode, 124);
    EXPECT_EQ(run.err, "zorvan: the job is not done in the time that --timeout gives\n");
}

TEST_F(ProgramUnderSignals, GoesOnWhereTheyWereIgnoredFromTheStart) {
    StuckZorvan zorvan({"--keep-going", pdf_}, [] { ::signal(SIGHUP, SIG_IGN); });
    WaitForTemporaryFile();
    zorvan.Send(SIGHUP);
    zorvan.Release();
    EXPECT_EQ(zorvan.Wait(), 3);
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf", "a.ps"));
}

}  // namespace
}  // namespace zorvan::cli
