// What the shared library shows to the world.
#include <gmock/gmock.h>

#include "support/system.h"

namespace zorvan::test {
namespace {

TEST(SharedLibrary, ExportsItsEightFunctionsAndNothingElse) {
    EXPECT_THAT(ExportedNames(ZORVAN_LIBRARY),
                ::testing::ElementsAre("KAPRINE_Begin", "KAPRINE_End", "KAPRINE_GetErrInfo",
                                       "ZORVAN_GetTotalPages", "ZORVAN_OneFileBegin", "ZORVAN_OneFileEnd",
                                       "ZORVAN_OutputGlobalResources", "ZORVAN_OutputOnePage"));
}

}  // namespace
}  // namespace zorvan::test
