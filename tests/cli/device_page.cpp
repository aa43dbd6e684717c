// Ghostscript's graymap device, whose output (PGM) needs no library to be read.
#include "tests/cli/device_page.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "tests/cli/program_run.h"

namespace zorvan::cli {

unsigned DevicePage::BlackPixels() const {
    return static_cast<unsigned>(std::count(pixels.begin(), pixels.end(), '\0'));
}

std::vector<DevicePage> PrintedPages(const std::string& path) {
    const RunResult run = Run({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=pgmraw", "-r72",
                               "-sOutputFile=-", "-sstdout=%stderr", path});
    if (run.exitCode != 0) {
        throw std::runtime_error("Ghostscript: " + run.err);
    }
    std::vector<DevicePage> pages;
    std::istringstream stream(run.out);
    for (std::string word; stream >> word;) {
        // "P5", a comment line, width, height, the white value, one white space.
        DevicePage page;
        stream.ignore(1000, '\n');
        stream.ignore(1000, '\n');
        stream >> page.width >> page.height >> word;
        stream.get();
        page.pixels.resize(std::size_t{page.width} * page.height);
        stream.read(page.pixels.data(), static_cast<std::streamsize>(page.pixels.size()));
        pages.push_back(page);
    }
    return pages;
}

}  // namespace zorvan::cli
