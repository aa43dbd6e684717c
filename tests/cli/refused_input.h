// An input that the program must refuse.
#pragma once

#include <string>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {

// Expects that `input` is refused with `exitCode` and a one-line message, and that the output of an earlier
// run is still there with nothing beside it.
inline void ExpectRefused(const std::string& input, int exitCode, const std::string& reason) {
    const ScratchFolder out;
    const std::string output = out.Write("out.ps", "earlier");
    const RunResult run = RunZorvan({input, output});
    EXPECT_EQ(run.exitCode, exitCode);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("zorvan: ") && run.err.find('\n') == run.err.size() - 1) << run.err;
    EXPECT_THAT(run.err, testing::HasSubstr(reason));
    EXPECT_EQ(FileText(output), "earlier");
    EXPECT_THAT(out.Names(), testing::ElementsAre("out.ps"));
}

}  // namespace zorvan::cli
