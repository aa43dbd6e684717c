// Writing forms.
#include "content/form_xobject.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/drawn_names.h"
#include "content/interpreter.h"
#include "content/opi.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

void AppendFormType(OutputPiece& piece, PdfObject dictionary) {
    const Resolved type(DictGet(dictionary, names::kFormType));
    piece.Append("/FormType ").AppendInteger(IsNull(type.Get()) ? 1 : IntegerOf(type.Get())).Append("\n");
}

}  // namespace

FormXObject::FormXObject(ResourceKey key, OwnedObject stream)
    : PaintedUse(key, 0),
      stream_(std::move(stream)),
      scope_(ResourceScope::OfDictionary(StreamDictionary(stream_.Get()))) {}

Status FormXObject::RegisterUsed() {
    if (scope_ != nullptr) {
        scope_->Register();
    }
    return Status::kOk;
}

const ResourceScope* FormXObject::Scope() const {
    return scope_ != nullptr ? scope_.get() : CurrentRegistry().ScopeInForce();
}

void FormXObject::MarkDrawn() {
    MarkDrawnIn(Scope(), stream_.Get());
}

Status FormXObject::WriteResource() {
    const ResourceScope* scope = Scope();
    if (scope_ != nullptr) {
        RETURN_IF_FAILED(CurrentRegistry().EmitScope(*scope_));
    }
    const PdfObject dictionary = StreamDictionary(stream_.Get());
    OutputPiece piece;
    AppendUse(piece);
    piece.Append(" <<\n");
    AppendFormType(piece, dictionary);
    AppendNumbers(piece.Append("/BBox ["), DictGet(dictionary, names::kBBox), 4);
    piece.Append("]\n");
    AppendMatrix(piece, DictGet(dictionary, names::kMatrix));
    RETURN_IF_FAILED(piece.Append("/PaintProc {pop save {\n").Write());
    RETURN_IF_FAILED(WriteContent(scope));
    return WriteOutput("} exec restore} bind >> /Form defineRes pop\n");
}

Status FormXObject::WriteContent(const ResourceScope* scope) {
    ContentInterpreter interpreter(scope, stream_.Get(), ContentKind::kForm);
    interpreter.NameDirectStream(MakeReference(Key().number, Key().generation));
    RETURN_IF_FAILED(interpreter.WriteDefaultSpaces());
    const OpiBracket opi(StreamDictionary(stream_.Get()));
    RETURN_IF_FAILED(opi.Begin());
    RETURN_IF_FAILED(interpreter.Run());
    return opi.End();
}

Status FormXObject::Paint(ContentKind /*kind*/) {
    if (CurrentRegistry().IsBeingWritten(ResourceCategory::kXObject, Key())) {
        // Inside itself: the device would never come to an end.
        RecordError(Status::kIllegalXObject, MakeReference(Key().number, Key().generation));
        return Status::kOk;
    }
    OutputPiece line;
    AppendUse(line);
    return line.Append(" /Form findRes EF\n").Write();
}

}  // namespace zorvan
