// Composite fonts: what they write of their CID-keyed fonts, and the line that composes them.
#include <array>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "fonts/true_type_builder.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kSystem = "/CIDSystemInfo << /Registry (Adobe) /Ordering (Japan1) /Supplement 4 >> ";
constexpr const char* kSystemText =
    "/CIDSystemInfo 3 dict dup begin\n/Registry (Adobe) def\n/Ordering (Japan1) def\n"
    "/Supplement 0 def\nend def\n";

/// A page with a composite font, object 10, and its descendant, object 11; its descriptor is object 12.
PdfBuilder CompositePage(std::string_view descendant, std::string_view encoding = "/Identity-H",
                         std::string_view fontEntries = "") {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Type /Font /Subtype /Type0 /BaseFont /Whole /DescendantFonts [11 0 R] /Encoding " +
                       std::string(encoding) + " " + std::string(fontEntries) + " >>");
    return pdf.Object(11, "<< /Type /Font /BaseFont /Part " + std::string(descendant) + " >>");
}

std::string Kind0(std::string_view more = "") {
    return "/Subtype /CIDFontType0 "s + kSystem + std::string(more);
}
std::string Kind2(std::string_view more = "") {
    return "/Subtype /CIDFontType2 "s + kSystem + std::string(more);
}

/// The line that composes such a font.
std::string Line(std::string_view name, std::string_view cmap, std::string_view style = "SansSerif",
                 int mode = 0, std::string_view collection = "Adobe-Japan1",
                 std::string_view resource = "N10") {
    const std::string part(name);
    return "/" + std::string(resource) + " (" + part + "-T0) " + std::string(cmap) + " [(" + part + ")] /" +
           std::string(collection) + " [ /" + std::string(style) + " ]  " + std::to_string(mode) +
           " 0 TZzero\n";
}

/// The Type 0 dictionary of a font.
std::string Type0Text(const std::string& name, const std::string& cmap, int mode = 0) {
    return "8 dict begin\n/FontName /" + name + "-T0 def\n/FontType 0 def\n/FMapType 9 def\n/WMode " +
           std::to_string(mode) +
           " def\n/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/Encoding [0] def\n/CMap dup /" + cmap +
           " exch findresource def\n/FDepVector [/" + name +
           " findfont] def\ncurrentdict end dup /FontName get exch definefont pop\n";
}

/// The generated CMap with these ranges.
std::string CMapText(const std::string& name, const std::string& ranges, int mode = 0,
                     const std::string& system = kSystemText) {
    return "%!PS-Adobe-3.0 Resource-CMap\n%%DocumentNeededResources: ProcSet (CIDInit)\n"
           "%%IncludeResource: ProcSet (CIDInit)\n%%BeginResource: CMap (" +
           name + ")\n/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n" + system +
           "/CMapName /" + name + " def\n/CMapType 1 def\n/WMode " + std::to_string(mode) +
           " def\n1 begincodespacerange\n<0000> <ffff>\nendcodespacerange\n" + ranges +
           "endcidrange\nendcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n%%EndResource\n";
}

// --- fonts with compact programs ---

/// A compact program that declares this name.
std::string CompactProgram(std::string_view name) {
    return "\x01\x00\x04\x01\x00\x01\x01\x01"s + static_cast<char>(1 + name.size()) + std::string(name) +
           "rest";
}

TEST(CompositeFont, OfADeviceFontOfTheFirstKindIsOneLine) {
    EXPECT_EQ(DefinitionsOf(CompositePage(Kind0())), Line("Part", "/Identity-H "));
}

TEST(CompositeFont, OfTheFirstKindTakesTheNameOfItsDescriptor) {
    for (const auto& [descriptor, name] : {std::tuple{"<< /FontName /Described /Flags 4 >>", "Described"},
                                           std::tuple{"<< /Flags 4 >>", "Part"}}) {
        PdfBuilder pdf = CompositePage(Kind0("/FontDescriptor 12 0 R")).Object(12, descriptor);
        EXPECT_EQ(DefinitionsOf(pdf), Line(name, "/Identity-H ")) << descriptor;
    }
}

TEST(CompositeFont, OfTheFirstKindWritesItsCompactProgram) {
    const std::string program = CompactProgram("Declared");
    const std::string count = std::to_string(program.size());
    PdfBuilder pdf = CompositePage(Kind0("/FontDescriptor 12 0 R"));
    pdf.Object(12, "<< /FontName /Described /FontFile3 13 0 R >>")
        .Stream(13, program, "/Subtype /CIDFontType0C");
    EXPECT_EQ(DefinitionsOf(pdf), "/FontSetInit /ProcSet findresource begin\n%%BeingData:" + count +
                                      " Binary Bytes\n/TestCFF " + count + " StartData\n" + program +
                                      "\n%%EndData\n" + Line("Declared", "/Identity-H "));
}

TEST(CompositeFont, OfTheFirstKindLooksAtNoOtherProgram) {
    PdfBuilder pdf = CompositePage(Kind0("/FontDescriptor 12 0 R"));
    pdf.Object(12, "<< /FontFile2 13 0 R /FontFile 13 0 R >>").Stream(13, "program");
    EXPECT_EQ(DefinitionsOf(pdf), Line("Part", "/Identity-H "));
}

// --- the composing line ---

TEST(CompositeFont, HasTheStyleOfItsDescriptorsFlags) {
    for (const auto& [flags, style] :
         {std::tuple{"34", "Serif"}, std::tuple{"32", "SansSerif"}, std::tuple{"2", "Serif"},
          std::tuple{"0", "SansSerif"}, std::tuple{"-2147483646", "Serif"}}) {
        for (const std::string& kind : {Kind0("/FontDescriptor 12 0 R"), Kind2("/FontDescriptor 12 0 R")}) {
            PdfBuilder pdf = CompositePage(kind);
            pdf.Object(12, "<< /Flags " + std::string(flags) + "\n>>");
            EXPECT_THAT(DefinitionsOf(pdf), EndsWith(Line("Part", "/Identity-H ", style))) << flags;
        }
    }
}

TEST(CompositeFont, WritesDownwardsWithACMapWhoseNameEndsSo) {
    for (const auto& [name, mode] :
         {std::tuple{"Identity-H", 0}, std::tuple{"Identity-V", 1}, std::tuple{"UniJIS-UCS2-HW-V", 1},
          std::tuple{"H", 0}, std::tuple{"V", 0}, std::tuple{"90ms-RKSJ-H", 0}, std::tuple{"-V", 1}}) {
        const std::string cmap = "/"s + name;
        EXPECT_EQ(DefinitionsOf(CompositePage(Kind0(), cmap)), Line("Part", cmap + " ", "SansSerif", mode))
            << name;
    }
}

TEST(CompositeFont, TakesAnEncodingByReferenceForItsName) {
    PdfBuilder pdf = CompositePage(Kind0(), "13 0 R").Object(13, "/Identity-V");
    EXPECT_EQ(DefinitionsOf(pdf), Line("Part", "/Identity-V ", "SansSerif", 1));
}

TEST(CompositeFont, TakesItsDescendantFromTheFirstElement) {
    PdfBuilder pdf = FontPage().Object(20, "[21 0 R 22 0 R]");
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts 20 0 R /Encoding /Identity-H >>");
    pdf.Object(21, "<< /BaseFont /First /Subtype /CIDFontType0 /CIDSystemInfo 23 0 R >>").Object(22, "null");
    pdf.Object(23, "<< /Registry 24 0 R /Ordering (X) >>").Object(24, "(R)");
    EXPECT_EQ(DefinitionsOf(pdf), Line("First", "/Identity-H ", "SansSerif", 0, "R-X"));
}

TEST(CompositeFont, MayHoldItsDescendantItself) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [<< /BaseFont /Inside "s +
                       Kind0() + " >>] >>");
    EXPECT_EQ(DefinitionsOf(pdf), Line("Inside", "/Identity-H "));
}

TEST(CompositeFont, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = FontPage("/F1 10 2 R");
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding /Identity-H >>", 2);
    pdf.Object(11, "<< /BaseFont /Part " + Kind0() + " >>");
    EXPECT_EQ(DefinitionsOf(pdf), Line("Part", "/Identity-H ", "SansSerif", 0, "Adobe-Japan1", "N10-2"));
}

/// A program of one empty glyph.
std::string EmptyTrueType() {
    return TrueTypeBuilder()
        .Table("head", Head({0, 0, 1, 1}))
        .Table("maxp", Maxp(1))
        .Table("loca", Words({0, 0}))
        .Bytes();
}

TEST(CompositeFont, HasItsCollectionEscapedInStringsAndAsOneTokenInTheName) {
    PdfBuilder pdf = CompositePage(
        "/Subtype /CIDFontType2 /CIDSystemInfo << /Registry (A\\)b\\\\) /Ordering <4A2031> >> "
        "/FontDescriptor 12 0 R");
    pdf.Object(12, "<< /FontFile2 13 0 R >>").Stream(13, EmptyTrueType());
    const std::string setup = DefinitionsOf(pdf);
    EXPECT_EQ(CountOf(setup, "/Registry (A\\)b\\\\) def\n/Ordering (J 1) def\n/Supplement 0 def\n"), 2);
    const std::string name = Between(setup, " [(Part)] ", " [ /SansSerif ]");
    EXPECT_THAT(name, StartsWith("/"));
    EXPECT_EQ(name.find_first_of(" ()<>[]{}%"), std::string::npos) << name;
    EXPECT_EQ(name.find('/', 1), std::string::npos) << name;
    EXPECT_EQ(CountOf(name, "-"), 1) << name;
}

TEST(CompositeFont, EscapesItsNameInParenthesesWhenItIsNoString) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding /Identity-H >>");
    pdf.Object(11, "<< /BaseFont /Part#5C " + Kind0() + " >>");
    EXPECT_EQ(DefinitionsOf(pdf),
              "/N10 (Part\\-T0) /Identity-H  [(Part\\\\)] /Adobe-Japan1 [ /SansSerif ]  0 0 TZzero\n");
}

TEST(CompositeFont, HasItsCollectionAsOneTokenWhateverItHolds) {
    const auto name = [](const std::string& registry, const std::string& ordering) {
        const std::string info = "<< /Registry " + registry + " /Ordering " + ordering + " >>";
        return Between(DefinitionsOf(CompositePage("/Subtype /CIDFontType0 /CIDSystemInfo " + info)),
                       " [(Part)] ", " [ /SansSerif ]");
    };
    EXPECT_EQ(name("(A\nquit\tB)", "<0071756974>"), "/A$quit$B-$quit");
    EXPECT_EQ(name("<418841717569740A>", "(x)"), "/A$Aquit$-x");
    EXPECT_EQ(name("(" + std::string(100, 'r') + ")", "(" + std::string(100, 'o') + ")"),
              "/" + std::string(100, 'r') + "-" + std::string(26, 'o'));
    EXPECT_EQ(name("()", "()"), "/-");
}

// The device looks for a font of its own under the name, and compares it with the strings of its fonts.
TEST(CompositeFont, HasItsCollectionNamedAsTheDeviceReadsItsStrings) {
    const std::vector<std::array<std::string, 4>> collections{
        {"(Adobe)", R"((Ident\151ty))", R"(Ident\151ty)", "Adobe-Identity"},
        {"(Ado\\\nbe)", "(\\1122\\60\\\r\n)", "\\1122\\60\\\r\n", "Adobe-J20"},
        {R"((A\dobe))", R"((J\)\\\n))", R"(J\)\\\n)", R"(Adobe-J$\$)"},
        {"(Adobe)", "<4A5C6E31>", R"(J\\n1)", R"(Adobe-J\n1)"}};
    for (const auto& [registry, ordering, text, name] : collections) {
        PdfBuilder pdf = CompositePage("/Subtype /CIDFontType2 /CIDSystemInfo << /Registry " + registry +
                                       " /Ordering " + ordering + " >> /FontDescriptor 12 0 R");
        pdf.Object(12, "<< /FontFile2 13 0 R >>").Stream(13, EmptyTrueType());
        const std::string setup = DefinitionsOf(pdf);
        EXPECT_EQ(CountOf(setup, "/Ordering (" + text + ") def\n"), 2) << setup;
        EXPECT_EQ(Between(setup, " [(Part)] ", " [ /SansSerif ]"), "/" + name);
    }
}

TEST(CompositeFont, HasTheLongestNamesWhole) {
    const std::string name(126, 'x');  // the lexer takes no longer ones
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding /" + name + " >>");
    pdf.Object(11, "<< /BaseFont /" + name + " " + Kind0() + " >>");
    EXPECT_EQ(DefinitionsOf(pdf), Line(name, "/" + name + " "));
}

TEST(CompositeFont, IsDefinedInTheDocumentsSetupWhenTwoPagesNameIt) {
    const std::string page = "/Resources << /Font << /F 10 0 R >> >>";
    PdfBuilder pdf = Pages({page, page});
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding /Identity-H >>");
    const Conversion conversion = Convert(pdf.Object(11, "<< /BaseFont /Part " + Kind0() + " >>").Bytes());
    EXPECT_EQ(SetupOf(conversion.output), Line("Part", "/Identity-H "));
    EXPECT_EQ(PageSetupOf(conversion.output, 1) + PageSetupOf(conversion.output, 2), "");
}

// --- fonts with TrueType programs ---

TEST(CompositeFont, OfADeviceFontOfTheSecondKindHasItsDictionaryAllTheSame) {
    EXPECT_EQ(DefinitionsOf(CompositePage(Kind2(), "/90ms-RKSJ-H")),
              Type0Text("Part", "90ms-RKSJ-H") + Line("Part", "/90ms-RKSJ-H "));
    EXPECT_EQ(DefinitionsOf(CompositePage(Kind2())),
              CMapText("CMap-D11", "1 begincidrange\n<0000> <0000> 0\n") + Type0Text("Part", "CMap-D11") +
                  Line("Part", "/Identity-H "));
}

TEST(CompositeFont, OfTheSecondKindKeepsTheNameOfItsDictionary) {
    PdfBuilder pdf = CompositePage(Kind2("/FontDescriptor 12 0 R"), "/90ms-RKSJ-H");
    EXPECT_EQ(DefinitionsOf(pdf.Object(12, "<< /FontName /Described /FontFile3 13 0 R >>").Stream(13, "x")),
              Type0Text("Part", "90ms-RKSJ-H") + Line("Part", "/90ms-RKSJ-H "));
}

/// A file of so many glyphs, all empty.
std::string FileOf(int glyphs) {
    return TrueTypeBuilder()
        .Table("head", Head({-10, -20, 1000, 800}))
        .Table("maxp", Maxp(glyphs))
        .Table("loca", Words(std::vector<int>(static_cast<std::size_t>(glyphs) + 1)))
        .Bytes();
}

/// A page whose composite font has such a file; `map` are the bytes of its CIDToGIDMap, object 14.
PdfBuilder TrueTypePage(int glyphs, std::string_view more = "", std::string_view encoding = "/Identity-H") {
    PdfBuilder pdf = CompositePage(Kind2("/FontDescriptor 12 0 R " + std::string(more)), encoding);
    return pdf.Object(12, "<< /FontFile2 13 0 R >>").Stream(13, FileOf(glyphs));
}
PdfBuilder MappedPage(std::string_view map) {
    return TrueTypePage(3, "/CIDToGIDMap 14 0 R").Stream(14, map);
}

std::string Hexadecimal(std::string_view bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string digits;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        digits += {kDigits[value >> 4U], kDigits[value & 15U]};
    }
    return digits;
}

/// What comes before the glyph data.
std::string CIDFontText(const std::string& count, const std::string& map) {
    return "%!PS-Adobe-3.0 Resource-CIDFont\n%%documentNeededResources: procset CIDInit\n"
           "%%IncludeResource: procset CIDInit\n%%BeginResource: CIDFont Part\n%%Version: 1\n"
           "/CIDInit /ProcSet findresource begin\n20 dict begin\n/CIDFontName /Part def\n/CIDFontType 2 def\n"s +
           kSystemText +
           "/FontBBox [-10 -20 1000 800] def\n/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n"
           "/FontType 42 def\n/Encoding 256 array def\n/CharStrings 2 dict dup begin\n/.notdef 0 def\n"
           "end readonly def\n/GDBytes 2 def\n/CIDCount " +
           count + " def\n/CIDMap [" + map + "]def\n/sfnts[<";
}

/// The definitions without the line ends that the digits of glyph data may hold.
std::string WithoutFolds(std::string text) {
    const std::size_t start = text.find("/sfnts[");
    const std::size_t end = text.find("]def\n", start);
    std::string digits = text.substr(start, end - start);
    std::erase(digits, '\n');
    return text.replace(start, end - start, digits);
}

TEST(CIDFont, WithATrueTypeProgramIsWrittenWhole) {
    EXPECT_EQ(WithoutFolds(DefinitionsOf(TrueTypePage(5))),
              CIDFontText("5", "<00000001000200030004>\n") + Hexadecimal(FileOf(5)) +
                  "00>]def\ncurrentdict end dup /CIDFontName get exch definefont pop\n" +
                  CMapText("CMap-D11", "2 begincidrange\n<0000> <0000> 0\n<0001> <0003> 1\n") +
                  Type0Text("Part", "CMap-D11") + Line("Part", "/Identity-H "));
}

TEST(CIDFont, ForADownwardIdentitySaysSoInCMapAndDictionary) {
    const std::string setup = DefinitionsOf(TrueTypePage(5, "", "/Identity-V"));
    EXPECT_THAT(setup,
                EndsWith(CMapText("CMap-D11", "2 begincidrange\n<0000> <0000> 0\n<0001> <0003> 1\n", 1) +
                         Type0Text("Part", "CMap-D11", 1) + Line("Part", "/Identity-V ", "SansSerif", 1)));
}

TEST(CIDFont, WithAnotherPredefinedCMapHasNoneGenerated) {
    const std::string setup = DefinitionsOf(TrueTypePage(5, "", "/UniJIS-UCS2-V"));
    EXPECT_THAT(setup, EndsWith("definefont pop\n" + Type0Text("Part", "UniJIS-UCS2-V") +
                                Line("Part", "/UniJIS-UCS2-V ", "SansSerif", 1)));
    EXPECT_THAT(setup, Not(HasSubstr("begincmap")));
}

TEST(CIDFont, OfAnotherGenerationNamesItsCMapByItToo) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 3 R] /Encoding /Identity-H >>");
    pdf.Object(11, "<< /BaseFont /Part " + Kind2() + " >>", 3);
    EXPECT_EQ(DefinitionsOf(pdf), CMapText("CMap-D11-3", "1 begincidrange\n<0000> <0000> 0\n") +
                                      Type0Text("Part", "CMap-D11-3") + Line("Part", "/Identity-H "));
}

struct Mapped {
    std::string bytes;
    const char* count;
    const char* map;
    const char* ranges;
};

TEST(CIDFont, TakesItsMapFromAStreamOfTwoBytesEach) {
    for (const Mapped& mapped : {Mapped{"", "0", "", "1 begincidrange\n<0000> <0000> 0\n"},
                                 Mapped{"\x01"s, "0", "", "1 begincidrange\n<0000> <0000> 0\n"},
                                 Mapped{"\x00\x05"s, "1", "<0005>\n", "1 begincidrange\n<0000> <0000> 0\n"},
                                 Mapped{"\x00\x05\xAB\xCD"s, "2", "<0005abcd>\n",
                                        "2 begincidrange\n<0000> <0000> 0\n<0001> <0001> 1\n"},
                                 Mapped{"\x00\x05\xAB\xCD\x00\x00"s, "3", "<0005abcd0000>\n",
                                        "2 begincidrange\n<0000> <0000> 0\n<0001> <0001> 1\n"},
                                 Mapped{"\x00\x00\x00\x01\x00\x02\xFF\xFF"s, "4", "<000000010002ffff>\n",
                                        "2 begincidrange\n<0000> <0000> 0\n<0001> <0002> 1\n"},
                                 Mapped{"\x00\x00\x00\x01\x00\x02\xFF\xFF\x12"s, "4", "<000000010002ffff>\n",
                                        "2 begincidrange\n<0000> <0000> 0\n<0001> <0002> 1\n"}}) {
        const std::string setup = DefinitionsOf(MappedPage(mapped.bytes));
        EXPECT_THAT(setup, StartsWith(CIDFontText(mapped.count, mapped.map))) << mapped.count;
        EXPECT_THAT(setup, HasSubstr(CMapText("CMap-D11", mapped.ranges))) << mapped.count;
    }
}

TEST(CIDFont, DecodesItsMap) {
    PdfBuilder pdf =
        TrueTypePage(3, "/CIDToGIDMap 14 0 R").Stream(14, "00 05 ab cd>", "/Filter /ASCIIHexDecode");
    EXPECT_THAT(DefinitionsOf(pdf), StartsWith(CIDFontText("2", "<0005abcd>\n")));
}

TEST(CIDFont, WithoutAStreamMapsTheGlyphsToThemselves) {
    for (const std::string map : {"", "/CIDToGIDMap /Identity", "/CIDToGIDMap 5", "/CIDToGIDMap null"}) {
        EXPECT_THAT(DefinitionsOf(TrueTypePage(3, map)), StartsWith(CIDFontText("3", "<000000010002>\n")))
            << map;
    }
    EXPECT_THAT(DefinitionsOf(TrueTypePage(1)), StartsWith(CIDFontText("1", "<0000>\n")));
}

TEST(CIDFont, HoldsAtMost32767EntriesInAString) {
    std::string map;
    for (int i = 0; i < 65536; ++i) {
        map += {static_cast<char>(i >> 8), static_cast<char>(i)};
    }
    for (const std::string& bytes : {map, map + map}) {
        const std::string setup = DefinitionsOf(MappedPage(bytes));
        const std::string written = Between(setup, "/CIDCount 65536 def\n/CIDMap [", "]def\n");
        const std::size_t string = 4 * 32767;  // the digits of a full one
        ASSERT_EQ(written.size(), 4 * 65536 + 3 * 3);
        EXPECT_THAT(written, StartsWith("<000000010002"));
        EXPECT_EQ(written.substr(string - 3, 11), "7ffe>\n<7fff");
        EXPECT_EQ(written.substr(2 * string, 11), "fffd>\n<fffe");
        EXPECT_THAT(written, EndsWith("<fffeffff>\n"));
        EXPECT_THAT(setup, HasSubstr("2 begincidrange\n<0000> <0000> 0\n<0001> <fffe> 1\nendcidrange"));
    }
}

TEST(CIDFont, OfAThousandPagesIsDefinedOnce) {
    std::string fonts;
    for (unsigned font = 0; font < 5; ++font) {
        fonts += "/F" + std::to_string(font) + " " + std::to_string(2000 + font) + " 0 R ";
    }
    PdfBuilder pdf = Pages(std::vector<std::string>(1000, "/Resources << /Font << " + fonts + ">> >>"));
    for (unsigned font = 0; font < 5; ++font) {
        const std::string number = std::to_string(font);
        pdf.Object(2000 + font,
                   "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [201" + number + " 0 R] >>");
        pdf.Object(2010 + font, "<< /BaseFont /Part" + number + Kind2(" /FontDescriptor 2020 0 R") + " >>");
    }
    pdf.Object(2020, "<< /FontFile2 2021 0 R >>").Stream(2021, FileOf(300));
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>(1000, 0));
    for (const auto& text : {"\n%%BeginResource: CIDFont Part", "\n%%BeginResource: CMap (CMap-D201",
                             "\n/FontName /Part", "-T0) /Identity-H "}) {
        EXPECT_EQ(CountOf(SetupOf(conversion.output), text), 5) << text;
        EXPECT_EQ(CountOf(conversion.output, text), 5) << text;
    }
}

TEST(CIDFont, WithoutLocationsEndsItsPage) {
    PdfBuilder pdf = CompositePage(Kind2("/FontDescriptor 12 0 R")).Object(12, "<< /FontFile2 13 0 R >>");
    pdf.Stream(13, TrueTypeBuilder().Table("head", Head({0, 0, 1, 1})).Table("maxp", Maxp(3)).Bytes());
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{-1});
    EXPECT_THAT(conversion.output, Not(HasSubstr("TZzero\n/")));
    EXPECT_THAT(PageSetupOf(conversion.output), Not(HasSubstr("CIDFontType 2 def")));
}

TEST(CIDFont, WhoseProgramIsNoStreamEndsItsPage) {
    for (const auto& [kind, key] : {std::tuple{Kind0("/FontDescriptor 12 0 R"), "/FontFile3"},
                                    std::tuple{Kind2("/FontDescriptor 12 0 R"), "/FontFile2"}}) {
        PdfBuilder pdf = CompositePage(kind).Object(12, "<< "s + key + " 13 0 R >>").Object(13, "<< >>");
        EXPECT_EQ(DefinitionsUpTo(-4095, pdf, 11), "") << key;
    }
}

// --- what is no composite font ---

TEST(CompositeFont, WithoutADescendantIsNone) {
    for (const std::string descendants :
         {"", "/DescendantFonts []", "/DescendantFonts 5", "/DescendantFonts [5]", "/DescendantFonts [null]",
          "/DescendantFonts [99 0 R]", "/DescendantFonts << >>", "/DescendantFonts [10 0 R]",
          "/DescendantFonts [11 0 R]", "/DescendantFonts [<< >>]"}) {
        PdfBuilder pdf = FontPage().Object(11, "<< /Subtype /Type1 /BaseFont /X >>");
        pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H " + descendants + " >>");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.error.code, -4084) << descendants;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10)) << descendants;
        EXPECT_THAT(PageSetupOf(conversion.output), Not(HasSubstr("TZzero"))) << descendants;
    }
}

TEST(CompositeFont, WithoutACMapEndsItsPage) {
    for (const std::string& kind : {Kind0(), Kind2()}) {
        for (const std::string encoding : {"null", "5", "[/Identity-H]", "(Identity-H)", "<< >>"}) {
            PdfBuilder pdf = CompositePage(kind, encoding);
            EXPECT_EQ(DefinitionsUpTo(-4088, pdf, 10), "") << encoding;
        }
    }
}

TEST(CompositeFont, WhoseEncodingIsNoCMapIsRecordedAsThat) {
    for (const std::string object : {"<< >>", "5", "[/Identity-H]", "(Identity-H)"}) {
        PdfBuilder pdf = CompositePage(Kind0(), "13 0 R").Object(13, object);
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{-4088}) << object;
        EXPECT_EQ(conversion.error.code, -4070) << object;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(13)) << object;
    }
}

TEST(HostileCompositeFont, WithoutNamesAndCollectionHasNoHalfLine) {
    for (const std::string entries : {"/Subtype /CIDFontType0", "/Subtype /CIDFontType2",
                                      "/Subtype /CIDFontType0 /CIDSystemInfo 5 /FontDescriptor 5",
                                      "/Subtype /CIDFontType2 /CIDSystemInfo << /Registry /X /Ordering 5 >> "
                                      "/FontDescriptor << /Flags (x) /FontName 5 >>"}) {
        PdfBuilder pdf = FontPage();
        pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [11 0 R] >>");
        const std::string setup = DefinitionsOf(pdf.Object(11, "<< " + entries + " >>"));
        EXPECT_THAT(setup, EndsWith(" [ /SansSerif ]  0 0 TZzero\n")) << entries;
        EXPECT_EQ(CountOf(setup, "dict begin"),
                  CountOf(setup, "currentdict end") + CountOf(setup, "end\nend\n"))
            << entries;
    }
}

TEST(HostileCompositeFont, WithNamesThatNeedEscapesStaysOneLine) {
    PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /Encoding /Bad#20Name#29 /DescendantFonts [11 0 R] >>");
    pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /A#28B#20C#5C "s + kSystem + ">>");
    const std::string setup = DefinitionsOf(pdf);
    EXPECT_EQ(CountOf(setup, "\n"), 1);
    EXPECT_EQ(CountOf(setup, "("), CountOf(setup, ")"));
    EXPECT_THAT(setup, EndsWith("TZzero\n"));
}

TEST(HostileCompositeFont, OfAMapThatCannotBeDecodedEndsItsPage) {
    PdfBuilder pdf = TrueTypePage(3, "/CIDToGIDMap 14 0 R").Stream(14, "x", "/Filter /JPXDecode");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{-4092});
    EXPECT_EQ(conversion.error.code, -4092);
}

}  // namespace
}  // namespace zorvan::test
