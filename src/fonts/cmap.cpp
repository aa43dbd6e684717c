// Writing CMaps of the file.
#include "fonts/cmap.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "fonts/font_resource.h"
#include "pdf/byte_buffer.h"
#include "pdf/byte_scan.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"

namespace zorvan {
PredefinedCMap::PredefinedCMap(std::uint32_t name)
    : name_(CurrentNames().NameText(name, NameTextMode::kToken, kCIDNameLimit)) {}

CMapResource::CMapResource(ResourceKey key, OwnedObject stream)
    : Resource(key, 0), stream_(std::move(stream)) {
    const PdfObject base = DictGet(StreamDictionary(stream_.Get()), names::kUseCMap);
    if (Is(Resolved(base).Get(), ObjectType::kStream)) {
        base_ = {ResourceCategory::kCMap, base};
    }
}

Status CMapResource::RegisterUsed() {
    base_.Register();
    return Status::kOk;
}

void CMapResource::AppendUse(OutputPiece& piece) const {
    AppendResourceName(piece, Key());
    piece.Append(" /CMap findRes ");
}

std::uint32_t CMapResource::WritingMode() const {
    const Resolved mode(DictGet(StreamDictionary(stream_.Get()), names::kWMode));
    return IntegerOf(mode.Get()) == 1 ? 1 : 0;
}

std::string CMapResource::OwnName() const {
    const Resolved name(DictGet(StreamDictionary(stream_.Get()), names::kCMapName));
    return CurrentNames().NameText(NameOf(name.Get()), NameTextMode::kToken, kCIDNameLimit);
}

Status CMapResource::WriteResource() {
    RETURN_IF_FAILED(base_.EmitIfNeeded());
    StreamReader reader(stream_.Get());
    ByteBuffer program;
    RETURN_IF_FAILED(DecodeWholeStream(reader, MakeReference(Key().number, Key().generation), program));
    if (FindForward(program.Bytes(), 0, "begincmap") == kNotFound) {
        // No CMap at all, and the device would run it. The composite font takes another one.
        RecordError(Status::kIllegalCmap, MakeReference(Key().number, Key().generation));
        return Status::kOk;
    }
    OutputPiece key;
    AppendResourceName(key, Key());
    const std::string name = OwnName();
    OutputPiece text;
    text.Append("%%BeginResource: CMap (").Append(name.empty() ? key.View().substr(1) : name).Append(")\n");
    text.Append(key.View()).Append(" ").AppendUnsigned(static_cast<std::uint32_t>(program.Bytes().size()));
    return text.Append(" StartCMap\n").Append(program.Bytes()).Append("\n%%EndResource\n").Write();
}

std::unique_ptr<Resource> CreateCMapResource(const ResourceRequest& request) {
    const Resolved stream(request.value);
    if (!Is(stream.Get(), ObjectType::kStream)) {
        return nullptr;
    }
    return std::make_unique<CMapResource>(request.key, OwnedObject(CloneObject(stream.Get())));
}

}  // namespace zorvan
