// What only POSIX systems have for files: permissions, links and a device that is always full.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "cli/document_sink.h"
#include "cli/output_file.h"
#include "tests/cli/output_file_helpers.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

TEST(PosixOutputFile, HasThePermissionsOfANewFile) {
    const ScratchFolder scratch;
    const mode_t before = ::umask(027);
    OutputFile output(scratch.Path("a.ps"));
    output.Commit();
    ::umask(before);
    struct stat status = {};
    ASSERT_EQ(::stat(scratch.Path("a.ps").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(PosixOutputFile, ReplacesWhatASymbolicLinkLeadsTo) {
    const ScratchFolder scratch;
    scratch.Write("real.ps", "old");
    std::filesystem::create_symlink("real.ps", scratch.Path("link.ps"));
    OutputFile output(scratch.Path("link.ps"));
    ASSERT_TRUE(Write(output, "new"));
    output.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.Path("link.ps")));
    EXPECT_EQ(FileText(scratch.Path("real.ps")), "new");
}

TEST(PosixOutputFile, RefusesEveryWriteAfterTheFirstThatFailed) {
    OutputFile output("/dev/full");
    EXPECT_FALSE(output.CanTakeBack());
    while (Write(output, "piece of text\n") && output.Position() < 10000000) {}
    EXPECT_FALSE(Write(output, "x"));
    EXPECT_EQ(CodeOf([&output] { output.ThrowIfFailed(); }), ExitCode::kBadOutput);
    EXPECT_EQ(CodeOf([&output] { output.Commit(); }), ExitCode::kBadOutput);
}

TEST(PosixOutputFile, TellsOnCommitThatTheLastBytesDidNotFit) {
    OutputFile output("/dev/full");
    ASSERT_TRUE(Write(output, "little"));
    EXPECT_EQ(CodeOf([&output] { output.Commit(); }), ExitCode::kBadOutput);
}

TEST(PosixDocumentSink, RefusesPiecesOnceTheOutputIsFull) {
    OutputFile output("/dev/full");
    DocumentSink sink(output, {});
    const std::string piece(1000, 'x');
    int taken = 0;
    while (taken < 1000 && sink.Take(piece.data(), piece.size())) {
        ++taken;
    }
    EXPECT_LT(taken, 1000);
    EXPECT_THROW(sink.ThrowIfFailed(), std::runtime_error);
}

}  // namespace
}  // namespace zorvan::cli
