// What --info counts, and how it says so.
#include "cli/info_sink.h"

#include <string>

#include <gtest/gtest.h>

#include "cli/info_report.h"

namespace zorvan::cli {
namespace {

void TakePage(InfoSink& sink, unsigned page, const std::string& text) {
    sink.BeginPage(page);
    sink.Take(text.data(), text.size());
}

TEST(InfoSink, CountsTheBytesOfThePagesThatStay) {
    InfoSink sink;
    sink.Take("12345", 5);
    TakePage(sink, 1, "123");
    sink.KeepPage();
    TakePage(sink, 2, "lost");
    sink.DropPage();
    sink.Take("1", 1);
    EXPECT_EQ(sink.OutputBytes(), 9U);
    ASSERT_EQ(sink.Pages().size(), 1U);
    EXPECT_EQ(sink.Pages()[0].page, 1U);
}

TEST(InfoSink, ReadsTheBoxOfEachPage) {
    InfoSink sink;
    TakePage(sink, 4,
             "\n%%Page: 4 4\n%%BeginPageSetup\nuserdict /pgsave save put\n"
             "PDFVars begin PDF begin PDFVars/InitAll get exec\n"
             "%%EndPageSetup\n1.000000 2.000000 3.000000 4.000000 RC\n");
    sink.KeepPage();
    ASSERT_TRUE(sink.Pages().at(0).visibleBox.has_value());
    EXPECT_EQ(sink.Pages()[0].visibleBox->x1, 4);
    EXPECT_EQ(sink.Pages()[0].visibleBox->y1, 6);
}

TEST(InfoSink, ListsTheFontsOfTheDocumentAndOfThePagesThatStay) {
    const std::string head = "%%BeginPageSetup\n";
    const std::string end = "%%EndPageSetup\n0.0 0.0 1.0 1.0 RC\n";
    InfoSink sink;
    const std::string setup =
        "PDFVars/DocInitAll get exec PDFVars/InitAll get exec\n[/N3 /Shared 1 TZ\n%%EndSetup\n";
    sink.Take(setup.data(), setup.size());
    TakePage(sink, 1, head + "[/N4 /Kept 1 TZ\n" + end);
    sink.KeepPage();
    TakePage(sink, 2, head + "[/N5 /Lost 1 TZ\n" + end);
    sink.DropPage();
    ASSERT_EQ(sink.Fonts().size(), 2U);
    EXPECT_EQ(sink.Fonts()[0].name, "Shared");
    EXPECT_EQ(sink.Fonts()[1].name, "Kept");
}

InfoReport SampleReport() {
    return {"a \"b\".pdf",
            3,
            {{1, Box{0, 0, 612, 792.5}}, {3, std::nullopt}},
            {{"/N5", "Helvetica", FontKind::kOfDevice}, {"/N6", "ABCDEF+Sample", FontKind::kCompact}},
            4711,
            {}};
}

TEST(InfoReport, SaysOneFactALine) {
    EXPECT_EQ(InfoAsText(SampleReport()),
              "Pages: 3\nPage 1: 0 0 612 792.5\nPage 3: none\n"
              "Fonts: 2\nFont Helvetica: asked of the device\nFont ABCDEF+Sample: Type 1C, embedded\n"
              "Output bytes: 4711\n");
}

TEST(InfoReport, NamesEachKindOfProgram) {
    InfoReport report;
    report.fonts = {{"/N1", "A", FontKind::kType1},      {"/N2", "B", FontKind::kCompact},
                    {"/N3", "C", FontKind::kTrueType},   {"/N4", "D", FontKind::kType3},
                    {"/N5", "E", FontKind::kCIDCompact}, {"/N6", "F", FontKind::kCIDTrueType}};
    EXPECT_NE(InfoAsText(report).find("Fonts: 6\nFont A: Type 1, embedded\nFont B: Type 1C, embedded\n"
                                      "Font C: TrueType, embedded\nFont D: Type 3, embedded\n"
                                      "Font E: CID Type 1C, embedded\nFont F: CID TrueType, embedded\n"),
              std::string::npos)
        << InfoAsText(report);
}

TEST(InfoReport, MakesTheNamesOfFontsPrintable) {
    InfoReport report;
    report.fonts = {{"/N1", "a\x1b\"\xff", FontKind::kOfDevice}};
    EXPECT_NE(InfoAsText(report).find("Font a\\x1b\"\xff: asked of the device\n"), std::string::npos);
    EXPECT_NE(InfoAsJson(report).find(R"({"name": "a\u001b\"\ufffd", "type": null, "embedded": false})"),
              std::string::npos)
        << InfoAsJson(report);
}

TEST(InfoReport, IsOneJsonObject) {
    EXPECT_EQ(
        InfoAsJson(SampleReport()),
        R"({"file": "a \"b\".pdf", "pages": 3, "visibleBoxes": [{"page": 1, "box": [0, 0, 612, 792.5]}, )"
        R"({"page": 3, "box": null}], "fonts": [{"name": "Helvetica", "type": null, "embedded": false}, )"
        R"({"name": "ABCDEF+Sample", "type": "Type 1C", "embedded": true}], "outputBytes": 4711, "error": null})"
        "\n");
}

TEST(InfoReport, TellsTheErrorInJson) {
    InfoReport report = SampleReport();
    report.error = {-4094, "Data is not enough.", 17, "q\n\x80\""};
    EXPECT_NE(
        InfoAsJson(report).find(
            R"("error": {"code": -4094, "text": "Data is not enough.", "offset": 17, "excerpt": "q\\n\\x80\\\""}})"),
        std::string::npos)
        << InfoAsJson(report);
}

}  // namespace
}  // namespace zorvan::cli
