// Shadings: their dictionaries where they are painted, and what these name.
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "content/space_page.h"
#include "support/ascii85_text.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// From black to white.
constexpr const char* kRamp = "<< /FunctionType 2 /Domain [0 1] /N 1 >>";
constexpr const char* kRampText =
    "<</FunctionType 2\n/Domain [0 1 ]\n/C0 [0]\n/C1 [1]\n/N 1\n>>\n/FunctionDictionary defineRes pop\n";

/// A document of one page with this content and a shading, object 10; object 11 is a function.
PdfBuilder PageWith(std::string_view content = "/S sh", std::string_view shadings = "/S 10 0 R") {
    PdfBuilder pdf = OnePage(content, "/Resources << /Shading << " + std::string(shadings) + " >> >>");
    return pdf.Object(11, kRamp);
}

PdfBuilder PageWithShading(std::string_view dictionary) {
    return PageWith().Object(10, "<< " + std::string(dictionary) + " >>");
}

/// What `sh` becomes; all must go well.
std::string Painted(std::string_view dictionary) {
    return Draw(PageWithShading(dictionary)).content;
}

/// The shading in a form, object 20, or as a pattern, object 20; the shading itself is the test's.
PdfBuilder FormThatPaints() {
    PdfBuilder pdf = DrawingPage("/X Do", "/X 20 0 R").Object(11, kRamp);
    return pdf.Stream(20, "/S sh", std::string(kForm) + "/Resources << /Shading << /S 10 0 R >> >>");
}
PdfBuilder PatternPage(std::string_view shading = "10 0 R") {
    PdfBuilder pdf = OnePage("n", "/Resources << /Pattern << /P 20 0 R >> >>").Object(11, kRamp);
    return pdf.Object(20, "<< /PatternType 2 /Shading " + std::string(shading) + " >>");
}

std::string AsPattern(std::string_view shading) {
    return "/N20 <<\n/PatternType 2\n/Shading " + std::string(shading) +
           "/Matrix [1 0 0 1 0 0]\n>> /PatternPrototype defineRes pop\n";
}

// --- by functions, along a line and between circles ---

TEST(Shading, ByAFunctionHasDomainAndMatrixWhenTheyAreArrays) {
    EXPECT_EQ(Painted("/ShadingType 1 /ColorSpace /DeviceGray /Matrix [1 0 0 1.50 0 -0.0] /Domain [0 1 0 .5] "
                      "/Function 11 0 R"),
              "<</ShadingType 1\n/ColorSpace DefaultGray /Domain [0 1 0 0.5 ]\n/Matrix [1 0 0 1.5 0 0 ]\n"
              "/Function /N11 /FunctionDictionary findRes >>\n sh\n");
    EXPECT_EQ(
        Painted("/ShadingType 1 /ColorSpace /DeviceGray /Function 11 0 R"),
        "<</ShadingType 1\n/ColorSpace DefaultGray /Function /N11 /FunctionDictionary findRes >>\n sh\n");
    EXPECT_EQ(
        Painted("/ShadingType 1 /ColorSpace /DeviceGray /Matrix 5 /Domain /X /Function 11 0 R"),
        "<</ShadingType 1\n/ColorSpace DefaultGray /Function /N11 /FunctionDictionary findRes >>\n sh\n");
}

TEST(Shading, AlongALineHasItsEntriesInTheirOrder) {
    EXPECT_EQ(Painted("/Extend [true false] /Function 11 0 R /Domain [0 1] /Coords [0 0 100.5 0] "
                      "/AntiAlias true /BBox [0 0 10 10] /Background [0 1 0.50] /ColorSpace /DeviceRGB "
                      "/ShadingType 2"),
              "<</ShadingType 2\n/ColorSpace DefaultRGB /Background [0 1 0.5 ]\n/BBox [0 0 10 10 ]\n"
              "/AntiAlias true\n/Coords [0 0 100.5 0 ]\n/Domain [0 1 ]\n"
              "/Function /N11 /FunctionDictionary findRes /Extend [true false ]\n>>\n sh\n");
}

TEST(Shading, BetweenCirclesLeavesOutWhatIsNotGiven) {
    EXPECT_EQ(
        Painted("/ShadingType 3 /ColorSpace /DeviceCMYK /Coords [0 0 1 5 5 10] /AntiAlias false "
                "/Function [11 0 R 11 0 R] /Background 5 /BBox null /Extend true"),
        "<</ShadingType 3\n/ColorSpace DefaultCMYK /AntiAlias false\n/Coords [0 0 1 5 5 10 ]\n/Function ["
        "/N11 /FunctionDictionary findRes /N11 /FunctionDictionary findRes ]\n>>\n sh\n");
}

TEST(Shading, TakesItsEntriesByReference) {
    PdfBuilder pdf = PageWithShading(
        "/ShadingType 30 0 R /ColorSpace 31 0 R /Background 32 0 R /BBox 33 0 R /AntiAlias 34 0 R "
        "/Coords 33 0 R /Domain 35 0 R /Function 36 0 R /Extend 37 0 R");
    pdf.Object(30, "2").Object(31, "/DeviceGray").Object(32, "[1]").Object(33, "[0 0 9 9]");
    pdf.Object(34, "true").Object(35, "[0 38 0 R]").Object(36, "[11 0 R]").Object(37, "[34 0 R false]");
    EXPECT_EQ(Draw(pdf.Object(38, "0.5")).content,
              "<</ShadingType 2\n/ColorSpace DefaultGray /Background [1 ]\n/BBox [0 0 9 9 ]\n"
              "/AntiAlias true\n/Coords [0 0 9 9 ]\n/Domain [0 0.5 ]\n"
              "/Function [/N11 /FunctionDictionary findRes ]\n/Extend [true false ]\n>>\n sh\n");
}

constexpr const char* kAxial = "/ShadingType 2 /Coords [0 0 1 1] /Function 11 0 R /ColorSpace ";
/// Such a shading in this space.
std::string AxialText(const std::string& space) {
    return "<</ShadingType 2\n/ColorSpace " + space +
           "/Coords [0 0 1 1 ]\n/Function /N11 /FunctionDictionary findRes >>\n";
}

TEST(Shading, MayBeADirectObject) {
    const std::string shading = "/S << "s + kAxial + "/DeviceGray >>";
    EXPECT_EQ(Draw(PageWith("/S sh", shading)).content, AxialText("DefaultGray ") + " sh\n");
}

TEST(Shading, IsPaintedEachTimeThatTheContentAsksForIt) {
    const Drawing page = Draw(PageWith("/S sh q /S sh Q").Object(10, "<< "s + kAxial + "/DeviceGray >>"));
    const std::string painted = AxialText("DefaultGray ") + " sh\n";
    EXPECT_EQ(page.content, painted + "q\n" + painted + "Q\n");
}

// --- what a shading names ---

TEST(Shading, HasTheFunctionsThatItRefersToDefinedInTheDocumentsSetup) {
    const Definitions defined =
        Defined(PageWithShading("/ShadingType 2 /ColorSpace /DeviceRGB /Coords [0 0 1 1] "
                                "/Function [11 0 R 12 0 R 11 0 R]")
                    .Object(12, kRamp));
    EXPECT_EQ(defined.document, "/N11 "s + kRampText + "/N12 " + kRampText);
    EXPECT_EQ(defined.page, "");
}

TEST(Shading, HasDirectThingsDefinedInThePagesSetupAndNamedByNumbersOfTheirOwn) {
    const Drawing page = Draw(
        PageWithShading("/ShadingType 2 /ColorSpace "s + kCalGray + " /Coords [0 0 1 1] /Function " + kRamp));
    EXPECT_THAT(page.setup, HasSubstr(std::string(" ") + kCalGrayText + " /ColorSpace defineRes pop\n"));
    EXPECT_THAT(page.setup, HasSubstr(std::string(" ") + kRampText));
    EXPECT_THAT(page.content, Not(HasSubstr("defineRes")));
    const std::string space = Between(page.content, "/ColorSpace ", " /ColorSpace findRes ");
    const std::string function = Between(page.content, "/Function ", " /FunctionDictionary findRes ");
    EXPECT_THAT(space, StartsWith("/N5898"));
    EXPECT_THAT(function, StartsWith("/N5898"));
    EXPECT_NE(space, function);
    EXPECT_THAT(page.setup, HasSubstr(space + " " + kCalGrayText));
    EXPECT_THAT(page.setup, HasSubstr(function + " " + kRampText));
    EXPECT_EQ(page.content, "<</ShadingType 2\n/ColorSpace " + space +
                                " /ColorSpace findRes /Coords [0 0 1 1 ]\n/Function " + function +
                                " /FunctionDictionary findRes >>\n sh\n");
}

TEST(Shading, HasItsSpaceDefinedInThePagesSetup) {
    PdfBuilder pdf = PageWithShading(std::string(kAxial) + "12 0 R");
    const Drawing page = Draw(pdf.Object(12, kCalGray));
    EXPECT_EQ(page.setup, Definition("N12", kCalGrayText));
    EXPECT_EQ(page.content, AxialText("/N12 /ColorSpace findRes ") + " sh\n");
}

TEST(Shading, OfTwoPagesHasItsSpaceInTheDocumentsSetupAndIsWrittenOnBoth) {
    const std::string entries = "/Resources << /Shading << /S 10 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, entries}).Stream(4, "/S sh").Object(11, kRamp).Object(12, kCalGray);
    const Conversion conversion = Convert(pdf.Object(10, "<< "s + kAxial + "12 0 R >>").Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    EXPECT_EQ(conversion.error.code, 0);
    EXPECT_EQ(SetupOf(conversion.output), Definition("N12", kCalGrayText) + "/N11 " + kRampText);
    for (const unsigned number : {1U, 2U}) {
        EXPECT_EQ(PageSetupOf(conversion.output, number), "") << number;
        EXPECT_EQ(ContentOf(conversion.output, number), AxialText("/N12 /ColorSpace findRes ") + " sh\n");
    }
}

TEST(Shading, OfTwoPagesHasDirectThingsDefinedOnBothUnderOneName) {
    const std::string entries = "/Resources << /Shading << /S 10 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, entries}).Stream(4, "/S sh");
    pdf.Object(10, "<< /ShadingType 2 /ColorSpace /DeviceGray /Coords [0 0 1 1] /Function "s + kRamp + " >>");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    const std::string name =
        Between(ContentOf(conversion.output), "/Function ", " /FunctionDictionary findRes ");
    for (const unsigned number : {1U, 2U}) {
        const std::string defined = SetupOf(conversion.output) + PageSetupOf(conversion.output, number);
        EXPECT_EQ(defined, name + " " + kRampText) << number;
        EXPECT_THAT(ContentOf(conversion.output, number), HasSubstr(name + " /FunctionDictionary findRes "));
    }
}

TEST(Shading, OfAFormHasWhatItNamesDefinedBeforeTheForm) {
    PdfBuilder pdf = FormThatPaints().Object(12, kCalGray);
    pdf.Object(10, "<< /ShadingType 2 /Coords [0 0 1 1] /ColorSpace 12 0 R /Function "s + kRamp + " >>");
    const std::string setup = Draw(pdf).setup;
    const std::size_t form = setup.find("/N20 <<\n/FormType 1\n");
    ASSERT_NE(form, std::string::npos);
    EXPECT_LT(setup.find(Definition("N12", kCalGrayText)), form);
    EXPECT_LT(setup.find(kRampText), form);
    EXPECT_THAT(setup.substr(form),
                AllOf(HasSubstr("/ColorSpace /N12 /ColorSpace findRes /Coords"), HasSubstr(">>\n sh\n"),
                      Not(HasSubstr("/FunctionDictionary defineRes"))));
}

TEST(Shading, OfAFormOfTwoPagesHasWhatItNamesDefinedOnBoth) {
    const std::string entries = "/Resources << /XObject << /X 20 0 R >> >> /Contents 4 0 R";
    PdfBuilder pdf = Pages({entries, entries}).Stream(4, "/X Do").Object(12, kCalGray);
    pdf.Stream(20, "/S sh", std::string(kForm) + "/Resources << /Shading << /S 10 0 R >> >>");
    pdf.Object(10, "<< /ShadingType 2 /Coords [0 0 1 1] /ColorSpace 12 0 R /Function "s + kRamp + " >>");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, (std::vector<int>{0, 0}));
    for (const unsigned page : {1U, 2U}) {
        const std::string setup = SetupOf(conversion.output) + PageSetupOf(conversion.output, page);
        const std::size_t form = setup.find("/N20 <<\n/FormType 1\n");
        ASSERT_NE(form, std::string::npos) << page;
        const std::string name = Between(setup, "/Function ", " /FunctionDictionary findRes ", form);
        EXPECT_LT(setup.find(Definition("N12", kCalGrayText)), form) << page;
        EXPECT_LT(setup.find(name + " " + kRampText), form) << page;
    }
}

// --- missing entries ---

TEST(Shading, WithoutARequiredEntryIsRecordedAndClosedAtOnce) {
    for (const auto& [entries, text] : {
             std::tuple{"/ShadingType 1 /Background [0] /Function 11 0 R", "<</ShadingType 1\n>>\n sh\n"},
             std::tuple{"/ShadingType 2 /BBox [0 0 1 1] /Coords [0 0 1 1] /Function 11 0 R",
                        "<</ShadingType 2\n>>\n sh\n"},
             std::tuple{"/ShadingType 3 /Coords [0 0 1 1 1 1] /Function 11 0 R /Extend [true true]",
                        "<</ShadingType 3\n>>\n sh\n"},
             std::tuple{"/ShadingType 2 /ColorSpace /DeviceGray /BBox [0 0 1 1] /Domain [0 1] "
                        "/Function 11 0 R /Extend [true true]",
                        "<</ShadingType 2\n/ColorSpace DefaultGray /BBox [0 0 1 1 ]\n>>\n sh\n"},
             std::tuple{"/ShadingType 3 /ColorSpace /DeviceGray /Coords 5 /Function 11 0 R",
                        "<</ShadingType 3\n/ColorSpace DefaultGray >>\n sh\n"},
             std::tuple{"/ShadingType 1 /ColorSpace /DeviceGray /Domain [0 1 0 1]",
                        "<</ShadingType 1\n/ColorSpace DefaultGray /Domain [0 1 0 1 ]\n>>\n sh\n"},
             std::tuple{"/ShadingType 2 /ColorSpace /DeviceGray /Coords [0 0 1 1] /Domain [0 1] "
                        "/Extend [true true]",
                        "<</ShadingType 2\n/ColorSpace DefaultGray /Coords [0 0 1 1 ]\n/Domain [0 1 ]\n"
                        ">>\n sh\n"},
         }) {
        EXPECT_EQ(DrawRecording(-4072, PageWithShading(entries), 10).content, text) << entries;
    }
}

TEST(Shading, OfAnUnknownTypeOrOfNoDictionaryIsRecordedAndPaintsNothing) {
    for (const std::string object : {"<< /ShadingType 8 /ColorSpace /DeviceGray >>", "<< /ShadingType 0 >>",
                                     "<< /ColorSpace /DeviceGray >>", "[2]", "5", "/Name", "(text)",
                                     "<< /ShadingType /2 >>", "<< /ShadingType -1 >>"}) {
        const Conversion conversion = Convert(PageWith("1 w /S sh 2 w").Object(10, object).Bytes());
        EXPECT_EQ(conversion.error.code, -4079) << object;
        EXPECT_THAT(ContentOf(conversion.output), Not(HasSubstr("Shading"))) << object;
    }
}

// --- meshes ---

constexpr const char* kBits = "/ColorSpace /DeviceGray /BitsPerCoordinate 8 /BitsPerComponent 16 ";
constexpr const char* kDecode = "/Decode [0 1.0 0 1 0 .5] ";
constexpr const char* kMeshEntries = "/BitsPerCoordinate 8\n/BitsPerComponent 16\n";
constexpr const char* kDecodeText = "/Decode [0 1 0 1 0 0.5 ]\n";

std::string MeshEntries(int type, std::string_view more = "/BitsPerFlag 2") {
    return "/ShadingType " + std::to_string(type) + " " + kBits + kDecode + std::string(more);
}
/// The dictionary up to the data.
std::string MeshText(int type, std::string_view more = "/BitsPerFlag 2\n", std::string_view function = "") {
    return "<</ShadingType " + std::to_string(type) + "\n/ColorSpace DefaultGray " + kMeshEntries +
           std::string(more) + kDecodeText + std::string(function) + "/DataSource ";
}

TEST(MeshShading, OnAPagePassesItsEncodedDataOn) {
    for (const int type : {4, 6, 7}) {
        PdfBuilder pdf = PageWith().Stream(10, "4142>", MeshEntries(type) + " /Filter /ASCIIHexDecode");
        EXPECT_EQ(Draw(pdf).content, MeshText(type) +
                                         " currentfile/ASCIIHexDecode filter\n%%BeginData:5 Bytes\n"
                                         "4142>\n%%EndData\n>> shfill\n");
    }
}

TEST(MeshShading, InRowsHasVerticesInPlaceOfFlags) {
    PdfBuilder pdf = PageWith();
    pdf.Stream(10, "4142>", MeshEntries(5, "/BitsPerFlag 8 /VerticesPerRow 3 /Filter /ASCIIHexDecode"));
    EXPECT_THAT(Draw(pdf).content, StartsWith(MeshText(5, "/VerticesPerRow 3\n") + " currentfile"));
}

TEST(MeshShading, HasItsCommonEntriesBeforeTheBitsAndItsFunctionAfterThem) {
    PdfBuilder pdf = PageWith();
    pdf.Stream(10, "4142>",
               MeshEntries(4) +
                   " /Function 11 0 R /AntiAlias true /BBox [0 0 9 9] /Background [1] "
                   "/Filter /ASCIIHexDecode");
    EXPECT_THAT(Draw(pdf).content,
                StartsWith("<</ShadingType 4\n/ColorSpace DefaultGray /Background [1 ]\n/BBox [0 0 9 9 ]\n"
                           "/AntiAlias true\n"s +
                           kMeshEntries + "/BitsPerFlag 2\n" + kDecodeText +
                           "/Function /N11 /FunctionDictionary findRes /DataSource  currentfile"));
}

TEST(MeshShading, OnAPageNamesEachOfItsFilters) {
    PdfBuilder pdf = PageWith();
    pdf.Stream(10, "5sb~>", MeshEntries(4) + " /Filter [/ASCII85Decode /ASCIIHexDecode]");
    EXPECT_EQ(Draw(pdf).content, MeshText(4) +
                                     " currentfile/ASCII85Decode filter/ASCIIHexDecode filter\n"
                                     "%%BeginData:5 Bytes\n5sb~>\n%%EndData\n>> shfill\n");
}

// The codes 256, 65, 66 and 257 of nine bits each.
TEST(MeshShading, OnAPageHasPlainDataCompressed) {
    EXPECT_EQ(Draw(PageWith().Stream(10, "AB", MeshEntries(4))).content,
              MeshText(4) +
                  " currentfile /LZWDecode filter\n%%BeginData: 256 Bytes\n\x80\x10\x48\x50\x10>> shfill\n"
                  "\n%%EndData\n");
}

TEST(MeshShading, OnAPageBreaksTheLineOfManyFilters) {
    std::string filters;
    std::string calls;
    for (int filter = 0; filter < 17; ++filter) {
        filters += "/ASCIIHexDecode ";
        calls += (filter == 8 || filter == 16 ? "\n" : "") + "/ASCIIHexDecode filter"s;
    }
    PdfBuilder pdf = PageWith();
    pdf.Stream(10, "41>", MeshEntries(4) + " /Filter [" + filters + "]");
    EXPECT_EQ(Draw(pdf).content,
              MeshText(4) + " currentfile" + calls + "\n%%BeginData:3 Bytes\n41>\n%%EndData\n>> shfill\n");
}

// The line that ends the data, and the text that the device looks for behind it, must come from the library.
TEST(MeshShading, OnAPageHasDataThatHoldsItsEndInDigits) {
    PdfBuilder ended = PageWith();
    ended.Stream(10, "41>\n%%EndData\nquit", MeshEntries(4) + " /Filter /ASCIIHexDecode");
    EXPECT_EQ(Draw(ended).content,
              MeshText(4) +
                  " currentfile/ASCIIHexDecode filter/ASCIIHexDecode filter\n%%BeginData:37 Bytes\n"
                  "34313E0A2525456E64446174610A71756974>\n%%EndData\n>> shfill\n");
    PdfBuilder closed = PageWith();
    closed.Stream(10, "41>>> shfill", MeshEntries(4) + " /Filter /ASCIIHexDecode");
    EXPECT_EQ(Draw(closed).content,
              MeshText(4) +
                  " currentfile/ASCIIHexDecode filter/ASCIIHexDecode filter\n%%BeginData:25 Bytes\n"
                  "34313E3E3E20736866696C6C>\n%%EndData\n>> shfill\n");
}

// The first 62 bytes bring the codes of the others, nine bits each, to where together they read
// "\n%%EndData\n".
TEST(MeshShading, OnAPageHasPlainDataInDigitsWhenCompressedItWouldHoldItsEnd) {
    std::string data;
    for (char byte = 0; byte < 62; ++byte) {
        data += byte;
    }
    data += "\x0A\x4A\x95\x2B\xE6\x88\x16\x17\xBA\x61\x14\xFF";
    const std::string content = Draw(PageWith().Stream(10, data, MeshEntries(4))).content;
    EXPECT_THAT(content, StartsWith(MeshText(4) +
                                    " currentfile/ASCIIHexDecode filter\n%%BeginData:151 Bytes\n000102"));
    EXPECT_THAT(content, EndsWith("61\n14FF>\n%%EndData\n>> shfill\n"));
    EXPECT_EQ(content.find("\n%%EndData\n"), content.size() - 21);
}

TEST(MeshShading, AsAPatternHasItsDataInDigits) {
    for (const auto& [data, filter] :
         {std::tuple{"AB", ""}, std::tuple{"4142>", "/Filter /ASCIIHexDecode"}}) {
        PdfBuilder pdf = PatternPage().Stream(10, data, MeshEntries(6) + " " + filter);
        EXPECT_EQ(Draw(pdf).setup, AsPattern(MeshText(6) + "<~5sb~>\n>>\n")) << filter;
    }
}

TEST(MeshShading, InAFormIsPaintedFromItsDictionary) {
    PdfBuilder pdf = FormThatPaints().Stream(10, "AB", MeshEntries(4));
    EXPECT_EQ(Draw(pdf).setup, FormDefined("N20", MeshText(4) + "<~5sb~>\n>>\n sh\n"));
}

TEST(MeshShading, InATilingPatternAndInAGlyphIsPaintedFromItsDictionary) {
    const std::string painted = MeshText(4) + "<~5sb~>\n>>\n sh\n";
    const std::string resources = " /Resources << /Shading << /S 10 0 R >> >>";
    PdfBuilder tiled = OnePage("n", "/Resources << /Pattern << /P 20 0 R >> >>");
    tiled.Stream(10, "AB", MeshEntries(4));
    tiled.Stream(20, "/S sh",
                 "/PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 9 9] /XStep 9 /YStep 9" + resources);
    EXPECT_THAT(Draw(tiled).setup, HasSubstr("save /gs {gsDI} def\n" + painted + "restore"));
    PdfBuilder lettered = FontPage("/F 20 0 R").Stream(10, "AB", MeshEntries(4)).Stream(21, "/S sh");
    lettered.Object(20,
                    "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 9 9] /FontMatrix [1 0 0 1 0 0] "
                    "/FirstChar 65 /LastChar 65 /Widths [9] /Encoding << /Differences [65 /a] >> "
                    "/CharProcs << /a 21 0 R >>" +
                        resources + " >>");
    EXPECT_THAT(Draw(lettered).setup, HasSubstr(painted));
}

TEST(MeshShading, OfMuchDataIsReadFromACyclingArray) {
    const std::string data(65536, '\0');
    const std::string setup = Draw(PatternPage().Stream(10, data, MeshEntries(4))).setup;
    const std::string start = "/N20 <<\n/PatternType 2\n/Shading " + MeshText(4) + "{{<~";
    ASSERT_THAT(setup, StartsWith(start));
    EXPECT_EQ(FromAscii85(std::string_view(setup).substr(start.size())), data);
    EXPECT_THAT(setup, HasSubstr("~>\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n\n>>\n/Matrix"));
    const std::string less = Draw(PatternPage().Stream(10, data.substr(1), MeshEntries(4))).setup;
    EXPECT_THAT(less, HasSubstr("/DataSource <~"));
    EXPECT_THAT(less, HasSubstr("~>\n>>\n/Matrix"));
}

TEST(MeshShading, ThatIsNoStreamIsNoShading) {
    for (const int type : {4, 5, 6, 7}) {
        PdfBuilder pdf = PageWith("1 w /S sh").Object(10, "<< " + MeshEntries(type) + " >>");
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.error.code, -4079) << type;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
        EXPECT_THAT(ContentOf(conversion.output), Not(HasSubstr("Shading"))) << type;
    }
}

TEST(MeshShading, OfTheFirstTypesMayBeAStream) {
    PdfBuilder pdf = PageWith().Stream(10, "data", std::string(kAxial) + "/DeviceGray");
    EXPECT_EQ(Draw(pdf).content, AxialText("DefaultGray ") + " sh\n");
}

TEST(MeshShading, WithoutASpaceIsRecordedAndClosed) {
    for (const int type : {4, 5, 6, 7}) {
        const std::string entries = "/ShadingType " + std::to_string(type) +
                                    " /BitsPerCoordinate 8 /BitsPerComponent 8 /BitsPerFlag 8";
        const Drawing page = DrawRecording(-4072, PageWith().Stream(10, "AB", entries), 10);
        EXPECT_THAT(page.content, StartsWith("<</ShadingType " + std::to_string(type) + "\n>>\n")) << type;
        EXPECT_THAT(page.content, Not(HasSubstr("AB"))) << type;
    }
}

TEST(MeshShading, BehindAnUnknownFilterIsRecordedAndPaintsNothing) {
    for (const std::string filter : {"/JPXDecode", "[/ASCIIHexDecode /Unheard]"}) {
        PdfBuilder pdf = PageWith("1 w /S sh").Stream(10, "41>", MeshEntries(4) + " /Filter " + filter);
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.error.code, -4092) << filter;
        EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10)) << filter;
        EXPECT_EQ(ContentOf(conversion.output).substr(0, 5), "1 w\n") << filter;
        EXPECT_THAT(ContentOf(conversion.output), Not(HasSubstr("ShadingType"))) << filter;
    }
}

TEST(MeshShading, BehindAnUnknownFilterIsLeftOutOfAFormAndEndsThePageOfItsPattern) {
    PdfBuilder form = FormThatPaints().Stream(10, "41>", MeshEntries(4) + " /Filter /JPXDecode");
    EXPECT_EQ(DrawRecording(-4092, form, 10).setup, FormDefined("N20", ""));
    PdfBuilder pattern = PatternPage().Stream(10, "41>", MeshEntries(4) + " /Filter /JPXDecode");
    const Conversion conversion = Convert(pattern.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{-4092});
    EXPECT_EQ(conversion.error.code, -4092);
    EXPECT_EQ(conversion.error.offset, pattern.OffsetOf(10));
}

// --- hostile shadings ---

/// So many times the same text.
std::string Repeated(std::size_t count, std::string_view text) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

/// A shading with so many times this function, which is closed all the same; how many of them it names.
int FunctionsNamed(std::size_t count, std::string_view function) {
    const Drawing page =
        Draw(PageWithShading("/ShadingType 2 /ColorSpace /DeviceGray /Coords [0 0 1 1] /Function [" +
                             Repeated(count, function) + "]"));
    EXPECT_THAT(page.content, EndsWith(" /FunctionDictionary findRes ]\n>>\n sh\n"));
    return CountOf(page.content, " /FunctionDictionary findRes ");
}

TEST(HostileShading, OfAThousandFunctionsNamesAsManyAsADeviceMayTake) {
    for (const std::string function : {"11 0 R ", kRamp}) {
        EXPECT_EQ(FunctionsNamed(32, function), 32) << function;
        EXPECT_GE(FunctionsNamed(1000, function), 32) << function;
    }
}

TEST(HostileShading, WithFunctionsThatAreNoneHasNoHalfPair) {
    for (const std::string function : {"5", "[5]", "[11 0 R 5]", "[]", "/Name", "99 0 R", "10 0 R",
                                       "[10 0 R]", "<< /FunctionType 9 >>", "[[11 0 R]]"}) {
        const Conversion conversion = Convert(
            PageWithShading("/ShadingType 2 /ColorSpace /DeviceGray /Coords [0 0 1 1] /Function " + function)
                .Bytes());
        const std::string content = ContentOf(conversion.output);
        EXPECT_THAT(content, Not(HasSubstr("/Function >>"))) << function;
        EXPECT_THAT(content, Not(HasSubstr("/Function /Extend"))) << function;
        EXPECT_EQ(CountOf(content, "<<"), CountOf(content, ">>")) << function;
    }
}

TEST(HostileShading, WithASpaceThatIsNoneIsRecordedAndHasNoHalfPair) {
    for (const std::string space : {"/Unheard", "5", "[]", "99 0 R", "10 0 R", "[/Unheard 1]", "null"}) {
        const Conversion conversion = Convert(PageWithShading(std::string(kAxial) + space).Bytes());
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << space;
        EXPECT_EQ(ContentOf(conversion.output), "<</ShadingType 2\n>>\n sh\n") << space;
        EXPECT_NE(conversion.error.code, 0) << space;
    }
}

// The device refuses these; what names them is whole all the same.
TEST(HostileShading, WithASpaceThatTakesNoShadingHasNoHalfPair) {
    for (const std::string space : {"[/Separation]", "/Pattern", "[/Pattern /DeviceRGB]"}) {
        const std::string content =
            ContentOf(Convert(PageWithShading(std::string(kAxial) + space).Bytes()).output);
        EXPECT_THAT(content, Not(HasSubstr("/ColorSpace /Coords"))) << space;
        EXPECT_THAT(content, Not(HasSubstr("/ColorSpace >>"))) << space;
        EXPECT_THAT(content, EndsWith(">>\n sh\n")) << space;
    }
}

TEST(HostileShading, WithWrongTypesHasNoHalfPair) {
    for (const std::string entries : {"/AntiAlias 5", "/Extend [5 /X]", "/Extend []", "/Background [/X (y)]",
                                      "/BBox [[1] 2]", "/Domain [<< >>]"}) {
        const Conversion conversion =
            Convert(PageWithShading(std::string(kAxial) + "/DeviceGray " + entries).Bytes());
        const std::string content = ContentOf(conversion.output);
        EXPECT_EQ(conversion.pages, std::vector<int>{0}) << entries;
        EXPECT_EQ(CountOf(content, "<<"), CountOf(content, ">>")) << entries;
        EXPECT_THAT(content, Not(HasSubstr("/AntiAlias /"))) << entries;
        EXPECT_THAT(content, EndsWith(">>\n sh\n")) << entries;
    }
}

TEST(HostileShading, WithAnUnknownNameGoesOn) {
    const Conversion conversion = Convert(PageWith("1 w /None sh 2 w", "").Bytes());
    EXPECT_EQ(conversion.begin, 0);
    EXPECT_THAT(ContentOf(conversion.output), StartsWith("1 w\n"));
    EXPECT_THAT(ContentOf(conversion.output), Not(HasSubstr("ShadingType")));
}

TEST(HostileShading, MeshWithoutBitsDecodingOrDataHasNoHalfPair) {
    for (const std::string entries : {"/ShadingType 4 /ColorSpace /DeviceGray",
                                      "/ShadingType 4 /ColorSpace /DeviceGray /BitsPerCoordinate 8",
                                      "/ShadingType 5 /ColorSpace /DeviceGray /BitsPerCoordinate /X "
                                      "/BitsPerComponent (y) /VerticesPerRow [] "
                                      "/Decode 5"}) {
        for (PdfBuilder pdf : {PageWith(), FormThatPaints(), PatternPage()}) {
            const Conversion conversion = Convert(pdf.Stream(10, "AB", entries).Bytes());
            const std::string written = PageSetupOf(conversion.output) + ContentOf(conversion.output);
            EXPECT_THAT(written, Not(HasSubstr("/BitsPerCoordinate /"))) << entries;
            EXPECT_THAT(written, Not(HasSubstr("/Decode /"))) << entries;
            EXPECT_EQ(CountOf(written, "<<"), CountOf(written, ">>")) << entries;
        }
    }
}

}  // namespace
}  // namespace zorvan::test
