// A job in which any one call of a decoder fails.
#include <string>

#include <gmock/gmock.h>

#include "api/every_resource.h"
#include "api/session.h"
#include "platform/loadable_module.h"

namespace zorvan::test {
namespace {

using ::testing::AnyOf;
using ::testing::Each;

constexpr int kMemoryNotEnough = -4088;
constexpr int kDamaged = -4092;

/// The codec library whose decoders fail; it stays loaded between jobs.
class FailingFilter {
public:
    FailingFilter() {
        EXPECT_TRUE(module_.Load(Folder() + "Filter.dll"));
        fail_ = reinterpret_cast<Function>(module_.Find("FailDecoderCall"));
    }

    static std::string Folder() { return ZORVAN_FAILING_FILTER "/"; }

    std::uint64_t Fail(std::uint64_t call) { return fail_(call); }

private:
    using Function = std::uint64_t (*)(std::uint64_t);

    LoadableModule module_;
    Function fail_ = nullptr;
};

/// Converts the document in a job whose decoders fail once; null when the job does not come to that call.
struct FaultyRun {
    FileRun run;
    int error = 0;
    bool faultMet = false;
};
FaultyRun Convert(FailingFilter& filter, std::uint64_t call) {
    filter.Fail(call);
    const Job job(FailingFilter::Folder());
    FaultyRun faulty;
    faulty.run = RunFile(EveryResource());
    faulty.error = GetErrorInfo().code;
    faulty.faultMet = filter.Fail(0) >= call && call != 0;
    return faulty;
}

TEST(DecoderFaults, AreToldAndLeaveTheNextJobAlone) {
    FailingFilter filter;
    const FaultyRun well = Convert(filter, 0);
    ASSERT_EQ(well.error, 0);
    std::uint64_t call = 1;
    for (FaultyRun faulty = Convert(filter, call); faulty.faultMet; faulty = Convert(filter, ++call)) {
        const auto known = AnyOf(0, kDamaged, kMemoryNotEnough);
        EXPECT_THAT(faulty.run.begin, known) << call;
        EXPECT_THAT(faulty.run.global, known) << call;
        EXPECT_THAT(faulty.run.pages, Each(known)) << call;
        EXPECT_THAT(faulty.error, known) << call;
        // Nothing may be lost in silence; a page that could not be looked through loses nothing.
        EXPECT_EQ(faulty.error == 0, faulty.run.output == well.run.output) << call;
        EXPECT_TRUE(Convert(filter, 0).run.output == well.run.output) << call;
    }
    EXPECT_GT(call, 40U);
}

}  // namespace
}  // namespace zorvan::test
