// Writing patterns.
#include "paint/pattern.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/drawn_names.h"
#include "content/interpreter.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

constexpr std::int32_t kTilingType = 1;
constexpr std::int32_t kShadingType = 2;
constexpr std::int32_t kUncolored = 2;

void AppendNumber(OutputPiece& text, std::string_view key, PdfObject value) {
    text.Append(key).AppendOperand(Resolved(value).Get()).Append("\n");
}

}  // namespace

TilingPatternResource::TilingPatternResource(ResourceKey key, OwnedObject stream)
    : PatternUse(key, pattern_kind::kTiling),
      stream_(std::move(stream)),
      scope_(ResourceScope::OfDictionary(DictionaryOf(stream_.Get()))),
      paintType_(IntegerOf(Resolved(DictGet(DictionaryOf(stream_.Get()), names::kPaintType)).Get())) {}

Status TilingPatternResource::RegisterUsed() {
    if (scope_ != nullptr) {
        scope_->Register();
    }
    return Status::kOk;
}

void TilingPatternResource::MarkDrawn() {
    MarkDrawnIn(scope_.get(), stream_.Get());
}

bool TilingPatternResource::CanBeUsedHere() {
    if (!CurrentRegistry().IsBeingWritten(ResourceCategory::kPattern, Key())) {
        return true;
    }
    RecordError(Status::kIllegalPattern, MakeReference(Key().number, Key().generation));
    CurrentRegistry().MarkUnusable(ResourceCategory::kPattern, Key());
    return false;
}

Status TilingPatternResource::WriteResource() {
    if (scope_ != nullptr) {
        RETURN_IF_FAILED(CurrentRegistry().EmitScope(*scope_));
    }
    OutputPiece text;
    AppendResourceName(text, Key());
    text.Append(" <<\n");
    AppendKeys(text);
    text.Append("/PaintProc {begin 10 dict begin save /gs {gsDI} def\n");
    if (paintType_ == kUncolored) {
        text.Append("/sfc {} store /ssc {} store\n");
    }
    RETURN_IF_FAILED(text.Write());
    ContentInterpreter interpreter(scope_.get(), stream_.Get(), ContentKind::kTilingPattern);
    interpreter.NameDirectStream(MakeReference(Key().number, Key().generation));
    RETURN_IF_FAILED(interpreter.Run());
    return WriteOutput("restore end end} bind >> /PatternPrototype defineRes pop\n");
}

void TilingPatternResource::AppendKeys(OutputPiece& text) const {
    const PdfObject dictionary = DictionaryOf(stream_.Get());
    const Resolved tilingType(DictGet(dictionary, names::kTilingType));
    text.Append("/PatternType 1\n/PaintType ").AppendInteger(paintType_);
    text.Append("\n/TilingType ").AppendInteger(IntegerOf(tilingType.Get())).Append("\n");
    AppendNumbers(text.Append("/BBox ["), DictGet(dictionary, names::kBBox), 4);
    AppendNumber(text.Append("]\n"), "/XStep ", DictGet(dictionary, names::kXStep));
    AppendNumber(text, "/YStep ", DictGet(dictionary, names::kYStep));
    AppendMatrix(text, DictGet(dictionary, names::kMatrix));
}

ShadingPatternResource::ShadingPatternResource(ResourceKey key, PdfObject dictionary)
    : PatternUse(key, pattern_kind::kShading), dictionary_(CloneObject(dictionary)) {
    const PdfObject shading = DictGet(dictionary, names::kShading);
    if (IsReference(shading)) {
        shading_ = {ResourceCategory::kShading, shading};
    } else {
        ownShading_ = CreateShading(shading, {.number = TakeGeneratedResourceNumber()});
    }
    const PdfObject state = DictGet(dictionary, names::kExtGState);
    if (IsReference(state)) {
        state_ = {ResourceCategory::kExtGState, state};
    }
}

Status ShadingPatternResource::RegisterUsed() {
    shading_.Register();
    state_.Register();
    return ownShading_ == nullptr ? Status::kOk : ownShading_->RegisterUsed();
}

ShadingResource* ShadingPatternResource::Shading() const {
    return ownShading_ != nullptr ? ownShading_.get() : static_cast<ShadingResource*>(shading_.Get());
}

Status ShadingPatternResource::WriteResource() {
    ShadingResource* shading = Shading();
    if (shading == nullptr) {
        return Fail(Status::kIllegalShading, MakeReference(Key().number, Key().generation));
    }
    RETURN_IF_FAILED(ownShading_ != nullptr ? ownShading_->WriteResource() : shading_.EmitIfNeeded());
    OutputPiece text;
    AppendResourceName(text, Key());
    RETURN_IF_FAILED(text.Append(" <<\n/PatternType 2\n/Shading ").Write());
    RETURN_IF_FAILED(shading->WriteDictionary());
    text.Clear();
    AppendMatrix(text, DictGet(dictionary_.Get(), names::kMatrix));
    return text.Append(">> /PatternPrototype defineRes pop\n").Write();
}

std::unique_ptr<Resource> CreatePatternResource(const ResourceRequest& request) {
    const Resolved pattern(request.value);
    const PdfObject dictionary = DictionaryOf(pattern.Get());
    const bool described = Is(dictionary, ObjectType::kDictionary);
    const Resolved type(DictGet(dictionary, names::kPatternType));
    const std::int32_t kind = IntegerOf(type.Get());
    if (described && kind == kShadingType) {
        return std::make_unique<ShadingPatternResource>(request.key, dictionary);
    }
    // What is no dictionary at all becomes a cell of nothing.
    if (described && kind != kTilingType) {
        return nullptr;
    }
    return std::make_unique<TilingPatternResource>(request.key, OwnedObject(CloneObject(pattern.Get())));
}

}  // namespace zorvan
