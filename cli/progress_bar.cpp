// Draws the bar in place, on one line, which blanks take off again: not every console knows escapes for that.
#include "cli/progress_bar.h"

#include <algorithm>
#include <string>

#include "cli/system.h"

namespace zorvan::cli {
namespace {

std::string BarText(unsigned done, unsigned all) {
    constexpr std::size_t kCells = 30;
    const std::size_t filled = all == 0 ? kCells : std::size_t{done} * kCells / all;
    return "\r[" + std::string(filled, '#') + std::string(kCells - filled, ' ') + "] " +
           std::to_string(done) + " of " + std::to_string(all) + " pages";
}

}  // namespace

ProgressBar::ProgressBar(bool enabled, int descriptor, Clock::duration patience)
    : isEnabled_(enabled), descriptor_(descriptor), nextDrawing_(Clock::now() + patience) {}

void ProgressBar::Show(unsigned pagesDone, unsigned pagesInAll) {
    if (!isEnabled_ || Clock::now() < nextDrawing_) {
        return;
    }
    nextDrawing_ = Clock::now() + std::chrono::milliseconds(100);
    const std::string text = BarText(std::min(pagesDone, pagesInAll), pagesInAll);
    WriteAll(descriptor_, text.data(), text.size());
    drawnCells_ = text.size() - 1;
}

void ProgressBar::Clear() {
    if (drawnCells_ > 0) {
        const std::string blanks = "\r" + std::string(drawnCells_, ' ') + "\r";
        WriteAll(descriptor_, blanks.data(), blanks.size());
        drawnCells_ = 0;
    }
}

}  // namespace zorvan::cli
