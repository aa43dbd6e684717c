// Shadings: painted on a page, as patterns, and with the data of meshes wherever it stands.
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

/// From a value of 0 on the left of the middle of the page to 1 on the right of it: red and blue.
const std::string kHalves =
    "<</FunctionType 3 /Domain [0 1] /Bounds [0.5] /Encode [0 1 0 1] /Functions ["
    "<</FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [1 0 0] /N 1>> "
    "<</FunctionType 2 /Domain [0 1] /C0 [0 0 1] /C1 [0 0 1] /N 1>>]>>\n";

std::string Constant(const std::string& values) {
    return "<</FunctionType 2 /Domain [0 1] /C0 [" + values + "] /C1 [" + values + "] /N 1>>\n";
}

/// An axial shading from x = 40 to x = 60.
std::string Axial(const std::string& entries, const std::string& function = kHalves,
                  const std::string& space = "DefaultRGB ") {
    return "<</ShadingType 2\n/ColorSpace " + space + "\n" + entries + "/Coords [40 0 60 0 ]\n/Function " +
           function + ">>\n";
}

std::string AsPattern(const std::string& shading) {
    return "/N7 <<\n/PatternType 2\n/Shading " + shading +
           "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n"
           "/N7 /N7 /PatternPrototype findRes makePat\n/Pattern cs\n/N7 /MadePattern findRes scn\n"
           "0 0 100 100 re f\n";
}

const std::string kAfter = "0 1 0 rg 90 90 10 10 re f count 0 ne {stop} if\n";

TEST(Shading, StopsAtItsEndsUnlessItExtends) {
    const Color kEnds[][2] = {{kWhite, kWhite}, {kRed, kWhite}, {kWhite, kBlue}, {kRed, kBlue}};
    const std::string extends[] = {"", "/Extend [true false ]\n", "/Extend [false true ]\n",
                                   "/Extend [true true ]\n"};
    for (std::size_t i = 0; i < 4; ++i) {
        for (const std::string& painting : {Axial(extends[i]) + " sh\n", AsPattern(Axial(extends[i]))}) {
            const Picture page = Painted(painting + kAfter);
            EXPECT_EQ(page.At(20, 50), kEnds[i][0]) << painting;
            EXPECT_EQ(page.At(45, 50), kRed);
            EXPECT_EQ(page.At(55, 50), kBlue);
            EXPECT_EQ(page.At(80, 50), kEnds[i][1]) << painting;
            EXPECT_EQ(page.At(95, 95), kGreen);
        }
    }
}

TEST(Shading, PaintsItsBackgroundInPatternsOnly) {
    const std::string shading = Axial("/Background [0 1 0 ]\n");
    EXPECT_EQ(Painted(shading + " sh\n").At(20, 50), kWhite);
    EXPECT_EQ(Painted(AsPattern(shading)).At(20, 50), kGreen);
    EXPECT_EQ(Painted(AsPattern(shading)).At(45, 50), kRed);
}

TEST(Shading, StaysInItsBox) {
    const std::string shading = Axial("/BBox [0 20 100 60 ]\n/AntiAlias true\n/Extend [true true ]\n");
    for (const std::string& painting : {shading + " sh\n", AsPattern(shading)}) {
        const Picture page = Painted(painting + kAfter);
        EXPECT_EQ(page.At(10, 40), kRed) << painting;
        EXPECT_EQ(page.At(10, 10), kWhite) << painting;
        EXPECT_EQ(page.At(10, 70), kWhite) << painting;
    }
}

TEST(Shading, PaintsInsideTheClipAlone) {
    const Picture page =
        Painted("q 0 0 50 50 re W n 2 0 0 1 0 0 cm " + Axial("/Extend [true true ]\n") + " sh Q " + kAfter);
    EXPECT_EQ(page.At(20, 20), kRed);
    EXPECT_EQ(page.At(20, 70), kWhite);
    EXPECT_EQ(page.At(70, 20), kWhite);
}

TEST(Shading, LeavesTheColorOfThePageAlone) {
    const Picture page =
        Painted("1 0 0 rg " + Axial("") + " sh 0 0 9 9 re f " + Axial("") + " sh 0 9 9 9 re f");
    EXPECT_EQ(page.At(5, 5), kRed);
    EXPECT_EQ(page.At(5, 15), kRed);
}

TEST(Shading, TakesAFunctionForEachComponent) {
    const std::string functions = "[" + Constant("1") + Constant("0") + Constant("0") + "]\n";
    EXPECT_EQ(Painted(Axial("", functions) + " sh\n").At(45, 50), kRed);
    EXPECT_EQ(Painted(AsPattern(Axial("", functions))).At(45, 50), kRed);
    EXPECT_EQ(Painted(Axial("", "[{pop 0} {pop 0} {pop 1}]\n") + " sh\n").At(45, 50), kBlue);
}

/// A function-based shading over the whole page in this space.
std::string Everywhere(const std::string& space, const std::string& values) {
    return Axial("/Extend [true true ]\n", Constant(values), space);
}

TEST(Shading, PaintsInEverySpace) {
    const std::string tint = "<</FunctionType 2 /Domain [0 1] /C0 [1 1 1] /C1 [1 0 0] /N 1>> ";
    const std::string tints = "{pop pop 1 0 0} ";
    const std::string lab =
        "[/CIEBasedABC <</WhitePoint [.9505 1 1.089] /RangeABC [0 100 -128 127 -128 127] "
        "/DecodeABC [{16 add 116 div} bind {500 div} bind {200 div} bind] /MatrixABC [1 1 1 1 0 0 0 0 -1] "
        "/DecodeLMN [{dup mul} bind {dup mul} bind {dup mul} bind]>>] ";
    for (const std::string& shading :
         {Everywhere("[/Separation /Spot DefaultRGB " + tint + "] ", "1"),
          Everywhere("[/Separation (Spot) DefaultRGB " + tint + "] ", "1"),
          Everywhere("[/DeviceN [/One /Two] DefaultRGB " + tints + "] ", "1 0.5"),
          Everywhere("DefaultRGB ", "1 0 0"), Everywhere("/DeviceRGB ", "1 0 0")}) {
        EXPECT_EQ(Painted(shading + " sh\n" + kAfter).At(50, 50), kRed) << shading;
        EXPECT_EQ(Painted(AsPattern(shading) + kAfter).At(50, 50), kRed) << shading;
    }
    EXPECT_EQ(Painted(Everywhere("DefaultGray ", "0") + " sh").At(50, 50), kBlack);
    EXPECT_LT(Painted(Everywhere("DefaultCMYK ", "1 0 0 0") + " sh").At(50, 50).at(0), 50);
    EXPECT_GT(Painted(Everywhere(lab, "100 0 0") + " sh").At(50, 50).at(1), 200);
    EXPECT_LT(Painted(Everywhere(lab, "0 0 0") + " sh").At(50, 50).at(1), 50);
}

TEST(Shading, IsPassedOverWhereItLacksSomething) {
    std::vector<std::string> shadings;
    for (const char type : {'0', '1', '2', '3', '4', '5', '6', '7', '8'}) {
        shadings.push_back(std::string("<</ShadingType ") + type + "\n>>\n");
        shadings.push_back(std::string("<</ShadingType ") + type + "\n/ColorSpace DefaultRGB \n>>\n");
        shadings.push_back(std::string("<</ShadingType ") + type +
                           "\n/ColorSpace DefaultRGB \n/Coords [0 0 100 0 ]\n/Function null>>\n");
    }
    shadings.push_back("<</ShadingType 2\n/ColorSpace /NoSuchSpace\n/Coords [0 0 1 1]\n>>\n");
    shadings.push_back("<</ShadingType 2\n/ColorSpace null\n/Coords [0 0 1 1]\n>>\n");
    shadings.push_back("<</ShadingType 2\n/ColorSpace DefaultRGB \n/Coords [0 0 0 0 ]\n/Function " + kHalves +
                       ">>\n");
    shadings.emplace_back("null\n");
    for (const std::string& shading : shadings) {
        const Picture page = Painted(shading + " sh\n" + AsPattern(shading) + kAfter);
        EXPECT_EQ(page.At(50, 50), kWhite) << shading;
        EXPECT_EQ(page.At(95, 95), kGreen) << shading;
    }
}

// The meshes.

using Data = std::string;

Data FromHex(const std::string& hex) {
    Data bytes;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

Data Hex(const Data& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    Data hex;
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        hex += kDigits[byte >> 4U];
        hex += kDigits[byte & 15U];
    }
    return hex;
}

Data Ascii85(const Data& bytes) {  // of a multiple of four bytes
    Data text;
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        std::uint32_t value = 0;
        for (std::size_t i = at; i < at + 4; ++i) {
            value = value << 8U | static_cast<unsigned char>(bytes[i]);
        }
        Data digits;
        for (int i = 0; i < 5; ++i, value /= 85) {
            digits.insert(digits.begin(), static_cast<char>('!' + value % 85));
        }
        text += digits;
    }
    return text;
}

/// The first so many bytes, then the others, as they are.
Data RunLength(const Data& bytes, std::size_t first) {
    return static_cast<char>(first - 1) + bytes.substr(0, first) +
           static_cast<char>(bytes.size() - first - 1) + bytes.substr(first);
}

/// One stored block.
Data Flate(const Data& bytes) {
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char each : bytes) {
        low = (low + static_cast<unsigned char>(each)) % 65521;
        high = (high + low) % 65521;
    }
    const auto size = static_cast<unsigned>(bytes.size());
    Data block = FromHex("780101");
    for (const unsigned number : {size, ~size}) {
        block += static_cast<char>(number & 255U);
        block += static_cast<char>(number >> 8U & 255U);
    }
    block += bytes;
    for (const std::uint32_t number : {high, low}) {
        block += static_cast<char>(number >> 8U);
        block += static_cast<char>(number & 255U);
    }
    return block;
}

/// Codes of nine bits: clear, each byte, end.
Data Lzw(const Data& bytes) {
    std::vector<unsigned> codes{256};
    for (const char each : bytes) {
        codes.push_back(static_cast<unsigned char>(each));
    }
    codes.push_back(257);
    Data packed;
    unsigned held = 0;
    unsigned count = 0;
    for (const unsigned code : codes) {
        held = held << 9U | code;
        for (count += 9; count >= 8; count -= 8) {
            packed += static_cast<char>(held >> (count - 8));
        }
    }
    return packed + static_cast<char>(held << (8 - count));
}

/// Rows of vertices from the left to the right of the page.
Data Lattice(int rows) {
    Data bytes;
    for (int row = 0; row < rows; ++row) {
        const char y = static_cast<char>(255 * row / (rows - 1));
        bytes += {'\0', y, '\0', '\xff', y, '\xff'};
    }
    return bytes;
}

const std::string kMesh =
    "q <</ShadingType 5\n/ColorSpace DefaultRGB \n/BitsPerCoordinate 8\n/BitsPerComponent 8\n"
    "/VerticesPerRow 2\n/Decode [0 100 0 100 0 1 ]\n/Function " +
    kHalves + "/DataSource ";

/// With the data of filters of its own.
std::string Filtered(const std::string& filters, const Data& data) {
    return kMesh + " currentfile" + filters + "\n%%BeginData:" + std::to_string(data.size()) + " Bytes\n" +
           data + "\n%%EndData\n>> shfill\n";
}

/// With the data that the document encodes.
std::string Encoded(const Data& data) {
    return kMesh + " currentfile /LZWDecode filter\n%%BeginData: 256 Bytes\n" + data +
           ">> shfill\n\n%%EndData\n";
}

void ExpectsTheMeshAndThePage(const std::string& mesh) {
    const Picture page = Painted(mesh + "\nQ " + kAfter);
    EXPECT_EQ(page.At(40, 50), kRed) << mesh;
    EXPECT_EQ(page.At(60, 50), kBlue) << mesh;
    EXPECT_EQ(page.At(95, 95), kGreen) << mesh;
}

TEST(PageMesh, IsReadThroughEachFilter) {
    const Data mesh = Lattice(2);
    ExpectsTheMeshAndThePage(Filtered("/ASCIIHexDecode filter", Hex(mesh) + ">"));
    ExpectsTheMeshAndThePage(Filtered("/ASCII85Decode filter", Ascii85(mesh) + "~>"));
    ExpectsTheMeshAndThePage(Filtered("/FlateDecode filter", Flate(mesh)));
    ExpectsTheMeshAndThePage(Filtered("/LZWDecode filter", Lzw(mesh)));
    ExpectsTheMeshAndThePage(Filtered("/RunLengthDecode filter", RunLength(mesh, 6) + '\x80'));
}

TEST(PageMesh, IsReadThroughSeveralFilters) {
    const Data flate = Flate(Lattice(2));
    const Data hexadecimal = Hex(flate) + ">";
    ExpectsTheMeshAndThePage(Filtered("/ASCIIHexDecode filter/FlateDecode filter", hexadecimal));
    ExpectsTheMeshAndThePage(
        Filtered("/ASCIIHexDecode filter/ASCIIHexDecode filter/FlateDecode filter", Hex(hexadecimal) + ">"));
    ExpectsTheMeshAndThePage(
        Filtered("/FlateDecode filter/RunLengthDecode filter", Flate(RunLength(Lattice(2), 3) + '\x80')));
}

TEST(PageMesh, IsReadAsTheDocumentHasEncodedIt) {
    ExpectsTheMeshAndThePage(Encoded(Lzw(Lattice(2))));
    ExpectsTheMeshAndThePage(Encoded(Lzw(Lattice(9))));
}

TEST(PageMesh, MayLackItsEnd) {
    const Data mesh = Lattice(4);
    ExpectsTheMeshAndThePage(Filtered("/ASCIIHexDecode filter", Hex(mesh)));
    ExpectsTheMeshAndThePage(Filtered("/ASCII85Decode filter", Ascii85(mesh)));
    ExpectsTheMeshAndThePage(Filtered("/RunLengthDecode filter", RunLength(mesh, 6)));
    const Data flate = Flate(mesh);
    ExpectsTheMeshAndThePage(Filtered("/FlateDecode filter", flate.substr(0, flate.size() - 4)));
}

TEST(PageMesh, MayHaveAnythingBehindItsEnd) {
    const Data mesh = Lattice(2);
    const Data stray = "\n)>>{ ((quit\n%%EOF\nquit\n\x04";
    ExpectsTheMeshAndThePage(Filtered("/ASCIIHexDecode filter", Hex(mesh) + ">" + stray));
    ExpectsTheMeshAndThePage(Filtered("/ASCII85Decode filter", Ascii85(mesh) + "~>" + stray));
    ExpectsTheMeshAndThePage(Filtered("/FlateDecode filter", Flate(mesh) + stray));
    ExpectsTheMeshAndThePage(Filtered("/RunLengthDecode filter", RunLength(mesh, 6) + '\x80' + stray));
    ExpectsTheMeshAndThePage(Filtered("/LZWDecode filter", Lzw(mesh) + stray));
}

// Counts of runs: a tab, a line feed, a form feed, a CR, a blank, a percent sign.
TEST(PageMesh, MayBeginWithAnyByte) {
    for (const std::size_t first : {10U, 11U, 13U, 14U, 33U, 38U}) {
        ExpectsTheMeshAndThePage(Filtered("/RunLengthDecode filter", RunLength(Lattice(8), first) + '\x80'));
    }
    ExpectsTheMeshAndThePage(Filtered("/ASCIIHexDecode filter", "  \n " + Hex(Lattice(2)) + ">"));
}

// Together with the two digits before it, "%%E" is a vertex, and three of them are a triangle of no size.
TEST(PageMesh, MayHoldLinesThatLookLikeComments) {
    const Data triangles = FromHex(
        "00000000"
        "00ff00ff"
        "0000ff00"
        "00ff00ff"
        "0000ff00"
        "00ffffff");
    const std::string lines = "!!\n%%E!!\n%%E!!\n%%E\n";
    std::string mesh = Filtered("/ASCII85Decode filter", lines + Ascii85(triangles) + lines + "~>");
    mesh.replace(mesh.find("/ShadingType 5"), 14, "/ShadingType 4\n/BitsPerFlag 8");
    ExpectsTheMeshAndThePage(mesh);
}

TEST(PageMesh, ThatIsDamagedPaintsNothing) {
    const Data bad = "((( )))>>";
    for (const std::string& mesh :
         {Filtered("/ASCIIHexDecode filter", "xyz"), Filtered("/ASCII85Decode filter", "\x7f\x7f\x7f"),
          Filtered("/FlateDecode filter", bad), Filtered("/LZWDecode filter", bad),
          Filtered("/NoSuchDecode filter", bad), Filtered("/FlateDecode filter", ""), Encoded(""),
          Filtered("/ASCIIHexDecode filter/FlateDecode filter", "28282828>")}) {
        const Picture page = Painted(mesh + "\nQ " + kAfter);
        EXPECT_EQ(page.At(40, 50), kWhite) << mesh;
        EXPECT_EQ(page.At(95, 95), kGreen) << mesh;
    }
}

TEST(PageMesh, LeavesTheSecondOneAndTheNextPageWhereTheyAre) {
    const std::string both = Filtered("/FlateDecode filter", Flate(Lattice(2))) + "Q\n" +
                             Encoded(Lzw(Lattice(2))) + "Q\n" + kAfter;
    const std::vector<Picture> pages = PrologJob().Page(both).Page(both).Page(both).Paint();
    ASSERT_EQ(pages.size(), 3U);
    for (const Picture& page : pages) {
        EXPECT_EQ(page.At(40, 50), kRed);
        EXPECT_EQ(page.At(95, 95), kGreen);
    }
}

/// Data in strings, as in forms, patterns and glyphs.
std::string InStrings(const std::string& strings) {
    return kMesh.substr(2) + strings + "\n>>\n";
}

TEST(MeshInStrings, IsReadFromOneString) {
    const std::string mesh = InStrings("<~" + Ascii85(Lattice(2)) + "~>");
    for (const std::string& painting : {mesh + " sh\n", AsPattern(mesh), "{ " + mesh + " sh } exec\n"}) {
        ExpectsTheMeshAndThePage("q " + painting);
    }
}

TEST(MeshInStrings, IsReadFromManyTimeAndAgain) {
    const Data lattice = Lattice(8);
    std::string strings = "{{";
    for (std::size_t at = 0; at < lattice.size(); at += 16) {
        strings += "<~" + Ascii85(lattice.substr(at, 16)) + "~>";
    }
    const std::string mesh = InStrings(strings + "\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n");
    const std::string form =
        "/N8 <<\n/FormType 1\n/BBox [0 0 100 100 ]\n/Matrix [1 0 0 1 0 0 ]\n/PaintProc {pop save {\n" + mesh +
        " sh\n} exec restore} bind >> /Form defineRes pop\n/N8 /Form findRes EF\n1 1 1 rg 0 0 100 100 re f\n"
        "/N8 /Form findRes EF\n";
    for (const std::string& painting : {mesh + " sh\n", AsPattern(mesh),
                                        AsPattern(mesh) + "1 1 1 rg 0 0 100 100 re f /Pattern cs\n"
                                                          "/N7 /MadePattern findRes scn 0 0 100 100 re f\n",
                                        form}) {
        ExpectsTheMeshAndThePage("q " + painting);
    }
}

TEST(MeshInStrings, TakesAnIndexedSpace) {
    std::string mesh = InStrings("<~" +
                                 Ascii85(FromHex("000000"
                                                 "ff0000"
                                                 "00ff00"
                                                 "ffff00")) +
                                 "~>");
    mesh.replace(mesh.find("DefaultRGB"), 10, "[/Indexed DefaultRGB 1 <0000ffff0000>] ");
    mesh.replace(mesh.find("0 100 0 1 ]"), 11, "0 100 0 255 ]");
    mesh.erase(mesh.find("/Function"), mesh.find("/DataSource") - mesh.find("/Function"));
    EXPECT_EQ(Painted(mesh + " sh\n" + kAfter).At(40, 50), kBlue);
}

}  // namespace
}  // namespace zorvan::test
