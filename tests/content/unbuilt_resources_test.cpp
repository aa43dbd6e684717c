// Resource classes without a factory: their operators take their operands from the stack and write nothing.
#include <string>

#include <gmock/gmock.h>

#include "api/job.h"
#include "api/session.h"
#include "ps/fake_resources.h"
#include "support/host.h"

namespace zorvan::test {
namespace {

/// A job whose library builds no resource class.
class UnbuiltResources : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        CurrentJob()->factories = {};
    }

    /// What a page becomes whose resources are all of the kinds named here. `cm`, which counts from the
    /// bottom of the stack, shows what was left there.
    static std::string Become(std::string_view content) {
        const FileRun run = RunFile(OnePage(std::string(content) + " 1 0 0 1 2 3 cm",
                                            "/Resources << /ColorSpace << /CS0 20 0 R /DefaultRGB 20 0 R >> "
                                            "/ExtGState << /GS0 20 0 R >> /Pattern << /P0 20 0 R /P1 5 >> "
                                            "/Font << /F0 20 0 R >> /XObject << /X0 20 0 R >> "
                                            "/Shading << /S0 20 0 R >> >>")
                                        .Object(20, "<< /A 1 >>")
                                        .Bytes());
        EXPECT_EQ(run.begin, 0);
        EXPECT_EQ(run.pages, std::vector<int>{0});
        EXPECT_EQ(GetErrorInfo().code, 0);
        EXPECT_EQ(SetupOf(run.output), "");
        EXPECT_EQ(PageSetupOf(run.output), "");
        return ContentOf(run.output);
    }
};

constexpr const char* kMatrixAlone = "1 0 0 1 2 3 cm\n";

TEST_F(UnbuiltResources, TakeTheOperandsOfColors) {
    EXPECT_EQ(Become("/CS0 cs 0.1 0.2 0.3 scn"), kMatrixAlone);
    EXPECT_EQ(Become("/CS0 CS 0.1 0.2 0.3 0.4 0.5 SCN"), kMatrixAlone);
    EXPECT_EQ(Become("/CS0 cs 0.5 sc"), kMatrixAlone);
    EXPECT_EQ(Become("/CS0 CS 0.1 0.2 SC"), kMatrixAlone);
    EXPECT_EQ(Become("/Unknown cs 1 scn"), kMatrixAlone);
}

TEST_F(UnbuiltResources, TakeTheOperandsOfPatterns) {
    EXPECT_EQ(Become("/P0 scn"), kMatrixAlone);
    EXPECT_EQ(Become("0.5 /P0 scn"), kMatrixAlone);
    EXPECT_EQ(Become("/CS0 cs 0.1 0.2 /P0 scn"), kMatrixAlone);
    EXPECT_EQ(Become("/CS0 CS /P0 SCN"), kMatrixAlone);
    EXPECT_EQ(Become("/Pattern cs /P0 scn"), std::string("/Pattern cs\n") + kMatrixAlone);
}

TEST_F(UnbuiltResources, LeaveTheDeviceColorsAfterThem) {
    EXPECT_EQ(Become("/CS0 cs 1 2 scn /DeviceGray cs 0.5 scn"),
              std::string("DefaultGray cs\n0.5 scn\n") + kMatrixAlone);
    EXPECT_EQ(Become("q /CS0 cs 1 2 scn Q 0.5 scn"), std::string("q\nQ\n0.5 scn\n") + kMatrixAlone);
    EXPECT_EQ(Become("/CS0 cs 1 0 0 rg 0 1 0 scn"), std::string("1 0 0 rg\n0 1 0 scn\n") + kMatrixAlone);
}

TEST_F(UnbuiltResources, TakeTheNamesOfStatesShadingsAndXObjects) {
    EXPECT_EQ(Become("/GS0 gs /X0 Do /S0 sh /Unknown gs /Unknown Do /Unknown sh"), kMatrixAlone);
}

TEST_F(UnbuiltResources, SelectNoFontByAnEmptyReference) {
    EXPECT_EQ(Become("/F0 12 Tf"), std::string(" 12 Tf\n") + kMatrixAlone);
}

TEST_F(FakeResourceTest, AnUnbuiltPatternIsNotMissedWhereSpacesAreBuilt) {
    RemoveFactory(ResourceCategory::kPattern);
    auto pdf = OnePage("/CS0 cs 0.1 0.2 /P0 scn 0.3 0.4 scn 1 0 0 1 0 0 cm",
                       "/Resources << /ColorSpace << /CS0 10 0 R >> /Pattern << /P0 11 0 R /P1 5 >> >>");
    const FileRun run = RunFile(pdf.Object(10, "<< /N 2 >>").Object(11, "<< /A 1 >>").Bytes());
    EXPECT_EQ(run.pages, std::vector<int>{0});
    EXPECT_EQ(ContentOf(run.output), "/N10 /ColorSpace findRes  cs\n0.3 0.4 scn\n1 0 0 1 0 0 cm\n");
}

}  // namespace
}  // namespace zorvan::test
