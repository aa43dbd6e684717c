// Writing stitching functions.
#include "paint/stitching_function.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "platform/limits.h"
#include "ps/output.h"

namespace zorvan {

StitchingFunction::StitchingFunction(ResourceKey key, FunctionForm form, PdfObject value, std::uint32_t depth)
    : FunctionResource(key, kType, form, value) {
    const Resolved functions(Entry(names::kFunctions));
    const std::uint32_t count = std::min(ArrayCount(functions.Get()), limits::kFunctionNumbers);
    for (std::uint32_t i = 0; i < count; ++i) {
        parts_.emplace_back(ArrayGet(functions.Get(), i), form, depth + 1);
    }
}

Status StitchingFunction::RegisterUsed() {
    for (FunctionPart& part : parts_) {
        RETURN_IF_FAILED(part.Register());
    }
    return Status::kOk;
}

Status StitchingFunction::WriteUsed() {
    for (const FunctionPart& part : parts_) {
        const Status status = part.Write();
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
    for (const FunctionPart& part : parts_) {
        part.AppendUse(text);
        text.Append(" ");
    }
    text.Append("]\n");
    RETURN_IF_FAILED(AppendRequired(text, names::kBounds, kEnd));
    RETURN_IF_FAILED(AppendRequired(text, names::kEncode, kEnd));
    text.Append(">>\n");
    return Status::kOk;
}

}  // namespace zorvan
