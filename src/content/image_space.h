// The colour space of an image: a device space, or a resource of its own.
#pragma once

#include <array>
#include <cstdint>

#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/output.h"
#include "ps/used_resource.h"

namespace zorvan {

class ResourceScope;

struct DeviceSpace;

class ImageSpace {
public:
    /// `value` is a name, an array or a reference, and is not kept.
    explicit ImageSpace(PdfObject value);
    /// The space of an inline image, which may be abbreviated; `scope` knows the names of spaces, or is null.
    ImageSpace(PdfObject value, const ResourceScope* scope);

    /// Registers a space that is a resource for the current page. One that cannot be built is recorded, and
    /// the image is then left out.
    void Register() { used_.Register(); }
    /// Writes what defines it, unless that is written.
    Status EmitIfNeeded() const { return used_.EmitIfNeeded(); }

    /// False for a space that there is none of, or that cannot be built.
    [[nodiscard]] bool IsThere() const { return device_ != nullptr || Space() != nullptr; }
    [[nodiscard]] std::uint32_t Family() const;
    [[nodiscard]] std::uint32_t Components() const;
    [[nodiscard]] std::array<PdfObject, 4> LabRange() const { return Space()->LabRange(); }
    void AppendUse(OutputPiece& piece) const;

private:
    [[nodiscard]] const ColorSpaceUse* Space() const {
        return static_cast<const ColorSpaceUse*>(used_.Get());
    }

    const DeviceSpace* device_ = nullptr;
    UsedResource used_;  // any other space
};

/// Appends the "/Decode" line: the array of the file, or the one that a space's samples have by themselves.
void AppendDecode(OutputPiece& piece, PdfObject decode, const ImageSpace& space, std::int32_t bits);
void AppendDefaultDecode(OutputPiece& piece, const ImageSpace& space, std::int32_t bits);

}  // namespace zorvan
