// Reading the files of a separating device (TIFF 6.0, sections 2 and 3).
#include "prolog/plates.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

constexpr unsigned kImageWidth = 256;
constexpr unsigned kImageLength = 257;
constexpr unsigned kStripOffsets = 273;
constexpr unsigned kStripByteCounts = 279;
constexpr unsigned kShort = 3;

}  // namespace

Plate::Plate(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    file_ = std::string(std::istreambuf_iterator<char>(file), {});
    width_ = Field(kImageWidth).at(0);
    height_ = Field(kImageLength).at(0);
    const std::vector<unsigned> offsets = Field(kStripOffsets);
    const std::vector<unsigned> counts = Field(kStripByteCounts);
    for (std::size_t strip = 0; strip < offsets.size(); ++strip) {
        samples_ += file_.substr(offsets[strip], counts.at(strip));
    }
}

int Plate::At(int x, int y) const {
    const std::size_t row = height_ - 1 - static_cast<unsigned>(y);
    return 255 - static_cast<unsigned char>(samples_.at(row * width_ + static_cast<unsigned>(x)));
}

unsigned Plate::Number(std::size_t at, unsigned bytes) const {
    unsigned number = 0;
    while (bytes-- > 0) {
        number = number << 8U | static_cast<unsigned char>(file_.at(at + bytes));
    }
    return number;
}

std::vector<unsigned> Plate::Field(unsigned tag) const {
    const std::size_t directory = Number(4, 4);
    for (unsigned entry = 0; entry < Number(directory, 2); ++entry) {
        const std::size_t at = directory + 2 + 12 * std::size_t{entry};
        if (Number(at, 2) != tag) {
            continue;
        }
        const unsigned size = Number(at + 2, 2) == kShort ? 2 : 4;
        const unsigned count = Number(at + 4, 4);
        const std::size_t values = count * size <= 4 ? at + 8 : Number(at + 8, 4);
        std::vector<unsigned> numbers;
        for (unsigned index = 0; index < count; ++index) {
            numbers.push_back(Number(values + std::size_t{index} * size, size));
        }
        return numbers;
    }
    return {};
}

Plates::Plates(std::string_view content) {
    const std::string name = ScratchFolder() + "/plates";
    const auto path = [&name](const std::string& ink) { return name + "(" + ink + ").tif"; };
    const std::array<std::string, 5> inks{"Cyan", "Magenta", "Yellow", "Black", "Spot"};
    for (const std::string& ink : inks) {  // an earlier page's
        std::filesystem::remove(path(ink));
    }
    const Outcome outcome =
        Interpret("-sDEVICE=tiffsep -sCompression=none -r72 -g100x100 -sOutputFile=" + name + ".tif",
                  PrologJob().Page(content).Text());
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    for (const std::string& ink : inks) {
        if (std::filesystem::exists(path(ink))) {
            plates_.emplace_back(path(ink));
        }
    }
}

std::vector<int> Plates::At(int x, int y) const {
    std::vector<int> inks;
    for (const Plate& plate : plates_) {
        inks.push_back(plate.At(x, y));
    }
    return inks;
}

}  // namespace zorvan::test
