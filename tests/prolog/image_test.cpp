// Images, inline images, and the data that stands in the document itself.
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

/// Data as the library embeds it, with its filter's entries, under a name.
std::string Embedded(const std::string& filter, const std::string& data, const std::string& name = "/N1") {
    return name + " currentfile <<" + filter +
           "/Intent 0 >> /ReusableStreamDecode\n%%BeginData: " + std::to_string(data.size()) +
           " Bytes\nfilter\n" + data + "\n%%EndData\n/DataSource defineRes pop\n";
}

std::string Hex(const std::string& digits, const std::string& name = "/N1") {
    return Embedded("/Filter /ASCIIHexDecode\n", digits, name);
}

/// The dictionary of an image of so many pixels.
std::string Dictionary(int width, int height, int bits, const std::string& entries,
                       const std::string& name = "/N1", int type = 1) {
    const std::string w = std::to_string(width);
    const std::string h = std::to_string(height);
    return "<</ImageType " + std::to_string(type) + "\n/Width " + w + "\n/Height " + h +
           "\n/BitsPerComponent " + std::to_string(bits) + "\n/ImageMatrix [" + w + " 0 0 -" + h + " 0 " + h +
           "]\n" + entries + "\n/Interpolate false\n/DataSource " + name + " /DataSource findRes\n>>";
}

/// A square of 80 points, from 10 10 to 90 90.
std::string Square(const std::string& painting) {
    return "q\n80 0 0 80 10 10 cm\n" + painting + "\nQ\n";
}

/// Paints a mark at the lower right corner, to show that the page goes on.
constexpr const char* kMark = "0 1 0 rg 92 2 6 6 re f\n";

Picture PaintedFrom(const std::string& data, const std::string& content) {
    return PrologJob().Page(content + kMark, data).Paint().at(0);
}

bool HasMark(const Picture& page) {
    return page.At(95, 5) == kGreen;
}

/// The four quarters of the square: upper left, upper right, lower left, lower right.
std::vector<Color> Quarters(const Picture& page) {
    return {page.At(30, 70), page.At(70, 70), page.At(30, 30), page.At(70, 30)};
}

const std::string kGraySpace = "DefaultGray setcolorspace\n";
const std::string kRgbSpace = "DefaultRGB setcolorspace\n";

Color Gray(int value) {
    return {value, value, value};
}

// Images from data of the page's setup.

TEST(Image, IsPaintedFromItsData) {
    const Picture page =
        PaintedFrom(Hex("FF000000FF000000FF000000>"),
                    Square(kRgbSpace + Dictionary(2, 2, 8, "/Decode [0 1 0 1 0 1]") + "\nimage"));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kRed, kGreen, kBlue, kBlack}));
    EXPECT_EQ(page.At(5, 50), kWhite);
    EXPECT_TRUE(HasMark(page));
}

TEST(Image, MayHaveOneToEightBits) {
    constexpr std::tuple<int, const char*, int> kImages[] = {
        {1, "0080>", 255}, {2, "1040>", 85}, {4, "0330>", 51}, {8, "00333300>", 51}};
    for (const auto& [bits, digits, value] : kImages) {
        const Picture page = PaintedFrom(
            Hex(digits), Square(kGraySpace + Dictionary(2, 2, bits, "/Decode [0 1]") + "\nimage"));
        const std::vector<Color> quarters = Quarters(page);
        EXPECT_EQ(quarters[0], kBlack) << bits;
        EXPECT_EQ(quarters[2], Gray(value)) << bits;
        EXPECT_TRUE(HasMark(page)) << bits;
    }
}

/// PostScript itself knows 1, 2, 4, 8 and 12; a device that knows 16 as well paints them.
TEST(Image, MayHaveSixteenBits) {
    const Picture page = PaintedFrom(Hex("0000FFFF3333CCCC>"),
                                     Square(kGraySpace + Dictionary(2, 2, 16, "/Decode [0 1]") + "\nimage"));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kBlack, kWhite, Gray(51), Gray(204)}));
    EXPECT_TRUE(HasMark(page));
}

TEST(Image, IsTurnedAroundByItsDecodeArray) {
    const auto paint = [](const std::string& decode) {
        return Quarters(
            PaintedFrom(Hex("00FFFF00>"), Square(kGraySpace + Dictionary(2, 2, 8, decode) + "\nimage")));
    };
    EXPECT_EQ(paint("/Decode [0 1]"), (std::vector<Color>{kBlack, kWhite, kWhite, kBlack}));
    EXPECT_EQ(paint("/Decode [1 0]"), (std::vector<Color>{kWhite, kBlack, kBlack, kWhite}));
}

TEST(Image, MayBeIndexed) {
    const std::string space = "[/Indexed DefaultRGB 3 <FF000000FF000000FF000000>] setcolorspace\n";
    const Picture page =
        PaintedFrom(Hex("10B0>"), Square(space + Dictionary(2, 2, 2, "/Decode [0 3]") + "\nimage"));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kRed, kGreen, kBlue, kBlack}));
}

TEST(Image, PaintedTwiceReadsItsDataFromTheBeginning) {
    const std::string image = kRgbSpace + Dictionary(1, 1, 8, "/Decode [0 1 0 1 0 1]") + "\nimage";
    const Picture page =
        PaintedFrom(Hex("FF0000>"), "q 40 0 0 40 0 0 cm " + image + " Q q 40 0 0 40 50 0 cm " + image +
                                        " Q q 40 0 0 40 0 50 cm " + image + " Q\n");
    EXPECT_EQ(page.At(20, 20), kRed);
    EXPECT_EQ(page.At(70, 20), kRed);
    EXPECT_EQ(page.At(20, 70), kRed);
    EXPECT_EQ(page.At(70, 70), kWhite);
}

TEST(Image, WhoseDataIsMissingPaintsNothingAndStopsNothing) {
    for (const std::string& painting :
         {kGraySpace + Dictionary(2, 2, 8, "/Decode [0 1]", "/Missing") + "\nimage",
          "1 0 0 rg " + Dictionary(2, 2, 1, "/Decode [0 1]", "/Missing") + "\nimagemask",
          kGraySpace + "<</ImageType 3 /InterleaveType 3 /MaskDict " +
              Dictionary(2, 2, 1, "/Decode [0 1]", "/Missing") + "\n/DataDict " +
              Dictionary(2, 2, 8, "/Decode [0 1]") + "\n>>\nimage",
          kGraySpace + "<</ImageType 3 /InterleaveType 3 /MaskDict " + Dictionary(2, 2, 1, "/Decode [0 1]") +
              "\n/DataDict " + Dictionary(2, 2, 8, "/Decode [0 1]", "/Missing") + "\n>>\nimage"}) {
        const Picture page = PaintedFrom(Hex("00000000>"), Square(painting));
        EXPECT_THAT(Quarters(page), testing::Each(kWhite)) << painting;
        EXPECT_TRUE(HasMark(page)) << painting;
    }
}

TEST(Image, ThatTheDeviceRefusesStopsNothing) {
    for (const std::string& painting :
         {kGraySpace + Dictionary(2, 2, 3, "/Decode [0 1]") + "\nimage",
          kGraySpace + Dictionary(2, 2, 8, "/Decode [0]") + "\nimage",
          kGraySpace + Dictionary(-2, 2, 8, "/Decode [0 1]") + "\nimage",
          kGraySpace + Dictionary(2, 2, 8, "/Decode [0 1]", "/N1", 7) + "\nimage"}) {
        const std::string page = Square(painting) + "(on) = count =";
        const Outcome outcome = PrologJob().Page(page, Hex("00000000>")).Run();
        EXPECT_EQ(outcome.status, 0) << painting << outcome.text;
        EXPECT_EQ(outcome.text, "on\n0\n") << painting;
    }
}

TEST(Image, WithTooLittleDataStopsNothing) {
    const Picture page =
        PaintedFrom(Hex("00>"), Square(kGraySpace + Dictionary(20, 20, 8, "/Decode [0 1]") + "\nimage"));
    EXPECT_EQ(page.At(5, 50), kWhite);
    EXPECT_TRUE(HasMark(page));
}

TEST(Image, TakesARenderingIntentOfItsOwnAndGivesItBack) {
    const std::string watched =
        "/ColorRendering /Mine currentcolorrendering dup length 1 add dict copy dup /Watched true put "
        "3 -1 roll defineresource pop\n"
        "/findcolorrendering {(asked for ) print = /Mine true} def\n";
    const std::string known = "currentcolorrendering /Watched known =\n";
    const std::string image =
        kGraySpace + Dictionary(1, 1, 8, "/Decode [0 1] /Intent /Saturation") + "\nimage\n";
    const Outcome outcome =
        PrologJob().Before(watched).Page(image + known + "/Perceptual ri " + known, Hex("00>")).Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    EXPECT_EQ(outcome.text, "asked for Saturation\nfalse\nasked for Perceptual\ntrue\n");
}

// The three kinds of masks.

TEST(Image, OfAStencilIsPaintedInTheFillColor) {
    const std::string stencil = Dictionary(2, 2, 1, "/Decode [0 1]") + "\nimagemask";
    const Picture page = PaintedFrom(Hex("4080>"), "1 0 0 rg 0 0 1 RG " + Square(stencil));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kRed, kWhite, kWhite, kRed}));
    const Picture turned = PaintedFrom(
        Hex("4080>"), "1 0 0 rg 0 0 1 RG " + Square(Dictionary(2, 2, 1, "/Decode [1 0]") + "\nimagemask"));
    EXPECT_EQ(Quarters(turned), (std::vector<Color>{kWhite, kRed, kRed, kWhite}));
}

TEST(Image, MaskedByAStencilShowsWhatIsUnderneath) {
    const auto paint = [](const std::string& decode) {
        const std::string image = kRgbSpace + "<</ImageType 3\n/InterleaveType 3\n/MaskDict " +
                                  Dictionary(2, 2, 1, decode, "/N2") + "\n/DataDict " +
                                  Dictionary(1, 1, 8, "/Decode [0 1 0 1 0 1]") + "\n>>\nimage";
        return Quarters(PaintedFrom(Hex("FF0000>") + Hex("4080>", "/N2"), Square(image) + Square(image)));
    };
    EXPECT_EQ(paint("/Decode [0 1]"), (std::vector<Color>{kRed, kWhite, kWhite, kRed}));
    EXPECT_EQ(paint("/Decode [1 0]"), (std::vector<Color>{kWhite, kRed, kRed, kWhite}));
}

TEST(Image, MaskedByColorKeysShowsWhatIsUnderneath) {
    const std::string image =
        kGraySpace + Dictionary(2, 2, 8, "/MaskColor [0 16 ]\n/Decode [0 1]", "/N1", 4) + "\nimage";
    const Picture page =
        PaintedFrom(Hex("00101133>"), "1 0 0 rg 0 0 100 100 re f " + Square(image) + Square(image));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kRed, kRed, Gray(17), Gray(51)}));
}

// Colours right behind an image.

TEST(Image, LeavesTheColorsAsTheyAre) {
    const std::string image = kGraySpace + Dictionary(1, 1, 8, "/Decode [0 1]") + "\nimage\n";
    const std::string small = "q 10 0 0 10 80 80 cm " + image + "Q ";
    const Picture page = PaintedFrom(
        Hex("33>"), "1 0 0 rg 0 0 1 RG 10 w 0 0 10 10 re f " + small + "20 20 20 20 re f 10 70 m 60 70 l S ");
    EXPECT_EQ(page.At(30, 30), kRed);
    EXPECT_EQ(page.At(40, 70), kBlue);
    EXPECT_EQ(page.At(85, 85), Gray(51));
    // without q and Q around it, too
    const Picture open = PaintedFrom(
        Hex("33>"), "1 0 0 rg 0 0 1 RG 10 w 0 0 10 10 re f " + image + "20 20 20 20 re f 10 70 m 60 70 l S ");
    EXPECT_EQ(open.At(30, 30), kRed);
    EXPECT_EQ(open.At(40, 70), kBlue);
}

TEST(Image, LeavesTheGraphicsStateAsItIs) {
    const std::string image = kGraySpace + Dictionary(1, 1, 8, "/Decode [0 1]") + "\nimage\n";
    const std::string stencil = Dictionary(1, 1, 1, "/Decode [0 1]") + "\nimagemask\n";
    for (const std::string& painting : {image, stencil}) {
        const Outcome outcome = PrologJob()
                                    .Page("7 w 1 0 0 1 30 0 cm " + painting +
                                              "currentlinewidth cvi = 0 0 transform pop cvi = count =",
                                          Hex("33>"))
                                    .Run();
        EXPECT_EQ(outcome.text, "7\n30\n0\n");
    }
}

TEST(Image, OfAStencilLeavesTheColorsAsTheyAre) {
    const std::string stencil = Dictionary(1, 1, 1, "/Decode [0 1]") + "\nimagemask\n";
    const Picture page = PaintedFrom(Hex("00>"), "1 0 0 rg 0 0 1 RG 10 w q 10 0 0 10 80 80 cm " + stencil +
                                                     "Q 10 70 m 60 70 l S 20 20 20 20 re f ");
    EXPECT_EQ(page.At(85, 85), kRed);
    EXPECT_EQ(page.At(30, 30), kRed);
    EXPECT_EQ(page.At(40, 70), kBlue);
}

TEST(InlineImage, LeavesTheColorsAsTheyAre) {
    const Picture page = Painted(
        "1 0 0 rg 0 0 1 RG 10 w q 10 0 0 10 80 80 cm BI\n/Width 1\n/Height 1\n/BitsPerComponent 8\n"
        "/ColorSpace DefaultGray\n/Filter /ASCIIHexDecode\nID\n/DataSource {{<33>} 0 get}\nEI\nQ "
        "20 20 20 20 re f 10 70 m 60 70 l S");
    EXPECT_EQ(page.At(85, 85), Gray(51));
    EXPECT_EQ(page.At(30, 30), kRed);
    EXPECT_EQ(page.At(40, 70), kBlue);
}

// Images inside a content.

constexpr const char* kFour =
    "/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [0 1]\n"
    "/Interpolate false\n/Filter /ASCIIHexDecode\n";

/// The squares of an inline image of these lines.
std::vector<Color> Inline(const std::string& lines) {
    const Picture page = Painted(Square("BI\n" + lines + "EI") + kMark);
    EXPECT_TRUE(HasMark(page)) << lines;
    return Quarters(page);
}

const std::vector<Color> kFourGrays{Gray(0), Gray(51), Gray(102), Gray(153)};

TEST(InlineImage, MayHaveItsDataBehindOrInFrontOfID) {
    EXPECT_EQ(Inline(kFour + "ID\n/DataSource {{<00336699>} 0 get}\n"s), kFourGrays);
    EXPECT_EQ(Inline(kFour + "/DataSource {{<00336699>} 0 get}\nID\n"s), kFourGrays);
    EXPECT_EQ(Inline(kFour + "ID\n/DataSource {{<00336699>} 0 get}\nID \n"s), kFourGrays);
    EXPECT_EQ(Inline(kFour + R"(/DataSource {{<~!&J5T~>} 0 get})"s + "\nID\n"), kFourGrays);
}

constexpr const char* kCycle = "\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n";

TEST(InlineImage, ReadsAnArrayOfStringsOnceThrough) {
    EXPECT_EQ(Inline(kFour + "ID\n/DataSource {{<00336699>"s + kCycle), kFourGrays);
    EXPECT_EQ(Inline(kFour + "ID\n/DataSource {{<0033><6699>"s + kCycle), kFourGrays);
    EXPECT_EQ(Inline(kFour + "/DataSource {{<00><3366><99>"s + kCycle), kFourGrays);
}

TEST(InlineImage, ReadsMoreStringsThanTheDocumentCounts) {
    // A hundred strings, a row of a hundred pixels each: the rows of the upper half black, then gray.
    std::string strings;
    for (int row = 0; row < 100; ++row) {
        const std::string pixel = row < 50 ? "00" : row < 81 ? "66" : "99";
        std::string pixels;
        for (int i = 0; i < 100; ++i) {
            pixels += pixel;
        }
        strings += "<" + pixels + ">";
    }
    const Picture page = Painted(
        "q 100 0 0 100 0 0 cm BI\n/Width 100\n/Height 100\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n"
        "/Decode [0 1]\n/Filter /ASCIIHexDecode\nID\n/DataSource {{" +
        strings + kCycle + "EI Q");
    EXPECT_EQ(page.At(50, 75), kBlack);
    EXPECT_EQ(page.At(50, 30), Gray(102));
    EXPECT_EQ(page.At(50, 10), Gray(153));
    EXPECT_EQ(page.At(50, 1), Gray(153));
}

TEST(InlineImage, TakesTheSamplesAsTheyAreWithoutADecodeArray) {
    const std::string keys =
        "/Width 2\n/Height 2\n/BitsPerComponent 8\n/Filter /ASCIIHexDecode\n/ColorSpace ";
    const std::string data = "ID\n/DataSource {{<00010203>} 0 get}\n";
    EXPECT_EQ(Inline(keys + "[/Indexed DefaultRGB 3 <FF000000FF000000FF000000>]\n" + data),
              (std::vector<Color>{kRed, kGreen, kBlue, kBlack}));
    EXPECT_EQ(Inline(keys + "DefaultRGB\nID\n/DataSource {{<FF000000FF000000FF000000>} 0 get}\n"),
              (std::vector<Color>{kRed, kGreen, kBlue, kBlack}));
}

TEST(InlineImage, MayBeAStencil) {
    const Picture page =
        Painted("1 0 0 rg " + Square("BI\n/Width 2\n/Height 2\n/BitsPerComponent 1\n/ImageMask true\n"
                                     "/Decode [0 1]\n/Interpolate false\n/Filter /ASCIIHexDecode\n"
                                     "ID\n/DataSource {{<4080>} 0 get}\nEI"));
    EXPECT_EQ(Quarters(page), (std::vector<Color>{kRed, kWhite, kWhite, kRed}));
}

TEST(InlineImage, IsTurnedAroundByItsDecodeArray) {
    EXPECT_EQ(Inline("/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [1 0 ]\n"
                     "/Filter /ASCIIHexDecode\nID\n/DataSource {{<00FFFF00>} 0 get}\n"),
              (std::vector<Color>{kWhite, kBlack, kBlack, kWhite}));
}

constexpr const char* kLab =
    "[/CIEBasedABC << /RangeABC [0 100 -100 100 -100 100] /WhitePoint [0.9505 1 1.089] "
    "/DecodeABC [{16 add 116 div} bind {500 div} bind {200 div} bind] "
    "/MatrixABC [1 1 1 1 0 0 0 0 -1] "
    "/DecodeLMN [{dup 0.20689655 ge {dup dup mul mul} {0.13793103 sub 0.12841855 mul} ifelse 0.9505 mul} "
    "bind "
    "{dup 0.20689655 ge {dup dup mul mul} {0.13793103 sub 0.12841855 mul} ifelse} bind "
    "{dup 0.20689655 ge {dup dup mul mul} {0.13793103 sub 0.12841855 mul} ifelse 1.089 mul} bind] >>]\n";

TEST(InlineImage, InLabGetsTheRangeOfTheLightness) {
    const auto paint = [](const std::string& decode) {
        return Inline("/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace "s + kLab + decode +
                      "/Filter /ASCIIHexDecode\nID\n/DataSource {{<FF8080 80FF80 8080FF 008080>} 0 get}\n");
    };
    const std::vector<Color> four = paint("/Decode [-100 100 -100 100]\n");
    EXPECT_EQ(four, paint("/Decode [0 100 -100 100 -100 100]\n"));
    EXPECT_GT(four[0][1], 240);              // white: lightness 100
    EXPECT_LT(four[3][1], 20);               // black: lightness 0
    EXPECT_GT(four[1][0], four[1][1] + 50);  // reddish
}

TEST(InlineImage, IsPutThroughTheFiltersBehindTheFirst) {
    const std::string keys =
        "/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [0 1]\n";
    const std::string runs = "ID\n/DataSource {{<0300336699 80>} 0 get}\n";
    EXPECT_EQ(Inline(keys + "/Filter [/ASCIIHexDecode /RunLengthDecode]\n" + runs), kFourGrays);
    EXPECT_EQ(Inline(keys + "/Filter [/ASCII85Decode /RunLengthDecode]\n" + runs), kFourGrays);
    EXPECT_EQ(Inline(keys + "/Filter [/ASCIIHexDecode /RunLengthDecode]\n/DecodeParms [null null]\n" + runs),
              kFourGrays);
    const std::string flate = "ID\n/DataSource {{<7801010400FBFF 00336699 02020133>} 0 get}\n";
    EXPECT_EQ(
        Inline(keys + "/Filter [/ASCII85Decode /FlateDecode]\n/DecodeParms [null << /Predictor 1 >>]\n" +
               flate),
        kFourGrays);
    // horizontal differences, two columns: 00 33 and 66 33
    EXPECT_EQ(
        Inline(keys +
               "/Filter [/ASCII85Decode /LZWDecode]\n/DecodeParms [null << /Predictor 2 /Columns 2 >>]\n"
               "ID\n/DataSource {{<80000666619C04>} 0 get}\n"),
        kFourGrays);
    EXPECT_EQ(Inline(keys + "/Filter [/ASCIIHexDecode /RunLengthDecode /RunLengthDecode]\n"
                            "ID\n/DataSource {{<050300336699 80 80>} 0 get}\n"),
              kFourGrays);
}

TEST(InlineImage, PutsDataOfSeveralStringsThroughItsFilters) {
    EXPECT_EQ(Inline("/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [0 1]\n"
                     "/Filter [/ASCII85Decode /RunLengthDecode]\nID\n/DataSource {{<0300><336699><80>"s +
                     kCycle),
              kFourGrays);
}

TEST(InlineImage, ThatIsNotWholeStopsNothing) {
    for (
        const std::string& lines :
        {""s, "/Width 2\n"s, kFour + "ID\n"s, kFour + "ID\n/DataSource {{<>} 0 get}\n"s,
         kFour + "ID\n/DataSource {{} 0 get}\n"s, kFour + "ID\n/DataSource null\n"s,
         "/Width 2\n/Height 2\n/ColorSpace DefaultGray\n/Filter [/ASCIIHexDecode /NoSuchDecode]\n"
         "ID\n/DataSource {{<00>} 0 get}\n"s,
         "/Width 2\n/Height 2\n/BitsPerComponent 8\nID\n/DataSource {{<00000000>} 0 get}\n"s,
         "/Width 2\n/Height 2\n/BitsPerComponent 8\n/ColorSpace null\nID\n/DataSource {{<00000000>} 0 get}\n"s}) {
        EXPECT_EQ(Printed("7 " + Square("BI\n" + lines + "EI") + "(on) = count ="), "on\n1\n") << lines;
    }
}

TEST(InlineImage, WithoutItsBeginningOrEndStopsNothing) {
    EXPECT_EQ(Printed("EI (on) ="), "on\n");
    EXPECT_EQ(Printed("ID EI (on) ="), "on\n");
    EXPECT_EQ(Printed("7 8 EI ID count ="), "2\n");
    const std::vector<Picture> pages =
        PrologJob()
            .Page("BI\n" + std::string(kFour) + "ID\n/DataSource {{<00336699>} 0 get}\n")
            .Page(kMark)
            .Paint();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_TRUE(HasMark(pages[1]));
}

// Data in the document that does not end itself, or has something behind its end.

struct DataCase {
    const char* name;
    std::string filter;
    std::string data;
    int bits = 8;  // of an image of eight by eight pixels, all of them black
};

const std::string kZeros(64, '\0');

/// A deflated block that is stored as it is.
std::string Stored(const std::string& bytes) {
    const auto size = static_cast<char>(bytes.size());
    return "\x78\x01\x01"s + size + '\0' + static_cast<char>(~size) + '\xFF' + bytes;
}

/// A JPEG image of eight by eight black pixels, up to its end of image.
std::string Jpeg() {
    std::string jpeg =
        "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00\xFF\xDB\x00\x43\x00"s;
    jpeg += std::string(64, '\x01');
    jpeg += "\xFF\xC0\x00\x0B\x08\x00\x08\x00\x08\x01\x01\x11\x00"s;
    jpeg += "\xFF\xC4\x00\x14\x00\x01"s + std::string(15, '\0') + "\x0B";
    jpeg += "\xFF\xC4\x00\x14\x10\x01"s + std::string(15, '\0') + '\0';
    return jpeg + "\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00\x3F\xF7"s;
}

std::vector<DataCase> Cases() {
    const std::string fax = "/Filter /CCITTFaxDecode\n/DecodeParms << /K -1 /Columns 8 >>";
    const std::string faxRows =
        "/Filter /CCITTFaxDecode\n/DecodeParms << /K -1 /Columns 8 /Rows 8 /EndOfBlock false >>";
    const std::string fax1 = "/Filter /CCITTFaxDecode\n/DecodeParms << /K 0 /Columns 8 >>";
    const std::string rows = "\x26\xA2\xFF\xFE"s;
    // Eight rows of eight black pixels in one dimension: white 0 (00110101), black 8 (000101).
    std::string bits;
    for (int row = 0; row < 8; ++row) {
        bits += "00110101000101";
    }
    std::string rows1;
    for (std::size_t at = 0; at < bits.size(); at += 8) {
        rows1 += static_cast<char>(std::stoi(bits.substr(at, 8), nullptr, 2));
    }
    // Codes of nine bits: 256 and then 64 times 0, which is 585 bits.
    const std::string lzw = "\x80"s + std::string(73, '\0');
    const std::string runs = "\x3F" + kZeros;
    const std::string stray = "stray bytes\nbehind the end %%EndDat\n";
    return {
        {"CCITT without end of block", fax, rows, 1},
        {"CCITT with its rows counted", faxRows, rows, 1},
        {"CCITT with end of block", fax, "\x26\xA2\xFF\xFE\x00\x10\x01"s, 1},
        {"CCITT of one dimension without end of block", fax1, rows1, 1},
        {"CCITT with stray bytes", faxRows, rows + stray, 1},
        {"RunLength", "/Filter /RunLengthDecode\n", runs + "\x80"},
        {"RunLength without end", "/Filter /RunLengthDecode\n", runs},
        {"RunLength with stray bytes", "/Filter /RunLengthDecode\n", runs + "\x80" + stray},
        {"DCT", "/Filter /DCTDecode\n", Jpeg() + "\xFF\xD9"},
        {"DCT without end of image", "/Filter /DCTDecode\n", Jpeg()},
        {"DCT with stray bytes", "/Filter /DCTDecode\n", Jpeg() + "\xFF\xD9" + stray},
        {"Flate", "/Filter /FlateDecode\n", Stored(kZeros) + "\x00\x40\x00\x01"s},
        {"Flate without checksum", "/Filter /FlateDecode\n", Stored(kZeros)},
        {"Flate with stray bytes", "/Filter /FlateDecode\n", Stored(kZeros) + "\x00\x40\x00\x01"s + stray},
        {"LZW without end", "/Filter /LZWDecode\n", lzw},
        {"LZW with stray bytes", "/Filter /LZWDecode\n", lzw.substr(0, 73) + "\x40\x40" + stray},
        {"ASCII85 without end", "/Filter /ASCII85Decode\n", std::string(16, 'z')},
        {"ASCII85 with stray bytes", "/Filter /ASCII85Decode\n", std::string(16, 'z') + "~>" + stray},
        {"ASCIIHex without end", "/Filter /ASCIIHexDecode\n", std::string(128, '0')},
        {"ASCIIHex with stray bytes", "/Filter /ASCIIHexDecode\n", std::string(128, '0') + ">" + stray},
        {"two filters without end", "/Filter [/ASCIIHexDecode /RunLengthDecode]\n",
         "3F" + std::string(128, '0')},
    };
}

TEST(EmbeddedData, PrintsAndLeavesTheJobGoingOnHoweverItEnds) {
    for (const DataCase& each : Cases()) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, each.name);
        const std::string image = kGraySpace + Dictionary(8, 8, each.bits, "/Decode [0 1]") + "\nimage";
        const std::string next = kRgbSpace + Dictionary(1, 1, 8, "/Decode [0 1 0 1 0 1]", "/N2") + "\nimage";
        const Picture page = PaintedFrom(Embedded(each.filter, each.data) + Hex("FF0000>", "/N2"),
                                         Square(image) + "q 6 0 0 6 2 2 cm " + next + " Q\n");
        EXPECT_THAT(Quarters(page), testing::Each(kBlack));
        EXPECT_EQ(page.At(12, 12), kBlack);
        EXPECT_EQ(page.At(5, 5), kRed);
        EXPECT_TRUE(HasMark(page));
    }
}

TEST(EmbeddedData, MayBeReadTwiceHoweverItEnds) {
    for (const DataCase& each : Cases()) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, each.name);
        const std::string image = kGraySpace + Dictionary(8, 8, each.bits, "/Decode [0 1]") + "\nimage";
        const Picture page =
            PaintedFrom(Embedded(each.filter, each.data),
                        "q 40 0 0 40 0 50 cm " + image + " Q q 40 0 0 40 50 50 cm " + image + " Q\n");
        EXPECT_EQ(page.At(20, 70), kBlack);
        EXPECT_EQ(page.At(70, 70), kBlack);
    }
}

TEST(EmbeddedData, ThatIsEmptyOrDamagedLeavesTheJobGoingOn) {
    for (const std::string filter : {"CCITTFaxDecode", "RunLengthDecode", "DCTDecode", "FlateDecode",
                                     "LZWDecode", "ASCII85Decode", "ASCIIHexDecode", "NoSuchDecode"}) {
        for (const std::string& data : {""s, "\x01"s, "damaged beyond all use"s}) {
            const std::string image = kGraySpace + Dictionary(8, 8, 8, "/Decode [0 1]") + "\nimage";
            const std::string next =
                kRgbSpace + Dictionary(1, 1, 8, "/Decode [0 1 0 1 0 1]", "/N2") + "\nimage";
            const Picture page =
                PaintedFrom(Embedded("/Filter /" + filter + "\n", data) + Hex("FF0000>", "/N2"),
                            Square(image) + "q 6 0 0 6 2 2 cm " + next + " Q\n");
            EXPECT_EQ(page.At(5, 5), kRed) << filter << data;
            EXPECT_TRUE(HasMark(page)) << filter << data;
        }
    }
}

TEST(EmbeddedData, IsCompressedAs256BytesWhateverItsSize) {
    const std::string data = Embedded("/Filter /LZWDecode ", "\x80"s + std::string(72, '\0') + "\x40\x40");
    const Picture page =
        PaintedFrom(data, Square(kGraySpace + Dictionary(8, 8, 8, "/Decode [0 1]") + "\nimage"));
    EXPECT_THAT(Quarters(page), testing::Each(kBlack));
}

TEST(EmbeddedData, LeavesFiltersOfOtherKindsAlone) {
    EXPECT_EQ(Printed("(6162>) /ASCIIHexDecode filter 2 string readstring pop ="), "ab\n");
    EXPECT_EQ(
        Printed(
            "(6162>) << /Filter /ASCIIHexDecode >> /ReusableStreamDecode filter 2 string readstring pop ="),
        "ab\n");
}

TEST(EmbeddedData, ThatIsCountedIsReadIntoAString) {
    EXPECT_EQ(Printed(" currentfile 3 string\n%%BeginData:3 Bytes\n{readstring pop} bind "
                      "exec\nabc\n%%EndData\n = (on) ="),
              "abc\non\n");
}

}  // namespace
}  // namespace zorvan::test
