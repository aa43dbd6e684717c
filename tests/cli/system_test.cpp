// Paths and their folders.
#include "cli/system.h"

#include <gtest/gtest.h>

namespace zorvan::cli {
namespace {

TEST(Folder, OfAPathEndsWithItsSeparator) {
    EXPECT_EQ(FolderOf("a/b.ps"), "a/");
    EXPECT_EQ(FolderOf("a//b.ps"), "a//");
    EXPECT_EQ(FolderOf("/b.ps"), "/");
}

TEST(Folder, GetsASeparatorAtItsEndOnce) {
    EXPECT_EQ(WithSeparator("a/"), "a/");
    EXPECT_EQ(WithSeparator(WithSeparator("a")), WithSeparator("a"));
    EXPECT_EQ(FolderOf(WithSeparator("a") + "b.ps"), WithSeparator("a"));
}

}  // namespace
}  // namespace zorvan::cli
