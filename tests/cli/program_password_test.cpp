// The program and files that a password opens.
#include <string>

#include <gmock/gmock.h>

#include "tests/cli/program_run.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A file that opens without a password, and for its owner, whose password is "owner".
class ProgramPassword : public testing::Test {
protected:
    ProgramPassword() {
        const RunResult expanded =
            cli::Run({ZORVAN_PYTHON, ZORVAN_EXPANDER, ZORVAN_ENCRYPTED_TEMPLATE, pdf_});
        EXPECT_EQ(expanded.exitCode, 0) << expanded.err;
    }

    ScratchFolder scratch_;
    std::string pdf_ = scratch_.Path("encrypted.pdf");
};

TEST_F(ProgramPassword, OpensTheFile) {
    const RunResult without = RunZorvan({pdf_, "-"});
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_THAT(without.out, StartsWith("%!PS-Adobe-3.0\n"));
    EXPECT_EQ(RunZorvan({pdf_, "-", "--password", "owner"}).out, without.out);
    const std::string file = scratch_.Write("password", "owner\n");
    EXPECT_EQ(RunZorvan({pdf_, "-", "--password-file", file}).out, without.out);
}

TEST_F(ProgramPassword, ThatIsWrongEndsItWithFourAndIsNotTold) {
    const std::string file = scratch_.Write("password", "my secret");
    for (const RunResult& run : {RunZorvan({pdf_, "-", "--password", "my secret"}),
                                 RunZorvan({pdf_, "-", "--password-file", file})}) {
        EXPECT_EQ(run.exitCode, 4);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, AllOf(HasSubstr("error -4068"), Not(HasSubstr("secret"))));
    }
}

}  // namespace
}  // namespace zorvan::cli
