// The font of squares.
#include "prolog/composite_squares.h"

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

/// A TrueType file without glyph names: glyph 1 is a square of 600 units and 1,000 wide, glyph 2 one of 300
/// units and 500 wide, both above and to the right of the origin; glyph 0 is empty.
const std::string kSquareFile =
    "000100000006004000020020676c7966492e65ac000000fc0000003068656164616e43380000006c0000003668686561"
    "05dd04b4000000a400000024686d747809c40000000000e80000000c6c6f6361000c0018000000f4000000086d617870"
    "00050006000000c8000000200001000000010000c291be0c5f0f3cf5000303e800000000000000000000000000000000"
    "00000000025802580000000300020000000000000001000003840000000003e8000000c8025800010000000000000000"
    "0000000000000003000100000003000400010000000000020000000000000000000000000000000003e8000003e80000"
    "01f4000000000000000c001800010000000002580258000300003111211102580258fda8000100000000012c012c0003"
    "000031112111012c012cfed4";

}  // namespace

std::string SystemInfo(const std::string& ordering) {
    return "/CIDSystemInfo 3 dict dup begin\n/Registry (Adobe) def\n/Ordering (" + ordering +
           ") def\n/Supplement 0 def\nend def\n";
}

std::string CIDFont(const std::string& name, const std::string& map, const std::string& ordering) {
    return "%!PS-Adobe-3.0 Resource-CIDFont\n%%documentNeededResources: procset CIDInit\n"
           "%%IncludeResource: procset CIDInit\n%%BeginResource: CIDFont " +
           name + "\n%%Version: 1\n/CIDInit /ProcSet findresource begin\n20 dict begin\n/CIDFontName /" +
           name + " def\n/CIDFontType 2 def\n" + SystemInfo(ordering) +
           "/FontBBox [0 0 600 600] def\n/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/FontType 42 def\n"
           "/Encoding 256 array def\n/CharStrings 2 dict dup begin\n/.notdef 0 def\nend readonly def\n"
           "/GDBytes 2 def\n/CIDCount 3 def\n/CIDMap [" +
           map + "]def\n/sfnts[<" + kSquareFile +
           "00>]def\ncurrentdict end dup /CIDFontName get exch definefont pop\n";
}

std::string CMapProgram(const std::string& name, const std::string& lines, int mode) {
    return "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n" + SystemInfo("Identity") +
           "/CMapName /" + name + " def\n/CMapType 1 def\n/WMode " + std::to_string(mode) + " def\n" + lines +
           "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

std::string Composing(const Line& line) {
    return line.name + " (" + line.font + "-T0) " + line.cmap + " [(" + line.font + ")] " + line.collection +
           " [ /" + line.style + " ]  " + std::to_string(line.mode) + " 0 TZzero\n";
}

Picture Shown(const std::string& setup, const std::string& content, const std::string& place) {
    return PrologJob().Page("BT /N5 20 Tf " + place + " Td " + content + "\nET\n", setup).Paint().at(0);
}

bool IsSquare(const Picture& page, int x, int y, int size) {
    const int end = size - 2;
    return page.At(x + 1, y + 1) == kBlack && page.At(x + end, y + end) == kBlack &&
           page.At(x - 2, y + 2) == kWhite && page.At(x + size + 1, y + 2) == kWhite &&
           page.At(x + 2, y - 2) == kWhite && page.At(x + 2, y + size + 1) == kWhite;
}

std::string PrintedBy(const std::string& setup, const std::string& content) {
    const Outcome outcome = PrologJob().Page(content, setup).Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    return outcome.text;
}

}  // namespace zorvan::test
