// What functions have in common, and exponential and calculator functions.
#include "paint/function.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "paint/sampled_function.h"
#include "paint/stitching_function.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "platform/limits.h"
#include "ps/device_parameters.h"
#include "ps/number_array.h"

namespace zorvan {
namespace {

constexpr std::string_view kDictionaryEnd = "]\n";
constexpr std::string_view kProcedureEnd = "] def\n";

class ExponentialFunction : public FunctionResource {
public:
    static constexpr std::int32_t kType = 2;
    using FunctionResource::FunctionResource;

    Status AppendBody(OutputPiece& text) override {
        const bool dictionary = Form() == FunctionForm::kDictionary;
        const std::string_view end = dictionary ? kDictionaryEnd : kProcedureEnd;
        text.Append(dictionary ? "<</FunctionType 2\n" : "[7 dict begin\n");
        RETURN_IF_FAILED(AppendRequired(text, names::kDomain, end));
        RETURN_IF_FAILED(AppendIfPresent(text, names::kRange, end));
        RETURN_IF_FAILED(AppendResults(text, names::kC0, "/C0 [0", end));
        RETURN_IF_FAILED(AppendResults(text, names::kC1, "/C1 [1", end));
        AppendExponent(text, dictionary ? "\n" : " def\n");
        if (dictionary) {
            text.Append(">>\n");
        } else {
            AppendEvaluation(text);
        }
        return Status::kOk;
    }

private:
    Status AppendResults(OutputPiece& text, std::uint32_t key, std::string_view otherwise,
                         std::string_view end) const {
        if (!IsNull(Resolved(Entry(key)).Get())) {
            return AppendRequired(text, key, end);
        }
        text.Append(otherwise).Append(end);
        return Status::kOk;
    }

    void AppendExponent(OutputPiece& text, std::string_view end) const {
        const Resolved exponent(Entry(names::kN));
        if (!IsNull(exponent.Get())) {
            text.Append("/N ").AppendOperand(exponent.Get()).Append(end);
        }
    }

    void AppendEvaluation(OutputPiece& text) const {
        const Resolved results(Entry(names::kC0));
        text.Append("/DimOut ")
            .AppendUnsigned(IsNull(results.Get()) ? 1 : ArrayCount(results.Get()))
            .Append(" def\ncurrentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx ")
            .Append("readonly\n");
    }
};

/// True for braces that match, the outermost pair around everything but white space and whole comments.
/// Strings and binary tokens, which could hide a brace, are not part of these programs.
bool IsOneProcedure(Bytes program) {
    int depth = 0;
    bool closed = false;
    bool comment = false;
    for (const std::uint8_t letter : program) {
        if (comment) {
            comment = letter != '\n' && letter != '\r' && letter != '\f';
            continue;
        }
        comment = letter == '%';
        depth += letter == '{' ? 1 : letter == '}' ? -1 : 0;
        const bool blank = letter <= ' ' || comment;
        const bool misplaced = (closed && !blank) || (depth == 0 && letter != '}' && !blank) || depth < 0;
        if (misplaced || letter == '(' || letter == '<' || letter >= 0x80) {
            return false;
        }
        closed = closed || (letter == '}' && depth == 0);
    }
    return closed && !comment;
}

/// A program for the device, which brings its own braces.
class CalculatorFunction : public FunctionResource {
public:
    static constexpr std::int32_t kType = 4;
    using FunctionResource::FunctionResource;

    /// kDecodeError, recorded, for what is not one procedure: the device would run on into what stands behind
    /// it.
    Status AppendBody(OutputPiece& text) override {
        StreamReader reader(Value());
        ByteBuffer program;
        RETURN_IF_FAILED(DecodeWholeStream(reader, Reference(), program));
        if (!IsOneProcedure(program.Bytes())) {
            return Fail(Status::kDecodeError, Reference());
        }
        text.Append(program.Bytes()).Append(" bind\n");
        return Status::kOk;
    }
};

}  // namespace

Status FunctionResource::WriteResource() {
    RETURN_IF_FAILED(WriteUsed());
    OutputPiece text;
    AppendResourceName(text, Key());
    RETURN_IF_FAILED(AppendBody(text.Append(" ")));
    return text.Append(Category()).Append(" defineRes pop\n").Write();
}

void FunctionResource::AppendUse(OutputPiece& piece) const {
    AppendResourceName(piece, Key());
    piece.Append(" ").Append(Category()).Append(" findRes ");
}

std::string_view FunctionResource::Category() const {
    return form_ == FunctionForm::kDictionary ? "/FunctionDictionary" : "/Function";
}

PdfObject FunctionResource::Entry(std::uint32_t key) const {
    return DictGet(DictionaryOf(Value()), key);
}

Status FunctionResource::AppendRequired(OutputPiece& text, std::uint32_t key, std::string_view end) const {
    const Resolved array(Entry(key));
    if (!Is(array.Get(), ObjectType::kArray)) {
        return Fail(Status::kInvalidDataType, Reference());
    }
    AppendKey(text, key).Append("[");
    AppendNumbers(text, array.Get(), std::min(ArrayCount(array.Get()), limits::kFunctionNumbers));
    text.Append(end);
    return Status::kOk;
}

Status FunctionResource::AppendIfPresent(OutputPiece& text, std::uint32_t key, std::string_view end) const {
    return IsNull(Resolved(Entry(key)).Get()) ? Status::kOk : AppendRequired(text, key, end);
}

void FunctionResource::AppendIfArray(OutputPiece& text, std::uint32_t key, std::string_view end) const {
    if (Is(Resolved(Entry(key)).Get(), ObjectType::kArray)) {
        static_cast<void>(AppendRequired(text, key, end));
    }
}

std::unique_ptr<FunctionResource> CreateFunction(PdfObject value, ResourceKey key, FunctionForm form,
                                                 std::uint32_t depth) {
    if (depth >= limits::kContentNesting) {
        RecordError(Status::kIllegalFunction, value);  // it leads to itself
        return nullptr;
    }
    const Resolved function(value);
    const bool stream = Is(function.Get(), ObjectType::kStream);
    if (!stream && !Is(function.Get(), ObjectType::kDictionary)) {
        return nullptr;
    }
    const Resolved type(DictGet(DictionaryOf(function.Get()), names::kFunctionType));
    if (!IsNumber(type.Get())) {
        return nullptr;
    }
    switch (const auto kind = static_cast<std::uint32_t>(IntegerOf(type.Get())); kind) {
        case SampledFunction::kType:
            return std::make_unique<SampledFunction>(key, kind, form, function.Get());
        case ExponentialFunction::kType:
            return std::make_unique<ExponentialFunction>(key, kind, form, function.Get());
        case StitchingFunction::kType:
            return std::make_unique<StitchingFunction>(key, form, function.Get(), depth);
        case CalculatorFunction::kType:
            return std::make_unique<CalculatorFunction>(key, kind, form, function.Get());
        default:
            return nullptr;
    }
}

std::unique_ptr<Resource> CreateFunctionResource(const ResourceRequest& request) {
    return CreateFunction(request.value, request.key, static_cast<FunctionForm>(request.use));
}

}  // namespace zorvan
