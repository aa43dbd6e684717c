// A PostScript document around the stored prolog, and the interpreter that runs it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "support/system.h"

namespace zorvan::test {

/// A page as the interpreter painted it: one byte a component, at one pixel a point.
class Picture {
public:
    /// Reads a raw PPM or PAM file.
    explicit Picture(const std::string& path);

    /// The components of a pixel, counted from the lower left corner as in PostScript.
    [[nodiscard]] std::vector<int> At(int x, int y) const;

    bool operator==(const Picture& other) const = default;

private:
    int width_ = 0;
    int height_ = 0;
    int components_ = 0;
    std::string samples_;
};

/// A document of the very lines that the library writes, with contents of the test's own.
class PrologJob {
public:
    /// Text in front of the document, as a spooler or an imposition program might put it there.
    PrologJob& Before(std::string_view text);
    /// Document-wide resources.
    PrologJob& Setup(std::string_view text);
    /// A page: what stands after its clip, and what stands in its setup.
    PrologJob& Page(std::string_view content, std::string_view pageSetup = "");

    [[nodiscard]] std::string Text() const;

    /// Runs the document without a page device.
    [[nodiscard]] Outcome Run() const;
    /// Paints the pages, each 100 points square, with a device of the interpreter's.
    [[nodiscard]] std::vector<Picture> Paint(const std::string& device = "ppmraw") const;

private:
    std::string before_;
    std::string setup_;
    std::vector<std::array<std::string, 2>> pages_;
};

/// The stored text of a resource.
std::string_view StoredText(unsigned identifier);

/// A folder that exists while the test program runs.
const std::string& ScratchFolder();

/// Runs the interpreter on a text with these options.
Outcome Interpret(const std::string& options, std::string_view text);

/// What a page of this content prints. Fails the test when the job does not end well.
std::string Printed(std::string_view content);

/// The page that this content paints.
Picture Painted(std::string_view content, const std::string& device = "ppmraw");

using Color = std::vector<int>;
inline const Color kBlack{0, 0, 0};
inline const Color kWhite{255, 255, 255};
inline const Color kRed{255, 0, 0};
inline const Color kGreen{0, 255, 0};
inline const Color kBlue{0, 0, 255};

}  // namespace zorvan::test
