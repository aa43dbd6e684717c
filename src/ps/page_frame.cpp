// Writing one page.
#include "ps/page_frame.h"

#include <algorithm>
#include <string>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"
#include "ps/output.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

std::string PlateColor(PdfObject colorant) {
    if (Is(colorant, ObjectType::kName)) {
        return CurrentNames().NameText(colorant.payload, NameTextMode::kString);
    }
    const auto bytes = StringBytes(colorant);
    return AsStringText(
        {reinterpret_cast<const char*>(bytes.data()), std::min(bytes.size(), kNameTextLimit)});
}

void AppendPlateColor(OutputPiece& piece, PdfObject dictionary) {
    const Resolved separation(DictGet(dictionary, names::kSeparationInfo));
    const Resolved colorant(DictGet(separation.Get(), names::kDeviceColorant));
    if (Is(colorant.Get(), ObjectType::kName) || Is(colorant.Get(), ObjectType::kString)) {
        piece.Append("%%PlateColor: ").Append(OnOneLine(PlateColor(colorant.Get()))).Append("\n");
    }
}

void AppendConcat(OutputPiece& piece, std::string_view matrix, float tx, float ty) {
    piece.Append(matrix).AppendFixed(tx).Append(" ").AppendFixed(ty).Append("] concat\n");
}

/// Turns the page in its own box; rotations that are no multiple of 90 turn nothing.
void AppendRotation(OutputPiece& piece, const Page& page) {
    const auto [x0, y0, x1, y1] = page.clipBox;
    switch (page.rotation) {
        case 90:
        case -270:
            AppendConcat(piece, "[0 -1 1 0 ", x0 - y0, x1 + y0);
            return;
        case 180:
        case -180:
            AppendConcat(piece, "[-1 0 0 -1 ", x0 + x1, y0 + y1);
            return;
        case 270:
        case -90:
            AppendConcat(piece, "[0 1 -1 0 ", y1 + x0, y0 - x0);
            return;
        default:
            return;
    }
}

Status WriteSetup(const Page& page, PdfObject dictionary) {
    OutputPiece piece;
    piece.Append("\n%%Page: ")
        .AppendUnsigned(page.number)
        .Append(" ")
        .AppendUnsigned(page.number)
        .Append("\n");
    AppendPlateColor(piece, dictionary);
    piece.Append(
        "%%BeginPageSetup\n"
        "userdict /pgsave save put\n"
        "PDFVars begin PDF begin PDFVars/InitAll get exec\n");
    AppendRotation(piece, page);
    return piece.Write();
}

Status WriteClip(const Page& page) {
    const auto [x0, y0, x1, y1] = page.clipBox;
    OutputPiece piece;
    for (const float number : {x0, y0, x1 - x0, y1 - y0}) {
        piece.AppendFixed(number).Append(" ");
    }
    return piece.Append("RC\n").Write();
}

Status WriteTrailer() {
    // "%%EndPage" is no DSC comment; hosts find the end of a page by it.
    return WriteOutput(
        "PDFVars/TermAll get exec end end\n"
        "userdict /pgsave get restore\n"
        "showpage\n"
        "%%PageTrailer\n"
        "%%EndPage\n");
}

}  // namespace

Status WritePage(const Page& page, const PageContent& content) {
    // Read anew, as every object is: a document of many pages keeps nothing of them but their boxes.
    const Resolved dictionary(page.reference);
    const PdfObject contents = DictGet(dictionary.Get(), names::kContents);
    CurrentRegistry().BeginPage();
    content.markDrawn(page, contents);
    RETURN_IF_FAILED(WriteSetup(page, dictionary.Get()));
    if (page.scope != nullptr) {
        RETURN_IF_FAILED(CurrentRegistry().EmitPageLevel(*page.scope));
    }
    RETURN_IF_FAILED(content.emitAnnotationResources(page));
    RETURN_IF_FAILED(WriteOutput("%%EndPageSetup\n"));
    RETURN_IF_FAILED(WriteClip(page));
    if (page.scope != nullptr) {
        RETURN_IF_FAILED(CurrentRegistry().InstantiatePatterns(*page.scope));
    }
    RETURN_IF_FAILED(content.run(page, contents));
    RETURN_IF_FAILED(content.runAnnotations(page));
    return WriteTrailer();
}

}  // namespace zorvan
