// Small files that ask for endless work, or for all of the memory. A test that is not over in minutes fails
// by its time.
#include <cstdio>
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <zlib.h>

#include "api/session.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;

constexpr int kMemoryNotEnough = -4088;

std::string Deflated(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string deflated(size, '\0');
    EXPECT_EQ(compress(reinterpret_cast<Bytef*>(deflated.data()), &size,
                       reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size())),
              Z_OK);
    deflated.resize(size);
    return deflated;
}

std::string Repeated(std::size_t count, const std::function<std::string(std::size_t)>& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text(i);
    }
    return all;
}

std::string Repeated(std::size_t count, std::string_view text) {
    return Repeated(count, [text](std::size_t) { return std::string(text); });
}

std::string Reference(std::size_t number) {
    return std::to_string(number) + " 0 R ";
}

/// So many numbers, from 1000 on, for one object.
std::string WithAliases(PdfBuilder pdf, unsigned object, std::size_t count) {
    char entry[21];
    std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", pdf.OffsetOf(object));
    pdf.Section();
    pdf.Raw("xref\n1000 " + std::to_string(count) + "\n" + Repeated(count, entry));
    std::string bytes = pdf.Bytes();
    const std::size_t previous = bytes.rfind("startxref\n") + 10;
    const std::size_t section = bytes.rfind("xref\n1000 ");
    return bytes + "trailer\n<< /Size 100000 /Root 1 0 R /Prev " +
           bytes.substr(previous, bytes.find('\n', previous) - previous) + " >>\nstartxref\n" +
           std::to_string(section) + "\n%%EOF\n";
}

/// Entries /X0, /X1 and so on for the aliases.
std::string NamedAliases(std::size_t count) {
    return Repeated(count,
                    [](std::size_t i) { return "/X" + std::to_string(i) + " " + Reference(1000 + i); });
}

std::uint64_t written = 0;

int ZORVAN_CALL CountBytes(const void* /*bytes*/, unsigned int count) {
    written += count;
    return 0;
}

/// The first failure among the calls for a file, whose output is not kept; 0 for none.
int FirstFailure(std::string_view bytes) {
    const Job job;
    written = 0;
    int status = OpenFile(bytes, CountBytes);
    status = status == 0 ? ZORVAN_OutputGlobalResources() : status;
    for (int page = 1; status == 0 && page <= ZORVAN_GetTotalPages(); ++page) {
        status = ZORVAN_OutputOnePage(static_cast<unsigned>(page));
    }
    ZORVAN_OneFileEnd();
    return status;
}

TEST(HostileFile, OfFormsThatEachUseTheNextTwiceDefinesEachOnce) {
    constexpr unsigned kForms = 30;
    PdfBuilder pdf = OnePage("/A Do", "/Resources << /XObject << /A 10 0 R >> >>");
    for (unsigned form = 10; form < 10 + kForms; ++form) {
        const std::string next = Reference(form + 1);
        pdf.Stream(
            form, form + 1 < 10 + kForms ? "/A Do /B Do" : "0 0 9 9 re f",
            "/Subtype /Form /BBox [0 0 9 9] /Resources << /XObject << /A " + next + "/B " + next + ">> >>");
    }
    const Job job;
    const FileRun run = RunFile(pdf.Bytes());
    EXPECT_EQ(run.pages, std::vector<int>{0});
    std::size_t definitions = 0;
    for (std::size_t at = 0; (at = run.output.find("/FormType 1", at)) != std::string::npos; ++at) {
        ++definitions;
    }
    EXPECT_EQ(definitions, kForms);
}

TEST(HostileFile, OfFunctionsThatEachUseTheNextTwiceEnds) {
    constexpr unsigned kFunctions = 30;
    PdfBuilder pdf =
        OnePage("/C cs 1 scn", "/Resources << /ColorSpace << /C [/Separation /A /DeviceGray 10 0 R] >> >>");
    for (unsigned function = 10; function < 10 + kFunctions; ++function) {
        const std::string next = Reference(function + 1);
        pdf.Object(function, "<< /FunctionType 3 /Domain [0 1] /Bounds [0.5] /Encode [0 1 0 1] /Functions [" +
                                 next + next + "] >>");
    }
    pdf.Object(10 + kFunctions, "<< /FunctionType 2 /Domain [0 1] /N 1 >>");
    EXPECT_EQ(FirstFailure(pdf.Bytes()), 0);
}

TEST(HostileFile, OfNamesThatCollideUnderAnOrdinaryHashEnds) {
    // "Aa" and "BB" are alike to whoever multiplies by 31.
    constexpr unsigned kPairs = 17;
    const std::string content = Repeated(std::size_t{1} << kPairs, [](std::size_t i) {
        std::string name = "/";
        for (unsigned pair = 0; pair < kPairs; ++pair) {
            name += (i >> pair & 1U) != 0 ? "Aa" : "BB";
        }
        return name + " ";
    });
    EXPECT_EQ(FirstFailure(OnePage(content).Bytes()), 0);
}

TEST(HostileFile, OfManyNamesForOneResourceOnOneLineEnds) {
    constexpr std::size_t kNames = 70000;
    const auto name = [](std::size_t i) { return "/X" + std::to_string(i) + " "; };
    const std::string content = Repeated(kNames, [&](std::size_t i) { return name(i) + "Do "; });
    const std::string resources = Repeated(kNames, [&](std::size_t i) { return name(i) + "10 0 R "; });
    PdfBuilder pdf = OnePage(content, "/Resources << /XObject << " + resources + ">> >>");
    pdf.Stream(10, "0 0 9 9 re f", "/Subtype /Form /BBox [0 0 9 9] /Resources << >>");
    EXPECT_EQ(FirstFailure(pdf.Bytes()), 0);
}

TEST(HostileFile, OfAMillionDrawingsOnOneLineEnds) {
    PdfBuilder pdf = OnePage(Repeated(1000000, "/X Do "), "/Resources << /XObject << /X 10 0 R >> >>");
    pdf.Stream(10, "", "/Subtype /Form /BBox [0 0 9 9] /Resources << >>");
    EXPECT_EQ(FirstFailure(pdf.Bytes()), 0);
}

TEST(HostileFile, WhoseTwoFiltersMakeGigabytesOfItLacksMemory) {
    constexpr std::size_t kRuns = std::size_t{16} << 20;  // of 128 bytes each
    const std::string data = Deflated(Repeated(kRuns, std::string_view("\x81\0", 2)));
    PdfBuilder pdf = Pages({"/Contents 10 0 R"});
    pdf.Stream(10, data, "/Filter [/FlateDecode /RunLengthDecode]");
    EXPECT_EQ(FirstFailure(pdf.Bytes()), kMemoryNotEnough);
}

TEST(HostileFile, WhoseSecondFilterMakesNothingOfGigabytesLacksMemory) {
    const std::string data = Deflated(std::string(std::size_t{32} << 20, ' '));
    PdfBuilder pdf = Pages({"/Contents [" + Repeated(100, "10 0 R ") + "]"});
    pdf.Stream(10, data, "/Filter [/FlateDecode /ASCIIHexDecode]");
    EXPECT_EQ(FirstFailure(pdf.Bytes()), kMemoryNotEnough);
}

TEST(HostileFile, ThatCopiesOneImageThousandsOfTimesLacksMemory) {
    constexpr std::size_t kAliases = 15000;
    for (const char* filter : {"", "/Filter /FlateDecode"}) {
        PdfBuilder pdf =
            Pages({"/Contents 11 0 R /Resources << /XObject << " + NamedAliases(kAliases) + ">> >>"});
        pdf.Stream(10, std::string(400000, 'x'),
                   "/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray " +
                       std::string(filter));
        pdf.Stream(11, Repeated(kAliases, [](std::size_t i) { return "/X" + std::to_string(i) + " Do\n"; }));
        EXPECT_EQ(FirstFailure(WithAliases(pdf, 10, kAliases)), kMemoryNotEnough) << filter;
        EXPECT_LT(written, std::uint64_t{1} << 30) << filter;
    }
}

TEST(HostileFile, ThatHasOneLargeDictionaryReadThousandsOfTimesLacksMemory) {
    constexpr std::size_t kAliases = 1500;
    PdfBuilder pdf =
        Pages({"/Contents 11 0 R /Resources << /XObject << " + NamedAliases(kAliases) + ">> >>"});
    pdf.Stream(10, "", "/Subtype /Form /BBox [0 0 9 9] /Pad [" + Repeated(120000, "[]") + "]");
    pdf.Stream(11, "/X0 Do");
    EXPECT_EQ(FirstFailure(WithAliases(pdf, 10, kAliases)), kMemoryNotEnough);
}

TEST(HostileFile, WhoseFormsShareADictionaryOfManyNamesLacksMemory) {
    constexpr unsigned kForms = 3000;
    const auto form = [](std::size_t i) { return "/X" + std::to_string(i) + " " + Reference(1000 + i); };
    PdfBuilder pdf =
        Pages({"/Contents 11 0 R /Resources << /XObject << " + Repeated(kForms, form) + ">> >>"});
    pdf.Object(10, "<< /ExtGState << " + Repeated(10000, [](std::size_t i) {
                       return "/G" + std::to_string(i) + " 12 0 R ";
                   }) + ">> >>");
    pdf.Stream(11, "/X0 Do").Object(12, "<< /LW 1 >>");
    for (unsigned i = 0; i < kForms; ++i) {
        pdf.Stream(1000 + i, "", "/Subtype /Form /BBox [0 0 9 9] /Resources 10 0 R");
    }
    EXPECT_EQ(FirstFailure(pdf.Bytes()), kMemoryNotEnough);
}

TEST(HostileFile, WithFaxRowsOfImpossibleWidthCannotBeDecoded) {
    for (const char* columns : {"-1", "0", "65536", "2147483647"}) {
        PdfBuilder pdf = Pages({"/Contents 10 0 R"});
        pdf.Stream(10, "\x26\xA0\xBF",
                   "/Filter /CCITTFaxDecode /DecodeParms << /K -1 /Columns " + std::string(columns) + " >>");
        const Job job;
        RunFile(pdf.Bytes());
        EXPECT_EQ(GetErrorInfo().code, -4092) << columns;
    }
}

TEST(HostileFile, WithInlineImagesOfImpossibleSizeTakesWhatIsThere) {
    for (const char* size : {"/W 65536 /H 65536", "/W 2147483647 /H 2147483647"}) {
        const std::string content = "BI " + std::string(size) + " /BPC 8 /CS /CMYK ID abc EI 7 w";
        EXPECT_THAT(Translate(content), AllOf(HasSubstr("<~@:E^"), HasSubstr("7 w\n"))) << size;
    }
    EXPECT_THAT(Translate("BI /W 4294967296 /H 1 /BPC 8 /CS /CMYK ID abc EI 7 w"), HasSubstr("7 w\n"));
}

}  // namespace
}  // namespace zorvan::test
