// A bar for a person at a terminal who waits for a long job.
#pragma once

#include <chrono>

namespace zorvan::cli {

class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // Draws on `descriptor`, and only when the job has lasted for `patience`.
    ProgressBar(bool enabled, int descriptor, Clock::duration patience);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { Clear(); }

    // Called as often as one likes: it draws ten times a second at most.
    void Show(unsigned pagesDone, unsigned pagesInAll);
    // Takes the bar off the terminal, so that something else can be said there.
    void Clear();

private:
    bool isEnabled_;
    int descriptor_;
    Clock::time_point nextDrawing_;
    std::size_t drawnCells_ = 0;
};

}  // namespace zorvan::cli
