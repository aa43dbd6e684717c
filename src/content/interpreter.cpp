// The token loop, the dispatch, and the keywords that build objects.
#include "content/interpreter.h"

#include <algorithm>
#include <array>

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/content_streams.h"
#include "pdf/lexer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/operator_code.h"
#include "pdf/pdf_file.h"
#include "platform/limits.h"
#include "platform/scoped_value.h"
#include "ps/resource_registry.h"
#include "ps/resource_scope.h"

namespace zorvan {
namespace {

/// How many elements a procedure of this content has, about: a token begins behind white space or with a
/// delimiter, and the painting of an image is some thirty.
bool NeedsChunks(Bytes content) {
    constexpr std::size_t kImageTokens = 32;
    std::size_t tokens = 0;
    std::uint8_t before = ' ';
    for (const std::uint8_t byte : content) {
        const bool begins = IsPdfRegular(byte) ? !IsPdfRegular(before)
                                               : byte == '/' || byte == '(' || byte == '[' || byte == ']';
        tokens += begins ? 1U : 0U;
        tokens += before == 'D' && byte == 'o' ? kImageTokens : 0U;
        before = byte;
    }
    return tokens > limits::kProcedureTokens;
}

}  // namespace

/// The rows behind their codes: a hash table made by the compiler, so that an operator costs one probe.
class ContentInterpreter::OperatorTable {
public:
    constexpr OperatorTable() {
        for (const OperatorRow& row : kRows) {
            std::size_t slot = SlotOf(row.code);
            while (slots_[slot].code != 0) {
                slot = (slot + 1) % kSlots;
            }
            slots_[slot] = row;
        }
    }

    /// Null for a keyword that is no operator.
    [[nodiscard]] constexpr const OperatorRow* Find(std::uint32_t code) const {
        for (std::size_t slot = SlotOf(code); slots_[slot].code != 0; slot = (slot + 1) % kSlots) {
            if (slots_[slot].code == code) {
                return &slots_[slot];
            }
        }
        return nullptr;
    }

private:
    static constexpr OperatorRow kRows[] = {
#define ZORVAN_OPERATOR(keyword, operands, handler, text) \
    {OperatorCode(keyword), operands, &ContentInterpreter::handler, text},
#include "content/operators.inc"
#undef ZORVAN_OPERATOR
    };

    static constexpr std::size_t kSlots = 256;
    static_assert(std::size(kRows) < kSlots / 2);

    static constexpr std::size_t SlotOf(std::uint32_t code) {
        return (code * 0x9E3779B1U) >> 24U;
    }

    std::array<OperatorRow, kSlots> slots_{};
};

ContentInterpreter::ContentInterpreter(const ResourceScope* scope, PdfObject contents, ContentKind kind)
    : kind_(kind), scope_(scope), contents_(contents) {}

Status ContentInterpreter::Run() {
    return ForEachContentStream(contents_, [this](PdfObject reference, PdfObject stream) {
        RETURN_IF_FAILED(WriteDefaultSpaces());
        return InterpretStream(IsNull(reference) ? directReference_ : reference, stream);
    });
}

Status ContentInterpreter::WriteDefaultSpaces() {
    if (begun_) {
        return Status::kOk;
    }
    begun_ = true;
    for (const std::uint32_t name : {names::kDefaultGray, names::kDefaultRGB, names::kDefaultCMYK}) {
        const Resource* space = FindAnyResource(ResourceCategory::kColorSpace, name);
        if (space != nullptr) {
            OutputPiece& line = Line();
            line.Append("/").Append(CurrentNames().PlainText(name)).Append(" ");
            space->AppendUse(line);
            RETURN_IF_FAILED(line.Append(" dd\n").Write());
        }
    }
    return Status::kOk;
}

Status ContentInterpreter::InterpretStream(PdfObject reference, PdfObject stream) {
    stream_ = reference;
    DecodedContent content;
    const Status read = content.Decode(stream, reference);
    // What a damaged stream holds up to its damage prints; one that is too large to be held does not.
    if (content.Data().empty() || read == Status::kMemoryNotEnough) {
        return read;
    }
    const bool chunks = kind_ != ContentKind::kPage && NeedsChunks(content.Data());
    const Status status = chunks ? InterpretInChunks(content.Data()) : InterpretBytes(content.Data());
    RecordError(status, reference);
    return status;
}

Status ContentInterpreter::InterpretInChunks(Bytes bytes) {
    const ScopedValue inChunk(inChunk_, true);
    RETURN_IF_FAILED(BeginChunk());
    RETURN_IF_FAILED(InterpretBytes(bytes));
    return WriteOutput("} exec\n");
}

Status ContentInterpreter::BeginChunk() {
    chunkBegin_ = CurrentOutput().Written();
    return WriteOutput("{\n");
}

/// Called between operators: ends a procedure that is long enough and begins the next one.
Status ContentInterpreter::BreakChunk() {
    if (CurrentOutput().Written() - chunkBegin_ < limits::kChunkBytes) {
        return Status::kOk;
    }
    RETURN_IF_FAILED(WriteOutput("} exec\n"));
    return BeginChunk();
}

Status ContentInterpreter::InterpretBytes(Bytes bytes) {
    CurrentPdfFile()->Charge(bytes.size());
    NameTable& names = CurrentNames();
    rest_ = bytes;
    imageEnds_ = {};
    std::uint32_t scanned = lex::kNothing;
    while ((scanned & lex::kEnd) == 0) {
        PdfObject token;
        std::uint32_t consumed = 0;
        scanned = ScanToken(rest_, names, token, consumed);
        rest_ = rest_.subspan(consumed);
        if (lex::IsError(scanned)) {
            return Status::kScanTokenError;
        }
        if ((scanned & lex::kToken) == 0) {
            continue;
        }
        if (Is(token, ObjectType::kOperator)) {
            if (inChunk_) {
                RETURN_IF_FAILED(BreakChunk());
            }
            RETURN_IF_FAILED(Operate(token.payload));
        } else if (Is(token, ObjectType::kMark)) {
            RETURN_IF_FAILED(PushMark({}));
        } else {
            operands_.Push(OwnedObject(token));
        }
    }
    return Status::kOk;
}

Status ContentInterpreter::Operate(std::uint32_t code) {
    static constexpr OperatorTable kOperators;
    const OperatorRow* row = kOperators.Find(code);
    if (row == nullptr) {
        if (code == 0 && !rest_.empty()) {
            rest_ = rest_.subspan(1);  // a stray `)`, `{` or `}`, which the lexer leaves in place
        }
        return Status::kOk;
    }
    if (operands_.Count() < row->operands) {
        return Status::kOperatorNotEnough;
    }
    return (this->*row->handler)(*row);
}

Status ContentInterpreter::PushTrue(const OperatorRow& /*row*/) {
    operands_.Push(OwnedObject(MakeBoolean(true)));
    return Status::kOk;
}

Status ContentInterpreter::PushFalse(const OperatorRow& /*row*/) {
    operands_.Push(OwnedObject(MakeBoolean(false)));
    return Status::kOk;
}

Status ContentInterpreter::PushNull(const OperatorRow& /*row*/) {
    operands_.Push(OwnedObject());
    return Status::kOk;
}

Status ContentInterpreter::PushMark(const OperatorRow& /*row*/) {
    if (operands_.Marks() >= limits::kObjectNesting) {
        return Status::kScanTokenError;
    }
    operands_.PushMark();
    return Status::kOk;
}

Status ContentInterpreter::CloseArray(const OperatorRow& row) {
    if (!operands_.Close(MakeArray)) {
        operands_.Drop(1);
        operands_.Push(OwnedObject(MakeOperator(row.code)));
    }
    return Status::kOk;
}

Status ContentInterpreter::CloseDictionary(const OperatorRow& row) {
    if (!operands_.Close(MakeDictionary)) {
        operands_.Clear();
        operands_.Push(OwnedObject(MakeOperator(row.code)));
    }
    return Status::kOk;
}

}  // namespace zorvan
