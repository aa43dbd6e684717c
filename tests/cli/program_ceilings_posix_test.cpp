// The program where there is little memory: 128 MB of addresses and 256 KB of stack.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "tests/cli/posix_run.h"
#include "tests/cli/sample_pdf.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::HasSubstr;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kTakesAddresses = true;  // AddressSanitizer alone takes terabytes of them
#else
constexpr bool kTakesAddresses = false;
#endif

class ProgramUnderCeilings : public testing::Test {
protected:
    void SetUp() override {
        if (kTakesAddresses) {
            GTEST_SKIP();
        }
    }

    RunResult Convert(const std::string& pdf) const {
        return RunZorvan({pdf, scratch_.Path("out.ps")}, [] {
            const rlimit addresses = {128U << 20U, 128U << 20U};
            const rlimit stack = {256U << 10U, 256U << 10U};
            ::setrlimit(RLIMIT_AS, &addresses);
            ::setrlimit(RLIMIT_STACK, &stack);
        });
    }

    ScratchFolder scratch_;
};

TEST_F(ProgramUnderCeilings, ConvertsFilesOfTheTrade) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZORVAN_TEST_PDFS)) {
        const RunResult run = Convert(entry.path());
        EXPECT_EQ(run.exitCode, 0) << entry.path() << ": " << run.err;
        ++count;
    }
    EXPECT_GT(count, 80U);
}

TEST_F(ProgramUnderCeilings, EndsAtDeepNestingWithItsMessage) {
    constexpr std::size_t kDeep = 1U << 20U;
    for (const char* opening : {"[", "<<", "(", "<< /A ", "{"}) {
        std::string content;
        while (content.size() < kDeep) {
            content += opening;
        }
        const RunResult run = Convert(scratch_.Write("deep.pdf", SamplePdf({{.content = content}})));
        EXPECT_THAT(run.exitCode, testing::AnyOf(0, 5)) << opening << ": " << run.err;
        EXPECT_THAT(run.err, HasSubstr(run.exitCode == 0 ? "" : "error -4071")) << opening;
    }
}

TEST_F(ProgramUnderCeilings, TellsThatItsMemoryIsNotEnough) {
    constexpr std::size_t kMuch = 200U << 20U;  // more than can be mapped
    const std::string pdf = scratch_.Write("much.pdf", SamplePdf(1));
    std::filesystem::resize_file(pdf, kMuch);
    const RunResult run = Convert(pdf);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr("error -4086"));
}

}  // namespace
}  // namespace zorvan::cli
