// Separation and DeviceN spaces: inks by their names, with an alternate for devices that lack them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "content/color_space.h"
#include "pdf/object.h"
#include "ps/used_resource.h"

namespace zorvan {

/// `array` is the space, and is not kept.
class SeparationSpace : public ColorSpace {
public:
    SeparationSpace(ResourceKey key, PdfObject array, std::uint32_t depth);

    Status RegisterUsed() override;
    Status WriteUsed() override;
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override { return 1; }

private:
    std::string colorant_;
    UnderlyingSpace alternate_;
    UsedResource transform_;                     // when the space refers to it
    std::unique_ptr<FunctionUse> ownTransform_;  // when it stands in the space itself
};

/// `array` is the space, and is not kept.
class DeviceNSpace : public ColorSpace {
public:
    DeviceNSpace(ResourceKey key, PdfObject array, std::uint32_t depth);

    Status RegisterUsed() override;
    Status WriteUsed() override;
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override {
        return static_cast<std::uint32_t>(colorants_.size());
    }

private:
    std::vector<std::string> colorants_;
    UnderlyingSpace alternate_;
    UsedResource transform_;
};

}  // namespace zorvan
