// What the interpreter asks of a resource beyond its text, by category. The classes above derive from these,
// so that content knows no class of font, space, pattern or image.
#pragma once

#include <cstdint>

#include "ps/resource.h"

namespace zorvan {

/// Where a content stands: one bit each, handed to what is painted inside it.
enum class ContentKind : std::uint32_t { kPage = 1, kForm = 2, kTilingPattern = 4, kType3Glyph = 8 };

class ColorSpaceUse : public Resource {
public:
    using Resource::Resource;
    [[nodiscard]] virtual std::uint32_t Family() const = 0;
    [[nodiscard]] virtual std::uint32_t Components() const = 0;
};

class ExtGStateUse : public Resource {
public:
    using Resource::Resource;
    [[nodiscard]] virtual bool OverprintsFills() const = 0;
};

class PatternUse : public Resource {
public:
    using Resource::Resource;
    /// True when the pattern carries its own colour, so that its use takes no colour operands.
    [[nodiscard]] virtual bool CarriesColor() const = 0;
};

/// An XObject (`Do`) or a shading (`sh`).
class PaintedUse : public Resource {
public:
    using Resource::Resource;
    /// Writes the painting, in a content of the given kind.
    virtual Status Paint(ContentKind kind) = 0;
};

}  // namespace zorvan
