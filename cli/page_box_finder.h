// Finds a page's visible box, and the place for its page size request, in the page's PostScript.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "cli/box.h"
#include "cli/line_scanner.h"

namespace zorvan::cli {

// Reads one page from its first byte on. The library writes the page setup as
//     %%BeginPageSetup
//     userdict /pgsave save put
//     PDFVars begin PDF begin PDFVars/InitAll get exec
//     [a b c d e f] concat          (only when the page is turned)
//     ...                           (resources, binary data among them)
//     %%EndPageSetup
//     x y width height RC
// and what follows is of no interest: once Found(), feed it no more.
class PageBoxFinder {
public:
    void Take(std::string_view piece);
    bool Found() const { return state_ == State::kFound; }

    // The offset in the page right behind its "%%BeginPageSetup" line; 0 before that line was met.
    std::uint64_t SetupOffset() const { return setupOffset_; }
    // The visible box, turned as the page is, its corners in order; null until Found() and when the page's
    // numbers are not finite.
    std::optional<Box> VisibleBox() const;

private:
    enum class State { kBeforeSetup, kInSetup, kAtRotation, kInResources, kAtClip, kFound };

    void TakeLine(std::string_view line);
    void TakeRotation(std::string_view line);
    void TakeClip(std::string_view line);
    void LookForSetupEnd(std::string_view line);

    State state_ = State::kBeforeSetup;
    LineScanner lines_;
    std::uint64_t offset_ = 0;
    std::uint64_t setupOffset_ = 0;
    std::array<double, 6> matrix_ = {1, 0, 0, 1, 0, 0};
    std::array<double, 4> clip_ = {0, 0, 0, 0};
};

}  // namespace zorvan::cli
