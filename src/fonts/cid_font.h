// CID-keyed fonts: the descendants of composite fonts, whose glyphs are numbered and not named.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fonts/font_resource.h"
#include "fonts/true_type_parser.h"
#include "pdf/byte_scan.h"

namespace zorvan {

/// What a glyph collection is called: `Registry` and `Ordering`, as texts between parentheses.
struct CharacterCollection {
    std::string registry;
    std::string ordering;

    /// The "/CIDSystemInfo" dictionary, in the lines that fonts and CMaps share.
    void AppendSystemInfo(OutputPiece& text) const;
    /// "/Registry-Ordering" and a blank: one name, of what the texts stand for.
    void AppendName(OutputPiece& text) const;
};

class CIDFontResource : public FontResource {
public:
    /// By how much glyphs are shifted in vertical writing.
    [[nodiscard]] virtual float VerticalAdjustment() const { return 0; }

    /// The name that the device knows the font by.
    [[nodiscard]] std::string_view FontName() const { return NameWithoutSlash(); }
    [[nodiscard]] const CharacterCollection& Collection() const { return collection_; }
    /// What a device that lacks the font is to look for in its place.
    [[nodiscard]] std::string_view Style() const { return serif_ ? "Serif" : "SansSerif"; }

protected:
    /// `programKey` is the descriptor's entry for programs of this kind.
    CIDFontResource(FontSource source, std::uint32_t kind, std::uint32_t programKey);

    /// Null for a font that is not embedded.
    [[nodiscard]] PdfObject Program() const { return program_.Get(); }

private:
    CharacterCollection collection_;
    bool serif_;
    OwnedObject program_;
};

/// One with a compact program.
class CIDFontType0Resource : public CIDFontResource {
public:
    explicit CIDFontType0Resource(FontSource source);

    /// Writes the program, under the name that it declares. Nothing when there is none.
    Status WriteResource() override;
};

/// One with a TrueType program.
class CIDFontType2Resource : public CIDFontResource {
public:
    explicit CIDFontType2Resource(FontSource source);

    /// Writes the program as a CIDFont. Nothing when there is none; kNoObject when it cannot be read.
    Status WriteResource() override;

    /// The name of the CMap that is written for the Identity encodings: "CMap-D%d".
    [[nodiscard]] std::string GeneratedCMapName() const;
    /// Writes it; WriteResource has read what it maps.
    Status WriteGeneratedCMap(bool vertical) const;
    /// Writes the composite font's dictionary, over a CMap of this name.
    Status WriteType0Dictionary(std::string_view cmapName, bool vertical) const;

private:
    /// A code, and the glyph that it shows.
    struct Pair {
        std::uint16_t code = 0;
        std::uint16_t glyph = 0;
    };
    Status ReadPairs(const TrueTypeParser& parser);
    Status WriteCIDFont(const TrueTypeParser& parser, Bytes file) const;
    void AppendCIDMap(OutputPiece& text) const;
    void AppendRanges(OutputPiece& text) const;
    [[nodiscard]] std::uint32_t RangeCount() const;

    std::vector<Pair> pairs_;
};

/// The font that a descendant's value is; null when it is none.
std::unique_ptr<CIDFontResource> CreateCIDFont(PdfObject value);

}  // namespace zorvan
