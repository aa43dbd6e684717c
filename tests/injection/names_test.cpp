// Names of a file that enter the output: whatever they hold, the device reads one token of each.
#include <gmock/gmock.h>

#include "api/session.h"
#include "injection/device_job.h"
#include "injection/hostile_texts.h"
#include "injection/places.h"

namespace zorvan::test {
namespace {

const std::string kPixel =
    "/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray "
    "/Filter /RunLengthDecode ";
const std::string kPixelData("\0a\x80", 3);
const std::string kFillWith = "/R# cs 0.5 scn 0 0 9 9 re f";
const std::string kFillUnder = "/R# gs 0 0 9 9 re f";
const std::string kCollection = "/CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) >> ";

std::string Composite(const std::string& descendant, const std::string& encoding = "/Identity-H") {
    return "<< /Subtype /Type0 /Encoding " + encoding + " /DescendantFonts [<< " + kCollection + descendant +
           " >>] >>";
}

/// A Type 3 font with these entries and glyph names.
std::string GlyphFont(const std::string& name, const std::string& glyph) {
    return "<< /Subtype /Type3 " + name + " /FontBBox [0 0 9 9] /FontMatrix [1 0 0 1 0 0] " +
           "/Encoding << /Differences [65 " + glyph + " " + glyph + " /b] >> /CharProcs << " + glyph +
           " 503 0 R /b 503 0 R >> >>";
}

const std::string kCMap =
    "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CMapName /Own def\n"
    "/CIDSystemInfo 3 dict dup begin\n/Registry (Adobe) def\n/Ordering (Identity) def\n/Supplement 0 def\n"
    "end def\n1 begincodespacerange\n<0000> <ffff>\nendcodespacerange\nendcmap\n"
    "CMapName currentdict /CMap defineresource pop\nend\nend\n";

std::vector<Place> Written() {
    return {
        InContent("RenderingIntent", "@ ri 0 0 9 9 re f"),
        InContent("IntentOfAnInlineImage", "BI /W 1 /H 1 /BPC 8 /CS /G /Intent @ ID x EI"),
        InContent("FilterParametersOfAnInlineImage",
                  "BI /W 1 /H 1 /BPC 8 /CS /G /F [/AHx /RL] /DP [null << @ @ >>] ID 006180> EI"),
        InResource("RenderingIntentOfAState", "ExtGState", "<< /RI @ >>", kFillUnder),
        InResource("ColorantOfAHalftone", "ExtGState",
                   "<< /HT << /HalftoneType 5 @ 500 0 R /Default 500 0 R >> >>", kFillUnder),
        InResource("SpotFunction", "ExtGState",
                   "<< /HT << /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction @ >> >>", kFillUnder),
        InResource("ColorantOfASeparation", "ColorSpace", "[/Separation @ /DeviceGray 501 0 R]", kFillWith),
        InResource("ColorantOfADeviceN", "ColorSpace", "[/DeviceN [@] /DeviceGray 501 0 R]", kFillWith),
        InStream("IntentOfAnImage", "XObject", kPixel + "/Intent @", kPixelData, "/R# Do"),
        InStream("FilterParameterKey", "XObject", kPixel + "/DecodeParms << @ 1 >>", kPixelData, "/R# Do"),
        InStream("FilterParameterValue", "XObject", kPixel + "/DecodeParms << /K @ >>", kPixelData, "/R# Do"),
        InFont("NameOfAType1Font", "<< /Subtype /Type1 /BaseFont @ >>"),
        InFont("NameOfAMultipleMasterFont", "<< /Subtype /MMType1 /BaseFont @ >>"),
        InFont("NameOfADeviceTrueTypeFont", "<< /Subtype /TrueType /BaseFont @ >>"),
        InFont("NameOfATrueTypeFont",
               "<< /Subtype /TrueType /BaseFont @ /FirstChar 65 /LastChar 66 /FontDescriptor "
               "<< /FontFile2 502 0 R >> >>"),
        InFont("GlyphName",
               "<< /Subtype /Type1 /BaseFont /Helvetica /Encoding << /Differences [65 @ @ 70 @] >> >>"),
        InFont("GlyphNameOverAnotherEncoding",
               "<< /Subtype /Type1 /BaseFont /Helvetica /Encoding << /BaseEncoding /WinAnsiEncoding "
               "/Differences [65 @ @ 70 @] >> >>"),
        InFont("NameOfAType3Font", GlyphFont("/Name @", "/a")),
        InFont("GlyphNameOfAType3Font", GlyphFont("/Name /T3", "@")),
        InFont("NameOfADeviceCIDFont", Composite("/Subtype /CIDFontType0 /BaseFont @")),
        InFont("DescriptorNameOfACIDFont",
               Composite("/Subtype /CIDFontType0 /BaseFont /X /FontDescriptor << /FontName @ >>")),
        InFont("NameOfACIDFont",
               Composite("/Subtype /CIDFontType2 /BaseFont @ /FontDescriptor << /FontFile2 502 0 R >>")),
        InFont("NameOfAPredefinedCMap", Composite("/Subtype /CIDFontType0 /BaseFont /X", "@")),
        InFont("NameOfAnEmbeddedCMap", Composite("/Subtype /CIDFontType0 /BaseFont /X", "& 0 R"),
               "/CMapName @", kCMap),
        InForm("ColorTypeOfOpi13", "/OPI << /1.3 << /F (a) /ColorType @ >> >>"),
        InPage("PlateColor", "/SeparationInfo << /DeviceColorant @ >>"),
    };
}

std::vector<Place> NotWritten() {
    return {
        InContent("MarkedContent", "@ BMC EMC /T @ BDC EMC @ << @ @ >> DP @ MP"),
        InContent("UnknownResources", "@ gs @ sh @ Do @ 9 Tf @ cs @ CS"),
        InContent("InlineImageWithUnknownNames", "BI /W 1 /H 1 /BPC 8 /CS @ /F @ ID x EI"),
        InContent("OperandsOfOtherKinds", "@ @ m @ w @ @ @ rg [@] @ d @ i /X Do"),
        InResource("ResourceName", "ExtGState >> /Font << @ 504 0 R >> /XObject << @ 505 0 R",
                   "<< /HT @ /BG @ /TR @ /BM @ /SA @ >>", "@ Do BT @ 9 Tf (a) Tj ET /R# gs 0 0 9 9 re f"),
        InForm("UnknownOpi", "/OPI << /1.3 << /F @ /ID @ /Tags [1 @] >> >> /Name @"),
        InForm("InksOfOpi20", "/OPI << /2.0 << /F (a) /Inks @ >> >> /Name @"),
        InPage("EntriesOfThePage", "/Tabs @ /PieceInfo << @ @ >> /Group << /CS @ >>"),
    };
}

class WrittenName : public testing::TestWithParam<Place> {};

TEST_P(WrittenName, RunsNothing) {
    EXPECT_TRUE(IsWritten(GetParam(), "/PlainText", "PlainText"));
    ExpectThatNothingRuns(GetParam(), HostileNames());
}

INSTANTIATE_TEST_SUITE_P(Of, WrittenName, testing::ValuesIn(Written()),
                         [](const auto& place) { return place.param.name; });

class NameThatIsNotWritten : public testing::TestWithParam<Place> {};

TEST_P(NameThatIsNotWritten, IsNowhereInTheOutput) {
    EXPECT_FALSE(IsWritten(GetParam(), "/PlainText", "PlainText"));
    ExpectThatNothingRuns(GetParam(), HostileNames());
}

INSTANTIATE_TEST_SUITE_P(Of, NameThatIsNotWritten, testing::ValuesIn(NotWritten()),
                         [](const auto& place) { return place.param.name; });

// A page's content up to such a name is written, and nothing of the name.
TEST(LongName, IsRefused) {
    for (const std::size_t length : {127U, 128U, 5000U}) {
        const Conversion conversion =
            Convert(OnePage("1 w /" + std::string(length, 'Z') + " ri 2 w").Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{-4071});
        EXPECT_THAT(conversion.output, testing::HasSubstr("\n1 w\n"));
        EXPECT_THAT(conversion.output, testing::Not(testing::HasSubstr("ZZ")));
    }
}

}  // namespace
}  // namespace zorvan::test
