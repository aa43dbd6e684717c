// One token a call: what each kind of text becomes, with the status and the bytes that it takes.
#include "pdf/lexer.h"

#include <ostream>
#include <string>
#include <vector>

#include "api/current_job.h"
#include "pdf/describe.h"
#include "pdf/name_table.h"
#include "pdf/operator_code.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

constexpr std::uint32_t kLastToken = lex::kToken | lex::kEnd;

struct Scanned {
    std::string token;  // empty when none was stored
    std::uint32_t status = 0;
    std::uint32_t consumed = 0;

    bool operator==(const Scanned&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Scanned& scanned) {
        return out << scanned.token << " status " << std::hex << scanned.status << std::dec << " consumed "
                   << scanned.consumed;
    }
};

class Lexer : public JobTest {
protected:
    static Scanned Scan(std::string_view text) {
        // Of exactly the size of the text, so that a sanitizer sees every byte read too much.
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        PdfObject token;
        Scanned scanned;
        scanned.status = ScanToken(bytes, CurrentNames(), token, scanned.consumed);
        if ((scanned.status & lex::kToken) != 0) {
            scanned.token = Describe(token);
            FreeObject(token);
        }
        return scanned;
    }
    static std::string Token(std::string_view text) { return Scan(text).token; }

    /// The code of a keyword as the scanner packs it.
    static std::uint32_t ScannedCode(std::string_view word) {
        PdfObject token;
        std::uint32_t consumed = 0;
        static_cast<void>(ScanToken(BytesOf(word), CurrentNames(), token, consumed));
        EXPECT_EQ(TypeOf(token), ObjectType::kOperator);
        return token.payload;
    }
};

Scanned Failure(std::uint32_t consumed) {
    return {"", lex::kError, consumed};
}

// --- whitespace and comments ---

TEST_F(Lexer, FindsNoTokenInWhitespaceOfAllSevenKinds) {
    EXPECT_EQ(Scan(std::string_view("\0\b\t\n\f\r ", 7)), (Scanned{"", lex::kEnd, 7}));
}

TEST_F(Lexer, FindsNoTokenInNoInput) {
    EXPECT_EQ(Scan(""), (Scanned{"", lex::kEnd, 0}));
}

TEST_F(Lexer, SkipsWhitespaceOfAllSevenKindsBeforeAToken) {
    EXPECT_EQ(Scan(std::string_view("\0\b\t\n\f\r 12 ", 10)), (Scanned{"12", lex::kToken, 9}));
}

TEST_F(Lexer, DoesNotTakeVerticalTabForWhitespace) {
    EXPECT_EQ(Token("\v "), "op:\v");
}

TEST_F(Lexer, SkipsACommentWithItsFirstLineEndByteAndAsksForAnotherCall) {
    EXPECT_EQ(Scan("%a b\n1"), (Scanned{"", lex::kNothing, 5}));
    EXPECT_EQ(Scan(" %a\r\n1"), (Scanned{"", lex::kNothing, 4}));
}

TEST_F(Lexer, SkipsACommentThatEndsTheInput) {
    EXPECT_EQ(Scan("%abc"), (Scanned{"", lex::kNothing, 4}));
}

TEST_F(Lexer, GivesTheEndForAPercentSignAsTheLastByte) {
    EXPECT_EQ(Scan("  %"), (Scanned{"", lex::kEnd, 3}));
}

// --- numbers ---

TEST_F(Lexer, TakesANumberWithAZeroFractionForAnInteger) {
    EXPECT_EQ(Scan("1.0 "), (Scanned{"1", lex::kToken, 3}));
    EXPECT_EQ(Token("5.000 "), "5");
    EXPECT_EQ(Token(".0 "), "0");
}

TEST_F(Lexer, TakesANumberThatBeginsWithAPoint) {
    EXPECT_EQ(Scan(".5"), (Scanned{"0.5r", lex::kToken, 2}));
    EXPECT_EQ(Token("-.5"), "-0.5r");
    EXPECT_EQ(Token("+.5 "), "0.5r");
}

TEST_F(Lexer, TakesAMagnitudeBelow32767WithAFractionForAReal) {
    EXPECT_EQ(Token("32766.5 "), "32766.5r");
    EXPECT_EQ(Token("-32766.5 "), "-32766.5r");
    EXPECT_EQ(Token("-12.25 "), "-12.25r");
}

TEST_F(Lexer, CutsTheFractionOfAMagnitudeFrom32767Upward) {
    EXPECT_EQ(Token("32767.5 "), "32767");
    EXPECT_EQ(Token("40000.5 "), "40000");
    EXPECT_EQ(Token("-32767.25 "), "-32767");
}

TEST_F(Lexer, ReadsFractionsOfManyDigits) {
    EXPECT_EQ(Token("0.1234567890123456789 "), "0.123457r");
    EXPECT_EQ(Scan("0." + std::string(400, '3')), (Scanned{"0.333333r", lex::kToken, 402}));
}

TEST_F(Lexer, TakesTheByteBehindThePointForADigitUnseen) {
    EXPECT_EQ(Scan("1.x "), (Scanned{"8.2r", lex::kToken, 3}));
    EXPECT_EQ(Scan("1.x"), (Scanned{"8.2r", lex::kToken, 2}));
    EXPECT_EQ(Token("1.( "), "1");  // worth -0.8, which is no fraction
}

TEST_F(Lexer, TakesTheByteBehindASignForADigitUnseen) {
    EXPECT_EQ(Scan("+ x"), (Scanned{"-16", lex::kToken, 2}));
    EXPECT_EQ(Scan("- /"), (Scanned{"16", lex::kToken, 2}));
    EXPECT_EQ(Token("--5 "), "25");  // the second sign is worth -3
}

TEST_F(Lexer, CountsBytesPastTheEndAsZeroInNumbers) {
    EXPECT_EQ(Scan("-"), (Scanned{"48", kLastToken, 1}));
    EXPECT_EQ(Scan("+"), (Scanned{"-48", kLastToken, 1}));
    EXPECT_EQ(Scan("1."), (Scanned{"1", lex::kToken, 2}));
    EXPECT_EQ(Scan("-."), (Scanned{"0", lex::kToken, 2}));
    EXPECT_EQ(Scan("."), (Scanned{"0", kLastToken, 1}));
}

TEST_F(Lexer, GivesBackTheByteThatEndsANumber) {
    EXPECT_EQ(Scan("12/A"), (Scanned{"12", lex::kToken, 2}));
    EXPECT_EQ(Scan("1.5.5"), (Scanned{"1.5r", lex::kToken, 3}));
    EXPECT_EQ(Scan("1-2"), (Scanned{"1", lex::kToken, 1}));
}

TEST_F(Lexer, GivesNoEndFlagWithANumberThatEndsTheInput) {
    EXPECT_EQ(Scan("12"), (Scanned{"12", lex::kToken, 2}));
    EXPECT_EQ(Scan(" 1.5"), (Scanned{"1.5r", lex::kToken, 4}));
}

TEST_F(Lexer, GivesTheEndFlagWithANumberOfOneByteThatEndsTheInput) {
    EXPECT_EQ(Scan(" 7"), (Scanned{"7", kLastToken, 2}));
}

TEST_F(Lexer, GivesTheLeastIntegerForANumberOutOfRange) {
    EXPECT_EQ(Token("2147483647 "), "2147483647");
    EXPECT_EQ(Token("-2147483648 "), "-2147483648");
    EXPECT_EQ(Token("2147483648 "), "-2147483648");
    EXPECT_EQ(Token("4294967296 "), "-2147483648");
    EXPECT_EQ(Token("-99999999999 "), "-2147483648");
    EXPECT_EQ(Scan(std::string(400, '9')), (Scanned{"-2147483648", lex::kToken, 400}));
}

// --- names ---

TEST_F(Lexer, DecodesHexadecimalPairsInNames) {
    EXPECT_EQ(Token("/A#42C "), "/ABC");
    EXPECT_EQ(Token("/#4a#4A "), "/JJ");
}

TEST_F(Lexer, StoresADollarForAHexadecimalPairBelowABlank) {
    EXPECT_EQ(Token("/A#0aB "), "/A$B");
}

TEST_F(Lexer, KeepsABlankWrittenInHexadecimalInsideAName) {
    EXPECT_EQ(Scan("/A#20B "), (Scanned{"/A B", lex::kToken, 6}));
}

TEST_F(Lexer, StoresADollarForAControlByteThatIsNoWhitespace) {
    EXPECT_EQ(Token("/A\x01\vB "), "/A$$B");
}

TEST_F(Lexer, TakesTwoBytesBehindANumberSignWhateverTheyAre) {
    EXPECT_EQ(Token("/A#zzB "), "/A$B");  // 122 * 16 + 122, modulo 256, is a control byte
    EXPECT_EQ(Token("/A#(BC "),
              "/A\x8B"
              "C");                                               // no delimiter ends the name here
    EXPECT_EQ(Scan("/A# 4 "), (Scanned{"/A$", lex::kToken, 5}));  // nor does a blank: 32 * 16 + 4, modulo 256
}

TEST_F(Lexer, CountsBytesPastTheEndAsZeroInNames) {
    EXPECT_EQ(Scan("/A#4"), (Scanned{"/A@", kLastToken, 4}));
    EXPECT_EQ(Scan("/A#"), (Scanned{"/A$", kLastToken, 3}));
}

TEST_F(Lexer, GivesBackTheTerminatorOfAName) {
    EXPECT_EQ(Scan("/A/B"), (Scanned{"/A", lex::kToken, 2}));
    EXPECT_EQ(Scan("/A[1]"), (Scanned{"/A", lex::kToken, 2}));
    EXPECT_EQ(Scan("/A}"), (Scanned{"/A", lex::kToken, 2}));
}

TEST_F(Lexer, TakesASlashAloneForTheEmptyName) {
    EXPECT_EQ(Scan("/ "), (Scanned{"/", lex::kToken, 1}));
    EXPECT_EQ(Scan("//A"), (Scanned{"/", lex::kToken, 1}));
    EXPECT_EQ(Scan("/"), (Scanned{"/", kLastToken, 1}));
}

TEST_F(Lexer, AcceptsANameOf126BytesBeforeATerminator) {
    EXPECT_EQ(Scan("/" + std::string(126, 'n') + " "),
              (Scanned{"/" + std::string(126, 'n'), lex::kToken, 127}));
}

TEST_F(Lexer, RefusesANameOf127BytesBeforeATerminator) {
    EXPECT_EQ(Scan("/" + std::string(127, 'n') + " "), Failure(129));
}

TEST_F(Lexer, AcceptsANameOf127BytesThatEndsTheInput) {
    EXPECT_EQ(Scan("/" + std::string(127, 'n')), (Scanned{"/" + std::string(127, 'n'), kLastToken, 128}));
}

TEST_F(Lexer, RefusesANameOf128Bytes) {
    EXPECT_EQ(Scan("/" + std::string(128, 'n')), Failure(129));
    EXPECT_EQ(Scan("/" + std::string(128, 'n') + " "), Failure(129));
}

TEST_F(Lexer, CountsAHexadecimalPairAsOneByteOfAName) {
    std::string text = "/";
    for (int i = 0; i < 126; ++i) {
        text += "#41";
    }
    EXPECT_EQ(Token(text + " "), "/" + std::string(126, 'A'));
    EXPECT_EQ(Scan(text + "A ").status, lex::kError);
}

TEST_F(Lexer, GivesTheIdentifierOfTheNameTable) {
    PdfObject token;
    std::uint32_t consumed = 0;
    static_cast<void>(ScanToken(BytesOf("/Length "), CurrentNames(), token, consumed));
    EXPECT_EQ(token, MakeName(names::kLength));
    static_cast<void>(ScanToken(BytesOf("/NeverSeen "), CurrentNames(), token, consumed));
    EXPECT_EQ(token, MakeName(names::kAfterPredefined));
}

// --- strings ---

TEST_F(Lexer, TakesBalancedParenthesesIntoALiteralString) {
    EXPECT_EQ(Scan("(a(b)c) "), (Scanned{"(a(b)c)", lex::kToken, 7}));
}

TEST_F(Lexer, TakesABackslashInALiteralStringAsTwoBytes) {
    EXPECT_EQ(Scan("(a\\)b) "), (Scanned{"(a\\)b)", lex::kToken, 6}));
    EXPECT_EQ(Token("(\\\\) "), "(\\\\)");
}

TEST_F(Lexer, KeepsTheSourceTextOfALiteralString) {
    EXPECT_EQ(Token("(\\101\\n%</ [) "), "(\\101\\n%</ [)");
}

TEST_F(Lexer, TakesAnEmptyLiteralString) {
    EXPECT_EQ(Scan("()"), (Scanned{"()", lex::kToken, 2}));
}

TEST_F(Lexer, RefusesALiteralStringThatTheInputCutsShort) {
    EXPECT_EQ(Scan("(abc"), Failure(4));
    EXPECT_EQ(Scan("((a)"), Failure(4));
    EXPECT_EQ(Scan("(a\\"), Failure(3));
    EXPECT_EQ(Scan("(a\\)"), Failure(4));
    EXPECT_EQ(Scan("("), Failure(1));
}

TEST_F(Lexer, KeepsALiteralStringOfMoreThan65535BytesWhole) {
    const std::string text = "(" + std::string(70000, 's') + ")";
    EXPECT_EQ(Scan(text), (Scanned{text, lex::kToken, 70002}));
}

TEST_F(Lexer, FollowsParenthesesOfAHundredThousandLevels) {
    const std::string text = std::string(100000, '(') + std::string(100000, ')');
    EXPECT_EQ(Scan(text), (Scanned{text, lex::kToken, 200000}));
}

TEST_F(Lexer, KeepsTheDigitsOfAHexadecimalStringAsText) {
    EXPECT_EQ(Scan("<48656C6C6F> "), (Scanned{"<48656C6C6F>", lex::kToken, 12}));
    EXPECT_EQ(Token("<4 8\nxyz(> "), "<4 8\nxyz(>");
}

TEST_F(Lexer, TakesAnEmptyHexadecimalString) {
    EXPECT_EQ(Scan("<> "), (Scanned{"<>", lex::kToken, 2}));
}

TEST_F(Lexer, EndsAHexadecimalStringWithTheInput) {
    EXPECT_EQ(Scan("<48"), (Scanned{"<48>", kLastToken, 3}));
    EXPECT_EQ(Scan("<"), (Scanned{"<>", kLastToken, 1}));
}

TEST_F(Lexer, KeepsAClosingAngleThatIsTheVeryLastByteInTheText) {
    EXPECT_EQ(Scan("<48>"), (Scanned{"<48>>", kLastToken, 4}));
    EXPECT_EQ(Scan("<>"), (Scanned{"<>>", kLastToken, 2}));
}

// --- marks and operators ---

TEST_F(Lexer, GivesTheSameMarkForAnArrayAndADictionary) {
    EXPECT_EQ(Scan("<<"), (Scanned{"mark", lex::kToken, 2}));
    EXPECT_EQ(Scan("[1"), (Scanned{"mark", lex::kToken, 1}));
}

TEST_F(Lexer, GivesOperatorsForClosingBrackets) {
    EXPECT_EQ(Scan("]"), (Scanned{"op:]", lex::kToken, 1}));
    EXPECT_EQ(Scan(">>"), (Scanned{"op:>>", lex::kToken, 2}));
}

TEST_F(Lexer, RefusesAClosingAngleAlone) {
    EXPECT_EQ(Scan(">x"), Failure(2));
    EXPECT_EQ(Scan(">").status, lex::kError);
}

TEST_F(Lexer, PacksTheFirstFourBytesOfAKeyword) {
    EXPECT_EQ(ScannedCode("] "), 0x5DU);
    EXPECT_EQ(ScannedCode("R "), 0x52U);
    EXPECT_EQ(ScannedCode(">> "), 0x3E3EU);
    EXPECT_EQ(ScannedCode("obj "), 0x6F626AU);
    EXPECT_EQ(ScannedCode("stream "), 0x73747265U);
    EXPECT_EQ(ScannedCode("startxref "), 0x73746172U);
    EXPECT_EQ(ScannedCode("true "), 0x74727565U);
    EXPECT_EQ(ScannedCode("false "), 0x66616C73U);
    EXPECT_EQ(ScannedCode("null "), 0x6E756C6CU);
}

TEST_F(Lexer, TellsKeywordsApartByTheirFirstFourBytesAlone) {
    EXPECT_EQ(ScannedCode("endobj "), 0x656E646FU);
    EXPECT_EQ(ScannedCode("endo "), 0x656E646FU);
    EXPECT_EQ(ScannedCode("endomorphism "), 0x656E646FU);
    EXPECT_EQ(ScannedCode("endstream "), 0x656E6473U);
}

TEST_F(Lexer, CountsTheBytesOfAKeywordAsSigned) {
    EXPECT_EQ(ScannedCode("\xFF "), 0xFFFFFFFFU);
    EXPECT_EQ(ScannedCode("a\x80 "), 0x61U * 256 - 128);
}

TEST_F(Lexer, GivesBackTheTerminatorOfAKeyword) {
    EXPECT_EQ(Scan("BT/F1"), (Scanned{"op:BT", lex::kToken, 2}));
    EXPECT_EQ(Scan("f*\n"), (Scanned{"op:f*", lex::kToken, 2}));
}

TEST_F(Lexer, GivesTheEndFlagWithAKeywordThatEndsTheInput) {
    EXPECT_EQ(Scan("endobj"), (Scanned{"op:endo", kLastToken, 6}));
    EXPECT_EQ(Scan(" Q"), (Scanned{"op:Q", kLastToken, 2}));
}

TEST_F(Lexer, AcceptsAKeywordWithUpTo127BytesReadBehindItsFirst) {
    EXPECT_EQ(Scan(std::string(127, 'k') + " "), (Scanned{"op:kkkk", lex::kToken, 127}));
    EXPECT_EQ(Scan(std::string(128, 'k')), (Scanned{"op:kkkk", kLastToken, 128}));
}

TEST_F(Lexer, RefusesAKeywordWith128BytesReadBehindItsFirst) {
    EXPECT_EQ(Scan(std::string(128, 'k') + " "), Failure(129));
    EXPECT_EQ(Scan(std::string(129, 'k')), Failure(129));
    EXPECT_EQ(Scan(std::string(1000, 'k')), Failure(129));
}

TEST_F(Lexer, GivesOperatorZeroForAStrayBracketAndLeavesItInPlace) {
    EXPECT_EQ(Scan(")"), (Scanned{"op:", lex::kToken, 0}));
    EXPECT_EQ(Scan("  ) "), (Scanned{"op:", lex::kToken, 2}));
    EXPECT_EQ(Scan("\n{"), (Scanned{"op:", lex::kToken, 1}));
    EXPECT_EQ(Scan("}x"), (Scanned{"op:", lex::kToken, 0}));
    EXPECT_EQ(ScannedCode(")"), 0U);
}

}  // namespace
}  // namespace zorvan::test
