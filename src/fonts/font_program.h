// The font programs that a file carries.
#pragma once

#include <cstdint>

#include "api/status.h"
#include "pdf/byte_buffer.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"

namespace zorvan {

/// The value of a font descriptor's key: a reference, or a copy of what stands there. Null when the font has
/// no descriptor, or its descriptor not this key.
OwnedObject DescriptorEntry(PdfObject fontDictionary, std::uint32_t key);

/// A program stream with all its filters undone.
class FontProgram {
public:
    /// `value` is the descriptor's. kInvalidDataType, recorded with the font's reference, when it is no
    /// stream; kDecodeError, recorded, when it is damaged.
    Status Load(PdfObject value, PdfObject font);

    [[nodiscard]] Bytes Data() const { return data_.Bytes(); }
    /// A number of bytes that the stream's dictionary tells; 0 when it is absent or negative.
    [[nodiscard]] std::size_t LengthEntry(std::uint32_t key) const;

private:
    OwnedObject stream_;
    ByteBuffer data_;
};

}  // namespace zorvan
