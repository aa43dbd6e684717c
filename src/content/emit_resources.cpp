// The emitters that use a resource by its name: graphics states, shadings, XObjects.
#include "api/current_job.h"
#include "content/interpreter.h"
#include "ps/resource_registry.h"
#include "ps/resource_scope.h"

namespace zorvan {

Resource* ContentInterpreter::FindAnyResource(ResourceCategory category, std::uint32_t name) const {
    const ScopeEntry* entry = scope_ == nullptr ? nullptr : scope_->Find(category, name);
    return entry == nullptr ? nullptr : CurrentRegistry().GetObject(category, entry->key);
}

Status ContentInterpreter::SetExtGState(const OperatorRow& row) {
    const OwnedObject name = operands_.Pop();
    OutputPiece& line = Line();
    const auto* state = FindResource<ExtGStateUse>(ResourceCategory::kExtGState, NameOf(name.Get()));
    if (state == nullptr) {
        return line.Append(row.text).Write();
    }
    state->AppendUse(line);
    RETURN_IF_FAILED(line.Append(row.text).Write());
    // Written for every state, whether or not it speaks of overprint: the device must not keep the last
    // one's.
    return WriteOutput(state->OverprintsFills() ? "true setoverprint\n" : "false setoverprint\n");
}

Status ContentInterpreter::PaintShading(const OperatorRow& /*row*/) {
    const OwnedObject name = operands_.Pop();
    return PaintNamed(ResourceCategory::kShading, NameOf(name.Get()));
}

Status ContentInterpreter::PaintXObject(const OperatorRow& /*row*/) {
    const OwnedObject name = operands_.Pop();
    if (!Is(name.Get(), ObjectType::kName)) {
        return Status::kInvalidDataType;
    }
    return PaintNamed(ResourceCategory::kXObject, NameOf(name.Get()));
}

Status ContentInterpreter::PaintNamed(ResourceCategory category, std::uint32_t name) {
    auto* painted = FindResource<PaintedUse>(category, name);
    return painted == nullptr ? Status::kOk : painted->Paint(kind_);
}

}  // namespace zorvan
