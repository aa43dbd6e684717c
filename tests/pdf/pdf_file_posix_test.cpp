// Opening what only POSIX systems have: devices, pipes, files that may not be read.
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

class OpeningAPosixFile : public JobTest {
protected:
    /// Opens by path, as the job does.
    static Status OpenAt(const std::string& path) {
        static_cast<void>(Open(OnePage("n").Bytes()));
        PdfFile other(nullptr);
        return other.OpenPdfFile(path);
    }
};

TEST_F(OpeningAPosixFile, RefusesADeviceAndAPipe) {
    EXPECT_EQ(OpenAt("/dev/zero"), Status::kOpenFileError);
    const TemporaryFile place("");
    const std::string pipe = place.Path() + ".pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(OpenAt(pipe), Status::kOpenFileError) << "and does not wait for a writer";
    std::filesystem::remove(pipe);
}

TEST_F(OpeningAPosixFile, RefusesAFileThatMayNotBeRead) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "nothing is unreadable for the superuser";
    }
    const TemporaryFile file(OnePage("n").Bytes());
    std::filesystem::permissions(file.Path(), std::filesystem::perms::none);
    EXPECT_EQ(OpenAt(file.Path()), Status::kOpenFileError);
}

}  // namespace
}  // namespace zorvan::test
