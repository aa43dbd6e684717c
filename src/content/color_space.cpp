// What colour spaces have in common, and the ones that stand for another: device spaces, profiles, patterns.
#include "content/color_space.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/cie_spaces.h"
#include "content/color_state.h"
#include "content/device_space.h"
#include "content/indexed_space.h"
#include "content/spot_spaces.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "platform/limits.h"

namespace zorvan {
namespace {

class NamedDeviceSpace : public ColorSpace {
public:
    NamedDeviceSpace(ResourceKey key, const DeviceSpace& space)
        : ColorSpace(key, space.family), space_(space) {}

    /// The prolog has defined it.
    Status WriteResource() override { return Status::kOk; }
    void AppendUse(OutputPiece& piece) const override { piece.Append(space_.text).Append(" "); }
    Status AppendDefinition(OutputPiece& text) override {
        AppendUse(text);
        return Status::kOk;
    }
    [[nodiscard]] std::uint32_t Components() const override { return space_.components; }

private:
    const DeviceSpace& space_;
};

/// The profile itself never reaches the device: its alternate stands for it, or the device space of as many
/// components.
class IccSpace : public ColorSpace {
public:
    IccSpace(ResourceKey key, PdfObject array, std::uint32_t depth)
        : ColorSpace(key, family::kIccBased), profile_(ArrayGet(array, 1)) {
        const PdfObject dictionary = StreamDictionary(profile_.Get());
        components_ = IntegerOf(Resolved(DictGet(dictionary, names::kN)).Get());
        const PdfObject alternate = DictGet(dictionary, names::kAlternate);
        if (!IsNull(Resolved(alternate).Get())) {
            alternate_ = UnderlyingSpace(alternate, depth);
        }
    }

    Status RegisterUsed() override {
        alternate_.Register();
        return Status::kOk;
    }
    Status WriteUsed() override { return alternate_.WriteUsed(); }
    Status AppendDefinition(OutputPiece& text) override {
        if (alternate_.IsThere()) {
            return alternate_.AppendText(text);
        }
        if (const DeviceSpace* device = DeviceSpaceOf(components_)) {
            text.Append(device->text).Append(" ");
        } else {
            RecordError(Status::kIllegalColorSpace, Reference());
        }
        return Status::kOk;
    }
    [[nodiscard]] std::uint32_t Components() const override {
        return static_cast<std::uint32_t>(std::clamp(components_, 0, kMostComponents));
    }

private:
    static constexpr std::int32_t kMostComponents = 32;

    Resolved profile_;
    std::int32_t components_ = 0;
    UnderlyingSpace alternate_;
};

/// The space of patterns; with a space underneath, that of uncoloured patterns.
class PatternSpace : public ColorSpace {
public:
    PatternSpace(ResourceKey key, PdfObject array, std::uint32_t depth)
        : ColorSpace(key, family::kPattern), base_(ArrayGet(array, 1), depth) {}

    Status RegisterUsed() override {
        base_.Register();
        return Status::kOk;
    }
    Status WriteUsed() override { return base_.WriteUsed(); }
    Status AppendDefinition(OutputPiece& text) override {
        text.Append("[/Pattern ");
        RETURN_IF_FAILED(base_.AppendText(text));
        text.Append("]");
        return Status::kOk;
    }
    [[nodiscard]] std::uint32_t Components() const override { return base_.Components(); }

private:
    UnderlyingSpace base_;
};

}  // namespace

Status ColorSpace::WriteResource() {
    RETURN_IF_FAILED(WriteUsed());
    OutputPiece text;
    AppendResourceName(text, Key());
    RETURN_IF_FAILED(AppendDefinition(text.Append(" ")));
    return text.Append(" /ColorSpace defineRes pop\n").Write();
}

void ColorSpace::AppendUse(OutputPiece& piece) const {
    AppendUseOf(piece, Key());
}

void ColorSpace::AppendUseOf(OutputPiece& piece, ResourceKey key) {
    AppendResourceName(piece, key);
    piece.Append(" /ColorSpace findRes ");
}

std::unique_ptr<ColorSpace> CreateColorSpace(PdfObject value, ResourceKey key, std::uint32_t depth) {
    if (depth >= limits::kContentNesting) {
        RecordError(Status::kIllegalColorSpace, value);  // it leads to itself
        return nullptr;
    }
    const Resolved space(value);
    const PdfObject array = space.Get();
    const Resolved first(Is(array, ObjectType::kArray) ? ArrayGet(array, 0) : array);
    const std::uint32_t name = NameOf(first.Get());
    if (const DeviceSpace* device = FindDeviceSpace(name)) {
        return std::make_unique<NamedDeviceSpace>(key, *device);
    }
    if (!Is(array, ObjectType::kArray) && name != names::kPattern) {
        return nullptr;
    }
    switch (name) {
        case names::kCalGray:
            return std::make_unique<CalGraySpace>(key, array);
        case names::kCalRGB:
            return std::make_unique<CalRgbSpace>(key, array);
        case names::kLab:
            return std::make_unique<LabSpace>(key, array);
        case names::kICCBased:
            return std::make_unique<IccSpace>(key, array, depth);
        case names::kIndexed:
            return std::make_unique<IndexedSpace>(key, array, depth);
        case names::kPattern:
            return std::make_unique<PatternSpace>(key, array, depth);
        case names::kSeparation:
            return std::make_unique<SeparationSpace>(key, array, depth);
        case names::kDeviceN:
            return std::make_unique<DeviceNSpace>(key, array, depth);
        default:
            return nullptr;
    }
}

std::unique_ptr<Resource> CreateColorSpaceResource(const ResourceRequest& request) {
    return CreateColorSpace(request.value, request.key);
}

UnderlyingSpace::UnderlyingSpace(PdfObject value, std::uint32_t depth) {
    if (IsReference(value)) {
        used_ = {ResourceCategory::kColorSpace, value};
    } else {
        own_ = CreateColorSpace(value, {}, depth + 1);
        named_ = Is(value, ObjectType::kName);
    }
}

void UnderlyingSpace::Register() {
    if (own_ == nullptr) {
        used_.Register();
    } else {
        static_cast<void>(own_->RegisterUsed());
    }
    const auto* space = own_ == nullptr ? static_cast<ColorSpaceUse*>(used_.Get()) : own_.get();
    components_ = space == nullptr ? 0 : space->Components();
}

Status UnderlyingSpace::WriteUsed() {
    return own_ == nullptr ? used_.EmitIfNeeded() : own_->WriteUsed();
}

Status UnderlyingSpace::AppendText(OutputPiece& text) {
    if (own_ != nullptr) {
        return own_->AppendDefinition(text);
    }
    used_.AppendUse(text);
    return Status::kOk;
}

}  // namespace zorvan
