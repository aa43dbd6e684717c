// Documents that end early, and the one that the device prints after them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "api/every_resource.h"
#include "api/session.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

constexpr std::size_t kPages = 3;

/// What a host has in hand that can write no more from a piece on; all of it for piece 0.
std::string CutAt(std::uint64_t piece) {
    const Job job;
    Pieces::Reset();
    Pieces::Refuse(piece, 1, true);
    OpenFile(EveryResource());
    if (ZORVAN_OutputGlobalResources() == 0) {
        for (unsigned page = 1; page <= kPages && ZORVAN_OutputOnePage(page) == 0; ++page) {}
    }
    ZORVAN_OneFileEnd();
    return Pieces::Joined();
}

/// The documents that one interpreter is given, and the pictures of the pages that it prints.
class Device {
public:
    Device() : folder_(ScratchFolder() + "/device") {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
    }

    /// Runs a document as a server runs a job, but that nothing is taken back behind it.
    void Send(const std::string& document) {
        const std::string path = folder_ + "/" + std::to_string(sent_++) + ".ps";
        std::ofstream(path, std::ios::binary) << document;
        program_ += "{(" + path + ") run} stopped {$error /newerror false put} if clear cleardictstack\n";
    }

    /// Prints all and gives the last pages.
    [[nodiscard]] std::vector<Picture> Print() const {
        const std::string device = "--permit-file-read=" + folder_ + "/ -sDEVICE=ppmraw -r36 -sOutputFile=";
        const Outcome outcome = Interpret(device + folder_ + "/%d.ppm", program_);
        EXPECT_EQ(outcome.status, 0) << outcome.text.substr(0, 2000);
        std::size_t printed = 0;
        while (std::filesystem::exists(PageFile(printed + 1))) {
            ++printed;
        }
        std::vector<Picture> pages;
        for (std::size_t page = printed < kPages ? 1 : printed - kPages + 1; page <= printed; ++page) {
            pages.emplace_back(PageFile(page));
        }
        return pages;
    }

private:
    [[nodiscard]] std::string PageFile(std::size_t page) const {
        return folder_ + "/" + std::to_string(page) + ".ppm";
    }

    std::string folder_;
    std::string program_;
    std::size_t sent_ = 0;
};

TEST(NextJob, PrintsRightAfterAnyThatEndedEarly) {
    const std::string good = CutAt(0);
    const std::uint64_t pieces = Pieces::Calls();
    Device alone;
    alone.Send(good);
    const std::vector<Picture> expected = alone.Print();
    ASSERT_EQ(expected.size(), kPages);
    constexpr std::uint64_t kInOneInterpreter = 100;  // which takes it some seconds
    for (std::uint64_t first = 1; first < pieces; first += kInOneInterpreter) {
        Device device;
        for (std::uint64_t piece = first; piece < std::min(pieces, first + kInOneInterpreter); ++piece) {
            device.Send(CutAt(piece));
        }
        device.Send(good);
        EXPECT_TRUE(device.Print() == expected) << "after the pieces from " << first << " on";
    }
}

}  // namespace
}  // namespace zorvan::test
