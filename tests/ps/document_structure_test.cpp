// The text around the pages, through the exported functions.
#include "ps/document_structure.h"

#include <algorithm>
#include <array>

#include <gmock/gmock.h>

#include "api/session.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;

constexpr std::array kInOrder = {7005U, 7006U, 7007U, 7012U, 7008U, 7009U, 7010U};
constexpr std::string_view kClosing =
    "PDFVars/TermAll get exec end end\n"
    "%%EndSetup\n";
constexpr std::string_view kTrailer =
    "%%Trailer\n"
    "%%EOF\n";

std::string Header(std::string_view box, std::string_view pages) {
    return "%!PS-Adobe-3.0\n"
           "%%Version: 1 3\n"
           "%%Creator: Brentic(R) ZORVAN Plug-In 2.0\n"
           "%%BoundingBox: " +
           std::string(box) + "\n%%Pages: " + std::string(pages) + "\n%%EndComments\n";
}

/// The pieces from the header to the end of the initialisation.
std::vector<std::string> HeaderAndProlog(std::string_view box, std::string_view pages) {
    const auto text = [](unsigned identifier) { return std::string(BuiltInProlog()->Text(identifier)); };
    std::vector<std::string> pieces = {Header(box, pages), text(7003),
                                       "/currentpacking where{pop currentpacking true setpacking}if\n",
                                       text(7004), "PDFVars begin PDF begin\n"};
    std::ranges::transform(kInOrder, std::back_inserter(pieces), text);
    pieces.emplace_back(
        "currentdict readonly pop\n"
        "end end\n"
        "/currentpacking where {pop setpacking}if\n"
        "PDFVars/DocInitAll{[ PDFText]{/docinitialize get exec}forall }put\n"
        "PDFVars/InitAll{[PDF PDFText PDFImage]{/initialize get exec}forall initgs}put\n"
        "PDFVars/TermAll{[PDFImage PDFText PDF]{/terminate get exec}forall}put\n"
        "PDFVars begin PDF begin\n"
        "PDFVars/DocInitAll get exec PDFVars/InitAll get exec\n");
    return pieces;
}

std::string BoundingBox(const std::vector<std::string>& pages) {
    return Between(Convert(Pages(pages).Bytes()).output, "%%BoundingBox: ", "\n");
}

class DocumentStructure : public JobTest {};

TEST_F(DocumentStructure, HeaderAndPrologLeavePieceByPieceInTheirOrder) {
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    EXPECT_EQ(Pieces::Taken(), HeaderAndProlog("0.000000 0.000000 612.000000 792.000000", "1"));
    ZORVAN_OneFileEnd();
}

TEST_F(DocumentStructure, EveryPrologTextIsThere) {
    for (const unsigned identifier : {7003U, 7004U, 7005U, 7006U, 7007U, 7008U, 7009U, 7010U, 7012U}) {
        EXPECT_FALSE(BuiltInProlog()->Text(identifier).empty()) << identifier;
    }
    EXPECT_TRUE(BuiltInProlog()->Text(7011).empty());
    for (const PrologResource& stored : kPrologResources) {
        EXPECT_EQ(BuiltInProlog()->Text(stored.id),
                  std::string_view(reinterpret_cast<const char*>(stored.bytes), stored.size));
    }
}

TEST_F(DocumentStructure, ADocumentReadsFromHeaderToTrailer) {
    const FileRun run = RunFile(Pages({}).Bytes());
    std::string expected;
    for (const std::string& piece : HeaderAndProlog("0.000000 0.000000 0.000000 0.000000", "0")) {
        expected += piece;
    }
    EXPECT_EQ(run.output, expected + std::string(kClosing) + std::string(kTrailer));
    EXPECT_TRUE(run.pages.empty());
}

TEST_F(DocumentStructure, ProcedureSetsKeepTheirCrLfAndOtherLinesEndInLf) {
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    for (const std::string& piece : Pieces::Taken()) {
        const auto lineFeeds = std::ranges::count(piece, '\n');
        const auto returns = std::ranges::count(piece, '\r');
        const bool stored = piece.starts_with("%%BeginResource: ") || piece.starts_with("PDFText begin");
        EXPECT_EQ(returns, stored ? lineFeeds : 0) << piece.substr(0, 40);
    }
    ZORVAN_OneFileEnd();
}

TEST_F(DocumentStructure, TheClosingLinesOfTheSetupAreOnePiece) {
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(Pieces::Taken().back(), kClosing);
    ZORVAN_OneFileEnd();
    EXPECT_EQ(Pieces::Taken().back(), kTrailer);
}

TEST_F(DocumentStructure, GlobalResourcesTwiceWritesTheClosingLinesTwice) {
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    const std::string before = Pieces::Joined();
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(Pieces::Joined(), before + std::string(kClosing) + std::string(kClosing));
    ZORVAN_OneFileEnd();
}

TEST_F(DocumentStructure, WithoutAPrologNothingIsWritten) {
    CurrentJob()->prolog = nullptr;
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), -4087);
    EXPECT_TRUE(Pieces::Taken().empty());
    EXPECT_EQ(GetErrorInfo().message, "Application error.");
    ZORVAN_OneFileEnd();
    EXPECT_EQ(Pieces::Joined(), kTrailer);
}

TEST_F(DocumentStructure, APrologTextThatCannotBeFoundIsAnEmptyPieceAndNoError) {
    constexpr unsigned char kText[] = {'x'};
    const PrologResource resources[] = {{7006, kText, sizeof kText}};
    const Prolog prolog(resources);
    CurrentJob()->prolog = &prolog;
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    EXPECT_EQ(Pieces::Calls(), 13U);
    EXPECT_EQ(Pieces::Taken()[1], "");
    EXPECT_EQ(Pieces::Taken()[6], "x");
    EXPECT_EQ(GetErrorInfo().code, 0);
    ZORVAN_OneFileEnd();
}

TEST(DocumentBoundingBox, IsZeroWithoutPages) {
    EXPECT_EQ(BoundingBox({}), "0.000000 0.000000 0.000000 0.000000");
}

TEST(DocumentBoundingBox, IsTheFirstPagesBoxEvenWhenItLiesOffTheOrigin) {
    EXPECT_EQ(BoundingBox({"/MediaBox [10.5 20 110 220]"}), "10.500000 20.000000 110.000000 220.000000");
}

TEST(DocumentBoundingBox, UnitesThePages) {
    EXPECT_EQ(BoundingBox({"/MediaBox [10 20 110 220]", "/MediaBox [-5 30 100 300]"}),
              "-5.000000 20.000000 110.000000 300.000000");
}

TEST(DocumentBoundingBox, TakesATurnedPageWithWidthAndHeightExchanged) {
    EXPECT_EQ(BoundingBox({"/MediaBox [10 20 110 220] /Rotate 90"}),
              "10.000000 20.000000 210.000000 120.000000");
    EXPECT_EQ(BoundingBox({"/MediaBox [10 20 110 220] /Rotate -270"}),
              "10.000000 20.000000 210.000000 120.000000");
    EXPECT_EQ(BoundingBox({"/MediaBox [10 20 110 220] /Rotate 180"}),
              "10.000000 20.000000 110.000000 220.000000");
    EXPECT_EQ(BoundingBox({"/MediaBox [10 20 110 220] /Rotate 45"}),
              "10.000000 20.000000 210.000000 120.000000");
}

}  // namespace
}  // namespace zorvan::test
