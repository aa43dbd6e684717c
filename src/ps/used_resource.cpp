// Registering and naming what a resource uses.
#include "ps/used_resource.h"

#include "api/current_job.h"
#include "ps/resource_registry.h"

namespace zorvan {

UsedResource::UsedResource(ResourceCategory category, PdfObject value, std::uint32_t use)
    : category_(category), use_(use), value_(CloneObject(value)) {
    if (IsReference(value)) {
        key_ = {value.payload, value.type};
    }
}

void UsedResource::Register() {
    if (IsNull(value_.Get()) || !CurrentRegistry().Builds(category_)) {
        return;
    }
    if (key_.number == 0) {
        key_.number = TakeGeneratedResourceNumber();
    }
    static_cast<void>(
        CurrentRegistry().Register(category_, {.key = key_, .value = value_.Get(), .use = use_}));
}

Status UsedResource::EmitIfNeeded() const {
    return CurrentRegistry().EmitIfNeeded(category_, key_);
}

Resource* UsedResource::Get() const {
    return CurrentRegistry().GetObject(category_, key_);
}

void UsedResource::AppendUse(OutputPiece& piece) const {
    if (const Resource* resource = Get()) {
        resource->AppendUse(piece);
    }
}

}  // namespace zorvan
