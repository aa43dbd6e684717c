// Agreement with a PostScript interpreter's own filters: each reads what the other wrote.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

class Ghostscript : public testing::TestWithParam<CodecPair> {
protected:
    void SetUp() override {
        if (std::system("gs --version >/dev/null 2>&1") != 0) {
            GTEST_SKIP() << "there is no Ghostscript";
        }
        std::filesystem::create_directory(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    // The standard output of a program that is given `input` as its standard input.
    std::string Run(const std::string& program, std::string_view input) const {
        std::ofstream(folder_ / "in", std::ios::binary) << input;
        const std::string command = "cd '" + folder_.string() +
                                    "' && gs -dSAFER -dBATCH -dNOPAUSE -q -sDEVICE=nullpage -c '" + program +
                                    "' <in >out";
        EXPECT_EQ(std::system(command.c_str()), 0);
        std::ifstream output(folder_ / "out", std::ios::binary);
        return {std::istreambuf_iterator<char>(output), {}};
    }

    static constexpr const char* kCopy =
        " {from buffer readstring exch to exch writestring not {exit} if} loop to closefile flush";

    std::string GhostscriptEncode(std::string_view data) const {
        // RunLengthEncode, alone, takes an operand: no records.
        const std::string operand = GetParam().encoder == FILTER_ENCODE_RUNLENGTH ? "0 " : "";
        const std::string filter = operand + "/" + GetParam().name + "Encode filter";
        return Run("/buffer 4096 string def /from (%stdin) (r) file def /to (%stdout) (w) file " + filter +
                       " def" + kCopy,
                   data);
    }

    std::string GhostscriptDecode(std::string_view data) const {
        const std::string filter = std::string("/") + GetParam().name + "Decode filter";
        return Run("/buffer 4096 string def /from (%stdin) (r) file " + filter +
                       " def /to (%stdout) (w) file def" + kCopy,
                   data);
    }

private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("filter_tests." + std::to_string(getpid()));
};

INSTANTIATE_TEST_SUITE_P(Filter, Ghostscript, testing::ValuesIn(kCodecs),
                         [](const auto& codec) { return std::string(codec.param.name); });

constexpr std::size_t kSizes[] = {0, 1, 70001};

TEST_P(Ghostscript, ReadsWhatOurEncoderWrites) {
    std::mt19937 random(1);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : kSizes) {
            const std::string data = SampleBytes(kind, size, random);
            EXPECT_EQ(GhostscriptDecode(Encode(GetParam().encoder, data)), data) << size;
        }
    }
}

TEST_P(Ghostscript, WritesWhatOurDecoderReads) {
    std::mt19937 random(2);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : kSizes) {
            const std::string data = SampleBytes(kind, size, random);
            const Decoded whole{data, Progress::kEnd};
            EXPECT_EQ(Decode(GetParam().decoder, GhostscriptEncode(data)), whole) << size;
        }
    }
}

}  // namespace
}  // namespace zorvan::filter
