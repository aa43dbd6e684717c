// The program and its input on Windows: paths that are too long, files that are being written.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <windows.h>

#include "tests/cli/refused_input.h"
#include "tests/cli/sample_pdf.h"

namespace zorvan::cli {
namespace {

TEST(ProgramInputOnWindows, MayNotHaveAPathLongerThanTheLibraryTakes) {
    const ScratchFolder scratch;
    const std::string name = std::string(240, 'a') + ".pdf";
    ExpectRefused(scratch.Write(name, SamplePdf(1)), 1, "name too long");
}

TEST(ProgramInputOnWindows, MayNotBeBeingWritten) {
    const ScratchFolder scratch;
    const std::string pdf = scratch.Write("a.pdf", SamplePdf(1));
    const HANDLE writer = CreateFileA(pdf.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    ExpectRefused(pdf, 1, "busy");
    CloseHandle(writer);
}

}  // namespace
}  // namespace zorvan::cli
