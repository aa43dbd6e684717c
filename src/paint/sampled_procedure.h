// A sampled function as a procedure of PostScript, for what the device wants a procedure for.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

class SampledProcedure {
public:
    /// `dictionary` is the function's, and is not kept.
    explicit SampledProcedure(PdfObject dictionary);

    /// False without inputs, outputs, a number of bits and a size that fit together, or for a table of so
    /// many bytes that it is larger than a string may be.
    [[nodiscard]] bool CanBeMade(std::size_t bytes) const;

    /// Appends the procedure, with the table behind what `text` holds until then: an array of a dictionary,
    /// which holds the table and the steps, and of what uses them.
    Status Append(OutputPiece& text, Bytes samples) const;

private:
    struct Interval {
        float low = 0;
        float high = 1;
    };
    struct Input {
        Interval domain;
        Interval encode;
        std::int32_t size = 0;
    };
    struct Output {
        Interval range;
        Interval decode;
    };
    static Interval IntervalAt(PdfObject array, std::uint32_t index);

    void AppendInputSteps(OutputPiece& text) const;
    void AppendCoordinate(OutputPiece& text, std::uint32_t input) const;
    void AppendInterpolation(OutputPiece& text, std::uint32_t input) const;
    void AppendSample(OutputPiece& text) const;
    void AppendPosition(OutputPiece& text) const;
    void AppendEvaluation(OutputPiece& text) const;
    void AppendScaling(OutputPiece& text, const Output& output) const;

    std::vector<Input> inputs_;
    std::vector<Output> outputs_;
    std::int32_t bits_;
};

}  // namespace zorvan
