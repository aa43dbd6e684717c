// A function that a stitching function or a shading uses: referred to, or given in its own dictionary.
#pragma once

#include <memory>

#include "paint/function.h"
#include "ps/used_resource.h"

namespace zorvan {

class FunctionPart {
public:
    /// `value` is a reference or the function itself, which gets a number of its own, and is not kept.
    /// `depth` counts the functions around it.
    FunctionPart(PdfObject value, FunctionForm form, std::uint32_t depth = 0);

    Status Register();
    /// Writes the function's definition; that of a referenced one only when it is not written yet.
    Status Write() const;

    /// Null for what is no function.
    [[nodiscard]] const Resource* Get() const { return own_ != nullptr ? own_.get() : used_.Get(); }
    /// Appends the text that fetches it; nothing for what is no function.
    void AppendUse(OutputPiece& text) const;

private:
    std::unique_ptr<FunctionResource> own_;
    UsedResource used_;
};

}  // namespace zorvan
