// Forms, PostScript XObjects, and what `Do` does with everything else.
#include <string>

#include <gmock/gmock.h>

#include "content/xobject_page.h"

namespace zorvan::test {
namespace {

using ::testing::Each;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kPlainForm = kForm;

TEST(Form, WithoutMatrixAndTypeIsDefinedWithTheDefaults) {
    const Drawing page = Draw(DrawingPage("q /X Do Q").Stream(10, "0 0 5 5 re f", kForm));
    EXPECT_EQ(page.setup,
              "/N10 <<\n"
              "/FormType 1\n"
              "/BBox [0 0 10 10 ]\n"
              "/Matrix [1 0 0 1 0 0]\n"
              "/PaintProc {pop save {\n"
              "0 0 5 5 re\nf\n"
              "} exec restore} bind >> /Form defineRes pop\n");
    EXPECT_EQ(page.content, "q\n/N10 /Form findRes EF\nQ\n");
}

std::string Repeated(std::string_view text, std::size_t times) {
    std::string all;
    for (; times > 0; --times) {
        all += text;
    }
    return all;
}

// A device takes no procedure of more than 65,535 elements.
TEST(Form, OfMoreOperatorsThanAProcedureHoldsIsRunPieceByPiece) {
    const std::string most = Repeated("n\n", 60000);
    EXPECT_EQ(Draw(DrawingPage("/X Do").Stream(10, most, kForm)).setup, FormDefined("N10", most));
    // Each piece begins with "{" and a line end, and ends behind 32,768 bytes.
    const std::string piece = "{\n" + Repeated("n\n", 16383) + "} exec\n";
    const std::string pieces =
        piece + piece + piece + "{\n" + Repeated("n\n", 60001 - 3 * 16383) + "} exec\n";
    EXPECT_EQ(Draw(DrawingPage("/X Do").Stream(10, most + "n", kForm)).setup, FormDefined("N10", pieces));
}

TEST(Form, KeepsItsTypeBoxAndMatrix) {
    const Drawing page = Draw(DrawingPage("n").Stream(
        10, "", "/Subtype /Form /FormType 2 /BBox [-1 -2.50 10.0 1e1] /Matrix [2 0 0 .5 -10 20.25]"));
    EXPECT_THAT(page.setup, StartsWith("/N10 <<\n/FormType 2\n/BBox [-1 -2.5 10 "));
    EXPECT_THAT(page.setup, HasSubstr("]\n/Matrix [2 0 0 0.5 -10 20.25 ]\n/PaintProc {pop save {\n} exec"));
}

TEST(Form, TakesItsEntriesByReference) {
    PdfBuilder pdf = DrawingPage("n").Stream(
        10, "", "/Subtype 20 0 R /FormType 21 0 R /BBox 22 0 R /Matrix [1 0 0 1 21 0 R 0]");
    pdf.Object(20, "/Form").Object(21, "7").Object(22, "[1 2 3 21 0 R]");
    EXPECT_THAT(Draw(pdf).setup,
                StartsWith("/N10 <<\n/FormType 7\n/BBox [1 2 3 7 ]\n/Matrix [1 0 0 1 7 0 ]\n/PaintProc"));
}

TEST(Form, IsNamedByItsGenerationToo) {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 10 1 R");
    pdf.Object(10, "<< /Length 0 /Subtype /Form /BBox [0 0 10 10] >>\nstream\n\nendstream", 1);
    const Drawing page = Draw(pdf);
    EXPECT_EQ(page.setup, FormDefined("N10-1", ""));
    EXPECT_EQ(page.content, "/N10-1 /Form findRes EF\n");
}

TEST(Form, DrawnTwiceIsDefinedOnceAndExecutedTwice) {
    const Drawing page = Draw(DrawingPage("/X Do 1 0 0 1 5 5 cm /X Do").Stream(10, "f", kForm));
    EXPECT_EQ(page.setup, FormDefined("N10", "f\n"));
    EXPECT_EQ(page.content, "/N10 /Form findRes EF\n1 0 0 1 5 5 cm\n/N10 /Form findRes EF\n");
}

TEST(Form, UnderTwoNamesIsDefinedOnce) {
    const Drawing page = Draw(DrawingPage("/A Do /B Do", "/A 10 0 R /B 10 0 R").Stream(10, "f", kForm));
    EXPECT_EQ(page.setup, FormDefined("N10", "f\n"));
    EXPECT_EQ(page.content, "/N10 /Form findRes EF\n/N10 /Form findRes EF\n");
}

TEST(Form, IsDefinedOnEachPageThatDrawsIt) {
    const std::string entries = "/Contents 9 0 R /Resources << /XObject << /X 10 0 R >> >>";
    PdfBuilder pdf = Pages({entries, entries});
    const Conversion conversion = Convert(pdf.Stream(9, "/X Do").Stream(10, "f", kForm).Bytes());
    EXPECT_THAT(conversion.pages, Each(0));
    for (const unsigned page : {1U, 2U}) {
        EXPECT_EQ(PageSetupOf(conversion.output, page), FormDefined("N10", "f\n"));
        EXPECT_EQ(ContentOf(conversion.output, page), "/N10 /Form findRes EF\n");
    }
}

TEST(Form, InsideAFormIsDefinedInFrontOfIt) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "/Y Do", kPlainForm + "/Resources << /XObject << /Y 11 0 R >> >>");
    pdf.Stream(11, "/Z Do", kPlainForm + "/Resources << /XObject << /Z 12 0 R >> >>");
    const Drawing page = Draw(pdf.Stream(12, "f", kForm));
    EXPECT_EQ(page.setup, FormDefined("N12", "f\n") + FormDefined("N11", "/N12 /Form findRes EF\n") +
                              FormDefined("N10", "/N11 /Form findRes EF\n"));
    EXPECT_EQ(page.content, "/N10 /Form findRes EF\n");
}

TEST(Form, InsideTwoFormsIsDefinedOnce) {
    PdfBuilder pdf = DrawingPage("/X Do /Y Do", "/X 10 0 R /Y 11 0 R");
    const std::string entries = kPlainForm + "/Resources << /XObject << /Z 12 0 R >> >>";
    const Drawing page =
        Draw(pdf.Stream(10, "/Z Do", entries).Stream(11, "/Z Do", entries).Stream(12, "f", kForm));
    EXPECT_EQ(page.setup, FormDefined("N12", "f\n") + FormDefined("N10", "/N12 /Form findRes EF\n") +
                              FormDefined("N11", "/N12 /Form findRes EF\n"));
}

TEST(Form, HasTheNamesOfItsOwnResources) {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 10 0 R /Y 11 0 R");
    pdf.Stream(10, "/Y Do", kPlainForm + "/Resources << /XObject << /Y 12 0 R >> >>");
    const Drawing page = Draw(pdf.Stream(11, "f", kForm).Stream(12, "S", kForm));
    EXPECT_EQ(page.setup, FormDefined("N12", "S\n") + FormDefined("N10", "/N12 /Form findRes EF\n") +
                              FormDefined("N11", "f\n"));
}

TEST(Form, WithoutResourcesHasThoseOfThePage) {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 10 0 R /Y 11 0 R");
    const Drawing page = Draw(pdf.Stream(10, "/Y Do", kForm).Stream(11, "80>", kPixel));
    EXPECT_THAT(page.setup, HasSubstr(FormDefined("N10", PixelDrawn("N11"))));
    EXPECT_THAT(page.setup, HasSubstr(HexImageData("N11", "80>")));
    EXPECT_EQ(page.content, "/N10 /Form findRes EF\n");
}

TEST(Form, WithoutResourcesHasThoseOfEachPageThatDrawsIt) {
    PdfBuilder pdf = Pages({"/Contents 9 0 R /Resources << /XObject << /X 10 0 R /Y 11 0 R >> >>",
                            "/Contents 9 0 R /Resources << /XObject << /X 10 0 R /Y 12 0 R >> >>"});
    pdf.Stream(9, "/X Do").Stream(10, "/Y Do", kForm).Stream(11, "11>", kPixel).Stream(12, "12>", kPixel);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_THAT(conversion.pages, Each(0));
    for (const auto& [page, name] : {std::pair{1U, "N11"}, std::pair{2U, "N12"}}) {
        EXPECT_THAT(PageSetupOf(conversion.output, page), HasSubstr(FormDefined("N10", PixelDrawn(name))));
        EXPECT_THAT(PageSetupOf(conversion.output, page),
                    HasSubstr(HexImageData(name, std::string(name + 1) + ">")));
    }
}

TEST(Form, WithoutResourcesInsideAFormHasThoseOfThatForm) {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 10 0 R /Y 13 0 R");
    pdf.Stream(10, "/Z Do", kPlainForm + "/Resources << /XObject << /Z 11 0 R /Y 12 0 R >> >>");
    pdf.Stream(11, "/Y Do", kForm).Stream(12, "12>", kPixel).Stream(13, "13>", kPixel);
    EXPECT_THAT(Draw(pdf).setup, HasSubstr(FormDefined("N11", PixelDrawn("N12"))));
}

TEST(Form, ThatContainsItselfIsRecordedAndThePageGoesOn) {
    PdfBuilder pdf = DrawingPage("1 w /X Do 2 w");
    pdf.Stream(10, "f /Self Do S", kPlainForm + "/Resources << /XObject << /Self 10 0 R >> >>");
    const Drawing page = DrawRecording(-4081, pdf, 10);
    EXPECT_EQ(page.content, "1 w\n/N10 /Form findRes EF\n2 w\n");
    // The device would never come to an end.
    EXPECT_EQ(page.setup, FormDefined("N10", "f\nS\n"));
}

TEST(Form, ThatContainsItselfThroughAnotherIsRecordedAndThePageGoesOn) {
    PdfBuilder pdf = DrawingPage("1 w /X Do 2 w");
    pdf.Stream(10, "/Y Do", kPlainForm + "/Resources << /XObject << /Y 11 0 R >> >>");
    pdf.Stream(11, "/X Do", kPlainForm + "/Resources << /XObject << /X 10 0 R >> >>");
    const Drawing page = DrawRecording(-4081, pdf, 10);
    EXPECT_EQ(page.content, "1 w\n/N10 /Form findRes EF\n2 w\n");
    EXPECT_EQ(page.setup, FormDefined("N11", "") + FormDefined("N10", "/N11 /Form findRes EF\n"));
}

/// Each page names the form at which the registration of the page before stopped.
TEST(Form, InAChainOfAnyLengthOverflowsNoStack) {
    constexpr unsigned kForms = 30000;
    constexpr unsigned kStep = 60;
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    std::string kids;
    unsigned page = 10 + kForms;
    for (unsigned form = kForms; form > kStep; form -= kStep) {
        kids += std::to_string(page) + " 0 R ";
        pdf.Object(page++, "<< /Type /Page /Parent 2 0 R /Contents 3 0 R /Resources << /XObject << /X " +
                               std::to_string(9 + form - kStep) + " 0 R >> >> >>");
    }
    pdf.Object(2, "<< /Type /Pages /MediaBox [0 0 9 9] /Count 1 /Kids [" + kids + "] >>");
    pdf.Stream(3, "/X Do");
    for (unsigned form = 0; form < kForms; ++form) {
        pdf.Stream(10 + form, "/X Do",
                   kPlainForm + "/Resources << /XObject << /X " + std::to_string(11 + form) + " 0 R >> >>");
    }
    const Job job;
    ASSERT_EQ(OpenFile(pdf.Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(static_cast<unsigned>(ZORVAN_GetTotalPages())), 0);
    ZORVAN_OneFileEnd();
}

/// Without resources of its own a form may find its own name in those of the page.
TEST(Form, ThatDrawsItselfByThePageIsDefinedOnce) {
    const Conversion conversion = Convert(DrawingPage("/X Do 2 w").Stream(10, "/X Do", kForm).Bytes());
    EXPECT_THAT(conversion.pages, Each(0));
    EXPECT_EQ(ContentOf(conversion.output), "/N10 /Form findRes EF\n2 w\n");
    EXPECT_EQ(CountOf(PageSetupOf(conversion.output), "/Form defineRes pop\n"), 1);
}

TEST(Form, WhoseContentFailsIsLeftUnfinished) {
    PdfBuilder pdf = DrawingPage("/X Do").Stream(10, "1 w 5 Do 2 w", kForm);
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_THAT(conversion.pages, Each(-4095));
    EXPECT_EQ(conversion.error.code, -4095);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
    EXPECT_THAT(conversion.output, HasSubstr("/PaintProc {pop save {\n1 w\n"));
    EXPECT_THAT(conversion.output, Not(HasSubstr("2 w\n")));
    EXPECT_THAT(conversion.output, Not(HasSubstr("exec restore}")));
}

TEST(Form, IsDecoded) {
    const Drawing page =
        Draw(DrawingPage("/X Do").Stream(10, "31 20 77>", kPlainForm + "/Filter /ASCIIHexDecode"));
    EXPECT_EQ(page.setup, FormDefined("N10", "1 w\n"));
}

TEST_F(XObjectsAmongFakes, AFormWritesItsDefaultSpacesInFrontOfItsOpiComments) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "f",
               kPlainForm +
                   "/OPI << /1.3 << /F (a.tif) >> >> /Resources << /ColorSpace << /DefaultCMYK 22 0 R "
                   "/DefaultGray 20 0 R /Other 21 0 R /DefaultRGB 21 0 R >> >>");
    pdf.Object(20, "<< /N 1 >>").Object(21, "<< /N 3 >>").Object(22, "<< /N 4 >>");
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_THAT(run.pages, Each(0));
    EXPECT_THAT(PageSetupOf(run.output), EndsWith(FormDefined("N10",
                                                              "/DefaultGray /N20 /ColorSpace findRes  dd\n"
                                                              "/DefaultRGB /N21 /ColorSpace findRes  dd\n"
                                                              "/DefaultCMYK /N22 /ColorSpace findRes  dd\n"
                                                              "save\n%%BeginOPI: 1.3\n"
                                                              "%ALDImageFilename: a.tif\n"
                                                              "%%BeginObject: image\n"
                                                              "f\n%%EndObject\nrestore\n")));
}

TEST_F(XObjectsAmongFakes, AFormDefinesTheSpacesThatItNamesInFrontOfItself) {
    PdfBuilder pdf = DrawingPage("/X Do");
    pdf.Stream(10, "/C cs", kPlainForm + "/Resources << /ColorSpace << /C 20 0 R >> >>")
        .Object(20, "<< /N 1 >>");
    EXPECT_EQ(PageSetupOf(RunFile(pdf.Bytes()).output),
              "%define ColorSpace /N20\n" + FormDefined("N10", "/N20 /ColorSpace findRes  cs\n"));
}

std::string Passed(std::string_view data, const std::string& entries = "") {
    const Drawing page = Draw(DrawingPage("1 w /X Do 2 w").Stream(10, data, "/Subtype /PS " + entries));
    EXPECT_EQ(page.setup, "");
    return Between(page.content, "1 w\n", "2 w\n");
}

TEST(PostScriptXObject, IsCopiedWhereItIsDrawn) {
    EXPECT_EQ(Passed("0.5 setgray (a) show\n"), "0.5 setgray (a) show\n");
    EXPECT_EQ(Passed("\r\n% comment\r"), "\r\n% comment\r");
}

TEST(PostScriptXObject, DoesNotRunIntoWhatFollows) {
    EXPECT_EQ(Passed("0 setgray"), "0 setgray\n");
}

TEST(PostScriptXObject, IsDecoded) {
    EXPECT_EQ(Passed("30 20 65 71 0A>", "/Filter /ASCIIHexDecode"), "0 eq\n");
}

TEST(PostScriptXObject, OfAnEncryptedProgramIsDropped) {
    EXPECT_EQ(Passed("currentfile eexec"), "");
    EXPECT_EQ(Passed("currentfile eexec\n0123456789ABCDEF"), "");
    EXPECT_EQ(Passed("63757272656E7466696C65206565786563 0A 30>", "/Filter /ASCIIHexDecode"), "");
}

TEST(PostScriptXObject, IsDroppedOnlyWhenItBeginsSo) {
    EXPECT_EQ(Passed("0 currentfile eexec\n"), "0 currentfile eexec\n");
    EXPECT_EQ(Passed("currentfile eexe\n"), "currentfile eexe\n");
}

TEST(PostScriptXObject, MayBeEmptyOrDrawnTwice) {
    EXPECT_EQ(Passed(""), "");
    EXPECT_EQ(Draw(DrawingPage("/X Do /X Do").Stream(10, "a\n", "/Subtype /PS")).content, "a\na\n");
}

TEST(Do, OfANameThatIsNotThereIsPassedOver) {
    EXPECT_EQ(Draw(DrawingPage("1 w /Unknown Do 2 w").Stream(10, "f", kForm)).content, "1 w\n2 w\n");
    EXPECT_EQ(Translate("1 w /X Do 2 w"), "1 w\n2 w\n");
}

TEST(Do, OfAnUnknownKindIsRecordedAndPassedOver) {
    for (const std::string entries : {"/Subtype /Video", "", "/Subtype (Form)"}) {
        const Drawing page = DrawRecording(-4081, DrawingPage("1 w /X Do 2 w").Stream(10, "f", entries), 10);
        EXPECT_EQ(page.setup, "") << entries;
        EXPECT_EQ(page.content, "1 w\n2 w\n") << entries;
    }
}

TEST(Do, OfWhatIsNoStreamIsRecordedAndPassedOver) {
    for (const std::string body : {"<< /Subtype /Form /BBox [0 0 1 1] >>", "5", "[ ]"}) {
        const Drawing page = DrawRecording(-4081, DrawingPage("1 w /X Do 2 w").Object(10, body), 10);
        EXPECT_EQ(page.setup, "") << body;
        EXPECT_EQ(page.content, "1 w\n2 w\n") << body;
    }
}

}  // namespace
}  // namespace zorvan::test
