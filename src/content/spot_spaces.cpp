// Writing Separation and DeviceN spaces.
#include "content/spot_spaces.h"

#include <algorithm>

#include "api/current_job.h"
#include "content/color_state.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "platform/limits.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

std::string ColorantName(PdfObject value) {
    return CurrentNames().NameText(NameOf(Resolved(value).Get()), NameTextMode::kString);
}

std::vector<std::string> ColorantNames(PdfObject value) {
    const Resolved array(value);
    const std::uint32_t count = std::min(ArrayCount(array.Get()), limits::kNumbers);
    std::vector<std::string> colorants;
    for (std::uint32_t i = 0; i < count; ++i) {
        colorants.push_back(ColorantName(ArrayGet(array.Get(), i)));
    }
    return colorants;
}

void AppendColorant(OutputPiece& text, const std::string& colorant) {
    text.Append("(").Append(colorant).Append(") ");
}

UsedResource UsedFunction(PdfObject value, FunctionForm form) {
    return {ResourceCategory::kFunction, value, static_cast<std::uint32_t>(form)};
}

}  // namespace

SeparationSpace::SeparationSpace(ResourceKey key, PdfObject array, std::uint32_t depth)
    : ColorSpace(key, family::kSeparation),
      colorant_(ColorantName(ArrayGet(array, 1))),
      alternate_(ArrayGet(array, 2), depth) {
    const PdfObject function = ArrayGet(array, 3);
    if (IsReference(function)) {
        transform_ = UsedFunction(function, FunctionForm::kDictionary);
    } else {
        ownTransform_ = CurrentRegistry().BuildAlone<FunctionUse>(ResourceCategory::kFunction,
                                                                  {.key = {}, .value = function});
    }
}

Status SeparationSpace::RegisterUsed() {
    alternate_.Register();
    transform_.Register();
    return ownTransform_ == nullptr ? Status::kOk : ownTransform_->RegisterUsed();
}

Status SeparationSpace::WriteUsed() {
    RETURN_IF_FAILED(alternate_.WriteUsed());
    return ownTransform_ == nullptr ? transform_.EmitIfNeeded() : ownTransform_->WriteUsed();
}

Status SeparationSpace::AppendDefinition(OutputPiece& text) {
    AppendColorant(text.Append("[/Separation "), colorant_);
    RETURN_IF_FAILED(alternate_.AppendText(text));
    text.Append(" ");
    if (ownTransform_ == nullptr) {
        transform_.AppendUse(text);
    } else {
        RETURN_IF_FAILED(ownTransform_->AppendBody(text));
    }
    text.Append("]");
    return Status::kOk;
}

DeviceNSpace::DeviceNSpace(ResourceKey key, PdfObject array, std::uint32_t depth)
    : ColorSpace(key, family::kDeviceN),
      colorants_(ColorantNames(ArrayGet(array, 1))),
      alternate_(ArrayGet(array, 2), depth),
      transform_(UsedFunction(ArrayGet(array, 3), FunctionForm::kProcedure)) {}

Status DeviceNSpace::RegisterUsed() {
    alternate_.Register();
    transform_.Register();
    return Status::kOk;
}

Status DeviceNSpace::WriteUsed() {
    RETURN_IF_FAILED(alternate_.WriteUsed());
    return transform_.EmitIfNeeded();
}

Status DeviceNSpace::AppendDefinition(OutputPiece& text) {
    text.Append("[/DeviceN [");
    for (const std::string& colorant : colorants_) {
        AppendColorant(text, colorant);
    }
    text.Append("] ");
    RETURN_IF_FAILED(alternate_.AppendText(text));
    transform_.AppendUse(text.Append(" "));
    text.Append("]");
    return Status::kOk;
}

}  // namespace zorvan
