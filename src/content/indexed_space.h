// Indexed spaces: a table of the base space's colours.
#pragma once

#include "content/color_space.h"
#include "pdf/object.h"
#include "pdf/stream_reader.h"

namespace zorvan {

class IndexedSpace : public ColorSpace {
public:
    /// `array` is the space, and is not kept.
    IndexedSpace(ResourceKey key, PdfObject array, std::uint32_t depth);

    Status RegisterUsed() override;
    Status WriteUsed() override { return base_.WriteUsed(); }
    /// kInvalidDataType, recorded, for a table that is no stream.
    Status AppendDefinition(OutputPiece& text) override;
    [[nodiscard]] std::uint32_t Components() const override { return 1; }

private:
    Status AppendBase(OutputPiece& text);
    Status WriteTable(OutputPiece& text) const;
    Status WriteDecodedTable(StreamReader& reader) const;

    UnderlyingSpace base_;
    ResourceKey baseKey_;  // the name of a base that stands in the text, once it is needed
    std::int32_t highest_;
    OwnedObject table_;
};

}  // namespace zorvan
