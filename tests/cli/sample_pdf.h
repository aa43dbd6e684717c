// Composes small PDF files, cross-reference table included.
#pragma once

#include <string>
#include <vector>

namespace zorvan::cli {

struct SamplePage {
    std::string content = "0 0 10 10 re f\n";
    std::string mediaBox = "0 0 200 300";
    int rotate = 0;
    // Added to the stream's "Length", which it makes wrong.
    unsigned lengthSurplus = 0;
    // What stands in the resource dictionary.
    std::string resources{};
};

// A page whose operator lacks an operand: it cannot be converted.
SamplePage BrokenPage();
// A page whose stream claims to run past the end of the file: it is converted, and the error recorded.
SamplePage OverlongPage();

std::string SamplePdf(const std::vector<SamplePage>& pages);
// The same page so many times.
std::string SamplePdf(unsigned pageCount);

}  // namespace zorvan::cli
