// Runs one content (a page's, a form's, a pattern's, a glyph's): every operator becomes one line of
// PostScript.
//
// Nothing is rendered and hardly any state is kept: the interpreter cuts tokens, keeps operands, and calls
// the emitter of each operator, which writes a call of the procedure of the same name.
#pragma once

#include <cstdint>
#include <string_view>

#include "api/status.h"
#include "content/color_state.h"
#include "content/inline_image_data.h"
#include "content/resource_uses.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"
#include "pdf/object_parser.h"
#include "pdf/operand_stack.h"
#include "ps/output.h"

namespace zorvan {

class ResourceScope;
struct ScopeEntry;

class ContentInterpreter {
public:
    /// `contents` is a `Contents` value: a reference to a stream, a stream, or an array, of which only the
    /// references to streams count. Anything else is an empty content. `scope` may be null: then no resource
    /// is found.
    ContentInterpreter(const ResourceScope* scope, PdfObject contents, ContentKind kind);

    /// Writes the default colour spaces and then every stream in order; the first failure ends it. A content
    /// without a stream writes nothing.
    Status Run();

    /// Tells whose errors those of a content are that was given as a stream and not by its reference.
    void NameDirectStream(PdfObject reference) { directReference_ = reference; }

    /// Writes the default colour spaces now, for a user that has something to write behind them.
    Status WriteDefaultSpaces();

private:
    struct OperatorRow;
    class OperatorTable;
    using Handler = Status (ContentInterpreter::*)(const OperatorRow& row);

    Status InterpretStream(PdfObject reference, PdfObject stream);
    Status InterpretBytes(Bytes bytes);
    Status InterpretInChunks(Bytes bytes);
    Status BeginChunk();
    Status BreakChunk();
    Status Operate(std::uint32_t code);

    // Emitters without a resource (emit_operators.cpp)
    Status WriteText(const OperatorRow& row);
    Status WriteNumbers(const OperatorRow& row);
    Status TakeOperands(const OperatorRow& row);
    Status SaveState(const OperatorRow& row);
    Status RestoreState(const OperatorRow& row);
    Status ConcatMatrix(const OperatorRow& row);
    Status SetDash(const OperatorRow& row);
    Status SetIntent(const OperatorRow& row);
    Status BeginInlineImage(const OperatorRow& row);
    Status WriteInlineImage(const OperatorRow& row);

    // Emitters of colours (emit_colors.cpp)
    Status SetFillGray(const OperatorRow& row);
    Status SetStrokeGray(const OperatorRow& row);
    Status SetFillRgb(const OperatorRow& row);
    Status SetStrokeRgb(const OperatorRow& row);
    Status SetFillCmyk(const OperatorRow& row);
    Status SetStrokeCmyk(const OperatorRow& row);
    Status SetFillSpace(const OperatorRow& row);
    Status SetStrokeSpace(const OperatorRow& row);
    Status SetFillColor(const OperatorRow& row);
    Status SetStrokeColor(const OperatorRow& row);
    Status SetFillColorOrPattern(const OperatorRow& row);
    Status SetStrokeColorOrPattern(const OperatorRow& row);
    Status SetSpace(const OperatorRow& row, SpaceState& state);
    Status SetColor(const OperatorRow& row, const SpaceState& state);
    Status SetColorOrPattern(const OperatorRow& row, const SpaceState& state);
    bool AppendNamedColor(std::uint32_t name, OutputPiece& use, std::uint32_t& components);
    Status WriteComponents(const OperatorRow& row, std::uint32_t components, std::string_view use);

    // Emitters of what is a resource (emit_resources.cpp)
    Status SetExtGState(const OperatorRow& row);
    Status PaintShading(const OperatorRow& row);
    Status PaintXObject(const OperatorRow& row);
    Status PaintNamed(ResourceCategory category, std::uint32_t name);

    // Emitters of text (emit_text.cpp)
    Status SetRenderMode(const OperatorRow& row);
    Status SelectFont(const OperatorRow& row);
    Status ShowString(const OperatorRow& row);
    Status WriteString(const OperatorRow& row);
    Status ShowSpacedString(const OperatorRow& row);
    Status ShowArray(const OperatorRow& row);

    // What builds objects (interpreter.cpp)
    Status PushTrue(const OperatorRow& row);
    Status PushFalse(const OperatorRow& row);
    Status PushNull(const OperatorRow& row);
    Status PushMark(const OperatorRow& row);
    Status CloseArray(const OperatorRow& row);
    Status CloseDictionary(const OperatorRow& row);

    /// The resource of a name, or null: not in the scope, or absent from the registry.
    template <class Use>
    [[nodiscard]] Use* FindResource(ResourceCategory category, std::uint32_t name) const {
        return static_cast<Use*>(FindAnyResource(category, name));
    }
    [[nodiscard]] Resource* FindAnyResource(ResourceCategory category, std::uint32_t name) const;

    /// The line being composed, empty at the start of each handler.
    OutputPiece& Line() {
        line_.Clear();
        return line_;
    }
    /// Appends each operand followed by a blank.
    void AppendOperands(std::span<const PdfObject> operands);

    ContentKind kind_;
    OperandStack operands_;
    ColorStateStack colorStates_;
    const ResourceScope* scope_;
    PdfObject contents_;  // lent
    PdfObject directReference_;
    bool begun_ = false;  // the default spaces are written
    ImageEnds imageEnds_;
    PdfObject stream_;              // the reference of the stream being interpreted
    Bytes rest_;                    // of it
    bool inChunk_ = false;          // the content is being put into procedures of its own
    std::uint64_t chunkBegin_ = 0;  // where in the output the latest of them begins
    OutputPiece line_;
};

/// One operator: its code, what it needs, what handles it.
struct ContentInterpreter::OperatorRow {
    std::uint32_t code = 0;
    std::uint32_t operands = 0;
    Handler handler = nullptr;
    std::string_view text;
};

}  // namespace zorvan
