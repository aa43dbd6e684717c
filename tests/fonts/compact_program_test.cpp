// The names that compact programs declare.
#include "fonts/compact_program.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using Name = std::string;

/// A header, and a Name INDEX of these offsets and data.
std::string Set(const std::vector<unsigned>& offsets, const std::string& data, unsigned offsetSize = 1) {
    const std::size_t count = offsets.empty() ? 0 : offsets.size() - 1;
    std::string program = "\x01\x00\x04\x01"s;
    program += static_cast<char>(count >> 8U);
    program += static_cast<char>(count & 0xFFU);
    if (count == 0) {
        return program;
    }
    program += static_cast<char>(offsetSize);
    for (const unsigned offset : offsets) {
        for (unsigned byte = offsetSize; byte-- > 0;) {
            program += static_cast<char>(byte > 3 ? 0 : offset >> 8U * byte & 0xFFU);
        }
    }
    return program + data;
}

std::string SetOf(const std::vector<std::string>& names, unsigned offsetSize = 1) {
    std::vector<unsigned> offsets{1};
    std::string data;
    for (const std::string& name : names) {
        data += name;
        offsets.push_back(static_cast<unsigned>(data.size() + 1));
    }
    return Set(offsets, data, offsetSize);
}

Name NameOf(std::string_view program) {
    const std::vector<std::uint8_t> bytes(program.begin(), program.end());
    return ReadCompactFontName(bytes);
}

TEST(CompactFontName, IsTheNameOfTheSetsFont) {
    for (const unsigned offsetSize : {1U, 2U, 3U, 4U}) {
        EXPECT_EQ(NameOf(SetOf({"ABCDEF+Foo-Bold"}, offsetSize) + "more"), "ABCDEF+Foo-Bold") << offsetSize;
    }
}

TEST(CompactFontName, IsTheLastOfSeveralThatFits) {
    EXPECT_EQ(NameOf(SetOf({"First", "Second", "Third"})), "Third");
    EXPECT_EQ(NameOf(SetOf({"First", std::string(127, 'x'), std::string(200, 'y')}, 2)), "First");
}

TEST(CompactFontName, IsShorterThan127Bytes) {
    EXPECT_EQ(NameOf(SetOf({std::string(126, 'x')})), std::string(126, 'x'));
    EXPECT_EQ(NameOf(SetOf({std::string(127, 'x')})), "");
}

TEST(CompactFontName, IsNoneThatPostScriptCannotHold) {
    for (const std::string& name : {"a b"s, "a\nb"s, "a\x80"s, "\x7F"s, "a\0b"s, ""s}) {
        EXPECT_EQ(NameOf(SetOf({name})), "");
        EXPECT_EQ(NameOf(SetOf({"Good", name})), "Good");
    }
}

TEST(CompactFontName, IsNoneOfAnEmptySet) {
    EXPECT_EQ(NameOf(SetOf({})), "");
}

TEST(CompactFontName, IsNoneWhoseOffsetsAreInDisorder) {
    EXPECT_EQ(NameOf(Set({4, 1}, "abcdef")), "");
    EXPECT_EQ(NameOf(Set({0, 3}, "abcdef")), "");
    // From 1 to 4 is a name; from 4 to 2 is none.
    EXPECT_EQ(NameOf(Set({1, 4, 2}, "abcdef")), "abc");
    EXPECT_EQ(NameOf(Set({5, 2, 4}, "abcdef")), "bc");
}

TEST(CompactFontName, IsNoneThatReachesBeyondTheProgram) {
    EXPECT_EQ(NameOf(Set({1, 8}, "abcdef")), "");
    EXPECT_EQ(NameOf(Set({1, 7}, "abcdef")), "abcdef");
    EXPECT_EQ(NameOf(Set({1, 4, 0xFFFFFFFF}, "abcdef", 4)), "abc");
}

TEST(CompactFontName, IsNoneWithOffsetsOfAnImpossibleSize) {
    EXPECT_EQ(NameOf(Set({1, 4}, "abc", 0)), "");
    EXPECT_EQ(NameOf(Set({1, 4}, "abc", 5)), "");
}

TEST(CompactFontName, IsNoneWhereverTheProgramIsCutBeforeItsEnd) {
    const std::string program = SetOf({"Foo"}, 2);
    EXPECT_EQ(NameOf(program), "Foo");
    for (std::size_t size = 0; size < program.size(); ++size) {
        EXPECT_EQ(NameOf(program.substr(0, size)), "") << size;
    }
}

}  // namespace
}  // namespace zorvan::test
