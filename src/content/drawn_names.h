// What a content draws, found without interpreting it.
#pragma once

#include <vector>

#include "pdf/byte_scan.h"
#include "pdf/object.h"

namespace zorvan {

class NameTable;
class ResourceScope;

/// The names in front of the `Do` operators of a content, some of them perhaps not drawn at all: what stands
/// in strings or image data looks the same. False when a name cannot be made out: then anything may be drawn.
bool FindDrawnNames(Bytes content, NameTable& names, std::vector<std::uint32_t>& drawn);

/// Tells the fonts and patterns of a scope that they may be drawn on the page that is written next.
void MarkFontsAndPatterns(const ResourceScope* scope);
/// Tells each XObject of the scope that the content (a `Contents` value) draws.
void MarkXObjects(const ResourceScope* scope, PdfObject contents);
/// Both.
void MarkDrawnIn(const ResourceScope* scope, PdfObject contents);

}  // namespace zorvan
