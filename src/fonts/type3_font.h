// Type 3 fonts: every glyph is a content of its own.
#pragma once

#include <memory>

#include "fonts/font_encoding.h"
#include "fonts/font_resource.h"
#include "ps/resource_scope.h"

namespace zorvan {

class Type3FontResource : public FontResource {
public:
    explicit Type3FontResource(FontSource source);

    /// Writes what the glyphs name, the font, and the TZ line. The font is defined under its resource name,
    /// and the line copies it under the name that it has in the file.
    Status WriteResource() override;
    Status RegisterUsed() override;
    void MarkDrawn() override;
    /// Its glyphs use what their page defines, so that it is defined in each page.
    [[nodiscard]] bool IsPageLocal() const override { return true; }

private:
    /// The font's own resources, or, without any, those of what it is used on.
    [[nodiscard]] const ResourceScope* Scope() const;
    Status WriteHeader() const;
    void AppendEncoding(OutputPiece& piece) const;
    Status WriteGlyphs(const ResourceScope* scope) const;
    static Status WriteGlyph(std::uint32_t name, PdfObject contents, const ResourceScope* scope);

    FontEncoding encoding_;
    std::unique_ptr<ResourceScope> scope_;  // null without resources of its own
};

}  // namespace zorvan
