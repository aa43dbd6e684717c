// The program and its input: what it takes, what it refuses, and what it then leaves alone.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/refused_input.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(ProgramInput, MustBeThere) {
    ExpectRefused("/no/such/file.pdf", 1, "/no/such/file.pdf: No such file or directory");
}

TEST(ProgramInput, MustNotBeAFolder) {
    const ScratchFolder scratch;
    ExpectRefused(scratch.Path(""), 1, "is a directory");
}

TEST(ProgramInput, MustNotBeEmpty) {
    const ScratchFolder scratch;
    ExpectRefused(scratch.Write("a.pdf", ""), 1, "is empty");
}

TEST(ProgramInput, MustBeAPdf) {
    const ScratchFolder scratch;
    ExpectRefused(scratch.Write("a.pdf", "plain text\n"), 1, "error -4069");
    ExpectRefused(scratch.Write("b.pdf", "%PDF"), 1, "error -4069");
}

TEST(ProgramInput, MustNotBeLargerThanTheLibraryCanMap) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(1));
    std::filesystem::resize_file(pdf, std::uintmax_t{1} << 32U);  // a hole, which takes no room
    ExpectRefused(pdf, 1, "is too large to be mapped whole");
}

TEST(ProgramInput, MustHavePages) {
    const ScratchFolder scratch;
    ExpectRefused(scratch.Write("a.pdf", SamplePdf(0)), 1, "has no pages");
}

TEST(ProgramInput, IsNeverOverwritten) {
    const ScratchFolder scratch;
    const std::string text = SamplePdf(1);
    const std::string pdf = scratch.Write("a.pdf", text);
    for (const char* output : {"a.pdf", "./a.pdf"}) {
        const RunResult run = RunZorvan({pdf, scratch.Path(output)});
        EXPECT_EQ(run.exitCode, 64) << output;
        EXPECT_THAT(run.err, HasSubstr("never overwritten"));
    }
    EXPECT_EQ(FileText(pdf), text);
}

TEST(ProgramInput, HasItsNameMadePrintableInMessages) {
    const RunResult run = RunZorvan({"no\nsuch\x1b.pdf"});
    EXPECT_THAT(run.err, HasSubstr("no\\nsuch\\x1b.pdf"));
}

TEST(ProgramUsage, IsExplainedWithStatus64) {
    const RunResult run = RunZorvan({"--nonsense"});
    EXPECT_EQ(run.exitCode, 64);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("zorvan --help"));
}

TEST(ProgramUsage, IsToldOnStandardOutputWhenAskedFor) {
    const RunResult help = RunZorvan({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_THAT(help.out, HasSubstr("--keep-going"));
    EXPECT_EQ(RunZorvan({"--version"}).exitCode, 0);
}

TEST(ProgramCodecs, AreMissedWithTheLibrarysCode) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(1));
    const RunResult run = RunZorvan({"--filter-dir", scratch.Path("empty/"), pdf});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.err, HasSubstr("error -4089"));
    EXPECT_THAT(run.err, HasSubstr(scratch.Path("empty/")));
    EXPECT_THAT(scratch.Names(), ElementsAre("a.pdf"));
}

TEST(ProgramCodecs, AreTakenFromAnotherFolder) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(1));
    std::filesystem::create_directory(scratch.Path("codecs"));
    std::filesystem::copy_file(std::filesystem::path(ZORVAN_FOLDER) / "Filter.dll",
                               scratch.Path("codecs/Filter.dll"));
    EXPECT_EQ(RunZorvan({"--filter-dir", scratch.Path("codecs"), pdf}).exitCode, 0);
}

}  // namespace
}  // namespace zorvan::cli
