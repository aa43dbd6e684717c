// Finds the fonts of a document in its PostScript: those that it carries and those that it asks of the
// device.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/line_scanner.h"

namespace zorvan::cli {

// Of the program that the document carries; of a font of the device nothing is known.
enum class FontKind { kOfDevice, kType1, kCompact, kTrueType, kType3, kCIDCompact, kCIDTrueType };

struct FontInfo {
    std::string resource;  // what the pages select it by, such as "/N12"
    std::string name;      // the PDF's; of a composite font, the name of its CID-keyed font
    FontKind kind = FontKind::kOfDevice;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 sees a 0 in it
    std::strong_ordering operator<=>(const FontInfo&) const = default;
};

// Reads the whole output of a conversion. The library writes a font into the setup of the document or of a
// page, as
//     %%BeginResource: font /Name   (a TrueType font's name has no slash)
//     ...
//     %%EndResource                 (a TrueType font has none)
//     [/N12 /Name 1 TZ              (a Type 3 font's names stand the other way round)
// or as the last line alone when the device has to have the font. A list of differences stands in lines of
// its own behind the "[". Composite fonts end in another line,
//     /N12 (Name-T0) /Identity-H [(Name)] /Adobe-Japan1 [ /Serif ]  0 0 TZzero
// and before it have a block "%%BeginResource: CIDFont Name" without an end, or a compact program without a
// block; the CMaps among them have blocks with ends.
class FontFinder {
public:
    void Take(std::string_view piece);
    void BeginPage();
    void KeepPage() { state_ = State::kDone; }
    // Forgets the fonts that were met in this page first.
    void DropPage();

    // Each font once, in order of first appearance. A name may stand there more than once: for fonts that the
    // PDF holds several times.
    const std::vector<FontInfo>& Fonts() const { return fonts_; }

private:
    // Only the setup is looked at: the text of a page may hold any line.
    enum class State { kBeforeSetup, kInSetup, kAtClip, kDone };
    // What ends with "%%EndResource".
    enum class Block { kNone, kFont, kCMap };
    struct Program {
        std::string name;
        FontKind kind = FontKind::kType1;
    };

    void Restart(State state);
    void TakeLine(std::string_view line);
    void TakeClip(std::string_view line);
    void TakeSetupLine(std::string_view line);
    void TakeBlockLine(std::string_view line);
    bool BeginsBlock(std::string_view line);
    void BeginProgram(std::string_view title);
    void TakeUse(std::string_view line);
    bool TakeCompositeUse(std::string_view line);
    bool BeginsCompactData(std::string_view line);
    void Add(FontInfo font);

    State state_ = State::kBeforeSetup;
    LineScanner lines_;
    std::optional<Program> program_;  // what the next use is made of
    Block block_ = Block::kNone;
    std::optional<std::uint64_t> announced_;  // by the line before: bytes of a compact program
    std::uint64_t compactLeft_ = 0;
    std::vector<FontInfo> fonts_;
    std::set<FontInfo> known_;
    std::size_t fontsBeforePage_ = 0;
};

}  // namespace zorvan::cli
