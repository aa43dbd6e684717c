// Writing CID-keyed fonts with TrueType programs, and what goes with them.
#include <algorithm>

#include "api/current_job.h"
#include "fonts/cid_font.h"
#include "fonts/font_program.h"
#include "fonts/glyph_data.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"

namespace zorvan {
namespace {

constexpr std::size_t kMostPairs = 65536;
constexpr std::size_t kEntriesOfString = 32767;  // two bytes each, of 65,535 that a string may hold

}  // namespace

CIDFontType2Resource::CIDFontType2Resource(FontSource source)
    : CIDFontResource(std::move(source), font_kind::kCIDFontType2, names::kFontFile2) {}

Status CIDFontType2Resource::WriteResource() {
    pairs_.clear();
    if (IsNull(Program())) {
        return Status::kOk;
    }
    FontProgram program;
    RETURN_IF_FAILED(program.Load(Program(), Reference()));
    if (program.Data().empty()) {
        return Status::kOk;
    }
    TrueTypeParser parser;
    if (!parser.Parse(program.Data(), TrueTypeParser::GlyphMapSource::kIdentity)) {
        return Status::kNoObject;
    }
    RETURN_IF_FAILED(ReadPairs(parser));
    return WriteCIDFont(parser, program.Data());
}

Status CIDFontType2Resource::ReadPairs(const TrueTypeParser& parser) {
    const Resolved map(DictGet(Dictionary(), names::kCIDToGIDMap));
    if (Is(map.Get(), ObjectType::kStream)) {
        StreamReader reader(map.Get());
        ByteBuffer data;
        RETURN_IF_FAILED(DecodeWholeStream(reader, Reference(), data));
        const Bytes bytes = data.Bytes();
        pairs_.resize(std::min(bytes.size() / 2, kMostPairs));
        for (std::size_t i = 0; i < pairs_.size(); ++i) {
            pairs_[i] = {.code = static_cast<std::uint16_t>(i),
                         .glyph = static_cast<std::uint16_t>(bytes[2 * i] * 256 + bytes[2 * i + 1])};
        }
        return Status::kOk;
    }
    pairs_.push_back({});
    for (std::uint32_t code = 0; code < kMostPairs - 1; ++code) {
        const std::uint16_t glyph = parser.GlyphMap()[code];
        if (glyph != 0) {
            pairs_.push_back({.code = static_cast<std::uint16_t>(code), .glyph = glyph});
        }
    }
    return Status::kOk;
}

Status CIDFontType2Resource::WriteCIDFont(const TrueTypeParser& parser, Bytes file) const {
    OutputPiece text;
    text.Append("%!PS-Adobe-3.0 Resource-CIDFont\n")
        .Append("%%documentNeededResources: procset CIDInit\n")  // hosts look for it with a small letter
        .Append("%%IncludeResource: procset CIDInit\n%%BeginResource: CIDFont ")
        .Append(NameWithoutSlash())
        .Append("\n%%Version: 1\n/CIDInit /ProcSet findresource begin\n20 dict begin\n/CIDFontName ")
        .Append(Name())
        .Append(" def\n/CIDFontType 2 def\n");
    Collection().AppendSystemInfo(text);
    AppendFontBox(text, parser.BoundingBox());
    text.Append("/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/FontType 42 def\n")
        .Append("/Encoding 256 array def\n/CharStrings 2 dict dup begin\n/.notdef 0 def\n")
        .Append("end readonly def\n/GDBytes 2 def\n/CIDCount ")
        .AppendUnsigned(static_cast<std::uint32_t>(pairs_.size()))
        .Append(" def\n");
    AppendCIDMap(text);
    RETURN_IF_FAILED(text.Write());
    RETURN_IF_FAILED(WriteGlyphData(file));
    // The block stays open, as that of every TrueType font.
    return WriteOutput("currentdict end dup /CIDFontName get exch definefont pop\n");
}

void CIDFontType2Resource::AppendCIDMap(OutputPiece& text) const {
    text.Append("/CIDMap [");
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
        text.Append(i % kEntriesOfString == 0 ? "<" : "").AppendFourDigits(pairs_[i].glyph);
        text.Append((i + 1) % kEntriesOfString == 0 || i + 1 == pairs_.size() ? ">\n" : "");
    }
    text.Append("]def\n");
}

std::string CIDFontType2Resource::GeneratedCMapName() const {
    OutputPiece name;
    AppendResourceName(name, Key());
    return "CMap-D" + std::string(name.View().substr(2));
}

Status CIDFontType2Resource::WriteGeneratedCMap(bool vertical) const {
    const std::string name = GeneratedCMapName();
    OutputPiece text;
    text.Append("%!PS-Adobe-3.0 Resource-CMap\n%%DocumentNeededResources: ProcSet (CIDInit)\n")
        .Append("%%IncludeResource: ProcSet (CIDInit)\n%%BeginResource: CMap (")
        .Append(name)
        .Append(")\n/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n");
    Collection().AppendSystemInfo(text);
    text.Append("/CMapName /").Append(name).Append(" def\n/CMapType 1 def\n");
    text.Append(vertical ? "/WMode 1 def\n" : "/WMode 0 def\n");
    text.Append("1 begincodespacerange\n<0000> <ffff>\nendcodespacerange\n");
    AppendRanges(text);
    return text.Append("endcidrange\nendcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n")
        .Append("%%EndResource\n")
        .Write();
}

/// A range for the first pair, and one for each run of consecutive codes from the second pair to the last but
/// one.
std::uint32_t CIDFontType2Resource::RangeCount() const {
    if (pairs_.size() < 2) {
        return 1;
    }
    std::uint32_t count = 2;
    for (std::size_t i = 2; i + 1 < pairs_.size(); ++i) {
        count += pairs_[i].code == pairs_[i - 1].code + 1 ? 0U : 1U;
    }
    return count;
}

void CIDFontType2Resource::AppendRanges(OutputPiece& text) const {
    text.AppendUnsigned(RangeCount()).Append(" begincidrange\n<0000> <0000> 0\n");
    std::size_t first = 1;
    for (std::size_t i = 1; i + 1 < pairs_.size(); ++i) {
        const bool ends = i + 2 == pairs_.size() || pairs_[i + 1].code != pairs_[i].code + 1;
        if (ends) {
            text.Append("<").AppendFourDigits(pairs_[first].code).Append("> <");
            text.AppendFourDigits(pairs_[i].code).Append("> ");
            text.AppendUnsigned(static_cast<std::uint32_t>(first)).Append("\n");
            first = i + 1;
        }
    }
    if (pairs_.size() == 2) {
        text.Append("<").AppendFourDigits(pairs_[1].code).Append("> <");
        text.AppendFourDigits(pairs_[1].code).Append("> 1\n");
    }
}

Status CIDFontType2Resource::WriteType0Dictionary(std::string_view cmapName, bool vertical) const {
    OutputPiece text;
    text.Append("8 dict begin\n/FontName ").Append(Name()).Append("-T0 def\n/FontType 0 def\n");
    text.Append("/FMapType 9 def\n").Append(vertical ? "/WMode 1 def\n" : "/WMode 0 def\n");
    text.Append("/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/Encoding [0] def\n/CMap dup /");
    text.Append(cmapName).Append(" exch findresource def\n/FDepVector [").Append(Name());
    return text.Append(" findfont] def\ncurrentdict end dup /FontName get exch definefont pop\n").Write();
}

}  // namespace zorvan
