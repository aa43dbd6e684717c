// Strings of a file that enter the output, in parentheses, in digits or in a comment: nothing of them runs.
#include <gmock/gmock.h>

#include "api/session.h"
#include "injection/device_job.h"
#include "injection/hostile_texts.h"
#include "injection/places.h"

namespace zorvan::test {
namespace {

std::string Composite(const std::string& info, const std::string& descriptor = "") {
    return "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [<< /Subtype /CIDFontType2 "
           "/BaseFont /Part /CIDSystemInfo << " +
           info + " >> " + descriptor + " >>] >>";
}

const std::string kEmbedded = "/FontDescriptor << /FontFile2 502 0 R >>";

std::vector<Place> OfObjects() {
    return {
        InResource("HalftoneName", "ExtGState",
                   "<< /HT << /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction /Round "
                   "/HalftoneName @ >> >>",
                   "/R# gs 0 0 9 9 re f"),
        InFont("RegistryOfADeviceFont", Composite("/Registry @ /Ordering (Identity)")),
        InFont("OrderingOfADeviceFont", Composite("/Registry (Adobe) /Ordering @")),
        InFont("Registry", Composite("/Registry @ /Ordering (Identity)", kEmbedded)),
        InFont("Ordering", Composite("/Registry (Adobe) /Ordering @", kEmbedded)),
        InForm("FileOfOpi13", "/OPI << /1.3 << /F @ >> >>"),
        InForm("FileSpecificationOfOpi13", "/OPI << /1.3 << /F << /F @ >> >> >>"),
        InForm("IdentifierOfOpi13", "/OPI << /1.3 << /F (a) /ID @ >> >>"),
        InForm("TagsOfOpi13", "/OPI << /1.3 << /F (a) /Tags [1 @ 2 @] >> >>"),
        InForm("ColorOfOpi13", "/OPI << /1.3 << /F (a) /Color [0 0 0 1 @] >> >>"),
        InForm("FileOfOpi20", "/OPI << /2.0 << /F @ >> >>"),
        InForm("MainImageOfOpi20", "/OPI << /2.0 << /F (a) /MainImage @ >> >>"),
        InForm("TagsOfOpi20", "/OPI << /2.0 << /F (a) /Tags [1 @ 2 @] >> >>"),
        InForm("InksOfOpi20", "/OPI << /2.0 << /F (a) /Inks [/monochrome @ 1 @ 0.5] >> >>"),
        InPage("PlateColor", "/SeparationInfo << /DeviceColorant @ >>"),
    };
}

std::vector<Place> OfContents() {
    return {
        InContent("Shown", "BT /F 9 Tf @ Tj @ ' 1 2 @ \" [@ 5 @] TJ ET"),
        InContent("TableOfAnInlineImage", "BI /W 1 /H 1 /BPC 8 /CS [/I /G 0 @] ID x EI"),
    };
}

std::vector<Place> NotWritten() {
    return {
        InContent("MarkedContent", "/T << /ActualText @ @ @ >> BDC EMC @ /T DP"),
        InContent("OperandsOfOtherKinds", "@ gs @ sh [@] @ d @ ri @ w @ cs @ scn BI /W @ /Intent @ ID x EI"),
        InForm("EntriesOfAForm", "/LastModified @ /PieceInfo << /X @ >> /Name @"),
        InPage("EntriesOfAPage", "/LastModified @ /ID @ /Annots [<< /Subtype /Text /Contents @ /T @ >>]"),
        InPage("ActionsOfAPage", "/AA << /O << /S /JavaScript /JS @ >> >> /SeparationInfo << /X @ >>"),
    };
}

class StringOfAnObject : public testing::TestWithParam<Place> {};

TEST_P(StringOfAnObject, RunsNothing) {
    EXPECT_TRUE(IsWritten(GetParam(), "(PlainText)", "PlainText"));
    ExpectThatNothingRuns(GetParam(), HostileStrings());
}

INSTANTIATE_TEST_SUITE_P(Of, StringOfAnObject, testing::ValuesIn(OfObjects()),
                         [](const auto& place) { return place.param.name; });

class StringOfAContent : public testing::TestWithParam<Place> {};

TEST_P(StringOfAContent, RunsNothing) {
    EXPECT_TRUE(IsWritten(GetParam(), "(PlainText)", "(PlainText)"));
    EXPECT_TRUE(IsWritten(GetParam(), "<506c61696E>", "<506c61696E>"));
    ExpectThatNothingRuns(GetParam(), HostileContentStrings());
}

INSTANTIATE_TEST_SUITE_P(Of, StringOfAContent, testing::ValuesIn(OfContents()),
                         [](const auto& place) { return place.param.name; });

class StringThatIsNotWritten : public testing::TestWithParam<Place> {};

TEST_P(StringThatIsNotWritten, IsNowhereInTheOutput) {
    EXPECT_FALSE(IsWritten(GetParam(), "(PlainText)", "PlainText"));
    ExpectThatNothingRuns(GetParam(), HostileContentStrings());
}

INSTANTIATE_TEST_SUITE_P(Of, StringThatIsNotWritten, testing::ValuesIn(NotWritten()),
                         [](const auto& place) { return place.param.name; });

TEST(DocumentInformation, IsNowhereInTheOutput) {
    const std::string hostile = AsLiteral("PlainText\n%%EndComments\nZRUN\n");
    auto pdf = Pages({""}, "/PageLabels << /Nums [0 << /P " + hostile + " >>] >> /Lang " + hostile);
    pdf.Object(10, "<< /Title " + hostile + " /Author " + hostile + " /Creator " + hostile + " >>");
    pdf.Section("/Root 1 0 R /Info 10 0 R");
    EXPECT_EQ(SaidOf(pdf.Bytes()), kNothingRan);
    EXPECT_THAT(Convert(pdf.Bytes()).output, testing::Not(testing::HasSubstr("PlainText")));
}

// Longer than a string of some devices, a name, or a line of a comment may be.
TEST(LongText, RunsNothing) {
    const std::string text = "(" + std::string(70000, 'x') + "\n) ZRUN (";
    const std::vector<std::string> tokens{AsLiteral(text), AsDigits(text)};
    for (const Place& place : OfObjects()) {
        ExpectThatNothingRuns(place, tokens);
    }
    for (const Place& place : OfContents()) {
        ExpectThatNothingRuns(place, tokens);
    }
}

}  // namespace
}  // namespace zorvan::test
