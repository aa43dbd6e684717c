// Writing sampled functions.
#include "paint/sampled_function.h"

#include "paint/sampled_procedure.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "ps/embedded_data.h"

namespace zorvan {

Status SampledFunction::AppendBody(OutputPiece& text) {
    StreamReader reader(Value());
    ByteBuffer samples;
    RETURN_IF_FAILED(DecodeWholeStream(reader, Reference(), samples));
    if (Form() == FunctionForm::kProcedure) {
        const SampledProcedure procedure(StreamDictionary(Value()));
        if (procedure.CanBeMade(samples.Size())) {
            return procedure.Append(text, samples.Bytes());
        }
    }
    return AppendDictionary(text, samples.Bytes());
}

Status SampledFunction::AppendDictionary(OutputPiece& text, Bytes samples) const {
    constexpr std::string_view kEnd = "]\n";
    text.Append("<</FunctionType 0\n");
    RETURN_IF_FAILED(AppendRequired(text, names::kDomain, kEnd));
    AppendIfArray(text, names::kRange, kEnd);
    AppendIfArray(text, names::kSize, kEnd);
    const Resolved bits(Entry(names::kBitsPerSample));
    const Resolved order(Entry(names::kOrder));
    text.Append("/BitsPerSample ").AppendInteger(IntegerOf(bits.Get()));
    text.Append("\n/Order ").AppendInteger(IsNull(order.Get()) ? 1 : IntegerOf(order.Get())).Append("\n");
    AppendIfArray(text, names::kEncode, kEnd);
    AppendIfArray(text, names::kDecode, kEnd);
    RETURN_IF_FAILED(text.Append("/DataSource").Write());
    text.Clear();
    RETURN_IF_FAILED(EmbedStrings(samples));
    text.Append(" >>\n");
    return Status::kOk;
}

}  // namespace zorvan
