// Inline images: the dictionary between "BI" and "ID", and the data behind it.
#pragma once

#include <cstdint>
#include <vector>

#include "content/image_space.h"
#include "content/inline_image_data.h"

namespace zorvan {

class InlineImage {
public:
    /// The dictionary, which must outlive the image, and the scope that knows the names of colour spaces.
    InlineImage(PdfObject dictionary, const ResourceScope* scope);

    /// Finds the data behind "ID"; the result is how many bytes to go on by.
    std::size_t TakeData(Bytes rest, ImageEnds& ends);

    /// Writes keys and data. Nothing for an image without a size, with a filter that PostScript lacks, or in
    /// a colour space that is not there.
    Status Write() const;

private:
    [[nodiscard]] PdfObject Entry(std::uint32_t key, std::uint32_t abbreviation) const;
    [[nodiscard]] std::int32_t Integer(std::uint32_t key, std::uint32_t abbreviation) const;
    void ReadFilters();
    [[nodiscard]] bool CanBeWritten() const;
    [[nodiscard]] bool IsIndexed() const;
    [[nodiscard]] std::size_t ExpectedBytes() const;
    [[nodiscard]] bool IsHexadecimal() const;

    void AppendKeys(OutputPiece& piece) const;
    void AppendSpace(OutputPiece& piece) const;
    void AppendDecodeLine(OutputPiece& piece) const;
    void AppendFilters(OutputPiece& piece) const;
    Status WriteData() const;

    PdfObject dictionary_;
    bool stencil_;
    std::int32_t width_;
    std::int32_t height_;
    std::int32_t bits_;
    OwnedObject spaceValue_;
    ImageSpace space_;  // of an indexed image, its base
    std::vector<OwnedObject> filterValues_;
    std::vector<InlineFilter> filters_;
    InlineData data_;
};

}  // namespace zorvan
