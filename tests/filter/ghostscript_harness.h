// Runs a PostScript interpreter, to hear what its own filters say.
#ifndef TESTS_FILTER_GHOSTSCRIPT_HARNESS_H
#define TESTS_FILTER_GHOSTSCRIPT_HARNESS_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace zorvan::filter {

// Data for a filter, and what stands before "filter" for it: parameters and name.
struct FilterCall {
    std::string filter;
    std::string data;
};

// A test of this kind is skipped where there is no Ghostscript.
class GhostscriptTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // What Ghostscript writes to its standard output when `input` is its standard input.
    std::string RunGhostscript(const std::string& arguments, std::string_view input) const;

    std::string GhostscriptEncode(const FilterCall& call) const;
    std::string GhostscriptDecode(const FilterCall& call) const;

    // Many at once, each of less than 32,768 bytes. What cannot be decoded ends in "ERROR".
    std::vector<std::string> GhostscriptEncodeEach(const std::vector<FilterCall>& calls) const;
    std::vector<std::string> GhostscriptDecodeEach(const std::vector<FilterCall>& calls) const;

private:
    std::vector<std::string> RunEach(const std::string& procedure,
                                     const std::vector<FilterCall>& calls) const;

    std::filesystem::path folder_;
};

}  // namespace zorvan::filter

#endif
