// CMaps: those of the file, whatever their programs do, and what is known of the device's.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/composite_squares.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

/// A program of the file's, as the library writes it.
std::string OwnCMap(const std::string& program, const std::string& resource = "N9") {
    return "%%BeginResource: CMap (Own)\n/" + resource + " " + std::to_string(program.size()) +
           " StartCMap\n" + program + "\n%%EndResource\n";
}

const std::string kMixedCodes =
    "2 begincodespacerange\n<00> <80>\n<8140> <9ffc>\nendcodespacerange\n"
    "3 begincidrange\n<20> <20> 0\n<41> <41> 1\n<8141> <8142> 1\nendcidrange\n";

/// The squares over a CMap of the file.
std::string FontOver(const std::string& program, const std::string& name = "/N5") {
    return CIDFont() + OwnCMap(program) + Composing({.name = name, .cmap = "/N9 /CMap findRes "});
}

std::string MixedFont() {
    return FontOver(CMapProgram("Mixed", kMixedCodes));
}

TEST(CMap, OfTheDocumentTellsCodesOfAllLengths) {
    const Picture page = Shown(MixedFont(), "<418142> Tj");
    EXPECT_TRUE(IsSquare(page, 10, 10, 12));
    EXPECT_TRUE(IsSquare(page, 30, 10, 6));
}

TEST(CMap, TellsWhereSpacingGoes) {
    const std::string setup = MixedFont();
    for (const std::string mode : {"0 Tr ", "2 Tr 0 w ", "3 Tr 30 0 Td -30 0 Td "}) {
        const Picture spaced = Shown(setup, mode + "3 Tc 5 Tw <41208142> Tj 0 Tr <41> Tj");
        EXPECT_TRUE(IsSquare(spaced, 74, 10, 12)) << mode;  // 10 + 23 + 28 + 13
    }
    EXPECT_TRUE(IsSquare(Shown(setup, "3 Tc 5 Tw <41208142> Tj"), 61, 10, 6));
}

TEST(CMap, TakesTheCodesOfTheOneThatItUses) {
    const std::string derived = CMapProgram("Mixed", "/Base usecmap\n1 begincidchar\n<42> 2\nendcidchar\n");
    const std::string setup = OwnCMap(CMapProgram("Base", kMixedCodes), "N8") + FontOver(derived);
    const Picture page = Shown(setup, "5 Tw <4220814142> Tj");
    EXPECT_TRUE(IsSquare(page, 10, 10, 6));
    EXPECT_TRUE(IsSquare(page, 45, 10, 12));  // 10 + 10 + 25
    EXPECT_TRUE(IsSquare(page, 65, 10, 6));
}

/// What damages a program: none of these defines a CMap.
std::vector<std::string> DamagedCMaps() {
    const std::string whole = CMapProgram("Mixed", kMixedCodes);
    std::string unread;  // more than a device reads ahead
    for (int i = 0; i < 20000; ++i) {
        unread += "nosuchoperator\n";
    }
    const std::string ends = "end end end end end end end end end end end end ";
    return {
        CMapProgram("Mixed", "nosuchoperator\n"),
        CMapProgram("Mixed", "1 begincidrange <00> (x endcidrange\n"),
        CMapProgram("Mixed", "/NoSuch usecmap 5 stop\n"),
        CMapProgram("Mixed", ends),
        CMapProgram("Mixed", "1 2 3 5 dict begin 5 dict begin 5 dict begin ]\n"),
        "nosuchoperator " + whole,
        "\xEF\xBB\xBF" + whole,
        whole.substr(whole.find("begincmap")),
        "% begincmap\nnosuchoperator",
        "(" + whole,
        "{ " + whole,
        ends + whole,
        "7 dict begin 1 2 3 " + ends + "exit " + whole,
        "currentfile closefile " + whole,
        "currentfile closefile " + unread,
        "nosuchoperator " + unread,
        "currentfile flushfile " + whole,
    };
}

TEST(CMap, ThatIsDamagedIsReplacedByAnIdentity) {
    for (const std::string& program : DamagedCMaps()) {
        const std::string setup = FontOver(program);
        EXPECT_EQ(PrintedBy(setup, "BT /N5 20 Tf <00010002> Tj ET count = countdictstack ="), "0\n8\n")
            << program.substr(0, 80);
        EXPECT_TRUE(IsSquare(Shown(setup, "<00010001> Tj"), 30, 10, 12)) << program.substr(0, 80);
    }
}

TEST(CMap, MayHaveMoreBehindItsEnd) {
    const std::string whole = CMapProgram("Mixed", kMixedCodes);
    for (const std::string more : {"%%EndResource\n%%EOF\nnosuchoperator\n", "1 2 5 dict begin", "end end",
                                   "\x04", "% a comment", "(", "1 1 100000 {} for"}) {
        const std::string setup = FontOver(whole + more);
        EXPECT_EQ(PrintedBy(setup, "count = countdictstack ="), "0\n8\n") << more;
        EXPECT_TRUE(IsSquare(Shown(setup, "<418142> Tj"), 30, 10, 6)) << more;
    }
}

TEST(CMap, LeavesTheStacksAsTheyWere) {
    for (const std::string program : {"1 2 3 9 dict begin", "1 2 3 nosuchoperator", "[ (", "end end end"}) {
        const std::string setup = "countdictstack 5 " + OwnCMap(program) + "= countdictstack eq =\n";
        EXPECT_EQ(PrintedBy(setup, ""), "5\ntrue\n") << program;
    }
}

TEST(CMap, MayHaveTheLineInItThatEndsAResource) {
    const Picture page =
        Shown(FontOver(CMapProgram("Mixed", "%%EndResource\n" + kMixedCodes)), "<418142> Tj");
    EXPECT_TRUE(IsSquare(page, 10, 10, 12));
    EXPECT_TRUE(IsSquare(page, 30, 10, 6));
}

TEST(CMap, IsThereForEveryFontWhateverItCallsItself) {
    const std::string second = Composing({.name = "/N6", .cmap = "/N9 /CMap findRes "});
    for (const std::string name : {"Mixed", "Identity-H", "N9"}) {
        const std::string setup = FontOver(CMapProgram(name, kMixedCodes)) + second;
        EXPECT_TRUE(IsSquare(Shown(setup, "<418142> Tj"), 30, 10, 6)) << name;
        EXPECT_TRUE(IsSquare(Shown(setup, "/N6 20 Tf <418142> Tj"), 30, 10, 6)) << name;
    }
}

TEST(CMap, OfTheFileLeavesTheDevicesOfItsNameToOthers) {
    const std::string setup = FontOver(CMapProgram("Identity-H", kMixedCodes), "/N6") + Composing({});
    EXPECT_TRUE(IsSquare(Shown(setup, "<00010001> Tj"), 30, 10, 12));
}

// The CMap that the device loads for it is defined as usual.
TEST(CMap, MayUseOneOfTheDevice) {
    const std::string program = CMapProgram("Mixed", "/Identity-H usecmap\n");
    EXPECT_TRUE(IsSquare(Shown(FontOver(program), "<00010001> Tj"), 30, 10, 12));
    EXPECT_EQ(PrintedBy(FontOver(program),
                        "/Identity-H /CMap findresource /CMapName get =\n"
                        "/N9 /CMap findresource /CMapName get ="),
              "Identity-H\nMixed\n");
}

TEST(CMap, OfTheDeviceIsKnownByItsName) {
    const std::string codes =
        "[/Identity-H /UniJIS-UCS2-H /90ms-RKSJ-V /EUC-H /GBK-EUC-H /ETen-B5-H /UniGB-UTF16-V]\n"
        "{1 dict dup /CMapName 4 -1 roll put CIDKit /CodesOf get exec type =} forall";
    EXPECT_EQ(PrintedBy("", codes),
              "integertype\nintegertype\narraytype\narraytype\narraytype\narraytype\narraytype\n");
}

// Its own CMaps are the library's, but a device need not take them.
TEST(CMap, OfTheLibraryThatTheDeviceRefusesIsPassedOver) {
    const std::string setup = CIDFont() + "%%BeginResource: CMap (CMap-D12)\n" +
                              CMapProgram("CMap-D12", "nosuchoperator (\n") + "%%EndResource\n" +
                              Composing({});
    EXPECT_EQ(PrintedBy(setup, "count = countdictstack ="), "0\n8\n");
    EXPECT_TRUE(IsSquare(Shown(setup, "<00010001> Tj"), 30, 10, 12));
}

}  // namespace
}  // namespace zorvan::test
