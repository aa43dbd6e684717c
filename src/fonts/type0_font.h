// Composite fonts: a CID-keyed font and the CMap that selects its glyphs.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "fonts/cid_font.h"
#include "fonts/cmap.h"
#include "fonts/font_resource.h"
#include "ps/used_resource.h"

namespace zorvan {

class Type0FontResource : public FontResource {
public:
    Type0FontResource(FontSource source, std::unique_ptr<CIDFontResource> descendant);

    Status RegisterUsed() override;
    /// Writes font and CMap, and the TZzero line, which composes them. kMemoryNotEnough, recorded, without a
    /// CMap.
    Status WriteResource() override;

private:
    /// Null when the encoding is none that the file carries.
    [[nodiscard]] const CMapResource* EmbeddedCMap() const;
    Status WriteType0Text(CIDFontType2Resource& font) const;
    Status WriteComposingLine() const;

    std::unique_ptr<CIDFontResource> descendant_;
    std::optional<PredefinedCMap> predefined_;
    UsedResource embedded_;
};

/// Null without a descendant that is a CID-keyed font.
std::unique_ptr<Resource> CreateType0Font(FontSource source);

}  // namespace zorvan
