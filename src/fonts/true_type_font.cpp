// Writing TrueType fonts.
#include "fonts/true_type_font.h"

#include <algorithm>

#include "api/current_job.h"
#include "fonts/font_program.h"
#include "fonts/glyph_data.h"
#include "fonts/true_type_parser.h"
#include "pdf/name_table.h"
#include "pdf/pdf_file.h"

namespace zorvan {
namespace {

/// A code from the font dictionary, held within what a byte can be.
std::int32_t CodeEntry(PdfObject dictionary, std::uint32_t key) {
    const Resolved code(DictGet(dictionary, key));
    return std::clamp(IntegerOf(code.Get()), 0, static_cast<std::int32_t>(kCodes) - 1);
}

}  // namespace

// The encoding is not read: a TrueType font keeps the one of its own `cmap`, and the device's keeps the
// device's.
TrueTypeFontResource::TrueTypeFontResource(FontSource source)
    : FontResource(std::move(source), font_kind::kTrueType),
      program_(DescriptorEntry(Dictionary(), names::kFontFile2)),
      firstChar_(CodeEntry(Dictionary(), names::kFirstChar)),
      lastChar_(CodeEntry(Dictionary(), names::kLastChar)) {
    SetNameFrom(names::kBaseFont);
}

Status TrueTypeFontResource::WriteResource() {
    if (!IsNull(program_.Get())) {
        RETURN_IF_FAILED(WriteType42());
    }
    OutputPiece line;
    line.Append("[");
    AppendUse(line);
    return line.Append(" ").Append(Name()).Append(" -1 TZ\n").Write();
}

Status TrueTypeFontResource::WriteType42() {
    FontProgram program;
    RETURN_IF_FAILED(program.Load(program_.Get(), Reference()));
    if (program.Data().empty()) {
        return Status::kOk;
    }
    TrueTypeParser parser;
    if (!parser.Parse(program.Data(), TrueTypeParser::GlyphMapSource::kCmap)) {
        return Status::kNoObject;
    }
    CurrentPdfFile()->Charge(parser.CodesSeen());
    const CodeMap codes = FoldGlyphMap(parser.GlyphMap());
    OutputPiece header;
    header.Append("%%BeginResource: font ")
        .Append(NameWithoutSlash())
        .Append("\n%!PS-TrueTypeFont-65536-65536-1\n11 dict begin/FontName ")
        .Append(Name())
        .Append(" def\n");
    AppendEncoding(header, codes);
    header.Append("/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n");
    AppendFontBox(header, parser.BoundingBox());
    header.Append("/FontType 42 def\n");
    RETURN_IF_FAILED(header.Write());
    RETURN_IF_FAILED(WriteGlyphData(program.Data()));
    OutputPiece trailer;
    AppendGlyphNames(trailer, codes);
    // The block stays open: hosts that look for its end expect none here.
    return trailer.Append(Name()).Append(" currentdict end definefont pop\n").Write();
}

void TrueTypeFontResource::AppendEncoding(OutputPiece& piece, const CodeMap& codes) const {
    piece.Append("/Encoding 256 array\n0 1 255{1 index exch/.notdef put}for\n");
    for (std::int32_t code = firstChar_; code <= lastChar_; ++code) {
        const std::uint32_t glyph = codes[static_cast<std::size_t>(code)];
        if (glyph != 0) {
            piece.Append("dup ").AppendInteger(code).Append(" /g").AppendUnsigned(glyph).Append(" put\n");
        }
    }
    piece.Append("readonly def\n");
}

void TrueTypeFontResource::AppendGlyphNames(OutputPiece& piece, const CodeMap& codes) const {
    // As many places as there are codes, and one for .notdef.
    const std::int32_t places = std::max(lastChar_ - firstChar_ + 2, 1);
    piece.Append("/CharStrings ").AppendInteger(places).Append(" dict dup begin\n/.notdef 0 def\n");
    for (std::int32_t code = firstChar_; code <= lastChar_; ++code) {
        const std::uint32_t glyph = codes[static_cast<std::size_t>(code)];
        if (glyph != 0) {
            piece.Append("/g").AppendUnsigned(glyph).Append(" ").AppendUnsigned(glyph).Append(" def\n");
        }
    }
    piece.Append("end readonly def\n");
}

}  // namespace zorvan
