// CMaps: which CIDs the bytes of a string select. The device has the predefined ones; others come with the
// file.
#pragma once

#include <string>

#include "pdf/object.h"
#include "ps/resource.h"
#include "ps/used_resource.h"

namespace zorvan {

/// One that the device is to have, by its name.
class PredefinedCMap {
public:
    /// `name` is a name's identifier.
    explicit PredefinedCMap(std::uint32_t name);

    [[nodiscard]] const std::string& Name() const { return name_; }
    /// True for the two whose codes are the CIDs.
    [[nodiscard]] bool IsIdentity() const { return name_ == "Identity-H" || name_ == "Identity-V"; }
    /// 1 for vertical writing.
    [[nodiscard]] std::uint32_t WritingMode() const { return name_.ends_with("-V") ? 1 : 0; }

private:
    std::string name_;
};

/// One that the file carries: a program that defines it, and that the device runs as it is.
class CMapResource : public Resource {
public:
    /// `stream` is the CMap's.
    CMapResource(ResourceKey key, OwnedObject stream);

    /// Writes the CMap that this one builds on, and the CMap, which is then known by the resource's name, and
    /// by its own where the device has none of that.
    Status WriteResource() override;
    Status RegisterUsed() override;
    void AppendUse(OutputPiece& piece) const override;
    [[nodiscard]] std::uint32_t WritingMode() const;

private:
    [[nodiscard]] std::string OwnName() const;

    OwnedObject stream_;
    UsedResource base_;
};

/// The factory of the category.
std::unique_ptr<Resource> CreateCMapResource(const ResourceRequest& request);

}  // namespace zorvan
