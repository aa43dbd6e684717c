// Paths as Windows has them: drives, two separators, the prefix of long ones, code pages.
#include <gtest/gtest.h>

#include "cli/system.h"

namespace zorvan::cli {
namespace {

TEST(FolderOnWindows, IsWhatThePathNames) {
    EXPECT_EQ(FolderOf("b.ps"), ".\\");
    EXPECT_EQ(FolderOf("a\\b.ps"), "a\\");
    EXPECT_EQ(FolderOf("a/b\\c/d.ps"), "a/b\\c/");
    EXPECT_EQ(FolderOf("\\b.ps"), "\\");
    EXPECT_EQ(FolderOf("C:\\b.ps"), "C:\\");
    EXPECT_EQ(FolderOf("C:b.ps"), "C:");
    EXPECT_EQ(FolderOf(R"(\\?\C:\b.ps)"), R"(\\?\C:\)");
    EXPECT_EQ(FolderOf(R"(\\server\share\b.ps)"), R"(\\server\share\)");
}

TEST(FolderOnWindows, GetsASeparatorUnlessItIsADrive) {
    EXPECT_EQ(WithSeparator("a"), "a\\");
    EXPECT_EQ(WithSeparator("a\\"), "a\\");
    EXPECT_EQ(WithSeparator("C:"), "C:");
}

}  // namespace
}  // namespace zorvan::cli
