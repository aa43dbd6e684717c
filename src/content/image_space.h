// The colour space of an image: a device space, or a resource of its own.
#pragma once

#include <cstdint>

#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

class ResourceScope;

/// A device space by its name in the file, and as it stands in the output: never by its device name, so that
/// a page can put another space in its place.
struct DeviceSpace {
    std::uint32_t name;
    std::uint32_t abbreviation;  // in inline images
    std::string_view text;
    std::uint32_t family;
    std::uint32_t components;
};

/// Null for any other name.
const DeviceSpace* FindDeviceSpace(std::uint32_t name);

class ImageSpace {
public:
    /// `value` is a name, an array or a reference, and is not kept. `scope` knows the names of an inline
    /// image's spaces.
    explicit ImageSpace(PdfObject value, const ResourceScope* scope = nullptr);

    /// Registers a space that is a resource for the current page.
    void Register();
    /// Writes what defines it, unless that is written.
    Status EmitIfNeeded() const;

    /// False for a space that there is none of, or that cannot be built.
    [[nodiscard]] bool IsThere() const { return device_ != nullptr || Space() != nullptr; }
    [[nodiscard]] std::uint32_t Family() const;
    [[nodiscard]] std::uint32_t Components() const;
    void AppendUse(OutputPiece& piece) const;

private:
    [[nodiscard]] const ColorSpaceUse* Space() const;

    const DeviceSpace* device_ = nullptr;
    ResourceKey key_;
    OwnedObject value_;  // a reference, or a copy of the space; null for a space of the scope
};

/// Appends the "/Decode" line: the array of the file, or the one that a space's samples have by themselves.
void AppendDecode(OutputPiece& piece, PdfObject decode, const ImageSpace& space, std::int32_t bits);
void AppendDefaultDecode(OutputPiece& piece, const ImageSpace& space, std::int32_t bits);

}  // namespace zorvan
