// Writing inline images. Their data always goes out as text: they stand in contents that may be procedures,
// and in files that may be transmitted as text.
#include "content/inline_image.h"

#include <algorithm>

#include "api/current_job.h"
#include "content/color_state.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "ps/device_parameters.h"
#include "ps/embedded_data.h"
#include "ps/number_array.h"

namespace zorvan {
namespace {

struct FilterAbbreviation {
    std::uint32_t name;
    std::uint32_t abbreviation;
};

constexpr FilterAbbreviation kAbbreviations[] = {
    {names::kASCIIHexDecode, names::kAHx}, {names::kASCII85Decode, names::kA85},
    {names::kLZWDecode, names::kLZW},      {names::kFlateDecode, names::kFl},
    {names::kRunLengthDecode, names::kRL}, {names::kCCITTFaxDecode, names::kCCF},
    {names::kDCTDecode, names::kDCT},
};

CodecKind FilterOf(PdfObject name) {
    const std::uint32_t given = NameOf(Resolved(name).Get());
    const auto* const found = std::ranges::find(kAbbreviations, given, &FilterAbbreviation::abbreviation);
    return DecoderKindOf(found == std::end(kAbbreviations) ? given : found->name);
}

bool IsAscii(CodecKind kind) {
    return kind == CodecKind::kASCIIHexDecode || kind == CodecKind::kASCII85Decode;
}

std::string_view FilterName(CodecKind kind) {
    switch (kind) {
        case CodecKind::kLZWDecode:
            return "/LZWDecode";
        case CodecKind::kFlateDecode:
            return "/FlateDecode";
        case CodecKind::kRunLengthDecode:
            return "/RunLengthDecode";
        case CodecKind::kCCITTFaxDecode:
            return "/CCITTFaxDecode";
        case CodecKind::kDCTDecode:
            return "/DCTDecode";
        case CodecKind::kASCIIHexDecode:
            return "/ASCIIHexDecode";
        default:
            return "/ASCII85Decode";
    }
}

bool IsIndexedArray(PdfObject space) {
    const std::uint32_t family = NameOf(Resolved(ArrayGet(space, 0)).Get());
    return ArrayCount(space) == 4 && (family == names::kIndexed || family == names::kI);
}

/// What ImageSpace is to look at: the base of an indexed space.
PdfObject SpaceOrBase(PdfObject space) {
    return IsIndexedArray(space) ? ArrayGet(space, 1) : space;
}

/// A value of the dictionary under its full key or its abbreviation.
PdfObject EntryOf(PdfObject dictionary, std::uint32_t key, std::uint32_t abbreviation) {
    const PdfObject value = DictGet(dictionary, key);
    return IsNull(value) ? DictGet(dictionary, abbreviation) : value;
}

}  // namespace

InlineImage::InlineImage(PdfObject dictionary, const ResourceScope* scope)
    : dictionary_(dictionary),
      stencil_(BooleanOf(Resolved(Entry(names::kImageMask, names::kIM)).Get())),
      width_(Integer(names::kWidth, names::kW)),
      height_(Integer(names::kHeight, names::kH)),
      bits_(stencil_ ? 1 : Integer(names::kBitsPerComponent, names::kBPC)),
      spaceValue_(CloneObject(Resolved(Entry(names::kColorSpace, names::kCS)).Get())),
      space_(stencil_ ? MakeName(names::kDeviceGray) : SpaceOrBase(spaceValue_.Get()), scope) {
    ReadFilters();
}

PdfObject InlineImage::Entry(std::uint32_t key, std::uint32_t abbreviation) const {
    return EntryOf(dictionary_, key, abbreviation);
}

std::int32_t InlineImage::Integer(std::uint32_t key, std::uint32_t abbreviation) const {
    return IntegerOf(Resolved(Entry(key, abbreviation)).Get());
}

void InlineImage::ReadFilters() {
    const Resolved filter(Entry(names::kFilter, names::kF));
    const Resolved parameters(Entry(names::kDecodeParms, names::kDP));
    const bool several = Is(filter.Get(), ObjectType::kArray);
    const std::uint32_t count = several ? ArrayCount(filter.Get()) : IsNull(filter.Get()) ? 0 : 1;
    for (std::uint32_t i = 0; i < count; ++i) {
        const bool array = Is(parameters.Get(), ObjectType::kArray);
        const Resolved own(array ? ArrayGet(parameters.Get(), i) : i == 0 ? parameters.Get() : MakeNull());
        filterValues_.emplace_back(CloneObject(own.Get()));
        filters_.push_back(
            {FilterOf(several ? ArrayGet(filter.Get(), i) : filter.Get()), filterValues_.back().Get()});
    }
}

bool InlineImage::IsIndexed() const {
    return !stencil_ && IsIndexedArray(spaceValue_.Get());
}

bool InlineImage::IsHexadecimal() const {
    return !filters_.empty() && filters_.front().kind == CodecKind::kASCIIHexDecode;
}

std::size_t InlineImage::ExpectedBytes() const {
    const std::uint64_t components = stencil_ || IsIndexed() || !space_.IsThere() ? 1 : space_.Components();
    const std::uint64_t bits = static_cast<std::uint64_t>(std::clamp(width_, 0, 1 << 24)) *
                               static_cast<std::uint64_t>(std::clamp(bits_, 1, 16)) * components;
    const std::uint64_t bytes = (bits + 7) / 8 * static_cast<std::uint64_t>(std::max(height_, 0));
    return static_cast<std::size_t>(std::min<std::uint64_t>(bytes, SIZE_MAX));
}

std::size_t InlineImage::TakeData(Bytes rest, ImageEnds& ends) {
    data_ = FindInlineData(rest, filters_, ExpectedBytes(), ends);
    return data_.consumed;
}

bool InlineImage::CanBeWritten() const {
    const bool filters =
        std::ranges::all_of(filters_, [](auto& each) { return each.kind != CodecKind::kNone; });
    return width_ > 0 && height_ > 0 && filters && space_.IsThere();
}

Status InlineImage::Write() const {
    if (!CanBeWritten()) {
        return Status::kOk;
    }
    OutputPiece piece;
    AppendKeys(piece);
    RETURN_IF_FAILED(piece.Write());
    return WriteData();
}

void InlineImage::AppendKeys(OutputPiece& piece) const {
    piece.Append("/Width ").AppendInteger(width_);
    piece.Append("\n/Height ").AppendInteger(height_);
    piece.Append("\n/BitsPerComponent ").AppendInteger(std::max(bits_, 1)).Append("\n");
    if (stencil_) {
        piece.Append("/ImageMask true\n");
    } else {
        AppendSpace(piece);
    }
    AppendDecodeLine(piece);
    const Resolved intent(DictGet(dictionary_, names::kIntent));
    if (Is(intent.Get(), ObjectType::kName)) {
        piece.Append("/Intent /")
            .Append(CurrentNames().NameText(NameOf(intent.Get()), NameTextMode::kToken))
            .Append("\n");
    }
    const bool interpolate = BooleanOf(Resolved(Entry(names::kInterpolate, names::kI)).Get());
    piece.Append(interpolate ? "/Interpolate true\n" : "/Interpolate false\n");
    AppendFilters(piece);
    piece.Append("ID\n");
}

void InlineImage::AppendSpace(OutputPiece& piece) const {
    if (!IsIndexed()) {
        space_.AppendUse(piece.Append("/ColorSpace "));
        piece.Append("\n");
        return;
    }
    space_.AppendUse(piece.Append("/ColorSpace [/Indexed "));
    const Resolved high(ArrayGet(spaceValue_.Get(), 2));
    const Resolved lookup(ArrayGet(spaceValue_.Get(), 3));
    piece.Append(" ").AppendInteger(IntegerOf(high.Get())).Append(" ");
    AppendStringObject(piece, lookup.Get());
    piece.Append("]\n");
}

/// Compressed data may have any decode array built in, so that only plain samples get the ordinary one.
void InlineImage::AppendDecodeLine(OutputPiece& piece) const {
    const Resolved decode(Entry(names::kDecode, names::kD));
    if (Is(decode.Get(), ObjectType::kArray)) {
        AppendNumbers(piece.Append("/Decode ["), decode.Get());
        piece.Append("]\n");
        return;
    }
    const bool compressed = std::ranges::any_of(filters_, [](auto& each) { return !IsAscii(each.kind); });
    if (compressed) {
        return;
    }
    if (IsIndexed()) {
        piece.Append("/Decode [0 ").AppendInteger((1 << std::clamp(bits_, 1, 16)) - 1).Append("]\n");
        return;
    }
    switch (space_.Family()) {
        case family::kLab:
            piece.Append("/Decode [-100 100 -100 100]\n");  // the prolog puts the lightness in front
            break;
        case family::kDeviceN:
            piece.Append("/Decode [");
            for (std::uint32_t i = 0; i < space_.Components(); ++i) {
                piece.Append("0 1 ");
            }
            piece.Append("]\n");
            break;
        case family::kGray:
        case family::kRgb:
        case family::kCmyk:
        case family::kCalGray:
        case family::kCalRgb:
        case family::kSeparation:
        case family::kIndexed:
            AppendDefaultDecode(piece, space_, bits_);
            break;
        default:
            break;
    }
}

void InlineImage::AppendFilters(OutputPiece& piece) const {
    const std::string_view ascii = IsHexadecimal() ? "/ASCIIHexDecode" : "/ASCII85Decode";
    const bool written =
        !filters_.empty() && IsAscii(filters_.front().kind);  // the ASCII filter is the file's own
    const auto behind = std::span(filters_).subspan(written ? 1 : 0);
    if (behind.empty()) {
        piece.Append("/Filter ").Append(ascii).Append("\n");
        return;
    }
    piece.Append("/Filter [").Append(ascii);
    for (const InlineFilter& filter : behind) {
        piece.Append(" ").Append(FilterName(filter.kind));
    }
    piece.Append("]\n");
    if (std::ranges::none_of(behind,
                             [](auto& each) { return Is(each.parameters, ObjectType::kDictionary); })) {
        return;
    }
    piece.Append("/DecodeParms [null");
    for (const InlineFilter& filter : behind) {
        AppendFilterParameters(piece.Append(" "), filter.parameters);
    }
    piece.Append("]\n");
}

Status InlineImage::WriteData() const {
    if (filters_.empty() || !IsAscii(filters_.front().kind)) {
        return EmbedInlineData(data_.data, CodecKind::kASCII85DecodeEncoder);
    }
    ByteBuffer decoded;
    const Status status = DecodeBytes(filters_.front().kind, data_.data, decoded);
    if (status == Status::kMemoryNotEnough) {
        return status;
    }
    RETURN_IF_FAILED(EmbedInlineData(decoded.Bytes(), IsHexadecimal() ? CodecKind::kASCIIHexDecodeEncoder
                                                                      : CodecKind::kASCII85DecodeEncoder));
    return status;
}

}  // namespace zorvan
