// Driving the codec library's handles and answering its callbacks.
#include "pdf/codec.h"

#include <algorithm>
#include <limits>
#include <new>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "platform/filter_library.h"

namespace zorvan {
namespace {

struct FilterRow {
    std::uint32_t name;
    CodecKind decoder;
    unsigned int decoderCode;
    CodecKind encoder;
    unsigned int encoderCode;
};

constexpr FilterRow kFilters[] = {
#define ZORVAN_FILTER(name, decoderKind, decoderCode, encoderKind, encoderCode) \
    {names::k##name, CodecKind::k##name, decoderCode, CodecKind::k##name##Encoder, encoderCode},
#include "pdf/filters.inc"
#undef ZORVAN_FILTER
};

const FilterRow* RowOf(CodecKind kind) {
    const auto* const row =
        std::find_if(std::begin(kFilters), std::end(kFilters),
                     [kind](const FilterRow& each) { return each.decoder == kind || each.encoder == kind; });
    return row == std::end(kFilters) ? nullptr : row;
}

int IntegerEntry(PdfObject dictionary, std::uint32_t key, int otherwise) {
    const Resolved value(DictGet(dictionary, key));
    return IsNull(value.Get()) ? otherwise : IntegerOf(value.Get());
}

int FlagEntry(PdfObject dictionary, std::uint32_t key, bool otherwise) {
    const Resolved value(DictGet(dictionary, key));
    return (Is(value.Get(), ObjectType::kBoolean) ? BooleanOf(value.Get()) : otherwise) ? 1 : 0;
}

}  // namespace

CodecKind DecoderKindOf(std::uint32_t filterName) {
    const auto* const row =
        std::find_if(std::begin(kFilters), std::end(kFilters),
                     [filterName](const FilterRow& each) { return each.name == filterName; });
    return row == std::end(kFilters) ? CodecKind::kNone : row->decoder;
}

int CodecSlots::Enter(Codec& codec, bool encoder) {
    const std::size_t first = encoder ? 0 : 1;
    codecs_.resize(std::max(codecs_.size(), first + 1), nullptr);
    const auto free = std::find(codecs_.begin() + static_cast<std::ptrdiff_t>(first), codecs_.end(), nullptr);
    const auto slot = static_cast<std::size_t>(free - codecs_.begin());
    if (free == codecs_.end()) {
        codecs_.push_back(nullptr);
    }
    codecs_[slot] = &codec;
    return static_cast<int>(slot);
}

void CodecSlots::Clear(int slot) {
    codecs_[static_cast<std::size_t>(slot)] = nullptr;
}

Codec* CodecSlots::Find(int slot) const {
    const auto index = static_cast<std::size_t>(slot);
    return slot < 0 || index >= codecs_.size() ? nullptr : codecs_[index];
}

CodecParameters DecoderParametersOf(CodecKind kind, PdfObject decodeParms) {
    if (kind == CodecKind::kDCTDecode && !Is(decodeParms, ObjectType::kDictionary)) {
        return FilterDctParameters{};
    }
    if (kind != CodecKind::kCCITTFaxDecode || !Is(decodeParms, ObjectType::kDictionary)) {
        return std::monostate{};
    }
    constexpr int kDefaultColumns = 1728;
    return FilterCcittParameters{
        .k = IntegerEntry(decodeParms, names::kK, 0),
        .end_of_line = FlagEntry(decodeParms, names::kEndOfLine, false),
        .encoded_byte_align = FlagEntry(decodeParms, names::kEncodedByteAlign, false),
        .columns = IntegerEntry(decodeParms, names::kColumns, kDefaultColumns),
        .rows = IntegerEntry(decodeParms, names::kRows, 0),
        .end_of_block = FlagEntry(decodeParms, names::kEndOfBlock, true),
        .black_is_1 = FlagEntry(decodeParms, names::kBlackls1, false)};
}

Codec::Codec(CodecKind kind, CodecParameters parameters, Bytes input, bool encoder)
    : kind_(kind),
      parameters_(parameters),
      encoder_(encoder),
      slot_(CurrentCodecSlots().Enter(*this, encoder)),
      input_(input) {}

Codec::Codec(CodecKind decoderKind, CodecParameters parameters, Bytes input)
    : Codec(decoderKind, parameters, input, false) {}

Codec::Codec(CodecKind decoderKind, CodecParameters parameters, Codec& upstream,
             std::span<std::uint8_t> buffer)
    : Codec(decoderKind, parameters, Bytes(), false) {
    upstream_ = &upstream;
    upstreamBuffer_ = buffer;
    upstreamState_ = 1;
}

Codec::Codec(CodecKind encoderKind, Sink sink) : Codec(encoderKind, std::monostate{}, Bytes(), true) {
    sink_ = std::move(sink);
}

Codec::~Codec() {
    if (handle_ != nullptr) {
        const FilterLibrary& library = CurrentFilterLibrary();
        (encoder_ ? library.destroyEncoder : library.destroyDecoder)(handle_);
    }
    CurrentCodecSlots().Clear(slot_);
}

const void* Codec::ParameterBlock() const {
    return std::visit(
        [](const auto& block) -> const void* {
            using Block = std::decay_t<decltype(block)>;
            return std::is_same_v<Block, std::monostate> ? nullptr : static_cast<const void*>(&block);
        },
        parameters_);
}

bool Codec::CreateDecoderHandle() {
    const FilterRow* row = RowOf(kind_);
    if (handle_ == nullptr && row != nullptr) {
        const auto lengthHint = static_cast<unsigned int>(input_.size());
        handle_ = CurrentFilterLibrary().createDecoder((lengthHint << 8U) | row->decoderCode,
                                                       ParameterBlock(), &slot_, ReadInput);
        if (handle_ == nullptr) {
            throw std::bad_alloc();  // the one reason that making a decoder fails for
        }
    }
    return handle_ != nullptr;
}

bool Codec::CreateEncoderHandle() {
    const FilterRow* row = RowOf(kind_);
    if (handle_ == nullptr && row != nullptr) {
        handle_ =
            CurrentFilterLibrary().createEncoder(row->encoderCode, ParameterBlock(), &slot_, WriteEncoded);
        if (handle_ == nullptr) {
            RecordError(Status::kMemoryNotEnough, MakeNull());  // the status, -1, does not tell it
        }
    }
    return handle_ != nullptr;
}

int Codec::Decode(std::span<std::uint8_t> output, std::uint32_t& produced) {
    produced = 0;
    // What it pulls from is made here, too: inside the codec library's own call nothing may throw.
    if ((upstream_ != nullptr && !upstream_->CreateDecoderHandle()) || !CreateDecoderHandle()) {
        return -1;
    }
    const int result = DecodePiece(output, produced);
    if (spent_) {
        throw std::bad_alloc();
    }
    return result;
}

int Codec::DecodePiece(std::span<std::uint8_t> output, std::uint32_t& produced) {
    unsigned int size = static_cast<unsigned int>(
        std::min<std::size_t>(output.size(), std::numeric_limits<unsigned int>::max()));
    const int result = CurrentFilterLibrary().decodeData(handle_, output.data(), &size);
    produced = size;
    if (result > 0 && produced == 0 && !output.empty()) {
        return -1;  // a decoder that gets nowhere would be asked for ever
    }
    // What upstream could not decode looks like an ordinary end of input from here.
    return result == 0 && upstreamState_ < 0 ? -1 : result;
}

bool Codec::Spend(std::size_t bytes) {
    const PdfFile* file = CurrentPdfFile();
    spent_ = spent_ || (file != nullptr && !file->Take(bytes));
    return !spent_;
}

bool Codec::Refill() {
    while (upstreamState_ > 0) {
        std::uint32_t produced = 0;
        upstreamState_ = upstream_->DecodePiece(upstreamBuffer_, produced);
        if (!Spend(produced) || upstream_->spent_) {
            spent_ = true;
            return false;
        }
        if (produced > 0) {
            input_ = upstreamBuffer_.first(produced);
            return true;
        }
    }
    return false;
}

int ZORVAN_CALL Codec::ReadInput(const int* slot, void* buffer, unsigned int wanted, unsigned int* read) {
    *read = 0;
    Codec* codec = CurrentCodecSlots().Find(*slot);
    if (codec == nullptr) {
        return 0;
    }
    auto* target = static_cast<std::uint8_t*>(buffer);
    while (*read < wanted && (!codec->input_.empty() || codec->Refill())) {
        const std::size_t count = std::min<std::size_t>(wanted - *read, codec->input_.size());
        if (!codec->Spend(count)) {
            return 0;
        }
        std::copy_n(codec->input_.begin(), count, target + *read);
        codec->input_ = codec->input_.subspan(count);
        *read += static_cast<unsigned int>(count);
    }
    return *read == wanted ? 1 : 0;
}

int ZORVAN_CALL Codec::WriteEncoded(const int* slot, const void* bytes, unsigned int count,
                                    unsigned int* written) {
    *written = 0;
    Codec* codec = CurrentCodecSlots().Find(*slot);
    if (count == 0 || codec == nullptr || Failed(codec->sinkStatus_)) {
        return 0;
    }
    codec->sinkStatus_ = codec->sink_({static_cast<const char*>(bytes), count});
    if (Failed(codec->sinkStatus_)) {
        return 0;
    }
    *written = count;
    return 1;
}

Status Codec::EncoderStatus(int result) const {
    if (Failed(sinkStatus_)) {
        return sinkStatus_;
    }
    return result == 0 ? Status::kOk : Status::kNoObject;
}

Status Codec::EncodeChunk(Bytes bytes) {
    if (!CreateEncoderHandle()) {
        return Status::kNoObject;
    }
    return EncoderStatus(
        CurrentFilterLibrary().encodeData(handle_, bytes.data(), static_cast<unsigned int>(bytes.size())));
}

Status Codec::EndEncoding() {
    if (!CreateEncoderHandle()) {
        return Status::kNoObject;
    }
    return EncoderStatus(CurrentFilterLibrary().encodeEod(handle_));
}

}  // namespace zorvan
