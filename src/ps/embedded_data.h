// Stream data inside the PostScript: passed through as it stands wherever the device has the filter, encoded
// anew where it has not.
#pragma once

#include <cstdint>
#include <string_view>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/codec.h"
#include "pdf/object.h"

namespace zorvan {

/// What a reusable stream is for (PLRM 3.13, ReusableStreamDecode).
enum class DataIntent : std::int32_t { kImage = 0, kMask = 1, kLookup = 2, kOther = 3 };

/// True when the device has every filter of the stream (a direct value).
bool HasDeviceFilters(PdfObject stream);

/// Writes the data of a stream, as it was resolved, as a reusable stream over the file itself, which ends as
/// an object on the operand stack. A stream without a filter is compressed. kDecodeError, recorded with the
/// reference, for a filter that PostScript does not have.
Status EmbedStream(PdfObject stream, PdfObject reference, DataIntent intent);

/// Writes the data of a stream, as it was resolved, as a source that the device reads once, from the file
/// itself, and `closing`, which uses it: behind the data, or, since compressed data ends by itself, in front
/// of the comment that ends it. The stream's filters must be the device's.
Status EmbedInFile(PdfObject stream, std::string_view closing);

/// Writes bytes so that they end as a string on the operand stack.
Status EmbedCountedString(Bytes bytes);

/// Writes bytes as one ASCII85 string, or, from 65,536 bytes on, as a procedure that returns one string of an
/// array after the other.
Status EmbedStrings(Bytes bytes);

/// Writes the bytes of an inline image as its "/DataSource" procedure, in ASCII85 or in hexadecimal digits.
Status EmbedInlineData(Bytes bytes, CodecKind encoderKind);

/// Writes bytes as one ASCII85 string: a lookup table, for instance.
Status EmbedAscii85String(Bytes bytes);

}  // namespace zorvan
