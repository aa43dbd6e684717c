// How a failed opening ends the program.
#include "cli/conversion.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "cli/filter_folder.h"

namespace zorvan::cli {
namespace {

TEST(OpeningFailure, IsTheFilesFaultUnlessTheLibraryLacksSomething) {
    for (const int status : {-4069, -4086, -4095, -4091, -4071}) {
        EXPECT_EQ(OpeningFailure(status), ExitCode::kBadInput) << status;
    }
    for (const int status : {-1, -4087, -4088}) {
        EXPECT_EQ(OpeningFailure(status), ExitCode::kFailed) << status;
    }
    EXPECT_EQ(OpeningFailure(-4068), ExitCode::kPassword);
}

TEST(FilterFolder, IsTheGivenOneAlone) {
    const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
    EXPECT_EQ(FilterFolders("/a/b"), std::vector<std::string>{std::string("/a/b") + separator});
    EXPECT_EQ(FilterFolders("/a/b/"), std::vector<std::string>{"/a/b/"});
    EXPECT_EQ(FilterFolders(""), std::vector<std::string>{std::string(".") + separator});
}

TEST(FilterFolder, IsLookedForBesideTheProgramAndInTheInstallation) {
    const std::vector<std::string> folders = FilterFolders(std::nullopt);
    ASSERT_GE(folders.size(), 2U);
    const std::string program = folders[0].substr(0, folders[0].size() - 1);
    const std::string prefix = program.substr(0, program.find_last_of("/\\") + 1);
    EXPECT_EQ(folders[1], prefix + "lib/zorvan/");
}

}  // namespace
}  // namespace zorvan::cli
