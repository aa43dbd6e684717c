// Writing the document's frame, piece by piece.
#include "ps/document_structure.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "ps/output.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

// The prolog texts by what they define; the texts keep their CR LF, the lines here end in LF.
constexpr unsigned kLevelCheck = 7003;
constexpr unsigned kVariables = 7004;
constexpr unsigned kProcedureSets[] = {
    7005,  // helpers
    7006,  // operators
    7007,  // Level 3
    7012,  // spot functions
    7008,  // text
    7009,  // the re-encoding vector
    7010,  // images
};

Status WriteHeader(const DocumentSummary& document) {
    OutputPiece piece;
    piece.Append(
        "%!PS-Adobe-3.0\n"
        "%%Version: 1 3\n"
        "%%Creator: Brentic(R) ZORVAN Plug-In 2.0\n"
        "%%BoundingBox: ");
    // Six decimals where DSC wants integers, on purpose: imposition needs the exact box.
    const auto [x0, y0, x1, y1] = document.boundingBox;
    piece.AppendFixed(x0).Append(" ").AppendFixed(y0).Append(" ").AppendFixed(x1).Append(" ").AppendFixed(y1);
    piece.Append("\n%%Pages: ").AppendUnsigned(document.pageCount).Append("\n%%EndComments\n");
    return piece.Write();
}

Status WriteInitialisation() {
    return WriteOutput(
        "currentdict readonly pop\n"
        "end end\n"
        "/currentpacking where {pop setpacking}if\n"
        "PDFVars/DocInitAll{[ PDFText]{/docinitialize get exec}forall }put\n"
        "PDFVars/InitAll{[PDF PDFText PDFImage]{/initialize get exec}forall initgs}put\n"
        "PDFVars/TermAll{[PDFImage PDFText PDF]{/terminate get exec}forall}put\n"
        "PDFVars begin PDF begin\n"
        "PDFVars/DocInitAll get exec PDFVars/InitAll get exec\n");
}

}  // namespace

Status WriteHeaderAndProlog(const DocumentSummary& document, const Prolog* prolog) {
    if (prolog == nullptr) {
        return Fail(Status::kApplicationError);
    }
    RETURN_IF_FAILED(WriteHeader(document));
    RETURN_IF_FAILED(WriteOutput(prolog->Text(kLevelCheck)));
    RETURN_IF_FAILED(WriteOutput("/currentpacking where{pop currentpacking true setpacking}if\n"));
    RETURN_IF_FAILED(WriteOutput(prolog->Text(kVariables)));
    RETURN_IF_FAILED(WriteOutput("PDFVars begin PDF begin\n"));
    for (const unsigned procedureSet : kProcedureSets) {
        RETURN_IF_FAILED(WriteOutput(prolog->Text(procedureSet)));
    }
    return WriteInitialisation();
}

Status WriteGlobalResources() {
    RETURN_IF_FAILED(CurrentRegistry().EmitGlobal());
    return WriteOutput(
        "PDFVars/TermAll get exec end end\n"
        "%%EndSetup\n");
}

Status WriteDocumentTrailer() {
    return WriteOutput(
        "%%Trailer\n"
        "%%EOF\n");
}

}  // namespace zorvan
