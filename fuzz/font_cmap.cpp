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

/// What the block calls the CMap is one token.
void RequireOneToken(std::string_view name) {
    Require(!name.empty() && name.find_first_of(" \t\r\n\f()<>[]{}/%") == std::string_view::npos);
    Require(name.find('\0') == std::string_view::npos);
}

/// Takes this from the front of a text, which must begin with it.
void Take(std::string_view& text, std::string_view front) {
    Require(text.starts_with(front));
    text.remove_prefix(front.size());
}

/// The program stands in its block as it is, behind its size, and nothing else does.
void RequireBlock(std::string_view setup, std::string_view program) {
    Take(setup, "%%BeginResource: CMap (");
    const std::size_t end = setup.find(")\n");
    Require(end != std::string_view::npos);
    RequireOneToken(setup.substr(0, end));
    setup.remove_prefix(end);
    Take(setup, ")\n/N12 " + std::to_string(program.size()) + " StartCMap\n");
    Take(setup, program);
    Take(setup, "\n%%EndResource\n/N10 (");
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
