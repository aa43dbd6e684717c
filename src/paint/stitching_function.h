// Stitching functions: several functions of one input, each for a part of the domain.
#pragma once

#include <vector>

#include "paint/function.h"
#include "paint/function_part.h"

namespace zorvan {

class StitchingFunction : public FunctionResource {
public:
    static constexpr std::uint32_t kType = 3;
    /// `depth` counts the functions around it.
    StitchingFunction(ResourceKey key, FunctionForm form, PdfObject value, std::uint32_t depth);

    Status RegisterUsed() override;
    /// Writes the functions of the parts. kIllegalFunction, recorded, when one of them cannot be written.
    Status WriteUsed() override;
    /// A dictionary, whatever form was asked for.
    Status AppendBody(OutputPiece& text) override;

private:
    std::vector<FunctionPart> parts_;
};

}  // namespace zorvan
