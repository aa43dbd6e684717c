// Colour spaces of images and the decode arrays that go with them.
#include "content/image_space.h"

#include <algorithm>
#include <array>

#include "api/current_job.h"
#include "content/color_state.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"
#include "ps/resource_scope.h"

namespace zorvan {
namespace {

constexpr std::array<DeviceSpace, 3> kDeviceSpaces = {{
    {names::kDeviceGray, names::kG, "DefaultGray", family::kGray, 1},
    {names::kDeviceRGB, names::kRGB, "DefaultRGB", family::kRgb, 3},
    {names::kDeviceCMYK, names::kCMYK, "DefaultCMYK", family::kCmyk, 4},
}};

}  // namespace

const DeviceSpace* FindDeviceSpace(std::uint32_t name) {
    const auto* const found = std::ranges::find_if(kDeviceSpaces, [name](const DeviceSpace& each) {
        return name != 0 && (each.name == name || each.abbreviation == name);
    });
    return found == kDeviceSpaces.end() ? nullptr : found;
}

ImageSpace::ImageSpace(PdfObject value, const ResourceScope* scope) {
    const Resolved space(value);
    const bool wrapped = ArrayCount(space.Get()) == 1;  // [/DeviceRGB]
    const Resolved name(wrapped ? ArrayGet(space.Get(), 0) : space.Get());
    device_ = FindDeviceSpace(NameOf(name.Get()));
    if (device_ != nullptr) {
        return;
    }
    const ScopeEntry* entry =
        scope == nullptr ? nullptr : scope->Find(ResourceCategory::kColorSpace, NameOf(name.Get()));
    if (entry != nullptr) {
        key_ = entry->key;
    } else if (IsReference(value)) {
        key_ = {value.payload, value.type};
        value_ = OwnedObject(value);
    } else {
        value_ = OwnedObject(CloneObject(value));
    }
}

void ImageSpace::Register() {
    if (device_ != nullptr || IsNull(value_.Get())) {
        return;
    }
    if (key_.number == 0) {
        key_.number = TakeGeneratedResourceNumber();
    }
    // Recorded where it cannot be built; the image is then left out.
    static_cast<void>(
        CurrentRegistry().Register(ResourceCategory::kColorSpace, {.key = key_, .value = value_.Get()}));
}

Status ImageSpace::EmitIfNeeded() const {
    return device_ != nullptr ? Status::kOk
                              : CurrentRegistry().EmitIfNeeded(ResourceCategory::kColorSpace, key_);
}

const ColorSpaceUse* ImageSpace::Space() const {
    return static_cast<const ColorSpaceUse*>(
        CurrentRegistry().GetObject(ResourceCategory::kColorSpace, key_));
}

std::uint32_t ImageSpace::Family() const {
    return device_ != nullptr ? device_->family : Space()->Family();
}

std::uint32_t ImageSpace::Components() const {
    return device_ != nullptr ? device_->components : Space()->Components();
}

void ImageSpace::AppendUse(OutputPiece& piece) const {
    if (device_ != nullptr) {
        piece.Append(device_->text);
    } else {
        Space()->AppendUse(piece);
    }
}

void AppendDecode(OutputPiece& piece, PdfObject decode, const ImageSpace& space, std::int32_t bits) {
    const Resolved array(decode);
    if (!Is(array.Get(), ObjectType::kArray)) {
        AppendDefaultDecode(piece, space, bits);
        return;
    }
    AppendNumbers(piece.Append("/Decode ["), array.Get());
    piece.Append("]\n");
}

void AppendDefaultDecode(OutputPiece& piece, const ImageSpace& space, std::int32_t bits) {
    switch (space.Family()) {
        case family::kIndexed:
            piece.Append("/Decode [0 ").AppendInteger((1 << std::clamp(bits, 1, 16)) - 1).Append("]\n");
            return;
        case family::kLab:
            // Lightness, and the range that the space has when it names none.
            piece.Append("/Decode [0 100 -100 100 -100 100]\n");
            return;
        default:
            break;
    }
    piece.Append("/Decode [");
    for (std::uint32_t i = 0; i < space.Components(); ++i) {
        piece.Append(i == 0 ? "0 1" : " 0 1");
    }
    piece.Append("]\n");
}

}  // namespace zorvan
