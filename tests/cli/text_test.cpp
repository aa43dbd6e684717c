// Texts made safe for a terminal line and for JSON.
#include <gtest/gtest.h>

#include "cli/json_text.h"
#include "cli/messages.h"
#include "cli/printable_text.h"

namespace zorvan::cli {
namespace {

TEST(OneLine, EscapesControlCharactersAndKeepsUtf8) {
    EXPECT_EQ(OneLine("a\nb\r\t\x1b[2J\x7f\xc3\xa9"), "a\\nb\\r\\t\\x1b[2J\\x7f\xc3\xa9");
}

TEST(QuotedBytes, MakesBytesOfAnyKindPrintable) {
    EXPECT_EQ(QuotedBytes(std::string_view("q \"\\\n\0\xff", 7)), R"("q \"\\\n\x00\xff")");
    EXPECT_EQ(QuotedBytes(""), R"("")");
}

TEST(JsonString, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(JsonString("a\"\\\n\x1f"), R"("a\"\\\u000a\u001f")");
}

TEST(JsonString, KeepsUtf8) {
    EXPECT_EQ(JsonString("\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80"), "\"\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80\"");
}

TEST(JsonString, ReplacesBytesThatAreNoUtf8) {
    // A lone continuation byte, a cut sequence, an overlong slash, a surrogate, a point beyond Unicode.
    EXPECT_EQ(JsonString("\x80"), R"("\ufffd")");
    EXPECT_EQ(JsonString("\xe4\xb8"), R"("\ufffd\ufffd")");
    EXPECT_EQ(JsonString("\xc0\xaf"), R"("\ufffd\ufffd")");
    EXPECT_EQ(JsonString("\xed\xa0\x80"), R"("\ufffd\ufffd\ufffd")");
    EXPECT_EQ(JsonString("\xf4\x90\x80\x80"), R"("\ufffd\ufffd\ufffd\ufffd")");
    EXPECT_EQ(JsonString("\xff"), R"("\ufffd")");
}

TEST(ErrorText, TellsCodeTextOffsetAndExcerpt) {
    EXPECT_EQ(ErrorText({-4093, "Operator is not enough.", 123, "1 m\n"}),
              R"(error -4093: Operator is not enough. (at byte 123, near "1 m\n"))");
    EXPECT_EQ(ErrorText({-4069, "Illegal PDF file.", 0, ""}), "error -4069: Illegal PDF file.");
    EXPECT_EQ(ErrorText({-4071, "Scan token error.", 0, "]"}),
              R"(error -4071: Scan token error. (near "]"))");
    EXPECT_EQ(ErrorText({-4071, "", 5, ""}), "error -4071 (at byte 5)");
}

TEST(StatusText, NamesTheFirstErrorOnlyWhenItIsAnother) {
    const LibraryError first = {-4093, "Operator is not enough.", 0, ""};
    EXPECT_EQ(StatusText(-4093, first), "error -4093: Operator is not enough.");
    EXPECT_EQ(StatusText(-4071, first),
              "error -4071; the job's first error: error -4093: Operator is not enough.");
    EXPECT_EQ(StatusText(-1, {}), "error -1");
}

}  // namespace
}  // namespace zorvan::cli
