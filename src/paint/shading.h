// Shadings: smooth transitions that the device itself computes. Nothing of them is rendered here.
#pragma once

#include <memory>
#include <vector>

#include "content/resource_uses.h"
#include "paint/function_part.h"
#include "pdf/object.h"
#include "ps/used_resource.h"

namespace zorvan {

class ShadingResource : public PaintedUse {
public:
    /// `kind` is the shading's type. `value` is the shading, resolved, and is not kept.
    ShadingResource(ResourceKey key, std::uint32_t kind, PdfObject value);

    Status RegisterUsed() override;
    /// Writes the definitions of what the shading names. The shading itself stands where it is used.
    Status WriteResource() override;
    /// Shadings have no name on the device.
    void AppendUse(OutputPiece& /*piece*/) const override {}
    /// Writes the dictionary and what paints it.
    Status Paint(ContentKind kind) override;

    /// Writes the dictionary alone, with its data in itself, so that it can be read more than once.
    Status WriteDictionary();

private:
    [[nodiscard]] PdfObject Entry(std::uint32_t key) const;
    [[nodiscard]] PdfObject Reference() const { return MakeReference(Key().number, Key().generation); }
    [[nodiscard]] bool IsMesh() const { return Kind() >= 4; }
    [[nodiscard]] bool HasFunction() const;

    /// What stands before the data. False, with kLoseRequiredEntry recorded, when something required is
    /// missing: the rest is then left out.
    bool AppendEntries(OutputPiece& text) const;
    bool AppendSpace(OutputPiece& text) const;
    bool AppendGeometry(OutputPiece& text) const;
    bool AppendMesh(OutputPiece& text) const;
    bool AppendRequiredArray(OutputPiece& text, std::uint32_t key) const;
    bool AppendRequiredInteger(OutputPiece& text, std::uint32_t key) const;
    void AppendArray(OutputPiece& text, std::uint32_t key) const;
    void AppendFunctions(OutputPiece& text) const;
    void AppendExtend(OutputPiece& text) const;
    [[nodiscard]] bool Missing() const;

    OwnedObject value_;  // a dictionary, or the stream of a mesh
    UsedResource space_;
    bool severalFunctions_ = false;
    std::vector<FunctionPart> functions_;
};

/// The factory of the category.
std::unique_ptr<Resource> CreateShadingResource(const ResourceRequest& request);

/// The shading that a value is, referred to or given; null when it is none.
std::unique_ptr<ShadingResource> CreateShading(PdfObject value, ResourceKey key);

}  // namespace zorvan
