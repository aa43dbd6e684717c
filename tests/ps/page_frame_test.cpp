// The text around a page's content, through the exported functions.
#include "ps/page_frame.h"

#include <gmock/gmock.h>

#include "api/session.h"
#include "support/host.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr std::string_view kSetup =
    "%%BeginPageSetup\n"
    "userdict /pgsave save put\n"
    "PDFVars begin PDF begin PDFVars/InitAll get exec\n";
constexpr std::string_view kTrailer =
    "PDFVars/TermAll get exec end end\n"
    "userdict /pgsave get restore\n"
    "showpage\n"
    "%%PageTrailer\n"
    "%%EndPage\n";

std::string Output(const std::vector<std::string>& pages) {
    return Convert(Pages(pages).Bytes()).output;
}

/// What stands between the setup's fixed lines and its end: the rotation.
std::string RotationLine(std::string_view degrees) {
    return PageSetupOf(Output({"/MediaBox [10 20 110 220] /Rotate " + std::string(degrees)}));
}

std::string ClipLine(const std::string& entries) {
    return Between(Output({entries}), "%%EndPageSetup\n", "PDFVars/TermAll");
}

/// The lines between the page comment and the setup.
std::string PlateLines(const std::string& separationInfo) {
    return Between(Output({"/SeparationInfo " + separationInfo}), "%%Page: 1 1\n", "%%BeginPageSetup\n");
}

TEST(PageFrame, StandsAroundTheContent) {
    const Conversion conversion = Convert(OnePage("n").Bytes());
    EXPECT_EQ(FrameOf(conversion.output), "%%Page: 1 1\n" + std::string(kSetup) +
                                              "%%EndPageSetup\n"
                                              "0.000000 0.000000 612.000000 792.000000 RC\n"
                                              "n\n" +
                                              std::string(kTrailer));
}

TEST(PageFrame, NumberIsTheOrdinalTwiceAfterABlankLine) {
    EXPECT_THAT(Output({"", "", ""}), HasSubstr("%%EndPage\n\n%%Page: 3 3\n"));
}

TEST(PageFrame, LeavesInOnePieceEach) {
    const Job job;
    Pieces::Reset();
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    const std::size_t before = Pieces::Taken().size();
    ASSERT_EQ(ZORVAN_OutputOnePage(1), 0);
    const std::vector<std::string> pieces(Pieces::Taken().begin() + static_cast<std::ptrdiff_t>(before),
                                          Pieces::Taken().end());
    EXPECT_THAT(pieces, ::testing::ElementsAre("\n%%Page: 1 1\n" + std::string(kSetup), "%%EndPageSetup\n",
                                               "0.000000 0.000000 612.000000 792.000000 RC\n", "n\n",
                                               std::string(kTrailer)));
    ZORVAN_OneFileEnd();
}

TEST(PageFrame, OfAPageWithoutContentHasAClipAndNothingElse) {
    EXPECT_EQ(ClipLine(""), "0.000000 0.000000 612.000000 792.000000 RC\n");
}

TEST(PageFrame, TurnsBy90) {
    EXPECT_EQ(RotationLine("90"), "[0 -1 1 0 -10.000000 130.000000] concat\n");
    EXPECT_EQ(RotationLine("-270"), "[0 -1 1 0 -10.000000 130.000000] concat\n");
    EXPECT_EQ(RotationLine("450"), "[0 -1 1 0 -10.000000 130.000000] concat\n");
}

TEST(PageFrame, TurnsBy180) {
    EXPECT_EQ(RotationLine("180"), "[-1 0 0 -1 120.000000 240.000000] concat\n");
    EXPECT_EQ(RotationLine("-180"), "[-1 0 0 -1 120.000000 240.000000] concat\n");
    EXPECT_EQ(RotationLine("900"), "[-1 0 0 -1 120.000000 240.000000] concat\n");
}

TEST(PageFrame, TurnsBy270) {
    EXPECT_EQ(RotationLine("270"), "[0 1 -1 0 230.000000 10.000000] concat\n");
    EXPECT_EQ(RotationLine("-90"), "[0 1 -1 0 230.000000 10.000000] concat\n");
}

TEST(PageFrame, DoesNotTurnByWhatIsNoMultipleOf90) {
    for (const char* const degrees : {"0", "45", "360", "-720", "91", "89.5", "(90)"}) {
        EXPECT_EQ(RotationLine(degrees), "") << degrees;
    }
}

TEST(PageFrame, ClipsToTheBleedBoxThenTheCropBoxThenTheMediaBox) {
    EXPECT_EQ(ClipLine("/MediaBox [0 0 300 300] /CropBox [50 50 100 100] /BleedBox [10 20 200 220]"),
              "10.000000 20.000000 190.000000 200.000000 RC\n");
    EXPECT_EQ(ClipLine("/MediaBox [0 0 300 300] /CropBox [50 50 100.5 100]"),
              "50.000000 50.000000 50.500000 50.000000 RC\n");
    EXPECT_EQ(ClipLine("/MediaBox [5 5 300 300]"), "5.000000 5.000000 295.000000 295.000000 RC\n");
}

TEST(PageFrame, KeepsABoxInTheOrderGiven) {
    EXPECT_EQ(ClipLine("/MediaBox [100 200 0 0]"), "100.000000 200.000000 -100.000000 -200.000000 RC\n");
}

TEST(PageFrame, ClipsToNothingWithoutABox) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    pdf.Object(3, "<< /Type /Page /Parent 2 0 R >>");
    EXPECT_THAT(Convert(pdf.Bytes()).output, HasSubstr("\n0.000000 0.000000 0.000000 0.000000 RC\n"));
}

TEST(PageFrame, WritesTheSamePageAgainInAnyOrder) {
    const Job job;
    Pieces::Reset();
    ASSERT_EQ(OpenFile(Pages({"/Contents 10 0 R", "/Rotate 90"}).Stream(10, "1 w").Bytes()), 0);
    std::string written[4];
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t before = Pieces::Joined().size();
        EXPECT_EQ(ZORVAN_OutputOnePage(i % 2 == 0 ? 2 : 1), 0);
        written[i] = Pieces::Joined().substr(before);
    }
    EXPECT_EQ(written[0], written[2]);
    EXPECT_EQ(written[1], written[3]);
    EXPECT_THAT(written[0], ::testing::StartsWith("\n%%Page: 2 2\n"));
    ZORVAN_OneFileEnd();
}

TEST(PageFrame, StopsAtARefusedFirstLine) {
    const Job job;
    Pieces::Reset();
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    Pieces::Refuse(before + 1, 7, true);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 7);
    EXPECT_EQ(Pieces::Calls(), before + 1);
    EXPECT_EQ(GetErrorInfo().code, 0);
    ZORVAN_OneFileEnd();
}

TEST(PlateColor, IsANameInStringForm) {
    EXPECT_EQ(PlateLines("<< /DeviceColorant /Cyan >>"), "%%PlateColor: Cyan\n");
    EXPECT_EQ(PlateLines("<< /DeviceColorant /PANTONE#20185#28C#29\\ >>"),
              "%%PlateColor: PANTONE 185\\(C\\)\\\\\n");
}

TEST(PlateColor, IsAStringAsItStandsInTheFile) {
    EXPECT_EQ(PlateLines("<< /DeviceColorant (Gold \\(877\\)) >>"), "%%PlateColor: Gold \\(877\\)\n");
    EXPECT_EQ(PlateLines("<< /DeviceColorant (" + std::string(200, 'x') + ") >>"),
              "%%PlateColor: " + std::string(127, 'x') + "\n");
}

TEST(PlateColor, StaysOnItsLine) {
    EXPECT_EQ(PlateLines("<< /DeviceColorant (a\r\n%%EOF\nshowpage) >>"),
              "%%PlateColor: a  %%EOF showpage\n");
    EXPECT_EQ(PlateLines("<< /DeviceColorant (a\fshowpage) >>"), "%%PlateColor: a showpage\n");
}

TEST(PlateColor, IsEscapedWhenItIsNoString) {
    EXPECT_EQ(PlateLines("<< /DeviceColorant (" + std::string(126, 'x') + "(y)) >>"),
              "%%PlateColor: " + std::string(126, 'x') + "\\(\n");
    EXPECT_EQ(PlateLines("<< /DeviceColorant <)\\> >>"), "%%PlateColor: \\)\\\\\n");
}

TEST(PlateColor, IsCutBeforeItIsEscaped) {
    const std::string name(120, '\\');
    EXPECT_EQ(PlateLines("<< /DeviceColorant /" + name + " >>"), "%%PlateColor: " + name + name + "\n");
}

TEST(PlateColor, IsFoundThroughReferences) {
    auto pdf = Pages({"/SeparationInfo 10 0 R"});
    pdf.Object(10, "<< /DeviceColorant 11 0 R >>").Object(11, "/Magenta");
    EXPECT_THAT(Convert(pdf.Bytes()).output, HasSubstr("\n%%PlateColor: Magenta\n%%BeginPageSetup\n"));
}

TEST(PlateColor, IsNotWrittenForAnythingElse) {
    EXPECT_EQ(PlateLines("<< /DeviceColorant 5 >>"), "");
    EXPECT_EQ(PlateLines("<< /Other /Cyan >>"), "");
    EXPECT_EQ(PlateLines("/Cyan"), "");
    EXPECT_EQ(PlateLines("<< /DeviceColorant 99 0 R >>"), "");
}

}  // namespace
}  // namespace zorvan::test
