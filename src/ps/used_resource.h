// A resource that another one, or an image, uses: by its reference, or given where it is used.
#pragma once

#include <cstdint>

#include "pdf/object.h"
#include "ps/resource.h"

namespace zorvan {

class UsedResource {
public:
    UsedResource() = default;
    /// `value` is a reference or the object itself, and is not kept. `use` is for the factory.
    UsedResource(ResourceCategory category, PdfObject value, std::uint32_t use = 0);
    /// One that is registered already.
    UsedResource(ResourceCategory category, ResourceKey key) : category_(category), key_(key) {}

    /// Registers it for the current page; an object without a number gets one. What cannot be built is
    /// recorded by the registry, and missing from then on.
    void Register();
    /// Writes its definition, unless that is written.
    Status EmitIfNeeded() const;

    /// Null for what is missing.
    [[nodiscard]] Resource* Get() const;
    /// Appends the text that stands for it; nothing for what is missing.
    void AppendUse(OutputPiece& piece) const;

private:
    ResourceCategory category_ = ResourceCategory::kFunction;
    ResourceKey key_;
    std::uint32_t use_ = 0;
    OwnedObject value_;  // a reference, or a copy of the object; null for nothing
};

}  // namespace zorvan
