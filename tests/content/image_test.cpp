// Images: their data once a page as a resource, and the dictionaries that paint from it.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "content/xobject_page.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kSize = "/Subtype /Image /Width 2 /Height 3 ";
const std::string kHex = "/Filter /ASCIIHexDecode ";

/// What drawing an image with these entries becomes.
std::string Drawn(const std::string& entries) {
    return Draw(DrawingPage("/X Do").Stream(10, "00>", entries)).content;
}

/// The line of a dictionary that begins so.
std::string LineOf(const std::string& text, const std::string& key) {
    return key + Between(text, "\n" + key, "\n");
}

TEST(Image, IsPaintedFromItsDataInTheSetup) {
    const Drawing page = Draw(DrawingPage("q /X Do Q")
                                  .Stream(10, "0102030405060708090A0B0C0D0E0F101112>",
                                          kSize + kHex + "/BitsPerComponent 8 /ColorSpace /DeviceRGB"));
    EXPECT_EQ(page.setup,
              "/N10 currentfile <</Filter /ASCIIHexDecode\n/Intent 0 >> /ReusableStreamDecode\n"
              "%%BeginData: 37 Bytes\nfilter\n0102030405060708090A0B0C0D0E0F101112>\n%%EndData\n"
              "/DataSource defineRes pop\n");
    EXPECT_EQ(page.content,
              "q\n"
              "DefaultRGB setcolorspace\n"
              "<</ImageType 1\n"
              "/Width 2\n"
              "/Height 3\n"
              "/BitsPerComponent 8\n"
              "/ImageMatrix [2 0 0 -3 0 3]\n"
              "/Decode [0 1 0 1 0 1]\n"
              "/Interpolate false\n"
              "/DataSource /N10 /DataSource findRes\n"
              ">>\n"
              "image\n"
              "Q\n");
}

TEST(Image, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 10 2 R");
    pdf.Object(10, "<< /Length 3 " + std::string(kPixel) + " >>\nstream\n80>\nendstream", 2);
    const Drawing page = Draw(pdf);
    EXPECT_EQ(page.setup, HexImageData("N10-2", "80>"));
    EXPECT_EQ(page.content, PixelDrawn("N10-2"));
}

TEST(Image, IsInADeviceSpaceByItsStandIn) {
    for (const auto& [space, text, decode] :
         {std::tuple{"/DeviceGray", "DefaultGray", "/Decode [0 1]"},
          std::tuple{"/DeviceRGB", "DefaultRGB", "/Decode [0 1 0 1 0 1]"},
          std::tuple{"/DeviceCMYK", "DefaultCMYK", "/Decode [0 1 0 1 0 1 0 1]"},
          std::tuple{"[/DeviceRGB]", "DefaultRGB", "/Decode [0 1 0 1 0 1]"}}) {
        const std::string drawn = Drawn(kSize + kHex + "/BitsPerComponent 8 /ColorSpace " + space);
        EXPECT_THAT(drawn, StartsWith(std::string(text) + " setcolorspace\n<</ImageType 1\n")) << space;
        EXPECT_EQ(LineOf(drawn, "/Decode ["), decode) << space;
    }
}

TEST(Image, TakesItsEntriesByReference) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "00>",
               "/Subtype 20 0 R /Width 21 0 R /Height 22 0 R /BitsPerComponent 23 0 R /ColorSpace 24 0 R "
               "/Decode 25 0 R /Interpolate 26 0 R /Intent 27 0 R " +
                   kHex);
    pdf.Object(20, "/Image").Object(21, "5").Object(22, "7").Object(23, "4").Object(24, "/DeviceGray");
    pdf.Object(25, "[1 28 0 R]").Object(26, "true").Object(27, "/Perceptual").Object(28, "0");
    EXPECT_EQ(Draw(pdf).content,
              "DefaultGray setcolorspace\n<</ImageType 1\n/Width 5\n/Height 7\n/BitsPerComponent 4\n"
              "/ImageMatrix [5 0 0 -7 0 7]\n/Decode [1 0 ]\n/Interpolate true\n/Intent /Perceptual\n"
              "/DataSource /N10 /DataSource findRes\n>>\nimage\n");
}

TEST(Image, HasTheBitsOfItsDataWhereItDoesNotTellThem) {
    EXPECT_EQ(LineOf(Drawn(kSize + "/ColorSpace /DeviceGray /Filter /DCTDecode"), "/BitsPerComponent "),
              "/BitsPerComponent 8");
    EXPECT_EQ(LineOf(Drawn(kSize + "/ColorSpace /DeviceGray /Filter /CCITTFaxDecode"), "/BitsPerComponent "),
              "/BitsPerComponent 1");
    for (const std::string bits : {"1", "2", "4", "8", "16"}) {
        EXPECT_EQ(LineOf(Drawn(kSize + kHex + "/ColorSpace /DeviceGray /BitsPerComponent " + bits),
                         "/BitsPerComponent "),
                  "/BitsPerComponent " + bits);
    }
}

TEST(Image, KeepsItsDecodeArray) {
    const std::string entries = kSize + kHex + "/BitsPerComponent 8 /ColorSpace /DeviceRGB /Decode ";
    EXPECT_EQ(LineOf(Drawn(entries + "[1 0 0.50 1 -1 2.0]"), "/Decode ["), "/Decode [1 0 0.5 1 -1 2 ]");
    EXPECT_EQ(LineOf(Drawn(entries + "null"), "/Decode ["), "/Decode [0 1 0 1 0 1]");
}

TEST(Image, TellsWhetherItIsInterpolatedAndItsIntent) {
    const std::string entries = kSize + kHex + "/BitsPerComponent 8 /ColorSpace /DeviceGray ";
    EXPECT_THAT(Drawn(entries), HasSubstr("\n/Interpolate false\n/DataSource "));
    EXPECT_THAT(Drawn(entries + "/Interpolate false"), HasSubstr("\n/Interpolate false\n/DataSource "));
    EXPECT_THAT(Drawn(entries + "/Interpolate true"), HasSubstr("\n/Interpolate true\n/DataSource "));
    EXPECT_THAT(Drawn(entries + "/Intent /Saturation"),
                HasSubstr("\n/Interpolate false\n/Intent /Saturation\n/DataSource "));
    EXPECT_THAT(Drawn(entries + "/Intent (Saturation)"), Not(HasSubstr("/Intent")));
}

TEST(Image, OfAStencilIsPaintedInTheCurrentColor) {
    const Drawing page = Draw(DrawingPage("1 0 0 rg /X Do 5 w")
                                  .Stream(10, "80>", kSize + kHex + "/ImageMask true /BitsPerComponent 1"));
    EXPECT_EQ(page.setup, HexImageData("N10", "80>", 1));
    EXPECT_EQ(page.content,
              "1 0 0 rg\n"
              "<</ImageType 1\n/Width 2\n/Height 3\n/BitsPerComponent 1\n/ImageMatrix [2 0 0 -3 0 3]\n"
              "/Decode [0 1]\n/Interpolate false\n/DataSource /N10 /DataSource findRes\n>>\n"
              "imagemask\n"
              "5 w\n");
}

TEST(Image, OfAStencilNeedsNoBitsAndNoSpace) {
    const std::string plain = Drawn(kSize + kHex + "/ImageMask true");
    EXPECT_EQ(LineOf(plain, "/BitsPerComponent "), "/BitsPerComponent 1");
    EXPECT_EQ(Drawn(kSize + kHex + "/ImageMask true /ColorSpace /DeviceRGB"), plain);
    EXPECT_EQ(LineOf(Drawn(kSize + kHex + "/ImageMask true /Decode [1 0]"), "/Decode ["), "/Decode [1 0 ]");
    EXPECT_THAT(Drawn(kSize + kHex + "/ImageMask false /ColorSpace /DeviceRGB"), HasSubstr(">>\nimage\n"));
}

TEST(Image, MaskedByAStencilHoldsBothDictionaries) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "102030>",
               kSize + kHex + "/BitsPerComponent 8 /ColorSpace /DeviceRGB /Mask 11 0 R /Interpolate true");
    pdf.Stream(
        11, "F0>",
        "/Subtype /Image /Width 4 /Height 5 /ImageMask true /BitsPerComponent 1 /Decode [1 0] " + kHex);
    const Drawing page = Draw(pdf);
    EXPECT_EQ(page.setup, HexImageData("N11", "F0>", 1) + HexImageData("N10", "102030>"));
    EXPECT_EQ(page.content,
              "DefaultRGB setcolorspace\n"
              "<</ImageType 3\n"
              "/InterleaveType 3\n"
              "/MaskDict <</ImageType 1\n/Width 4\n/Height 5\n/BitsPerComponent 1\n"
              "/ImageMatrix [4 0 0 -5 0 5]\n/Decode [1 0 ]\n/Interpolate false\n"
              "/DataSource /N11 /DataSource findRes\n>>\n"
              "/DataDict <</ImageType 1\n/Width 2\n/Height 3\n/BitsPerComponent 8\n"
              "/ImageMatrix [2 0 0 -3 0 3]\n/Decode [0 1 0 1 0 1]\n/Interpolate true\n"
              "/DataSource /N10 /DataSource findRes\n>>\n"
              ">>\n"
              "image\n");
}

TEST(Image, MayShareItsMaskWithAnother) {
    PdfBuilder pdf = DrawingPage("/X Do /Y Do", "/X 10 0 R /Y 12 0 R");
    const std::string pixel = kPixel;
    pdf.Stream(10, "10>", pixel + "/Mask 11 0 R").Stream(12, "12>", pixel + "/Mask 11 0 R");
    pdf.Stream(11, "F0>", "/Subtype /Image /Width 4 /Height 5 /ImageMask true " + kHex);
    const Drawing page = Draw(pdf);
    EXPECT_EQ(page.setup,
              HexImageData("N11", "F0>", 1) + HexImageData("N10", "10>") + HexImageData("N12", "12>"));
    EXPECT_EQ(CountOf(page.content, "/DataSource /N11 /DataSource findRes\n"), 2);
}

TEST(Image, MayBeMaskedByColorKeys) {
    const std::string drawn =
        Drawn(kSize + kHex + "/BitsPerComponent 8 /ColorSpace /DeviceRGB /Mask [1 2 3 4 250 255]");
    EXPECT_EQ(drawn,
              "DefaultRGB setcolorspace\n"
              "<</ImageType 4\n/Width 2\n/Height 3\n/BitsPerComponent 8\n/ImageMatrix [2 0 0 -3 0 3]\n"
              "/MaskColor [1 2 3 4 250 255 ]\n"
              "/Decode [0 1 0 1 0 1]\n/Interpolate false\n/DataSource /N10 /DataSource findRes\n>>\nimage\n");
}

TEST(Image, WhoseMaskIsNoImageIsLeftOutAndRecorded) {
    PdfBuilder pdf = DrawingPage("1 w /X Do 2 w").Stream(10, "80>", std::string(kPixel) + " /Mask 11 0 R");
    pdf.Stream(11, "", "/Subtype /Form /BBox [0 0 1 1]");
    EXPECT_EQ(DrawRecording(-4074, pdf, 10).content, "1 w\n2 w\n");
}

/// The record keeps the first error: that the mask is no XObject, or that its data cannot be sent.
TEST(Image, WhoseMaskIsUnusableIsLeftOut) {
    const auto masked = [](const std::string& entries) {
        PdfBuilder pdf =
            DrawingPage("1 w /X Do 2 w").Stream(10, "80>", std::string(kPixel) + " /Mask 11 0 R");
        return pdf.Stream(11, "F0>", entries);
    };
    EXPECT_EQ(DrawRecording(-4081, masked("/Subtype /Unknown"), 11).content, "1 w\n2 w\n");
    const std::string lacking = "/Subtype /Image /Width 1 /Height 1 /ImageMask true /Filter /JBIG2Decode";
    EXPECT_EQ(DrawRecording(-4092, masked(lacking), 11).content, "1 w\n2 w\n");
}

TEST(Image, WhoseMaskIsNotThereIsPaintedWithoutIt) {
    PdfBuilder pdf = DrawingPage("/X Do").Stream(10, "80>", std::string(kPixel) + " /Mask 99 0 R");
    EXPECT_EQ(Draw(pdf).content, PixelDrawn("N10"));
}

TEST(Image, WithAFilterThatPostScriptLacksIsLeftOutAndRecorded) {
    for (const std::string filter : {"/JPXDecode", "[/ASCIIHexDecode /JBIG2Decode]"}) {
        PdfBuilder pdf = DrawingPage("1 w /X Do 2 w");
        pdf.Stream(10, "00>", kSize + "/BitsPerComponent 8 /ColorSpace /DeviceGray /Filter " + filter);
        const Drawing page = DrawRecording(-4092, pdf, 10);
        EXPECT_EQ(page.setup, "") << filter;
        EXPECT_EQ(page.content, "1 w\n2 w\n") << filter;
    }
}

TEST(Image, WithoutAFilterIsCompressedOnItsWay) {
    PdfBuilder pdf = DrawingPage("/X Do").Stream(
        10, "abc", "/Subtype /Image /Width 3 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray");
    EXPECT_EQ(
        Draw(pdf).setup,
        "/N10 currentfile <</Filter /LZWDecode /Intent 0>> /ReusableStreamDecode\n"
        "%%BeginData: 256 Bytes\nfilter\n\x80\x18\x4C\x46\x38\x08\n%%EndData\n/DataSource defineRes pop\n");
}

TEST(Image, WithoutASpaceIsRecordedAndSendsNoData) {
    const Drawing page = DrawRecording(
        -4073, DrawingPage("1 w /X Do 2 w").Stream(10, "00>", kSize + kHex + "/BitsPerComponent 8"), 10);
    EXPECT_EQ(page.setup, "");
    EXPECT_EQ(page.content, "1 w\n2 w\n");
}

TEST(Image, OfNoSizeIsRecordedAndNotPainted) {
    for (const std::string size : {"/Width 10 /Height -3", "/Width 0 /Height 1", "/Height 1"}) {
        const Drawing page = DrawRecording(
            -4081,
            DrawingPage("1 w /X Do 2 w")
                .Stream(10, "00>",
                        "/Subtype /Image /ColorSpace /DeviceGray /BitsPerComponent 8 " + size + kHex),
            10);
        EXPECT_EQ(page.setup, "") << size;
        EXPECT_EQ(page.content, "1 w\n2 w\n") << size;
    }
}

TEST(Image, MayCarryOpiComments) {
    EXPECT_EQ(Drawn(std::string(kPixel) + " /OPI << /2.0 << /F (high.tif) >> >>"),
              "save\n%%BeginOPI: 2.0\n%%ImageFileName: high.tif\n" + PixelDrawn("N10") +
                  "%%EndIncludedImage\n%%EndOPI\nrestore\n");
    EXPECT_EQ(Drawn(std::string(kPixel) + " /OPI << /1.3 << /F (high.tif) >> >>"),
              "save\n%%BeginOPI: 1.3\n%ALDImageFilename: high.tif\n%%BeginObject: image\n" +
                  PixelDrawn("N10") + "%%EndObject\nrestore\n");
}

// The spaces of these jobs are fakes.
class ImageSpaces : public XObjectsAmongFakes {
protected:
    static FileRun RunWith(const std::string& space, const std::string& entries = "/BitsPerComponent 8") {
        PdfBuilder pdf = DrawingPage("1 w /X Do 2 w");
        pdf.Stream(10, "00>", kSize + kHex + "/ColorSpace 20 0 R " + entries).Object(20, space);
        FileRun run = RunFile(pdf.Bytes());
        EXPECT_THAT(run.pages, Each(0));
        return run;
    }
    static std::string DecodeLine(const std::string& space,
                                  const std::string& entries = "/BitsPerComponent 8") {
        return LineOf(ContentOf(RunWith(space, entries).output), "/Decode [");
    }
};

TEST_F(ImageSpaces, AreDefinedInFrontOfTheDataAndNamed) {
    const std::string output = RunWith("<< /N 3 >>").output;
    EXPECT_EQ(PageSetupOf(output), "%define ColorSpace /N20\n" + HexImageData("N10", "00>"));
    EXPECT_THAT(ContentOf(output),
                StartsWith("1 w\n/N20 /ColorSpace findRes  setcolorspace\n<</ImageType 1\n"));
}

TEST_F(ImageSpaces, HaveDecodeArraysOfTheirOwn) {
    EXPECT_EQ(DecodeLine("<< /Family 16 /N 1 >>"), "/Decode [0 1]");
    EXPECT_EQ(DecodeLine("<< /Family 32 /N 3 >>"), "/Decode [0 1 0 1 0 1]");
    EXPECT_EQ(DecodeLine("<< /Family 128 /N 4 >>"), "/Decode [0 1 0 1 0 1 0 1]");
    EXPECT_EQ(DecodeLine("<< /Family 64 /N 3 >>"), "/Decode [0 100 -100 100 -100 100]");
    for (const auto& [bits, highest] :
         {std::pair{"1", "1"}, std::pair{"2", "3"}, std::pair{"4", "15"}, std::pair{"8", "255"}}) {
        EXPECT_EQ(DecodeLine("<< /Family 256 /N 1 >>", std::string("/BitsPerComponent ") + bits),
                  std::string("/Decode [0 ") + highest + "]");
    }
}

TEST_F(ImageSpaces, GiveWayToTheDecodeArrayOfTheImage) {
    EXPECT_EQ(DecodeLine("<< /Family 256 /N 1 >>", "/BitsPerComponent 4 /Decode [15 0]"), "/Decode [15 0 ]");
}

TEST_F(ImageSpaces, ThatAreMissingAreRecordedAndTheImageIsLeftOut) {
    PdfBuilder pdf = DrawingPage("1 w /X Do 2 w").Stream(10, "00>", kSize + kHex + "/BitsPerComponent 8");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_THAT(run.pages, Each(0));
    EXPECT_EQ(ContentOf(run.output), "1 w\n2 w\n");
    EXPECT_EQ(GetErrorInfo().code, -4073);
    EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10));
}

TEST_F(ImageSpaces, ThatCannotBeBuiltLeaveTheImageOut) {
    EXPECT_EQ(ContentOf(RunWith("<< /Broken true >>").output), "1 w\n2 w\n");
    EXPECT_EQ(GetErrorInfo().code, -4083);  // the first error, of the space itself
}

TEST_F(ImageSpaces, ThatStandInTheImageAreNamedByAGeneratedNumber) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "00>", kSize + kHex + "/BitsPerComponent 8 /ColorSpace << /N 3 >>");
    const std::string output = RunFile(pdf.Bytes()).output;
    EXPECT_EQ(PageSetupOf(output), "%define ColorSpace /N589823\n" + HexImageData("N10", "00>"));
    EXPECT_THAT(ContentOf(output), StartsWith("/N589823 /ColorSpace findRes  setcolorspace\n"));
}

// Whose data goes out: that of images which are drawn on the page, once.

/// The names of the images whose data stands in a page's setup, in their order.
std::vector<std::string> SentOn(const std::string& output, unsigned page = 1) {
    std::vector<std::string> names;
    const std::string setup = PageSetupOf(output, page);
    for (std::size_t at = setup.find(" currentfile <<"); at != std::string::npos;
         at = setup.find(" currentfile <<", at + 1)) {
        const std::size_t begin = setup.rfind('/', at);
        names.push_back(setup.substr(begin + 1, at - begin - 1));
    }
    return names;
}

using Names = std::vector<std::string>;

/// Images 10 to 12 as /A, /B and /C on a page of this content.
std::string PageOfImages(std::string_view content) {
    PdfBuilder pdf = DrawingPage(content, "/A 10 0 R /B 11 0 R /C 12 0 R");
    const Conversion conversion =
        Convert(pdf.Stream(10, "10>", kPixel).Stream(11, "11>", kPixel).Stream(12, "12>", kPixel).Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0);
    return conversion.output;
}

TEST(ImageData, OfImagesThatAreNotDrawnStaysAway) {
    EXPECT_EQ(SentOn(PageOfImages("1 w")), Names());
    EXPECT_EQ(SentOn(PageOfImages("/B Do")), Names({"N11"}));
    EXPECT_EQ(SentOn(PageOfImages("/C Do /A Do")), Names({"N10", "N12"}));
}

TEST(ImageData, OfAnImageDrawnFiftyTimesGoesOutOnce) {
    std::string content;
    for (int i = 0; i < 50; ++i) {
        content += "/B Do\n";
    }
    const std::string output = PageOfImages(content);
    EXPECT_EQ(SentOn(output), Names({"N11"}));
    EXPECT_EQ(CountOf(ContentOf(output), PixelDrawn("N11")), 50);
}

TEST(ImageData, GoesOutHoweverTheDrawingIsWritten) {
    for (const std::string content :
         {"/B Do", "/B\nDo", "/B\r\nDo\r\n", "/B\t \f Do", "q/B Do Q", "[]/B Do", "(x)/B Do", "/B Do/A gs",
          "/B Do%", "/B Do[", "/#42 Do", "/B % comment\nDo", "/B %Do\n Do", "/B q Do", "/A /B Do",
          "/B /A Do Do", "(/A Do) Tj /B Do", "( Do) Tj /B Do", "/B %\rDo"}) {
        const std::string output = PageOfImages(content);
        EXPECT_THAT(ContentOf(output), HasSubstr(PixelDrawn("N11"))) << content;
        EXPECT_THAT(SentOn(output), testing::Contains("N11")) << content;
    }
}

TEST(ImageData, OfNamesWithEscapesIsFound) {
    PdfBuilder pdf = DrawingPage("/Im#31#20x Do", "/Im1#20#78 10 0 R /Im2 11 0 R");
    const Drawing page = Draw(pdf.Stream(10, "10>", kPixel).Stream(11, "11>", kPixel));
    EXPECT_EQ(page.setup, HexImageData("N10", "10>"));
    EXPECT_EQ(page.content, PixelDrawn("N10"));
}

TEST(ImageData, IsFoundWhereAContentIsCutIntoStreams) {
    for (const auto& [first, second] : {std::pair{"/A", "Do"}, std::pair{"/A ", " Do"},
                                        std::pair{"1 w", "/A Do"}, std::pair{"/A\n", "Do 1 w"}}) {
        PdfBuilder pdf = Pages({"/Contents [8 0 R 9 0 R] /Resources << /XObject << /A 10 0 R >> >>"});
        pdf.Stream(8, first).Stream(9, second).Stream(10, "10>", kPixel);
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_THAT(ContentOf(conversion.output), HasSubstr(PixelDrawn("N10"))) << first << "|" << second;
        EXPECT_EQ(SentOn(conversion.output), Names({"N10"})) << first << "|" << second;
    }
}

TEST(ImageData, GoesOutOnThePagesThatDrawIt) {
    const std::string resources = "/Resources << /XObject << /A 10 0 R /B 11 0 R >> >>";
    PdfBuilder pdf = Pages({"/Contents 20 0 R " + resources, "/Contents 21 0 R " + resources, resources,
                            "/Contents 20 0 R " + resources});
    pdf.Stream(20, "/A Do").Stream(21, "/B Do /A Do").Stream(10, "10>", kPixel).Stream(11, "11>", kPixel);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_THAT(conversion.pages, Each(0));
    EXPECT_EQ(SentOn(conversion.output, 1), Names({"N10"}));
    EXPECT_EQ(SentOn(conversion.output, 2), Names({"N10", "N11"}));
    EXPECT_EQ(SentOn(conversion.output, 3), Names());
    EXPECT_EQ(SentOn(conversion.output, 4), Names({"N10"}));
}

TEST(ImageData, GoesOutAgainWhenAPageIsWrittenAgain) {
    const Job job;
    Pieces::Reset();
    EXPECT_EQ(OpenFile(DrawingPage("/X Do").Stream(10, "80>", kPixel).Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    const std::string once = Pieces::Joined();
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    const std::string twice = Pieces::Joined();
    ZORVAN_OneFileEnd();
    EXPECT_EQ(CountOf(once, HexImageData("N10", "80>")), 1);
    EXPECT_EQ(CountOf(twice, HexImageData("N10", "80>")), 2);
}

TEST(ImageData, OfAFormGoesOutWhenTheFormIsDrawn) {
    const auto page = [](std::string_view content, std::string_view form) {
        PdfBuilder pdf = DrawingPage(content, "/F 20 0 R /B 11 0 R");
        pdf.Stream(20, form, std::string(kForm) + "/Resources << /XObject << /A 10 0 R >> >>");
        return SentOn(Convert(pdf.Stream(10, "10>", kPixel).Stream(11, "11>", kPixel).Bytes()).output);
    };
    EXPECT_EQ(page("/F Do", "/A Do"), Names({"N10"}));
    EXPECT_EQ(page("/F Do /F Do", "/A Do /A Do"), Names({"N10"}));
    EXPECT_EQ(page("/F Do", "1 w"), Names());
    EXPECT_EQ(page("1 w", "/A Do"), Names());
    EXPECT_EQ(page("/F Do /B Do", "/A Do"), Names({"N10", "N11"}));
}

TEST(ImageData, OfPageAndFormGoesOutOnce) {
    PdfBuilder pdf = DrawingPage("/A Do /F Do", "/F 20 0 R /A 10 0 R");
    pdf.Stream(20, "/B Do", std::string(kForm) + "/Resources << /XObject << /B 10 0 R >> >>");
    EXPECT_EQ(SentOn(Convert(pdf.Stream(10, "10>", kPixel).Bytes()).output), Names({"N10"}));
}

TEST(ImageData, OfNestedFormsGoesOut) {
    PdfBuilder pdf = DrawingPage("/F Do", "/F 20 0 R");
    pdf.Stream(20, "/G Do", std::string(kForm) + "/Resources << /XObject << /G 21 0 R /A 10 0 R >> >>");
    pdf.Stream(21, "/A Do", kForm);  // by the resources of the form around it
    EXPECT_EQ(SentOn(Convert(pdf.Stream(10, "10>", kPixel).Bytes()).output), Names({"N10"}));
}

TEST(ImageData, OfAGlyphGoesOutInFrontOfTheFont) {
    PdfBuilder pdf = OnePage("BT /T3 12 Tf (A) Tj ET", "/Resources << /Font << /T3 20 0 R >> >>");
    pdf.Object(20,
               "<< /Type /Font /Subtype /Type3 /Name /T3 /FontMatrix [1 0 0 1 0 0] /FontBBox [0 0 1 1] "
               "/CharProcs << /a 21 0 R >> /Encoding << /Differences [65 /a] >> "
               "/Resources << /XObject << /A 10 0 R /B 11 0 R >> >> >>");
    pdf.Stream(21, "1 0 d0 /A Do").Stream(10, "10>", kPixel).Stream(11, "11>", kPixel);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(SentOn(conversion.output), Names({"N10"}));
    const std::string setup = PageSetupOf(conversion.output);
    EXPECT_LT(setup.find("/DataSource defineRes"), setup.find("/FontType 3"));
    EXPECT_THAT(setup, HasSubstr(PixelDrawn("N10")));
}

}  // namespace
}  // namespace zorvan::test
