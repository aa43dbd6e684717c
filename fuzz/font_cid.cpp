// Any bytes as what a CID-keyed font with a TrueType program is made of: a byte of flags, the lengths of
// CIDToGIDMap (two bytes) and W (one), these two, and the program.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/font_page.h"

using namespace zorvan::fuzz;  // NOLINT(google-build-using-namespace): a program of one function

namespace {

constexpr std::uint8_t kMapped = 1;
constexpr std::uint8_t kDownwards = 2;
constexpr std::uint8_t kByUnicode = 4;
constexpr std::uint8_t kRepeated = 8;

std::string Encoding(std::uint8_t flags) {
    const std::string name = (flags & kByUnicode) != 0 ? "/UniJIS-UCS2-" : "/Identity-";
    return name + ((flags & kDownwards) != 0 ? "V" : "H");
}

/// The map, or many of it one behind the other: small inputs reach the limits, too.
std::string Map(std::uint8_t flags, std::string_view part) {
    constexpr int kTimes = 64;
    std::string map(part);
    for (int time = 1; (flags & kRepeated) != 0 && time < kTimes; ++time) {
        map += part;
    }
    return map;
}

/// Takes the text up to `after` off the front, which must be there.
std::string_view TakeTo(std::string_view& text, std::string_view after) {
    const std::size_t end = text.find(after);
    Require(end != std::string_view::npos);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + after.size());
    return taken;
}

std::size_t Number(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    Require(error == std::errc() && end == text.data() + text.size());
    return number;
}

std::size_t CountOfDigits(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [kDigits](char letter) {
        return kDigits.find(letter) != std::string_view::npos;
    }));
}

/// As many entries as are counted, in pieces that a string holds; the whole program, with a byte behind each
/// piece.
void RequireCIDFont(std::string_view setup, std::size_t programSize) {
    TakeTo(setup, "/CIDCount ");
    const std::size_t count = Number(TakeTo(setup, " def\n/CIDMap ["));
    std::string_view map = TakeTo(setup, "]def\n/sfnts[");
    Require(count <= 65536 && CountOfDigits(map) == 4 * count);
    while (!map.empty()) {
        Require(CountOfDigits(TakeTo(map, ">\n")) < 2U * 65536);
    }
    const std::size_t pieces = (programSize + 32767) / 32768;
    Require(CountOfDigits(TakeTo(setup, "]def\n")) == 2 * (programSize + pieces));
}

/// The ranges that the CMap announces.
void RequireRanges(std::string_view setup) {
    TakeTo(setup, "endcodespacerange\n");
    const std::size_t count = Number(TakeTo(setup, " begincidrange\n"));
    const std::string_view ranges = TakeTo(setup, "endcidrange\n");
    Require(static_cast<std::size_t>(std::count(ranges.begin(), ranges.end(), '\n')) == count);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputReader input(data, size);
    const std::uint8_t flags = input.Byte();
    const std::size_t mapLength = input.Byte() * 256U + input.Byte();
    const std::size_t widthsLength = input.Byte();
    const std::string map = Map(flags, input.Part(mapLength));
    const std::string widths(input.Part(widthsLength));
    const std::string_view program = input.Rest();
    zorvan::test::PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding " + Encoding(flags) + " >>");
    pdf.Object(11, std::string("<< /Subtype /CIDFontType2 /BaseFont /Part /FontDescriptor 12 0 R ") +
                       ((flags & kMapped) != 0 ? "/CIDToGIDMap 14 0 R " : "") + "/W [" + widths + "] >>");
    pdf.Object(12, "<< /FontFile2 13 0 R >>").Stream(13, program).Stream(14, map);
    const PageRun run = RunPage(pdf);
    if (run.setup.find("%%BeginResource: CIDFont ") != std::string::npos) {
        RequireCIDFont(run.setup, program.size());
    }
    if (run.setup.find("%%BeginResource: CMap ") != std::string::npos) {
        RequireRanges(run.setup);
    }
    return 0;
}
