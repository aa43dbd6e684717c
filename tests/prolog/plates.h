// The printing plates of a page, as a device that separates colours makes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvan::test {

/// One plate: how much of its ink there is at each pixel, one pixel a point.
class Plate {
public:
    /// Reads an uncompressed TIFF file of eight bits a pixel, 255 of which mean no ink.
    explicit Plate(const std::string& path);

    /// 0 to 255, counted from the lower left corner as in PostScript.
    [[nodiscard]] int At(int x, int y) const;

private:
    [[nodiscard]] unsigned Number(std::size_t at, unsigned bytes) const;
    [[nodiscard]] std::vector<unsigned> Field(unsigned tag) const;

    std::string file_;
    unsigned width_ = 0;
    unsigned height_ = 0;
    std::string samples_;
};

/// The plates of a page of this content.
class Plates {
public:
    explicit Plates(std::string_view content);

    /// The inks at a pixel: cyan, magenta, yellow, black, and then the spot colour of the name Spot if there
    /// is one.
    [[nodiscard]] std::vector<int> At(int x, int y) const;

private:
    std::vector<Plate> plates_;
};

}  // namespace zorvan::test
