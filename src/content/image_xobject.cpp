// Writing images.
#include "content/image_xobject.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/color_state.h"
#include "content/opi.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "ps/embedded_data.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

bool Flag(PdfObject value) {
    return BooleanOf(Resolved(value).Get());
}

}  // namespace

ImageXObject::ImageXObject(ResourceKey key, OwnedObject stream)
    : PaintedUse(key, 0),
      stream_(std::move(stream)),
      stencil_(Flag(Entry(names::kImageMask))),
      space_(stencil_ ? MakeName(names::kDeviceGray) : Entry(names::kColorSpace)) {
    const PdfObject mask = Entry(names::kMask);
    const Resolved value(mask);
    if (Is(value.Get(), ObjectType::kStream) && IsReference(mask)) {
        imageKind_ = ImageKind::kStencilMasked;
        maskKey_ = {mask.payload, mask.type};
    } else if (Is(value.Get(), ObjectType::kArray)) {
        imageKind_ = ImageKind::kColorKeyed;
    }
}

PdfObject ImageXObject::Entry(std::uint32_t key) const {
    return DictGet(StreamDictionary(stream_.Get()), key);
}

/// The file may leave the number out where the data itself tells it.
std::int32_t ImageXObject::Bits() const {
    const std::int32_t bits = IntegerOf(Resolved(Entry(names::kBitsPerComponent)).Get());
    if (stencil_ || bits > 0) {
        return stencil_ ? 1 : bits;
    }
    const StreamReader reader(stream_.Get());
    const bool fax = !reader.Filters().empty() && reader.Filters().back().name == names::kCCITTFaxDecode;
    return fax ? 1 : 8;
}

Status ImageXObject::RegisterUsed() {
    space_.Register();
    if (imageKind_ != ImageKind::kStencilMasked) {
        return Status::kOk;
    }
    // A mask is an image like any other; the fault of one that is none is the image's.
    static_cast<void>(CurrentRegistry().Register(
        ResourceCategory::kXObject,
        {.key = maskKey_, .value = MakeReference(maskKey_.number, maskKey_.generation)}));
    return Status::kOk;
}

void ImageXObject::MarkDrawn() {
    drawnIn_ = CurrentRegistry().PageSerial();
    if (imageKind_ == ImageKind::kStencilMasked) {
        CurrentRegistry().MarkDrawn(ResourceCategory::kXObject, maskKey_);
    }
}

const ImageXObject* ImageXObject::Mask() const {
    const auto* mask =
        dynamic_cast<const ImageXObject*>(CurrentRegistry().GetObject(ResourceCategory::kXObject, maskKey_));
    return mask != nullptr && mask->stencil_ && mask->CanBePainted() ? mask : nullptr;
}

bool ImageXObject::CanBePainted() const {
    return !missing_ && drawnIn_ == CurrentRegistry().PageSerial() && Fault() == Status::kOk;
}

Status ImageXObject::Fault() const {
    if (IntegerOf(Resolved(Entry(names::kWidth)).Get()) <= 0 ||
        IntegerOf(Resolved(Entry(names::kHeight)).Get()) <= 0) {
        return Status::kIllegalXObject;
    }
    if (!space_.IsThere()) {
        return Status::kUndefinedColorSpace;
    }
    return imageKind_ == ImageKind::kStencilMasked && Mask() == nullptr ? Status::kUnsupportedType3Image
                                                                        : Status::kOk;
}

Status ImageXObject::WriteResource() {
    if (drawnIn_ != CurrentRegistry().PageSerial()) {
        return Status::kOk;
    }
    missing_ = !HasDeviceFilters(stream_.Get());
    if (missing_) {
        RecordError(Status::kDecodeError, Reference());
        return Status::kOk;
    }
    RETURN_IF_FAILED(space_.EmitIfNeeded());
    if (imageKind_ == ImageKind::kStencilMasked) {
        RETURN_IF_FAILED(CurrentRegistry().EmitIfNeeded(ResourceCategory::kXObject, maskKey_));
    }
    if (Fault() != Status::kOk) {
        return Status::kOk;  // told where it is painted
    }
    OutputPiece name;
    AppendUse(name);
    RETURN_IF_FAILED(name.Write());
    RETURN_IF_FAILED(
        EmbedStream(stream_.Get(), Reference(), stencil_ ? DataIntent::kMask : DataIntent::kImage));
    return WriteOutput("/DataSource defineRes pop\n");
}

Status ImageXObject::Paint(ContentKind /*kind*/) {
    const Status fault = Fault();
    if (missing_ || fault != Status::kOk) {
        RecordError(fault, Reference());
        return Status::kOk;
    }
    const OpiBracket opi(StreamDictionary(stream_.Get()));
    RETURN_IF_FAILED(opi.Begin());
    RETURN_IF_FAILED(WriteImage());
    return opi.End();
}

Status ImageXObject::WriteImage() const {
    OutputPiece piece;
    if (stencil_) {
        AppendDictionary(piece, 1);
        return piece.Append("\nimagemask\n").Write();
    }
    space_.AppendUse(piece);
    piece.Append(" setcolorspace\n");
    if (imageKind_ == ImageKind::kStencilMasked) {
        AppendMasked(piece, *Mask());
    } else {
        AppendDictionary(piece, imageKind_ == ImageKind::kColorKeyed ? 4 : 1);
    }
    return piece.Append("\nimage\n").Write();
}

void ImageXObject::AppendMasked(OutputPiece& piece, const ImageXObject& mask) const {
    mask.AppendDictionary(piece.Append("<</ImageType 3\n/InterleaveType 3\n/MaskDict "), 1);
    AppendDictionary(piece.Append("\n/DataDict "), 1);
    piece.Append("\n>>");
}

void ImageXObject::AppendDictionary(OutputPiece& piece, std::int32_t imageType) const {
    const std::int32_t width = IntegerOf(Resolved(Entry(names::kWidth)).Get());
    const std::int32_t height = IntegerOf(Resolved(Entry(names::kHeight)).Get());
    piece.Append("<</ImageType ").AppendInteger(imageType);
    piece.Append("\n/Width ").AppendInteger(width);
    piece.Append("\n/Height ").AppendInteger(height);
    piece.Append("\n/BitsPerComponent ").AppendInteger(Bits());
    piece.Append("\n/ImageMatrix [").AppendInteger(width).Append(" 0 0 -").AppendInteger(height);
    piece.Append(" 0 ").AppendInteger(height).Append("]\n");
    if (imageType == 4) {
        AppendNumbers(piece.Append("/MaskColor ["), Entry(names::kMask));
        piece.Append("]\n");
    }
    AppendDecode(piece, Entry(names::kDecode), space_, Bits());
    piece.Append(Flag(Entry(names::kInterpolate)) ? "/Interpolate true\n" : "/Interpolate false\n");
    const Resolved intent(Entry(names::kIntent));
    if (Is(intent.Get(), ObjectType::kName)) {
        piece.Append("/Intent /")
            .Append(CurrentNames().NameText(NameOf(intent.Get()), NameTextMode::kToken))
            .Append("\n");
    }
    AppendUse(piece.Append("/DataSource "));
    piece.Append(" /DataSource findRes\n>>");
}

}  // namespace zorvan
