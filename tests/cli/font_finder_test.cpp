// Reading the fonts off the setup sections of document and page, however their bytes are cut.
#include "cli/font_finder.h"

#include <string>

#include <gmock/gmock.h>

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using std::string_literals::operator""s;

const std::string kDocumentHead =
    "PDFVars begin PDF begin\nPDFVars/DocInitAll get exec PDFVars/InitAll get exec\n";
const std::string kDocumentEnd = "PDFVars/TermAll get exec end end\n%%EndSetup\n";
const std::string kPageHead =
    "\n%%Page: 3 3\n%%BeginPageSetup\nuserdict /pgsave save put\n"
    "PDFVars begin PDF begin PDFVars/InitAll get exec\n";
const std::string kPageEnd = "%%EndPageSetup\n0.000000 0.000000 200.000000 300.000000 RC\n";

const std::string kType1Block =
    "%%BeginResource: font /Plain\n%!PS-AdobeFont-1.0: Plain\n/FontType 1 def\ncurrentfile eexec\n"
    "D9D66F63\n\r0000\rcleartomark\n%%EndResource\n";

std::string CompactBlock(const std::string& program) {
    const std::string count = std::to_string(program.size());
    return "%%BeginResource: font /Compact\n/FontSetInit /ProcSet findresource begin\n%%BeingData:" + count +
           " Binary Bytes\n/TestCFF " + count + " StartData\n" + program + "\n%%EndData\n%%EndResource\n";
}

const std::string kTrueTypeBlock =
    "%%BeginResource: font Outlines\n%!PS-TrueTypeFont-65536-65536-1\n11 dict begin/FontName /Outlines def\n"
    "/FontType 42 def\n/sfnts[<000100>]def\n/Outlines currentdict end definefont pop\n";

std::string Type3Block(const std::string& glyph) {
    return "%%BeginResource: font /Drawn\n10 dict begin\nT3Defs\n/FontType 3 def\n/FontName /N9 def\n"
           "/GlyphProcs 1 dict begin\n/.notdef { save\n" +
           glyph +
           "restore } bind def\ncurrentdict end def\nFontName currentdict end\ndefinefont pop\n"
           "%%EndResource\n";
}

void TakeInPieces(FontFinder& finder, const std::string& text, std::size_t pieceSize = 7) {
    for (std::size_t at = 0; at < text.size(); at += pieceSize) {
        finder.Take(std::string_view(text).substr(at, pieceSize));
    }
}

void TakePage(FontFinder& finder, const std::string& resources, const std::string& content = "") {
    finder.BeginPage();
    TakeInPieces(finder, kPageHead + resources + kPageEnd + content);
    finder.KeepPage();
}

std::vector<FontInfo> FontsOf(const std::string& resources, const std::string& content = "") {
    FontFinder finder;
    TakePage(finder, resources, content);
    return finder.Fonts();
}

TEST(FontFinder, TakesALineWithoutAProgramForAFontOfTheDevice) {
    EXPECT_THAT(FontsOf("[/N12 /Helvetica 1 TZ\n"),
                ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice}));
}

TEST(FontFinder, TakesALineBehindAListOfDifferences) {
    EXPECT_THAT(FontsOf("[  32 /space/exclam\n/N12-2 /Helvetica -1 TZ\n"),
                ElementsAre(FontInfo{"/N12-2", "Helvetica", FontKind::kOfDevice}));
}

TEST(FontFinder, TellsTheKindsOfProgramsApart) {
    EXPECT_THAT(FontsOf(kType1Block + "[/N6 /Plain 0 TZ\n" + CompactBlock("\1\0\4\1"s) +
                        "[/N7 /Compact -1 TZ\n" + kTrueTypeBlock + "[/N8 /Outlines -1 TZ\n"),
                ElementsAre(FontInfo{"/N6", "Plain", FontKind::kType1},
                            FontInfo{"/N7", "Compact", FontKind::kCompact},
                            FontInfo{"/N8", "Outlines", FontKind::kTrueType}));
}

TEST(FontFinder, KnowsThatAType3FontsNamesStandTheOtherWayRound) {
    EXPECT_THAT(FontsOf(Type3Block("") + "[/Drawn /N9 -1 TZ\n"),
                ElementsAre(FontInfo{"/N9", "Drawn", FontKind::kType3}));
}

TEST(FontFinder, CallsACompactFontAsTheFileDoesWhateverItsProgramDeclares) {
    EXPECT_THAT(FontsOf(CompactBlock("cff") + "[/N7 /Declared -1 TZ\n"),
                ElementsAre(FontInfo{"/N7", "Compact", FontKind::kCompact}));
}

TEST(FontFinder, GivesAProgramToTheNextLineOnly) {
    EXPECT_THAT(FontsOf(kTrueTypeBlock + "[/N8 /Outlines -1 TZ\n[/N12 /Outlines -1 TZ\n"),
                ElementsAre(FontInfo{"/N8", "Outlines", FontKind::kTrueType},
                            FontInfo{"/N12", "Outlines", FontKind::kOfDevice}));
}

TEST(FontFinder, TakesNoBytesOfACompactProgramForLines) {
    const std::string program =
        "\n%%EndData\n%%EndResource\n[/N1 /Fake 1 TZ\n%%BeginResource: font /Fake\n%%EndPageSetup\n"
        "0 0 1 1 RC\n";
    EXPECT_THAT(FontsOf(CompactBlock(program) + "[/N7 /Compact -1 TZ\n"),
                ElementsAre(FontInfo{"/N7", "Compact", FontKind::kCompact}));
}

TEST(FontFinder, CountsTheBytesOfACompactProgramOutsideABlockAsWell) {
    const std::string program = "\n[/N1 /Fake 1 TZ\n";
    const std::string count = std::to_string(program.size());
    EXPECT_THAT(FontsOf("%%BeingData:" + count + " Binary Bytes\n/TestCFF " + count + " StartData\n" +
                        program + "\n%%EndData\n[/N12 /Helvetica 1 TZ\n"),
                ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice}));
}

TEST(FontFinder, CountsNoBytesThatWereNotAnnounced) {
    const std::string use = "[/N12 /Helvetica 1 TZ\n";
    const FontInfo font = {"/N12", "Helvetica", FontKind::kOfDevice};
    EXPECT_THAT(FontsOf("/TestCFF 99999 StartData\n" + use), ElementsAre(font));
    EXPECT_THAT(FontsOf("%%BeingData:4 Binary Bytes\n/TestCFF 99999 StartData\n" + use), ElementsAre(font));
    EXPECT_THAT(FontsOf("%%BeingData:99999 Binary Bytes\n\n/TestCFF 99999 StartData\n" + use),
                ElementsAre(font));
}

TEST(FontFinder, TakesNoLineOfAType1ProgramForAFont) {
    const std::string block =
        "%%BeginResource: font /Plain\n%%BeginResource: font Other\n[/N1 /Fake 1 TZ\n%%EndResource\n";
    EXPECT_THAT(FontsOf(block + "[/N6 /Plain 0 TZ\n"),
                ElementsAre(FontInfo{"/N6", "Plain", FontKind::kType1}));
}

TEST(FontFinder, TakesNoTextOfAGlyphForAFont) {
    EXPECT_THAT(FontsOf(Type3Block("(\n[/N1 /Fake 1 TZ\n) Tj\n") + "[/Drawn /N9 -1 TZ\n"),
                ElementsAre(FontInfo{"/N9", "Drawn", FontKind::kType3}));
}

TEST(FontFinder, TakesNoTextOfThePageForAFont) {
    EXPECT_THAT(FontsOf("", "(\n[/N1 /Fake 1 TZ\n%%BeginPageSetup\n[/N1 /Fake 1 TZ\n) Tj\n"), IsEmpty());
}

TEST(FontFinder, PassesOverDataThatLooksLikeTheEndOfTheSetup) {
    EXPECT_THAT(FontsOf("%%EndPageSetup\n[/N12 /Helvetica 1 TZ\n%%EndPageSetup\n[/N13 /Courier 1 TZ\n"),
                ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice},
                            FontInfo{"/N13", "Courier", FontKind::kOfDevice}));
}

const std::string kComposing = "/N5 (Kanji-T0) /Identity-H [(Kanji)] /Adobe-Japan1 [ /Serif ]  0 0 TZzero\n";
const std::string kTrueTypeCIDFont =
    "%!PS-Adobe-3.0 Resource-CIDFont\n%%BeginResource: CIDFont Kanji\n/sfnts[<000100>]def\n"
    "currentdict end dup /CIDFontName get exch definefont pop\n";

std::string CompactCIDFont(const std::string& program) {
    const std::string count = std::to_string(program.size());
    return "/FontSetInit /ProcSet findresource begin\n%%BeingData:" + count + " Binary Bytes\n/TestCFF " +
           count + " StartData\n" + program + "\n%%EndData\n";
}
std::string CMapBlock(const std::string& program) {
    return "%%BeginResource: CMap (Own)\n" + program + "\n%%EndResource\n";
}

TEST(FontFinder, TakesACompositeFontWithoutAProgramForOneOfTheDevice) {
    EXPECT_THAT(FontsOf(kComposing), ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kOfDevice}));
    EXPECT_THAT(FontsOf("/N5-2 (K-T0) /N8 /CMap findRes  [(K)] /A-B [ /Serif ]  1 0 TZzero\n"),
                ElementsAre(FontInfo{"/N5-2", "K", FontKind::kOfDevice}));
}

TEST(FontFinder, TellsTheProgramsOfCompositeFontsApart) {
    EXPECT_THAT(FontsOf(kTrueTypeCIDFont + CMapBlock("begincmap") + "8 dict begin\n" + kComposing),
                ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kCIDTrueType}));
    EXPECT_THAT(FontsOf(CompactCIDFont("\n[/N1 /Fake 1 TZ\n") + kComposing),
                ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kCIDCompact}));
}

TEST(FontFinder, GivesAProgramToFontsOfItsOwnSortOnly) {
    const std::string use = "[/N12 /Helvetica 1 TZ\n";
    const FontInfo simple{"/N12", "Helvetica", FontKind::kOfDevice};
    EXPECT_THAT(FontsOf(kTrueTypeCIDFont + use), ElementsAre(simple));
    EXPECT_THAT(FontsOf(CompactCIDFont("cff") + use), ElementsAre(simple));
    EXPECT_THAT(FontsOf(kTrueTypeBlock + kComposing),
                ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kOfDevice}));
    EXPECT_THAT(FontsOf(kTrueTypeCIDFont + kComposing + kComposing.substr(0, 2) + "6" + kComposing.substr(3)),
                ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kCIDTrueType},
                            FontInfo{"/N6", "Kanji", FontKind::kOfDevice}));
}

TEST(FontFinder, TakesNoLineOfACMapForAFont) {
    const std::string lines =
        "[/N1 /Fake 1 TZ\n%%BeginResource: CIDFont Fake\n/FontType 3 def\n%%EndPageSetup\n" + kComposing +
        "%%BeingData:9999 Binary Bytes\n/TestCFF 9999 StartData";
    EXPECT_THAT(FontsOf(CMapBlock(lines)), IsEmpty());
    EXPECT_THAT(FontsOf(CompactCIDFont("cff") + CMapBlock(lines) + kComposing),
                ElementsAre(FontInfo{"/N5", "Kanji", FontKind::kCIDCompact}));
}

TEST(FontFinder, TakesNoLineThatOnlyResemblesACompositeFonts) {
    for (const char* line : {"/N5 (Kanji-T0) 0 TZ", "N5 (Kanji-T0) /H TZzero", "/N5 (Kanji) /H TZzero",
                             "/N5 Kanji-T0) /H TZzero", "/N5 (Kanji-T0 /H TZzero",
                             "/N5 (Kanji-T0) /H TZzero ", " TZzero", "/ TZzero", "/N5 ) (K-T0 TZzero"}) {
        EXPECT_THAT(FontsOf(line + "\n"s), IsEmpty()) << line;
    }
}

TEST(FontFinder, TakesNoLineThatOnlyResemblesAFonts) {
    for (const char* line :
         {"[/N12 /Helvetica TZ", "[/N12 Helvetica 1 TZ", "[N12 /Helvetica 1 TZ", "[/N12 x /Helvetica 1 TZ",
          "[/N12 /Helvetica 1 1 TZ", "[/N12 /Helvetica x TZ", "[/N12 /Helvetica 1TZ",
          "[/N12 /Helvetica 1 TZ ", "[[/N12 /Helvetica 1 TZ", " TZ", "[/N12 /H  TZ"}) {
        EXPECT_THAT(FontsOf(line + "\n"s), IsEmpty()) << line;
    }
}

TEST(FontFinder, FindsTheSameHoweverThePiecesAreCut) {
    const std::string page = kPageHead + CompactBlock("\n[/N1 /Fake 1 TZ\n") + "[/N7 /Compact -1 TZ\n" +
                             kType1Block + "[/N6 /Plain 0 TZ\n" + kPageEnd;
    for (std::size_t size = 1; size <= page.size(); ++size) {
        FontFinder finder;
        finder.BeginPage();
        TakeInPieces(finder, page, size);
        EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N7", "Compact", FontKind::kCompact},
                                                FontInfo{"/N6", "Plain", FontKind::kType1}))
            << size;
    }
}

TEST(FontFinder, TakesTheFontsOfTheDocumentsSetupButNothingOfTheProlog) {
    FontFinder finder;
    TakeInPieces(finder, "%!PS-Adobe-3.0\n[/N1 /Prolog 1 TZ\n" + kDocumentHead + "[/N12 /Helvetica 1 TZ\n" +
                             kDocumentEnd + "[/N1 /Between 1 TZ\n");
    TakePage(finder, "[/N13 /Courier 1 TZ\n");
    TakeInPieces(finder, "[/N1 /Trailer 1 TZ\n%%Trailer\n");
    EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice},
                                            FontInfo{"/N13", "Courier", FontKind::kOfDevice}));
}

TEST(FontFinder, ListsAFontOfSeveralPagesOnceInOrderOfFirstAppearance) {
    FontFinder finder;
    TakePage(finder, "[/N13 /Courier 1 TZ\n[/N12 /Helvetica 1 TZ\n");
    TakePage(finder, "[/N12 /Helvetica 1 TZ\n[/N14 /Courier 1 TZ\n[/N13 /Courier 1 TZ\n");
    EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N13", "Courier", FontKind::kOfDevice},
                                            FontInfo{"/N12", "Helvetica", FontKind::kOfDevice},
                                            FontInfo{"/N14", "Courier", FontKind::kOfDevice}));
}

TEST(FontFinder, ForgetsTheFontsOfADroppedPageUntilAnotherPageHasThem) {
    FontFinder finder;
    TakePage(finder, "[/N12 /Helvetica 1 TZ\n");
    finder.BeginPage();
    TakeInPieces(finder, kPageHead + "[/N12 /Helvetica 1 TZ\n[/N13 /Courier 1 TZ\n" +
                             "%%BeginResource: font /Plain\nbroken o");
    finder.DropPage();
    EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice}));
    TakePage(finder, "[/N13 /Courier 1 TZ\n");
    EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N12", "Helvetica", FontKind::kOfDevice},
                                            FontInfo{"/N13", "Courier", FontKind::kOfDevice}));
}

TEST(FontFinder, StartsAnewBehindAPageThatBrokeOffWithinAProgram) {
    FontFinder finder;
    finder.BeginPage();
    TakeInPieces(finder, kPageHead + "%%BeginResource: font /Compact\n%%BeingData:99999 Binary Bytes\n" +
                             "/TestCFF 99999 StartData\nbroken o");
    finder.DropPage();
    TakePage(finder, "[/N13 /Courier 1 TZ\n");
    EXPECT_THAT(finder.Fonts(), ElementsAre(FontInfo{"/N13", "Courier", FontKind::kOfDevice}));
}

}  // namespace
}  // namespace zorvan::cli
