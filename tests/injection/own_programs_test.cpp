// The programs that a file brings for the device, and that are passed on: they run. That the device tells so
// shows, too, that the other tests would notice.
#include <gmock/gmock.h>

#include "api/session.h"
#include "injection/device_job.h"
#include "injection/places.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;
using ::testing::StartsWith;

std::string SaidOfPlace(const Place& place) {
    return SaidOf(place.document({"0"}).Bytes());
}

TEST(OwnProgram, OfTheOperatorPsRuns) {
    EXPECT_THAT(SaidOfPlace(InContent("", "(ZRUN) PS")), StartsWith(kRan));
}

TEST(OwnProgram, OfAPostScriptXObjectRuns) {
    EXPECT_THAT(SaidOfPlace(InStream("", "XObject", "/Subtype /PS", "ZRUN", "/R# Do")), StartsWith(kRan));
}

TEST(OwnProgram, OfACalculatorFunctionRuns) {
    PdfBuilder pdf = OnePage("/C cs 0.5 scn 0 0 9 9 re f",
                             "/Resources << /ColorSpace << /C [/Separation /A /DeviceGray 10 0 R] >> >>");
    pdf.Stream(10, "{ ZRUN }", "/FunctionType 4 /Domain [0 1] /Range [0 1]");
    EXPECT_THAT(SaidOf(pdf.Bytes()), StartsWith(kRan));
}

TEST(OwnProgram, OfTheClearTextOfAType1ProgramRuns) {
    EXPECT_THAT(
        SaidOfPlace(InFont("", "<< /Subtype /Type1 /BaseFont /X /FontDescriptor << /FontFile & 0 R >> >>",
                           "/Length1 5 /Length2 0 /Length3 0", "ZRUN\n")),
        StartsWith(kRan));
}

TEST(OwnProgram, OfAnEmbeddedCMapRuns) {
    EXPECT_THAT(
        SaidOfPlace(InFont("",
                           "<< /Subtype /Type0 /Encoding & 0 R /DescendantFonts [<< /Subtype /CIDFontType0 "
                           "/BaseFont /X /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) >> >>] >>",
                           "", "ZRUN\n% begincmap\n")),
        StartsWith(kRan));
}

// Without this word it is no CMap, and is not passed on.
TEST(OwnProgram, OfACMapThatIsNoneDoesNotRun) {
    const Place place =
        InFont("",
               "<< /Subtype /Type0 /Encoding & 0 R /DescendantFonts [<< /Subtype /CIDFontType0 "
               "/BaseFont /X /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) >> >>] >>",
               "", "ZRUN\n");
    EXPECT_THAT(Convert(place.document({"0"}).Bytes()).output, testing::Not(testing::HasSubstr("ZRUN")));
}

TEST(DeviceJob, TellsThatAPageWasForged) {
    EXPECT_EQ(SaidOfPlace(InStream("", "XObject", "/Subtype /PS", "(\n%%Page: 666 666\n) pop", "/R# Do")),
              "a page was forged\n"s + kNothingRan);
}

}  // namespace
}  // namespace zorvan::test
