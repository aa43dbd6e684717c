// Reads a stream's data out of the mapped file: as it stands, or through at most two decode filters.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "api/status.h"
#include "pdf/byte_buffer.h"
#include "pdf/byte_scan.h"
#include "pdf/codec.h"
#include "pdf/object.h"

namespace zorvan {

/// A filter of a stream: its name, and its parameters as a value inside the stream's dictionary (or null).
struct StreamFilter {
    std::uint32_t name = 0;
    PdfObject decodeParms;
};

class StreamReader {
public:
    /// `stream` must outlive the reader.
    explicit StreamReader(PdfObject stream);

    /// The declared length, clamped to what the file holds behind the data's start.
    [[nodiscard]] std::uint32_t Length() const { return static_cast<std::uint32_t>(raw_.size()); }
    /// The data as it stands in the file, decrypted.
    [[nodiscard]] Bytes Raw() const { return raw_; }
    /// True when Raw is the mapped file itself, and not a decrypted copy that goes with the reader.
    [[nodiscard]] bool IsInFile() const { return decrypted_.Size() == 0; }
    /// True when the declared length reaches beyond the file.
    [[nodiscard]] bool IsCutShort() const { return cutShort_; }

    /// The filters in the order in which they decode; as many as the stream names.
    [[nodiscard]] const std::vector<StreamFilter>& Filters() const { return filters_; }

    /// From here on ReadChunk delivers decoded data. Without this call it delivers the data as it stands.
    void StartDecoding();

    /// The next piece of data, which stays valid until the next call. 1: more follows, 0: this piece, which
    /// may be empty, is the last one, -1: a decoder failed behind this piece. Streams with an unknown filter
    /// or with more than two are not decoded: -1.
    int ReadChunk(Bytes& chunk);

private:
    void Decrypt(PdfObject owner);
    void ReadFilters(PdfObject dictionary);
    [[nodiscard]] CodecKind KindOf(std::size_t filter) const;

    OwnedObject filterValue_;  // resolved `Filter` and `DecodeParms`, as far as they are references
    OwnedObject parmsValue_;
    std::vector<OwnedObject> resolvedParms_;
    ByteBuffer decrypted_;  // what raw_ is in, in an encrypted file
    Bytes raw_;
    bool cutShort_ = false;
    bool decoding_ = false;
    std::vector<StreamFilter> filters_;
    std::vector<std::uint8_t> buffers_[2];
    std::unique_ptr<Codec> decoders_[2];
};

/// DecodeWholeStream without a record.
Status DecodeStream(StreamReader& reader, ByteBuffer& data);

/// Decodes a whole stream into `data`. kDecodeError when a decoder fails (`data` then holds what was decoded
/// before), kMemoryNotEnough beyond the limit for decoded data; both are recorded with the reference.
Status DecodeWholeStream(StreamReader& reader, PdfObject reference, ByteBuffer& data);

/// The same for bytes under one filter without parameters, without a record.
Status DecodeBytes(CodecKind kind, Bytes bytes, ByteBuffer& data);

/// The bytes that the text of a hexadecimal string stands for, as far as it is digits and white space; a
/// missing last digit counts as 0.
void DecodeHexadecimalString(Bytes text, ByteBuffer& data);

}  // namespace zorvan
