// Patterns: cells that tile an area, and shadings used as a colour. Each is written once as a prototype, from
// which the device makes an instance where it is used.
#pragma once

#include <memory>

#include "content/resource_uses.h"
#include "paint/shading.h"
#include "pdf/object.h"
#include "ps/resource_scope.h"
#include "ps/used_resource.h"

namespace zorvan {

class TilingPatternResource : public PatternUse {
public:
    /// `stream` is the pattern's.
    TilingPatternResource(ResourceKey key, OwnedObject stream);

    /// Writes what the cell names, and the prototype with the cell's content.
    Status WriteResource() override;
    Status RegisterUsed() override;
    void MarkDrawn() override;
    bool CanBeUsedHere() override;
    [[nodiscard]] bool IsColoredTiling() const override { return paintType_ == 1; }

private:
    void AppendKeys(OutputPiece& text) const;

    OwnedObject stream_;
    std::unique_ptr<ResourceScope> scope_;  // null without resources of its own
    std::int32_t paintType_;
};

class ShadingPatternResource : public PatternUse {
public:
    /// `dictionary` is the pattern's, and is not kept.
    ShadingPatternResource(ResourceKey key, PdfObject dictionary);

    /// Writes what the shading names, and the prototype with the shading in it.
    Status WriteResource() override;
    /// The graphics state of a shading pattern is registered, but no device pattern has a place for it.
    Status RegisterUsed() override;
    [[nodiscard]] bool IsColoredTiling() const override { return false; }

private:
    /// Null when there is none.
    [[nodiscard]] ShadingResource* Shading() const;

    OwnedObject dictionary_;
    std::unique_ptr<ShadingResource> ownShading_;  // one that stands in the pattern
    UsedResource shading_;                         // one that it refers to
    UsedResource state_;
};

/// The factory of the category.
std::unique_ptr<Resource> CreatePatternResource(const ResourceRequest& request);

}  // namespace zorvan
