// A job in which any one allocation fails. A program of its own, since it replaces the functions that memory
// comes from, for the shared library and the codec library too.
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "api/every_resource.h"
#include "support/host.h"
#include "support/pdf_builder.h"
#include "zorvan/zorvan.h"

namespace {

std::int64_t untilFault = -1;  // allocations that still succeed; below 0: none fails
bool faultMet = false;
bool paused = false;  // while the host itself needs memory
std::int64_t liveBlocks = 0;

void* Allocate(std::size_t size) {
    if (!paused && untilFault >= 0 && untilFault-- == 0) {
        faultMet = true;
        return nullptr;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    liveBlocks += memory == nullptr ? 0 : 1;
    return memory;
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void Free(void* memory) {
    liveBlocks -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}

namespace zorvan::test {
namespace {

constexpr int kMemoryNotEnough = -4088;

std::string output;  // grows only in the first run, so that it takes no part in the count of blocks

int ZORVAN_CALL KeepPiece(const void* bytes, unsigned int count) {
    paused = true;
    output.append(static_cast<const char*>(bytes), count);
    paused = false;
    return 0;
}

/// The statuses of a job whose host stops at the first failure, and what it wrote before the file was ended.
struct Outcome {
    int begin = 0;
    int fileBegin = 0;
    int later = 0;  // of the first page or setup that failed
    int recorded = 0;
    int pages = 0;
    bool faultMet = false;
    std::int64_t leaked = 0;  // blocks
    std::size_t written = 0;  // bytes of `output` before the file was ended

    [[nodiscard]] int First() const { return begin != 0 ? begin : fileBegin != 0 ? fileBegin : later; }
};

int WriteDocument(int& pages) {
    int status = ZORVAN_OutputGlobalResources();
    pages = ZORVAN_GetTotalPages();
    for (int page = 1; status == 0 && page <= pages; ++page) {
        status = ZORVAN_OutputOnePage(static_cast<unsigned>(page));
    }
    return status;
}

/// Lets the allocation after `successes` fail; no one for a number below 0.
Outcome Run(const std::string& folder, const std::string& path, std::int64_t successes) {
    Outcome outcome;
    const std::int64_t liveBefore = liveBlocks;
    output.clear();
    faultMet = false;
    untilFault = successes;
    outcome.begin = KAPRINE_Begin(folder.c_str());
    if (outcome.begin == 0) {
        outcome.fileBegin = ZORVAN_OneFileBegin(path.c_str(), KeepPiece, nullptr);
    }
    if (outcome.First() == 0) {
        outcome.later = WriteDocument(outcome.pages);
    }
    outcome.written = output.size();
    ZORVAN_OneFileEnd();
    untilFault = -1;
    outcome.recorded = KAPRINE_GetErrInfo(nullptr, nullptr, nullptr, nullptr);
    KAPRINE_End();
    outcome.faultMet = faultMet;
    outcome.leaked = liveBlocks - liveBefore;
    return outcome;
}

/// Three pages that take every way through the reader and the interpreter that asks for memory.
std::string ThreePages() {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(
        2, "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /MediaBox [0 0 99 99] /Resources << /A [1 2] >> >>");
    pdf.Object(3, "<< /Type /Page /Contents 6 0 R /SeparationInfo << /DeviceColorant (Gold\n) >> >>");
    pdf.Object(4, "<< /Type /Page /Contents [6 0 R 7 0 R] /Rotate 90 >>");
    pdf.Object(5, "<< /Type /Page /Contents 8 0 R /Resources << /ExtGState << /G << /op true >> >> >> >>");
    std::string content;
    for (int i = 0; i < 200; ++i) {
        content += "[ [(s)] << /Name" + std::to_string(i) + " 1 >> ";  // operands that pile up
    }
    pdf.Stream(6, "q 0.5 w /Perceptual ri [1 2 3] 0 d 0 0 m 9 9 l S Q /G gs");
    pdf.Stream(7, content + " 1 w");
    pdf.Stream(8, "3120772030203120323933206d>", "/Filter [/ASCIIHexDecode] /DecodeParms [null]");
    return pdf.Bytes();
}

/// The same through every decoder and through two of them.
std::string FilteredPages() {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /MediaBox [0 0 99 99] >>");
    pdf.Object(3, "<< /Type /Page /Contents 6 0 R >>").Object(4, "<< /Type /Page /Contents 7 0 R >>");
    pdf.Object(5, "<< /Type /Page /Contents 8 0 R >>");
    pdf.Stream(6, std::string("\x03") + "1 w " + '\x80', "/Filter /RunLengthDecode");
    pdf.Stream(7, "33 31 32 30 37 37 3E>", "/Filter [/ASCIIHexDecode /ASCIIHexDecode]");
    pdf.Stream(8, "0GY$R~>", "/Filter /ASCII85Decode");
    return pdf.Bytes();
}

void CheckOutcome(const Outcome& outcome, std::string_view whole, std::int64_t successes) {
    EXPECT_TRUE(whole.starts_with(std::string_view(output).substr(0, outcome.written))) << successes;
    EXPECT_EQ(outcome.leaked, 0) << successes;
    if (outcome.First() == 0) {
        EXPECT_EQ(output, whole) << successes;
        EXPECT_EQ(outcome.recorded, 0) << successes;
        return;
    }
    const bool objectMissing = outcome.begin == -1 || outcome.fileBegin == -1;
    const bool encoderMissing = outcome.later == -1;
    EXPECT_EQ(outcome.First(), objectMissing || encoderMissing ? -1 : kMemoryNotEnough) << successes;
    EXPECT_EQ(outcome.recorded, objectMissing ? 0 : kMemoryNotEnough) << successes;
}

void FailEachAllocation(const std::string& bytes) {
    const std::string folder = FilterFolder();
    const TemporaryFile file(bytes);
    const Outcome first = Run(folder, file.Path(), -1);
    ASSERT_EQ(first.First(), 0);
    ASSERT_EQ(first.pages, 3);
    const std::string whole = output;
    std::int64_t successes = 0;
    while (true) {
        const Outcome outcome = Run(folder, file.Path(), successes);
        CheckOutcome(outcome, whole, successes);
        if (!outcome.faultMet) {
            break;
        }
        EXPECT_EQ(Run(folder, file.Path(), -1).leaked, 0) << successes;
        EXPECT_EQ(output, whole) << successes;
        ++successes;
    }
    EXPECT_GT(successes, 50);
}

TEST(AllocationFaults, EndWithMemoryNotEnoughAndNeverWithAShorterDocument) {
    FailEachAllocation(ThreePages());
}

TEST(AllocationFaults, InsideTheDecodersDoNeither) {
    FailEachAllocation(FilteredPages());
}

TEST(AllocationFaults, AmongResourcesOfEveryKindDoNeither) {
    FailEachAllocation(EveryResource());
}

}  // namespace
}  // namespace zorvan::test
