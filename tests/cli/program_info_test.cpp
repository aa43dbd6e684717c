// --info: what a conversion would give, without giving it.
#include <string>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ProgramInfo : public testing::Test {
protected:
    std::string WritePdf(const std::vector<SamplePage>& pages) const {
        return scratch_.Write("a.pdf", SamplePdf(pages));
    }
    // The number of bytes that the library hands out for the pages.
    static std::string LibraryBytes(const std::string& pdf, const std::string& pages) {
        return std::to_string(RunZorvan({"--page-size=none", "--pages", pages, pdf, "-"}).out.size());
    }

    ScratchFolder scratch_;
};

TEST_F(ProgramInfo, TellsPagesBoxesAndBytesAndWritesNoFile) {
    const std::string pdf = WritePdf({{}, {"", "10 20 110 220.5", 90, 0}});
    const RunResult run = RunZorvan({"--info", pdf});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Pages: 2\nPage 1: 0 0 200 300\nPage 2: 10 20 210.5 120\nFonts: 0\nOutput bytes: " +
                           LibraryBytes(pdf, "1-") + "\n");
    EXPECT_THAT(scratch_.Names(), ElementsAre("a.pdf"));
}

TEST_F(ProgramInfo, TellsTheSameAsJson) {
    const std::string pdf = WritePdf({{}, {}, {}});
    const RunResult run = RunZorvan({"--info", "--json", "--pages=2", pdf});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(
        run.out,
        R"({"file": ")" + pdf +
            R"(", "pages": 3, "visibleBoxes": [{"page": 2, "box": [0, 0, 200, 300]}], "fonts": [], "outputBytes": )" +
            LibraryBytes(pdf, "2") + R"(, "error": null})" + "\n");
}

// The text of a page is no program of any kind, which does not matter here: it is written as it stands.
TEST_F(ProgramInfo, ListsTheFontsEmbeddedOrNot) {
    SamplePage page;
    page.resources =
        "/Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >> "
        "/F2 << /Type /Font /Subtype /Type1 /BaseFont /Plain /FontDescriptor << /FontFile 4 0 R >> >> "
        "/F3 << /Type /Font /Subtype /Type1 /BaseFont /Compact /FontDescriptor << /FontFile3 4 0 R >> >> "
        "/F4 << /Type /Font /Subtype /Type3 /Name /Drawn /FontMatrix [1 0 0 1 0 0] /FontBBox [0 0 1 1] "
        "/CharProcs << /a 4 0 R >> /Encoding << /Differences [97 /a] >> >> "
        "/F5 << /Type /Font /Subtype /TrueType /BaseFont /Arial >> "
        "/F6 << /Type /Font /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [ << /Subtype "
        "/CIDFontType0 "
        "/BaseFont /Kanji >> ] >> "
        "/F7 << /Type /Font /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [ << /Subtype "
        "/CIDFontType0 "
        "/BaseFont /Numbered /FontDescriptor << /FontFile3 4 0 R >> >> ] >> >>";
    const std::string pdf = WritePdf({page});
    EXPECT_THAT(RunZorvan({"--info", pdf}).out,
                HasSubstr("\nFonts: 7\nFont Helvetica: asked of the device\nFont Plain: Type 1, embedded\n"
                          "Font Compact: Type 1C, embedded\nFont Drawn: Type 3, embedded\n"
                          "Font Arial: asked of the device\nFont Kanji: asked of the device\n"
                          "Font Numbered: CID Type 1C, embedded\nOutput bytes: "));
    EXPECT_THAT(RunZorvan({"--info", "--json", pdf}).out,
                HasSubstr(R"("fonts": [{"name": "Helvetica", "type": null, "embedded": false}, )"
                          R"({"name": "Plain", "type": "Type 1", "embedded": true}, )"));
}

TEST_F(ProgramInfo, PassesARecordedErrorOn) {
    const RunResult run = RunZorvan({"--info", "--json", WritePdf({OverlongPage()})});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.out, HasSubstr(R"("error": {"code": -4094, "text": ")"));
    EXPECT_THAT(run.err, HasSubstr("warning: error -4094"));
}

TEST_F(ProgramInfo, EndsWithAPageThatFails) {
    const std::string pdf = WritePdf({{}, BrokenPage()});
    const RunResult run = RunZorvan({"--info", pdf});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_EQ(run.out, "");
    const RunResult goingOn = RunZorvan({"--info", "--keep-going", pdf});
    EXPECT_EQ(goingOn.exitCode, 3);
    EXPECT_EQ(goingOn.out,
              "Pages: 2\nPage 1: 0 0 200 300\nFonts: 0\nOutput bytes: " + LibraryBytes(pdf, "1") + "\n");
}

}  // namespace
}  // namespace zorvan::cli
