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

InfoReport SampleReport() {
    return {"a \"b\".pdf", 3, {{1, Box{0, 0, 612, 792.5}}, {3, std::nullopt}}, 4711, {}};
}

TEST(InfoReport, SaysOneFactALine) {
    EXPECT_EQ(InfoAsText(SampleReport()),
              "Pages: 3\nPage 1: 0 0 612 792.5\nPage 3: none\nOutput bytes: 4711\n");
}

TEST(InfoReport, IsOneJsonObject) {
    EXPECT_EQ(
        InfoAsJson(SampleReport()),
        R"({"file": "a \"b\".pdf", "pages": 3, "visibleBoxes": [{"page": 1, "box": [0, 0, 612, 792.5]}, )"
        R"({"page": 3, "box": null}], "outputBytes": 4711, "error": null})"
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
