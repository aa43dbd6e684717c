// Functions that make no sense, wherever a function may be used: the device must get through all of them.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "api/session.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using ::testing::Each;

/// A function's dictionary entries; with data, if it is a stream.
struct Hostile {
    std::string entries;
    const char* data = nullptr;
};

std::string Times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string Sampled(const std::string& entries) {
    return "/FunctionType 0 /Range [0 1] " + entries;
}

const std::string kHuge = "99999999999999999999999999999999999999";

const std::vector<Hostile> kHostile = {
    {"/FunctionType 2 /Domain [0 1] /C0 [(x)] /C1 [/y] /N /z"},
    {"/FunctionType 2 /Domain [-1 1] /N 0.5"},
    {"/FunctionType 2 /Domain [0 1] /N -1"},
    {"/FunctionType 2 /Domain [0 1] /C0 [] /C1 [] /N 1"},
    {"/FunctionType 2 /Domain [0 1] /C0 [" + Times(5000, "1 ") + "] /N 1"},
    {"/FunctionType 2 /Domain [] /N 1"},
    {"/FunctionType 2 /Domain [" + kHuge + " -" + kHuge + "] /C1 [" + kHuge + "] /N " + kHuge},
    {"/FunctionType 3 /Domain [0 1] /Functions [] /Bounds [] /Encode []"},
    {"/FunctionType 3 /Domain [0 1] /Functions [5 null (x) /y] /Bounds [] /Encode []"},
    {"/FunctionType 3 /Domain [0 1] /Functions [21 0 R 21 0 R 21 0 R] /Bounds [] /Encode []"},
    {"/FunctionType 3 /Domain [0 1] /Functions [21 0 R 21 0 R] /Bounds [.8 .2] /Encode [0 1 0]"},
    {"/FunctionType 3 /Domain [0 1] /Functions [21 0 R 21 0 R 21 0 R] /Bounds [.5 .5] /Encode [0 1 0 1 0 1]"},
    {"/FunctionType 3 /Domain [] /Functions [21 0 R] /Bounds [] /Encode [0 1]"},
    {"/FunctionType 3 /Domain [0 1] /Functions [99 0 R 22 0 R] /Bounds [.5] /Encode [0 1 0 1]"},
    {"/FunctionType 3 /Domain [0 1] /Functions [99 0 R] /Bounds [] /Encode [0 1]"},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 8"), ""},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 8"), "ab"},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 3"), "abcd"},
    {Sampled("/Domain [0 1] /Size [0] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0 1] /Size [-1] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0 1] /Size [10000000] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0 1] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0 1] /Size [4]"), "abcd"},
    {Sampled("/Domain [1 0] /Size [4] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0 1 0] /Size [4] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [0.0000004 0.0000006] /Size [4] /BitsPerSample 8"), "abcd"},
    {Sampled("/Domain [(a) /b] /Size [4] /BitsPerSample 8 /Order -7"), "abcd"},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 8 /Encode [0] /Decode [1]"), "abcd"},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 8 /Encode [-" + kHuge + " " + kHuge + "]"), "abcd"},
    {Sampled("/Domain [0 1] /Size [4] /BitsPerSample 8 /Decode [-" + kHuge + " " + kHuge + "]"), "abcd"},
    {"/FunctionType 0 /Domain [0 1] /Range [1 0] /Size [4] /BitsPerSample 8", "abcd"},
    {"/FunctionType 0 /Domain [0 1] /Range [null true] /Size [4] /BitsPerSample 8", "abcd"},
    {"/FunctionType 0 /Domain [0 1] /Size [4] /BitsPerSample 8", "abcd"},
    {Sampled("/Domain [" + Times(10, "0 1 ") + "] /Size [" + Times(10, "2 ") + "] /BitsPerSample 8"), "abcd"},
    {"/FunctionType 4 /Domain [0 1] /Range [0 1]", "{ 0 div }"},
    {"/FunctionType 4 /Domain [0 1] /Range [0 1]", "{ pop }"},
    {"/FunctionType 4 /Domain [0 1] /Range [0 1]", "{ 1 2 3 stop }"},
    {"/FunctionType 4", "{ undefinedname }"},
};

/// A page for each use of each function.
PdfBuilder Document(const std::vector<Hostile>& functions) {
    std::vector<std::string> pages;
    for (std::size_t i = 0; i < functions.size(); ++i) {
        const std::string function = std::to_string(2000 + i) + " 0 R";
        for (const std::string& resources :
             {"/ColorSpace << /CS [/Separation /A /DeviceGray " + function + "] >>",
              "/ColorSpace << /CS [/DeviceN [/A] /DeviceGray " + function + "] >>",
              "/ExtGState << /GS << /TR " + function + " /BG " + function + " /UCR " + function + " >> >>",
              "/ExtGState << /GS << /HT << /HalftoneType 1 /Frequency 60 /Angle 0 /SpotFunction " + function +
                  " /TransferFunction " + function + " >> >> >>"}) {
            pages.push_back("/Contents 30 0 R /Resources << " + resources + " >>");
        }
    }
    PdfBuilder pdf = Pages(pages);
    for (std::size_t i = 0; i < functions.size(); ++i) {
        const auto number = static_cast<unsigned>(2000 + i);
        if (functions[i].data != nullptr) {
            pdf.Stream(number, functions[i].data, functions[i].entries);
        } else {
            pdf.Object(number, "<< " + functions[i].entries + " >>");
        }
    }
    pdf.Object(21, "<< /FunctionType 2 /Domain [0 1] /N 1 >>").Object(22, "/Identity");
    pdf.Stream(30, "q /CS cs 0.5 scn 0 0 9 9 re f Q q /GS gs 0.5 g 0 0 9 9 re f Q");
    return pdf;
}

/// A chain of stitched functions: more than the library follows.
void AddChain(PdfBuilder& pdf) {
    for (unsigned i = 1000; i < 1200; ++i) {
        pdf.Object(i, "<< /FunctionType 3 /Domain [0 1] /Functions [" + std::to_string(i + 1) +
                          " 0 R] /Bounds [] /Encode [0 1] >>");
    }
}

void ExpectToRun(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_THAT(conversion.pages, Each(0));
    const Outcome outcome = Interpret("-sDEVICE=nullpage", conversion.output);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.text.substr(0, 500), "");
}

TEST(HostileFunction, LeavesAProgramThatTheDeviceRuns) {
    ExpectToRun(Document(kHostile));
}

TEST(HostileFunction, OfAnEndlessChainLeavesAProgramThatTheDeviceRuns) {
    PdfBuilder pdf =
        Document({{"/FunctionType 3 /Domain [0 1] /Functions [1000 0 R] /Bounds [] /Encode [0 1]"}});
    AddChain(pdf);
    ExpectToRun(pdf);
}

TEST(HostileFunction, OfATableThatNoMemoryHoldsLeavesAProgramThatTheDeviceRuns) {
    ExpectToRun(Document({{Sampled("/Domain [0 1] /Size [2147483647] /BitsPerSample 8"), "abcd"}}));
}

}  // namespace
}  // namespace zorvan::test
