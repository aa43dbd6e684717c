// Any bytes as the CMap of a composite font. In front of its program stand a byte of flags, and the length
// and the bytes of its name.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/font_page.h"

using namespace zorvan::fuzz;  // NOLINT(google-build-using-namespace): a program of one function

namespace {

/// The text of a name in a PDF file, any byte being written as its number.
std::string NameText(std::string_view name) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "/";
    for (const char letter : name) {
        const auto byte = static_cast<std::uint8_t>(letter);
        text += {'#', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return text;
}

std::string Entries(std::uint8_t flags, std::string_view name) {
    std::string entries = (flags & 1U) != 0 ? "/WMode 1 " : "";
    entries += (flags & 2U) != 0 ? "/UseCMap 12 0 R " : "";  // itself
    return entries + ((flags & 4U) != 0 ? "" : "/CMapName " + NameText(name));
}

/// The line that defines the CMap under the resource's name names it by one token.
void RequireOneToken(std::string_view line) {
    constexpr std::string_view kBefore = "/N12 /";
    constexpr std::string_view kAfter = " /CMap findRes /CMap defineRes pop\n";
    Require(line.starts_with(kBefore) && line.ends_with(kAfter));
    const std::string_view name = line.substr(kBefore.size(), line.size() - kBefore.size() - kAfter.size());
    Require(!name.empty() && name.find_first_of(" \t\r\n\f()<>[]{}/%") == std::string_view::npos);
    Require(name.find('\0') == std::string_view::npos);
}

/// The program stands in its block as it is, and behind it nothing but the line for its name.
void RequireBlock(std::string_view setup, std::string_view program) {
    constexpr std::string_view kTitle = "%%BeginResource: CMap (";
    constexpr std::string_view kEnd = "%%EndResource\n";
    Require(setup.starts_with(kTitle));
    setup.remove_prefix(setup.find(")\n") + 2);
    Require(setup.starts_with(program));
    setup.remove_prefix(program.size());
    Require(setup.starts_with("\n"));
    setup.remove_prefix(1);
    const std::size_t end = setup.find(kEnd);
    Require(end != std::string_view::npos);
    if (end != 0) {
        RequireOneToken(setup.substr(0, end));
    }
    Require(setup.substr(end + kEnd.size()).starts_with("/N10 ("));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputReader input(data, size);
    const std::uint8_t flags = input.Byte();
    const std::string_view name = input.Part(input.Byte() % 100);
    const std::string_view program = input.Rest();
    zorvan::test::PdfBuilder pdf = FontPage();
    pdf.Object(10, "<< /Subtype /Type0 /DescendantFonts [11 0 R] /Encoding 12 0 R >>");
    pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /Part >>");
    pdf.Stream(12, program, Entries(flags, name));
    const PageRun run = RunPage(pdf);
    Require(run.status == 0 && run.setup.ends_with(" 0 TZzero\n"));
    if (program.find("begincmap") == std::string_view::npos) {
        Require(run.setup.starts_with("/N10 ("));
    } else {
        RequireBlock(run.setup, program);
    }
    return 0;
}
