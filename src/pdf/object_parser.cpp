// The object parser's operators and its stack.
#include "pdf/object_parser.h"

#include <algorithm>
#include <vector>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/byte_scan.h"
#include "pdf/lexer.h"
#include "pdf/name_table.h"
#include "pdf/operator_code.h"
#include "pdf/pdf_file.h"
#include "platform/limits.h"

namespace zorvan {
namespace {

enum class StreamLengths { kResolve, kTakeAsNone };

PdfObject Resolve(const PdfFile& file, PdfObject reference, StreamLengths lengths);

/// One run of the parser over one object. It owns every value on its stack, so that nothing of it outlives
/// the run but the result.
class ObjectParser {
public:
    ObjectParser(const PdfFile& file, std::uint32_t offset, StreamLengths lengths)
        : file_(file), position_(offset), lengths_(lengths) {}
    ~ObjectParser() { std::ranges::for_each(stack_, FreeObject); }
    ObjectParser(const ObjectParser&) = delete;
    ObjectParser& operator=(const ObjectParser&) = delete;

    PdfObject Parse() {
        while (!done_) {
            Step();
        }
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
                Drop(2);
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
                EndWith(Pop());
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
        stack_.push_back(value.Get());
        result_ = value.Release();
    }

    void PushMark() {
        if (++openMarks_ > limits::kObjectNesting) {
            FailHere();
            return;
        }
        Push(OwnedObject(MakeMark()));
    }

    OwnedObject Pop() {
        if (stack_.empty()) {
            return {};
        }
        OwnedObject top(stack_.back());
        stack_.pop_back();
        return top;
    }

    void Drop(int count) {
        for (; count > 0; --count) {
            Pop();
        }
        result_ = MakeNull();
    }

    void PushReference() {
        const OwnedObject generation = Pop();
        const OwnedObject number = Pop();
        Push(OwnedObject(
            MakeReference(PayloadOf(number.Get()), static_cast<std::uint16_t>(PayloadOf(generation.Get())))));
    }

    /// Replaces what stands above the nearest mark, and the mark, by what is made of it. Nothing without a
    /// mark.
    void Build(PdfObject (*make)(std::span<const PdfObject>)) {
        const auto mark = std::find(stack_.rbegin(), stack_.rend(), MakeMark());
        if (mark == stack_.rend()) {
            return;
        }
        const auto first = static_cast<std::size_t>(stack_.rend() - mark);
        const PdfObject built = make(std::span(stack_).subspan(first));
        stack_.resize(first - 1);
        stack_.push_back(built);
        result_ = built;
        --openMarks_;
    }

    void EndWith(OwnedObject value) {
        // Pushed back, so that the result is always found in one place.
        Push(std::move(value));
        done_ = true;
    }

    void EndWithStream() {
        OwnedObject dictionary = Pop();
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

    /// The last token or compound, which is the stack's top if it has a block.
    PdfObject TakeResult() {
        if (HasBlock(result_) && !stack_.empty() && stack_.back() == result_) {
            stack_.pop_back();
        }
        return result_;
    }

    const PdfFile& file_;
    std::size_t position_;
    StreamLengths lengths_;
    std::vector<PdfObject> stack_;
    PdfObject result_;
    std::uint32_t openMarks_ = 0;
    bool done_ = false;
};

PdfObject Parse(const PdfFile& file, std::uint32_t offset, StreamLengths lengths) {
    if (offset >= file.Bytes().size()) {
        return MakeNull();
    }
    return ObjectParser(file, offset, lengths).Parse();
}

PdfObject Resolve(const PdfFile& file, PdfObject reference, StreamLengths lengths) {
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

}  // namespace

PdfObject ParseObjectAt(const PdfFile& file, std::uint32_t offset) {
    return Parse(file, offset, StreamLengths::kResolve);
}

PdfObject ResolveReference(const PdfFile& file, PdfObject reference) {
    return Resolve(file, reference, StreamLengths::kResolve);
}

Resolved::Resolved(PdfObject value) : value_(value) {
    if (IsReference(value)) {
        owned_ = OwnedObject(ResolveReference(*CurrentPdfFile(), value));
        value_ = owned_.Get();
    }
}

}  // namespace zorvan
