// The object parser's operators and its stack.
#include "pdf/object_parser.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/byte_scan.h"
#include "pdf/lexer.h"
#include "pdf/name_table.h"
#include "pdf/operand_stack.h"
#include "pdf/operator_code.h"
#include "pdf/pdf_file.h"
#include "platform/limits.h"

namespace zorvan {
namespace {

enum class StreamLengths { kResolve, kTakeAsNone };

PdfObject Resolve(const PdfFile& file, PdfObject& reference, StreamLengths lengths);

/// What finding an object costs, beside reading it.
constexpr std::uint64_t kObjectSteps = 64;

/// One run of the parser over one object. It owns every value on its stack, so that nothing of it outlives
/// the run but the result.
class ObjectParser {
public:
    ObjectParser(const PdfFile& file, std::uint32_t offset, StreamLengths lengths)
        : file_(file), position_(offset), lengths_(lengths) {}

    PdfObject Parse() {
        const std::size_t begin = position_;
        while (!done_) {
            Step();
        }
        file_.Charge(position_ - begin + kObjectSteps);
        return TakeResult();
    }

private:
    void Step() {
        const Bytes rest = file_.Bytes().subspan(position_);
        PdfObject token;
        std::uint32_t consumed = 0;
        const std::uint32_t status = ScanToken(rest, CurrentNames(), token, consumed);
        position_ += consumed;
        if (lex::IsError(status)) {
            FailHere();
            return;
        }
        done_ = (status & lex::kEnd) != 0;
        if ((status & lex::kToken) != 0) {
            Take(token);
        }
    }

    void Take(PdfObject token) {
        if (Is(token, ObjectType::kOperator)) {
            result_ = token;
            Operate(token.payload);
            return;
        }
        if (Is(token, ObjectType::kMark)) {
            PushMark();
            return;
        }
        Push(OwnedObject(token));
    }

    void Operate(std::uint32_t code) {
        switch (code) {
            case OperatorCode("obj"):
                stack_.Drop(2);
                result_ = MakeNull();
                return;
            case OperatorCode("R"):
                PushReference();
                return;
            case OperatorCode("true"):
            case OperatorCode("false"):
                Push(OwnedObject(MakeBoolean(code == OperatorCode("true"))));
                return;
            case OperatorCode("null"):
                Push(OwnedObject());
                return;
            case OperatorCode("<<"):
            case OperatorCode("["):
                PushMark();
                return;
            case OperatorCode(">>"):
                Build(MakeDictionary);
                return;
            case OperatorCode("]"):
                Build(MakeArray);
                return;
            case OperatorCode("endobj"):
            case OperatorCode("startxref"):
                EndWith(stack_.Pop());
                return;
            case OperatorCode("stream"):
                EndWithStream();
                return;
            case 0:
                ++position_;  // a stray `)`, `{` or `}`, which the lexer leaves in place
                return;
            default:
                return;
        }
    }

    void Push(OwnedObject value) {
        result_ = value.Get();
        stack_.Push(std::move(value));
    }

    void PushMark() {
        if (stack_.Marks() >= limits::kObjectNesting) {
            FailHere();
            return;
        }
        stack_.PushMark();
        result_ = MakeMark();
    }

    void PushReference() {
        const OwnedObject generation = stack_.Pop();
        const OwnedObject number = stack_.Pop();
        Push(OwnedObject(
            MakeReference(PayloadOf(number.Get()), static_cast<std::uint16_t>(PayloadOf(generation.Get())))));
    }

    void Build(PdfObject (*make)(std::span<const PdfObject>)) {
        if (stack_.Close(make)) {
            result_ = stack_.Top(1)[0];
        }
    }

    void EndWith(OwnedObject value) {
        // Pushed back, so that the result is always found in one place.
        Push(std::move(value));
        done_ = true;
    }

    void EndWithStream() {
        OwnedObject dictionary = stack_.Pop();
        if (StandsAt(file_.Bytes(), position_, "\r\n")) {
            position_ += 2;
        } else if (StandsAt(file_.Bytes(), position_, "\r") || StandsAt(file_.Bytes(), position_, "\n")) {
            ++position_;
        }
        const std::uint32_t length = DeclaredLength(dictionary.Get());
        OwnedObject stream(NewStream(static_cast<std::uint32_t>(position_), length, dictionary.Get()));
        dictionary.Release();
        EndWith(std::move(stream));
    }

    /// The dictionary's `Length`; 0 when it is no integer. Resolved without resolving the `Length` of the
    /// stream that is met on the way: a length is an integer, and a stream's length may refer to the stream
    /// itself.
    [[nodiscard]] std::uint32_t DeclaredLength(PdfObject dictionary) const {
        PdfObject length = DictGet(dictionary, names::kLength);
        OwnedObject resolved;
        if (IsReference(length)) {
            if (lengths_ == StreamLengths::kTakeAsNone) {
                return 0;
            }
            resolved = OwnedObject(Resolve(file_, length, StreamLengths::kTakeAsNone));
            length = resolved.Get();
        }
        return Is(length, ObjectType::kInteger) ? length.payload : 0;
    }

    void FailHere() {
        const Bytes rest = file_.Bytes().subspan(std::min<std::size_t>(position_, file_.Bytes().size()));
        RecordError(Status::kScanTokenError, MakeNull(), rest.first(std::min<std::size_t>(rest.size(), 32)));
        done_ = true;
    }

    /// The last token or compound: one with a block is the stack's top, unless it was used up.
    PdfObject TakeResult() {
        if (!HasBlock(result_)) {
            return result_;
        }
        OwnedObject top = stack_.Pop();
        return top.Get() == result_ ? top.Release() : MakeNull();
    }

    const PdfFile& file_;
    std::size_t position_;
    StreamLengths lengths_;
    OperandStack stack_;  // the file's token stack: one a parse, so that nested parses share nothing
    PdfObject result_;
    bool done_ = false;
};

PdfObject Parse(const PdfFile& file, std::uint32_t offset, StreamLengths lengths) {
    if (offset >= file.Bytes().size()) {
        return MakeNull();
    }
    return ObjectParser(file, offset, lengths).Parse();
}

PdfObject Resolve(const PdfFile& file, PdfObject& reference, StreamLengths lengths) {
    for (std::uint32_t hops = 0; hops < limits::kReferenceHops; ++hops) {
        const std::uint32_t offset = file.Xref().Lookup(reference.payload, reference.type);
        if (offset == 0 || offset == XrefTable::kNoOffset) {
            return MakeNull();
        }
        const PdfObject object = Parse(file, offset, lengths);
        if (!IsReference(object)) {
            return object;
        }
        reference = object;
    }
    return MakeNull();
}

/// True for bytes that stand for themselves between parentheses.
bool IsPlainText(Bytes bytes) {
    int depth = 0;
    return std::ranges::all_of(bytes,
                               [&depth](std::uint8_t byte) {
                                   depth += byte == '(' ? 1 : byte == ')' ? -1 : 0;
                                   return byte != '\\' && byte != '\r' && depth >= 0;
                               }) &&
           depth == 0;
}

/// The text of a literal string that has these bytes.
std::vector<std::uint8_t> LiteralText(Bytes bytes) {
    if (IsPlainText(bytes)) {
        return {bytes.begin(), bytes.end()};
    }
    std::vector<std::uint8_t> text;
    for (const std::uint8_t byte : bytes) {
        if (byte == '(' || byte == ')' || byte == '\\' || byte == '\r') {
            text.push_back('\\');
        }
        text.push_back(byte == '\r' ? 'r' : byte);
    }
    return text;
}

/// Each object has a key of its own, by which its strings and, later, its data are decrypted.
PdfObject Decrypted(PdfObject object, PdfObject reference, SecurityState security) {
    SetStreamOwner(object, reference);
    return ReplaceStrings(object, [&](PdfObject string) {
        security.SetObjectKey(reference.payload, reference.type);
        const Bytes text = StringBytes(string);
        const auto bytes = StringKindOf(string) == StringKind::kHexadecimal
                               ? security.DecryptHexadecimalString(text)
                               : security.DecryptLiteralString(text);
        return MakeString(LiteralText(bytes), StringKind::kLiteral);
    });
}

}  // namespace

PdfObject ParseObjectAt(const PdfFile& file, std::uint32_t offset) {
    return Parse(file, offset, StreamLengths::kResolve);
}

PdfObject ResolveReference(const PdfFile& file, PdfObject reference) {
    const PdfObject object = Resolve(file, reference, StreamLengths::kResolve);
    return file.Security().IsActive() ? Decrypted(object, reference, file.Security()) : object;
}

Resolved::Resolved(PdfObject value) : value_(value) {
    if (IsReference(value)) {
        owned_ = OwnedObject(ResolveReference(*CurrentPdfFile(), value));
        value_ = owned_.Get();
    }
}

}  // namespace zorvan
