// When the bar is drawn.
#include "cli/progress_bar.h"

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace zorvan::cli {
namespace {

using std::chrono::hours;
using std::chrono::seconds;

// What a bar with these settings draws for one step.
std::string Drawn(bool enabled, ProgressBar::Clock::duration patience) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    {
        ProgressBar bar(enabled, ends[1], patience);
        bar.Show(1, 2);
        bar.Show(2, 2);
    }
    ::close(ends[1]);
    std::array<char, 1000> text{};
    const ssize_t length = ::read(ends[0], text.data(), text.size());
    ::close(ends[0]);
    return {text.data(), static_cast<std::size_t>(length)};
}

TEST(ProgressBar, IsDrawnOnceAndTakenOffAgain) {
    EXPECT_EQ(Drawn(true, seconds(0)),
              "\r[###############               ] 1 of 2 pages"
              "\r\x1b[K");
}

TEST(ProgressBar, IsNotDrawnForAShortJob) {
    EXPECT_EQ(Drawn(true, hours(1)), "");
}

TEST(ProgressBar, IsNotDrawnWhereNobodyLooks) {
    EXPECT_EQ(Drawn(false, seconds(0)), "");
}

}  // namespace
}  // namespace zorvan::cli
