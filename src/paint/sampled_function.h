// Sampled functions: a table of results, interpolated between its entries.
#pragma once

#include "paint/function.h"
#include "pdf/byte_scan.h"

namespace zorvan {

class SampledFunction : public FunctionResource {
public:
    static constexpr std::uint32_t kType = 0;
    using FunctionResource::FunctionResource;

    /// A dictionary where a procedure cannot be (docs/prolog.md tells how procedures are made): for a table
    /// that is larger than a string may be, or for entries that no procedure can be made from. kDecodeError,
    /// recorded, for a damaged table.
    Status AppendBody(OutputPiece& text) override;

private:
    Status AppendDictionary(OutputPiece& text, Bytes samples) const;
};

}  // namespace zorvan
