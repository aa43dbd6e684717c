// many_files one|each ROUNDS GOOD FILE...: converts the files so many times, in one job or each in one of its
// own. Ends with 1 unless GOOD of them come out whole each time, and the process needs no more memory after
// its first tenth than in it.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/system.h"
#include "zorvan/zorvan.h"

namespace {

int ZORVAN_CALL Drop(const void* /*bytes*/, unsigned int /*count*/) {
    return 0;
}

bool BeginJob() {
    return KAPRINE_Begin(ZORVAN_FILTER_FOLDER "/") == 0;
}

/// True when no call fails.
bool Convert(const char* path) {
    bool well = ZORVAN_OneFileBegin(path, Drop, nullptr) == 0;
    well = well && ZORVAN_OutputGlobalResources() == 0;
    for (int page = 1; page <= ZORVAN_GetTotalPages(); ++page) {
        well = ZORVAN_OutputOnePage(static_cast<unsigned>(page)) == 0 && well;
    }
    ZORVAN_OneFileEnd();
    return well;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr long kMayGrow = 512;  // KiB: what an allocator's own bookkeeping comes to
    constexpr int kFirstFile = 4;
    const bool ownJobs = argc > 1 && argv[1] == std::string_view("each");
    const long rounds = argc < kFirstFile ? 0 : std::strtol(argv[2], nullptr, 10);
    const long good = argc < kFirstFile ? 0 : std::strtol(argv[3], nullptr, 10);
    if (rounds < 1 || !BeginJob()) {
        return 64;
    }
    long converted = 0;
    long peakBefore = 0;
    for (long round = 0; round < rounds; ++round) {
        if (round == (rounds + 9) / 10) {
            peakBefore = zorvan::test::PeakMemory();
        }
        for (int file = kFirstFile; file < argc; ++file) {
            converted += Convert(argv[file]) ? 1 : 0;
            if (ownJobs) {
                KAPRINE_End();
                converted -= BeginJob() ? 0 : good;
            }
        }
    }
    KAPRINE_End();
    const long peak = zorvan::test::PeakMemory();
    std::printf("%ld of %ld files converted whole, %ld KiB after a tenth of them, %ld KiB after all\n",
                converted, rounds * (argc - kFirstFile), peakBefore, peak);
    const bool grows = rounds > 1 && peak - peakBefore > kMayGrow;
    return converted != rounds * good || grows ? 1 : 0;
}
