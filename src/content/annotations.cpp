// Reading and drawing annotations.
#include "content/annotations.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "api/current_job.h"
#include "content/drawn_names.h"
#include "content/interpreter.h"
#include "content/opi.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/number_array.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

constexpr std::int32_t kHidden = 2;
constexpr std::int32_t kPrint = 4;

bool IsPrinted(PdfObject annotation) {
    const Resolved subtype(DictGet(annotation, names::kSubtype));
    const std::int32_t flags = IntegerOf(Resolved(DictGet(annotation, names::kF)).Get());
    return NameOf(subtype.Get()) == names::kWidget && (flags & kPrint) != 0 && (flags & kHidden) == 0;
}

/// The reference of the normal appearance: `N`, or the entry of `N` that the annotation's state names. Null
/// when it is no stream.
PdfObject AppearanceOf(PdfObject annotation) {
    const Resolved appearances(DictGet(annotation, names::kAP));
    PdfObject normal = DictGet(appearances.Get(), names::kN);
    const Resolved states(normal);
    if (Is(states.Get(), ObjectType::kDictionary)) {
        normal = DictGet(states.Get(), NameOf(Resolved(DictGet(annotation, names::kAS)).Get()));
    }
    return IsReference(normal) && Is(Resolved(normal).Get(), ObjectType::kStream) ? normal : MakeNull();
}

/// However its corners are given, a rectangle counts from its lower left one.
Box RectangleOf(PdfObject annotation) {
    const Resolved rect(DictGet(annotation, names::kRect));
    const float x0 = NumberAt(rect.Get(), 0);
    const float y0 = NumberAt(rect.Get(), 1);
    const float x1 = NumberAt(rect.Get(), 2);
    const float y1 = NumberAt(rect.Get(), 3);
    return {std::min(x0, x1), std::min(y0, y1), std::abs(x1 - x0), std::abs(y1 - y0)};
}

using Matrix = std::array<float, 6>;

Matrix MatrixOf(PdfObject form) {
    const Resolved array(DictGet(form, names::kMatrix));
    Matrix matrix{1, 0, 0, 1, 0, 0};
    for (std::uint32_t i = 0; ArrayCount(array.Get()) >= matrix.size() && i < matrix.size(); ++i) {
        matrix[i] = NumberAt(array.Get(), i);
    }
    return matrix;
}

/// x0 y0 x1 y1 of the form's box once its matrix has been applied.
Box TransformedBox(PdfObject form, const Matrix& matrix) {
    const Resolved box(DictGet(form, names::kBBox));
    const auto [a, b, c, d, e, f] = matrix;
    Box extent{};
    for (std::uint32_t corner = 0; corner < 4; ++corner) {
        const float x = NumberAt(box.Get(), (corner & 1U) != 0 ? 2 : 0);
        const float y = NumberAt(box.Get(), (corner & 2U) != 0 ? 3 : 1);
        const float u = a * x + c * y + e;
        const float v = b * x + d * y + f;
        extent = corner == 0 ? Box{u, v, u, v} : UnitedBox(extent, {u, v, u, v});
    }
    return extent;
}

/// The form's matrix, followed by what puts its transformed box onto the rectangle.
Matrix AppearanceMatrix(PdfObject form, const Box& rectangle) {
    constexpr float kFlat = 0.0001F;
    const auto [a, b, c, d, e, f] = MatrixOf(form);
    const auto [x0, y0, x1, y1] = TransformedBox(form, {a, b, c, d, e, f});
    const bool scaled = x1 - x0 > kFlat && y1 - y0 > kFlat;
    const float sx = scaled ? rectangle[2] / (x1 - x0) : 1;
    const float sy = scaled ? rectangle[3] / (y1 - y0) : 1;
    return {a * sx, b * sy, c * sx, d * sy, (e - x0) * sx + rectangle[0], (f - y0) * sy + rectangle[1]};
}

Status WriteNumbers(std::span<const float> numbers, std::string_view text) {
    OutputPiece line;
    for (const float number : numbers) {
        line.AppendReal(number).Append(" ");
    }
    return line.Append(text).Write();
}

Status RunAnnotation(const Annotation& annotation, const ResourceScope* pageScope) {
    const Resolved form(annotation.appearance);
    RETURN_IF_FAILED(WriteOutput("q\n"));
    RETURN_IF_FAILED(WriteNumbers(annotation.rectangle, "RC\n"));
    RETURN_IF_FAILED(
        WriteNumbers(AppearanceMatrix(StreamDictionary(form.Get()), annotation.rectangle), "cm\n"));
    // As in a form, an appearance without resources of its own finds those of what it is drawn on.
    ContentInterpreter interpreter(annotation.scope != nullptr ? annotation.scope.get() : pageScope,
                                   annotation.appearance, ContentKind::kForm);
    RETURN_IF_FAILED(interpreter.WriteDefaultSpaces());
    const OpiBracket opi(StreamDictionary(form.Get()));
    RETURN_IF_FAILED(opi.Begin());
    RETURN_IF_FAILED(interpreter.Run());
    RETURN_IF_FAILED(opi.End());
    return WriteOutput("Q\n");
}

}  // namespace

std::vector<Annotation> ReadAnnotations(PdfObject pageDictionary) {
    const Resolved array(DictGet(pageDictionary, names::kAnnots));
    std::vector<Annotation> annotations;
    for (std::uint32_t i = 0; i < ArrayCount(array.Get()); ++i) {
        const Resolved entry(ArrayGet(array.Get(), i));
        if (!Is(entry.Get(), ObjectType::kDictionary) || !IsPrinted(entry.Get())) {
            continue;
        }
        const PdfObject appearance = AppearanceOf(entry.Get());
        if (IsNull(appearance)) {
            continue;
        }
        const Resolved form(appearance);
        annotations.push_back({appearance, RectangleOf(entry.Get()),
                               ResourceScope::OfDictionary(StreamDictionary(form.Get()))});
        if (annotations.back().scope != nullptr) {
            annotations.back().scope->Register();
        }
    }
    return annotations;
}

void MarkDrawnInAnnotations(const Page& page) {
    for (const Annotation& annotation : page.annotations) {
        MarkDrawnIn(annotation.scope != nullptr ? annotation.scope.get() : page.scope.get(),
                    annotation.appearance);
    }
}

Status EmitAnnotationResources(const Page& page) {
    for (const Annotation& annotation : page.annotations) {
        if (annotation.scope != nullptr) {
            RETURN_IF_FAILED(CurrentRegistry().EmitScope(*annotation.scope));
        }
    }
    return Status::kOk;
}

Status RunAnnotations(const Page& page) {
    for (const Annotation& annotation : page.annotations) {
        RETURN_IF_FAILED(RunAnnotation(annotation, page.scope.get()));
    }
    return Status::kOk;
}

}  // namespace zorvan
