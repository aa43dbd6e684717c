// When the bar is drawn.
#include "cli/progress_bar.h"

#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "cli/system.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using std::chrono::hours;
using std::chrono::seconds;

// What a bar with these settings draws for one step.
std::string Drawn(bool enabled, ProgressBar::Clock::duration patience) {
    const ScratchFolder scratch;
    std::string path;
    const int descriptor = CreateBeside(scratch.Path(""), path);
    {
        ProgressBar bar(enabled, descriptor, patience);
        bar.Show(1, 2);
        bar.Show(2, 2);
    }
    ::close(descriptor);
    return FileText(path);
}

TEST(ProgressBar, IsDrawnOnceAndTakenOffAgain) {
    EXPECT_EQ(Drawn(true, seconds(0)),
              "\r[###############               ] 1 of 2 pages"
              "\r                                             \r");
}

TEST(ProgressBar, IsNotDrawnForAShortJob) {
    EXPECT_EQ(Drawn(true, hours(1)), "");
}

TEST(ProgressBar, IsNotDrawnWhereNobodyLooks) {
    EXPECT_EQ(Drawn(false, seconds(0)), "");
}

}  // namespace
}  // namespace zorvan::cli
