// The operators that use a resource by its name, on resource classes that only say what is written.
#include <string>

#include <gmock/gmock.h>

#include "api/session.h"
#include "ps/fake_resources.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class ResourceOperators : public FakeResourceTest {
protected:
    /// What a page becomes whose resources are these; the objects from 10 on are `objects`.
    static FileRun Run(const std::string& resources, const std::vector<std::string>& objects,
                       std::string_view content) {
        PdfBuilder pdf = OnePage(content, "/Resources << " + resources + " >>");
        for (std::size_t i = 0; i < objects.size(); ++i) {
            pdf.Object(static_cast<unsigned>(10 + i), objects[i]);
        }
        return RunFile(pdf.Bytes());
    }
    static std::string Become(const std::string& resources, const std::vector<std::string>& objects,
                              std::string_view content) {
        const FileRun run = Run(resources, objects, content);
        EXPECT_EQ(run.pages, std::vector<int>{0}) << content;
        return ContentOf(run.output);
    }
};

TEST_F(ResourceOperators, SelectANamedSpaceWithTwoBlanks) {
    EXPECT_EQ(Become("/ColorSpace << /CS0 10 0 R /CS1 << /N 1 >> >>", {"<< /Family 128 /N 3 >>"},
                     "/CS0 cs 1 2 3 sc /CS1 CS 4 SC"),
              "/N10 /ColorSpace findRes  cs\n1 2 3 sc\n/N589823 /ColorSpace findRes  CS\n4 SC\n");
}

TEST_F(ResourceOperators, SelectAResourceOfADeviceFamilyByItsDefaultName) {
    EXPECT_EQ(
        Become("/ColorSpace << /CS0 10 0 R >>", {"<< /Family 2 /N 3 /Text (DefaultRGB ) >>"}, "/CS0 cs"),
        "DefaultRGB  cs\n");
}

TEST_F(ResourceOperators, CountOneComponentForASpaceThatIsNotFound) {
    EXPECT_EQ(Become("/ColorSpace << /CS0 10 0 R >>", {"<< /N 3 >>"}, "/CS0 cs /Unknown cs 5 0.5 sc w"),
              "/N10 /ColorSpace findRes  cs\n cs\n0.5 sc\n5 w\n");
}

TEST_F(ResourceOperators, NeverLookUpTheDeviceNames) {
    EXPECT_EQ(Become("/ColorSpace << /DeviceRGB 10 0 R /Pattern 10 0 R >>", {"<< /N 1 >>"},
                     "/DeviceRGB cs 1 2 3 sc /Pattern CS"),
              "DefaultRGB cs\n1 2 3 sc\n/Pattern CS\n");
}

TEST_F(ResourceOperators, SaveANamedSpaceWithTheState) {
    EXPECT_EQ(Become("/ColorSpace << /CS0 10 0 R >>", {"<< /N 2 >>"}, "q /CS0 cs 1 2 sc Q 0.5 sc"),
              "q\n/N10 /ColorSpace findRes  cs\n1 2 sc\nQ\n0.5 sc\n");
}

TEST_F(ResourceOperators, WriteAColoredPatternWithoutNumbers) {
    EXPECT_EQ(Become("/Pattern << /P0 10 0 R >>", {"<< /PaintType 1 >>"},
                     "/Pattern cs /P0 scn /Pattern CS /P0 SCN"),
              "/N10 /N10 /PatternPrototype findRes makePat\n"
              "/Pattern cs\n/N10 /MadePattern findRes scn\n/Pattern CS\n/N10 /MadePattern findRes SCN\n");
}

TEST_F(ResourceOperators, WriteAnUncoloredPatternWithTheNumbersOfTheUnderlyingSpace) {
    EXPECT_THAT(
        Become("/Pattern << /P0 10 0 R >> /ColorSpace << /CS0 11 0 R >>",
               {"<< /PaintType 2 >>", "<< /Family 512 /N 3 >>"}, "/CS0 cs 9 1 0.5 0 /P0 scn w"),
        ::testing::EndsWith("/N11 /ColorSpace findRes  cs\n1 0.5 0 /N10 /MadePattern findRes scn\n9 w\n"));
}

TEST_F(ResourceOperators, LeaveTheNumbersBelowAColoredPattern) {
    EXPECT_THAT(Become("/Pattern << /P0 10 0 R >>", {"<< /PaintType 1 >>"}, "0.5 /P0 scn w"),
                ::testing::EndsWith("makePat\n/N10 /MadePattern findRes scn\n0.5 w\n"));
}

TEST_F(ResourceOperators, FailWithFewerNumbersThanAnUncoloredPatternNeeds) {
    const FileRun run = Run("/Pattern << /P0 10 0 R >> /ColorSpace << /CS0 11 0 R >>",
                            {"<< /PaintType 2 >>", "<< /Family 512 /N 3 >>"}, "/CS0 cs 1 0.5 /P0 scn w");
    EXPECT_EQ(run.pages, std::vector<int>{-4093});
    EXPECT_EQ(GetErrorInfo().code, -4093);
}

TEST_F(ResourceOperators, TakeANameThatIsNoPatternForASpace) {
    EXPECT_EQ(Become("/ColorSpace << /CS0 10 0 R >>", {"<< /N 2 >>"}, "9 1 2 /CS0 scn w"),
              "1 2 /N10 /ColorSpace findRes scn\n9 w\n");
}

TEST_F(ResourceOperators, KeepTheCountOfTheCurrentSpaceForANameThatIsNeither) {
    EXPECT_EQ(Become("/Pattern << >>", {}, "/DeviceRGB cs 1 2 3 /Unknown scn"), "DefaultRGB cs\n1 2 3 scn\n");
}

TEST_F(ResourceOperators, SetOverprintAfterEveryStateThatIsFound) {
    EXPECT_EQ(
        Become("/ExtGState << /GS0 10 0 R /GS1 11 0 R >>", {"<< /op true >>", "<< /LW 1 >>"},
               "/GS0 gs /GS1 gs"),
        "/N10 /ExtGState findRes  gs\ntrue setoverprint\n/N11 /ExtGState findRes  gs\nfalse setoverprint\n");
}

TEST_F(ResourceOperators, WriteAnEmptyStateForAnUnknownNameAndNoOverprint) {
    EXPECT_EQ(Become("/ExtGState << /GS0 10 0 R >>", {"<< /op true >>"}, "/Unknown gs 5 gs"), " gs\n gs\n");
}

TEST_F(ResourceOperators, WriteAnEmptyStateForOneThatCannotBeBuilt) {
    EXPECT_EQ(Become("/ExtGState << /GS0 10 0 R >>", {"<< /Broken true >>"}, "/GS0 gs"), " gs\n");
    EXPECT_EQ(GetErrorInfo().code, -4082);
}

TEST_F(ResourceOperators, WriteAnEmptyStateWithoutAnyResources) {
    EXPECT_EQ(ContentOf(RunFile(OnePage("/GS0 gs").Bytes()).output), " gs\n");
}

TEST_F(ResourceOperators, HandPaintingOverWithTheKindOfTheContent) {
    EXPECT_EQ(Become("/XObject << /X0 10 0 R >> /Shading << /S0 11 0 R >>", {"<< /A 1 >>", "<< /A 1 >>"},
                     "/X0 Do /S0 sh /Unknown Do /Unknown sh 5 sh"),
              "%paint XObject /N10 in 1\n%paint Shading /N11 in 1\n");
}

TEST_F(ResourceOperators, RunAFormWithAStackAndColorsOfItsOwn) {
    const std::string form = "<< /Contents 11 0 R /Resources << /XObject << /X1 12 0 R >> >> >>";
    const std::string content = "<< /Length 31 >>\nstream\n1 0 0 rg 7 8 /X1 Do 0 1 0 sc  l\nendstream";
    EXPECT_EQ(
        Become("/XObject << /X0 10 0 R >>", {form, content, "<< /A 1 >>"}, "5 6 /X0 Do 0.5 sc 9 m"),
        "%paint XObject /N10 in 1\n1 0 0 rg\n%paint XObject /N12 in 2\n0 1 0 sc\n7 8 l\n0.5 sc\n6 9 m\n");
}

TEST_F(ResourceOperators, WriteTheDefaultSpacesOfAPageFirst) {
    EXPECT_EQ(Become("/ColorSpace << /DefaultCMYK 12 0 R /DefaultGray 10 0 R /DefaultRGB 11 0 R >>",
                     {"<< /N 1 >>", "<< /N 3 /Text (DefaultRGB ) >>", "<< /N 4 >>"}, "1 w"),
              "/DefaultGray /N10 /ColorSpace findRes  dd\n"
              "/DefaultRGB DefaultRGB  dd\n"
              "/DefaultCMYK /N12 /ColorSpace findRes  dd\n"
              "1 w\n");
}

TEST_F(ResourceOperators, RunNoStreamWhenADefaultSpaceIsRefused) {
    PdfBuilder pdf = OnePage("1 w", "/Resources << /ColorSpace << /DefaultGray 10 0 R >> >>");
    ASSERT_EQ(OpenFile(pdf.Object(10, "<< /N 1 >>").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    Pieces::Refuse(before + 5, 7, false);  // behind the setup, the space's definition, its end, and the clip
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 7);
    EXPECT_EQ(Pieces::Calls(), before + 5);
    EXPECT_THAT(Pieces::Taken().back(), ::testing::EndsWith(" RC\n"));
    ZORVAN_OneFileEnd();
}

TEST_F(ResourceOperators, NeverLookUpPropertyLists) {
    EXPECT_EQ(Become("/Properties << /MC0 10 0 R >>", {"<< /Broken true >>"}, "/OC /MC0 BDC 1 w EMC"),
              "1 w\n");
    EXPECT_EQ(GetErrorInfo().code, 0);
}

TEST_F(ResourceOperators, FindInheritedResources) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 5 0 R] /Resources << /ExtGState << /GS0 10 0 R >> >> >>");
    pdf.Object(3, "<< /Type /Page /Resources << >> /Contents 4 0 R >>").Stream(4, "/GS0 gs");
    pdf.Object(5, "<< /Type /Page /Resources << /ExtGState << >> >> /Contents 4 0 R >>");
    const FileRun run = RunFile(pdf.Object(10, "<< /op false >>").Bytes());
    EXPECT_EQ(ContentOf(run.output, 1), "/N10 /ExtGState findRes  gs\nfalse setoverprint\n");
    EXPECT_EQ(ContentOf(run.output, 2), " gs\n");
}

}  // namespace
}  // namespace zorvan::test
