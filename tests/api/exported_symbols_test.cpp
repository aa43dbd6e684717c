// What the shared library shows to the world.
#include <cstdio>
#include <memory>
#include <set>
#include <string>

#include <gmock/gmock.h>

namespace zorvan::test {
namespace {

std::set<std::string> DefinedSymbols(const std::string& library) {
    const std::string command = "nm -D --defined-only '" + library + "'";
    const std::unique_ptr<FILE, int (*)(FILE*)> listing(popen(command.c_str(), "r"), pclose);
    std::set<std::string> symbols;
    char line[4096];
    while (std::fgets(line, sizeof line, listing.get()) != nullptr) {
        const std::string text = line;
        symbols.insert(text.substr(text.rfind(' ') + 1, text.find_last_not_of('\n') - text.rfind(' ')));
    }
    return symbols;
}

TEST(SharedLibrary, ExportsItsEightFunctionsAndNothingElse) {
    EXPECT_THAT(DefinedSymbols(ZORVAN_LIBRARY),
                ::testing::ElementsAre("KAPRINE_Begin", "KAPRINE_End", "KAPRINE_GetErrInfo",
                                       "ZORVAN_GetTotalPages", "ZORVAN_OneFileBegin", "ZORVAN_OneFileEnd",
                                       "ZORVAN_OutputGlobalResources", "ZORVAN_OutputOnePage"));
}

}  // namespace
}  // namespace zorvan::test
