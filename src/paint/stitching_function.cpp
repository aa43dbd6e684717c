// Writing stitching functions.
#include "paint/stitching_function.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "platform/limits.h"

namespace zorvan {

StitchingFunction::StitchingFunction(ResourceKey key, std::uint32_t kind, FunctionForm form, PdfObject value)
    : FunctionResource(key, kind, form, value) {
    const Resolved functions(Entry(names::kFunctions));
    const std::uint32_t count = std::min(ArrayCount(functions.Get()), limits::kFunctionNumbers);
    for (std::uint32_t i = 0; i < count; ++i) {
        const PdfObject element = ArrayGet(functions.Get(), i);
        Part part;
        if (IsReference(element)) {
            part.used = {ResourceCategory::kFunction, element, static_cast<std::uint32_t>(form)};
        } else {
            part.own = CreateFunction(element, {.number = TakeGeneratedResourceNumber()}, form);
        }
        parts_.push_back(std::move(part));
    }
}

Status StitchingFunction::RegisterUsed() {
    for (Part& part : parts_) {
        if (part.own != nullptr) {
            RETURN_IF_FAILED(part.own->RegisterUsed());
        } else {
            part.used.Register();
        }
    }
    return Status::kOk;
}

Status StitchingFunction::WritePart(const Part& part) {
    return part.own != nullptr ? part.own->WriteResource() : part.used.EmitIfNeeded();
}

Status StitchingFunction::WriteUsed() {
    for (const Part& part : parts_) {
        const Status status = WritePart(part);
        if (Failed(status)) {
            return CurrentOutput().IsRefused() ? status : Fail(Status::kIllegalFunction, Reference());
        }
    }
    return Status::kOk;
}

Status StitchingFunction::AppendBody(OutputPiece& text) {
    constexpr std::string_view kEnd = "]\n";
    text.Append("<</FunctionType 3\n");
    RETURN_IF_FAILED(AppendRequired(text, names::kDomain, kEnd));
    RETURN_IF_FAILED(AppendIfPresent(text, names::kRange, kEnd));
    if (!Is(Resolved(Entry(names::kFunctions)).Get(), ObjectType::kArray)) {
        return Fail(Status::kInvalidDataType, Reference());
    }
    text.Append("/Functions [");
    for (const Part& part : parts_) {
        if (part.own != nullptr) {
            part.own->AppendUse(text);
        } else {
            part.used.AppendUse(text);
        }
        text.Append(" ");
    }
    text.Append("]\n");
    RETURN_IF_FAILED(AppendRequired(text, names::kBounds, kEnd));
    RETURN_IF_FAILED(AppendRequired(text, names::kEncode, kEnd));
    text.Append(">>\n");
    return Status::kOk;
}

}  // namespace zorvan
