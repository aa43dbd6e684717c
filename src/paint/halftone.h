// Halftones: screens by frequency and angle, sets of them for the colours, and threshold arrays, of which the
// device gets the sizes.
#pragma once

#include <string>
#include <vector>

#include "pdf/object.h"
#include "ps/used_resource.h"

namespace zorvan {

class HalftoneResource : public Resource {
public:
    /// `kind` is the halftone's type. `dictionary` is its dictionary, and is not kept.
    HalftoneResource(ResourceKey key, std::uint32_t kind, PdfObject dictionary);

    /// Writes what the halftone names, and the halftone.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override;

protected:
    [[nodiscard]] PdfObject Dictionary() const { return dictionary_.Get(); }
    [[nodiscard]] PdfObject Entry(std::uint32_t key) const { return DictGet(Dictionary(), key); }
    /// A function that the entry refers to. What stands in the halftone itself has no form for the device.
    [[nodiscard]] UsedResource ReferencedFunction(std::uint32_t key) const;
    static void AppendFunction(OutputPiece& text, std::string_view key, const UsedResource& function);

    virtual Status WriteUsed() { return Status::kOk; }
    virtual void AppendEntries(OutputPiece& text) const = 0;

private:
    void AppendName(OutputPiece& text) const;

    OwnedObject dictionary_;
};

/// The factory of the category.
std::unique_ptr<Resource> CreateHalftoneResource(const ResourceRequest& request);

}  // namespace zorvan
