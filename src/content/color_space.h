// Colour spaces: each is defined once as a resource of the category ColorSpace and fetched where it is used.
#pragma once

#include <memory>

#include "content/color_state.h"
#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/output.h"
#include "ps/used_resource.h"

namespace zorvan {

struct DeviceSpace;

class ColorSpace : public ColorSpaceUse {
public:
    ColorSpace(ResourceKey key, std::uint32_t family) : ColorSpaceUse(key, family) {}

    /// Writes what the space names, and the space under its name.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override;
    [[nodiscard]] std::uint32_t Family() const override { return Kind(); }
    /// True for one of the three device spaces.
    [[nodiscard]] bool IsDevice() const { return Family() <= family::kCmyk; }

    /// Writes the definitions of what the space's own text names.
    virtual Status WriteUsed() { return Status::kOk; }
    /// Appends the PostScript colour space. A long table goes out on the way, behind what `text` holds until
    /// then.
    virtual Status AppendDefinition(OutputPiece& text) = 0;

protected:
    static void AppendUseOf(OutputPiece& piece, ResourceKey key);
    [[nodiscard]] PdfObject Reference() const { return MakeReference(Key().number, Key().generation); }
};

/// `value` is a name, an array or a reference, and is not kept. Null when it is no colour space. `depth`
/// counts the spaces around it, which must end: a profile may name itself as its alternate.
std::unique_ptr<ColorSpace> CreateColorSpace(PdfObject value, ResourceKey key, std::uint32_t depth = 0);

/// The factory of the category.
std::unique_ptr<Resource> CreateColorSpaceResource(const ResourceRequest& request);

/// The space underneath another one: the base of Indexed, the alternate of a spot colour or a profile. It
/// stands in the text when the file has it there, and is a resource of its own when the file refers to it.
class UnderlyingSpace {
public:
    UnderlyingSpace() = default;
    UnderlyingSpace(PdfObject value, std::uint32_t depth);

    void Register();
    Status WriteUsed();
    /// Its definition when it stands here, its use otherwise. Nothing for one that is missing.
    Status AppendText(OutputPiece& text);

    /// False for a space that is missing or cannot be built.
    [[nodiscard]] bool IsThere() const { return own_ != nullptr || used_.Get() != nullptr; }
    /// 0 for a space that is missing, cannot be built or reaches itself.
    [[nodiscard]] std::uint32_t Components() const { return components_; }
    /// A space of the text itself, written as an array there; null for one that has a name.
    [[nodiscard]] ColorSpace* Inline() const { return named_ ? nullptr : own_.get(); }

private:
    std::unique_ptr<ColorSpace> own_;  // null for a referenced one
    bool named_ = false;               // a device space by its bare name
    UsedResource used_;                // a referenced one
    std::uint32_t components_ = 0;     // told when it is registered: a space may stand under itself
};

}  // namespace zorvan
