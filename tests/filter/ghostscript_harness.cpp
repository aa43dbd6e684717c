// Programs for Ghostscript, and the pipes around them.
#include "tests/filter/ghostscript_harness.h"

#include <fstream>
#include <iterator>

#include "support/system.h"
#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

constexpr const char* kCopy =
    " {from buffer readstring exch to exch writestring not {exit} if} loop to closefile flush";

std::string Hex(std::string_view data) {
    std::string digits = Encode(FILTER_ENCODE_ASCIIHEX, data);
    return "<" + digits;
}

// The hexadecimal pieces of `text`, each ended by ">".
std::vector<std::string> Pieces(std::string_view text) {
    std::vector<std::string> pieces;
    for (std::size_t end = text.find('>'); end != std::string_view::npos; end = text.find('>')) {
        pieces.push_back(Decode(FILTER_DECODE_ASCIIHEX, text.substr(0, end + 1)).bytes);
        text.remove_prefix(end + 1);
    }
    return pieces;
}

}  // namespace

void GhostscriptTest::SetUp() {
    if (test::RunShell("gs --version").status != 0) {
        GTEST_SKIP() << "there is no Ghostscript";
    }
    folder_ = test::MakeFolder((std::filesystem::temp_directory_path() / "filter_tests.").string());
}

void GhostscriptTest::TearDown() {
    std::filesystem::remove_all(folder_);
}

std::string GhostscriptTest::RunGhostscript(const std::string& arguments, std::string_view input) const {
    std::ofstream(folder_ / "in", std::ios::binary) << input;
    const std::string command = "cd " + test::ShellWord(test::ShellPath(folder_.string())) +
                                " && gs -dSAFER -dBATCH -dNOPAUSE -q -sDEVICE=nullpage " + arguments +
                                " <in >out";
    EXPECT_EQ(test::RunShell(command).status, 0);
    std::ifstream output(folder_ / "out", std::ios::binary);
    return {std::istreambuf_iterator<char>(output), {}};
}

std::string GhostscriptTest::GhostscriptEncode(const FilterCall& call) const {
    return RunGhostscript("-c '/buffer 4096 string def /from (%stdin) (r) file def /to (%stdout) (w) file " +
                              call.filter + " filter def" + kCopy + "'",
                          call.data);
}

std::string GhostscriptTest::GhostscriptDecode(const FilterCall& call) const {
    return RunGhostscript("-c '/buffer 4096 string def /from (%stdin) (r) file " + call.filter +
                              " filter def /to (%stdout) (w) file def" + kCopy + "'",
                          call.data);
}

std::vector<std::string> GhostscriptTest::GhostscriptEncodeEach(const std::vector<FilterCall>& calls) const {
    return RunEach(R"(
        /hex (%stdout) (w) file /NullEncode filter /ASCIIHexEncode filter def
        hex exch cvx exec filter dup 3 -1 roll writestring closefile
        hex closefile)",
                   calls);
}

std::vector<std::string> GhostscriptTest::GhostscriptDecodeEach(const std::vector<FilterCall>& calls) const {
    return RunEach(R"(
        /hex (%stdout) (w) file /NullEncode filter /ASCIIHexEncode filter def
        cvx exec filter /from exch def
        { { from buffer readstring exch hex exch writestring not { exit } if } loop } stopped
        { hex (ERROR) writestring } if
        clear hex closefile)",
                   calls);
}

// The procedure finds data and filter on the stack, both strings.
std::vector<std::string> GhostscriptTest::RunEach(const std::string& procedure,
                                                  const std::vector<FilterCall>& calls) const {
    std::string program = "/buffer 1 string def /each {" + procedure + "} def\n";
    for (const FilterCall& call : calls) {
        program += Hex(call.data) + "\n(" + call.filter + ") each\n";
    }
    std::vector<std::string> results = Pieces(RunGhostscript("-", program));
    EXPECT_EQ(results.size(), calls.size());
    results.resize(calls.size());
    return results;
}

}  // namespace zorvan::filter
