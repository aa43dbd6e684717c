// The filter chain of a stream.
#include "pdf/stream_reader.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "platform/limits.h"

namespace zorvan {
namespace {

constexpr std::size_t kLargestBuffer = 65536;

/// Resolves into `owner` what is a reference; the result is lent.
PdfObject ResolveInto(OwnedObject& owner, PdfObject value) {
    if (!IsReference(value)) {
        return value;
    }
    owner = OwnedObject(ResolveReference(*CurrentPdfFile(), value));
    return owner.Get();
}

}  // namespace

StreamReader::StreamReader(PdfObject stream) {
    const Bytes file = CurrentPdfFile()->Bytes();
    const std::size_t start = std::min<std::size_t>(StreamDataOffset(stream), file.size());
    const std::size_t length = StreamLength(stream);
    cutShort_ = length > file.size() - start;
    raw_ = file.subspan(start, std::min(length, file.size() - start));
    if (CurrentPdfFile()->Security().IsActive() && IsReference(StreamOwner(stream))) {
        Decrypt(StreamOwner(stream));
    }
    ReadFilters(StreamDictionary(stream));
}

void StreamReader::Decrypt(PdfObject owner) {
    CurrentPdfFile()->Charge(raw_.size());
    SecurityState security = CurrentPdfFile()->Security();
    security.SetObjectKey(owner.payload, owner.type);
    security.Rc4Apply(raw_, decrypted_.Room(raw_.size()).data());
    decrypted_.Commit(raw_.size());
    raw_ = decrypted_.Bytes();
}

void StreamReader::ReadFilters(PdfObject dictionary) {
    const PdfObject filter = ResolveInto(filterValue_, DictGet(dictionary, names::kFilter));
    const PdfObject parms = ResolveInto(parmsValue_, DictGet(dictionary, names::kDecodeParms));
    const auto add = [this](PdfObject name, PdfObject value) {
        resolvedParms_.emplace_back();
        filters_.push_back({NameOf(Resolved(name).Get()), ResolveInto(resolvedParms_.back(), value)});
    };
    if (Is(filter, ObjectType::kName)) {
        add(filter, parms);
        return;
    }
    // Parameters in no array of their own are those of an only filter.
    const bool alone = ArrayCount(filter) == 1 && Is(parms, ObjectType::kDictionary);
    for (std::uint32_t i = 0; i < ArrayCount(filter); ++i) {
        add(ArrayGet(filter, i), alone ? parms : ArrayGet(parms, i));
    }
}

CodecKind StreamReader::KindOf(std::size_t filter) const {
    return DecoderKindOf(filters_[filter].name);
}

void StreamReader::StartDecoding() {
    decoding_ = true;
    if (filters_.empty() || filters_.size() > std::size(decoders_)) {
        return;
    }
    // Eight times the data for one filter; for two, the data and a little for the first and twice the data
    // for the second. A buffer only sets the size of the pieces, so that all of them are capped.
    const bool two = filters_.size() == 2;
    buffers_[0].resize(
        std::clamp(two ? raw_.size() + 4096 : raw_.size() * 8, std::size_t{1}, kLargestBuffer));
    decoders_[0] =
        std::make_unique<Codec>(KindOf(0), DecoderParametersOf(KindOf(0), filters_[0].decodeParms), raw_);
    if (two) {
        buffers_[1].resize(std::clamp(raw_.size() * 2, std::size_t{1}, kLargestBuffer));
        decoders_[1] = std::make_unique<Codec>(
            KindOf(1), DecoderParametersOf(KindOf(1), filters_[1].decodeParms), *decoders_[0], buffers_[0]);
    }
}

int StreamReader::ReadChunk(Bytes& chunk) {
    chunk = {};
    if (!decoding_ || filters_.empty()) {
        chunk = raw_;
        CurrentPdfFile()->Charge(raw_.size());
        raw_ = {};
        return 0;
    }
    if (filters_.size() > std::size(decoders_)) {
        return -1;
    }
    const std::size_t last = filters_.size() - 1;
    std::uint32_t produced = 0;
    const int result = decoders_[last]->Decode(buffers_[last], produced);
    CurrentPdfFile()->Charge(produced);
    chunk = Bytes(buffers_[last]).first(produced);
    return result;
}

Status DecodeWholeStream(StreamReader& reader, PdfObject reference, ByteBuffer& data) {
    const Status status = DecodeStream(reader, data);
    RecordError(status, reference);
    return status;
}

Status DecodeStream(StreamReader& reader, ByteBuffer& data) {
    reader.StartDecoding();
    int state = 1;
    while (state > 0) {
        Bytes chunk;
        state = reader.ReadChunk(chunk);
        if (data.Size() + chunk.size() > limits::kDecodedStream) {
            return Status::kMemoryNotEnough;
        }
        std::copy(chunk.begin(), chunk.end(), data.Room(chunk.size()).begin());
        data.Commit(chunk.size());
    }
    return state == 0 ? Status::kOk : Status::kDecodeError;
}

Status DecodeBytes(CodecKind kind, Bytes bytes, ByteBuffer& data) {
    Codec decoder(kind, DecoderParametersOf(kind, MakeNull()), bytes);
    int state = 1;
    while (state > 0) {
        std::uint32_t produced = 0;
        const auto room = data.Room(kLargestBuffer).first(kLargestBuffer);
        state = decoder.Decode(room, produced);
        data.Commit(produced);
        if (data.Size() > limits::kDecodedStream) {
            return Status::kMemoryNotEnough;
        }
    }
    return state == 0 ? Status::kOk : Status::kDecodeError;
}

void DecodeHexadecimalString(Bytes text, ByteBuffer& data) {
    std::vector<std::uint8_t> ended(text.begin(), text.end());
    ended.push_back('>');
    static_cast<void>(DecodeBytes(CodecKind::kASCIIHexDecode, ended, data));
}

}  // namespace zorvan
