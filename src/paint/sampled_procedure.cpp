// Writing a sampled function as a procedure.
//
// The procedure begins a dictionary of its own. For input i there stand in it: `prm`i, from the input to a
// place in the table, `_tmp`i; `min`i and `max`i, the samples on both sides of it; `_x`i, the one of them
// that is looked at; and `f`i, which interpolates between the two with what `f`i+1 gives for each. The last f
// reads a sample, that of output `_j`; `out`j scales it.
#include "paint/sampled_procedure.h"

#include <algorithm>

#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/embedded_data.h"
#include "ps/number_array.h"

namespace zorvan {
namespace {

/// Every result takes two samples for each input, one by one.
constexpr std::uint32_t kMostInputs = 8;
constexpr std::uint32_t kMostOutputs = 32;
constexpr std::size_t kMostBytes = 65535;  // that a string may hold

std::uint32_t Pairs(PdfObject array) {
    return ArrayCount(Resolved(array).Get()) / 2;
}

bool IsSampleSize(std::int32_t bits) {
    constexpr std::int32_t kSizes[] = {1, 2, 4, 8, 12, 16, 24, 32};
    return std::ranges::find(kSizes, bits) != std::end(kSizes);
}

}  // namespace

SampledProcedure::SampledProcedure(PdfObject dictionary)
    : bits_(IntegerOf(Resolved(DictGet(dictionary, names::kBitsPerSample)).Get())) {
    const PdfObject domain = DictGet(dictionary, names::kDomain);
    const PdfObject encode = DictGet(dictionary, names::kEncode);
    const Resolved size(DictGet(dictionary, names::kSize));
    inputs_.resize(std::min(Pairs(domain), kMostInputs + 1));
    for (std::uint32_t i = 0; i < inputs_.size(); ++i) {
        Input& input = inputs_[i];
        input.size = IntegerOf(Resolved(ArrayGet(size.Get(), i)).Get());
        input.domain = IntervalAt(domain, i);
        input.encode = i < Pairs(encode) ? IntervalAt(encode, i)
                                         : Interval{.low = 0, .high = static_cast<float>(input.size - 1)};
    }
    const PdfObject range = DictGet(dictionary, names::kRange);
    const PdfObject decode = DictGet(dictionary, names::kDecode);
    outputs_.resize(std::min(Pairs(range), kMostOutputs + 1));
    for (std::uint32_t j = 0; j < outputs_.size(); ++j) {
        outputs_[j].range = IntervalAt(range, j);
        outputs_[j].decode = j < Pairs(decode) ? IntervalAt(decode, j) : outputs_[j].range;
    }
}

SampledProcedure::Interval SampledProcedure::IntervalAt(PdfObject array, std::uint32_t index) {
    const Resolved numbers(array);
    return {.low = NumberAt(numbers.Get(), 2 * index), .high = NumberAt(numbers.Get(), 2 * index + 1)};
}

bool SampledProcedure::CanBeMade(std::size_t bytes) const {
    if (inputs_.empty() || inputs_.size() > kMostInputs || outputs_.empty() ||
        outputs_.size() > kMostOutputs || !IsSampleSize(bits_) || bytes > kMostBytes) {
        return false;
    }
    std::uint64_t needed = outputs_.size() * static_cast<std::uint64_t>(bits_);
    for (const Input& input : inputs_) {
        if (input.size < 1 || needed > bytes * 8) {
            return false;
        }
        needed *= static_cast<std::uint64_t>(input.size);
    }
    return needed <= bytes * 8;
}

Status SampledProcedure::Append(OutputPiece& text, Bytes samples) const {
    constexpr std::size_t kNamesOfInput = 6;
    constexpr std::size_t kOtherNames = 5;  // Sample, pos, rnd, _j and the last f
    const std::size_t names = kNamesOfInput * inputs_.size() + outputs_.size() + kOtherNames;
    text.Append("[").AppendUnsigned(static_cast<std::uint32_t>(names)).Append(" dict begin\n");
    RETURN_IF_FAILED(text.Write());
    text.Clear();
    RETURN_IF_FAILED(EmbedCountedString(samples));
    text.Append("/Sample exch def\n");
    AppendInputSteps(text);
    AppendPosition(text);
    AppendSample(text);
    text.Append("/rnd {65535 mul 0.5 add floor 65535 div} def\n");
    for (std::uint32_t j = 0; j < outputs_.size(); ++j) {
        text.Append("/out").AppendUnsigned(j);
        AppendScaling(text, outputs_[j]);
    }
    text.Append("currentdict end\n");
    AppendEvaluation(text);
    text.Append("} bind aload pop] cvx readonly\n");
    return Status::kOk;
}

void SampledProcedure::AppendInputSteps(OutputPiece& text) const {
    for (std::uint32_t i = 0; i < inputs_.size(); ++i) {
        AppendCoordinate(text, i);
        AppendInterpolation(text, i);
    }
}

/// x -- the place in the table, which is not outside of it
void SampledProcedure::AppendCoordinate(OutputPiece& text, std::uint32_t input) const {
    const auto& [domain, encode, size] = inputs_[input];
    const auto last = static_cast<float>(size - 1);
    text.Append("/prm").AppendUnsigned(input).Append(" {dup ").AppendReal(domain.low).Append(" le {pop ");
    text.AppendReal(std::clamp(encode.low, 0.0F, last)).Append("}\n{dup ").AppendReal(domain.high);
    text.Append(" ge {pop ").AppendReal(std::clamp(encode.high, 0.0F, last)).Append("}\n{");
    text.AppendReal(domain.low).Append(" sub\n").AppendReal(encode.high - encode.low).Append(" mul\n");
    text.AppendReal(domain.high - domain.low).Append(" div ").AppendReal(encode.low).Append(" add 0 ");
    text.AppendReal(last).Append(" 3 2 roll limit} ifelse} ifelse} def\n");
}

/// -- the sample at the place of this input and of all inputs behind it
void SampledProcedure::AppendInterpolation(OutputPiece& text, std::uint32_t input) const {
    const auto numbered = [&](std::string_view before, std::uint32_t number) {
        text.Append(before).AppendUnsigned(number);
    };
    numbered("/f", input);
    numbered(" {/_x", input);
    numbered(" min", input);
    numbered(" def f", input + 1);
    numbered("\n/_x", input);
    numbered(" max", input);
    numbered(" def f", input + 1);
    numbered("\n_tmp", input);
    numbered(" min", input);
    numbered(" max", input);
    text.Append(" 5 3 roll int\n} def\n");
}

/// -- the sample's first bit: the first input varies fastest, and all outputs of a place stand together
void SampledProcedure::AppendPosition(OutputPiece& text) const {
    text.Append("/pos {");
    for (std::size_t i = inputs_.size(); i-- > 0;) {
        text.Append("_x").AppendUnsigned(static_cast<std::uint32_t>(i));
        text.Append(i + 1 == inputs_.size() ? " " : " add ");
        const std::size_t factor = i == 0 ? outputs_.size() : static_cast<std::size_t>(inputs_[i - 1].size);
        text.AppendUnsigned(static_cast<std::uint32_t>(factor)).Append(" mul ");
    }
    text.Append("_j add ").AppendInteger(bits_).Append(" mul} def\n");
}

/// -- the sample's number
void SampledProcedure::AppendSample(OutputPiece& text) const {
    constexpr std::string_view kJoin = " getinterval 0 exch {exch 256 mul add} forall";
    text.Append("/f").AppendUnsigned(static_cast<std::uint32_t>(inputs_.size())).Append(" {pos ");
    if (bits_ == 12) {
        text.Append("dup 7 and exch -3 bitshift Sample exch 2").Append(kJoin);
        text.Append(" exch 4 sub bitshift 4095 and");
    } else if (bits_ < 8) {
        text.Append("dup 7 and exch -3 bitshift Sample exch get exch ").AppendInteger(8 - bits_);
        text.Append(" sub bitshift ").AppendInteger((1 << bits_) - 1).Append(" and");
    } else if (bits_ == 8) {
        text.Append("-3 bitshift Sample exch get");
    } else {
        text.Append("-3 bitshift Sample exch ").AppendInteger(bits_ / 8).Append(kJoin);
    }
    text.Append("} def\n");
}

/// the sample's number -- the result
void SampledProcedure::AppendScaling(OutputPiece& text, const Output& output) const {
    const auto largest = static_cast<std::uint32_t>((std::uint64_t{1} << static_cast<unsigned>(bits_)) - 1);
    text.Append(" {").AppendReal(output.decode.high - output.decode.low).Append(" ");
    text.AppendUnsigned(largest).Append(" div mul ").AppendReal(output.decode.low).Append(" add\n");
    text.AppendReal(output.range.low).Append(" ").AppendReal(output.range.high);
    text.Append(" 3 2 roll limit rnd} def\n");
}

void SampledProcedure::AppendEvaluation(OutputPiece& text) const {
    text.Append("{begin\n");
    for (std::size_t each = inputs_.size(); each-- > 0;) {
        const auto i = static_cast<std::uint32_t>(each);
        text.Append("/_tmp").AppendUnsigned(i).Append(" exch prm").AppendUnsigned(i).Append(" def\n");
        text.Append("/min").AppendUnsigned(i).Append(" _tmp").AppendUnsigned(i).Append(" cvi def\n");
        text.Append("/max").AppendUnsigned(i).Append(" _tmp").AppendUnsigned(i).Append(" ceiling cvi def\n");
    }
    for (std::uint32_t j = 0; j < outputs_.size(); ++j) {
        text.Append("/_j ").AppendUnsigned(j).Append(" def f0 out").AppendUnsigned(j).Append("\n");
    }
    text.Append("end");
}

}  // namespace zorvan
