// OPI comments, version 1.3 and 2.0, around forms.
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "content/xobject_page.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

/// What stands in the procedure of a form with this `OPI` entry.
std::string InForm(const std::string& opi) {
    PdfBuilder pdf = DrawingPage("/X Do").Stream(10, "1 w", kForm + "/OPI "s + opi);
    pdf.Object(20, "<< /F (referred) >>")
        .Object(21, "(by reference)")
        .Object(22, "7")
        .Object(23, "[1 22 0 R]")
        .Object(24, "/monochrome");
    return Between(Draw(pdf).setup, "/PaintProc {pop save {\n", "} exec restore} bind >> /Form");
}

/// The lines that the entries of a version's dictionary give.
std::string Lines13(const std::string& entries) {
    return Between(InForm("<< /1.3 << " + entries + " >> >>"), "save\n%%BeginOPI: 1.3\n",
                   "%%BeginObject: image\n1 w\n%%EndObject\nrestore\n");
}
std::string Lines20(const std::string& entries) {
    return Between(InForm("<< /2.0 << " + entries + " >> >>"), "save\n%%BeginOPI: 2.0\n",
                   "1 w\n%%EndIncludedImage\n%%EndOPI\nrestore\n");
}

TEST(Opi13, WithAFileNameAloneBracketsTheContent) {
    EXPECT_EQ(InForm("<< /1.3 << /F (high.tif) >> >>"),
              "save\n"
              "%%BeginOPI: 1.3\n"
              "%ALDImageFilename: high.tif\n"
              "%%BeginObject: image\n"
              "1 w\n"
              "%%EndObject\n"
              "restore\n");
}

TEST(Opi13, HasItsLinesInAFixedOrder) {
    EXPECT_EQ(InForm("<< /1.3 << /Transparency true /Tint 0.5 /Tags [305 (maker) 270 (text)] /Size [100 200] "
                     "/Resolution [300 300] /Position [1 2 3 4 5 6 7 8] /Overprint false /ImageType [1 8] "
                     "/ID (id) /GrayMap [0 128 255] /F (a) /CropRect [0 0 100 200] /CropFixed [0 0 50.5 100] "
                     "/ColorType /Process /Color [0 0.5 1 0 (Blue)] >> >>"),
              "save\n"
              "%%BeginOPI: 1.3\n"
              "%ALDImageFilename: a\n"
              "%ALDImageCropRect: 0 0 100 200 \n"
              "%ALDImageColor: 0 0.5 1 0 (Blue)\n"
              "%ALDImageColorType: Process\n"
              "%ALDImageCropFixed: 0 0 50.5 100 \n"
              "%ALDImageGrayMap: 0 128 255 \n"
              "%ALDImageID: id\n"
              "%ALDImageType: 1 8 \n"
              "%ALDImageOverprint: false\n"
              "%ALDImagePosition: 1 2 3 4 5 6 7 8 \n"
              "%ALDImageResolution: 300 300 \n"
              "%ALDImageDimensions: 100 200 \n"
              "%ALDImageASCIITag305: maker\n"
              "%ALDImageASCIITag270: text\n"
              "%ALDImageTint: 0.5\n"
              "%ALDImageTransparency: true\n"
              "%%BeginObject: image\n"
              "1 w\n"
              "%%EndObject\n"
              "restore\n");
}

TEST(Opi20, HasItsLinesInAFixedOrder) {
    EXPECT_EQ(InForm("<< /2.0 << /Tags [305 (maker) 270 (text)] /Overprint true /MainImage (main.tif) "
                     "/Inks /full_color /IncludedImageQuality 2 /IncludedImageDimensions [10 20.5] "
                     "/CropRect [0 0 1.50 2] /Size [100 200.25] /F (a) >> >>"),
              "save\n"
              "%%BeginOPI: 2.0\n"
              "%%ImageFileName: a\n"
              "%%ImageDimensions: 100 200.25 \n"
              "%%ImageCropRect: 0 0 1.5 2 \n"
              "%%IncludedImageDimensions: 10 20.5 \n"
              "%%IncludedImageQuality: 2\n"
              "%%ImageInks: full_color\n"
              "%%MainImage: main.tif\n"
              "%%ImageOverprint: true\n"
              "%%TIFFASCIITag: 305 (maker)\n"
              "%%TIFFASCIITag: 270 (text)\n"
              "1 w\n"
              "%%EndIncludedImage\n"
              "%%EndOPI\n"
              "restore\n");
}

TEST(Opi, WithoutAnyEntryStillBracketsTheContent) {
    EXPECT_EQ(Lines13(""), "");
    EXPECT_EQ(Lines20(""), "");
}

TEST(Opi, OfAnotherVersionOrKindIsPassedOver) {
    for (const std::string opi : {"<< >>", "<< /3.0 << /F (a) >> >>", "<< /1.3 5 >>", "<< /2.0 (a) >>", "5",
                                  "<< /2 << /F (a) >> >>", "null", "[ ]"}) {
        EXPECT_EQ(InForm(opi), "1 w\n") << opi;
    }
}

TEST(Opi, IsFoundByReference) {
    EXPECT_EQ(Between(InForm("<< /1.3 20 0 R >>"), "1.3\n", "%%Begin"), "%ALDImageFilename: referred\n");
    EXPECT_EQ(Between(InForm("<< /2.0 20 0 R >>"), "2.0\n", "1 w"), "%%ImageFileName: referred\n");
    EXPECT_EQ(Lines13("/F 21 0 R /Tint 22 0 R /Size 23 0 R"),
              "%ALDImageFilename: by reference\n%ALDImageDimensions: 1 7 \n%ALDImageTint: 7\n");
    EXPECT_EQ(Lines20("/F 21 0 R /IncludedImageQuality 22 0 R /Size 23 0 R"),
              "%%ImageFileName: by reference\n%%ImageDimensions: 1 7 \n%%IncludedImageQuality: 7\n");
}

TEST(Opi, FindsTheElementsOfItsArraysByReference) {
    EXPECT_EQ(Lines13("/Tags [22 0 R 21 0 R] /Color [22 0 R 0 0 0 21 0 R] /GrayMap 23 0 R /ImageType 23 0 R"),
              "%ALDImageColor: 7 0 0 0 (by reference)\n%ALDImageGrayMap: 1 7 \n%ALDImageType: 1 7 \n"
              "%ALDImageASCIITag7: by reference\n");
    EXPECT_EQ(Lines20("/Tags [22 0 R 21 0 R] /Inks [24 0 R 21 0 R 22 0 R]"),
              "%%ImageInks: monochrome 1 (by reference) 7 \n%%TIFFASCIITag: 7 (by reference)\n");
}

// As everywhere, a string stands as the file has it.
TEST(Opi, KeepsTheSpellingOfItsStrings) {
    EXPECT_EQ(Lines13("/F <612E746966> /ID <4142> /Tags [270 <43>] /Color [0 0 0 1 <44>]"),
              "%ALDImageFilename: 612E746966\n%ALDImageColor: 0 0 0 1 (44)\n%ALDImageID: 4142\n"
              "%ALDImageASCIITag270: 43\n");
    EXPECT_EQ(Lines13("/ID (a\\(b\\)\\101) /Tags [270 (c(d)\\\\)] /Color [0 0 0 1 (\\))]"),
              "%ALDImageColor: 0 0 0 1 (\\))\n%ALDImageID: a\\(b\\)\\101\n"
              "%ALDImageASCIITag270: c(d)\\\\\n");
    EXPECT_EQ(Lines20("/MainImage (a (b) \\(c) /Tags [270 (\\))] /Inks [/monochrome (d\\(e) 1]"),
              "%%ImageInks: monochrome 1 (d\\(e) 1 \n%%MainImage: a (b) \\(c\n%%TIFFASCIITag: 270 (\\))\n");
}

TEST(Opi, KeepsItsCommentsAroundAFormInTheForm) {
    PdfBuilder pdf = DrawingPage("/X Do").Stream(
        10, "/Y Do 1 w",
        kForm + "/OPI << /1.3 << /F (outer) >> >> /Resources << /XObject << /Y 11 0 R >> >>"s);
    pdf.Stream(11, "2 w", kForm + "/OPI << /2.0 << /F (inner) >> >>"s);
    EXPECT_EQ(Draw(pdf).setup, FormDefined("N11",
                                           "save\n%%BeginOPI: 2.0\n%%ImageFileName: inner\n2 w\n"
                                           "%%EndIncludedImage\n%%EndOPI\nrestore\n") +
                                   FormDefined("N10",
                                               "save\n%%BeginOPI: 1.3\n%ALDImageFilename: outer\n"
                                               "%%BeginObject: image\n/N11 /Form findRes EF\n1 w\n"
                                               "%%EndObject\nrestore\n"));
}

TEST(Opi, StandsAroundTheAppearanceOfAField) {
    PdfBuilder pdf = OnePage("n", "/Annots [20 0 R]");
    pdf.Object(20, "<< /Subtype /Widget /F 4 /Rect [0 0 10 10] /AP << /N 21 0 R >> >>");
    pdf.Stream(21, "1 w", kForm + "/OPI << /1.3 << /F (a) >> >>"s);
    EXPECT_EQ(Draw(pdf).content,
              "n\nq\n0 0 10 10 RC\n1 0 0 1 0 0 cm\nsave\n%%BeginOPI: 1.3\n%ALDImageFilename: a\n"
              "%%BeginObject: image\n1 w\n%%EndObject\nrestore\nQ\n");
}

TEST(OpiFileName, MayStandInAFileSpecification) {
    EXPECT_EQ(Lines13("/F << /Type /F /F (dir/a.tif) >>"), "%ALDImageFilename: dir/a.tif\n");
    EXPECT_EQ(Lines20("/F << /Type /F /F 21 0 R >>"), "%%ImageFileName: by reference\n");
    EXPECT_EQ(Lines13("/F << /Type /F >>"), "");
}

TEST(OpiFileName, LosesTheLineContinuationsOfItsString) {
    EXPECT_EQ(Lines13("/F (long\\\nname)"), "%ALDImageFilename: longname\n");
    EXPECT_EQ(Lines13("/F (long\\\rname)"), "%ALDImageFilename: longname\n");
    EXPECT_EQ(Lines20("/F (a\\\nb\\\rc)"), "%%ImageFileName: abc\n");
    EXPECT_EQ(Lines20("/F (a\\\n)"), "%%ImageFileName: a\n");
}

TEST(OpiFileName, KeepsEveryOtherBackslash) {
    EXPECT_EQ(Lines13("/F (C:\\\\dir\\\\a \\(1\\).tif)"), "%ALDImageFilename: C:\\\\dir\\\\a \\(1\\).tif\n");
}

TEST(Opi, StaysOnItsLineWhateverItsTextsHold) {
    for (const std::string& lines :
         {Lines13("/F (a\nrun) /ID (b\rrun\f) /Tags [1 (c\r\nrun)] /Color [0 0 0 0 (d\nrun)]"),
          Lines20("/F (a\nrun\f) /MainImage (b\rrun) /Tags [1 (c\r\nrun)] "
                  "/Inks [/monochrome (d\nrun) 1]")}) {
        EXPECT_EQ(lines.find_first_of("\r\f"), std::string::npos) << lines;
        for (std::size_t at = lines.find('\n'); at != std::string::npos; at = lines.find('\n', at + 1)) {
            EXPECT_TRUE(at + 1 == lines.size() || lines[at + 1] == '%') << lines;
        }
    }
}

// The digits of a hexadecimal string stand as they are, and may be anything.
TEST(Opi, EscapesInParenthesesWhatIsNoString) {
    EXPECT_EQ(Lines13("/Color [0 0 0 0 <) run (>]"), "%ALDImageColor: 0 0 0 0 (\\) run \\()\n");
    EXPECT_EQ(Lines20("/Inks [/monochrome <a\\> 1] /Tags [1 <(> 2 (\\\n)]"),
              "%%ImageInks: monochrome 1 (a\\\\) 1 \n"
              "%%TIFFASCIITag: 1 (\\()\n%%TIFFASCIITag: 2 (\\ )\n");
    EXPECT_EQ(Lines13("/Color [0 0 0 0 (a \\(b\\) (c))]"), "%ALDImageColor: 0 0 0 0 (a \\(b\\) (c))\n");
}

TEST(Opi, SkipsArraysOfAnotherLength) {
    EXPECT_EQ(Lines13("/Size [1] /CropRect [1 2 3] /CropFixed [1 2 3 4 5] /Position [1 2 3 4 5 6 7] "
                      "/Resolution [1 2 3] /Color [0 0 0 0] /ImageType []"),
              "");
    EXPECT_EQ(Lines20("/Size [1 2 3] /CropRect [1 2 3] /IncludedImageDimensions [1]"), "");
}

TEST(Opi, SkipsValuesOfAnotherType) {
    EXPECT_EQ(
        Lines13("/F /name /Size 5 /CropRect (a) /CropFixed << >> /Position true /Resolution null /Color /Red "
                "/ColorType (Process) /Tint (1) /Overprint 1 /ImageType 1 /GrayMap 5 /Transparency /true "
                "/ID /id /Tags 305"),
        "");
    EXPECT_EQ(
        Lines20("/F 5 /Size (a) /CropRect 1 /IncludedImageDimensions 1 /IncludedImageQuality (1) /Inks 5 "
                "/MainImage /main /Overprint (true) /Tags (305)"),
        "");
}

TEST(Opi13, HasNoneOfTheOtherVersionsLines) {
    EXPECT_EQ(
        Lines13("/IncludedImageDimensions [1 2] /IncludedImageQuality 1 /Inks /full_color /MainImage (a)"),
        "");
    EXPECT_EQ(
        Lines20("/CropFixed [1 2 3 4] /Position [1 2 3 4 5 6 7 8] /Resolution [1 2] /Color [0 0 0 0 (a)] "
                "/ColorType /Spot /Tint 1 /ImageType [1 8] /GrayMap [1] /Transparency true /ID (a)"),
        "");
}

TEST(Opi13, WritesNumbersByTheirKind) {
    EXPECT_EQ(Lines13("/CropRect [1.0 -2 0.333333333 -0.0]"), "%ALDImageCropRect: 1 -2 0.333333 0 \n");
    EXPECT_EQ(Lines13("/Size [100.0 -5] /ImageType [1.0 8]"),
              "%ALDImageType: 1 8 \n%ALDImageDimensions: 100 -5 \n");
    EXPECT_EQ(Lines13("/Tint 1"), "%ALDImageTint: 1\n");
    EXPECT_EQ(Lines13("/Tint 0.250"), "%ALDImageTint: 0.25\n");
    EXPECT_EQ(Lines13("/GrayMap []"), "%ALDImageGrayMap: \n");
    EXPECT_EQ(Lines13("/GrayMap [1 2.5]"), "%ALDImageGrayMap: 1 2.5 \n");
}

TEST(Opi, WritesBothBooleans) {
    EXPECT_EQ(Lines13("/Overprint true /Transparency false"),
              "%ALDImageOverprint: true\n%ALDImageTransparency: false\n");
    EXPECT_EQ(Lines20("/Overprint false"), "%%ImageOverprint: false\n");
}

TEST(Opi13, WritesTheNumbersOfAColorWithoutItsName) {
    EXPECT_EQ(Lines13("/Color [1 0 0 0 /Red] /ID (x)"), "%ALDImageColor: 1 0 0 0 \n%ALDImageID: x\n");
}

TEST(Opi, WritesItsTagsInPairs) {
    EXPECT_EQ(Lines13("/Tags [1 (a) 2]"), "%ALDImageASCIITag1: a\n");
    EXPECT_EQ(Lines13("/Tags [1 2 (a) 3 4 (b)]"), "%ALDImageASCIITag4: b\n");
    EXPECT_EQ(Lines20("/Tags [1 (a) /x (b) 3 (c)]"), "%%TIFFASCIITag: 1 (a)\n%%TIFFASCIITag: 3 (c)\n");
    EXPECT_EQ(Lines20("/Tags []"), "");
}

TEST(OpiInks, MayBeANameOfTwo) {
    EXPECT_EQ(Lines20("/Inks /full_color"), "%%ImageInks: full_color\n");
    EXPECT_EQ(Lines20("/Inks /registration"), "%%ImageInks: registration\n");
    EXPECT_EQ(Lines20("/Inks /monochrome"), "");
    EXPECT_EQ(Lines20("/Inks /Full_Color"), "");
}

// The line ends like every other one: what follows would else be part of it.
TEST(OpiInks, MayBeMonochromeWithTheirTints) {
    EXPECT_EQ(Lines20("/Inks [/monochrome (Black) 1]"), "%%ImageInks: monochrome 1 (Black) 1 \n");
    EXPECT_EQ(Lines20("/Inks [/monochrome (Black) 1 (Spot 1) 0.50] /MainImage (m)"),
              "%%ImageInks: monochrome 2 (Black) 1 (Spot 1) 0.5 \n%%MainImage: m\n");
    EXPECT_EQ(Lines20("/Inks [/monochrome]"), "%%ImageInks: monochrome 0 \n");
    EXPECT_EQ(Lines20("/Inks [/monochrome (Black) 1 (alone)]"), "%%ImageInks: monochrome 1 (Black) 1 \n");
}

TEST(OpiInks, OfAnotherKindGiveNoLine) {
    EXPECT_EQ(Lines20("/Inks []"), "");
    EXPECT_EQ(Lines20("/Inks [/full_color]"), "");
    EXPECT_EQ(Lines20("/Inks [(monochrome) (Black) 1]"), "");
    EXPECT_EQ(Lines20("/Inks (full_color)"), "");
}

}  // namespace
}  // namespace zorvan::test
