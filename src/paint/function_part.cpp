// Registering and writing functions that others use.
#include "paint/function_part.h"

#include "api/current_job.h"

namespace zorvan {

FunctionPart::FunctionPart(PdfObject value, FunctionForm form) {
    if (IsReference(value)) {
        used_ = {ResourceCategory::kFunction, value, static_cast<std::uint32_t>(form)};
    } else {
        own_ = CreateFunction(value, {.number = TakeGeneratedResourceNumber()}, form);
    }
}

Status FunctionPart::Register() {
    if (own_ != nullptr) {
        return own_->RegisterUsed();
    }
    used_.Register();
    return Status::kOk;
}

Status FunctionPart::Write() const {
    return own_ != nullptr ? own_->WriteResource() : used_.EmitIfNeeded();
}

void FunctionPart::AppendUse(OutputPiece& text) const {
    if (const Resource* function = Get()) {
        function->AppendUse(text);
    }
}

}  // namespace zorvan
