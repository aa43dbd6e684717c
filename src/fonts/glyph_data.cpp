// Writing the glyph data of Type 42 fonts.
#include "fonts/glyph_data.h"

#include <algorithm>

#include "pdf/codec.h"

namespace zorvan {

void AppendFontBox(OutputPiece& piece, const GlyphBox& box) {
    const auto [xMin, yMin, xMax, yMax] = box;
    piece.Append("/FontBBox [").AppendInteger(xMin).Append(" ").AppendInteger(yMin);
    piece.Append(" ").AppendInteger(xMax).Append(" ").AppendInteger(yMax).Append("] def\n");
}

Status WriteGlyphData(Bytes file) {
    constexpr std::size_t kPiece = 32768;
    RETURN_IF_FAILED(WriteOutput("/sfnts["));
    Codec encoder(CodecKind::kASCIIHexDecodeEncoder, WriteEncoded);
    while (!file.empty()) {
        const Bytes piece = file.first(std::min(kPiece, file.size()));
        RETURN_IF_FAILED(WriteOutput("<"));
        RETURN_IF_FAILED(encoder.EncodeChunk(piece));
        RETURN_IF_FAILED(WriteOutput("00"));
        RETURN_IF_FAILED(encoder.EndEncoding());
        file = file.subspan(piece.size());
    }
    return WriteOutput("]def\n");
}

}  // namespace zorvan
