// Fonts: copies under new names, programs and glyph fonts.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"
#include "prolog/square_font.h"

namespace zorvan::test {
namespace {

/// A page that shows a string at 10 10 in a font of 50, with this in its setup.
Picture Shown(const std::string& setup, const std::string& font, const std::string& content) {
    return PrologJob().Page("BT " + font + " 50 Tf 10 10 Td " + content + "\nET\n", setup).Paint().at(0);
}

/// Is the square that A is in the square font there, and nothing behind it?
bool ShowsSquare(const Picture& page) {
    return page.At(11, 11) == kBlack && page.At(38, 38) == kBlack && page.At(43, 25) == kWhite;
}

/// What a page prints that has this in its setup.
std::string PrintedBy(const std::string& setup, const std::string& content) {
    const Outcome outcome = PrologJob().Page(content, setup).Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    return outcome.text;
}

/// The name that a font's encoding has at a code.
std::string NameAt(const std::string& font, int code) {
    return "FontDirectory " + font + " get /Encoding get " + std::to_string(code) + " get =\n";
}

TEST(FontCopy, KeepsItsEncodingWithAnEmptyList) {
    EXPECT_TRUE(ShowsSquare(Shown(kSquares + "[/N7 /Squares -1 TZ\n", "/N7", "(A) Tj")));
    EXPECT_EQ(PrintedBy("[/N7 /Symbol -1 TZ\n", NameAt("/N7", 97) + NameAt("/N7", 39)), "alpha\nsuchthat\n");
}

TEST(FontCopy, ChangesItsEncodingByAList) {
    const std::string setup = kSquares + "[ 66 /A/B 97 /A\n/N7 /Squares -1 TZ\n";
    for (const std::string code : {"A", "B", "a"}) {
        EXPECT_TRUE(ShowsSquare(Shown(setup, "/N7", "(" + code + ") Tj"))) << code;
    }
    EXPECT_FALSE(ShowsSquare(Shown(setup, "/N7", "(C) Tj")));
    EXPECT_EQ(PrintedBy(setup, NameAt("/N7", 67) + NameAt("/N7", 68) + NameAt("/Squares", 66)), "B\nD\nB\n");
}

TEST(FontCopy, PassesOverCodesThatThereAreNot) {
    const std::string setup = kSquares + "[ -2 /x/y/A 255 /A/z/z 300 /z /N7 /Squares -1 TZ\n";
    EXPECT_EQ(PrintedBy(setup, NameAt("/N7", 0) + NameAt("/N7", 1) + NameAt("/N7", 255)), "A\n.notdef\nA\n");
}

TEST(FontCopy, TakesAPredefinedEncoding) {
    const std::string setup = "[/N7 /Helvetica 0 TZ\n[/N8 /Helvetica 1 TZ\n";
    EXPECT_EQ(
        PrintedBy(setup, NameAt("/N7", 128) + NameAt("/N8", 128) + NameAt("/N7", 39) + NameAt("/N8", 1)),
        "Adieresis\nEuro\nquotesingle\ndotlessi\n");
}

TEST(FontCopy, KeepsItsGlyphs) {
    EXPECT_EQ(Shown("[/N7 /Times-Italic -1 TZ\n", "/N7", "(Qg) Tj"),
              Shown("", "/Times-Italic findfont pop /Times-Italic", "(Qg) Tj"));
    EXPECT_EQ(Shown("[/N7 /Helvetica 0 TZ\n", "/N7", "<80> Tj"),
              Shown("[/N7 /Helvetica 1 TZ\n", "/N7", "<C4> Tj"));
}

TEST(FontCopy, HasNamesOfItsOwn) {
    const std::string compare =
        "FontDirectory /N7 get dup /FontName get = /Encoding get dup length = FontDirectory "
        "/Squares get /Encoding get eq =";
    EXPECT_EQ(PrintedBy(kSquares + "[/N7 /Squares -1 TZ\n", compare), "N7\n256\nfalse\n");
    EXPECT_EQ(PrintedBy(kSquares + "[ 5 /A /N7 /Squares -1 TZ\n", compare), "N7\n256\nfalse\n");
}

TEST(FontCopy, HasANameForEveryCodeAlthoughTheFontHasNot) {
    const std::string brief = "/Brief 12 dict dup begin " + kSquareEntries +
                              "/FontName /Brief def /Encoding [/.notdef /A] def end definefont pop\n";
    EXPECT_EQ(PrintedBy(brief + "[ 255 /A /N7 /Brief -1 TZ\n",
                        "FontDirectory /N7 get /Encoding get length = " + NameAt("/N7", 1) +
                            NameAt("/N7", 100) + NameAt("/N7", 255)),
              "256\nA\n.notdef\nA\n");
}

TEST(FontCopy, OfACopyIsAFontOfItsOwn) {
    const std::string setup = kSquares + "[/N7 /Squares -1 TZ\n[ 66 /A /N8 /N7 -1 TZ\n[/N9 /N8 1 TZ\n";
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N9", "(A) Tj")));
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N8", "(B) Tj")));
    EXPECT_FALSE(ShowsSquare(Shown(setup, "/N7", "(B) Tj")));
}

TEST(FontCopy, MayTakeTheNameOfItsFont) {
    EXPECT_TRUE(ShowsSquare(Shown(kSquares + "[ 66 /A /Squares /Squares -1 TZ\n", "/Squares", "(B) Tj")));
}

TEST(FontCopy, OfAFontThatTheDeviceLacksShowsSomething) {
    const std::string setup = "[/N7 /NoSuchFontAnywhere 1 TZ\n";
    EXPECT_EQ(PrintedBy(setup, NameAt("/N7", 128)), "Euro\n");
    EXPECT_NE(Shown(setup, "/N7", "(A) Tj"), Shown(setup, "/N7", "( ) Tj"));
}

TEST(FontCopy, TakesCourierWhereThereIsNoSubstituteEither) {
    const std::string strict =
        "/findfont {dup /Courier ne {dup /findfont cvx /invalidfont signalerror} if\n"
        "systemdict /findfont get exec} bind def\n";
    const Outcome outcome = PrologJob()
                                .Before(strict)
                                .Page("FontDirectory /N7 get /FontInfo get /isFixedPitch get =\ncount =",
                                      "[/N7 /NoSuchFontAnywhere 1 TZ\n")
                                .Run();
    EXPECT_EQ(outcome.text, "true\n0\n");
}

TEST(FontCopy, LeavesTheStacksAsTheyWere) {
    EXPECT_EQ(PrintedBy(kSquares + "[/N7 /Squares -1 TZ\n[ 1 /A /N8 /Squares -1 TZ\n[/N9 /Squares 0 TZ\n",
                        "count = countdictstack ="),
              "0\n8\n");
    EXPECT_EQ(
        PrologJob().Before("mark 7\n").Page("count =", kSquares + "1 2 [/N7 /Squares -1 TZ\n").Run().text,
        "2\n");
}

// Font programs.

/// The text as eexec reads it: encrypted behind four bytes, in hexadecimal (Adobe Type 1 Font Format,
/// section 7.1).
std::string Encrypted(const std::string& text) {
    std::uint16_t key = 55665;
    std::string hex;
    for (const char plain : "    " + text) {
        const auto cipher = static_cast<std::uint8_t>(static_cast<std::uint8_t>(plain) ^ (key >> 8U));
        key = static_cast<std::uint16_t>((cipher + key) * 52845U + 22719U);
        hex += "0123456789ABCDEF"[cipher >> 4U];
        hex += "0123456789ABCDEF"[cipher & 15U];
        hex += hex.size() % 65 == 64 ? "\n" : "";
    }
    return hex;
}

/// The bytes that hexadecimal digits stand for.
std::string Unhexed(const std::string& digits) {
    std::string bytes;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

const std::string kTrailer = [] {
    std::string text;
    for (int line = 0; line < 8; ++line) {
        text += '\r' + std::string(64, '0');
    }
    return text + "\rcleartomark\n";
}();

constexpr std::string_view kDefine = "dup /FontName get exch definefont pop\nmark currentfile closefile\n";

/// A font program that names its font so.
std::string Program(const std::string& name) {
    return "%!PS-AdobeFont-1.0: Test\n12 dict begin\n/FontName /" + name + " def\n" + kSquareEntries +
           "currentdict end\ncurrentfile eexec\n" + Encrypted(std::string(kDefine)) + kTrailer;
}

TEST(FontProgram, IsFoundUnderItsName) {
    EXPECT_TRUE(ShowsSquare(Shown(Program("Inner") + "[/N7 /Inner -1 TZ\n", "/N7", "(A) Tj")));
}

TEST(FontProgram, IsFoundUnderItsOwnNameWhateverTheDocumentCallsIt) {
    EXPECT_TRUE(ShowsSquare(Shown(Program("Inner") + "[/N7 /Outer -1 TZ\n", "/N7", "(A) Tj")));
    EXPECT_TRUE(ShowsSquare(Shown(Program("Inner") + "[/N7 /Helvetica -1 TZ\n", "/N7", "(A) Tj")));
}

TEST(FontProgram, CountsOnlyForTheNextCopy) {
    const std::string setup = Program("Inner") + "[/N7 /Outer -1 TZ\n[/N8 /Helvetica -1 TZ\n";
    EXPECT_FALSE(ShowsSquare(Shown(setup, "/N8", "(A) Tj")));
    EXPECT_EQ(PrintedBy(setup, "FontDirectory /N8 get /CharStrings get /g known ="), "true\n");
}

TEST(FontProgram, MayBeEncryptedWhole) {
    const std::string program = "currentfile eexec\n" +
                                Encrypted("12 dict begin\n/FontName /Inner def\n" + kSquareEntries +
                                          "currentdict end\n" + std::string(kDefine)) +
                                kTrailer;
    EXPECT_TRUE(ShowsSquare(Shown(program + "[/N7 /Inner -1 TZ\n", "/N7", "(A) Tj")));
}

TEST(FontProgram, ThatIsEmptyLeavesTheDeviceToFindTheFont) {
    const std::string setup = kSquares + kTrailer + "[/N7 /Squares -1 TZ\n";
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N7", "(A) Tj")));
    EXPECT_EQ(PrintedBy(setup, "count ="), "0\n");
}

TEST(FontProgram, ThatIsEmptyLeavesOperandsAndMarksBelowTheDocument) {
    const Outcome outcome = PrologJob()
                                .Before("mark 7 [ 8\n")
                                .Setup(kTrailer)
                                .Page("count = counttomark =", kSquares + kTrailer + "[/N7 /Squares -1 TZ\n")
                                .Run();
    EXPECT_EQ(outcome.text, "4\n1\n");
}

// Old programs ask whether the printer has the font already, and take back what they have left behind their
// trailer.
TEST(FontProgram, MayLeaveBooleansAndASave) {
    const std::string old = "FontDirectory/Inner known{save true}{false}ifelse\n" + Program("Inner");
    const std::string setup = old + "[/N7 /Inner -1 TZ\n" + old + "[/N8 /Inner -1 TZ\ntrue " +
                              Program("Third") + "[/N9 /Other -1 TZ\n";
    for (const std::string font : {"/N7", "/N8", "/N9"}) {
        EXPECT_TRUE(ShowsSquare(Shown(setup, font, "(A) Tj"))) << font;
    }
    EXPECT_EQ(PrintedBy(setup, "count = q 3 w q Q currentlinewidth = Q currentlinewidth = count ="),
              "0\n3.0\n1.0\n0\n");
}

/// A page that shows the square font, or whatever the device takes for it, after this damaged program.
void ExpectPassedOver(const std::string& program) {
    const std::string setup = kSquares + program + "[/N7 /Squares -1 TZ\n[/N8 /Broken -1 TZ\n";
    const std::string content = "BT /N7 50 Tf 10 10 Td (A) Tj /N8 5 Tf (A) Tj ET\n";
    ASSERT_EQ(PrologJob().Page(content + "count = countdictstack =", setup).Run().text, "0\n8\n") << program;
    const std::vector<Picture> pages =
        PrologJob().Page(content, setup).Page(content, kSquares + "[/N7 /Squares -1 TZ\n").Paint();
    ASSERT_EQ(pages.size(), 2U);
    for (const Picture& page : pages) {
        EXPECT_EQ(page.At(11, 11), kBlack) << program;
        EXPECT_EQ(page.At(38, 38), kBlack) << program;
    }
}

TEST(FontProgram, ThatIsDamagedLeavesTheDeviceToFindTheFont) {
    const std::string front = "%!PS-AdobeFont-1.0: Test\n12 dict begin\n/FontName /Broken def\n" +
                              kSquareEntries + "currentdict end\ncurrentfile eexec\n";
    ExpectPassedOver(front + std::string(2000, '5') + kTrailer);
    ExpectPassedOver(front + "no digits\n" + kTrailer);
    ExpectPassedOver(front + kTrailer);
    for (const std::string error :
         {"nosuchoperator\n", "1 2 5 dict begin 5 dict begin 3 stop\n", "5 (x) get\n",
          "end end end nosuchoperator\n", "pop pop pop pop nosuchoperator\n"}) {
        ExpectPassedOver(front + Encrypted(error + std::string(kDefine)) + kTrailer);
    }
}

TEST(FontProgram, ThatDefinesNoFontLeavesTheDeviceToFindIt) {
    const std::string front = "12 dict begin\n/FontName /Broken def\ncurrentdict end\ncurrentfile eexec\n";
    ExpectPassedOver(front + Encrypted(std::string(kDefine)) + kTrailer);
    ExpectPassedOver("/Broken 5 dict dup begin /FontType 42 def /sfnts [] def end definefont pop\n");
    ExpectPassedOver("/Broken 5 dict dup begin /FontType 3 def end definefont pop\n");
    ExpectPassedOver("/Broken null definefont pop\n");
}

/// A compact font set as the library writes it.
std::string CompactProgram(const std::string& bytes) {
    const std::string count = std::to_string(bytes.size());
    return "/FontSetInit /ProcSet findresource begin\n%%BeginingData:" + count + " Binary Bytes\n/TestCFF " +
           count + " StartData\n" + bytes + "\n%%EndData\n";
}

/// A set of the square font, whose name in it is Compact.
const std::string kCompactSquares = Unhexed(
    "010004010001010108436f6d70616374000101010f8b8bf8ecf8ec05b20f8bca12b51100000000000022000201010410"
    "fa7c0efa7c8b16f8ecf8ecfcec060e");

TEST(CompactProgram, IsFoundUnderTheNameThatItHasItself) {
    EXPECT_TRUE(
        ShowsSquare(Shown(CompactProgram(kCompactSquares) + "[/N7 /Compact -1 TZ\n", "/N7", "(A) Tj")));
    EXPECT_TRUE(
        ShowsSquare(Shown(CompactProgram(kCompactSquares) + "[/N7 /Helvetica -1 TZ\n", "/N7", "(A) Tj")));
}

TEST(CompactProgram, TakesOtherEncodings) {
    const std::string setup =
        CompactProgram(kCompactSquares) + "[ 66 /A /N7 /Compact -1 TZ\n[/N8 /Compact 1 TZ\n";
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N7", "(B) Tj")));
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N8", "(A) Tj")));
}

TEST(CompactProgram, LeavesTheStacksAsTheyWere) {
    EXPECT_EQ(
        PrintedBy(CompactProgram(kCompactSquares) + "[/N7 /Compact -1 TZ\n", "count = countdictstack ="),
        "0\n8\n");
}

TEST(CompactProgram, ThatIsDamagedLeavesTheDeviceToFindTheFont) {
    ExpectPassedOver(CompactProgram(std::string(100, 'x')));
    ExpectPassedOver(CompactProgram(std::string(5000, '\0')));
    ExpectPassedOver(CompactProgram("\n"));
    ExpectPassedOver(CompactProgram(kCompactSquares.substr(0, kCompactSquares.size() / 2)));
    ExpectPassedOver(CompactProgram("OTTO" + kCompactSquares));
}

TEST(Mark, IsClearedInADocumentAsEver) {
    EXPECT_EQ(Printed("1 2 mark 3 4 cleartomark count = cleartomark count ="), "2\n2\n");
}

// Fonts whose glyphs are procedures.

/// The glyph font as the library writes it: defined as /N9, copied as the name; glyphs a, b and so on at 65.
std::string GlyphFont(const std::vector<std::string>& glyphs, const std::string& name = "/Boxes",
                      const std::string& encoding = "\n65 nND\n/a/b/c/d\n187 nND\n") {
    std::string text = "%%BeginResource: font " + name +
                       "\n10 dict begin\nT3Defs\n/FontType 3 def\n/FontName /N9 def\n"
                       "/FontMatrix [0.001 0 0 0.001 0 0 ] def\n/FontBBox [0 0 1000 1000 ] def\n/Encoding [" +
                       encoding + "] def\n/GlyphProcs " + std::to_string(glyphs.size() + 1) +
                       " dict begin\n/.notdef {250 0 d0} bind def\n";
    char glyph = 'a';
    for (const std::string& content : glyphs) {
        text += "/" + std::string(1, glyph++) + " { save\n" + content + "\nrestore } bind def\n";
    }
    return text + "currentdict end def\nFontName currentdict end\ndefinefont pop\n%%EndResource\n[" + name +
           " /N9 -1 TZ\n";
}

const std::string kShape = "1000 0 0 0 600 600 d1\n";
const std::string kPicture = "1000 0 d0\n";
const std::string kBox = "0 0 600 600 re\nf";

TEST(GlyphFont, ShowsItsGlyphsUnderBothNames) {
    for (const std::string font : {"/N9", "/Boxes"}) {
        EXPECT_TRUE(ShowsSquare(Shown(GlyphFont({kShape + kBox}), font, "(A) Tj"))) << font;
        EXPECT_TRUE(ShowsSquare(Shown(GlyphFont({kPicture + kBox}), font, "(A) Tj"))) << font;
    }
}

TEST(GlyphFont, ShowsAShapeInTheColorOfTheTextWhateverItSays) {
    const std::string colors = "1 0 0 rg 0 1 0 RG 1 0 0 1 k [/DeviceRGB] cs 1 0 0 sc ";
    const Picture page =
        Shown(GlyphFont({kShape + colors + kBox, kShape + colors + "600 w 0 300 m 600 300 l S"}), "/N9",
              "0 0 1 rg 1 0 0 RG (A) Tj 0 50 Td (B) Tj");
    EXPECT_EQ(page.At(25, 25), kBlue);
    EXPECT_EQ(page.At(25, 75), kBlue);
}

TEST(GlyphFont, ShowsAPictureInItsOwnColors) {
    const Picture page =
        Shown(GlyphFont({kPicture + "1 0 0 rg " + kBox, kPicture + "0 1 0 RG 600 w 0 300 m 600 300 l S",
                         kPicture + kBox}),
              "/N9", "0 0 1 rg (A) Tj 0 50 Td (B) Tj 45 0 Td (C) Tj 0 -50 Td (A) Tj ET 0 0 5 5 re f BT");
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(page.At(25, 75), kGreen);
    EXPECT_EQ(page.At(70, 75), kBlue);
    EXPECT_EQ(page.At(70, 25), kRed);
    EXPECT_EQ(page.At(2, 2), kBlue);
}

TEST(GlyphFont, ShowsAShapeAgainInAnotherColor) {
    const Picture page =
        Shown(GlyphFont({kShape + kBox}), "/N9", "0 0 1 rg (A) Tj 1 0 0 rg 0 50 Td (A) Tj (A) Tj");
    EXPECT_EQ(page.At(25, 25), kBlue);
    EXPECT_EQ(page.At(25, 75), kRed);
    EXPECT_EQ(page.At(75, 75), kRed);
}

TEST(GlyphFont, SetsThePagesColorsFreeAgain) {
    const Picture page = Shown(GlyphFont({kShape + "0 1 0 rg " + kBox, kPicture + "0 1 0 rg " + kBox}), "/N9",
                               "(AB) Tj ET 1 0 0 rg 10 60 10 10 re f 4 w 0 0 1 RG 40 60 m 60 60 l S BT");
    EXPECT_EQ(page.At(15, 65), kRed);
    EXPECT_EQ(page.At(50, 60), kBlue);
}

TEST(GlyphFont, ShowsNotdefForAGlyphThatItLacks) {
    const std::string list = "\n65 nND\n/a/missing\n189 nND\n";
    const Picture page = Shown(GlyphFont({kShape + kBox}, "/Boxes", list), "/N9", "<4241> Tj");
    EXPECT_EQ(page.At(15, 15), kWhite);
    EXPECT_EQ(page.At(24, 15), kBlack);  // 10 + 50 / 4
    const Picture bare = Shown(GlyphFont({kShape + kBox}), "/N9", "<0041> Tj");
    EXPECT_EQ(bare.At(20, 15), kWhite);
    EXPECT_EQ(bare.At(24, 15), kBlack);
}

TEST(GlyphFont, HasANameForEveryCodeAlthoughItsEncodingIsEmpty) {
    const std::string setup = GlyphFont({kShape + kBox}, "/Boxes", "");
    EXPECT_EQ(PrintedBy(setup, "FontDirectory /N9 get /Encoding get dup length = {} forall count = clear"),
              "256\n256\n");
    EXPECT_EQ(Shown(setup, "/N9", "(A) Tj").At(25, 25), kWhite);
}

TEST(GlyphFont, KeepsTheEncodingThatItHas) {
    EXPECT_EQ(PrintedBy(GlyphFont({}), NameAt("/N9", 64) + NameAt("/N9", 66) + NameAt("/Boxes", 255)),
              ".notdef\nb\n.notdef\n");
}

TEST(GlyphFont, MayShowTextInAnotherFont) {
    const std::string inner =
        kPicture + "q\nBT\n/Squares 500 Tf\n100 Tc\n2 Tr 20 w\n0 0 Td\n(A) Tj\nET\nQ\n0 500 100 100 re f";
    const Picture page = Shown(kSquares + GlyphFont({inner}), "/N9", "(AA) Tj 0 45 Td (A) Tj");
    for (const int x : {0, 50}) {
        EXPECT_EQ(page.At(x + 17, 17), kBlack) << x;  // 300 units high
        EXPECT_EQ(page.At(x + 30, 17), kWhite) << x;
        EXPECT_EQ(page.At(x + 12, 37), kBlack) << x;
    }
    EXPECT_EQ(page.At(17, 62), kBlack);
    EXPECT_EQ(page.At(30, 62), kWhite);
}

TEST(GlyphFont, MayShowTextInAnotherGlyphFont) {
    std::string inner = GlyphFont({kShape + kBox}, "/Inner");
    inner.replace(inner.find("/N9"), 3, "/N8");
    inner.replace(inner.find("/N9"), 3, "/N8");
    const Picture page = Shown(inner + GlyphFont({kPicture + "1 0 0 rg\nBT /N8 500 Tf 200 0 Td (AA) Tj ET"}),
                               "/N9", "0 0 1 rg (A) Tj");
    EXPECT_EQ(page.At(25, 15), kRed);  // 10 + 50 * 0.2, 15 wide
    EXPECT_EQ(page.At(50, 15), kRed);  // 25 further
    EXPECT_EQ(page.At(40, 15), kWhite);
    EXPECT_EQ(page.At(15, 15), kWhite);
}

TEST(GlyphFont, ShowsItsGlyphsInEveryModeButTheInvisibleOne) {
    for (int mode = 0; mode < 8; ++mode) {
        const Picture page = Shown(GlyphFont({kShape + kBox}), "/N9",
                                   std::to_string(mode) + " Tr (A) Tj ET 0 60 100 10 re f BT");
        EXPECT_EQ(page.At(25, 25), mode == 3 ? kWhite : kBlack) << mode;
        EXPECT_EQ(page.At(80, 65), kBlack) << mode;
    }
}

TEST(GlyphFont, GoesWithTheTextState) {
    const Picture page =
        Shown(GlyphFont({kShape + kBox}), "/N9", "50 Tz 20 Tc 30 Ts (AA) Tj 3 Tr (A) Tj 0 Tr (A) Tj");
    EXPECT_EQ(page.At(12, 42), kBlack);
    EXPECT_EQ(page.At(27, 42), kWhite);
    EXPECT_EQ(page.At(47, 42), kBlack);  // 10 + (50 + 20) / 2
    EXPECT_EQ(page.At(12, 38), kWhite);
    EXPECT_EQ(page.At(82, 42), kWhite);
}

TEST(GlyphFont, MayLeaveSavesAndOperandsInItsGlyphs) {
    const Picture page =
        Shown(GlyphFont({kPicture + "q 1 2 (x)\n1 0 0 rg\n" + kBox + "\nq q Q Q Q Q 5 dict begin q"}), "/N9",
              "q 0 0 1 rg (AA) Tj Q 0 50 Td (A) Tj ET 1 2 3 q Q 90 90 5 5 re f BT");
    EXPECT_EQ(page.At(25, 25), kRed);
    EXPECT_EQ(page.At(75, 25), kRed);
    EXPECT_EQ(page.At(92, 92), kBlack);
}

TEST(GlyphFont, MayFailInItsGlyphs) {
    for (const std::string& begin : {kPicture, kShape}) {
        const std::string content =
            "BT /N9 50 Tf 10 10 Td (A) Tj ET 1 0 0 rg 60 60 20 20 re f BT /Squares 20 Tf 60 10 Td (A) Tj ET";
        const std::vector<Picture> pages =
            PrologJob()
                .Page(content, kSquares + GlyphFont({begin + "q 2 0 0 2 0 0 cm 5 dict begin nosuchoperator"}))
                .Page("0 0 1 rg 10 10 20 20 re f")
                .Paint();
        EXPECT_EQ(pages.at(0).At(65, 65), kRed) << begin;
        EXPECT_EQ(pages.at(0).At(65, 15), kRed) << begin;
        EXPECT_EQ(pages.at(0).At(90, 90), kWhite) << begin;
        EXPECT_EQ(pages.at(1).At(15, 15), kBlue) << begin;
    }
}

TEST(GlyphFont, NeverHidesAFontOfTheDevice) {
    const std::string setup = GlyphFont({kShape + kBox}, "/Helvetica") + "[/N7 /Helvetica 1 TZ\n";
    EXPECT_EQ(PrintedBy(setup, "FontDirectory /N7 get /FontType get 3 eq ="), "false\n");
    EXPECT_TRUE(ShowsSquare(Shown(setup, "/N9", "(A) Tj")));
}

}  // namespace
}  // namespace zorvan::test
