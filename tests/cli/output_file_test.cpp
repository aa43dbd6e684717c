// The temporary name and the good one.
#include "cli/output_file.h"

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "cli/failure.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

bool Write(OutputFile& output, const std::string& text) {
    return output.Write(text.data(), text.size());
}

ExitCode CodeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.Code();
    }
    return ExitCode::kDone;
}

TEST(OutputFile, AppearsUnderItsNameOnlyWhenCommitted) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    ASSERT_TRUE(Write(output, "whole"));
    EXPECT_EQ(FileText(scratch.Path("a.ps")), "(missing)");
    output.Commit();
    EXPECT_EQ(FileText(scratch.Path("a.ps")), "whole");
    EXPECT_THAT(scratch.Names(), ElementsAre("a.ps"));
}

TEST(OutputFile, LeavesNothingBehindWithoutCommit) {
    const ScratchFolder scratch;
    {
        OutputFile output(scratch.Path("a.ps"));
        ASSERT_TRUE(Write(output, std::string(300000, 'x')));
        EXPECT_THAT(scratch.Names(), SizeIs(1));
    }
    EXPECT_THAT(scratch.Names(), IsEmpty());
}

TEST(OutputFile, KeepsTheOldFileUntilTheNewOneIsWhole) {
    const ScratchFolder scratch;
    const std::string path = scratch.Write("a.ps", "old");
    {
        OutputFile output(path);
        ASSERT_TRUE(Write(output, "half"));
    }
    EXPECT_EQ(FileText(path), "old");
    OutputFile output(path);
    ASSERT_TRUE(Write(output, "new"));
    output.Commit();
    EXPECT_EQ(FileText(path), "new");
}

TEST(OutputFile, HasThePermissionsOfANewFile) {
    const ScratchFolder scratch;
    const mode_t before = ::umask(027);
    OutputFile output(scratch.Path("a.ps"));
    output.Commit();
    ::umask(before);
    struct stat status = {};
    ASSERT_EQ(::stat(scratch.Path("a.ps").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(OutputFile, ReplacesWhatASymbolicLinkLeadsTo) {
    const ScratchFolder scratch;
    scratch.Write("real.ps", "old");
    std::filesystem::create_symlink("real.ps", scratch.Path("link.ps"));
    OutputFile output(scratch.Path("link.ps"));
    ASSERT_TRUE(Write(output, "new"));
    output.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.Path("link.ps")));
    EXPECT_EQ(FileText(scratch.Path("real.ps")), "new");
}

TEST(OutputFile, TakesBackWhatIsBufferedAndWhatIsWritten) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    ASSERT_TRUE(output.CanTakeBack());
    ASSERT_TRUE(Write(output, "keep") && Write(output, "drop"));
    ASSERT_TRUE(output.TakeBackTo(4));
    ASSERT_TRUE(Write(output, std::string(500000, 'x')) && Write(output, "buffered"));
    ASSERT_TRUE(output.TakeBackTo(5));
    ASSERT_TRUE(Write(output, "end"));
    EXPECT_EQ(output.Position(), 8U);
    output.Commit();
    EXPECT_EQ(FileText(scratch.Path("a.ps")), "keepxend");
}

TEST(OutputFile, PassesPiecesLargerThanItsBuffer) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    const std::string large(400000, 'l');
    ASSERT_TRUE(Write(output, "a") && Write(output, large) && Write(output, "z"));
    EXPECT_EQ(output.Position(), 400002U);
    output.Commit();
    EXPECT_EQ(FileText(scratch.Path("a.ps")), "a" + large + "z");
}

TEST(OutputFile, RefusesEveryWriteAfterTheFirstThatFailed) {
    OutputFile output("/dev/full");
    EXPECT_FALSE(output.CanTakeBack());
    while (Write(output, "piece of text\n") && output.Position() < 10000000) {}
    EXPECT_FALSE(Write(output, "x"));
    EXPECT_EQ(CodeOf([&output] { output.ThrowIfFailed(); }), ExitCode::kBadOutput);
    EXPECT_EQ(CodeOf([&output] { output.Commit(); }), ExitCode::kBadOutput);
}

TEST(OutputFile, TellsOnCommitThatTheLastBytesDidNotFit) {
    OutputFile output("/dev/full");
    ASSERT_TRUE(Write(output, "little"));
    EXPECT_EQ(CodeOf([&output] { output.Commit(); }), ExitCode::kBadOutput);
}

TEST(OutputFile, CannotBeAFolderNorBeInAMissingOne) {
    const ScratchFolder scratch;
    EXPECT_EQ(CodeOf([&] { OutputFile(scratch.Path("")); }), ExitCode::kBadOutput);
    EXPECT_EQ(CodeOf([&] { OutputFile(scratch.Path("no/a.ps")); }), ExitCode::kBadOutput);
}

TEST(OutputFile, MeetsAClosedPipeWithTheStatusOfItsSignal) {
    EXPECT_EQ(static_cast<int>(CodeOf([] { ThrowOutputFailure("x", EPIPE); })), 141);
}

}  // namespace
}  // namespace zorvan::cli
