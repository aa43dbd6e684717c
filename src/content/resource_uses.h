// What the interpreter asks of a resource beyond its text, by category. The classes above derive from these,
// so that content knows no class of font, space, pattern or image.
#pragma once

#include <array>
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
    /// The ranges of a and b in a Lab space; of any other, those that a Lab space has by itself.
    [[nodiscard]] virtual std::array<PdfObject, 4> LabRange() const {
        return {MakeInteger(-100), MakeInteger(100), MakeInteger(-100), MakeInteger(100)};
    }
};

/// The form in which a user of a function asks for it. A function has one form, that of its first user; the
/// prolog takes either everywhere.
enum class FunctionForm : std::uint32_t { kDictionary = 0, kProcedure = 1 };

class FunctionUse : public Resource {
public:
    using Resource::Resource;
    /// Writes the definitions of what the function's own text names.
    virtual Status WriteUsed() = 0;
    /// Appends the function itself. Its samples go out on the way, behind what `text` holds until then.
    virtual Status AppendBody(OutputPiece& text) = 0;
};

class ExtGStateUse : public Resource {
public:
    using Resource::Resource;
    [[nodiscard]] virtual bool OverprintsFills() const = 0;
};

namespace pattern_kind {
constexpr std::uint32_t kTiling = 1;
constexpr std::uint32_t kShading = 2;
}  // namespace pattern_kind

class PatternUse : public Resource {
public:
    using Resource::Resource;
    /// Appends the text that fetches the instance.
    void AppendUse(OutputPiece& piece) const override {
        AppendResourceName(piece, Key());
        piece.Append(" /MadePattern findRes ");
    }
    /// False, recorded, inside the pattern itself, where a device would paint without end.
    virtual bool CanBeUsedHere() { return true; }
    /// True for a tiling pattern whose cell sets its own colours.
    [[nodiscard]] virtual bool IsColoredTiling() const = 0;
    /// True when the use takes a colour: a cell that is painted like a stencil.
    [[nodiscard]] bool TakesColor() const { return Kind() != pattern_kind::kShading && !IsColoredTiling(); }
};

/// An XObject (`Do`) or a shading (`sh`).
class PaintedUse : public Resource {
public:
    using Resource::Resource;
    /// Writes the painting, in a content of the given kind.
    virtual Status Paint(ContentKind kind) = 0;
};

}  // namespace zorvan
