// Writing shadings.
#include "paint/shading.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "platform/limits.h"
#include "ps/device_parameters.h"
#include "ps/embedded_data.h"
#include "ps/number_array.h"

namespace zorvan {
namespace {

constexpr std::uint32_t kFunctionBased = 1;
constexpr std::uint32_t kFirstMesh = 4;
constexpr std::uint32_t kLattice = 5;  // the one mesh without flags
constexpr std::uint32_t kLastType = 7;

}  // namespace

ShadingResource::ShadingResource(ResourceKey key, std::uint32_t kind, PdfObject value)
    : PaintedUse(key, kind),
      value_(CloneObject(value)),
      space_(ResourceCategory::kColorSpace, Entry(names::kColorSpace)) {
    const PdfObject function = Entry(names::kFunction);
    const Resolved several(function);
    severalFunctions_ = Is(several.Get(), ObjectType::kArray);
    if (!severalFunctions_) {
        if (!IsNull(several.Get())) {
            functions_.emplace_back(function, FunctionForm::kDictionary);
        }
        return;
    }
    const std::uint32_t count = std::min(ArrayCount(several.Get()), limits::kNumbers);
    for (std::uint32_t i = 0; i < count; ++i) {
        functions_.emplace_back(ArrayGet(several.Get(), i), FunctionForm::kDictionary);
    }
}

PdfObject ShadingResource::Entry(std::uint32_t key) const {
    return DictGet(DictionaryOf(value_.Get()), key);
}

Status ShadingResource::RegisterUsed() {
    space_.Register();
    for (FunctionPart& function : functions_) {
        RETURN_IF_FAILED(function.Register());
    }
    return Status::kOk;
}

Status ShadingResource::WriteResource() {
    RETURN_IF_FAILED(space_.EmitIfNeeded());
    for (const FunctionPart& function : functions_) {
        RETURN_IF_FAILED(function.Write());
    }
    return Status::kOk;
}

Status ShadingResource::Paint(ContentKind kind) {
    if (IsMesh() && !HasDeviceFilters(value_.Get())) {
        RecordError(Status::kDecodeError, Reference());
        return Status::kOk;
    }
    if (IsMesh() && kind == ContentKind::kPage) {
        OutputPiece text;
        if (AppendEntries(text)) {
            RETURN_IF_FAILED(text.Append("/DataSource ").Write());
            return EmbedInFile(value_.Get(), ">> shfill\n");
        }
        return text.Append(">>\n sh\n").Write();
    }
    RETURN_IF_FAILED(WriteDictionary());
    return WriteOutput(" sh\n");
}

Status ShadingResource::WriteDictionary() {
    OutputPiece text;
    if (!AppendEntries(text) || !IsMesh()) {
        return text.Append(">>\n").Write();
    }
    StreamReader reader(value_.Get());
    ByteBuffer data;
    RETURN_IF_FAILED(DecodeWholeStream(reader, Reference(), data));
    RETURN_IF_FAILED(text.Append("/DataSource ").Write());
    RETURN_IF_FAILED(EmbedStrings(data.Bytes()));
    return WriteOutput("\n>>\n");
}

bool ShadingResource::AppendEntries(OutputPiece& text) const {
    text.Append("<</ShadingType ").AppendUnsigned(Kind()).Append("\n");
    if (!AppendSpace(text)) {
        return false;
    }
    AppendArray(text, names::kBackground);
    AppendArray(text, names::kBBox);
    const Resolved smooth(Entry(names::kAntiAlias));
    if (!IsNull(smooth.Get())) {
        AppendKey(text, names::kAntiAlias).Append(BooleanOf(smooth.Get()) ? "true\n" : "false\n");
    }
    return IsMesh() ? AppendMesh(text) : AppendGeometry(text);
}

bool ShadingResource::AppendSpace(OutputPiece& text) const {
    if (space_.Get() == nullptr) {
        return Missing();
    }
    space_.AppendUse(text.Append("/ColorSpace "));
    return true;
}

bool ShadingResource::AppendGeometry(OutputPiece& text) const {
    if (Kind() != kFunctionBased && !AppendRequiredArray(text, names::kCoords)) {
        return false;
    }
    AppendArray(text, names::kDomain);
    if (Kind() == kFunctionBased) {
        AppendArray(text, names::kMatrix);
    }
    if (!HasFunction()) {
        return Missing();
    }
    AppendFunctions(text);
    if (Kind() != kFunctionBased) {
        AppendExtend(text);
    }
    return true;
}

bool ShadingResource::AppendMesh(OutputPiece& text) const {
    const std::uint32_t last = Kind() == kLattice ? names::kVerticesPerRow : names::kBitsPerFlag;
    if (!AppendRequiredInteger(text, names::kBitsPerCoordinate) ||
        !AppendRequiredInteger(text, names::kBitsPerComponent) || !AppendRequiredInteger(text, last) ||
        !AppendRequiredArray(text, names::kDecode)) {
        return false;
    }
    if (HasFunction()) {
        AppendFunctions(text);
    }
    return true;
}

bool ShadingResource::AppendRequiredArray(OutputPiece& text, std::uint32_t key) const {
    if (!Is(Resolved(Entry(key)).Get(), ObjectType::kArray)) {
        return Missing();
    }
    AppendArray(text, key);
    return true;
}

bool ShadingResource::AppendRequiredInteger(OutputPiece& text, std::uint32_t key) const {
    const Resolved value(Entry(key));
    if (!IsNumber(value.Get())) {
        return Missing();
    }
    AppendKey(text, key).AppendInteger(IntegerOf(value.Get())).Append("\n");
    return true;
}

void ShadingResource::AppendArray(OutputPiece& text, std::uint32_t key) const {
    const Resolved array(Entry(key));
    if (Is(array.Get(), ObjectType::kArray)) {
        AppendNumbers(AppendKey(text, key).Append("["), array.Get());
        text.Append("]\n");
    }
}

bool ShadingResource::HasFunction() const {
    return !functions_.empty() && std::ranges::all_of(functions_, [](const FunctionPart& function) {
        return function.Get() != nullptr;
    });
}

void ShadingResource::AppendFunctions(OutputPiece& text) const {
    text.Append(severalFunctions_ ? "/Function [" : "/Function ");
    for (const FunctionPart& function : functions_) {
        function.AppendUse(text);
    }
    text.Append(severalFunctions_ ? "]\n" : "");
}

void ShadingResource::AppendExtend(OutputPiece& text) const {
    const Resolved extend(Entry(names::kExtend));
    if (!Is(extend.Get(), ObjectType::kArray)) {
        return;
    }
    text.Append("/Extend [");
    for (std::uint32_t i = 0; i < std::min(ArrayCount(extend.Get()), limits::kNumbers); ++i) {
        text.Append(BooleanOf(Resolved(ArrayGet(extend.Get(), i)).Get()) ? "true " : "false ");
    }
    text.Append("]\n");
}

/// The record, not the result, is what tells the host: the dictionary is closed and written all the same.
bool ShadingResource::Missing() const {
    RecordError(Status::kLoseRequiredEntry, Reference());
    return false;
}

std::unique_ptr<ShadingResource> CreateShading(PdfObject value, ResourceKey key) {
    const Resolved shading(value);
    const bool stream = Is(shading.Get(), ObjectType::kStream);
    if (!stream && !Is(shading.Get(), ObjectType::kDictionary)) {
        return nullptr;
    }
    const Resolved type(DictGet(DictionaryOf(shading.Get()), names::kShadingType));
    const auto kind = static_cast<std::uint32_t>(IntegerOf(type.Get()));
    // A mesh without a stream has no data.
    if (kind < kFunctionBased || kind > kLastType || (kind >= kFirstMesh && !stream)) {
        return nullptr;
    }
    return std::make_unique<ShadingResource>(key, kind, shading.Get());
}

std::unique_ptr<Resource> CreateShadingResource(const ResourceRequest& request) {
    return CreateShading(request.value, request.key);
}

}  // namespace zorvan
