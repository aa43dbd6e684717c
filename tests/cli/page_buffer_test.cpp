// The buffer in memory and beyond it.
#include "cli/page_buffer.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvan::cli {
namespace {

void Append(PageBuffer& buffer, const std::string& text) {
    ASSERT_TRUE(buffer.Append(text.data(), text.size()));
}

std::string Copy(PageBuffer& buffer, std::uint64_t begin, std::uint64_t end) {
    std::string text;
    EXPECT_TRUE(buffer.Copy(begin, end, [&text](std::string_view part) {
        text += part;
        return true;
    }));
    return text;
}

// Numbered lines, so that a byte out of place shows.
std::string NumberedLines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string(i) + "\n";
    }
    return text;
}

TEST(PageBuffer, GivesBackWhatItTook) {
    PageBuffer buffer;
    Append(buffer, "abc");
    Append(buffer, "def");
    EXPECT_EQ(buffer.Size(), 6U);
    EXPECT_EQ(Copy(buffer, 0, 6), "abcdef");
    EXPECT_EQ(Copy(buffer, 2, 4), "cd");
    EXPECT_EQ(Copy(buffer, 6, 6), "");
}

TEST(PageBuffer, SpillsBeyondItsLimitAndKeepsTheOrder) {
    const std::string text = NumberedLines(50000);
    PageBuffer buffer(1000);
    for (std::size_t at = 0; at < text.size(); at += 17) {
        Append(buffer, text.substr(at, 17));
    }
    EXPECT_EQ(buffer.Size(), text.size());
    EXPECT_EQ(Copy(buffer, 0, text.size()), text);
    for (const std::size_t split : {std::size_t{1}, std::size_t{999}, std::size_t{1003}, text.size() - 1}) {
        EXPECT_EQ(Copy(buffer, 0, split) + Copy(buffer, split, text.size()), text) << split;
    }
}

TEST(PageBuffer, StartsOverWhenCleared) {
    PageBuffer buffer(4);
    Append(buffer, "first page");
    buffer.Clear();
    EXPECT_EQ(buffer.Size(), 0U);
    Append(buffer, "second page");
    Append(buffer, "!");
    EXPECT_EQ(Copy(buffer, 0, buffer.Size()), "second page!");
}

TEST(PageBuffer, StopsWhenTheTakerRefuses) {
    PageBuffer buffer(4);
    Append(buffer, "spilled");
    int calls = 0;
    EXPECT_FALSE(buffer.Copy(0, 7, [&calls](std::string_view) {
        ++calls;
        return false;
    }));
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace zorvan::cli
