// What reaches the output file, page by page.
#include "cli/document_sink.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

const std::string kSetupHead = "\n%%Page: 1 1\n%%BeginPageSetup\n";
const std::string kSetupRest =
    "userdict /pgsave save put\nPDFVars begin PDF begin PDFVars/InitAll get exec\n"
    "%%EndPageSetup\n0.000000 0.000000 200.000000 300.000000 RC\n";
const std::string kContent = "0 0 m\nshowpage\n";
const std::string kPage = kSetupHead + kSetupRest + kContent;
const std::string kFeature =
    "%%BeginFeature: *PageSize 200x300\n"
    "[{<</PageSize[200 300]/ImagingBBox null>>setpagedevice}stopped cleartomark\n"
    "%%EndFeature\n";
const std::string kPageWithFeature = kSetupHead + kFeature + kSetupRest + kContent;

void Take(PageSink& sink, const std::string& text) {
    for (std::size_t at = 0; at < text.size(); at += 15) {
        const std::string piece = text.substr(at, 15);
        ASSERT_TRUE(sink.Take(piece.data(), piece.size()));
    }
}

// Header, a page that is kept, one that is dropped, one that is kept, trailer.
void TakeDocument(PageSink& sink) {
    Take(sink, "header\n");
    sink.BeginPage(1);
    Take(sink, kPage);
    sink.KeepPage();
    sink.BeginPage(2);
    Take(sink, kPage + "broken");
    sink.DropPage();
    sink.BeginPage(3);
    Take(sink, kPage);
    sink.KeepPage();
    Take(sink, "trailer\n");
    sink.ThrowIfFailed();
}

std::string DocumentInFile(const DocumentSink::Settings& settings) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    DocumentSink sink(output, settings);
    TakeDocument(sink);
    output.Commit();
    return FileText(scratch.Path("a.ps"));
}

// Standard output cannot take bytes back, wherever it leads.
std::string DocumentOnStandardOutput(const DocumentSink::Settings& settings) {
    testing::internal::CaptureStdout();
    {
        OutputFile output("-");
        DocumentSink sink(output, settings);
        TakeDocument(sink);
        output.Commit();
    }
    return testing::internal::GetCapturedStdout();
}

TEST(DocumentSink, PutsTheRequestBehindTheBeginningOfThePageSetup) {
    EXPECT_EQ(DocumentInFile({true, true}), "header\n" + kPageWithFeature + kPageWithFeature + "trailer\n");
}

TEST(DocumentSink, PassesTheBytesUntouchedWithoutRequests) {
    EXPECT_EQ(DocumentInFile({false, true}), "header\n" + kPage + kPage + "trailer\n");
}

TEST(DocumentSink, DropsAPageFromAStreamToo) {
    EXPECT_EQ(DocumentOnStandardOutput({true, true}),
              "header\n" + kPageWithFeature + kPageWithFeature + "trailer\n");
    EXPECT_EQ(DocumentOnStandardOutput({false, true}), "header\n" + kPage + kPage + "trailer\n");
}

TEST(DocumentSink, LetsAPageFlowOnceItsBoxIsKnown) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    DocumentSink sink(output, {true, true});
    sink.BeginPage(1);
    Take(sink, kSetupHead + kSetupRest.substr(0, kSetupRest.size() - 1));
    EXPECT_EQ(output.Position(), 0U);
    Take(sink, "\n");
    EXPECT_EQ(output.Position(), (kSetupHead + kFeature + kSetupRest).size());
}

TEST(DocumentSink, DropsAPageWhoseBoxWasNotReached) {
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    DocumentSink sink(output, {true, true});
    sink.BeginPage(1);
    Take(sink, kSetupHead);
    sink.DropPage();
    Take(sink, "trailer\n");
    output.Commit();
    EXPECT_EQ(FileText(scratch.Path("a.ps")), "trailer\n");
}

TEST(DocumentSink, LeavesAPageWithoutABoxAsItIs) {
    const std::string page = kSetupHead + "%%EndPageSetup\nno clip\n";
    const ScratchFolder scratch;
    OutputFile output(scratch.Path("a.ps"));
    DocumentSink sink(output, {true, false});
    sink.BeginPage(1);
    Take(sink, page);
    sink.KeepPage();
    output.Commit();
    EXPECT_EQ(FileText(scratch.Path("a.ps")), page);
}

}  // namespace
}  // namespace zorvan::cli
