// Calibrated and Lab spaces, as the CIE-based spaces of PostScript.
#pragma once

#include <array>

#include "content/color_space.h"
#include "pdf/object.h"

namespace zorvan {

/// A space that a dictionary describes. `array` is the space, and is not kept.
class CieSpace : public ColorSpace {
public:
    CieSpace(ResourceKey key, std::uint32_t family, PdfObject array);

protected:
    [[nodiscard]] PdfObject Entry(std::uint32_t key) const { return DictGet(dictionary_.Get(), key); }
    /// "/WhitePoint" with its three numbers, and a line feed.
    void AppendWhitePoint(OutputPiece& text) const;

private:
    OwnedObject dictionary_;
};

class CalGraySpace : public CieSpace {
public:
    CalGraySpace(ResourceKey key, PdfObject array);
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override { return 1; }
};

class CalRgbSpace : public CieSpace {
public:
    CalRgbSpace(ResourceKey key, PdfObject array);
    /// Gamma and matrix go into the second stage, where a device spends no table on them.
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override { return 3; }
};

class LabSpace : public CieSpace {
public:
    LabSpace(ResourceKey key, PdfObject array);
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override { return 3; }
    [[nodiscard]] std::array<PdfObject, 4> LabRange() const override;
};

}  // namespace zorvan
