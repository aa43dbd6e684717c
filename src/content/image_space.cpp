// Colour spaces of images and the decode arrays that go with them.
#include "content/image_space.h"

#include <algorithm>

#include "content/color_state.h"
#include "content/device_space.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_scope.h"

namespace zorvan {
namespace {

/// The name of a space that is nothing but a name: /DeviceRGB or [/DeviceRGB].
std::uint32_t BareName(PdfObject space) {
    const bool wrapped = ArrayCount(space) == 1;
    return NameOf(Resolved(wrapped ? ArrayGet(space, 0) : space).Get());
}

}  // namespace

ImageSpace::ImageSpace(PdfObject value) : device_(FindDeviceSpace(BareName(Resolved(value).Get()))) {
    if (device_ == nullptr) {
        used_ = {ResourceCategory::kColorSpace, value};
    }
}

ImageSpace::ImageSpace(PdfObject value, const ResourceScope* scope) {
    const std::uint32_t name = BareName(Resolved(value).Get());
    device_ = FindInlineDeviceSpace(name);
    if (device_ != nullptr) {
        return;
    }
    const ScopeEntry* entry = scope == nullptr ? nullptr : scope->Find(ResourceCategory::kColorSpace, name);
    if (entry != nullptr) {
        used_ = {ResourceCategory::kColorSpace, entry->key};
    } else {
        used_ = {ResourceCategory::kColorSpace, value};
    }
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
        used_.AppendUse(piece);
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
            piece.Append("/Decode [0 100");
            for (const PdfObject number : space.LabRange()) {
                piece.Append(" ").AppendOperand(number);
            }
            piece.Append("]\n");
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
