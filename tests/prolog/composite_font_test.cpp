// Composite fonts: CID-keyed fonts, what stands in for missing ones, and text across and down.
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/composite_squares.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

/// A compact set of the same glyphs under the name Compact, .notdef, A and B; and one with 2,048 units.
const std::string kNamedSet =
    "010004010001010108436f6d70616374000101010f8b8bf8ecf8ec05b20f8bd812b61100000000010022010003010104"
    "101cfa7c0efa7c8b16f8ecf8ecfcec070ef8888b16f7c0f7c0fbc0070e";
const std::string kFineNamedSet =
    "010004010001010108436f6d70616374000101012c1ea00048828125ff8b8b1ea00048828125ff8b8b0c078b8b1d0000"
    "04cc1d000004cc05cf0f8bf70312d3110000000001002201000301010515211c08000e1c08008b161c04cc1c04cc1cfb"
    "34070efa948b16f8faf8fafcfa070e";

/// The first of them, CID-keyed.
const std::string kNumberedSet =
    "010004010001010108436f6d70616374000102000100321c01871c01888b0c1e8b8bf8ecf8ec051d000000030c221d00"
    "000061111d000000830f1d000000880c251d000000900c2400020101060e41646f62654964656e746974790000010022"
    "010003010104101cfa7c0efa7c8b16f8ecf8ecfcec070ef8888b16f7c0f7c0fbc0070e02000100010300010000000003"
    "000101010c1d000000001d0000008312";

/// The CMap that the library writes for an Identity encoding of the squares.
std::string GeneratedCMap(const std::string& name, int mode = 0) {
    const std::string lines =
        "1 begincodespacerange\n<0000> <ffff>\nendcodespacerange\n2 begincidrange\n<0000> <0000> 0\n"
        "<0001> <0001> 1\nendcidrange\n";
    return "%%BeginResource: CMap (" + name + ")\n" + CMapProgram(name, lines, mode) + "%%EndResource\n";
}

/// The composite font's dictionary, which stands in the document though nothing looks it up.
std::string Type0(const std::string& font, const std::string& cmap) {
    return "8 dict begin\n/FontName /" + font +
           "-T0 def\n/FontType 0 def\n/FMapType 9 def\n/WMode 0 def\n/PaintType 0 def\n"
           "/FontMatrix [1 0 0 1 0 0] def\n/Encoding [0] def\n/CMap dup /" +
           cmap + " exch findresource def\n/FDepVector [/" + font +
           " findfont] def\ncurrentdict end dup /FontName get exch definefont pop\n";
}

const Line kDown{.cmap = "/Identity-V ", .mode = 1};

/// All that the library writes for the squares with an Identity encoding.
std::string Font(const Line& line = {}) {
    return CIDFont(line.font) + GeneratedCMap("CMap-D12", line.mode) + Type0(line.font, "CMap-D12") +
           Composing(line);
}

std::string Compact(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    const std::string count = std::to_string(bytes.size());
    return "/FontSetInit /ProcSet findresource begin\n%%BeginingData:" + count + " Binary Bytes\n/TestCFF " +
           count + " StartData\n" + bytes + "\n%%EndData\n";
}

bool IsBlank(const Picture& page) {
    return page == Painted("");
}

TEST(CompositeFont, ShowsAGlyphForEachPairOfBytes) {
    const Picture page = Shown(Font(), "<000100020001> Tj");
    EXPECT_TRUE(IsSquare(page, 10, 10, 12));
    EXPECT_TRUE(IsSquare(page, 30, 10, 6));
    EXPECT_TRUE(IsSquare(page, 40, 10, 12));
}

// The generated CMap leaves out the last code but one, so <0002> would show nothing.
TEST(CompositeFont, IsMadeOfItsOperandsNotOfTheDictionaryBeforeIt) {
    EXPECT_TRUE(IsSquare(Shown(Font(), "<0002> Tj"), 10, 10, 6));
    EXPECT_TRUE(IsSquare(Shown(CIDFont() + Composing({}), "<0002> Tj"), 10, 10, 6));
}

TEST(CompositeFont, LeavesTheStacksAsTheyWere) {
    const std::string heights = "count = countdictstack =\n";
    const std::string setup = CIDFont() + heights + GeneratedCMap("CMap-D12") + heights +
                              Type0("Squares", "CMap-D12") + heights + Composing({}) + heights +
                              Compact(kNamedSet) + Composing({.name = "/N6", .font = "Compact"}) + heights;
    EXPECT_EQ(PrintedBy(setup, ""), "0\n8\n0\n8\n0\n8\n0\n8\n0\n8\n");
}

TEST(CompositeFont, MayShareItsNameWithOneThatWritesDown) {
    Line down = kDown;
    down.name = "/N6";
    const std::string setup = Font() + Font(down);
    EXPECT_TRUE(IsSquare(Shown(setup, "<00010001> Tj"), 30, 10, 12));
    EXPECT_TRUE(IsSquare(Shown(setup, "/N6 20 Tf 50 80 Td <00010001> Tj"), 50, 52, 12));
    EXPECT_TRUE(IsSquare(Shown(Font(down) + Font(), "<00010001> Tj"), 30, 10, 12));
}

// A device may keep the places of glyphs by the program.
TEST(CompositeFont, WritesAcrossAndDownWithOneProgramOnOnePage) {
    Line across{.font = "Compact"};
    Line down{.name = "/N6", .font = "Compact", .cmap = "/Identity-V ", .mode = 1};
    const std::string compact = Compact(kNamedSet) + Composing(across) + Compact(kNamedSet) + Composing(down);
    across.font = down.font = "Squares";
    for (const std::string& setup : {compact, Font(across) + Font(down)}) {
        const Picture page = Shown(setup,
                                   "<00010001> Tj /N6 20 Tf 1 0 0 1 60 90 Tm <00010001> Tj "
                                   "/N5 20 Tf 1 0 0 1 10 50 Tm <00010001> Tj");
        EXPECT_TRUE(IsSquare(page, 30, 10, 12));
        EXPECT_TRUE(IsSquare(page, 50, 52, 12));
        EXPECT_TRUE(IsSquare(page, 30, 50, 12));
    }
}

TEST(CompositeFont, MayBeDefinedTwice) {
    EXPECT_TRUE(IsSquare(Shown(Font() + Font(), "<00010001> Tj"), 30, 10, 12));
    EXPECT_TRUE(IsSquare(Shown(CIDFont("Squares", "<000000020001>\n") + Composing({}) + Font(), "<0001> Tj"),
                         10, 10, 12));
}

TEST(CompositeFont, TakesAnIdentityForACMapThatTheDeviceLacks) {
    for (const std::string cmap : {"/NoSuchCMap-H ", "null ", "/NoSuch /CMap findRes "}) {
        Line line{.cmap = cmap};
        EXPECT_TRUE(IsSquare(Shown(CIDFont() + Composing(line), "<00010001> Tj"), 30, 10, 12)) << cmap;
        line.mode = 1;
        EXPECT_TRUE(IsSquare(Shown(CIDFont() + Composing(line), "<00010001> Tj", "50 80"), 40, 42, 12))
            << cmap;
    }
    EXPECT_EQ(PrintedBy("",
                        "/NoSuch-H /CMap findresource /CMapName get =\n"
                        "/NoSuch-V /CMap findresource /CMapName get ="),
              "Identity-H\nIdentity-V\n");
}

TEST(CompositeFont, SurvivesADeviceThatReadsNoCMaps) {
    const Outcome outcome = PrologJob()
                                .Before(
                                    "true setglobal /CIDInit /ProcSet undefineresource false setglobal\n"
                                    "/CIDInit /ProcSet resourcestatus {(there) =} if\n")
                                .Page("BT /N5 20 Tf <0001> Tj ET count = countdictstack =", Font())
                                .Run();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text, "0\n8\n");
}

TEST(CompositeFont, SurvivesOperandsThatAreMissingOrWrong) {
    for (const std::string line :
         {"TZzero", "/N5 TZzero", "1 2 3 4 5 6 7 8 TZzero", "null null null null null null null null TZzero",
          "/N5 (x) /Identity-H [] /A [] 0 0 TZzero", "/N5 (x) /Identity-H [5 ()] /A [ /Serif ] 0 0 TZzero"}) {
        EXPECT_EQ(PrintedBy(line + "\n", "BT /N5 20 Tf <0001> Tj ET count = countdictstack ="), "0\n8\n")
            << line;
    }
}

// CID-keyed fonts.

TEST(CIDFont, IsFoundByItsName) {
    EXPECT_EQ(PrintedBy(CIDFont(), "/Squares findfont /CIDFontName get = /NoSuch findfont /FontName get ="),
              "Squares\nCourier\n");
}

TEST(CIDFont, HasWhatADeviceNeeds) {
    EXPECT_EQ(PrintedBy(CIDFont(),
                        "/Squares /CIDFont findresource dup /CIDMap get type = dup /FontBBox get ==\n"
                        "dup /GDBytes get = /CIDCount get ="),
              "stringtype\n[0 0 0 0]\n2\n3\n");
}

TEST(CIDFont, MayHaveItsMapInPiecesOrNone) {
    const Picture pieces = Shown(CIDFont("Squares", "<00000001>\n<0002>\n") + Composing({}), "<00010002> Tj");
    EXPECT_TRUE(IsSquare(pieces, 10, 10, 12));
    EXPECT_TRUE(IsSquare(pieces, 30, 10, 6));
    EXPECT_TRUE(IsBlank(Shown(CIDFont("Squares", "") + Composing({}), "<00010002> Tj")));
}

TEST(CIDFont, ThatIsDamagedShowsNothing) {
    std::string font = CIDFont();
    font.replace(font.find("/sfnts[<"), 80, "/sfnts[<");
    EXPECT_EQ(PrintedBy(font + Composing({}), "BT /N5 20 Tf <00010002> Tj ET count = countdictstack ="),
              "0\n8\n");
    const std::string bare =
        "/CIDInit /ProcSet findresource begin 5 dict begin /CIDFontName /Squares def\n"
        "/CIDFontType 2 def currentdict end dup /CIDFontName get exch definefont pop\n";
    EXPECT_EQ(PrintedBy(bare + Composing({}), "BT /N5 20 Tf <00010002> Tj ET count = countdictstack ="),
              "0\n8\n");
}

// Fonts that are not in the document.

/// A device's font whose glyphs are squares of so many tenths of the size.
std::string DeviceFont(const std::string& name, const std::string& ordering, int tenths) {
    const std::string side = "." + std::to_string(tenths);
    return "/" + name + " << /CIDFontType 1 /CIDFontName /" + name +
           " /CIDSystemInfo << /Registry (Adobe) /Ordering (" + ordering +
           ") /Supplement 0 >> /FontBBox [0 0 1 1] /FontMatrix [1 0 0 1 0 0]\n"
           "/BuildGlyph {pop pop 1 0 0 0 1 1 setcachedevice 0 0 " +
           side + " " + side + " rectfill} >> /CIDFont defineresource pop\n";
}

/// A page with a font that nobody has, on a device with these.
Picture Substituted(const std::string& fonts, Line line, const std::string& setup = "") {
    line.font = "Missing";
    return PrologJob()
        .Before(fonts)
        .Page("BT /N5 20 Tf 10 10 Td <00C800C8> Tj ET", setup + Type0("Missing", "CMap-D9") + Composing(line))
        .Paint()
        .at(0);
}

const Line kJapanese{.collection = "/Adobe-Japan1"};

TEST(MissingFont, IsReplacedByOneOfItsStyle) {
    const std::string fonts =
        DeviceFont("Device-Gothic", "Japan1", 3) + DeviceFont("Device-Mincho", "Japan1", 6);
    Line line = kJapanese;
    EXPECT_TRUE(IsSquare(Substituted(fonts, line), 30, 10, 12));
    line.style = "SansSerif";
    EXPECT_TRUE(IsSquare(Substituted(fonts, line), 30, 10, 6));
}

TEST(MissingFont, IsReplacedByOneOfAnotherStyleSooner) {
    EXPECT_TRUE(IsSquare(Substituted(DeviceFont("Device-Gothic", "Japan1", 3), kJapanese), 30, 10, 6));
}

TEST(MissingFont, IsReplacedByTheOneThatTheDeviceHasForTheCollection) {
    EXPECT_TRUE(IsSquare(
        Substituted(DeviceFont("Device-Mincho", "Japan1", 3) + DeviceFont("Adobe-Japan1", "Japan1", 6),
                    kJapanese),
        30, 10, 12));
}

TEST(MissingFont, IsNotReplacedByOneOfAnotherCollection) {
    EXPECT_TRUE(IsBlank(Substituted(DeviceFont("Device-Mincho", "Korea1", 6), kJapanese)));
    EXPECT_TRUE(IsBlank(Substituted(DeviceFont("Device-Mincho", "Identity", 6), {})));
}

TEST(MissingFont, IsNotReplacedByOneOfTheDocument) {
    EXPECT_TRUE(IsBlank(Substituted("", kJapanese, CIDFont("Device-Mincho", "<000000010002>\n", "Japan1"))));
}

TEST(MissingFont, IsLookedForOnceInADocument) {
    const std::string telling =
        "true setglobal /CIDFont /Category findresource dup length dict copy\n"
        "dup /ResourceForAll {(looked) = pop pop pop} put /CIDFont exch /Category defineresource pop\n"
        "false setglobal\n";
    Line line = kJapanese;
    line.font = "Missing";
    const std::string setup = Composing(line);
    const Outcome outcome = PrologJob().Before(telling).Page("", setup).Page("(next) =", setup).Run();
    EXPECT_EQ(outcome.text, "looked\nnext\n");
}

/// The squares as a font of the device.
std::string DeviceProgram(const std::string& name) {
    const std::string definition = "definefont pop\n";
    std::string font = CIDFont(name, "<000000010002>\n", "Japan1");
    return font.erase(font.size() - definition.size()) + "/CIDFont defineresource pop end\n";
}

// What a file says of the places of glyphs, or does not say, holds for fonts that it does not carry, too.
TEST(MissingFont, WritesDownAsAFontOfTheDocumentDoes) {
    for (const std::string name : {"Adobe-Japan1", "Device-Gothic", "Missing"}) {
        const Line down{.font = "Missing", .cmap = "/Identity-V ", .collection = "/Adobe-Japan1", .mode = 1};
        const Picture page = PrologJob()
                                 .Before(DeviceProgram(name))
                                 .Page("BT /N5 20 Tf 50 80 Td <000100020001> Tj ET", Composing(down))
                                 .Paint()
                                 .at(0);
        EXPECT_TRUE(IsSquare(page, 40, 62, 12)) << name;
        EXPECT_TRUE(IsSquare(page, 45, 42, 6)) << name;
        EXPECT_TRUE(IsSquare(page, 40, 22, 12)) << name;
    }
}

// The metrics that a device calls with are w0x w0y llx lly urx ury w1x w1y vx vy, and the CID. Some tell the
// step downwards in place of the width.
TEST(MissingFont, HasItsPlacesFromTheWidthOrFromTheSize) {
    const Line down{.font = "Missing", .cmap = "/Identity-V ", .collection = "/Adobe-Japan1", .mode = 1};
    const auto placed = [&](const std::string& metrics) {
        return PrologJob()
            .Before(DeviceProgram("Adobe-Japan1"))
            .Page(metrics +
                      " 0 0 1 1 0 0 0 0 34 /N5 /CIDFont findresource /CDevProc get exec\n"
                      "10 {=} repeat",
                  Composing(down))
            .Run()
            .text;
    };
    EXPECT_EQ(placed(".6 0"), "0.88\n0.3\n-1\n0\n1\n1\n0\n0\n0\n0.6\n");
    EXPECT_EQ(placed("0 -1.05"), "0.88\n0.5\n-1\n0\n1\n1\n0\n0\n-1.05\n0\n");
}

// A font that differs from the device's by its places must not pass for it.
TEST(MissingFont, WritesDownWithoutTheDevicesXUID) {
    std::string font = DeviceProgram("Adobe-Japan1");
    font.replace(font.find("20 dict begin\n"), 14, "20 dict begin\n/XUID [1000000 1] def\n");
    const Line down{.font = "Missing", .cmap = "/Identity-V ", .collection = "/Adobe-Japan1", .mode = 1};
    EXPECT_EQ(
        PrologJob()
            .Before(font)
            .Page(
                "/N5 /CIDFont findresource /XUID known =\n/Adobe-Japan1 /CIDFont findresource /XUID known =",
                Composing(down))
            .Run()
            .text,
        "false\ntrue\n");
}

/// A page with text in a font that nobody has.
Picture StoodIn(const Line& line, const std::string& content) {
    Line missing = line;
    missing.font = "Missing";
    return Shown(
        "/Times-Roman findfont pop /Helvetica findfont pop /Courier findfont pop\n" + Composing(missing),
        content);
}

// In these collections CID 34 is A and CID 1 a blank; half as wide, A is the 33rd CID behind a blank.
TEST(MissingFont, ShowsLatinLettersInATextFont) {
    for (const std::string collection : {"Adobe-Japan1", "Adobe-GB1", "Adobe-CNS1", "Adobe-Korea1"}) {
        EXPECT_EQ(StoodIn({.collection = "/" + collection}, "<00220001005F> Tj"),
                  StoodIn({}, "/Times-Roman 20 Tf (A ~) Tj"))
            << collection;
        EXPECT_EQ(StoodIn({.collection = "/" + collection, .style = "SansSerif"}, "<0022> Tj"),
                  StoodIn({}, "/Helvetica 20 Tf (A) Tj"))
            << collection;
    }
}

TEST(MissingFont, ShowsHalfWideLatinLettersAtEqualSteps) {
    const Picture letters = StoodIn({}, "/Courier 16.6666667 Tf (Ai) Tj");
    EXPECT_EQ(StoodIn(kJapanese, "<0108 0130> Tj"), letters);                        // 231 + 33, 231 + 73
    EXPECT_EQ(StoodIn({.collection = "/Adobe-GB1"}, "<034E 0376> Tj"), letters);     // 814 + 32, 814 + 72
    EXPECT_EQ(StoodIn({.collection = "/Adobe-CNS1"}, "<3571 3599> Tj"), letters);    // 13648 + 33
    EXPECT_EQ(StoodIn({.collection = "/Adobe-Korea1"}, "<1FBF 1FE7> Tj"), letters);  // 8094 + 33
}

TEST(MissingFont, ShowsLatinLettersDownwards) {
    const Picture page = StoodIn({.cmap = "/Identity-V ", .collection = "/Adobe-GB1", .mode = 1},
                                 "1 0 0 1 50 80 Tm <00220022> Tj");
    EXPECT_EQ(page, StoodIn({},
                            "/Times-Roman 20 Tf 1 0 0 1 42.78 62.4 Tm (A) Tj "  // A is 722 wide
                            "1 0 0 1 42.78 42.4 Tm (A) Tj"));
}

TEST(MissingFont, ShowsNothingButTakesItsPlace) {
    const Picture page =
        Shown(Font({.name = "/N6"}) + Composing({.font = "Missing"}), "<00010001> Tj /N6 20 Tf <0001> Tj");
    EXPECT_TRUE(IsSquare(page, 50, 10, 12));
    EXPECT_EQ(page.At(11, 11), kWhite);
    const Picture down =
        Shown(Font({.name = "/N6"}) + Composing({.font = "Missing", .cmap = "/Identity-V ", .mode = 1}),
              "<00010001> Tj /N6 20 Tf <0001> Tj", "10 80");
    EXPECT_TRUE(IsSquare(down, 10, 40, 12));
}

// Compact programs.

TEST(CompactCIDFont, ShowsItsGlyphsByNumber) {
    for (const std::string& set : {kNumberedSet, kNamedSet, kFineNamedSet}) {
        const Picture page = Shown(Compact(set) + Composing({.font = "Compact"}), "<000100020001> Tj");
        EXPECT_TRUE(IsSquare(page, 10, 10, 12));
        EXPECT_TRUE(IsSquare(page, 30, 10, 6));
        EXPECT_TRUE(IsSquare(page, 40, 10, 12));
    }
}

TEST(CompactCIDFont, IsFoundWhateverTheDocumentCallsASetWithNames) {
    EXPECT_TRUE(
        IsSquare(Shown(Compact(kNamedSet) + Composing({.font = "Outer"}), "<00010001> Tj"), 30, 10, 12));
}

TEST(CompactCIDFont, WritesDown) {
    for (const std::string& set : {kNumberedSet, kNamedSet, kFineNamedSet}) {
        const Picture page =
            Shown(Compact(set) + Composing({.font = "Compact", .cmap = "/Identity-V ", .mode = 1}),
                  "<00010002> Tj", "50 80");
        EXPECT_TRUE(IsSquare(page, 40, 62, 12));  // 50 - 20 / 2, 80 - 0.88 * 20
        EXPECT_TRUE(IsSquare(page, 45, 42, 6));   // 50 - 10 / 2, 20 further down
    }
}

TEST(CompactCIDFont, LeavesNamedSetsToSimpleFonts) {
    const std::string setup =
        Compact(kNamedSet) + "[/N5 /Compact -1 TZ\n" + Composing({.name = "/N6", .font = "X"});
    EXPECT_TRUE(IsSquare(Shown(setup, "(A) Tj"), 10, 10, 12));
    EXPECT_TRUE(IsBlank(Shown(setup, "/N6 20 Tf <0001> Tj")));
}

TEST(CompactCIDFont, ThatIsDamagedShowsNothing) {
    for (const std::string& set : {kNamedSet, kNumberedSet}) {
        for (const std::size_t size : {2U, 20U, 60U, 90U, 120U}) {
            const std::string setup = Compact(set.substr(0, size)) + Composing({.font = "Compact"});
            EXPECT_EQ(PrintedBy(setup, "BT /N5 20 Tf <0001> Tj ET count = countdictstack ="), "0\n8\n")
                << size;
        }
    }
}

// Spacing across and down.

TEST(CompositeText, SpacesEveryGlyphAndNoWord) {
    const Picture page = Shown(Font(), "5 Tc 30 Tw <000100200001> Tj");
    EXPECT_TRUE(IsSquare(page, 10, 10, 12));
    EXPECT_TRUE(IsSquare(page, 60, 10, 12));  // glyph 0 is 1,000 wide
    EXPECT_TRUE(IsSquare(Shown(Font(), "5 Tc 50 Tz <00010001> Tj 100 Tz <0002> Tj"), 35, 10, 6));
}

TEST(CompositeText, PassesOverHalfACode) {
    EXPECT_TRUE(IsSquare(Shown(Font(), "<000100> Tj <0002> Tj"), 30, 10, 6));
    EXPECT_TRUE(IsSquare(Shown(Font(), "<00> Tj 5 Tc <00> Tj <0002> Tj"), 10, 10, 6));
}

TEST(VerticalText, GoesDownWithItsGlyphsCentred) {
    const Picture page = Shown(Font(kDown), "<000100020001> Tj", "50 80");
    EXPECT_TRUE(IsSquare(page, 40, 62, 12));
    EXPECT_TRUE(IsSquare(page, 45, 42, 6));
    EXPECT_TRUE(IsSquare(page, 40, 22, 12));
}

// PDF Reference, text space details: ty = (w1 - Tj / 1000) * Tfs + Tc + Tw, and only tx is scaled.
TEST(VerticalText, SpacesAndDisplacesUpwards) {
    EXPECT_TRUE(IsSquare(Shown(Font(kDown), "-5 Tc <00010001> Tj", "50 80"), 40, 37, 12));
    EXPECT_TRUE(IsSquare(Shown(Font(kDown), "[<0001> 250 <0001>] TJ", "50 80"), 40, 37, 12));
    EXPECT_TRUE(IsSquare(Shown(Font(kDown), "1 Tc [<0001> -100 <0001>] TJ", "50 80"), 40, 45, 12));
}

TEST(VerticalText, IsScaledAcrossAndRaised) {
    const Picture page = Shown(Font(kDown), "200 Tz -5 Tc 4 Ts [<0001> 250 <0001>] TJ", "50 80");
    EXPECT_EQ(page.At(31, 67), kBlack);  // 50 - 2 * 10, 62 + 4
    EXPECT_EQ(page.At(52, 67), kBlack);
    EXPECT_EQ(page.At(52, 64), kWhite);
    EXPECT_EQ(page.At(31, 37), kBlack);  // 20 + 5 + 5 further down
    EXPECT_EQ(page.At(52, 47), kBlack);
    EXPECT_EQ(page.At(31, 50), kWhite);
}

TEST(VerticalText, HoldsInEveryMode) {
    for (int mode = 0; mode < 8; ++mode) {
        const Picture page =
            Shown(Font(kDown),
                  "0 w " + std::to_string(mode) + " Tr -5 Tc [<0001> 250 <0001>] TJ 0 Tr <0001> Tj", "50 95");
        EXPECT_TRUE(IsSquare(page, 40, 22, 12)) << mode;  // 95 - 17.6 - 30 - 25
    }
}

TEST(VerticalText, IsForgottenWithTheNextFont) {
    const std::string setup = Font(kDown) + "[/N7 /Courier 1 TZ\n";
    EXPECT_EQ(PrintedBy(setup,
                        "BT /N5 20 Tf PDFVars /Vertical get = /N7 20 Tf PDFVars /Vertical get =\n"
                        "PDFVars /CodeLength get = ET"),
              "true\nfalse\n1\n");
}

}  // namespace
}  // namespace zorvan::test
