// The streams of a `Contents` value, and their data.
#pragma once

#include <functional>

#include "api/status.h"
#include "pdf/byte_buffer.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"
#include "pdf/stream_reader.h"

namespace zorvan {

/// The stream's reference (null for a direct one) and the stream, lent.
using ContentStreamTaker = std::function<Status(PdfObject reference, PdfObject stream)>;

/// Hands over each stream of a value: a reference to a stream, a stream, or an array, of which only the
/// references to streams count. Anything else has none. The first failure ends it.
Status ForEachContentStream(PdfObject contents, const ContentStreamTaker& take);

/// The decoded data of one stream. Without a filter it stays where it is in the mapped file.
class DecodedContent {
public:
    /// kDataNotEnough is recorded for data that reaches beyond the file, and what is there counts.
    /// kDecodeError, recorded, when the data is damaged: it then ends where the damage begins.
    Status Decode(PdfObject stream, PdfObject reference);

    /// The same without a record of what goes wrong.
    Status DecodeUnrecorded(PdfObject stream);

    [[nodiscard]] Bytes Data() const { return data_; }

private:
    ByteBuffer decoded_;
    Bytes data_;
};

}  // namespace zorvan
