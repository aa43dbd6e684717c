// The program and what only POSIX systems have for its input: FIFOs, permissions, paths of any length, links.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/program_run.h"
#include "tests/cli/refused_input.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::HasSubstr;

TEST(ProgramPosixInput, MustNotBeAFifo) {
    const ScratchFolder scratch;
    ASSERT_EQ(::mkfifo(scratch.Path("a.pdf").c_str(), 0600), 0);
    ExpectRefused(scratch.Path("a.pdf"), 1, "is not a regular file");
}

TEST(ProgramPosixInput, MustBeReadable) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(1));
    ::chmod(pdf.c_str(), 0);
    if (::access(pdf.c_str(), R_OK) == 0) {
        GTEST_SKIP() << "this user may read every file";
    }
    ExpectRefused(pdf, 1, "Permission denied");
}

TEST(ProgramPosixInput, MayHaveAPathLongerThanTheLibraryTakes) {
    const ScratchFolder scratch;
    const std::string folder = scratch.Path(std::string(150, 'a') + "/" + std::string(150, 'b'));
    std::filesystem::create_directories(folder);
    std::filesystem::rename(scratch.Write("a.pdf", SamplePdf(1)), folder + "/a.pdf");
    EXPECT_EQ(RunZorvan({folder + "/a.pdf"}).exitCode, 0);
    EXPECT_THAT(FileText(folder + "/a.ps"), HasSubstr("%%Page: 1 1"));
}

TEST(ProgramPosixInput, IsNeverOverwrittenThroughALink) {
    const ScratchFolder scratch;
    const std::string text = SamplePdf(1);
    const std::string pdf = scratch.Write("a.pdf", text);
    std::filesystem::create_symlink("a.pdf", scratch.Path("link.ps"));
    EXPECT_EQ(RunZorvan({pdf, scratch.Path("link.ps")}).exitCode, 64);
    EXPECT_EQ(FileText(pdf), text);
}

}  // namespace
}  // namespace zorvan::cli
