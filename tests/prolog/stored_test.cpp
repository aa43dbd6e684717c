// The stored bytes of the prolog and the step that makes them.
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"
#include "ps/prolog_data.h"

namespace zorvan::test {
namespace {

std::string Stored(const PrologResource& resource) {
    return std::string(StoredText(resource.id));
}

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line.substr(0, line.find('\r')));
    }
    return lines;
}

Outcome Store(const std::string& sources, const std::string& output) {
    return RunShell(std::string(PYTHON) + " " + STORE_PROLOG + " " + sources + " " + output);
}

std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A copy of the sources in which one file has been replaced.
std::string SourcesWith(const std::string& name, const std::string& text) {
    std::string folder = ScratchFolder() + "/sources";
    using Options = std::filesystem::copy_options;
    std::filesystem::copy(PROLOG_SOURCES, folder, Options::recursive | Options::overwrite_existing);
    std::ofstream(folder + "/" + name, std::ios::binary) << text;
    return folder;
}

TEST(StoredProlog, HoldsTheNineResourcesInTheOrderOfTheirNumbers) {
    std::vector<unsigned> identifiers;
    for (const auto& resource : kPrologResources) {
        identifiers.push_back(resource.id);
    }
    EXPECT_THAT(identifiers, testing::ElementsAre(7003, 7004, 7005, 7006, 7007, 7008, 7009, 7010, 7012));
}

TEST(StoredProlog, OpensEachResourceWithItsTitleAndClosesIt) {
    const std::map<unsigned, std::string> titles{
        {7003, "l3check"},      {7004, "procset pdfvars"}, {7005, "procset pdfutil"},
        {7006, "procset pdf"},  {7007, "procset pdflev3"}, {7008, "procset pdftext"},
        {7010, "pdfimage.prc"}, {7012, "procset spots"},
    };
    for (const auto& [identifier, title] : titles) {
        const std::string text(StoredText(identifier));
        EXPECT_THAT(text, testing::StartsWith("%%BeginResource: " + title + "\r\n"));
        EXPECT_THAT(text, testing::EndsWith("\r\n%%EndResource\r\n"));
    }
    EXPECT_THAT(std::string(StoredText(7009)), testing::StartsWith("PDFText begin\r\n"));
}

TEST(StoredProlog, EndsEveryLineInCarriageReturnAndLineFeed) {
    for (const auto& resource : kPrologResources) {
        const std::string text = Stored(resource);
        for (std::size_t at = 0; at < text.size(); ++at) {
            EXPECT_EQ(text[at] == '\n', at > 0 && text[at - 1] == '\r') << resource.id << " at " << at;
        }
        EXPECT_EQ(text.back(), '\n') << resource.id;
    }
}

TEST(StoredProlog, KeepsNoIndentationNoEmptyLineAndNoCommentButDsc) {
    for (const auto& resource : kPrologResources) {
        for (const std::string& line : Lines(Stored(resource))) {
            ASSERT_FALSE(line.empty()) << resource.id;
            EXPECT_NE(line.front(), ' ') << line;
            EXPECT_NE(line.back(), ' ') << line;
            // A percent sign inside a string is no comment.
            EXPECT_TRUE(line.starts_with("%%") || line.find('%') == std::string::npos ||
                        line.find("(\\n%%EndData\\n)") != std::string::npos)
                << line;
        }
    }
}

TEST(StoredProlog, IsUnderSixtyFourKilobytesInAll) {
    std::size_t size = 0;
    for (const auto& resource : kPrologResources) {
        size += resource.size;
    }
    EXPECT_LT(size, 65536U);
    EXPECT_GT(size, 10000U);
}

TEST(StoredProlog, TurnsOutTheSameOnEveryRun) {
    const std::string first = ScratchFolder() + "/first";
    const std::string second = ScratchFolder() + "/second";
    ASSERT_EQ(Store(PROLOG_SOURCES, first).text, "");
    ASSERT_EQ(Store(PROLOG_SOURCES, second).text, "");
    for (const auto& entry : std::filesystem::directory_iterator(first)) {
        EXPECT_EQ(FileText(entry.path()), FileText(second / entry.path().filename())) << entry.path();
    }
    for (const auto& resource : kPrologResources) {
        EXPECT_EQ(FileText(first + "/" + std::to_string(resource.id) + ".ps"), Stored(resource));
    }
}

TEST(StoreProlog, LeavesThePercentSignsOfStringsAlone) {
    const std::string sources = SourcesWith("spots.ps",
                                            "% gone\n"
                                            "%%BeginResource: procset spots\n"
                                            "\n"
                                            "  (a % b \\) % c (d) %) % gone\n"
                                            "  <~ab%c~> <25> % gone\n"
                                            "  (two\n"
                                            "  % lines) 1 % gone\n"
                                            "%%EndResource\n");
    const std::string output = ScratchFolder() + "/strings";
    ASSERT_EQ(Store(sources, output).text, "");
    EXPECT_EQ(FileText(output + "/7012.ps"),
              "%%BeginResource: procset spots\r\n"
              "(a % b \\) % c (d) %)\r\n"
              "<~ab%c~> <25>\r\n"
              "(two\r\n"
              "  % lines) 1\r\n"
              "%%EndResource\r\n");
}

TEST(StoreProlog, RefusesAStringWithoutAnEndAndALineTooLongForDsc) {
    const std::string output = ScratchFolder() + "/refused";
    const Outcome open = Store(SourcesWith("spots.ps", "(open\n"), output);
    EXPECT_NE(open.status, 0);
    EXPECT_THAT(open.text, testing::HasSubstr("spots.ps: string without an end"));
    const Outcome longLine = Store(SourcesWith("spots.ps", "1\n" + std::string(256, 'x') + "\n"), output);
    EXPECT_NE(longLine.status, 0);
    EXPECT_THAT(longLine.text, testing::HasSubstr("spots.ps:2: line of 256 characters"));
}

}  // namespace
}  // namespace zorvan::test
