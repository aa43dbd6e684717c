// Reads any bytes as a TrueType file: by its cmap when the first byte is even, else by the numbers of its
// glyphs.
#include <cstdint>
#include <vector>

#include "fonts/true_type_parser.h"
#include "fuzz/require.h"

using zorvan::TrueTypeParser;
using zorvan::fuzz::Require;

namespace {

using GlyphMap = std::vector<std::uint16_t>;

/// Code and glyph are the same up to the last glyph, and nothing is mapped behind it.
void RequireIdentity(const GlyphMap& map) {
    std::size_t code = 1;
    while (code < map.size() && map[code] == code) {
        ++code;
    }
    while (code < map.size()) {
        Require(map[code++] == 0);
    }
}

/// Each one-byte code shows what the lowest code that ends in it shows.
void RequireFolded(const GlyphMap& map) {
    const auto folded = zorvan::FoldGlyphMap(map);
    for (std::size_t code = map.size(); code-- > 0;) {
        const std::size_t low = code % folded.size();
        Require(map[code] == 0 || folded[low] != 0);
        Require(map[code] == 0 || code >= folded.size() || folded[low] == map[code]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kCodes16 = 65536;
    if (size == 0) {
        return 0;
    }
    using Source = TrueTypeParser::GlyphMapSource;
    const Source source = data[0] % 2 == 0 ? Source::kCmap : Source::kIdentity;
    TrueTypeParser parser;
    const bool parsed = parser.Parse({data + 1, size - 1}, source);
    Require(parser.GlyphMap().size() == kCodes16);
    if (parsed && source == Source::kIdentity) {
        RequireIdentity(parser.GlyphMap());
    }
    RequireFolded(parser.GlyphMap());
    for (const std::int32_t edge : parser.BoundingBox()) {
        Require(edge >= INT16_MIN && edge <= INT16_MAX);
    }
    return 0;
}
