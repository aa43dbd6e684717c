// Inline images: their keys, their filters, and where their data ends.
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "content/inline_image_data.h"
#include "content/xobject_page.h"
#include "support/ascii85_text.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

Bytes AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

TEST(InlineImageEnd, StandsBetweenWhiteSpace) {
    EXPECT_EQ(ImageEnds().Find(AsBytes(" abEI cd\nEI Q"), 0), 9U);
    EXPECT_EQ(ImageEnds().Find(AsBytes(" ab EIx\nEI"), 0), 8U);
}

TEST(InlineImageEnd, IsFollowedByWhatCanBeContent) {
    EXPECT_EQ(ImageEnds().Find(AsBytes(" a EI \x80\x81 EI 1 w"), 0), 9U);
}

TEST(InlineImageEnd, IsTheEndOfTheDataWhereThereIsNone) {
    EXPECT_EQ(ImageEnds().Find(AsBytes(" abc"), 0), 4U);
    EXPECT_EQ(ImageEnds().Find(AsBytes(""), 0), 0U);
    EXPECT_EQ(ImageEnds().Find(AsBytes("EI"), 0), 2U);
}

/// What a page's content becomes; all must go well.
std::string Become(std::string_view content) {
    return Draw(OnePage(content)).content;
}

/// What an image of these keys and this data becomes, between "BI" and "EI"; what follows it must stay.
std::string Image(const std::string& keys, const std::string& data) {
    const std::string content = Become("7 w BI " + keys + " ID " + data + "\nEI 1 w");
    EXPECT_THAT(content, StartsWith("7 w\nBI\n")) << keys;
    EXPECT_THAT(content, EndsWith("\nEI\n1 w\n")) << keys;
    return Between(content, "BI\n", "EI\n1 w\n");
}

/// The lines up to "ID".
std::string Keys(const std::string& keys, const std::string& data) {
    return Between(Image(keys, data), "", "ID\n/DataSource");
}

/// The bytes of an image that is written in ASCII85.
std::string DataOf(const std::string& image) {
    return FromAscii85(Between(image, "/DataSource {{<~", "} 0 get}"));
}

const std::string kGray2 = "/W 2 /H 1 /BPC 8 /CS /G ";

TEST(InlineImage, IsWrittenWithItsKeysAndItsDataAsText) {
    EXPECT_EQ(Become("q BI /W 2 /H 1 /BPC 8 /CS /G ID ab EI Q"),
              "q\n"
              "BI\n"
              "/Width 2\n"
              "/Height 1\n"
              "/BitsPerComponent 8\n"
              "/ColorSpace DefaultGray\n"
              "/Decode [0 1]\n"
              "/Interpolate false\n"
              "/Filter /ASCII85Decode\n"
              "ID\n"
              "/DataSource {{<~@:B~>} 0 get}\n"
              "EI\n"
              "Q\n");
}

TEST(InlineImage, MayUseFullKeysAndAbbreviations) {
    const std::string full = Image(
        "/Width 2 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceRGB /Decode [1 0 1 0 1 0] /Interpolate "
        "true "
        "/Filter /ASCIIHexDecode /Intent /Perceptual",
        "010203040506>");
    EXPECT_EQ(full,
              "/Width 2\n/Height 1\n/BitsPerComponent 8\n/ColorSpace DefaultRGB\n/Decode [1 0 1 0 1 0 ]\n"
              "/Intent /Perceptual\n/Interpolate true\n/Filter /ASCIIHexDecode\nID\n"
              "/DataSource {{<010203040506>} 0 get}\n");
    EXPECT_EQ(Image("/W 2 /H 1 /BPC 8 /CS /RGB /D [1 0 1 0 1 0] /I true /F /AHx /Intent /Perceptual",
                    "010203040506>"),
              full);
}

TEST(InlineImage, IsInADeviceSpaceByItsStandIn) {
    for (const auto& [space, line] : {std::pair{"/G", "DefaultGray\n/Decode [0 1]\n"},
                                      std::pair{"/DeviceGray", "DefaultGray\n/Decode [0 1]\n"},
                                      std::pair{"/RGB", "DefaultRGB\n/Decode [0 1 0 1 0 1]\n"},
                                      std::pair{"/DeviceRGB", "DefaultRGB\n/Decode [0 1 0 1 0 1]\n"},
                                      std::pair{"/CMYK", "DefaultCMYK\n/Decode [0 1 0 1 0 1 0 1]\n"},
                                      std::pair{"/DeviceCMYK", "DefaultCMYK\n/Decode [0 1 0 1 0 1 0 1]\n"}}) {
        EXPECT_THAT(Keys("/W 1 /H 1 /BPC 8 /F /AHx /CS "s + space, "00>"),
                    HasSubstr("\n/ColorSpace "s + line + "/Interpolate false\n"))
            << space;
    }
}

TEST(InlineImage, MayBeAStencil) {
    EXPECT_EQ(Image("/W 8 /H 2 /IM true", "ab"),
              "/Width 8\n/Height 2\n/BitsPerComponent 1\n/ImageMask true\n/Decode [0 1]\n/Interpolate false\n"
              "/Filter /ASCII85Decode\nID\n/DataSource {{<~@:B~>} 0 get}\n");
    EXPECT_THAT(Keys("/W 8 /H 2 /ImageMask true /D [1 0]", "ab"),
                HasSubstr("/ImageMask true\n/Decode [1 0 ]\n"));
    EXPECT_THAT(Keys(kGray2 + "/IM false", "ab"), Not(HasSubstr("ImageMask")));
}

// Indexed images.

TEST(InlineImage, MayBeIndexedByAString) {
    EXPECT_THAT(
        Keys("/W 8 /H 1 /BPC 1 /CS [/I /RGB 1 (abcdef)]", "a"),
        HasSubstr("\n/BitsPerComponent 1\n/ColorSpace [/Indexed DefaultRGB 1 (abcdef)]\n/Decode [0 1]\n"));
    EXPECT_THAT(
        Keys("/W 2 /H 1 /BPC 4 /CS [/Indexed /DeviceGray 15 <000102030405060708090A0B0C0D0E0F>]", "a"),
        HasSubstr("\n/ColorSpace [/Indexed DefaultGray 15 <000102030405060708090A0B0C0D0E0F>]\n"
                  "/Decode [0 15]\n"));
    EXPECT_THAT(Keys("/W 4 /H 1 /BPC 2 /CS [/I /CMYK 0 <00000000>]", "a"),
                HasSubstr("\n/ColorSpace [/Indexed DefaultCMYK 0 <00000000>]\n/Decode [0 3]\n"));
    EXPECT_THAT(Keys("/W 1 /H 1 /BPC 8 /CS [/I /G 0 <00>]", "a"), HasSubstr("\n/Decode [0 255]\n"));
}

TEST(InlineImage, KeepsTheLookupStringAsItStands) {
    EXPECT_THAT(Keys("/W 8 /H 1 /BPC 1 /CS [/I /G 1 (\\)\\201)]", "a"),
                HasSubstr("[/Indexed DefaultGray 1 (\\)\\201)]\n"));
    EXPECT_THAT(Keys("/W 8 /H 1 /BPC 1 /CS [/I /G 1 <0 0\nfF>]", "a"),
                HasSubstr("[/Indexed DefaultGray 1 <0 0\nfF>]\n"));
    EXPECT_THAT(Keys("/W 8 /H 1 /BPC 1 /CS [/I /G 1 (\x80\xFF)]", "a"),
                HasSubstr("[/Indexed DefaultGray 1 (\x80\xFF)]\n"));
}

// Filters. All data is whole and right, but that of DCT.

const std::string kFlate = "\x78\x01\x01\x02\x00\xFD\xFF"s + "ab" + "\x01\x26\x00\xC4"s;  // one stored block
const std::string kRunLength = "\x01"s + "ab" + "\x80";
const std::string kLzw = "\x80\x18\x4C\x50\x10"s;  // codes of nine bits: 256 97 98 257
const std::string kFax = "\x26\xA2\xFF\xFE"s;  // eight black rows of eight pixels, without an end of block
const std::string kFaxKeys = "/W 8 /H 8 /BPC 1 /CS /G /DP << /K -1 /Columns 8 >> ";

TEST(InlineImage, InHexadecimalStaysInHexadecimal) {
    EXPECT_EQ(Image(kGray2 + "/F /AHx", "61 62>"),
              "/Width 2\n/Height 1\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [0 1]\n"
              "/Interpolate false\n/Filter /ASCIIHexDecode\nID\n/DataSource {{<6162>} 0 get}\n");
    EXPECT_EQ(Image(kGray2 + "/F [/ASCIIHexDecode]", "61 62>"), Image(kGray2 + "/F /AHx", "6162>"));
}

TEST(InlineImage, InAscii85StaysInAscii85) {
    const std::string expected =
        "/Width 2\n/Height 1\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n/Decode [0 1]\n"
        "/Interpolate false\n/Filter /ASCII85Decode\nID\n/DataSource {{<~@:B~>} 0 get}\n";
    EXPECT_EQ(Image(kGray2 + "/F /A85", "@:B~>"), expected);
    EXPECT_EQ(Image(kGray2 + "/F /ASCII85Decode", "@ :\nB~>"), expected);
}

TEST(InlineImage, OfDamagedDataIsWrittenUpToTheDamageAndTold) {
    PdfBuilder pdf = OnePage("BI " + kGray2 + "/F /A85 ID @:Buu uuuuu~> EI 1 w");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, -4092);
    EXPECT_GT(conversion.error.offset, 0U);
    EXPECT_THAT(ContentOf(conversion.output),
                AllOf(HasSubstr("/DataSource {{<~@:Bu"), EndsWith("EI\n1 w\n")));
}

/// Compressed data goes as it is into ASCII85, and the decode array of its own stays its own.
void IsPassedOn(const std::string& keys, const std::string& filter, const std::string& name,
                const std::string& data) {
    const std::string image = Image(keys + "/F " + filter, data);
    EXPECT_THAT(image, HasSubstr("\n/Filter [/ASCII85Decode /" + name + "]\n")) << filter;
    EXPECT_THAT(image, Not(HasSubstr("/Decode ["))) << filter;
    const std::string passed = DataOf(image);
    EXPECT_THAT(passed, StartsWith(data)) << filter;
    EXPECT_LE(passed.size(), data.size() + 1) << filter;  // the white space in front of "EI" does no harm
}

TEST(InlineImage, OfCompressedDataNamesItsFilterBehindAscii85) {
    for (const char* filter : {"/Fl", "/FlateDecode", "[/Fl]"}) {
        IsPassedOn(kGray2, filter, "FlateDecode", kFlate);
    }
    for (const char* filter : {"/RL", "/RunLengthDecode"}) {
        IsPassedOn(kGray2, filter, "RunLengthDecode", kRunLength);
    }
    for (const char* filter : {"/LZW", "/LZWDecode"}) {
        IsPassedOn(kGray2, filter, "LZWDecode", kLzw);
    }
    for (const char* filter : {"/CCF", "/CCITTFaxDecode"}) {
        IsPassedOn(kFaxKeys, filter, "CCITTFaxDecode", kFax);
    }
    for (const char* filter : {"/DCT", "/DCTDecode"}) {
        IsPassedOn(kGray2, filter, "DCTDecode", "\xFF\xD8\xFF\xE0\x80\xFF\xD9");
    }
}

TEST(InlineImage, OfCompressedDataKeepsADecodeArrayThatIsGiven) {
    EXPECT_THAT(Keys(kGray2 + "/D [1 0] /F /Fl", kFlate),
                HasSubstr("/ColorSpace DefaultGray\n/Decode [1 0 ]\n"));
}

TEST(InlineImage, TakesTheParametersOfItsFilterAlong) {
    EXPECT_THAT(
        Keys(kGray2 + "/F /Fl /DP << /Predictor 1 >>", kFlate),
        HasSubstr("\n/Filter [/ASCII85Decode /FlateDecode]\n/DecodeParms [null << /Predictor 1 >>]\n"));
    EXPECT_THAT(
        Keys(kGray2 + "/F [/Fl] /DecodeParms [<< /Predictor 1 >>]", kFlate),
        HasSubstr("\n/Filter [/ASCII85Decode /FlateDecode]\n/DecodeParms [null << /Predictor 1 >>]\n"));
    const std::string fax = Keys(kFaxKeys + "/F /CCF", kFax);
    EXPECT_THAT(
        fax, AllOf(HasSubstr("\n/DecodeParms [null << "), HasSubstr(" /K -1 "), HasSubstr(" /Columns 8 ")));
}

TEST(InlineImage, WithTwoFiltersKeepsTheFirstAsItsText) {
    const std::string twice = Image(kGray2 + "/F [/A85 /RL]", "!F]Gf~>");
    EXPECT_THAT(twice, HasSubstr("\n/Interpolate false\n/Filter [/ASCII85Decode /RunLengthDecode]\nID\n"
                                 "/DataSource {{<~!F]Gf~>} 0 get}\n"));
    EXPECT_THAT(
        Image(kGray2 + "/F [/AHx /RL]", "01 6162 80>"),
        HasSubstr("\n/Filter [/ASCIIHexDecode /RunLengthDecode]\nID\n/DataSource {{<01616280>} 0 get}\n"));
    EXPECT_THAT(Image(kGray2 + "/F [/AHx /Fl] /DP [null << /Predictor 1 >>]", "7801010200fdff6162012600c4>"),
                HasSubstr("\n/Filter [/ASCIIHexDecode /FlateDecode]\n"
                          "/DecodeParms [null << /Predictor 1 >>]\nID\n"));
    // run length of run length: 02 (01 a b) 00 (80) 80
    EXPECT_THAT(Image(kGray2 + "/F [/RL /RL]", "\x02\x01"s + "ab" + "\x00\x80\x80"s),
                HasSubstr("\n/Filter [/ASCII85Decode /RunLengthDecode /RunLengthDecode]\nID\n"));
}

TEST(InlineImage, OfAsciiDataInsideOtherDataNamesBothFilters) {
    // run length of hexadecimal digits, and those of ASCII85
    EXPECT_THAT(Image(kGray2 + "/F [/RL /AHx]", "\x04" + "6162>\x80"s),
                HasSubstr("\n/Filter [/ASCII85Decode /RunLengthDecode /ASCIIHexDecode]\nID\n"));
    EXPECT_THAT(
        Image(kGray2 + "/F [/AHx /A85]", "403A427E3E>"),
        HasSubstr("\n/Filter [/ASCIIHexDecode /ASCII85Decode]\nID\n/DataSource {{<403A427E3E>} 0 get}"));
}

TEST(InlineImage, WithAFilterThatPostScriptLacksIsPassedOver) {
    EXPECT_EQ(Image(kGray2 + "/F /JPX", "abc"), "");
    EXPECT_EQ(Image(kGray2 + "/F [/A85 /JBIG2Decode]", "@:B~>"), "");
}

TEST(InlineImage, WithoutASizeOrASpaceIsPassedOver) {
    EXPECT_EQ(Image("/H 1 /BPC 8 /CS /G", ""), "");
    EXPECT_EQ(Image("/W -1 /H 1 /BPC 8 /CS /G", ""), "");
    EXPECT_EQ(Image("/W 2 /H 1 /BPC 8", "ab"), "");
    EXPECT_EQ(Image("/W 2 /H 1 /BPC 8 /CS /Unknown", "ab"), "");
}

// Where the data ends.

TEST(InlineImage, TakesAsManyBytesAsItsRowsNeed) {
    constexpr std::tuple<const char*, std::size_t> kImages[] = {
        {"/W 3 /H 2 /BPC 8 /CS /G", 6},
        {"/W 3 /H 2 /BPC 8 /CS /RGB", 18},
        {"/W 3 /H 2 /BPC 8 /CS /CMYK", 24},
        {"/W 9 /H 3 /BPC 1 /CS /G", 6},
        {"/W 3 /H 2 /BPC 4 /CS /RGB", 10},
        {"/W 3 /H 2 /BPC 2 /CS /G", 2},
        {"/W 17 /H 2 /IM true", 6},
        {"/W 3 /H 2 /BPC 16 /CS /G", 12},
        {"/W 9 /H 2 /BPC 1 /CS [/I /RGB 1 (abcdef)]", 4},
        {"/W 5 /H 1 /BPC 4 /CS [/I /CMYK 0 <00000000>]", 3}};
    for (const auto& [keys, size] : kImages) {
        // Nothing but the count tells this data from what follows it.
        std::string data;
        while (data.size() < size) {
            data += "\nEI 9 w ";
        }
        data.resize(size);
        EXPECT_EQ(DataOf(Image(keys, data)), data) << keys;
    }
}

TEST(InlineImage, MayHoldTheLettersOfItsEnd) {
    EXPECT_EQ(DataOf(Image("/W 9 /H 1 /BPC 8 /CS /G", "ab\nEI\ncde")), "ab\nEI\ncde");
    const std::string data = "\x0B"s + "ab\nEI Q\n1 w" + "\x80";
    EXPECT_THAT(DataOf(Image("/W 12 /H 1 /BPC 8 /CS /G /F /RL", data)), StartsWith(data));
    const std::string stored = "\x78\x01\x01\x0C\x00\xF3\xFF"s + "ab\nEI Q\n1 w " + "\x13\x11\x02\xBF";
    EXPECT_THAT(DataOf(Image("/W 12 /H 1 /BPC 8 /CS /G /F /Fl", stored)), StartsWith(stored));
}

TEST(InlineImage, OfWholeDataEndsAtAnEndThatFollowsDirectly) {
    const std::string flate = Become("BI " + kGray2 + "/F /Fl ID " + kFlate + "EI 1 w");
    EXPECT_EQ(DataOf(flate), kFlate);
    EXPECT_THAT(flate, EndsWith("} 0 get}\nEI\n1 w\n"));
    // One stored block of 12 bytes that hold the letters, too: what stands before these is not all of the
    // image.
    const std::string stored = "\x78\x01\x01\x0C\x00\xF3\xFF"s + "abEI Qcdefgh" + "\x19\x8A\x04\x24";
    const std::string image = Become("BI /W 12 /H 1 /BPC 8 /CS /G /F /Fl ID " + stored + "EI 1 w");
    EXPECT_EQ(DataOf(image), stored);
    EXPECT_THAT(image, EndsWith("} 0 get}\nEI\n1 w\n"));
}

TEST(InlineImage, OfDamagedDataWithoutAnOrdinaryEndTakesAllThatFollows) {
    const std::string content = Become("BI " + kGray2 + "/F /Fl ID damagedEI 1 w");
    EXPECT_EQ(DataOf(content), "damagedEI 1 w");
}

TEST(InlineImage, BeginsBehindOneWhiteSpace) {
    EXPECT_EQ(DataOf(Become("BI " + kGray2 + "ID\nab\nEI")), "ab");
    EXPECT_EQ(DataOf(Become("BI " + kGray2 + "ID\r\nab\nEI")), "ab");
    EXPECT_EQ(DataOf(Become("BI " + kGray2 + "ID  b\nEI")), " b");
    EXPECT_EQ(DataOf(Become("BI " + kGray2 + "ID \nb\nEI")), "\nb");
}

TEST(InlineImage, MayEndRightInFrontOfItsEnd) {
    EXPECT_EQ(Become("BI " + kGray2 + "ID abEI 1 w"), Become("BI " + kGray2 + "ID ab EI 1 w"));
    EXPECT_EQ(Become("BI " + kGray2 + "/F /AHx ID 6162>EI 1 w"),
              Become("BI " + kGray2 + "/F /AHx ID 6162> EI 1 w"));
}

TEST(InlineImage, OfDataThatIsTooLongGoesOnAtItsEnd) {
    const std::string content = Become("BI " + kGray2 + "ID ab 9 w (\x80 \nEI 1 w");
    EXPECT_EQ(DataOf(content), "ab");
    EXPECT_THAT(content, EndsWith("} 0 get}\nEI\n1 w\n"));
}

/// What follows must not depend on an image that follows later.
TEST(InlineImage, GoesOnBehindItsOwnEndWhenAnotherOneFollows) {
    const std::string image = "BI " + kGray2 + "ID ab";
    const std::string written = Become(image + " EI");
    EXPECT_EQ(Become(image + " EI 1 w " + image + " EI"), written + "1 w\n" + written);
    EXPECT_EQ(Become(image + "EI 1 w " + image + "EI"), written + "1 w\n" + written);
    EXPECT_EQ(Become(image + "EI 1 w " + image + " EI"), written + "1 w\n" + written);
}

TEST(InlineImage, GoesOnBehindItsOwnEndWhenBinaryTextFollows) {
    const std::string image = "BI " + kGray2 + "ID ab EI";
    const std::string written = Become(image);
    const std::string text = "(\x80\xFF) Tj\n";
    EXPECT_EQ(Become(image + "\n" + text), written + text);
    EXPECT_EQ(Become(image + "\n" + text + image), written + text + written);
    const std::string hex = "BI " + kGray2 + "/F /AHx ID 6162> EI";
    EXPECT_EQ(Become(hex + "\n" + text + hex), Become(hex) + text + Become(hex));
    const std::string flate = "BI " + kGray2 + "/F /Fl ID " + kFlate + "\nEI";
    EXPECT_EQ(Become(flate + "\n" + text + flate), Become(flate) + text + Become(flate));
}

TEST(InlineImage, CutShortHasTheDataThatIsThere) {
    EXPECT_THAT(Become("1 w BI " + kGray2 + "ID a"), EndsWith("ID\n/DataSource {{<~@/~>} 0 get}\n"));
    EXPECT_THAT(Become("1 w BI " + kGray2 + "ID "), EndsWith("ID\n/DataSource {{<~~>} 0 get}\n"));
    EXPECT_THAT(Become("1 w BI " + kGray2 + "ID"), EndsWith("ID\n/DataSource {{<~~>} 0 get}\n"));
    EXPECT_THAT(Become("1 w BI " + kGray2 + "/F /AHx ID 61"), EndsWith("ID\n/DataSource {{<61>} 0 get}\n"));
    EXPECT_THAT(Become("1 w BI " + kGray2 + "/F /Fl ID " + kFlate.substr(0, 5)),
                StartsWith("1 w\nBI\n/Width 2\n"));
}

TEST(InlineImage, OfAsciiDataWithoutItsMarkEndsAtEI) {
    EXPECT_THAT(Become("BI " + kGray2 + "/F /AHx ID 6162\nEI 1 w"),
                EndsWith("/DataSource {{<6162>} 0 get}\nEI\n1 w\n"));
}

TEST(InlineImage, WithoutItsEndIsWrittenWithoutIt) {
    const std::string ended = Become("BI " + kGray2 + "ID ab EI");
    ASSERT_THAT(ended, EndsWith("EI\n"));
    const std::string written = ended.substr(0, ended.size() - 3);
    EXPECT_EQ(Become("BI " + kGray2 + "ID ab"), written);
    EXPECT_EQ(Become("BI " + kGray2 + "ID ab 1 w"), written + "1 w\n");
}

TEST(InlineImage, WithoutItsBeginningIsPassedOver) {
    EXPECT_EQ(Become("7 w ID ab \x80 c\nEI 1 w"), "7 w\nEI\n1 w\n");
}

TEST(InlineImage, TakesEntriesOfTheStackOnlyBehindItsBeginning) {
    EXPECT_THAT(Become("9 BI " + kGray2 + "ID ab EI w"), EndsWith("} 0 get}\nEI\n9 w\n"));
}

TEST(InlineImage, PassesOverWhatStandsBeforeItsPairs) {
    EXPECT_EQ(Become("BI (stray) " + kGray2 + "ID ab EI 1 w"), Become("BI " + kGray2 + "ID ab EI 1 w"));
}

TEST(InlineImage, OfMuchDataIsAnArrayOfStrings) {
    std::string data;
    std::uint32_t seed = 7;
    while (data.size() < 70000) {
        seed = seed * 1103515245 + 12345;
        data += static_cast<char>(seed >> 16U);
    }
    const std::string image = Become("BI /W 700 /H 100 /BPC 8 /CS /G ID " + data + "\nEI 1 w");
    EXPECT_THAT(image,
                StartsWith("BI\n/Width 700\n/Height 100\n/BitsPerComponent 8\n/ColorSpace DefaultGray\n"
                           "/Decode [0 1]\n/Interpolate false\n/Filter /ASCII85Decode\nID\n"
                           "/DataSource {{<~"));
    EXPECT_TRUE(image.ends_with("~>\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \nEI\n1 w\n"));
    std::string_view rest = std::string_view(image).substr(image.find("{{") + 2);
    std::string decoded;
    while (rest.starts_with("<~")) {
        const std::string piece = FromAscii85(rest.substr(2));
        EXPECT_LE(piece.size(), 65535U);
        decoded += piece;
        rest.remove_prefix(rest.find("~>") + 2);
    }
    EXPECT_TRUE(decoded == data);
}

TEST(InlineImage, OfAsMuchDataAsAStringHoldsIsOneString) {
    const std::string image =
        Become("BI /W 65535 /H 1 /BPC 8 /CS /G ID " + std::string(65535, 'x') + "\nEI 1 w");
    EXPECT_TRUE(image.ends_with("~>} 0 get}\nEI\n1 w\n"));
    EXPECT_TRUE(DataOf(image) == std::string(65535, 'x'));
}

TEST(InlineImage, StandsInFormsToo) {
    const Drawing page = Draw(DrawingPage("/X Do").Stream(10, "BI " + kGray2 + "ID ab EI", kForm));
    EXPECT_EQ(page.setup, FormDefined("N10", Become("BI " + kGray2 + "ID ab EI")));
}

// The spaces of these jobs are fakes.
class InlineImageSpaces : public FakeResourceTest {
protected:
    /// The lines from the space to the interpolation.
    static std::string Lines(const std::string& space, const std::string& keys = "/CS /CS0 /BPC 8",
                             const std::string& data = "aaaaaaaa") {
        PdfBuilder pdf = OnePage("BI /W 1 /H 1 " + keys + " ID " + data + "\nEI 1 w",
                                 "/Resources << /ColorSpace << /CS0 20 0 R >> >>");
        const FileRun run = RunFile(pdf.Object(20, space).Bytes());
        EXPECT_THAT(run.pages, Each(0));
        EXPECT_THAT(run.output, HasSubstr("\nEI\n1 w\n"));
        return Between(ContentOf(run.output), "\n/ColorSpace ", "/Interpolate");
    }
    static std::string DecodeLine(const std::string& space, const std::string& bits = "8") {
        const std::string lines = Lines(space, "/CS /CS0 /BPC " + bits);
        EXPECT_THAT(lines, StartsWith("/N20 /ColorSpace findRes \n"));
        return lines.substr(lines.find('\n') + 1);
    }
};

TEST_F(InlineImageSpaces, AreNamed) {
    EXPECT_EQ(Lines("<< /Family 16 /N 1 >>"), "/N20 /ColorSpace findRes \n/Decode [0 1]\n");
}

TEST_F(InlineImageSpaces, MayBeTheBaseOfAnIndexedOne) {
    EXPECT_EQ(Lines("<< /Family 32 /N 3 >>", "/BPC 8 /CS [/I /CS0 1 (abcdef)]", "a"),
              "[/Indexed /N20 /ColorSpace findRes  1 (abcdef)]\n/Decode [0 255]\n");
}

TEST_F(InlineImageSpaces, HaveDecodeArraysOfTheirOwn) {
    EXPECT_EQ(DecodeLine("<< /Family 16 /N 1 >>"), "/Decode [0 1]\n");
    EXPECT_EQ(DecodeLine("<< /Family 1024 /N 1 >>"), "/Decode [0 1]\n");
    EXPECT_EQ(DecodeLine("<< /Family 32 /N 3 >>"), "/Decode [0 1 0 1 0 1]\n");
    EXPECT_EQ(DecodeLine("<< /Family 256 /N 1 >>", "4"), "/Decode [0 15]\n");
}

// The prolog puts the range of the lightness in front.
TEST_F(InlineImageSpaces, OfLabHaveFourNumbers) {
    EXPECT_EQ(DecodeLine("<< /Family 64 /N 3 >>"), "/Decode [-100 100 -100 100]\n");
}

TEST_F(InlineImageSpaces, OfSeveralColorantsHaveAPairForEach) {
    EXPECT_EQ(DecodeLine("<< /Family 2048 /N 2 >>"), "/Decode [0 1 0 1 ]\n");
    EXPECT_EQ(DecodeLine("<< /Family 2048 /N 5 >>"), "/Decode [0 1 0 1 0 1 0 1 0 1 ]\n");
}

TEST_F(InlineImageSpaces, OfOtherFamiliesHaveNone) {
    EXPECT_EQ(DecodeLine("<< /Family 128 /N 3 >>"), "");
    EXPECT_EQ(DecodeLine("<< /Family 128 /N 1 >>"), "");
}

TEST_F(InlineImageSpaces, GiveTheirComponentsToTheCountOfTheData) {
    EXPECT_EQ(Lines("<< /Family 2048 /N 5 >>", "/CS /CS0 /BPC 8 /D [0 1]", "\nEI  "),
              "/N20 /ColorSpace findRes \n/Decode [0 1 ]\n");
}

}  // namespace
}  // namespace zorvan::test
