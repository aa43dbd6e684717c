// Image XObjects: the data travels once a page as a resource of the category DataSource, as it stands in the
// file, and is painted from there wherever the image is drawn.
#pragma once

#include <cstdint>

#include "content/image_space.h"
#include "content/resource_uses.h"

namespace zorvan {

class ImageXObject : public PaintedUse {
public:
    /// `stream` is the image's stream.
    ImageXObject(ResourceKey key, OwnedObject stream);

    /// Writes the data when the image is drawn on the page. An image with a filter that PostScript lacks is
    /// left out, with kDecodeError recorded.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override { AppendResourceName(piece, Key()); }
    Status RegisterUsed() override;
    void MarkDrawn() override;
    Status Paint(ContentKind kind) override;

private:
    enum class ImageKind : std::int32_t { kPlain = 0, kStencilMasked = 1, kColorKeyed = 2 };

    [[nodiscard]] PdfObject Entry(std::uint32_t key) const;
    [[nodiscard]] PdfObject Reference() const { return MakeReference(Key().number, Key().generation); }
    [[nodiscard]] const ImageXObject* Mask() const;
    [[nodiscard]] std::int32_t Bits() const;
    /// What stands in the way of painting it; kOk for nothing.
    [[nodiscard]] Status Fault() const;
    [[nodiscard]] bool CanBePainted() const;

    void AppendDictionary(OutputPiece& piece, std::int32_t imageType) const;
    void AppendMasked(OutputPiece& piece, const ImageXObject& mask) const;
    Status WriteImage() const;

    OwnedObject stream_;
    bool stencil_;
    ImageKind imageKind_ = ImageKind::kPlain;
    ResourceKey maskKey_;
    ImageSpace space_;           // a stencil counts as gray
    std::uint32_t drawnIn_ = 0;  // the page, by its serial, that it is drawn on
    bool missing_ = false;       // its data cannot be written
};

}  // namespace zorvan
