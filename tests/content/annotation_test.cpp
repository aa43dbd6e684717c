// Annotations: which are printed, and where their appearances come to stand.
#include <string>

#include <gmock/gmock.h>

#include "content/xobject_page.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;

const std::string kWidget = "/Type /Annot /Subtype /Widget ";
const std::string kRect = "/Rect [100 100 200 150] ";

/// A page of this annotation, object 20, whose appearances are objects 21 and 22.
PdfBuilder PageWith(const std::string& annotation, const std::string& form = "/BBox [0 0 50 25]") {
    PdfBuilder pdf = OnePage("n", "/Annots [20 0 R]");
    pdf.Object(20, "<< " + annotation + " >>");
    return pdf.Stream(21, "1 w", "/Subtype /Form " + form)
        .Stream(22, "2 w", "/Subtype /Form /BBox [0 0 50 25]");
}

/// What stands behind the page's content.
std::string Drawn(const std::string& annotation) {
    return Between(Draw(PageWith(annotation)).content + "(end)", "n\n", "(end)");
}

/// The numbers of the matrix that puts an appearance into a rectangle.
std::string MatrixOf(const std::string& form, const std::string& rect) {
    const Drawing page = Draw(PageWith(kWidget + "/F 4 /AP << /N 21 0 R >> /Rect " + rect, form));
    return Between(page.content, " RC\n", " cm\n");
}

const std::string kFirst = "q\n100 100 100 50 RC\n2 0 0 2 100 100 cm\n1 w\nQ\n";
const std::string kSecond = "q\n100 100 100 50 RC\n2 0 0 2 100 100 cm\n2 w\nQ\n";

TEST(Annotation, OfAFieldIsDrawnBehindTheContent) {
    EXPECT_EQ(Draw(PageWith(kWidget + kRect + "/F 4 /AP << /N 21 0 R >>")).content,
              "n\n"
              "q\n"
              "100 100 100 50 RC\n"
              "2 0 0 2 100 100 cm\n"
              "1 w\n"
              "Q\n");
}

TEST(Annotation, IsPrintedByItsFlags) {
    for (const char* flags : {"4", "28", "36", "68", "-3"}) {  // -3: all but 2
        EXPECT_EQ(Drawn(kWidget + kRect + "/AP << /N 21 0 R >> /F " + flags), kFirst) << flags;
    }
    for (const char* flags : {"0", "1", "2", "6", "8", "38", "-1", "(4)", "null"}) {
        EXPECT_EQ(Drawn(kWidget + kRect + "/AP << /N 21 0 R >> /F " + flags), "") << flags;
    }
    EXPECT_EQ(Drawn(kWidget + kRect + "/AP << /N 21 0 R >>"), "");
}

TEST(Annotation, OfAnotherTypeIsNotPrinted) {
    for (const char* type : {"Link", "Text", "Stamp", "FreeText", "Popup"}) {
        EXPECT_EQ(Drawn(std::string("/Subtype /") + type + " /F 4 /AP << /N 21 0 R >> " + kRect), "") << type;
    }
    EXPECT_EQ(Drawn("/F 4 /AP << /N 21 0 R >> " + kRect), "");
}

TEST(Annotation, WithoutAnAppearanceIsNotPrinted) {
    for (const char* appearance : {"", "/AP << >>", "/AP << /D 21 0 R >>", "/AP << /N 99 0 R >>",
                                   "/AP << /N 5 >>", "/AP << /N null >>", "/AP 5"}) {
        EXPECT_EQ(Drawn(kWidget + kRect + "/F 4 " + appearance), "") << appearance;
    }
}

TEST(Annotation, WithStatesShowsTheOneItIsIn) {
    const std::string states = kWidget + kRect + "/F 4 /AP << /N << /On 21 0 R /Off 22 0 R /Bad 5 >> >> ";
    EXPECT_EQ(Drawn(states + "/AS /On"), kFirst);
    EXPECT_EQ(Drawn(states + "/AS /Off"), kSecond);
    for (const char* state : {"", "/AS /Other", "/AS /Bad", "/AS (On)", "/AS null"}) {
        EXPECT_EQ(Drawn(states + state), "") << state;
    }
    EXPECT_EQ(Drawn(kWidget + kRect + "/F 4 /AP << /N 21 0 R >> /AS /Off"), kFirst);
}

TEST(Annotation, IsReadThroughReferences) {
    PdfBuilder pdf = OnePage("n", "/Annots 30 0 R");
    pdf.Object(30, "[31 0 R << /Subtype /Widget /F 4 /AP << /N 22 0 R >> /Rect [100 100 200 150] >> 5 null]");
    pdf.Object(31, "<< /Subtype 32 0 R /F 33 0 R /AP 34 0 R /AS 35 0 R /Rect 36 0 R >>");
    pdf.Object(32, "/Widget").Object(33, "4").Object(34, "<< /N 37 0 R >>").Object(35, "/On");
    pdf.Object(36, "[100 38 0 R 200 150]").Object(37, "<< /On 21 0 R >>").Object(38, "100");
    pdf.Stream(21, "1 w", "/BBox 39 0 R").Stream(22, "2 w", "/BBox [0 0 50 25]").Object(39, "[0 0 50 25]");
    EXPECT_EQ(Draw(pdf).content, "n\n" + kFirst + kSecond);
}

TEST(Annotation, IsDrawnOnAPageWithoutContent) {
    PdfBuilder pdf = Pages({"/Annots [20 0 R]"});
    pdf.Object(20, "<< " + kWidget + kRect + "/F 4 /AP << /N 21 0 R >> >>")
        .Stream(21, "1 w", "/BBox [0 0 50 25]");
    EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output), kFirst);
}

TEST(Annotation, MayHaveAnEmptyOrDecodedAppearance) {
    PdfBuilder pdf = OnePage("n", "/Annots [20 0 R 20 0 R]");
    pdf.Object(20, "<< " + kWidget + kRect + "/F 4 /AP << /N 21 0 R >> >>");
    pdf.Stream(21, "31 20 77>", "/Filter /ASCIIHexDecode /BBox [0 0 50 25]");
    EXPECT_EQ(Draw(pdf).content, "n\n" + kFirst + kFirst);
    EXPECT_EQ(Draw(OnePage("n", "/Annots []")).content, "n\n");
}

TEST(AnnotationMatrix, ScalesTheBoxToTheRectangle) {
    EXPECT_EQ(MatrixOf("/BBox [0 0 50 25]", "[100 100 200 150]"), "2 0 0 2 100 100");
    EXPECT_EQ(MatrixOf("/BBox [0 0 100 100]", "[0 0 50 25]"), "0.5 0 0 0.25 0 0");
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 10]", "[72.5 36.25 82.5 46.25]"), "1 0 0 1 72.5 36.25");
}

// 10 20 goes to 100 100: 10*2 + 80, 20*2 + 60.
TEST(AnnotationMatrix, PutsTheLowerLeftCornersOnEachOther) {
    EXPECT_EQ(MatrixOf("/BBox [10 20 60 45]", "[100 100 200 150]"), "2 0 0 2 80 60");
    EXPECT_EQ(MatrixOf("/BBox [-10 -20 40 5]", "[100 100 200 150]"), "2 0 0 2 120 140");
}

// Turned by 90 degrees the box is -100 0 0 50; 100 by 50 become 200 by 50.
TEST(AnnotationMatrix, FollowsTheMatrixOfTheForm) {
    EXPECT_EQ(MatrixOf("/BBox [0 0 50 100] /Matrix [0 1 -1 0 0 0]", "[200 300 400 350]"), "0 1 -2 0 400 300");
    // 5 6 25 46, half and a quarter of it
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 10] /Matrix [2 0 0 4 5 6]", "[0 0 10 10]"), "1 0 0 1 0 0");
    // upside down, 0 -20 10 0
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 20] /Matrix [1 0 0 -1 0 0]", "[100 200 110 220]"), "1 0 0 -1 100 220");
    // sheared: the corners 0 0, 10 0, 5 10, 15 10 reach from 0 0 to 15 10
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 10] /Matrix [1 0 .5 1 0 0]", "[0 0 30 20]"), "2 0 1 2 0 0");
}

TEST(AnnotationMatrix, LeavesAFlatBoxItsSize) {
    EXPECT_EQ(MatrixOf("/BBox [0 0 0 10]", "[100 100 200 150]"), "1 0 0 1 100 100");
    EXPECT_EQ(MatrixOf("/BBox [5 6 15 6.00005]", "[100 100 200 150]"), "1 0 0 1 95 94");
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 10] /Matrix [3 0 0 0 1 2]", "[100 100 200 150]"), "3 0 0 0 100 100");
    EXPECT_EQ(MatrixOf("", "[100 100 200 150]"), "1 0 0 1 100 100");
}

TEST(AnnotationMatrix, HasAScaleOfZeroForAFlatRectangle) {
    EXPECT_EQ(MatrixOf("/BBox [0 0 10 10]", "[100 100 100 150]"), "0 0 0 5 100 100");
}

TEST(AnnotationMatrix, TakesAnyTwoOppositeCorners) {
    for (const std::string rect :
         {"[200 150 100 100]", "[100 150 200 100]", "[200 100 100 150]", "[100 100 200 150]"}) {
        for (const std::string box : {"[0 0 50 25]", "[50 25 0 0]", "[0 25 50 0]"}) {
            const Drawing page =
                Draw(PageWith(kWidget + "/F 4 /AP << /N 21 0 R >> /Rect " + rect, "/BBox " + box));
            EXPECT_EQ(page.content, "n\n" + kFirst) << rect << box;
        }
    }
}

TEST(AnnotationMatrix, WritesRealsShort) {
    const Drawing page = Draw(PageWith(kWidget + "/F 4 /AP << /N 21 0 R >> /Rect [100.50 100 200.25 150]"));
    EXPECT_THAT(page.content, HasSubstr("q\n100.5 100 99.75 50 RC\n1.995 0 0 2 100.5 100 cm\n"));
}

TEST(AnnotationResources, StandBehindThoseOfThePage) {
    PdfBuilder pdf = OnePage("/A Do", "/Annots [20 0 R] /Resources << /XObject << /A 10 0 R >> >>");
    pdf.Object(20, "<< " + kWidget + kRect + "/F 4 /AP << /N 21 0 R >> >>");
    pdf.Stream(21, "/B Do", "/BBox [0 0 50 25] /Resources << /XObject << /B 11 0 R /C 12 0 R >> >>");
    pdf.Stream(10, "10>", kPixel).Stream(11, "11>", kPixel).Stream(12, "12>", kPixel);
    const Drawing page = Draw(pdf);
    EXPECT_EQ(page.setup, HexImageData("N10", "10>") + HexImageData("N11", "11>"));
    EXPECT_EQ(page.content,
              PixelDrawn("N10") + "q\n100 100 100 50 RC\n2 0 0 2 100 100 cm\n" + PixelDrawn("N11") + "Q\n");
}

TEST(AnnotationResources, AreWrittenWithoutResourcesOfThePage) {
    PdfBuilder pdf =
        PageWith(kWidget + kRect + "/F 4 /AP << /N 21 0 R >>",
                 "/BBox [0 0 50 25] /Resources << /XObject << /F 10 0 R >> /Font << /T 11 0 R >> >>");
    pdf.Stream(10, "f", kForm).Object(11, "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const std::string setup = Draw(pdf).setup;
    EXPECT_THAT(setup, HasSubstr(FormDefined("N10", "f\n")));
    EXPECT_THAT(setup, HasSubstr("/N11"));
}

TEST(AnnotationResources, OfAFieldThatIsNotPrintedStayAway) {
    const std::string form = "/BBox [0 0 50 25] /Resources << /XObject << /F 10 0 R >> >>";
    for (const std::string flags : {"/F 0", "/F 6"}) {
        PdfBuilder pdf = PageWith(kWidget + kRect + flags + " /AP << /N 21 0 R >>", form);
        EXPECT_EQ(Draw(pdf.Stream(10, "f", kForm)).setup, "") << flags;
    }
}

TEST(AnnotationResources, SharedByTwoFieldsAreWrittenOnce) {
    PdfBuilder pdf = OnePage("n", "/Annots [20 0 R 20 0 R]");
    pdf.Object(20, "<< " + kWidget + kRect + "/F 4 /AP << /N 21 0 R >> >>");
    pdf.Stream(21, "/A Do", "/BBox [0 0 50 25] /Resources << /XObject << /A 10 0 R >> >>");
    EXPECT_EQ(Draw(pdf.Stream(10, "10>", kPixel)).setup, HexImageData("N10", "10>"));
}

TEST(Annotation, WhoseContentFailsEndsThePage) {
    PdfBuilder pdf = OnePage("n", "/Annots [20 0 R]");
    pdf.Object(20, "<< " + kWidget + kRect + "/F 4 /AP << /N 21 0 R >> >>")
        .Stream(21, "1 w 5 Do", "/BBox [0 0 9 9]");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_THAT(conversion.pages, Each(-4095));
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(21));
}

TEST(Annotation, MayNameItself) {
    PdfBuilder pdf = PageWith(kWidget + kRect + "/F 4 /AP << /N 21 0 R >>",
                              "/BBox [0 0 50 25] /Resources << /XObject << /Self 21 0 R >> >>");
    EXPECT_EQ(Draw(pdf).content, "n\n" + kFirst);
}

}  // namespace
}  // namespace zorvan::test
