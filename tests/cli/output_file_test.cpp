// The temporary name and the good one.
#include "cli/output_file.h"

#include <string>

#include <gmock/gmock.h>

#include "tests/cli/output_file_helpers.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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
