// The operators of text, and strings in the very form in which they stand in the content.
#include <string>

#include <gtest/gtest.h>

#include "api/session.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

/// A page with a font, /F1, object 10.
PdfBuilder PageWithFont(std::string_view content) {
    PdfBuilder pdf = OnePage(content, "/Resources << /Font << /F1 10 0 R >> >>");
    return pdf.Object(10, "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
}

/// What content becomes; all must go well.
std::string Become(std::string_view content) {
    const Conversion conversion = Convert(PageWithFont(content).Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0}) << content;
    EXPECT_EQ(conversion.error.code, 0) << content;
    return ContentOf(conversion.output);
}

/// Content that ends with a failure; what was written before it.
std::string BecomeUpTo(int code, std::string_view content) {
    PdfBuilder pdf = PageWithFont(content);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{code}) << content;
    EXPECT_EQ(conversion.error.code, code) << content;
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(4)) << content;
    return Between(conversion.output, " RC\n", "%%Trailer");
}

TEST(TextOperators, WithoutOperandsAreWrittenAsTheyAre) {
    EXPECT_EQ(Become("BT T* ET"), "BT\nT*\nET\n");
}

TEST(TextOperators, OfTheTextStateWriteOneNumber) {
    for (const std::string op : {"Tc", "Tw", "Tz", "TL", "Ts"}) {
        EXPECT_EQ(Become("1 " + op + " -0.250 " + op + " 0.0 " + op + " -0.0 " + op),
                  "1 " + op + "\n-0.25 " + op + "\n0 " + op + "\n0 " + op + "\n");
    }
}

TEST(TextOperators, OfPositionsWriteTheirNumbersInTheirOrder) {
    EXPECT_EQ(Become("1 -2.5 Td 3 4 TD 1 0 0.5 1 72 720 Tm"), "1 -2.5 Td\n3 4 TD\n1 0 0.5 1 72 720 Tm\n");
}

TEST(TextOperators, OfPositionsTakeTheTopmostOperands) {
    EXPECT_EQ(Become("9 8 1 2 Td TD 7 1 2 3 4 5 6 Tm w"), "1 2 Td\n9 8 TD\n1 2 3 4 5 6 Tm\n7 w\n");
}

TEST(TextOperators, WriteTheRenderingModeAsAnInteger) {
    EXPECT_EQ(Become("0 Tr 7 Tr 2.0 Tr 1.9 Tr -0.5 Tr /A Tr"), "0 Tr\n7 Tr\n2 Tr\n1 Tr\n0 Tr\n0 Tr\n");
}

TEST(TextOperators, SelectAFontByItsReferenceAndSize) {
    EXPECT_EQ(Become("/F1 12 Tf"), "/N10 12 Tf\n");
    EXPECT_EQ(Become("/F1 9.5 Tf /F1 1.0 Tf /F1 -3 Tf"), "/N10 9.5 Tf\n/N10 1 Tf\n/N10 -3 Tf\n");
    EXPECT_EQ(Become("7 /F1 12 Tf w"), "/N10 12 Tf\n7 w\n");
}

TEST(TextOperators, SelectAnUnknownFontByAnEmptyReference) {
    EXPECT_EQ(Become("/Unknown 12 Tf 5 12 Tf (F1) 9.5 Tf"), " 12 Tf\n 12 Tf\n 9.5 Tf\n");
    EXPECT_EQ(Translate("/F1 12 Tf"), " 12 Tf\n");
    EXPECT_EQ(Translate("/F1 12 Tf", "/Resources << /ProcSet [/PDF] >>"), " 12 Tf\n");
}

TEST(TextOperators, WriteASizeThatIsNoNumberAsZero) {
    EXPECT_EQ(Become("/F1 /F1 Tf"), "/N10 0 Tf\n");
}

TEST(TextStrings, InParenthesesKeepEveryByte) {
    EXPECT_EQ(Become("(a\\)b) Tj"), "(a\\)b) Tj\n");
    for (const std::string& text :
         {""s, "Hello"s, "a(b(c)d)e"s, "\\(\\)\\\\\\n\\101\\8"s, "two\nlines\\\ngo on"s, "\r\n\r"s,
          "\x01\x80\xFF"s, "nul\0byte"s, "%no comment"s, "  blanks  "s, "<48> [ ] { } /x"s}) {
        EXPECT_EQ(Become("(" + text + ") Tj"), "(" + text + ") Tj\n");
        EXPECT_EQ(Become("(" + text + ")'"), "(" + text + ") '\n");
        EXPECT_EQ(Become("(" + text + ") PS"), "(" + text + ") PS\n");
        EXPECT_EQ(Become("1 2 (" + text + ")\""), "1 2 (" + text + ") \"\n");
        EXPECT_EQ(Become("[(" + text + ")] TJ"), "[(" + text + ")] TJ\n");
    }
}

TEST(TextStrings, OfEveryByteKeepItUnlessItIsADelimiter) {
    std::string text;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '(' && byte != ')' && byte != '\\') {
            text += static_cast<char>(byte);
        }
    }
    EXPECT_EQ(Become("(" + text + ") Tj"), "(" + text + ") Tj\n");
}

TEST(TextStrings, MayBeLong) {
    const std::string text(70000, 'x');
    EXPECT_EQ(Become("(" + text + ") Tj"), "(" + text + ") Tj\n");
}

TEST(TextStrings, InHexadecimalKeepTheirDigits) {
    EXPECT_EQ(Become("<48656C6C6F> Tj"), "<48656C6C6F> Tj\n");
    for (const std::string digits : {"", "4", "48 65\n6c\t6C\r6f\f", "aBcDeF0123456789"}) {
        EXPECT_EQ(Become("<" + digits + "> Tj"), "<" + digits + "> Tj\n");
        EXPECT_EQ(Become("<" + digits + "> '"), "<" + digits + "> '\n");
        EXPECT_EQ(Become("<" + digits + "> PS"), "<" + digits + "> PS\n");
        EXPECT_EQ(Become("1 2 <" + digits + "> \""), "1 2 <" + digits + "> \"\n");
        EXPECT_EQ(Become("[<" + digits + ">] TJ"), "[<" + digits + ">] TJ\n");
    }
}

// Whatever is neither digit nor white space would end the job on a device.
TEST(TextStrings, InHexadecimalLoseWhatIsNoDigit) {
    EXPECT_EQ(Become("<4G8x> Tj"), "<48> Tj\n");
    EXPECT_EQ(Become("<48~> Tj"), "<48> Tj\n");
    EXPECT_EQ(Become("<(4)8/%\x80> Tj"), "<48> Tj\n");
    EXPECT_EQ(Become("[<zz> <48>] TJ"), "[<><48>] TJ\n");
}

// "<~" begins an ASCII85 string on a device, which ends at the next "~>", wherever that stands.
TEST(TextStrings, InHexadecimalStayHexadecimalWhenTheyBeginWithATilde) {
    EXPECT_EQ(Become("<~48~> Tj"), "< 48> Tj\n");
    EXPECT_EQ(Become("[<~> (~>)] TJ"), "[< >(~>)] TJ\n");
    EXPECT_EQ(Become("< ~48> Tj"), "< 48> Tj\n");
}

TEST(TextStrings, HaveABackslashBeforeWhatLooksLikeAComment) {
    EXPECT_EQ(Become("(a\n%%Page: 6 6\nquit\n\\)) Tj"), "(a\n\\%%Page: 6 6\nquit\n\\)) Tj\n");
    EXPECT_EQ(Become("[(%%a) (\r%%EOF)] TJ"), "[(%%a)(\r\\%%EOF)] TJ\n");
}

TEST(TextOperators, WithSpacingWriteWordSpacingFirst) {
    EXPECT_EQ(Become("3 0.5 (Hi) \""), "3 0.5 (Hi) \"\n");
    EXPECT_EQ(Become("9 1.0 -2 <48> \" w"), "1 -2 <48> \"\n9 w\n");
}

TEST(TextArrays, KeepStringsAndNumbersInTheirOrder) {
    EXPECT_EQ(Become("[(Hel) -20 (lo)] TJ"), "[(Hel)-20 (lo)] TJ\n");
    EXPECT_EQ(Become("[-20.50<48>(x)1.0 2] TJ"), "[-20.5 <48>(x)1 2 ] TJ\n");
    EXPECT_EQ(Become("[] TJ"), "[] TJ\n");
}

TEST(TextArrays, LoseElementsOfOtherKinds) {
    EXPECT_EQ(Become("[(a) /Name null true [(inner) 5] << /A (b) >> (c)] TJ"), "[(a)(c)] TJ\n");
}

TEST(TextOperators, PassPostScriptOfAnotherKindAsAnEmptyString) {
    EXPECT_EQ(Become("(0 setgray) PS 5 PS /A PS [(x)] PS"), "(0 setgray) PS\n() PS\n() PS\n() PS\n");
}

TEST(TextOperators, OfStringsEndTheContentAtAnythingElse) {
    for (const std::string operand : {"5", "1.5", "/A", "null", "true", "[(a)]", "<< /A (b) >>"}) {
        EXPECT_EQ(BecomeUpTo(-4095, "(a) Tj " + operand + " Tj 1 w"), "(a) Tj\n") << operand;
        EXPECT_EQ(BecomeUpTo(-4095, "(a) Tj " + operand + " ' 1 w"), "(a) Tj\n") << operand;
    }
}

TEST(TextOperators, OfArraysEndTheContentAtAnythingElse) {
    for (const std::string operand : {"5", "1.5", "/A", "null", "(a)", "<61>", "<< /A (b) >>"}) {
        EXPECT_EQ(BecomeUpTo(-4095, "BT " + operand + " TJ ET"), "BT\n") << operand;
    }
}

TEST(TextOperators, WithTooFewOperandsWriteNothing) {
    EXPECT_EQ(BecomeUpTo(-4093, "BT 12 Tf ET"), "BT\n");
    for (const std::string op : {"Tj", "'", "TJ", "PS", "Tc", "Tw", "Tz", "TL", "Ts", "Tr"}) {
        EXPECT_EQ(BecomeUpTo(-4093, "BT " + op + " ET"), "BT\n") << op;
    }
    EXPECT_EQ(BecomeUpTo(-4093, "BT 1 (a) \" ET"), "BT\n");
    EXPECT_EQ(BecomeUpTo(-4093, "BT 1 Td ET"), "BT\n");
    EXPECT_EQ(BecomeUpTo(-4093, "BT 1 2 3 4 5 Tm ET"), "BT\n");
}

TEST(TextOperators, NeedNoTextObject) {
    EXPECT_EQ(Become("(a) Tj ET ET BT BT 1 Tc"), "(a) Tj\nET\nET\nBT\nBT\n1 Tc\n");
}

}  // namespace
}  // namespace zorvan::test
