// TrueType fonts, written as Type 42 fonts (Adobe TN 5012).
#pragma once

#include <array>
#include <cstdint>

#include "fonts/font_encoding.h"
#include "fonts/font_resource.h"

namespace zorvan {

class TrueTypeFontResource : public FontResource {
public:
    explicit TrueTypeFontResource(FontSource source);

    /// Writes the file as a Type 42 font when there is one, and the TZ line. kNoObject when the file cannot
    /// be parsed.
    Status WriteResource() override;

private:
    /// The glyph of each code, 0 for none.
    using CodeMap = std::array<std::uint16_t, kCodes>;

    Status WriteType42();
    void AppendEncoding(OutputPiece& piece, const CodeMap& codes) const;
    void AppendGlyphNames(OutputPiece& piece, const CodeMap& codes) const;

    OwnedObject program_;
    std::int32_t firstChar_;
    std::int32_t lastChar_;
};

}  // namespace zorvan
