// Encodings of simple fonts: the difference tables, the lists that are written, and the selectors.
#include "fonts/font_encoding.h"

#include <regex>
#include <sstream>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "ps/prolog.h"

namespace zorvan::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The list of a predefined encoding in a stored text, "[..]n TE", laid out by codes.
std::vector<std::string> StoredDifferences(unsigned identifier, const std::string& end) {
    const std::string_view text = BuiltInProlog()->Text(identifier);
    const std::size_t last = text.find(end);
    const std::size_t first = text.rfind('[', last) + 1;
    EXPECT_NE(last, std::string_view::npos);
    const std::string apart =
        std::regex_replace(std::string(text.substr(first, last - first)), std::regex("/"), " /");
    std::istringstream tokens(apart);
    std::vector<std::string> names(kCodes, std::string(kSameName));
    std::size_t code = 0;
    for (std::string token; tokens >> token;) {
        if (token[0] == '/') {
            names.at(code++) = token.substr(1);
        } else {
            code = std::stoul(token);
        }
    }
    return names;
}

std::vector<std::string> TableOf(BaseEncoding base) {
    const DifferenceTable& table = DifferencesOf(base);
    return {table.begin(), table.end()};
}

TEST(FontEncodingTables, HaveThePrologsMacRomanButForTheMathematicalSigns) {
    std::vector<std::string> expected = StoredDifferences(7008, "]0 TE");
    for (std::size_t code = 182; code <= 186; ++code) {
        EXPECT_EQ(expected[code], ".notdef");
        expected[code] = kSameName;
    }
    EXPECT_EQ(TableOf(BaseEncoding::kMacRoman), expected);
}

TEST(FontEncodingTables, HaveThePrologsWinAnsi) {
    EXPECT_EQ(TableOf(BaseEncoding::kWinAnsi), StoredDifferences(7009, "]1 TE"));
}

TEST(FontEncodingTables, HaveNoDifferencesForAFontsOwn) {
    EXPECT_EQ(TableOf(BaseEncoding::kFontOwn), std::vector<std::string>(kCodes, std::string(kSameName)));
}

/// What defines a Type 1 font of this encoding.
std::string LineFor(const std::string& encoding) {
    return DefinitionsOfFont("/Subtype /Type1 /BaseFont /Foo /Encoding " + encoding);
}

/// The list of differences in it.
std::string ListFor(const std::string& encoding) {
    const std::string line = LineFor(encoding);
    EXPECT_THAT(line, StartsWith("[ "));
    EXPECT_THAT(line, EndsWith("\n/N10 /Foo -1 TZ\n"));
    return Between(line, "[ ", "/N10 /Foo");
}

// --- The selectors.

TEST(FontEncoding, SelectsThePrologsEncodings) {
    EXPECT_EQ(LineFor("/MacRomanEncoding"), "[/N10 /Foo 0 TZ\n");
    EXPECT_EQ(LineFor("/WinAnsiEncoding"), "[/N10 /Foo 1 TZ\n");
    EXPECT_EQ(LineFor("<< /BaseEncoding /MacRomanEncoding >>"), "[/N10 /Foo 0 TZ\n");
    EXPECT_EQ(LineFor("<< /BaseEncoding /WinAnsiEncoding >>"), "[/N10 /Foo 1 TZ\n");
}

TEST(FontEncoding, LeavesTheFontItsOwnForAnythingElse) {
    EXPECT_EQ(DefinitionsOfFont("/Subtype /Type1 /BaseFont /Foo"), "[/N10 /Foo -1 TZ\n");
    for (const std::string encoding :
         {"/StandardEncoding", "/Unknown", "<< >>", "<< /BaseEncoding /Unknown >>", "<< /BaseEncoding 5 >>",
          "5", "(WinAnsiEncoding)", "[/WinAnsiEncoding]", "null"}) {
        EXPECT_EQ(LineFor(encoding), "[/N10 /Foo -1 TZ\n") << encoding;
    }
}

TEST(FontEncoding, IsTakenByReference) {
    PdfBuilder pdf = FontPage("/F1 10 0 R /F2 11 0 R");
    pdf.Object(10, "<< /Subtype /Type1 /BaseFont /Foo /Encoding 20 0 R >>").Object(20, "/WinAnsiEncoding");
    pdf.Object(11, "<< /Subtype /Type1 /BaseFont /Bar /Encoding 21 0 R >>");
    pdf.Object(21, "<< /BaseEncoding 22 0 R /Differences 23 0 R >>").Object(22, "/MacExpertEncoding");
    const std::string fonts = DefinitionsOf(pdf.Object(23, "[33 /one]"));
    EXPECT_THAT(fonts, StartsWith("[/N10 /Foo 1 TZ\n[  33 /one 35 /centoldstyle 60 /.notdef 62 "));
    EXPECT_THAT(fonts, EndsWith("/Ringsmall\n/N11 /Bar -1 TZ\n"));
}

// --- The list over the font's own encoding: as it stands.

TEST(FontEncoding, WritesDifferencesOverTheFontsOwnInTheirOrder) {
    EXPECT_EQ(LineFor("<< /BaseEncoding /StandardEncoding /Differences [32 /space /exclam] >>"),
              "[  32 /space/exclam\n/N10 /Foo -1 TZ\n");
    EXPECT_EQ(ListFor("<< /Differences [200 /b 32 /a /c] >>"), " 200 /b 32 /a/c\n");
}

TEST(FontEncoding, WritesAnEmptyDifferencesArrayAsAnEmptyList) {
    EXPECT_EQ(LineFor("<< /Differences [] >>"), "[ \n/N10 /Foo -1 TZ\n");
}

TEST(FontEncoding, BreaksTheLineBehindEachNinthNameWhateverCodesStandBetween) {
    EXPECT_EQ(ListFor("<< /Differences [1 /a /b /c 10 /d /e /f /g /h /i /j] >>"),
              " 1 /a/b/c 10 /d/e/f/g/h/i\n/j\n");
    EXPECT_EQ(ListFor("<< /Differences [1 /a /b /c /d /e /f /g /h /i] >>"), " 1 /a/b/c/d/e/f/g/h/i\n\n");
}

TEST(FontEncoding, WritesTheIntegerPartOfACodeThatIsReal) {
    EXPECT_EQ(ListFor("<< /Differences [65.9 /A 70.0 /B] >>"), " 65 /A 70 /B\n");
}

TEST(FontEncoding, LeavesOutWhatIsNeitherCodeNorName) {
    EXPECT_EQ(ListFor("<< /Differences [65 /A (b) null [1] /C] >>"), " 65 /A/C\n");
}

TEST(FontEncoding, TakesCodesAndNamesByReference) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type1 /BaseFont /Foo /Encoding << /Differences [20 0 R 21 0 R] >> >>");
    EXPECT_EQ(DefinitionsOf(pdf.Object(20, "65").Object(21, "/A")), "[  65 /A\n/N10 /Foo -1 TZ\n");
}

// "//quit" would run where it stands.
TEST(FontEncoding, KeepsAnEmptyGlyphNameApartFromTheNextName) {
    EXPECT_EQ(ListFor("<< /Differences [65 / /quit / ] >>"), " 65 / /quit/ \n");
    EXPECT_EQ(ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [255 / ] >>").find("//"),
              std::string::npos);
    EXPECT_THAT(ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [32 / /quit] >>"),
                HasSubstr(" 32 / /quit"));
}

TEST(FontEncoding, WritesAGlyphNameAsOneToken) {
    EXPECT_EQ(ListFor("<< /Differences [65 /a#28b#20c] >>"), " 65 /a$b$c\n");
}

// --- The list over a predefined encoding: merged, in runs, with a break before each ninth slot looked at.

constexpr const char* kExpertList =
    " 35 /centoldstyle 60 /.notdef 62 /.notdef 65 /.notdef/.notdef\n"
    "/.notdef/Ethsmall/.notdef 71 /onequarter/onehalf/threequarters/oneeighth/threeeighths\n"
    "/fiveeighths/seveneighths/onethird/twothirds 82 /.notdef/.notdef/.notdef 95 \n"
    "/hypheninferior 129 /asuperior/centsuperior 135 "
    "/Aacutesmall/Agravesmall/Acircumflexsmall/Adieresissmall\n"
    "/Atildesmall/Aringsmall/Ccedillasmall/Eacutesmall/Egravesmall/Ecircumflexsmall/Edieresissmall/"
    "Iacutesmall/Igravesmall\n"
    "/Icircumflexsmall/Idieresissmall/Ntildesmall/Oacutesmall/Ogravesmall/Ocircumflexsmall/Odieresissmall/"
    "Otildesmall/Uacutesmall\n"
    "/Ugravesmall/Ucircumflexsmall/Udieresissmall 161 "
    "/eightsuperior/fourinferior/threeinferior/sixinferior/eightinferior\n"
    "/seveninferior/Scaronsmall/.notdef/centinferior/twoinferior 172 /Dieresissmall 174 /Caronsmall\n"
    "/osuperior/fiveinferior 178 /commainferior/periodinferior/Yacutesmall 182 /dollarinferior/.notdef\n"
    "/.notdef/Thornsmall 187 /nineinferior/zeroinferior/Zcaronsmall/AEsmall/Oslashsmall/questiondownsmall\n"
    "/oneinferior/Lslashsmall/.notdef/.notdef/.notdef 200 /.notdef/Cedillasmall 207 \n"
    "/OEsmall/figuredash/hyphensuperior/.notdef/.notdef/.notdef/.notdef/exclamdownsmall/.notdef\n"
    "/Ydieresissmall/.notdef/onesuperior/twosuperior/threesuperior/foursuperior/fivesuperior/sixsuperior/"
    "sevensuperior\n"
    "/ninesuperior/zerosuperior/.notdef/esuperior/rsuperior/tsuperior/.notdef/.notdef/isuperior\n"
    "/ssuperior/dsuperior 241 /lsuperior/Ogoneksmall/Brevesmall/Macronsmall/bsuperior/nsuperior\n"
    "/msuperior/commasuperior/periodsuperior/Dotaccentsmall/Ringsmall\n";

TEST(FontEncoding, AlwaysWritesMacExpertAsAWholeList) {
    EXPECT_EQ(LineFor("/MacExpertEncoding"), std::string("[ ") + kExpertList + "/N10 /Foo -1 TZ\n");
    EXPECT_EQ(ListFor("<< /BaseEncoding /MacExpertEncoding >>"), kExpertList);
    EXPECT_EQ(ListFor("<< /BaseEncoding /MacExpertEncoding /Differences [] >>"), kExpertList);
}

TEST(FontEncoding, LaysDifferencesOverMacRoman) {
    // Looked at: 1 to 3, 39 to 41, 96, 97; the ninth slot is 128.
    const std::string list = ListFor("<< /BaseEncoding /MacRomanEncoding /Differences [40 /c 1 /a /b] >>");
    EXPECT_THAT(
        list, StartsWith(" 1 /a/b 39 /quotesingle/c 96 /grave 128 \n"
                         "/Adieresis/Aring/Ccedilla/Eacute/Ntilde/Odieresis/Udieresis/aacute/agrave\n"
                         "/acircumflex/adieresis/atilde/aring/ccedilla/eacute/egrave/ecircumflex/edieresis\n"
                         "/iacute/"));
    // 128 and 54 more are 182, the end of the run and a ninth slot.
    EXPECT_THAT(list, ::testing::HasSubstr("/.notdef/.notdef/yen/mu\n 187 /ordfeminine/ordmasculine/"));
    EXPECT_THAT(list, EndsWith("/ogonek/caron\n"));
}

TEST(FontEncoding, FillsTheMathematicalSignsOfMacRomanFromDifferences) {
    const std::string list = ListFor("<< /BaseEncoding /MacRomanEncoding /Differences [186 /integral] >>");
    EXPECT_TRUE(std::regex_search(list, std::regex("/mu[^/]* 186 [^/]*/integral[^/ ]*/ordfeminine"))) << list;
}

TEST(FontEncoding, LaysDifferencesOverWinAnsi) {
    // Looked at: 0 to 3, 39, 40, 96, 97; the ninth slot is 127, and 14 lines on, 253 is one.
    const std::string list = ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [255 /a 0 /f] >>");
    EXPECT_THAT(
        list, StartsWith(" 0 /f/dotlessi/caron 39 /quotesingle 96 /grave 127 \n"
                         "/bullet/Euro/bullet/quotesinglbase/florin/quotedblbase/ellipsis/dagger/daggerdbl\n"
                         "/circumflex/"));
    EXPECT_THAT(list, EndsWith("/ucircumflex/udieresis\n/yacute/thorn/a\n"));
    EXPECT_EQ(CountOf(list, "\n"), 16);
}

TEST(FontEncoding, IgnoresNamesAtCodesThatAreNone) {
    EXPECT_EQ(
        ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [255 /a /b /c 300 /d -1 /e /f 70000 /g] >>"),
        ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [255 /a 0 /f] >>"));
}

TEST(FontEncoding, BeginsAtCodeZeroWithoutACode) {
    EXPECT_EQ(ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [/f 255.5 /a] >>"),
              ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [255 /a 0 /f] >>"));
}

TEST(FontEncoding, KeepsAPredefinedEncodingsListForAnEmptyArray) {
    // Looked at: 1 to 3, 39, 40, 96, 97, 127, and 128 is the ninth.
    EXPECT_THAT(ListFor("<< /BaseEncoding /WinAnsiEncoding /Differences [] >>"),
                StartsWith(" 1 /dotlessi/caron 39 /quotesingle 96 /grave 127 /bullet\n/Euro/bullet/"));
}

}  // namespace
}  // namespace zorvan::test
