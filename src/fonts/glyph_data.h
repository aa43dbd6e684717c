// The parts of a Type 42 font that simple and composite fonts share.
#pragma once

#include "api/status.h"
#include "fonts/true_type_parser.h"
#include "ps/output.h"

namespace zorvan {

/// Appends the "/FontBBox" line, in font units.
void AppendFontBox(OutputPiece& piece, const GlyphBox& box);

/// Writes a TrueType file as the "/sfnts" array: hexadecimal strings of 32,768 bytes and the byte of padding
/// that the interpreter takes away. They are cut by size alone; the prolog's definefont cuts them anew where
/// a device needs it.
Status WriteGlyphData(Bytes file);

}  // namespace zorvan
