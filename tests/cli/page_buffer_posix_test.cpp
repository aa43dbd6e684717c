// The buffer's file where POSIX can take its folder away and show that it has no name.
#include <cerrno>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "cli/page_buffer.h"
#include "support/environment_setting.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

// A process that may open no further file stands for every reason why there is no temporary file.
TEST(PosixPageBuffer, TellsThatItCannotSpill) {
    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none = {0, limit.rlim_max};
    PageBuffer buffer(4);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const bool taken = buffer.Append("12345", 5);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_FALSE(taken);
    EXPECT_EQ(buffer.Error(), EMFILE);
}

TEST(PosixPageBuffer, LeavesNoNameInTheTemporaryFolder) {
    const ScratchFolder scratch;
    const test::EnvironmentSetting folder("TMPDIR", scratch.Path("").c_str());
    PageBuffer buffer(4);
    ASSERT_TRUE(buffer.Append("more than four", 14));
    EXPECT_TRUE(scratch.Names().empty());
    std::string text;
    EXPECT_TRUE(buffer.Copy(0, 14, [&text](std::string_view part) {
        text += part;
        return true;
    }));
    EXPECT_EQ(text, "more than four");
}

}  // namespace
}  // namespace zorvan::cli
