// A page as a device prints it.
#pragma once

#include <string>
#include <vector>

namespace zorvan::cli {

// Gray pixels, one a point, the top row first.
struct DevicePage {
    unsigned width = 0;
    unsigned height = 0;
    std::string pixels;

    // (0, 0) is the lower left pixel.
    bool IsBlack(unsigned x, unsigned y) const { return pixels.at((height - 1 - y) * width + x) == '\0'; }
    unsigned BlackPixels() const;
};

// Runs a PostScript file through Ghostscript at 72 dots per inch.
std::vector<DevicePage> PrintedPages(const std::string& path);

}  // namespace zorvan::cli
