// Strings of the file, written so that the device reads each as one string.
#include "ps/device_parameters.h"

#include <string>
#include <string_view>

#include <gmock/gmock.h>

#include "pdf/object.h"
#include "ps/output.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

/// What is written for a text.
std::string Written(std::string_view text) {
    OutputPiece piece;
    AppendStringText(piece, text);
    return std::string(piece.View());
}

TEST(StringText, StandsAsItIsWhenItIsOneString) {
    for (const std::string& text : {""s, "plain"s, "a (nested (twice)) b"s, "()()"s, "\\)"s, "\\("s, "\\\\"s,
                                    "\\\\()"s, "a\\\\\\)b"s, "\\101\\n"s, "\r\n\t\0\xFF%<~/"s}) {
        EXPECT_EQ(Written(text), "(" + text + ")");
    }
}

TEST(StringText, IsEscapedWhenItIsNone) {
    EXPECT_EQ(Written("("), "(\\()");
    EXPECT_EQ(Written(")"), "(\\))");
    EXPECT_EQ(Written(")("), "(\\)\\()");
    EXPECT_EQ(Written("a(b"), "(a\\(b)");
    EXPECT_EQ(Written("\\"), "(\\\\)");
    EXPECT_EQ(Written("a\\\\\\"), "(a\\\\\\\\\\\\)");
    EXPECT_EQ(Written("(\\)"), "(\\(\\\\\\))");
    EXPECT_EQ(Written("(a)) quit ("), "(\\(a\\)\\) quit \\()");
}

// A program that cuts a document at its comments would else cut the string, and the prolog a CMap.
TEST(StringText, HasABackslashBeforeWhatLooksLikeAComment) {
    EXPECT_EQ(Written("a\n%%Page: 6 6\rb\r\n%!c\n\n%"), "(a\n\\%%Page: 6 6\rb\r\n\\%!c\n\n\\%)");
    EXPECT_EQ(Written("a\\\n%b"), "(a\\\n\\%b)");
    EXPECT_EQ(Written(")\n%%EOF"), "(\\)\n\\%%EOF)");
    EXPECT_EQ(Written("a%%EndResource b%%EndResourc%"), "(a%\\%EndResource b%%EndResourc%)");
    EXPECT_EQ(Written("%%%EndResource%EndResource"), "(%%\\%EndResource%EndResource)");
    EXPECT_EQ(Written("\n%%EndResource"), "(\n\\%\\%EndResource)");
    EXPECT_EQ(Written("%%a %b\t%\f%\n a%"), "(%%a %b\t%\f%\n a%)");
}

TEST(TextOfAComment, StaysOnItsLine) {
    EXPECT_EQ(OnOneLine("a\nb\rc\fd\r\n%%EOF\te\0f"s), "a b c d  %%EOF\te\0f"s);
}

class StringOfTheFile : public JobTest {
protected:
    /// The text of a string that stands so between its delimiters in the file.
    static std::string Text(std::string_view text, StringKind kind = StringKind::kLiteral) {
        const OwnedObject string(
            MakeString({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, kind));
        return TextOfString(string.Get());
    }
    static std::string OfDigits(std::string_view digits) { return Text(digits, StringKind::kHexadecimal); }
};

TEST_F(StringOfTheFile, KeepsItsEscapes) {
    EXPECT_EQ(Text("a\\)b\\101(c)"), "a\\)b\\101(c)");
    EXPECT_EQ(Text(""), "");
    EXPECT_EQ(Text("\0\xFF"s), "\0\xFF"s);
}

TEST_F(StringOfTheFile, OfDigitsIsItsBytes) {
    EXPECT_EQ(OfDigits("4869"), "Hi");
    EXPECT_EQ(OfDigits("4 8\n69 "), "Hi");
    EXPECT_EQ(OfDigits("6d6D"), "mm");
    EXPECT_EQ(OfDigits(""), "");
    EXPECT_EQ(OfDigits("28295C"), "()\\");
    EXPECT_EQ(OfDigits("00FF"), "\0\xFF"s);
}

TEST_F(StringOfTheFile, OfAnOddNumberOfDigitsHasAZeroBehindThem) {
    EXPECT_EQ(OfDigits("48692"), "Hi ");
    EXPECT_EQ(OfDigits("4"), "@");
}

TEST_F(StringOfTheFile, OfAnotherObjectIsEmpty) {
    for (const PdfObject object : {MakeNull(), MakeInteger(5), MakeName(1), MakeReference(1, 0)}) {
        EXPECT_EQ(TextOfString(object), "");
    }
}

}  // namespace
}  // namespace zorvan::test
