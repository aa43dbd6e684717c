// Registering and writing functions that others use.
#include "paint/function_part.h"

#include "api/current_job.h"
#include "pdf/pdf_file.h"

namespace zorvan {
namespace {

/// Arrays that name each other make 2^40 functions of forty objects; a function of a real file has some 250
/// bytes.
constexpr std::uint64_t kFunctionSteps = 8000;

}  // namespace

FunctionPart::FunctionPart(PdfObject value, FunctionForm form, std::uint32_t depth) {
    if (IsReference(value)) {
        used_ = {ResourceCategory::kFunction, value, static_cast<std::uint32_t>(form)};
    } else {
        CurrentPdfFile()->Charge(kFunctionSteps);
        own_ = CreateFunction(value, {.number = TakeGeneratedResourceNumber()}, form, depth);
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
